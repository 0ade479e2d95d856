#pragma once
// A check list whose Space key toggles every selected row, not just the
// current one.
#include <QListWidget>

namespace vm20 {

class TNCheckListBox : public QListWidget
{
    Q_OBJECT
    Q_PROPERTY(bool MultiSelect READ MultiSelect WRITE SetMultiSelect)
    Q_PROPERTY(bool ExtendedSelect READ ExtendedSelect WRITE SetExtendedSelect)

public:
    explicit TNCheckListBox(QWidget *parent = nullptr);

    bool MultiSelect() const { return FMultiSelect; }
    void SetMultiSelect(bool value);
    // With MultiSelect: Shift and Ctrl extend the selection.
    bool ExtendedSelect() const { return FExtendedSelect; }
    void SetExtendedSelect(bool value);

    bool Checked(int row) const;
    void SetChecked(int row, bool value);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void ApplySelectionMode();

    bool FMultiSelect = false;
    bool FExtendedSelect = true;
};

} // namespace vm20
