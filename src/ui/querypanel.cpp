#include "ui/querypanel.h"

#include "model/dbstructure.h"
#include "model/errors.h"
#include "ui/dropdownlabel.h"
#include "ui/dropdownpopup.h"
#include "ui/querypanelaccessible.h"
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
        BuildViews(FQuery->Filter(), true);
        FAddRowLabel = std::make_unique<TDropDownLabel>(viewport());
        FAddRowLabel->SetFixed(true);
        WireAddRowLabel();
        SetAddRowCaption();
        PlaceAllRows();
        ShowAllRows();
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
    // its making posted) for its own: deliver them first.
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
    BuildViews(FQuery->Filter(), false);
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
    return found == FViews.end() ? nullptr : found->second.get();
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
    FCurrentRow = row;
    if (TQueryRowView *view = row ? RowView(row) : nullptr)
        if (view->CurrentControlIndex() < 0)
            view->SetCurrentControlIndex(view->FirstCurControl());
    viewport()->update();
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
    const bool hideRoot = FAppearance->Has(TQPAppearance::aoHideRootRow);
    const bool rtl = layoutDirection() == Qt::RightToLeft;
    int contentRight = 0;
    int contentBottom = 0;
    int rowNum = hideRoot ? -1 : 0;
    // Pre-order walk; each entry carries the row's identifier.
    std::vector<std::pair<TFilterRow *, QString>> stack{{FQuery->Filter(), QString()}};
    while (!stack.empty()) {
        auto [row, id] = std::move(stack.back());
        stack.pop_back();
        const int depth = int(id.count(QLatin1Char('.')));
        TQueryRowView *view = FViews.at(row).get();
        view->SetRowNum(rowNum++, depth, id);
        if (row->Parent() || !hideRoot) {
            const int edge = view->ContentEdge() + horizontalScrollBar()->value();
            contentRight = rtl ? std::max(contentRight, viewport()->width() - edge) : std::max(contentRight, edge);
            contentBottom = view->GetTop() + view->GetHeight() + verticalScrollBar()->value();
        }
        if (row->IsBracket()) {
            const auto &rows = static_cast<TFilterBracket *>(row)->Rows();
            for (int i = int(rows.size()) - 1; i >= 0; --i)
                stack.emplace_back(rows[std::size_t(i)].get(), id + QString::number(i + 1) + QLatin1Char('.'));
        }
    }
    PlaceAddRow();
    if (FAddRowLabel && FAddRowLabel->isVisibleTo(viewport()))
        contentBottom = std::max(contentBottom, FAddRowLabel->geometry().bottom() + verticalScrollBar()->value());
    UpdateScrollBars(contentRight + FHeadLeft, contentBottom + FHeadTop);
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
    const TQueryRowView *view = last ? FViews.at(last).get() : nullptr;
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
    // A range that moves a scroll bar places the rows once more, afterwards.
    const int h = horizontalScrollBar()->value();
    const int v = verticalScrollBar()->value();
    FSettingRanges = true;
    horizontalScrollBar()->setRange(0, std::max(0, contentRight - client.width()));
    verticalScrollBar()->setRange(0, std::max(0, contentBottom - client.height()));
    FSettingRanges = false;
    if (h != horizontalScrollBar()->value() || v != verticalScrollBar()->value())
        ScheduleLayout();
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
    // The row before it may now show its logical operator.
    if (TFilterBracket *parent = row->Parent())
        for (const auto &sibling : parent->Rows())
            FViews.at(sibling.get())->SetVisible(true);
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
    DropViews(row);
    ScheduleLayout();
}

void TNQueryPanel::RowChanged(TFilterRow *row)
{
    if (!FActive || !FViews.count(row))
        return;
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
            RowChanged(child.get());
    if (current)
        FCurrentRow = row;
    ScheduleLayout();
}

void TNQueryPanel::RowMoved(TFilterRow *row, TFilterBracket *oldParent, int oldIndex)
{
    (void)oldIndex;
    if (!FActive)
        return;
    // The logical-operator label shows or hides with the row's position.
    for (TFilterBracket *bracket : {oldParent, row->Parent()})
        if (bracket && FViews.count(bracket))
            for (const auto &sibling : bracket->Rows())
                if (FViews.count(sibling.get()))
                    FViews.at(sibling.get())->SetVisible(true);
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
            painter->setPen(FAppearance->ControlBorderColor());
            painter->setBrush(Qt::NoBrush);
            painter->drawRect(control->geometry().adjusted(-2, -2, 1, 1));
            painter->restore();
        }
    }
    if (withControls)
        for (TDropDownLabel *label : view->Controls())
            if (label->isVisibleTo(viewport())) {
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
    // Background around the child controls only.
    QRegion background(rect);
    for (const QObject *child : viewport()->children()) {
        const auto *widget = qobject_cast<const QWidget *>(child);
        if (widget && widget->isVisibleTo(viewport()) && widget->inherits("QCheckBox"))
            background -= widget->geometry();
    }
    if (!background.isEmpty()) {
        painter->save();
        painter->setClipRegion(background);
        painter->fillRect(rect, palette().color(viewport()->backgroundRole()));
        painter->restore();
    }
    if (FCurrentRow && FAppearance->Has(TQPAppearance::aoAllowKeyboard))
        PaintRow(FCurrentRow, painter, false);
    for (const auto &[row, view] : FViews) {
        if (view->Missing().isEmpty() || !view->Visible())
            continue;
        if (view->GetRowRect().intersects(rect))
            PaintMissingMark(painter, *view);
    }
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
        for (const auto &[row, view] : FViews)
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
    // Right to left, a horizontal scroll moves rows and check boxes
    // differently: placing them again is simplest.
    if (FLayoutPending || (dx != 0 && layoutDirection() == Qt::RightToLeft)) {
        PlaceAllRows();
        return;
    }
    // Otherwise every control moves by the same offset.
    viewport()->scroll(dx, dy);
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
