#pragma once
// The diagram of a data model: its tables as small movable, sizable windows
// listing their fields, its links as lines between the linked fields. A
// model's developer selects, adds and deletes tables and links on it, draws
// a new link by picking a field in each of two tables, arranges the tables
// and switches the diagram to full screen. The panel keeps no model data:
// table places are the tables' design positions, and everything shown is
// rebuilt from the model when the model reports a change.
#include "designer/diagramgeometry.h"
#include "designer/linkrep.h"
#include "designer/tablerep.h"
#include "model/dbstructure.h"
#include "model/modelobserver.h"

#include <QFrame>
#include <QPointer>
#include <QStringList>

#include <functional>
#include <memory>

class QLabel;
class QMenu;
class QPaintDevice;
class QToolButton;

namespace vm20 {

class TNDesignArea;

// How the line between a link's two junctions runs.
enum TLinkRouting {
    lrStraight,       // one straight (in general diagonal) line
    lrAroundTables    // an orthogonal detour where the straight line crosses a table
};

class TNStructDesignPanel : public QFrame, private TNModelObserver
{
public:
    explicit TNStructDesignPanel(QWidget *parent = nullptr);
    ~TNStructDesignPanel() override;

    // --- model and activation ----------------------------------------------------
    TNCustomDBStructure *Struct() const { return FStruct; }
    void SetStruct(TNCustomDBStructure *value);
    bool Active() const { return FActive; }
    // Builds the table windows and link lines from the model.
    void Activate();
    void Deactivate();
    void Clear();
    void CreateTableList();
    void CreateLinkList();
    // Rebuilds after the model changed, keeping the selection where it can.
    void DBStructureChanged();

    // --- arrangement ----------------------------------------------------------------
    int LeftMargin() const { return FSpacing.LeftMargin; }
    void SetLeftMargin(int value) { FSpacing.LeftMargin = value; }
    int TopMargin() const { return FSpacing.TopMargin; }
    void SetTopMargin(int value) { FSpacing.TopMargin = value; }
    int HorzGap() const { return FSpacing.HorzGap; }
    void SetHorzGap(int value) { FSpacing.HorzGap = value; }
    int VertGap() const { return FSpacing.VertGap; }
    void SetVertGap(int value) { FSpacing.VertGap = value; }
    void ArrangeTables();
    void ArrangeNewTableRep(TTableRep *rep);
    // Places the tables that have no design position yet: all of them by
    // ArrangeTables when none has one, else each beside the others.
    void RearrangeTables();
    void RecalcLinkPositions();
    void RecalcLinkPositionsOf(const TTableRep *rep);
    void InvalidateLinks();
    void InvalidateLinks(const QRegion &area);
    TLinkRouting LinkRouting() const { return FLinkRouting; }
    void SetLinkRouting(TLinkRouting value);

    // --- what is shown ------------------------------------------------------------------
    TTableRep *TableRep(const TDSTable *table) const { return FTableReps.FindByTable(table); }
    TLinkRep *LinkRep(const TDSLink *link) const;
    const TTableRepList &TableReps() const { return FTableReps; }
    const TLinkRepList &LinkReps() const { return FLinkReps; }
    TNDesignArea *DesignArea() const { return FDesignArea; }
    TTableRep *ActiveTable() const { return FActiveTable; }
    TLinkRep *ActiveLink() const { return FActiveLink; }
    void SetActiveTable(TTableRep *rep);
    void SetActiveLink(TLinkRep *rep);
    std::vector<QRect> TableRects() const;
    // The rectangle of everything drawn, in design-area coordinates.
    QRect DiagramRect() const;
    // The size RenderTo paints: the diagram from the origin, with a margin.
    QSize DiagramSize() const;

    // --- editing ----------------------------------------------------------------------------
    void AddTablesDlg();
    void DeleteActiveTable();
    void DeleteTable(TTableRep *rep);
    void DeleteAllTableLinks(TTableRep *rep);
    void DeleteActiveLink();
    void DeleteLink(TLinkRep *rep);
    void EditActiveLink();

    // --- adding a link ------------------------------------------------------------------------
    bool AddingLink() const { return FAddingLink; }
    // 0 when no link is being added, 1 before the first field, 2 after it.
    int AddLinkStage() const;
    TLinkRep *NewLink() const { return FNewLink.get(); }
    void StartAddLink();
    void CancelAddLink();
    void FinishAddLink();
    void LinkField1Selected(TTableRep *rep, const QString &fieldName);
    void LinkField2Selected(TTableRep *rep, const QString &fieldName);

    // --- hints and full screen ---------------------------------------------------------------
    // name=text lines: SelectTableHint, SelectLinkHint, IdleHint,
    // AddLinkStage1Hint, AddLinkStage2Hint.
    QStringList &HintTexts() { return FHintTexts; }
    bool ActionHints() const { return FHintLabel != nullptr; }
    void SetActionHints(bool value);
    // The text the hint line shows now (empty when hints are off).
    QString CurrentHint() const;
    bool ShowFullScreenButton() const { return FShowFullScreenButton; }
    void SetShowFullScreenButton(bool value);
    QToolButton *FullScreenButton() const { return FFullScreenButton; }
    bool FullScreenMode() const { return FFullScreenMode; }
    void SetFullScreenMode(bool value);
    QWidget *FullScreenForm() const { return FFullScreenForm; }

    // --- rendering -------------------------------------------------------------------------------
    // Paints the whole diagram (white background, links, tables) into
    // `device` at its origin; the device should be DiagramSize() large.
    void RenderTo(QPaintDevice *device);
    // Writes the diagram as a PNG (at `scale` device pixels per pixel) or,
    // for a name ending in ".svg", as SVG. Raises EStructureDesignError
    // when the file cannot be written.
    void SaveDiagram(const QString &fileName, qreal scale = 1);

    // --- events and seams ---------------------------------------------------------------------------
    std::function<void(TNStructDesignPanel *, TTableRep *)> OnSelectTable;
    std::function<void(TNStructDesignPanel *, TLinkRep *)> OnSelectLink;
    std::function<void(TNStructDesignPanel *)> OnAddLinkStart;
    std::function<void(TNStructDesignPanel *)> OnAddLinkFinish;
    // Asked before a table or link is deleted; without it a message box asks.
    std::function<bool(const QString &question)> OnConfirm;
    // Opens the link editor on a link; without it nothing happens.
    std::function<void(TNStructDesignPanel *, TDSLink *)> LinkEditor;
    // Lets the user add tables to the model; without it nothing happens.
    std::function<void(TNStructDesignPanel *)> TablesDialog;
    // When set, called instead of running a context menu; returns the
    // chosen action or none.
    std::function<QAction *(QMenu *, QPoint)> MenuHook;

    void DoOnSelectTable();
    void DoOnSelectLink();
    void DoAddLinkStart();
    void DoAddLinkFinish();

    // --- called by the table windows and the design area ---------------------------------------
    // The lines are black, drawn lighter over a dark background.
    void DrawLinks(QPainter *painter, const QRegion &clip, const QColor &background) const;
    void TableRepGeometryChanged(TTableRep *rep);
    void TableHovered(TTableRep *rep);
    void AreaMousePress(QPoint pos, Qt::MouseButton button);
    void AreaMouseMove(QPoint pos);
    void ShowTableMenu(TTableRep *rep, QPoint globalPos);
    void ShowAreaMenu(QPoint pos, QPoint globalPos);
    void MouseMoveOverListBox(TTableRep *rep, QPoint listPos);
    void AddLinkLBExit(TTableRep *rep);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void AttachModel();
    void DetachModel();
    void ModelChanged(TNCustomDBStructure *model, const TModelChange &change) override;
    void EntityDeleting(TNCustomDBStructure *model, const TModelChange &entity) override;
    void ModelDestroyed(TNCustomDBStructure *model) override;
    void ForgetTable(const TDSTable *table);
    void ForgetLink(const TDSLink *link);
    void SetHint(const QString &name);
    void UpdateFullScreenButton();
    void PlaceFullScreenButton();
    void FitCanvas();
    bool Confirm(const QString &question);
    QAction *RunMenu(QMenu *menu, QPoint globalPos);
    void SetLinkHandlers(bool adding);
    void WriteDesignPositions(const TTableRep *rep) const;
    void DrawDiagram(QPainter *painter);

    QPointer<TNCustomDBStructure> FStruct;
    bool FActive = false;
    TArrangeSpacing FSpacing;
    TLinkRouting FLinkRouting = lrStraight;
    TNDesignArea *FDesignArea;
    TTableRepList FTableReps;
    TLinkRepList FLinkReps;
    TTableRep *FActiveTable = nullptr;
    TLinkRep *FActiveLink = nullptr;
    bool FRebuilding = false;

    bool FAddingLink = false;
    std::unique_ptr<TLinkRep> FNewLink;
    TTableRep *FLinkTable1 = nullptr;
    QString FLinkField1;

    QStringList FHintTexts;
    QLabel *FHintLabel = nullptr;
    QString FHintName;

    bool FShowFullScreenButton = true;
    QToolButton *FFullScreenButton;
    bool FFullScreenMode = false;
    QWidget *FFullScreenForm = nullptr;
    QPointer<QWidget> FSavedParent;
    QRect FSavedGeometry;
    int FSavedLayoutIndex = -1;
};

} // namespace vm20
