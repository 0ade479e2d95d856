#include "designer/structdesignpanel.h"

#include "designer/designarea.h"
#include "designer/structuredesignerror.h"
#include "model/dbstructure.h"
#include "model/messages.h"
#include "ui/readablecolor.h"

#include <QLabel>
#include <QPainter>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace vm20 {

TNStructDesignPanel::TNStructDesignPanel(QWidget *parent)
    : QFrame(parent)
    , FDesignArea(new TNDesignArea(this))
    , FFullScreenButton(new QToolButton(this))
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(FDesignArea);
    FHintTexts = {
        QStringLiteral("SelectTableHint=Click inside table to select it"),
        QStringLiteral("SelectLinkHint=Click on link line to select it"),
        QStringLiteral("IdleHint=To add/delete tables and links - right click on selected object "
                       "and chose necessary operation"),
        QStringLiteral("AddLinkStage1Hint=Select a field in the first linking table"),
        QStringLiteral("AddLinkStage2Hint=Select a field in the second linking table"),
    };
    FFullScreenButton->setAutoRaise(true);
    connect(FFullScreenButton, &QToolButton::clicked, this,
            [this] { SetFullScreenMode(!FFullScreenMode); });
    UpdateFullScreenButton();
}

TNStructDesignPanel::~TNStructDesignPanel()
{
    if (FFullScreenMode)
        SetFullScreenMode(false);
    DetachModel();
    FNewLink.reset();
    FLinkReps.Clear();
    FTableReps.Clear();
}

// --- model and activation ---------------------------------------------------------

void TNStructDesignPanel::SetStruct(TNCustomDBStructure *value)
{
    if (FStruct == value)
        return;
    const bool wasActive = FActive;
    Deactivate();
    DetachModel();
    FStruct = value;
    AttachModel();
    if (wasActive && FStruct)
        Activate();
}

void TNStructDesignPanel::Activate()
{
    if (!FStruct)
        throw EStructureDesignError(SStructureNotSpecified);
    Clear();
    FActive = true;
    FRebuilding = true;
    CreateTableList();
    RearrangeTables();
    CreateLinkList();
    FRebuilding = false;
    FitCanvas();
    FDesignArea->Canvas()->update();
}

void TNStructDesignPanel::Deactivate()
{
    if (!FActive)
        return;
    Clear();
    FActive = false;
}

void TNStructDesignPanel::Clear()
{
    if (FAddingLink)
        CancelAddLink();
    FActiveTable = nullptr;
    FActiveLink = nullptr;
    FLinkReps.Clear();
    FTableReps.Clear();
    FDesignArea->Canvas()->update();
}

void TNStructDesignPanel::CreateTableList()
{
    FTableReps.Clear();
    if (!FStruct)
        return;
    QWidget *canvas = FDesignArea->Canvas();
    const TTableMetrics metrics = TTableMetrics::For(canvas->font());
    for (int i = 0; i < FStruct->GetTableCount(); ++i) {
        TDSTable *table = FStruct->GetTable(i);
        auto rep = std::make_unique<TTableRep>(this, table, canvas);
        rep->FillFieldsList();
        QRect box(table->DesignLeft(), table->DesignTop(), table->DesignWidth(),
                  table->DesignHeight());
        if (box.width() <= 0 || box.height() <= 0)
            box.setSize(metrics.DefaultSize(canvas->font(), rep->Title(), rep->ListBox()->Items()));
        rep->setGeometry(box);
        rep->LayoutList();
        rep->show();
        FTableReps.Add(std::move(rep));
    }
}

void TNStructDesignPanel::CreateLinkList()
{
    FLinkReps.Clear();
    if (!FStruct)
        return;
    for (int i = 0; i < FStruct->GetLinkCount(); ++i) {
        TDSLink *link = FStruct->GetLink(i);
        TTableRep *rep1 = FTableReps.FindByTable(link->Table1());
        TTableRep *rep2 = FTableReps.FindByTable(link->Table2());
        // A link to a table the model does not hold cannot be drawn.
        if (!rep1 || !rep2)
            continue;
        auto rep = std::make_unique<TLinkRep>(this, link, rep1, rep2);
        rep->RecalcPositions();
        FLinkReps.Add(std::move(rep));
    }
}

void TNStructDesignPanel::DBStructureChanged()
{
    if (!FActive)
        return;
    const TDSTable *activeTable = FActiveTable ? FActiveTable->Table() : nullptr;
    const TDSLink *activeLink = FActiveLink ? FActiveLink->Link() : nullptr;
    Activate();
    // Only pointers the model still holds may be looked up again.
    if (activeTable && FStruct->IndexOfTable(activeTable) >= 0)
        SetActiveTable(FTableReps.FindByTable(activeTable));
    if (activeLink && FStruct->IndexOfLink(activeLink) >= 0)
        SetActiveLink(LinkRep(activeLink));
}

void TNStructDesignPanel::AttachModel()
{
    if (FStruct)
        FStruct->AddObserver(this);
}

void TNStructDesignPanel::DetachModel()
{
    if (FStruct)
        FStruct->RemoveObserver(this);
}

void TNStructDesignPanel::ModelChanged(TNCustomDBStructure *, const TModelChange &change)
{
    if (FRebuilding || !FActive)
        return;
    if (FAddingLink)
        CancelAddLink();
    switch (change.Kind) {
    case mckOptions:
    case mckOperators:
    case mckConditions:
    case mckGroups:
        return;
    case mckLinks: {
        // The table windows stay (one may be the sender of the click that
        // added the link); their lists gain or lose join columns.
        const TDSLink *activeLink = FActiveLink ? FActiveLink->Link() : nullptr;
        FActiveLink = nullptr;
        for (const auto &rep : FTableReps)
            rep->FillFieldsList();
        CreateLinkList();
        if (activeLink)
            SetActiveLink(LinkRep(activeLink));
        InvalidateLinks();
        return;
    }
    default:
        DBStructureChanged();
    }
}

void TNStructDesignPanel::EntityDeleting(TNCustomDBStructure *model, const TModelChange &entity)
{
    if (!FActive || !entity.Entity)
        return;
    if (FAddingLink)
        CancelAddLink();
    // Nothing shown may point at the entity once it is freed; the change
    // notice that follows rebuilds the rest.
    if (entity.Kind == mckTables) {
        const TDSTable *table = static_cast<const TDSTable *>(entity.Entity);
        for (int i = 0; i < model->GetLinkCount(); ++i)
            if (model->GetLink(i)->ContainsTable(table))
                ForgetLink(model->GetLink(i));
        ForgetTable(table);
    } else if (entity.Kind == mckLinks) {
        ForgetLink(static_cast<const TDSLink *>(entity.Entity));
    }
}

void TNStructDesignPanel::ForgetLink(const TDSLink *link)
{
    const int index = FLinkReps.IndexByDSLink(link);
    if (index < 0)
        return;
    if (FActiveLink == FLinkReps.Items(index))
        FActiveLink = nullptr;
    InvalidateLinks(FLinkReps.Items(index)->Region());
    FLinkReps.Delete(index);
}

void TNStructDesignPanel::ForgetTable(const TDSTable *table)
{
    const int index = FTableReps.IndexByDSTable(table);
    if (index < 0)
        return;
    TTableRep *rep = FTableReps.Items(index);
    for (int i = FLinkReps.Count() - 1; i >= 0; --i)
        if (FLinkReps.Items(i)->TableRep1() == rep || FLinkReps.Items(i)->TableRep2() == rep)
            ForgetLink(FLinkReps.Items(i)->Link());
    if (FActiveTable == rep)
        FActiveTable = nullptr;
    FTableReps.Delete(index);
}

void TNStructDesignPanel::ModelDestroyed(TNCustomDBStructure *)
{
    FAddingLink = false;
    FNewLink.reset();
    FActiveTable = nullptr;
    FActiveLink = nullptr;
    FLinkReps.Clear();
    FTableReps.Clear();
    FActive = false;
    FStruct = nullptr;
}

// --- arrangement ------------------------------------------------------------------

void TNStructDesignPanel::ArrangeTables()
{
    std::vector<QSize> sizes;
    sizes.reserve(size_t(FTableReps.Count()));
    for (const auto &rep : FTableReps)
        sizes.push_back(rep->size());
    const std::vector<QPoint> places =
        vm20::ArrangeTables(sizes, FDesignArea->ClientWidth(), FSpacing);
    const bool rebuilding = FRebuilding;
    FRebuilding = true;   // one link recalculation at the end, not one per table
    for (int i = 0; i < FTableReps.Count(); ++i)
        FTableReps.Items(i)->move(places[size_t(i)]);
    FRebuilding = rebuilding;
    for (const auto &rep : FTableReps)
        WriteDesignPositions(rep.get());
    RecalcLinkPositions();
    FitCanvas();
}

void TNStructDesignPanel::ArrangeNewTableRep(TTableRep *rep)
{
    std::vector<QRect> others;
    for (const auto &other : FTableReps)
        if (other.get() != rep)
            others.push_back(other->geometry());
    rep->move(vm20::ArrangeNewTableRep(others, rep->size(), FDesignArea->ClientWidth(), FSpacing));
}

void TNStructDesignPanel::RearrangeTables()
{
    auto placed = [](const TTableRep *rep) {
        const TDSTable *t = rep->Table();
        return t->DesignWidth() > 0 && t->DesignHeight() > 0;
    };
    const bool anyPlaced =
        std::any_of(FTableReps.begin(), FTableReps.end(), [&](const auto &r) { return placed(r.get()); });
    if (!anyPlaced) {
        ArrangeTables();
    } else {
        std::vector<QRect> others;
        for (const auto &rep : FTableReps)
            if (placed(rep.get()))
                others.push_back(rep->geometry());
        for (const auto &rep : FTableReps) {
            if (placed(rep.get()))
                continue;
            const QPoint at = vm20::ArrangeNewTableRep(others, rep->size(),
                                                       FDesignArea->ClientWidth(), FSpacing);
            rep->move(at);
            others.push_back(rep->geometry());
        }
    }
    for (const auto &rep : FTableReps)
        WriteDesignPositions(rep.get());
}

void TNStructDesignPanel::RecalcLinkPositions()
{
    for (const auto &rep : FLinkReps)
        rep->RecalcPositions();
}

void TNStructDesignPanel::RecalcLinkPositionsOf(const TTableRep *rep)
{
    if (FRebuilding)
        return;
    // Routed links may have to avoid the table wherever it now is.
    const bool all = FLinkRouting == lrAroundTables;
    for (const auto &link : FLinkReps)
        if (all || link->TableRep1() == rep || link->TableRep2() == rep)
            link->RecalcPositions();
    if (FNewLink && FNewLink->TableRep1() == rep) {
        FNewLink->Nodes1().Clear();
        LinkField1Selected(FLinkTable1, FLinkField1);
    }
}

void TNStructDesignPanel::InvalidateLinks()
{
    FDesignArea->Canvas()->update();
}

void TNStructDesignPanel::InvalidateLinks(const QRegion &area)
{
    if (FRebuilding || area.isEmpty())
        return;
    // Table windows are opaque and lie over the lines: a line moving under
    // one changes nothing on screen, and repainting the windows along every
    // moved line would cost more than the lines themselves.
    QRegion shown = area;
    const QRect bounds = area.boundingRect();
    for (const auto &rep : FTableReps)
        if (rep->isVisible() && rep->geometry().intersects(bounds) &&
            shown.intersects(rep->geometry()))
            shown -= rep->geometry();
    if (!shown.isEmpty())
        FDesignArea->Canvas()->update(shown);
}

void TNStructDesignPanel::SetLinkRouting(TLinkRouting value)
{
    if (FLinkRouting == value)
        return;
    FLinkRouting = value;
    RecalcLinkPositions();
    InvalidateLinks();
}

void TNStructDesignPanel::TableRepGeometryChanged(TTableRep *rep)
{
    if (FRebuilding)
        return;
    WriteDesignPositions(rep);
    rep->RecalcLinkPositions();
    FitCanvas();
}

void TNStructDesignPanel::WriteDesignPositions(const TTableRep *rep) const
{
    TDSTable *table = rep->Table();
    const QRect box = rep->geometry();
    table->SetDesignLeft(box.left());
    table->SetDesignTop(box.top());
    table->SetDesignWidth(box.width());
    table->SetDesignHeight(box.height());
}

void TNStructDesignPanel::FitCanvas()
{
    FDesignArea->FitCanvas(DiagramRect());
}

std::vector<QRect> TNStructDesignPanel::TableRects() const
{
    std::vector<QRect> rects;
    rects.reserve(size_t(FTableReps.Count()));
    for (const auto &rep : FTableReps)
        rects.push_back(rep->geometry());
    return rects;
}

QRect TNStructDesignPanel::DiagramRect() const
{
    QRect all;
    for (const auto &rep : FTableReps)
        all = all.united(rep->geometry());
    for (const auto &rep : FLinkReps)
        all = all.united(rep->BoundingRect());
    return all;
}

// --- selection ----------------------------------------------------------------------

TLinkRep *TNStructDesignPanel::LinkRep(const TDSLink *link) const
{
    const int index = FLinkReps.IndexByDSLink(link);
    return index >= 0 ? FLinkReps.Items(index) : nullptr;
}

void TNStructDesignPanel::SetActiveTable(TTableRep *rep)
{
    if (rep == FActiveTable)
        return;
    if (FActiveTable)
        FActiveTable->SetActive(false);
    FActiveTable = rep;
    if (rep) {
        SetActiveLink(nullptr);
        rep->SetActive(true);
    }
    DoOnSelectTable();
}

void TNStructDesignPanel::SetActiveLink(TLinkRep *rep)
{
    if (rep == FActiveLink)
        return;
    if (FActiveLink)
        FActiveLink->SetActive(false);
    FActiveLink = rep;
    if (rep) {
        SetActiveTable(nullptr);
        rep->SetActive(true);
    }
    DoOnSelectLink();
}

void TNStructDesignPanel::DoOnSelectTable()
{
    if (OnSelectTable)
        OnSelectTable(this, FActiveTable);
}

void TNStructDesignPanel::DoOnSelectLink()
{
    if (OnSelectLink)
        OnSelectLink(this, FActiveLink);
}

void TNStructDesignPanel::DoAddLinkStart()
{
    if (OnAddLinkStart)
        OnAddLinkStart(this);
}

void TNStructDesignPanel::DoAddLinkFinish()
{
    if (OnAddLinkFinish)
        OnAddLinkFinish(this);
}

// --- painting -------------------------------------------------------------------------

void TNStructDesignPanel::DrawLinks(QPainter *painter, const QRegion &clip, const QColor &background) const
{
    const QColor line = ReadableOn(Qt::black, background);
    for (const auto &rep : FLinkReps)
        if (clip.intersects(rep->BoundingRect()))
            rep->Paint(painter, line, clip);
    if (FNewLink)
        FNewLink->Paint(painter, line);
}

} // namespace vm20
