#include "ui/resultfieldspanel.h"

#include "model/dbstructure.h"
#include "model/messages.h"
#include "query/query.h"
#include "query/resultfield.h"
#include "ui/dropdownlist.h"
#include "ui/dropdownpopup.h"
#include "ui/rfpanelaccessible.h"
#include "ui/rfpanelerror.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>

namespace vm20 {

namespace {

enum { tagDelete = 2, tagMoveUp = 3, tagMoveDown = 4 };

// The add-row label: a plain label that reports clicks.
class TAddRowLabel : public QLabel
{
public:
    TAddRowLabel(TNResultFieldsPanel *panel, QWidget *parent) : QLabel(parent), FPanel(panel)
    {
        setCursor(Qt::PointingHandCursor);
        setTextFormat(Qt::PlainText);
    }

protected:
    void mouseReleaseEvent(QMouseEvent *event) override
    {
        if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
            FPanel->AddRowLabelClick();
    }

private:
    TNResultFieldsPanel *FPanel;
};

} // namespace

TNResultFieldsPanel::TNResultFieldsPanel(QWidget *parent)
    : QAbstractScrollArea(parent), FRows(this)
{
    InstallRFPanelAccessibility();
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setBackgroundRole(QPalette::Base);
    FDefTitles = DefaultTitles();
    FTitles = FDefTitles;
    FAddRowLabel = new TAddRowLabel(this, viewport());
    FAddRowLabel->hide();
    FRowPopup = new QMenu(this);
    auto add = [this](int tag, const QString &title) {
        QAction *action = FRowPopup->addAction(GetTitle(title));
        action->setData(tag);
        action->setObjectName(title);
    };
    add(tagDelete, QStringLiteral("ttlDelField"));
    FRowPopup->addSeparator();
    add(tagMoveUp, QStringLiteral("ttlMoveUp"));
    add(tagMoveDown, QStringLiteral("ttlMoveDown"));
}

TNResultFieldsPanel::~TNResultFieldsPanel()
{
    if (FResultFields)
        FResultFields->RemoveObserver(this);
}

QStringList TNResultFieldsPanel::DefaultTitles()
{
    return {QStringLiteral("ttlDelField=Delete current field"), QStringLiteral("ttlMoveUp=Move Up"),
            QStringLiteral("ttlMoveDown=Move Down"), QStringLiteral("ttlNotSorted=Not Sorted"),
            QStringLiteral("ttlAscending=Ascending"), QStringLiteral("ttlDescending=Descending"),
            QStringLiteral("ttlClickToAdd=Click to add new field")};
}

// --- model and list -------------------------------------------------------------------

void TNResultFieldsPanel::SetDBStruct(TNCustomDBStructure *value)
{
    if (FDBStruct == value)
        return;
    const bool wasActive = FActive;
    Deactivate();
    FDBStruct = value;
    if (wasActive && FDBStruct)
        Activate();
}

void TNResultFieldsPanel::SetResultFields(TRFieldList *value)
{
    if (FResultFields == value)
        return;
    const bool wasActive = FActive;
    Deactivate();
    if (FResultFields)
        FResultFields->RemoveObserver(this);
    FResultFields = value;
    if (FResultFields)
        FResultFields->AddObserver(this);
    HistorySync(true);
    if (wasActive && FResultFields)
        Activate();
}

void TNResultFieldsPanel::SetQuery(TNQuery *query)
{
    if (!query) {
        SetResultFields(nullptr);
        return;
    }
    SetDBStruct(query->DBStruct());
    SetResultFields(&query->RFields());
    FQuery = query;
    // A query freed before the panel takes its list with it: let go of it
    // without telling it anything.
    connect(query, &QObject::destroyed, this, [this, list = &query->RFields()] {
        if (FResultFields != list)
            return;
        FResultFields = nullptr;
        ClearAll();
        FActive = false;
    });
    if (FDBStruct)
        Activate();
}

TNQuery *TNResultFieldsPanel::Query() const
{
    return FQuery && FResultFields == &FQuery->RFields() ? FQuery.data() : nullptr;
}

// --- titles -----------------------------------------------------------------------------

QString TNResultFieldsPanel::GetTitle(const QString &SName) const
{
    const QString prefix = SName + QLatin1Char('=');
    for (const QString &line : FTitles)
        if (line.startsWith(prefix))
            return line.mid(prefix.size());
    for (const QString &line : FDefTitles)
        if (line.startsWith(prefix))
            return line.mid(prefix.size());
    return QString();
}

void TNResultFieldsPanel::SetTitle(const QString &SName, const QString &Value)
{
    const QString prefix = SName + QLatin1Char('=');
    bool found = false;
    for (QString &line : FTitles)
        if (line.startsWith(prefix)) {
            line = prefix + Value;
            found = true;
        }
    if (!found)
        FTitles << prefix + Value;
    UpdateMenuCaptions();
    if (FActive)
        Refresh();
}

void TNResultFieldsPanel::SetTitles(const QStringList &value)
{
    if (FTitles == value)
        return;
    FTitles = value;
    UpdateMenuCaptions();
    if (FActive)
        Refresh();
}

void TNResultFieldsPanel::LoadDefaultTitles() { SetTitles(FDefTitles); }

void TNResultFieldsPanel::UpdateMenuCaptions()
{
    for (QAction *action : FRowPopup->actions())
        if (!action->isSeparator())
            action->setText(GetTitle(action->objectName()));
}

// --- activation ---------------------------------------------------------------------------

void TNResultFieldsPanel::Activate()
{
    if (!FDBStruct)
        throw ERFPanelError(QStringLiteral("DBStructure is not specified"));
    FActive = true;
    BuildRows();
}

void TNResultFieldsPanel::Deactivate()
{
    if (!FActive)
        return;
    ClearAll();
    FActive = false;
}

void TNResultFieldsPanel::ClearAll()
{
    FCurrentRow = nullptr;
    FRows.Clear();
    FAddRowLabel->hide();
    UpdateScrollBars();
}

void TNResultFieldsPanel::Refresh()
{
    if (FActive)
        BuildRows();
}

void TNResultFieldsPanel::BuildRows()
{
    ClearAll();
    if (!FResultFields || !FDBStruct)
        return;
    FRefreshing = true;
    for (const auto &field : FResultFields->Items())
        FRows.AddRow(field.get());
    FRows.SetVisible(true);
    FRefreshing = false;
    PlaceRows(0);
}

TResultFieldRow *TNResultFieldsPanel::FirstRow() const { return FRows.Count() ? FRows.Items(0) : nullptr; }

TResultFieldRow *TNResultFieldsPanel::LastRow() const
{
    return FRows.Count() ? FRows.Items(FRows.Count() - 1) : nullptr;
}

void TNResultFieldsPanel::SetCurrentRow(TResultFieldRow *row)
{
    if (FCurrentRow == row)
        return;
    if (FCurrentRow)
        FCurrentRow->Button()->SetColor(QColor());
    FCurrentRow = row;
    if (FCurrentRow)
        FCurrentRow->Button()->SetColor(CurrentButtonColor());
}

// --- placing --------------------------------------------------------------------------------

int TNResultFieldsPanel::TextHeight() const { return QFontMetrics(font()).height(); }

void TNResultFieldsPanel::PlaceControl(QWidget *control, int x, int y) const
{
    const bool rtl = layoutDirection() == Qt::RightToLeft;
    control->move(RFMirrorX(x, control->width(), viewport()->width(), rtl), y);
}

// A pale highlight under dark button text, a deep one under light text.
QColor TNResultFieldsPanel::CurrentButtonColor() const
{
    const QColor highlight = palette().color(QPalette::Highlight);
    return palette().color(QPalette::ButtonText).lightnessF() > 0.5 ? highlight.darker(150) : highlight.lighter(170);
}

void TNResultFieldsPanel::PlaceRows(int FromIndex)
{
    FAddRowLabel->hide();
    for (int i = qMax(0, FromIndex); i < FRows.Count(); ++i)
        FRows.Items(i)->PlaceRow();
    ShowAddRow();
    UpdateScrollBars();
}

void TNResultFieldsPanel::ShowAddRow()
{
    if (!FActive)
        return;
    FAddRowLabel->setFont(font());
    FAddRowLabel->setText(QStringLiteral("< ") + GetTitle(QStringLiteral("ttlClickToAdd")) + QStringLiteral(" >"));
    FAddRowLabel->resize(FAddRowLabel->sizeHint());
    const QPoint scroll(horizontalScrollBar()->value(), verticalScrollBar()->value());
    QRect last;
    if (TResultFieldRow *row = LastRow()) {
        last = row->Button()->geometry();
    }
    QPoint pos = RFAddRowLabelPos(FAppearance.Spacing(), last, scroll);
    if (TResultFieldRow *row = LastRow())
        pos.setX(RFRowButtonRect(FAppearance.Spacing(), row->RowIndex(), TextHeight(), 0, scroll).left());
    PlaceControl(FAddRowLabel, pos.x(), pos.y());
    FAddRowLabel->show();
}

void TNResultFieldsPanel::UpdateScrollBars()
{
    const int height = FAddRowLabel->isVisible()
                           ? FAddRowLabel->y() + verticalScrollBar()->value() + FAddRowLabel->height() +
                                 FAppearance.TopMargin()
                           : 0;
    // From the rows' own extents: asking the viewport for its children would
    // also count controls already freed but not yet gone.
    int width = FAddRowLabel->isVisible() ? FAppearance.LeftMargin() + FAddRowLabel->width() : 0;
    for (int i = 0; i < FRows.Count(); ++i)
        if (FRows.Items(i)->Visible())
            width = qMax(width, FRows.Items(i)->Extent());
    width += FAppearance.LeftMargin();
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setRange(0, qMax(0, height - viewport()->height()));
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setRange(0, qMax(0, width - viewport()->width()));
}

void TNResultFieldsPanel::ArrangeRows(int FromIndex)
{
    if (!FActive)
        return;
    for (int i = qMax(0, FromIndex); i < FRows.Count(); ++i)
        FRows.Items(i)->Arrange();
    ShowAddRow();
    UpdateScrollBars();
}

void TNResultFieldsPanel::scrollContentsBy(int dx, int dy)
{
    (void)dx;
    (void)dy;
    ArrangeRows();
}

void TNResultFieldsPanel::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    ArrangeRows();
    UpdateScrollBars();
}

void TNResultFieldsPanel::showEvent(QShowEvent *event)
{
    QAbstractScrollArea::showEvent(event);
    if (!FActive && FDBStruct && FResultFields)
        Activate();
}

void TNResultFieldsPanel::changeEvent(QEvent *event)
{
    QAbstractScrollArea::changeEvent(event);
    if (FActive && event->type() == QEvent::FontChange)
        PlaceRows(0);
    else if (event->type() == QEvent::LayoutDirectionChange)
        ArrangeRows();
    else if (event->type() == QEvent::PaletteChange) {
        for (int i = 0; i < FRows.Count(); ++i)
            FRows.Items(i)->RefreshColors();
        if (FCurrentRow)
            FCurrentRow->Button()->SetColor(CurrentButtonColor());
    }
}

// --- editing ------------------------------------------------------------------------------------

TResultField *TNResultFieldsPanel::NewResultField()
{
    // A list given without a model takes the panel's: the new column's field
    // comes from the list's model.
    if (!FResultFields->DBStruct())
        FResultFields->SetDBStruct(FDBStruct);
    return FResultFields->NewResultField();
}

TResultFieldRow *TNResultFieldsPanel::AddEmptyRow()
{
    if (!FDBStruct)
        throw ERFPanelError(QStringLiteral("DBStructure is not specified"));
    if (FDBStruct->GetEmpty())
        throw ERFPanelError(SStructureIsEmpty);
    if (!FResultFields)
        throw ERFPanelError(QStringLiteral("ResultFields is not specified"));
    if (!FActive)
        Activate();
    FRefreshing = true;
    TResultFieldRow *row = nullptr;
    try {
        TResultField *field = NewResultField();
        row = FRows.AddRow(field);
    } catch (...) {
        FRefreshing = false;
        throw;
    }
    FRefreshing = false;
    row->SetVisible(true);
    row->PlaceRow();
    ShowAddRow();
    UpdateScrollBars();
    if (verticalScrollBar()->isVisible())
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    Changed();
    return row;
}

void TNResultFieldsPanel::DeleteRow(int Index)
{
    TResultFieldRow *row = FRows.Items(Index);
    if (FCurrentRow == row)
        FCurrentRow = nullptr;
    FRefreshing = true;
    FRows.Delete(Index);
    FResultFields->Delete(Index);
    FRefreshing = false;
    RefreshSortOrder();
    ArrangeRows(Index);
    Changed();
}

void TNResultFieldsPanel::MoveRow(int From, int To)
{
    if (From == To || From < 0 || To < 0 || From >= FRows.Count() || To >= FRows.Count())
        return;
    FRefreshing = true;
    FRows.Move(From, To);
    FResultFields->Move(From, To);
    FRefreshing = false;
    ArrangeRows(qMin(From, To));
    RefreshSortOrder();
    Changed();
}

void TNResultFieldsPanel::RefreshSortOrder()
{
    if (!FResultFields)
        return;
    const bool refreshing = FRefreshing;
    FRefreshing = true;
    int order = 0;
    for (const auto &field : FResultFields->Items())
        if (field->Sorting() != stNoSort)
            field->SetSortOrder(++order);
    FRefreshing = refreshing;
}

void TNResultFieldsPanel::Changed()
{
    if (OnChange && !FInsideEventHandler)
        OnChange(this);
    if (!FInsideEventHandler)
        History().Record();
}

void TNResultFieldsPanel::RowLabelAccepted(TResultFieldRow *row)
{
    FRefreshing = true;
    try {
        row->RefreshResultField();
    } catch (...) {
        FRefreshing = false;
        throw;
    }
    FRefreshing = false;
    row->PlaceRow();
    UpdateScrollBars();
}

// --- menu ------------------------------------------------------------------------------------------

void TNResultFieldsPanel::EnableMenuItems(TResultFieldRow *row)
{
    const int index = row ? row->RowIndex() : -1;
    const QString up = GetTitle(QStringLiteral("ttlMoveUp"));
    const QString down = GetTitle(QStringLiteral("ttlMoveDown"));
    for (QAction *action : FRowPopup->actions()) {
        if (action->text() == up)
            action->setEnabled(index > 0);
        else if (action->text() == down)
            action->setEnabled(index >= 0 && index < FRows.Count() - 1);
    }
}

void TNResultFieldsPanel::RowButtonClick(TResultFieldRow *row)
{
    SetCurrentRow(row);
    EnableMenuItems(row);
    const QWidget *button = row->Button();
    const QPoint at = button->mapToGlobal(QPoint(0, button->height()));
    int tag = 0;
    if (MenuHook) {
        tag = MenuHook(FRowPopup, at);
    } else if (QAction *chosen = FRowPopup->exec(at)) {
        tag = chosen->data().toInt();
    }
    if (tag)
        MenuItemClick(tag);
}

void TNResultFieldsPanel::MenuItemClick(int tag)
{
    if (!FCurrentRow)
        return;
    const int index = FCurrentRow->RowIndex();
    RunGuarded([&] {
        switch (tag) {
        case tagDelete:
            DeleteRow(index);
            break;
        case tagMoveUp:
            if (index > 0)
                MoveRowUp(index);
            break;
        case tagMoveDown:
            if (index < FRows.Count() - 1)
                MoveRowDown(index);
            break;
        default:
            break;
        }
    });
}

void TNResultFieldsPanel::AddRowLabelClick()
{
    RunGuarded([this] { AddEmptyRow(); });
}

void TNResultFieldsPanel::RunGuarded(const std::function<void()> &action)
{
    try {
        action();
    } catch (const Exception &error) {
        FAddRowLabel->setToolTip(error.Message());
        setToolTip(error.Message());
    }
}

// --- keyboard ---------------------------------------------------------------------------------------

void TNResultFieldsPanel::keyPressEvent(QKeyEvent *event)
{
    if (HistoryKey(event))
        return;
    const bool ctrl = event->modifiers() & Qt::ControlModifier;
    const int count = FRows.Count();
    const int index = FCurrentRow ? FCurrentRow->RowIndex() : -1;
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down: {
        if (count == 0)
            break;
        const int step = event->key() == Qt::Key_Up ? -1 : 1;
        if (ctrl && index >= 0) {
            const int to = index + step;
            if (to >= 0 && to < count)
                RunGuarded([&] { MoveRow(index, to); });
        } else {
            const int to = index < 0 ? (step > 0 ? 0 : count - 1) : qBound(0, index + step, count - 1);
            SetCurrentRow(FRows.Items(to));
        }
        event->accept();
        return;
    }
    case Qt::Key_Delete:
        if (ctrl && index >= 0) {
            RunGuarded([&] { DeleteRow(index); });
            if (FRows.Count())
                SetCurrentRow(FRows.Items(qMin(index, FRows.Count() - 1)));
            event->accept();
            return;
        }
        break;
    case Qt::Key_Insert:
        AddRowLabelClick();
        SetCurrentRow(LastRow());
        event->accept();
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (FCurrentRow && FCurrentRow->FieldLabel()) {
            FCurrentRow->FieldLabel()->DropDown();
            event->accept();
            return;
        }
        break;
    default:
        break;
    }
    QAbstractScrollArea::keyPressEvent(event);
}

// --- the list changed in code -------------------------------------------------------------------------

void TNResultFieldsPanel::FieldInserted(int index)
{
    if (FRefreshing || !FActive)
        return;
    TResultFieldRow *row = FRows.InsertRow(index, FResultFields->GetRField(index));
    row->SetVisible(true);
    row->PlaceRow();
    ArrangeRows(index + 1);
}

void TNResultFieldsPanel::FieldRemoving(int index)
{
    if (FRefreshing || !FActive || index >= FRows.Count())
        return;
    if (FCurrentRow == FRows.Items(index))
        FCurrentRow = nullptr;
    FRows.Delete(index);
    ArrangeRows(index);
}

void TNResultFieldsPanel::FieldMoved(int from, int to)
{
    if (FRefreshing || !FActive)
        return;
    FRows.Move(from, to);
    ArrangeRows(qMin(from, to));
}

void TNResultFieldsPanel::FieldChanged(int index)
{
    if (FRefreshing || !FActive || index < 0 || index >= FRows.Count())
        return;
    TResultFieldRow *row = FRows.Items(index);
    row->SetSorting(row->RField()->Sorting());
    row->PlaceRow();
}

void TNResultFieldsPanel::Reset()
{
    HistorySync(false);
    if (FRefreshing || !FActive)
        return;
    BuildRows();
}

} // namespace vm20
