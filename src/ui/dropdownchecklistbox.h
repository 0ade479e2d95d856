#pragma once
// The list label that drops a check list: the checked rows become the value
// as comma text; leaving the list accepts.
#include "ui/dropdownlistbox.h"

namespace vm20 {

class TNCheckListBox;

class TDropDownCheckListBox : public TDropDownListBox
{
    Q_OBJECT

public:
    explicit TDropDownCheckListBox(QWidget *parent = nullptr);

    TNCheckListBox *CheckListBox() const;

protected:
    QListWidget *NewListBox(QWidget *parent) override;
    int GetLBWidth(int minWidth, const QStringList &strings) const override;
    void ShowControl() override;
    void AcceptInput() override;
    void ValueChanged() override;
    void ListExit() override;
    bool ClickPicks() const override { return false; }
};

} // namespace vm20
