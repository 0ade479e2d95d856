#pragma once
// A table of the model as a small movable, sizable window on the diagram:
// a title bar with the table's title over the list of its fields. Its
// position and size are the table's design positions.
#include "designer/tablepainter.h"
#include "designer/tablereplistbox.h"

#include <QWidget>

#include <memory>
#include <vector>

namespace vm20 {

class TDSTable;
class TNStructDesignPanel;

class TTableRep : public QWidget
{
public:
    TTableRep(TNStructDesignPanel *panel, TDSTable *table, QWidget *parent);

    TDSTable *Table() const { return FTable; }
    TTableRepListBox *ListBox() const { return FListBox; }
    QString Title() const;
    bool Active() const { return FActive; }
    void SetActive(bool value);

    // The y of a field's link end in design-area coordinates.
    int GetFieldYPosition(const QString &fieldName) const;
    // The x and direction of a link end on this table towards `other`.
    void GetXPosRelativeTo(const TTableRep *other, int &x, int &direction) const;
    void RecalcLinkPositions();
    // The table's data fields by column name in model order, then the join
    // columns of its links that are not among them.
    void FillFieldsList();
    // Paints the window as it is shown (title, visible fields) at its place.
    void Draw(QPainter *painter) const;
    bool InTitle(QPoint pos) const;
    // Fits the field list under the title bar (also while the window is
    // hidden and gets no resize events).
    void LayoutList();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    enum TDragKind { dkNone, dkMove, dkResize };
    TDragKind DragKindAt(QPoint pos) const;

    TNStructDesignPanel *FPanel;
    TDSTable *FTable;
    TTableRepListBox *FListBox;
    TTableMetrics FMetrics;
    bool FActive = false;
    TDragKind FDrag = dkNone;
    QPoint FDragStart;      // in the parent's coordinates
    QRect FStartGeometry;
};

class TTableRepList
{
public:
    int Count() const { return int(FItems.size()); }
    TTableRep *Items(int index) const { return FItems[size_t(index)].get(); }
    void Add(std::unique_ptr<TTableRep> rep) { FItems.emplace_back(rep.release()); }
    // A window may be removed from inside its own event handler (a table
    // deleted from its menu, a link drawn by a click in it): it is hidden at
    // once and freed when control is back in the event loop.
    void Delete(int index);
    void Clear();
    int IndexByDSTable(const TDSTable *table) const;
    TTableRep *FindByTable(const TDSTable *table) const;
    // The topmost table window under a design-area point, or none.
    TTableRep *IsOverSomeTable(int x, int y) const;
    auto begin() const { return FItems.begin(); }
    auto end() const { return FItems.end(); }

private:
    struct TLaterDelete
    {
        void operator()(TTableRep *rep) const;
    };
    std::vector<std::unique_ptr<TTableRep, TLaterDelete>> FItems;
};

} // namespace vm20
