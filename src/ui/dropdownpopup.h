#pragma once
// The list label that drops a pop-up menu: named groups as sub-menus, long
// lists in columns.
#include "ui/dropdownlist.h"
#include "ui/npopupmenu.h"

#include <memory>

namespace vm20 {

class TDropDownPopup : public TDropDownList
{
    Q_OBJECT
    Q_PROPERTY(int MaxItemCount READ MaxItemCount WRITE SetMaxItemCount)

public:
    explicit TDropDownPopup(QWidget *parent = nullptr);
    ~TDropDownPopup() override;

    // Items per column; 0 lets the screen decide.
    int MaxItemCount() const { return FMaxItemCount; }
    void SetMaxItemCount(int value);
    // The menu, once made (nullptr before the first drop-down).
    TNPopupMenu *Menu() const { return FMenu.get(); }

    // Fills the menu as a drop-down would, without showing it.
    void BuildMenu();

protected:
    void CreateControl() override;
    void ShowControl() override;
    void HideControl() override;
    void AcceptInput() override {}
    bool IsEditMode() const override { return Dropped(); }
    void BiDiModeChanged() override;

private:
    void MenuClick(TNMenuItem *item);

    std::unique_ptr<TNPopupMenu> FMenu;
    int FMaxItemCount = 0;
};

} // namespace vm20
