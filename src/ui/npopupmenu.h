#pragma once
// A pop-up menu that lays its items out in columns: where the items say
// (breaks), or, with FitToScreen, so that no column is taller than the screen.
#include "ui/geometry.h"
#include "ui/imagelist.h"
#include "ui/menuitem.h"
#include "ui/menuview.h"

#include <QObject>
#include <QPointer>

namespace vm20 {



class TNPopupMenu : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int BreakType READ BreakType WRITE SetBreakType)
    Q_PROPERTY(int PopupSplitType READ PopupSplitType WRITE SetPopupSplitType)
    Q_PROPERTY(bool FitToScreen READ FitToScreen WRITE SetFitToScreen)

public:
    explicit TNPopupMenu(QObject *parent = nullptr);
    ~TNPopupMenu() override;

    TMenuBreak BreakType() const { return FBreakType; }
    void SetBreakType(int value);
    TNPopupSplitType PopupSplitType() const { return FPopupSplitType; }
    void SetPopupSplitType(int value);
    bool FitToScreen() const { return FFitToScreen; }
    void SetFitToScreen(bool value) { FFitToScreen = value; }
    const TImageList *Images() const { return FImages; }
    void SetImages(const TImageList *value) { FImages = value; }
    Qt::LayoutDirection BiDiMode() const { return FBiDiMode; }
    void SetBiDiMode(Qt::LayoutDirection value) { FBiDiMode = value; }

    // The top level of the menu.
    TNMenuItem &Items() { return FRoot; }

    // Shows the menu with its top-left corner (right-to-left: its top-right)
    // at the screen point and returns when it closes; a chosen item's
    // OnClick has run by then.
    void Popup(int X, int Y);
    // Closes an open menu as if nothing was chosen.
    void Close();
    bool IsOpen() const { return FTopView != nullptr; }
    // The top level's window while the menu is open (for automation).
    QWidget *TopView() const;

    // Breaks every level of the menu for a screen of perColumn rows.
    void ApplyScreenBreaks(int perColumn);
    // Rows of menu items that the screen holds.
    static int ScreenRows(int screenHeight);

private:
    friend class TMenuView;
    void Choose(TNMenuItem *item);

    TNMenuItem FRoot;
    TMenuBreak FBreakType = mbBarBreak;
    TNPopupSplitType FPopupSplitType = pstBalanced;
    bool FFitToScreen = true;
    const TImageList *FImages = nullptr;
    Qt::LayoutDirection FBiDiMode = Qt::LeftToRight;
    QPointer<TMenuView> FTopView;
    TNMenuItem *FChosen = nullptr;
    std::function<void()> FQuit;
};

} // namespace vm20
