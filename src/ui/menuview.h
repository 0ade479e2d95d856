#pragma once
// The window of one level of a TNPopupMenu: items in columns, keyboard and
// mouse navigation, sub-menus as further views.
#include "ui/menuitem.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QWidget>

namespace vm20 {

class TNPopupMenu;

class TMenuView : public QWidget
{
    Q_OBJECT

public:
    TMenuView(TNPopupMenu *menu, TNMenuItem *level, TMenuView *parentView);
    ~TMenuView() override;

    TNMenuItem *Level() const { return FLevel; }
    // The highlighted item, or nullptr.
    TNMenuItem *CurrentItem() const;
    int CurrentIndex() const { return FCurrent; }
    // The open sub-menu's view, or nullptr.
    TMenuView *SubView() const { return FSub.data(); }
    // The rectangle of item i in this view.
    QRect ItemRect(int index) const { return FCells.at(std::size_t(index)).rect; }
    int ColumnCount() const { return FColumns; }
    // Column of item i (from 0, in reading order).
    int ColumnOf(int index) const { return FCells.at(std::size_t(index)).column; }

    // Highlights item i (-1: none), as the arrow keys do.
    void SetCurrent(int index);
    // Places the view with its near top corner at the point, on the screen.
    void PopupAt(const QPoint &point, bool rightToLeft);
    // Closes this view and those below it.
    void CloseTree();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    struct Cell
    {
        QRect rect;
        int column = 0;
    };

    void Layout();
    int ItemAt(const QPoint &pos) const;
    bool Selectable(int index) const;
    void Step(int delta);
    void StepColumn(int delta);
    void Activate(int index);
    void OpenSub(int index);
    void CloseSub();
    void Search(const QString &text);

    TNPopupMenu *FMenu;
    TNMenuItem *FLevel;
    QPointer<TMenuView> FParentView;
    QPointer<TMenuView> FSub;
    std::vector<Cell> FCells;
    std::vector<int> FBarBefore; // x positions of bars between columns
    int FColumns = 0;
    int FCurrent = -1;
    int FItemHeight = 0;
    int FIconSize = 16;
    QString FTyped;
    QElapsedTimer FTypedAge;
};

} // namespace vm20
