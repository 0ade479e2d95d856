#include "ui/querypanel.h"

#include "model/dbstructure.h"
#include "model/errors.h"
#include "ui/dropdownlabel.h"
#include "ui/dropdownpopup.h"
#include "ui/querypanelaccessible.h"
#include "ui/readablecolor.h"
#include "ui/rndbtn.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QEvent>
#include <QFontMetrics>
#include <QPainter>
#include <QPaintEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTimer>

namespace vm20 {

TNQueryPanel::TNQueryPanel(QWidget *parent)
    : QAbstractScrollArea(parent),
      FAppearance(std::make_unique<TQPAppearance>(this)),
      FSubQueryAppearance(std::make_unique<TQPAppearance>())
{
    InstallQueryPanelAccessibility();
    setFocusPolicy(Qt::StrongFocus);
    NewViewport();
    FOwnQuery = std::make_unique<TNQuery>();
    AttachQuery(FOwnQuery.get());
    CreateMenus();
}

TNQueryPanel::~TNQueryPanel()
{
    FDestroying = true;
    Deactivate();
    DetachQuery();
    ObserveModel(nullptr);
}

void TNQueryPanel::NewViewport()
{
    auto *port = new QWidget;
    port->setBackgroundRole(QPalette::Base);
    port->setAutoFillBackground(false);
    setViewport(port);
    // A hidden child: the row views' bins keep their widgets there while
    // out of view.
    FRowStore = std::make_unique<QWidget>(this);
    FRowStore->hide();
}

// --- the query -------------------------------------------------------------------------

void TNQueryPanel::AttachQuery(TNQuery *query)
{
    FQuery = query;
    WatchForHistory();
    FQuery->AddObserver(this);
    ObserveModel(FQuery->DBStruct());
    UpdateMenus();
}

void TNQueryPanel::DetachQuery()
{
    if (FQuery)
        FQuery->RemoveObserver(this);
    FQuery = nullptr;
}

void TNQueryPanel::SetQuery(TNQuery *query)
{
    if (!query)
        query = FOwnQuery.get();
    if (query == FQuery)
        return;
    const bool wasActive = FActive;
    Deactivate();
    DetachQuery();
    AttachQuery(query);
    if (wasActive)
        RebuildQuietly();
    HistoryRestart();
}

void TNQueryPanel::SetDBStruct(TNCustomDBStructure *value)
{
    if (FQuery->DBStruct() == value)
        return;
    const bool wasActive = FActive;
    Deactivate();
    FQuery->SetDBStruct(value);
    ObserveModel(value);
    if (wasActive || (FLoaded && value))
        RebuildQuietly();
}

void TNQueryPanel::ObserveModel(TNCustomDBStructure *model)
{
    if (FModel == model)
        return;
    if (FModel) {
        FModel->RemoveObserver(this);
        disconnect(FModel, &QObject::destroyed, this, nullptr);
    }
    FModel = model;
    if (FModel) {
        FModel->AddObserver(this);
        // The rows may point into the model: nothing of it may be read once
        // it goes, and a model need not say so before its QObject part does.
        connect(FModel, &QObject::destroyed, this, [this] { Deactivate(); });
    }
    UpdateMenus();
}

// --- activation ---------------------------------------------------------------------------

void TNQueryPanel::Activate()
{
    if (FActive)
        return;
    FActive = true;
    try {
        BuildAll(true);
        HistorySync();
    } catch (...) {
        Deactivate();
        throw;
    }
    viewport()->update();
}

void TNQueryPanel::Deactivate()
{
    if (!FActive)
        return;
    FActive = false;
    FCurrentRow = nullptr;
    FLayoutPending = false;
    // Freeing the controls one by one costs a search of the viewport's
    // children each; a new viewport frees them all in one pass.
    // Each freed control would search all events still queued (the ones
    // its making posted) for its own: deliver them first. Not while the
    // panel goes with its window: the events would reach widgets around it
    // that are half destroyed.
    // (Delivering them may paint: nothing is in view any more.)
    FOrder.clear();
    FInView.clear();
    if (!FDestroying)
        QCoreApplication::sendPostedEvents();
    if (FInControlHandler && !FDestroying) {
        // A control of the panel is inside its own handler (a host's change
        // handler rebuilt the panel): the controls go one by one, later.
        FViews.clear();
        if (QWidget *label = FAddRowLabel.release()) {
            label->hide();
            label->deleteLater();
        }
        return;
    }
    for (auto &[row, view] : FViews)
        view->Abandon();
    FViews.clear();
    (void)FAddRowLabel.release();
    if (!FDestroying)
        NewViewport();
}

void TNQueryPanel::Loaded()
{
    FLoaded = true;
    if (FQuery->DBStruct())
        Activate();
}

void TNQueryPanel::RefreshPanel()
{
    if (!FActive)
        return;
    Rebuild();
}

// A rebuild the host did not ask for: a bad title shows as written.
void TNQueryPanel::RebuildQuietly()
{
    Deactivate();
    FActive = true;
    BuildAll(false);
}

void TNQueryPanel::BuildAll(bool strict)
{
    BuildViews(FQuery->Filter(), strict);
    FAddRowLabel = std::make_unique<TDropDownLabel>(viewport());
    FAddRowLabel->SetFixed(true);
    WireAddRowLabel();
    SetAddRowCaption();
    PlaceAllRows();
    ShowAllRows();
}

void TNQueryPanel::Rebuild()
{
    Deactivate();
    Activate();
}

void TNQueryPanel::showEvent(QShowEvent *event)
{
    QAbstractScrollArea::showEvent(event);
    if (!FActive && !FDestroying) {
        try {
            Activate();
        } catch (const Exception &) {
            RebuildQuietly();
        }
    }
}

// --- row views -----------------------------------------------------------------------------

void TNQueryPanel::BuildViews(TFilterRow *top, bool strict)
{
    FMissingListed = false;
    // Trees may nest deeper than the call stack allows.
    std::vector<TFilterRow *> stack{top};
    while (!stack.empty()) {
        TFilterRow *row = stack.back();
        stack.pop_back();
        FViews[row] = std::make_unique<TQueryRowView>(this, row, strict);
        if (row->IsBracket()) {
            const auto &rows = static_cast<TFilterBracket *>(row)->Rows();
            for (auto it = rows.rbegin(); it != rows.rend(); ++it)
                stack.push_back(it->get());
        }
    }
}

QString TNQueryPanel::MissingText(const TFilterRow *row) const
{
    if (!FMissingListed) {
        FMissingListed = true;
        FMissingByRow.clear();
        for (const TUnresolvedItem &item : FQuery->UnresolvedItems()) {
            if (!item.Row)
                continue;
            const QString what = item.Kind == TUnresolvedItem::ukField      ? QStringLiteral("field")
                                 : item.Kind == TUnresolvedItem::ukOperator ? QStringLiteral("operator")
                                                                            : QStringLiteral("condition");
            QString &text = FMissingByRow[item.Row];
            text += text.isEmpty() ? what : QStringLiteral(", ") + what;
        }
    }
    return FMissingByRow.value(row);
}

void TNQueryPanel::DropViews(TFilterRow *top)
{
    std::vector<TFilterRow *> stack{top};
    while (!stack.empty()) {
        TFilterRow *row = stack.back();
        stack.pop_back();
        if (row == FCurrentRow)
            FCurrentRow = nullptr;
        FViews.erase(row);
        if (row->IsBracket())
            for (const auto &child : static_cast<TFilterBracket *>(row)->Rows())
                stack.push_back(child.get());
    }
}

TQueryRowView *TNQueryPanel::RowView(const TFilterRow *row) const
{
    EnsureLayout();
    const auto found = FViews.find(row);
    if (found == FViews.end())
        return nullptr;
    found->second->EnsurePlaced();
    return found->second.get();
}

TDropDownLabel *TNQueryPanel::AddRowLabel() const
{
    EnsureLayout();
    return FAddRowLabel.get();
}

int TNQueryPanel::RowHeight() const
{
    return QFontMetrics(font()).height() + 1;
}

std::vector<TFilterRow *> TNQueryPanel::DisplayRows() const
{
    std::vector<TFilterRow *> rows;
    if (!FActive)
        return rows;
    const bool hideRoot = FAppearance->Has(TQPAppearance::aoHideRootRow);
    std::vector<TFilterRow *> stack{FQuery->Filter()};
    while (!stack.empty()) {
        TFilterRow *row = stack.back();
        stack.pop_back();
        if (row->Parent() || !hideRoot)
            rows.push_back(row);
        if (row->IsBracket()) {
            const auto &children = static_cast<TFilterBracket *>(row)->Rows();
            for (auto it = children.rbegin(); it != children.rend(); ++it)
                stack.push_back(it->get());
        }
    }
    return rows;
}

TFilterRow *TNQueryPanel::FirstRow() const
{
    if (!FAppearance->Has(TQPAppearance::aoHideRootRow))
        return FQuery->Filter();
    return FQuery->Filter()->GetFirstRow();
}

TFilterRow *TNQueryPanel::LastRow() const
{
    TFilterRow *row = FQuery->Filter();
    while (row->IsBracket() && static_cast<TFilterBracket *>(row)->GetRowCount() > 0)
        row = static_cast<TFilterBracket *>(row)->GetLastRow();
    if (row == FQuery->Filter() && FAppearance->Has(TQPAppearance::aoHideRootRow))
        return nullptr;
    return row;
}

void TNQueryPanel::SetCurrentRow(TFilterRow *row)
{
    if (row && !FViews.count(row))
        row = nullptr;
    if (FCurrentRow == row)
        return;
    TFilterRow *old = FCurrentRow;
    FCurrentRow = row;
    if (TQueryRowView *view = row ? RowView(row) : nullptr)
        if (view->CurrentControlIndex() < 0)
            view->SetCurrentControlIndex(view->FirstCurControl());
    // Stepping from row to row repaints the two bands only; a layout still
    // to come repaints everything anyway.
    if (old && row && FViews.count(old) && !FLayoutPending && !FQuery->Destroying()) {
        RefreshRow(old);
        RefreshRow(row);
    } else {
        viewport()->update();
    }
    AnnounceCurrent();
}

int TNQueryPanel::CurrentRowNum() const
{
    const TQueryRowView *view = FCurrentRow ? RowView(FCurrentRow) : nullptr;
    return view ? view->RowNum() : -1;
}

void TNQueryPanel::SetShowFrame(bool value)
{
    if (FShowFrame == value)
        return;
    FShowFrame = value;
    viewport()->update();
}

void TNQueryPanel::SetLayoutValue(int &field, int value)
{
    if (field == value)
        return;
    field = value;
    ScheduleLayout();
}

// --- placing -----------------------------------------------------------------------------------

void TNQueryPanel::ScheduleLayout()
{
    if (!FActive)
        return;
    FLayoutPending = true;
    if (FLayoutPosted)
        return;
    FLayoutPosted = true;
    QTimer::singleShot(0, this, [this] {
        FLayoutPosted = false;
        EnsureLayout();
    });
}

void TNQueryPanel::EnsureLayout() const
{
    if (FLayoutPending)
        const_cast<TNQueryPanel *>(this)->PlaceAllRows();
}

void TNQueryPanel::PlaceAllRows()
{
    FLayoutPending = false;
    if (!FActive)
        return;
    // Numbering walks the whole tree, which is cheap; only the rows in view
    // are placed (the others when they come into view or are asked for).
    const bool hideRoot = FAppearance->Has(TQPAppearance::aoHideRootRow);
    const bool rtl = layoutDirection() == Qt::RightToLeft;
    const TLogicalOperatorStyle logOpStyle = FAppearance->LogOpStyle();
    int contentRight = 0;
    int rowNum = hideRoot ? -1 : 0;
    FOrder.clear();
    FOrder.reserve(FViews.size());
    TakePlacementBase();
    struct TEntry
    {
        TFilterRow *row;
        QString id;
        bool showsLogOp;
    };
    // Pre-order walk; each entry carries the row's identifier.
    std::vector<TEntry> stack{{FQuery->Filter(), QString(), false}};
    while (!stack.empty()) {
        TEntry entry = std::move(stack.back());
        stack.pop_back();
        const int depth = int(entry.id.count(QLatin1Char('.')));
        TQueryRowView *view = FViews.at(entry.row).get();
        view->SetRowNum(rowNum++, depth, entry.id);
        if (entry.row->Parent() || !hideRoot) {
            FOrder.push_back(view);
            const int edge = view->UnscrolledContentEdge(entry.showsLogOp);
            contentRight = std::max(contentRight, rtl ? viewport()->width() - edge : edge);
        }
        if (entry.row->IsBracket()) {
            const auto &rows = static_cast<TFilterBracket *>(entry.row)->Rows();
            const int last = int(rows.size()) - 1;
            for (int i = last; i >= 0; --i) {
                const bool logOp = logOpStyle == losBeforeCond ? i > 0 : logOpStyle == losAfterCond && i < last;
                stack.push_back({rows[std::size_t(i)].get(), entry.id + QString::number(i + 1) + QLatin1Char('.'), logOp});
            }
        }
    }
    ++FLayoutStamp;
    int contentBottom = FOrder.empty() ? 0 : RowTop(FHeadTop, int(FOrder.size()) - 1, RowHeight(), FRowSpace) + RowHeight();
    PlaceAddRow();
    if (FAddRowLabel && FAddRowLabel->isVisibleTo(viewport()))
        contentBottom = std::max(contentBottom, FAddRowLabel->geometry().bottom() + verticalScrollBar()->value());
    UpdateScrollBars(contentRight + FHeadLeft, contentBottom + FHeadTop);
    PlaceInView();
}

void TNQueryPanel::TakePlacementBase()
{
    TRowPlacement &p = FPlacementBase.placement;
    p.headerTop = FHeadTop;
    p.headerLeft = FHeadLeft;
    p.tabSpace = FTabSpace;
    p.rowSpace = FRowSpace;
    p.elemSpace = FElemSpace;
    p.rowHeight = RowHeight();
    p.checkBox = QSize(style()->pixelMetric(QStyle::PM_IndicatorWidth), style()->pixelMetric(QStyle::PM_IndicatorHeight));
    p.rightToLeft = layoutDirection() == Qt::RightToLeft;
    p.clientWidth = viewport()->width();
    FPlacementBase.metrics = QFontMetrics(font());
}

void TNQueryPanel::PlaceInView()
{
    // Every row's place depends on the scroll position (and, right to left,
    // on the width a scroll bar leaves).
    ++FLayoutStamp;
    FPlacementBase.placement.clientWidth = viewport()->width();
    const auto [first, last] = RowsInView(int(FOrder.size()), FHeadTop, RowHeight(), FRowSpace,
                                          verticalScrollBar()->value(), viewport()->height());
    std::vector<const TFilterRow *> now;
    now.reserve(std::size_t(last - first));
    for (int i = first; i < last; ++i)
        now.push_back(FOrder[std::size_t(i)]->Row());
    for (const TFilterRow *row : FInView) {
        const auto found = FViews.find(row);
        if (found != FViews.end() && std::find(now.begin(), now.end(), row) == now.end())
            found->second->SetInView(false);
    }
    for (int i = first; i < last; ++i) {
        TQueryRowView *view = FOrder[std::size_t(i)];
        view->PlaceRow();
        view->SetInView(true);
    }
    FInView = std::move(now);
    PlaceAddRow();
    viewport()->update();
}

void TNQueryPanel::PlaceAddRow()
{
    if (!FAddRowLabel)
        return;
    TAddRowPlacement p;
    const TFilterBracket *root = FQuery->Filter();
    p.rootEmptyAndHidden = root->GetRowCount() == 0 && FAppearance->Has(TQPAppearance::aoHideRootRow);
    TFilterRow *last = LastRow();
    const auto found = last ? FViews.find(last) : FViews.end();
    const TQueryRowView *view = found != FViews.end() ? found->second.get() : nullptr;
    if (view)
        view->EnsurePlaced();
    p.lastButton = view ? view->Button()->geometry() : QRect(FHeadLeft, FHeadTop, 0, 0);
    p.labelWidth = FAddRowLabel->sizeHint().width();
    p.headerTop = FHeadTop - verticalScrollBar()->value();
    p.rowSpace = FRowSpace;
    p.rightToLeft = layoutDirection() == Qt::RightToLeft;
    FAddRowLabel->setGeometry(QRect(PlaceAddRowLabel(p), FAddRowLabel->sizeHint()));
    FAddRowLabel->setVisible(FAppearance->Has(TQPAppearance::aoShowAddRow) && !FReadOnly);
}

void TNQueryPanel::UpdateScrollBars(int contentRight, int contentBottom)
{
    const QSize client = viewport()->size();
    horizontalScrollBar()->setPageStep(client.width());
    verticalScrollBar()->setPageStep(client.height());
    verticalScrollBar()->setSingleStep(RowHeight());
    // The caller places the rows in view afterwards, at the final position.
    FSettingRanges = true;
    horizontalScrollBar()->setRange(0, std::max(0, contentRight - client.width()));
    verticalScrollBar()->setRange(0, std::max(0, contentBottom - client.height()));
    FSettingRanges = false;
}

void TNQueryPanel::ShowAllRows()
{
    const bool hideRoot = FAppearance->Has(TQPAppearance::aoHideRootRow);
    for (auto &[row, view] : FViews)
        view->SetVisible(row->Parent() || !hideRoot);
    PlaceAddRow();
}

void TNQueryPanel::HideAllRows()
{
    for (auto &[row, view] : FViews)
        view->SetVisible(false);
    if (FAddRowLabel)
        FAddRowLabel->hide();
}

void TNQueryPanel::ShowRootRow()
{
    if (TQueryRowView *view = RowView(FQuery->Filter()))
        view->SetVisible(true);
}

void TNQueryPanel::HideRootRow()
{
    if (TQueryRowView *view = RowView(FQuery->Filter()))
        view->SetVisible(false);
}

void TNQueryPanel::InitRootRow()
{
    if (!FActive || FAppearance->Has(TQPAppearance::aoHideRootRow))
        return;
    TFilterBracket *root = FQuery->Filter();
    FViews[root] = std::make_unique<TQueryRowView>(this, root, true);
    PlaceAllRows();
    FViews[root]->SetVisible(true);
}

void TNQueryPanel::SetAddRowCaption()
{
    if (!FAddRowLabel)
        return;
    FAddRowLabel->setFont(font());
    QPalette palette = FAddRowLabel->palette();
    palette.setColor(QPalette::WindowText, FAppearance->AddRowColor());
    palette.setColor(QPalette::Text, FAppearance->AddRowColor());
    FAddRowLabel->setPalette(palette);
    FAddRowLabel->SetCaption(QStringLiteral("< ") + GetTitle(QStringLiteral("ttlClickToAdd")) + QStringLiteral(" >"));
}

// --- following the query --------------------------------------------------------------------

void TNQueryPanel::RowInserted(TFilterRow *row)
{
    if (!FActive)
        return;
    BuildViews(row, false);
    // Its neighbours' logical operators follow when the rows in view are
    // placed again.
    const bool hideRoot = FAppearance->Has(TQPAppearance::aoHideRootRow);
    std::vector<TFilterRow *> stack{row};
    while (!stack.empty()) {
        TFilterRow *r = stack.back();
        stack.pop_back();
        FViews.at(r)->SetVisible(r->Parent() || !hideRoot);
        if (r->IsBracket())
            for (const auto &child : static_cast<TFilterBracket *>(r)->Rows())
                stack.push_back(child.get());
    }
    ScheduleLayout();
}

void TNQueryPanel::RowRemoved(TFilterRow *row)
{
    if (!FActive)
        return;
    CurrentRowDestroyed(row);
    DropViews(row);
    FMissingListed = false;
    ScheduleLayout();
}

void TNQueryPanel::RowChanged(TFilterRow *row)
{
    if (!FActive || !FViews.count(row))
        return;
    FMissingListed = false;
    RebuildRowView(row);
    ScheduleLayout();
}

void TNQueryPanel::RebuildRowView(TFilterRow *row)
{
    const bool current = row == FCurrentRow;
    const int control = FViews.at(row)->CurrentControlIndex();
    FViews[row] = std::make_unique<TQueryRowView>(this, row, false);
    FViews[row]->SetCurrentControlIndex(control);
    const bool hideRoot = FAppearance->Has(TQPAppearance::aoHideRootRow);
    FViews[row]->SetVisible(row->Parent() || !hideRoot);
    // Enabling a bracket greys or ungreys its rows; a link type is shown by
    // the logical operators of its rows.
    if (row->IsBracket())
        for (const auto &child : static_cast<TFilterBracket *>(row)->Rows())
            RebuildRowView(child.get());
    if (current)
        FCurrentRow = row;
}

void TNQueryPanel::RowMoved(TFilterRow *row, TFilterBracket *oldParent, int oldIndex)
{
    (void)row;
    (void)oldParent;
    (void)oldIndex;
    // The logical-operator labels show or hide with the rows' positions
    // when the rows in view are placed again.
    ScheduleLayout();
}

void TNQueryPanel::RowAdded(TFilterRow *row)
{
    SetCurrentRow(row);
}

void TNQueryPanel::TitlesChanged()
{
    UpdateMenus();
    if (FActive)
        RebuildQuietly();
}

void TNQueryPanel::Reset()
{
    if (FActive)
        RebuildQuietly();
    HistorySync();
}

void TNQueryPanel::ModelChanged(TNCustomDBStructure *model, const TModelChange &change)
{
    (void)model;
    (void)change;
    UpdateMenus();
    if (FActive)
        RebuildQuietly();
}

// The query drops its references to the entity and reports each row it
// changed, whose view is then built anew and shows the row unresolved. What
// the panel must not keep is an editor open over such a row: its list may
// offer the entity, and accepting it later would bring it back.
void TNQueryPanel::EntityDeleting(TNCustomDBStructure *model, const TModelChange &entity)
{
    (void)model;
    if (!FActive || (entity.Kind != mckFields && entity.Kind != mckOperators && entity.Kind != mckConditions))
        return;
    const auto refers = [&entity](const TFilterRow *row) {
        if (!entity.Entity)
            return true;
        if (const auto *simple = dynamic_cast<const TSimpleCond *>(row))
            return simple->Field() == entity.Entity || simple->Operator() == entity.Entity;
        if (const auto *custom = dynamic_cast<const TCustomCond *>(row))
            return custom->Condition() == entity.Entity;
        return false;
    };
    for (const auto &[row, view] : FViews)
        if (refers(row))
            view->CloseEdit(false);
}

void TNQueryPanel::ModelDestroyed(TNCustomDBStructure *model)
{
    (void)model;
    // The rows may point into the model; nothing of it may be read now.
    Deactivate();
    FModel = nullptr;
}

// --- painting -------------------------------------------------------------------------------

QColor TNQueryPanel::MissingColor()
{
    return QColor(191, 3, 3);
}

void TNQueryPanel::PaintRow(TFilterRow *row, QPainter *painter, bool withControls) const
{
    const TQueryRowView *view = RowView(row);
    if (!view || !view->Visible() || !FAppearance->Has(TQPAppearance::aoAllowKeyboard))
        return;
    const QRect band = view->GetRowRect();
    const bool current = row == FCurrentRow;
    QColor fill = current ? FAppearance->ActiveRowColor() : palette().color(viewport()->backgroundRole());
    if (!fill.isValid())
        fill = palette().color(QPalette::Light);
    painter->fillRect(band, fill);
    if (current && FShowFrame) {
        if (const TDropDownLabel *control = view->CurrentControl()) {
            painter->save();
            painter->setPen(ReadableOn(FAppearance->ControlBorderColor(), fill));
            painter->setBrush(Qt::NoBrush);
            painter->drawRect(control->geometry().adjusted(-2, -2, 1, 1));
            painter->restore();
        }
    }
    if (!withControls)
        return;
    // What the row shows, whether or not it is scrolled into view.
    const bool root = !row->Parent();
    if (root || !FAppearance->Has(TQPAppearance::aoHideRowButtons)) {
        const TNRndBtn *button = view->Button();
        painter->save();
        painter->translate(button->pos());
        button->draw(painter, button->rect());
        painter->restore();
    }
    if (const QCheckBox *box = view->CheckBox(); box && FAppearance->Has(TQPAppearance::aoShowCheckBoxes)) {
        QStyleOptionButton option;
        option.initFrom(box);
        option.rect = box->geometry();
        option.state = (option.state & ~(QStyle::State_On | QStyle::State_Off))
                       | (box->isChecked() ? QStyle::State_On : QStyle::State_Off);
        style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &option, painter, box);
    }
    for (TDropDownLabel *label : view->Controls()) {
        painter->save();
        painter->translate(label->pos());
        label->draw(painter, label->rect());
        painter->restore();
    }
}

void TNQueryPanel::RefreshRow(TFilterRow *row)
{
    if (const TQueryRowView *view = RowView(row))
        viewport()->update(view->GetRowRect());
}

void TNQueryPanel::PaintMissingMark(QPainter *painter, const TQueryRowView &view) const
{
    const int size = RowHeight() - 2;
    const bool rtl = layoutDirection() == Qt::RightToLeft;
    const int edge = view.ContentEdge();
    const QRect mark(rtl ? edge - FElemSpace - size : edge + FElemSpace, view.GetTop() + 1, size, size);
    style()->standardIcon(QStyle::SP_MessageBoxWarning).paint(painter, mark);
}

void TNQueryPanel::draw(QPainter *painter, const QRect &rect) const
{
    EnsureLayout();
    // Background around the child controls only (the labels are drawn
    // over it; only the check boxes paint a background of their own).
    QRegion background(rect);
    const std::vector<const TQueryRowView *> inView = ViewsInView();
    for (const TQueryRowView *view : inView) {
        const QCheckBox *box = view->CheckBox();
        if (box && box->isVisibleTo(viewport()))
            background -= box->geometry();
    }
    if (!background.isEmpty()) {
        painter->save();
        painter->setClipRegion(background);
        painter->fillRect(rect, palette().color(viewport()->backgroundRole()));
        painter->restore();
    }
    if (FCurrentRow && FAppearance->Has(TQPAppearance::aoAllowKeyboard))
        PaintRow(FCurrentRow, painter, false);
    for (const TQueryRowView *view : inView)
        if (!view->Missing().isEmpty() && view->Visible() && view->GetRowRect().intersects(rect))
            PaintMissingMark(painter, *view);
}

std::vector<const TQueryRowView *> TNQueryPanel::ViewsInView() const
{
    std::vector<const TQueryRowView *> views;
    views.reserve(FInView.size());
    for (const TFilterRow *row : FInView)
        if (const auto found = FViews.find(row); found != FViews.end())
            views.push_back(found->second.get());
    return views;
}

void TNQueryPanel::paintEvent(QPaintEvent *event)
{
    QPainter painter(viewport());
    draw(&painter, event->rect());
}

bool TNQueryPanel::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        // The mark of an unresolved row explains itself.
        EnsureLayout();
        for (const TQueryRowView *view : ViewsInView())
            if (!view->Missing().isEmpty() && view->Visible()) {
                auto *help = static_cast<QHelpEvent *>(event);
                if (view->GetRowRect().contains(help->pos())) {
                    viewport()->setToolTip(QStringLiteral("Not in the model: %1").arg(view->Missing()));
                    return QAbstractScrollArea::viewportEvent(event);
                }
            }
        viewport()->setToolTip(QString());
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void TNQueryPanel::scrollContentsBy(int dx, int dy)
{
    if (!FActive || FSettingRanges)
        return;
    (void)dx;
    (void)dy;
    if (FLayoutPending)
        PlaceAllRows();
    else
        PlaceInView();
}

void TNQueryPanel::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    if (FActive)
        PlaceAllRows();
}

void TNQueryPanel::changeEvent(QEvent *event)
{
    QAbstractScrollArea::changeEvent(event);
    if (FActive && (event->type() == QEvent::LayoutDirectionChange || event->type() == QEvent::FontChange))
        RebuildQuietly();
}

// --- sub-queries --------------------------------------------------------------------------

void TNQueryPanel::SetSubQueryHint(TSubQueryHint value)
{
    if (FSubQueryHint == value)
        return;
    FSubQueryHint = value;
    if (FActive)
        RebuildQuietly();
}

QString TNQueryPanel::SubQueryHintText(const TFilterCond &condition, int index) const
{
    switch (FSubQueryHint) {
    case sqhNone:
        return QString();
    case sqhSQL:
        return condition.GetValue(index);
    case sqhText:
        break;
    }
    if (condition.SubQuery().isEmpty())
        return QString();
    try {
        TNQuery hidden;
        hidden.SetDBStruct(FQuery->DBStruct());
        hidden.LoadFromStrings(condition.SubQuery());
        return hidden.GetQueryText();
    } catch (const std::exception &) {
        // A saved sub-query the model no longer reads still has its statement.
        return condition.GetValue(index);
    }
}

void TNQueryPanel::SetUpSubQueryPanel(TNQueryPanel &panel) const
{
    panel.SetDBStruct(FQuery->DBStruct());
    panel.setFont(FSubQueryFont);
    FSubQueryAppearance->AssignTo(panel.Appearance());
}

// --- change notification ---------------------------------------------------------------

void TNQueryPanel::NotifyChange()
{
    if (FInsideEventHandler)
        return;
    {
        // A host's OnChange that works the panel makes no second step.
        const QScopedValueRollback inside(FInsideEventHandler, true);
        FQuery->QueryChanged();
    }
    RecordUndoStep();
}

} // namespace vm20
