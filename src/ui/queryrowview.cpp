#include "ui/queryrowview.h"

#include "model/dbstructure.h"
#include "model/errors.h"
#include "query/filtercond.h"
#include "query/query.h"
#include "ui/dropdownlistbox.h"
#include "ui/dropdownpopup.h"
#include "ui/querypanel.h"
#include "ui/rndbtn.h"
#include "ui/rowlists.h"
#include "ui/valuelabel.h"
#include "model/dsfield.h"
#include "model/dsoperator.h"
#include "model/valueeditors.h"

#include <QCheckBox>
#include <QFontMetrics>
#include <QScrollBar>
#include <QStyle>

namespace vm20 {

namespace {

const QString EmptyText = QStringLiteral("_____");

// Link types in the order the selector lists them.
constexpr TFilterLinkType LinkOrder[] = {fltAll, fltAny, fltNone, fltNotAll};
const char *const LinkTitles[] = {"ttlAll", "ttlAny", "ttlNone", "ttlNotAll"};

} // namespace

TQueryRowView::TQueryRowView(TNQueryPanel *panel, TFilterRow *row, bool strictTitles)
    : FPanel(panel), FRow(row), FBin(std::make_unique<QWidget>(panel->FRowStore.get()))
{
    QWidget *host = FBin.get();
    const TQPAppearance &look = panel->Appearance();

    FButton = std::make_unique<TNRndBtn>(host);
    FButton->setFont(panel->font());
    FButton->SetAutoSize(true);
    FButton->SetFlat(look.Has(TQPAppearance::aoFlatButtons));
    FButton->SetRounded(look.Has(TQPAppearance::aoRoundButtons));
    FButton->SetColor(look.ButtonColor());
    FButton->hide();

    if (row->Parent()) {
        FCheckBox = std::make_unique<QCheckBox>(host);
        FCheckBox->setChecked(row->Enabled());
        FCheckBox->resize(16, FCheckBox->sizeHint().height());
        FCheckBox->hide();

        FLogOp = std::make_unique<TDropDownPopup>(host);
        FLogOp->setFont(panel->font());
        const TNQuery *query = panel->Query();
        FLogOp->SetItems({query->GetTitle(QStringLiteral("ttlAnd")), query->GetTitle(QStringLiteral("ttlOr"))});
        FLogOp->SetValues({QStringLiteral("0"), QStringLiteral("1")});
        const TFilterLinkType link = row->Parent()->LinkType();
        FLogOp->SetItemIndex(link == fltAll || link == fltNotAll ? 0 : 1);
        ApplyColor(FLogOp.get(), look.BoolOpColor());
        Highlight(FLogOp.get());
        FLogOp->hide();
    }

    switch (row->RowType()) {
    case frtBracket:
        BuildBracket(strictTitles);
        break;
    case frtSimpleCondition:
        BuildSimpleCondition();
        break;
    case frtCustomCondition:
        BuildCustomCondition();
        break;
    }
    if (!FMissing.isEmpty())
        SetUnresolvedLook();
    const bool enabled = row->IsEffectivelyEnabled();
    for (TDropDownLabel *label : Controls())
        label->setEnabled(enabled);
    panel->WireRowView(this);
}

// A view is replaced from inside its own widgets' handlers (a label's
// drop-up changes its row, a button's menu deletes it): the widgets hide at
// once and go when the event loop next runs.
TQueryRowView::~TQueryRowView()
{
    const auto retire = [](QWidget *widget) {
        if (!widget)
            return;
        widget->hide();
        widget->deleteLater();
    };
    retire(FButton.release());
    for (auto &slot : FSlots)
        retire(slot.release());
    retire(FLogOp.release());
    retire(FCheckBox.release());
}

void TQueryRowView::Abandon()
{
    (void)FBin.release();
    (void)FButton.release();
    for (auto &slot : FSlots)
        (void)slot.release();
    (void)FLogOp.release();
    (void)FCheckBox.release();
}

TDropDownLabel *TQueryRowView::Slot(int index) const
{
    return index >= 0 && index < RowSlotCount ? FSlots[std::size_t(index)].get() : nullptr;
}

TDropDownLabel *TQueryRowView::MakeText(int slot, const QString &text)
{
    auto *label = new TDropDownLabel(FBin.get());
    label->SetFixed(true);
    label->setFont(FPanel->font());
    label->SetCaption(text);
    label->hide();
    FSlots[std::size_t(slot)].reset(label);
    return label;
}

void TQueryRowView::ApplyColor(QWidget *label, const QColor &color)
{
    // Over the panel's base colour a label's foreground role is Text.
    QPalette palette = label->palette();
    for (QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive})
        for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text})
            palette.setColor(group, role, color);
    label->setPalette(palette);
}

void TQueryRowView::BuildBracket(bool strictTitles)
{
    auto *bracket = static_cast<TFilterBracket *>(FRow);
    TNQuery *query = FPanel->Query();
    QString before;
    QString after;
    try {
        bracket->GetTitleParts(before, after);
    } catch (const ENQueryPanelError &) {
        if (strictTitles)
            throw;
        before = query->GetTitle(bracket->IsRoot() ? QStringLiteral("ttlFilter") : QStringLiteral("ttlBracket"));
    }
    // An empty leading text has no label: it takes no room.
    if (!before.isEmpty())
        MakeText(rsFirstLabel, before);

    auto *selector = new TDropDownPopup(FBin.get());
    FSlots[rsSecondLabel].reset(selector);
    selector->setFont(FPanel->font());
    const TFilterLinkTypes types = FPanel->Appearance().LinkTypes();
    QStringList titles;
    int index = -1;
    for (std::size_t i = 0; i < std::size(LinkOrder); ++i) {
        if (!types.contains(LinkOrder[i]))
            continue;
        if (LinkOrder[i] == bracket->LinkType())
            index = int(titles.size());
        titles << query->GetTitle(QString::fromLatin1(LinkTitles[i]));
    }
    selector->SetItems(titles);
    selector->SetValues(titles);
    if (index >= 0)
        selector->SetItemIndex(index);
    else
        selector->SetCaption(query->LinkTypeTitle(bracket->LinkType()));
    ApplyColor(selector, FPanel->Appearance().BoolOpColor());
    selector->hide();

    MakeText(rsFirstValue, after);
}

void TQueryRowView::BuildSimpleCondition()
{
    auto *cond = static_cast<TSimpleCond *>(FRow);
    const TQPAppearance &look = FPanel->Appearance();
    TNCustomDBStructure *model = FPanel->DBStruct();
    // Without a model the row's pointers may outlive what they point to.
    const bool fieldKnown = model && cond->Field() && cond->Field() != model->UnrecognizedField();
    const bool operatorKnown = model && cond->Operator() && cond->Operator() != model->UnrecognizedOperator();
    // A condition just added has no field yet: nothing is missing.
    const bool fresh = model && !cond->Field() && !cond->Operator();
    FMissing = fresh ? QString() : FPanel->MissingText(FRow);
    const QStringList texts = model ? cond->Labels() : QStringList{EmptyText, EmptyText};

    TDropDownLabel *field = nullptr;
    if (look.Has(TQPAppearance::aoPopupField)) {
        auto *popup = new TDropDownPopup(FBin.get());
        popup->SetMaxItemCount(FPanel->MaxPopupItemCount());
        field = popup;
    } else {
        field = new TDropDownListBox(FBin.get());
    }
    FSlots[rsFirstLabel].reset(field);
    field->setFont(FPanel->font());
    field->SetImages(FPanel->Images());
    field->SetCaption(texts.value(0));
    if (fieldKnown || (model && fresh)) {
        auto *list = static_cast<TDropDownList *>(field);
        TSimpleCond *row = cond;
        TNQueryPanel *panel = FPanel;
        list->BeforeDropDown = [list, row, panel](QObject *) {
            TNCustomDBStructure *model = panel->DBStruct();
            if (!list->Items().isEmpty() || !model)
                return;
            const TQPAppearance &look = panel->Appearance();
            FillFieldList(*list, *model, look.Has(TQPAppearance::aoShowGroupName), look.NameSeparator());
            if (row->Field())
                list->SetItemIndex(int(list->Values().indexOf(QString::number(row->Field()->ID()))));
        };
    }
    ApplyColor(field, look.FieldColor());
    field->hide();

    auto *op = new TDropDownPopup(FBin.get());
    FSlots[rsSecondLabel].reset(op);
    op->setFont(FPanel->font());
    op->SetCaption(texts.value(1));
    if (fieldKnown && operatorKnown) {
        TSimpleCond *row = cond;
        op->BeforeDropDown = [op, row](QObject *) {
            if (!op->Items().isEmpty())
                return;
            FillOperatorList(*op, *row->Field());
            op->SetItemIndex(int(op->Values().indexOf(row->Operator()->Name())));
        };
    }
    ApplyColor(op, look.OperatorColor());
    op->hide();

    if (model && operatorKnown)
        BuildValues(rsFirstValue, texts.mid(2));
}

void TQueryRowView::BuildCustomCondition()
{
    auto *cond = static_cast<TCustomCond *>(FRow);
    TNCustomDBStructure *model = FPanel->DBStruct();
    FMissing = FPanel->MissingText(FRow);
    if (!model || !cond->Condition() || cond->Condition() == model->UnrecognizedCondition()) {
        MakeText(rsFirstLabel, model ? cond->Labels().value(0) : EmptyText);
        return;
    }
    const QStringList texts = cond->Labels();
    MakeText(rsFirstLabel, texts.value(0));
    // texts: leading text, value 1, text before value 2, value 2.
    QStringList values;
    if (texts.size() > 1)
        values << texts.value(1);
    if (texts.size() > 3)
        values << texts.value(2) << texts.value(3);
    BuildValues(rsFirstValue, values);
}

// texts: value 1, then the middle text and value 2 when there are two.
void TQueryRowView::BuildValues(int firstSlot, const QStringList &texts)
{
    (void)firstSlot;
    auto *cond = static_cast<TFilterCond *>(FRow);
    const TQPAppearance &look = FPanel->Appearance();
    const int count = std::min<int>(cond->GetValueCount(), texts.size() >= 3 ? 2 : int(texts.size()));
    for (int i = 1; i <= count; ++i) {
        const TValueLabelKind kind = ChooseValueLabel(ValueLabelChoice(*cond, i, look.Has(TQPAppearance::aoPopupValue)));
        TDropDownLabel *label = MakeValueLabel(kind, FBin.get());
        FSlots[std::size_t(i == 1 ? rsFirstValue : rsSecondValue)].reset(label);
        label->setFont(FPanel->font());
        // The label holds the condition's value, so that its editor or list
        // opens on it and accepting it unchanged changes nothing; it shows
        // the query's caption, except that a date or time label shows its day
        // count as the locale's text. A parameter keeps its name.
        const bool constant = !cond->GetValueIsParam(i) && !cond->GetValue(i).isEmpty() && kind != vlkSubQuery;
        const bool dated = kind == vlkDate || kind == vlkTime;
        if (constant && !dated)
            label->SetValue(cond->GetValue(i));
        label->SetCaption(texts.value(i == 1 ? 0 : 2));
        if (constant && dated)
            label->SetValue(cond->GetValue(i));
        FillListOnDrop(label, i);
        if (kind == vlkSubQuery)
            label->setToolTip(FPanel->SubQueryHintText(*cond, i));
        ApplyColor(label, look.ValueColor());
        label->hide();
    }
    if (count == 2)
        MakeText(rsMiddleLabel, texts.value(1));
}

// A list editor's items reach the label when it first drops (an SQL list
// asks the model's provider then, once).
void TQueryRowView::FillListOnDrop(TDropDownLabel *label, int index)
{
    auto *list = qobject_cast<TDropDownList *>(label);
    if (!list || FRow->RowType() != frtSimpleCondition)
        return;
    auto *cond = static_cast<TSimpleCond *>(FRow);
    list->BeforeDropDown = [list, cond, index](QObject *) {
        if (!list->Items().isEmpty() || !cond->Field())
            return;
        if (auto *editor = dynamic_cast<TDSListEditor *>(cond->Field()->ValueEditor())) {
            if (auto *sql = dynamic_cast<TDSSQLEditor *>(editor); sql && !sql->Opened())
                sql->SetOpened(true);
            FillValueList(*list, *editor);
            list->SetItemIndex(int(list->Values().indexOf(cond->GetValue(index))));
        }
    };
}

void TQueryRowView::SetUnresolvedLook()
{
    const QColor color = TNQueryPanel::MissingColor();
    const QString tip = QStringLiteral("Not in the model: %1").arg(FMissing);
    for (auto &slot : FSlots) {
        if (!slot)
            continue;
        ApplyColor(slot.get(), color);
        slot->setToolTip(tip);
    }
    FButton->setToolTip(tip);
}

// Before a condition the operator joins it to the row above; after it, to
// the row below: the first (or last) row of a bracket has none.
bool TQueryRowView::ShowsLogOp() const
{
    if (!FLogOp)
        return false;
    switch (FPanel->Appearance().LogOpStyle()) {
    case losBeforeCond:
        return FRow->IndexInParent() > 0;
    case losAfterCond:
        return FRow->IndexInParent() < FRow->Parent()->GetRowCount() - 1;
    case losHidden:
        break;
    }
    return false;
}

std::vector<TDropDownLabel *> TQueryRowView::Controls() const
{
    std::vector<TDropDownLabel *> controls;
    const TLogicalOperatorStyle style = FPanel->Appearance().LogOpStyle();
    const bool showLogOp = ShowsLogOp();
    if (showLogOp && style == losBeforeCond)
        controls.push_back(FLogOp.get());
    for (int slot : SlotDisplayOrder)
        if (FSlots[std::size_t(slot)])
            controls.push_back(FSlots[std::size_t(slot)].get());
    if (showLogOp && style == losAfterCond)
        controls.push_back(FLogOp.get());
    return controls;
}

TDropDownLabel *TQueryRowView::CurrentControl() const
{
    const std::vector<TDropDownLabel *> controls = Controls();
    return FCurrentControl >= 0 && FCurrentControl < int(controls.size()) ? controls[std::size_t(FCurrentControl)]
                                                                           : nullptr;
}

int TQueryRowView::FirstCurControl() const
{
    const std::vector<TDropDownLabel *> controls = Controls();
    for (std::size_t i = 0; i < controls.size(); ++i)
        if (!controls[i]->Fixed())
            return int(i);
    return -1;
}

// Text labels are skipped both ways: they drop nothing down.
int TQueryRowView::NextCurControl() const
{
    const std::vector<TDropDownLabel *> controls = Controls();
    for (int i = std::max(FCurrentControl + 1, 0); i < int(controls.size()); ++i)
        if (!controls[std::size_t(i)]->Fixed() && !controls[std::size_t(i)]->isHidden())
            return i;
    return FCurrentControl;
}

int TQueryRowView::PrevCurControl() const
{
    const std::vector<TDropDownLabel *> controls = Controls();
    for (int i = std::min(FCurrentControl, int(controls.size())) - 1; i >= 0; --i)
        if (!controls[std::size_t(i)]->Fixed() && !controls[std::size_t(i)]->isHidden())
            return i;
    return FCurrentControl;
}

void TQueryRowView::SetRowNum(int rowNum, int depth, const QString &rowID)
{
    FRowNum = rowNum;
    FDepth = depth;
    FPlacedStamp = -1;
    if (!FRow->Parent()) {
        if (FButtonSize.isEmpty()) {
            const QString caption = FPanel->Appearance().MainBtnCaption();
            FButton->SetCaption(caption);
            const int height = FPanel->RowHeight();
            FButtonSize = QSize(caption.isEmpty() ? height : FButton->AutoSizeHint().width(), height);
        }
        return;
    }
    // The button takes its caption when the row is placed; renumbering a
    // long query touches no widget out of view.
    if (FRowID != rowID || FButtonSize.isEmpty()) {
        FRowID = rowID;
        FCaptionStale = true;
        const QFontMetrics &metrics = FPanel->FPlacementBase.metrics;
        FButtonSize = QSize(metrics.horizontalAdvance(ButtonCaption()) + 10, metrics.height() + 1);
    }
}

QString TQueryRowView::ButtonCaption() const
{
    return FRowID.left(FRowID.size() - 1);
}

TRowPlacement TQueryRowView::Placement(bool showsLogOp) const
{
    const TQPAppearance &look = FPanel->Appearance();
    const bool root = FRow->Parent() == nullptr;
    TRowPlacement p = FPanel->FPlacementBase.placement;
    p.rowNum = FRowNum;
    p.depth = FDepth;
    p.root = root;
    p.button = FButtonSize;
    p.hideButton = !root && look.Has(TQPAppearance::aoHideRowButtons);
    if (showsLogOp) {
        p.logOp = look.LogOpStyle() == losBeforeCond ? lopBefore : lopAfter;
        p.logOpWidth = FLogOp->width();
    }
    for (int i = 0; i < RowSlotCount; ++i)
        p.slotWidths[std::size_t(i)] = FSlots[std::size_t(i)] ? FSlots[std::size_t(i)]->width() : -1;
    if (FRow->IsBracket() && !FSlots[rsFirstLabel])
        p.slotWidths[rsFirstLabel] = 0;
    return p;
}

void TQueryRowView::PlaceRow()
{
    const bool showLogOp = ShowsLogOp();
    TRowPlacement p = Placement(showLogOp);
    p.scroll = QPoint(FPanel->horizontalScrollBar()->value(), FPanel->verticalScrollBar()->value());
    FPlacedStamp = FPanel->FLayoutStamp;
    if (FCaptionStale) {
        FCaptionStale = false;
        FButton->SetCaption(ButtonCaption());
    }
    if (FLogOp)
        FLogOp->setVisible(FVisible && FInView && showLogOp);

    const TRowGeometry g = PlaceRowGeometry(p);
    FButton->setGeometry(g.button);
    if (FCheckBox)
        FCheckBox->setGeometry(g.checkBox);
    if (FLogOp)
        FLogOp->move(p.logOp == lopNone ? QPoint(-FLogOp->width(), 0) : g.logOp.topLeft());
    // Labels keep the size their text gives them.
    for (int i = 0; i < RowSlotCount; ++i)
        if (FSlots[std::size_t(i)])
            FSlots[std::size_t(i)]->move(g.slotRects[std::size_t(i)].topLeft());
}

void TQueryRowView::EnsurePlaced() const
{
    if (FPlacedStamp != FPanel->FLayoutStamp && FRowNum >= 0)
        const_cast<TQueryRowView *>(this)->PlaceRow();
}

int TQueryRowView::UnscrolledContentEdge(bool showsLogOp) const
{
    const TRowPlacement p = Placement(showsLogOp);
    const TRowGeometry g = PlaceRowGeometry(p);
    int edge = p.rightToLeft ? g.button.left() : g.button.right();
    auto take = [&](const QRect &r) {
        if (!r.isEmpty())
            edge = p.rightToLeft ? std::min(edge, r.left()) : std::max(edge, r.right());
    };
    take(g.logOp);
    for (const QRect &r : g.slotRects)
        take(r);
    return edge;
}

void TQueryRowView::SetVisible(bool value)
{
    if (value && !FVisible)
        for (int slot : {rsFirstLabel, rsSecondLabel, rsFirstValue, rsSecondValue})
            if (FSlots[std::size_t(slot)] && !FSlots[std::size_t(slot)]->Fixed())
                Highlight(FSlots[std::size_t(slot)].get());
    FVisible = value;
    ApplyVisibility();
}

void TQueryRowView::SetInView(bool value)
{
    if (FInView == value)
        return;
    FInView = value;
    // Out of view the widgets wait in the row's own bin, so that the
    // viewport holds a screenful of children and Qt's work per shown, moved
    // or hidden child does not grow with the query.
    QWidget *parent = value ? FPanel->viewport() : FBin.get();
    auto take = [parent](QWidget *w) {
        if (w && w->parentWidget() != parent)
            w->setParent(parent);
    };
    take(FButton.get());
    take(FCheckBox.get());
    take(FLogOp.get());
    for (auto &slot : FSlots)
        take(slot.get());
    ApplyVisibility();
}

void TQueryRowView::ApplyVisibility()
{
    const TQPAppearance &look = FPanel->Appearance();
    const bool root = FRow->Parent() == nullptr;
    const bool shown = FVisible && FInView;
    if (FCheckBox)
        FCheckBox->setVisible(shown && look.Has(TQPAppearance::aoShowCheckBoxes) && !root);
    FButton->setVisible(shown && (!look.Has(TQPAppearance::aoHideRowButtons) || root));
    for (auto &slot : FSlots)
        if (slot)
            slot->setVisible(shown);
    if (FLogOp)
        FLogOp->setVisible(shown && ShowsLogOp());
}

QRect TQueryRowView::GetRowRect() const
{
    EnsurePlaced();
    return RowRect(FButton->geometry(), FPanel->viewport()->width());
}

int TQueryRowView::GetTop() const
{
    EnsurePlaced();
    return FButton->y();
}

int TQueryRowView::GetHeight() const
{
    EnsurePlaced();
    return FButton->height();
}

int TQueryRowView::GetLeft() const
{
    EnsurePlaced();
    return FButton->x();
}

int TQueryRowView::ContentEdge() const
{
    EnsurePlaced();
    const bool rtl = FPanel->layoutDirection() == Qt::RightToLeft;
    int edge = rtl ? FButton->geometry().left() : FButton->geometry().right();
    auto take = [&](const QWidget *w) {
        if (!w || w->geometry().isEmpty())
            return;
        edge = rtl ? std::min(edge, w->geometry().left()) : std::max(edge, w->geometry().right());
    };
    // A logical operator the row does not show waits off the left edge.
    if (ShowsLogOp())
        take(FLogOp.get());
    for (const auto &slot : FSlots)
        take(slot.get());
    return edge;
}

void TQueryRowView::Highlight(TDropDownLabel *label)
{
    QFont font = label->font();
    font.setUnderline(true);
    label->setFont(font);
}

void TQueryRowView::CloseEdit(bool accept)
{
    for (TDropDownLabel *label : Controls())
        label->CloseEdit(accept);
}

QString TQueryRowView::Sentence() const
{
    QStringList words;
    for (TDropDownLabel *label : Controls())
        if (!label->Caption().isEmpty())
            words << label->Caption();
    return words.join(QLatin1Char(' '));
}

} // namespace vm20
