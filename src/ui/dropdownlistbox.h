#pragma once
// The list label that drops a list box: a click or Enter picks, Escape
// discards.
#include "ui/dropdowncustomlistbox.h"

#include <QListWidget>

namespace vm20 {

class TDropDownListBox : public TDropDownCustomListBox
{
    Q_OBJECT

public:
    explicit TDropDownListBox(QWidget *parent = nullptr);
    ~TDropDownListBox() override;

    QListWidget *ListBox() const override { return FListBox.data(); }

protected:
    void CreateControl() override;
    void AcceptInput() override;
    // Makes the list widget this label shows; the check list makes another.
    virtual QListWidget *NewListBox(QWidget *parent);
    // What leaving the list does: here it hides the list only.
    virtual void ListExit();
    // Whether a mouse press in the list picks its row.
    virtual bool ClickPicks() const { return true; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QPointer<QListWidget> FListBox;
};

} // namespace vm20
