#include "ui/npopupmenu.h"

#include "ui/ddlabelerror.h"
#include "ui/menuview.h"
#include "ui/systemmetrics.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QScreen>

namespace vm20 {
namespace {

void BreakLevel(TNMenuItem &level, int perColumn, TNPopupSplitType type, TMenuBreak kind)
{
    for (int index : FitToScreenBreaks(level.Count(), perColumn, type))
        level.Items(index)->Break = kind;
    for (int i = 0; i < level.Count(); ++i)
        if (level.Items(i)->Count())
            BreakLevel(*level.Items(i), perColumn, type, kind);
}

} // namespace

TNPopupMenu::TNPopupMenu(QObject *parent)
    : QObject(parent)
{
}

TNPopupMenu::~TNPopupMenu()
{
    if (FTopView)
        delete FTopView.data();
}

void TNPopupMenu::SetBreakType(int value)
{
    if (value < mbNone || value > mbBarBreak)
        throw EDDLabelError(QStringLiteral("Invalid menu break: %1").arg(value));
    FBreakType = TMenuBreak(value);
}

void TNPopupMenu::SetPopupSplitType(int value)
{
    if (value != pstBalanced && value != pstFillFirst)
        throw EDDLabelError(QStringLiteral("Invalid pop-up split type: %1").arg(value));
    FPopupSplitType = TNPopupSplitType(value);
}

QWidget *TNPopupMenu::TopView() const
{
    return FTopView.data();
}

int TNPopupMenu::ScreenRows(int screenHeight)
{
    return screenHeight / TNSystemMetrics::Instance().MenuItemHeight();
}

void TNPopupMenu::ApplyScreenBreaks(int perColumn)
{
    FRoot.ClearBreaks();
    BreakLevel(FRoot, perColumn, FPopupSplitType, FBreakType);
}

void TNPopupMenu::Popup(int X, int Y)
{
    if (FTopView)
        return;
    const QPoint at(X, Y);
    if (FFitToScreen) {
        const QScreen *screen = QGuiApplication::screenAt(at) ? QGuiApplication::screenAt(at)
                                                              : QGuiApplication::primaryScreen();
        ApplyScreenBreaks(ScreenRows(screen ? screen->geometry().height() : 480));
    }
    FChosen = nullptr;
    QEventLoop loop;
    FQuit = [&loop] { loop.quit(); };
    FTopView = new TMenuView(this, &FRoot, nullptr);
    FTopView->PopupAt(at, FBiDiMode == Qt::RightToLeft);
    if (FTopView)
        loop.exec();
    FQuit = nullptr;
    TNMenuItem *chosen = FChosen;
    FChosen = nullptr;
    if (chosen && chosen->OnClick)
        chosen->OnClick(chosen);
}

void TNPopupMenu::Close()
{
    if (!FTopView)
        return;
    QPointer<TMenuView> view = FTopView;
    FTopView = nullptr;
    if (view && view->isVisible())
        view->CloseTree();
    if (FQuit)
        FQuit();
}

void TNPopupMenu::Choose(TNMenuItem *item)
{
    FChosen = item;
    Close();
}

} // namespace vm20
