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
#include <QScrollBar>
#include <QStyle>

namespace vm20 {

namespace {

const QString EmptyText = QStringLiteral("_____");

// Link types in the order the selector lists them.
constexpr TFilterLinkType LinkOrder[] = {fltAll, fltAny, fltNone, fltNotAll};
const char *const LinkTitles[] = {"ttlAll", "ttlAny", "ttlNone", "ttlNotAll"};

} // namespace

TQueryRowView::TQueryRowView(TNQueryPanel *panel, TFilterRow *row, bool strictTitles) : FPanel(panel), FRow(row)
{
    QWidget *host = panel->viewport();
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
    auto *label = new TDropDownLabel(FPanel->viewport());
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

    auto *selector = new TDropDownPopup(FPanel->viewport());
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
    QStringList missing;
    if (!fieldKnown && !fresh)
        missing << QStringLiteral("field");
    if (!operatorKnown && !fresh)
        missing << QStringLiteral("operator");
    FMissing = missing.join(QStringLiteral(", "));
    const QStringList texts = model ? cond->Labels() : QStringList{EmptyText, EmptyText};

    TDropDownLabel *field = nullptr;
    if (look.Has(TQPAppearance::aoPopupField)) {
        auto *popup = new TDropDownPopup(FPanel->viewport());
        popup->SetMaxItemCount(FPanel->MaxPopupItemCount());
        field = popup;
    } else {
        field = new TDropDownListBox(FPanel->viewport());
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

    auto *op = new TDropDownPopup(FPanel->viewport());
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
    if (!model || !cond->Condition() || cond->Condition() == model->UnrecognizedCondition()) {
        FMissing = QStringLiteral("condition");
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
        TDropDownLabel *label = MakeValueLabel(kind, FPanel->viewport());
        FSlots[std::size_t(i == 1 ? rsFirstValue : rsSecondValue)].reset(label);
        label->setFont(FPanel->font());
        label->SetCaption(texts.value(i == 1 ? 0 : 2));
        // A date or time label shows its day count as the locale's text; a
        // parameter keeps its name.
        if ((kind == vlkDate || kind == vlkTime) && !cond->GetValueIsParam(i) && !cond->GetValue(i).isEmpty())
            label->SetValue(cond->GetValue(i));
        FillListOnDrop(label, i);
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
        if (!controls[i]->Fixed() && !controls[i]->isHidden())
            return int(i);
    return -1;
}

void TQueryRowView::SetRowNum(int rowNum, int depth, const QString &rowID)
{
    FRowNum = rowNum;
    FDepth = depth;
    if (FRowID != rowID) {
        FRowID = rowID;
        FButton->SetCaption(rowID.left(rowID.size() - 1));
    }
    PlaceRow();
}

void TQueryRowView::PlaceRow()
{
    const TQPAppearance &look = FPanel->Appearance();
    const bool root = FRow->Parent() == nullptr;
    TRowPlacement p;
    p.headerTop = FPanel->HeaderTop();
    p.headerLeft = FPanel->HeaderLeft();
    p.tabSpace = FPanel->TabSpace();
    p.rowSpace = FPanel->RowSpace();
    p.elemSpace = FPanel->ElemSpace();
    p.rowNum = FRowNum;
    p.depth = FDepth;
    p.root = root;
    p.rowHeight = FPanel->RowHeight();
    if (root) {
        FButton->SetCaption(look.MainBtnCaption());
        p.button = QSize(look.MainBtnCaption().isEmpty() ? p.rowHeight : FButton->AutoSizeHint().width(), p.rowHeight);
    } else {
        p.button = FButton->AutoSizeHint();
    }
    p.hideButton = !root && look.Has(TQPAppearance::aoHideRowButtons);
    const bool showLogOp = ShowsLogOp();
    if (FLogOp)
        FLogOp->setVisible(FVisible && showLogOp);
    if (showLogOp) {
        p.logOp = look.LogOpStyle() == losBeforeCond ? lopBefore : lopAfter;
        p.logOpWidth = FLogOp->width();
    }
    for (int i = 0; i < RowSlotCount; ++i)
        p.slotWidths[std::size_t(i)] = FSlots[std::size_t(i)] ? FSlots[std::size_t(i)]->width() : -1;
    if (FRow->IsBracket() && !FSlots[rsFirstLabel])
        p.slotWidths[rsFirstLabel] = 0;
    const int check = FPanel->style()->pixelMetric(QStyle::PM_IndicatorWidth);
    p.checkBox = QSize(check, FPanel->style()->pixelMetric(QStyle::PM_IndicatorHeight));
    p.scroll = QPoint(FPanel->horizontalScrollBar()->value(), FPanel->verticalScrollBar()->value());
    p.rightToLeft = FPanel->layoutDirection() == Qt::RightToLeft;
    p.clientWidth = FPanel->viewport()->width();

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

void TQueryRowView::SetVisible(bool value)
{
    const TQPAppearance &look = FPanel->Appearance();
    const bool root = FRow->Parent() == nullptr;
    FVisible = value;
    if (FCheckBox)
        FCheckBox->setVisible(value && look.Has(TQPAppearance::aoShowCheckBoxes) && !root);
    FButton->setVisible(value && (!look.Has(TQPAppearance::aoHideRowButtons) || root));
    if (value)
        for (int slot : {rsFirstLabel, rsSecondLabel, rsFirstValue, rsSecondValue})
            if (FSlots[std::size_t(slot)] && !FSlots[std::size_t(slot)]->Fixed())
                Highlight(FSlots[std::size_t(slot)].get());
    for (auto &slot : FSlots)
        if (slot)
            slot->setVisible(value);
    if (FLogOp)
        FLogOp->setVisible(value && ShowsLogOp());
}

QRect TQueryRowView::GetRowRect() const
{
    return RowRect(FButton->geometry(), FPanel->viewport()->width());
}

int TQueryRowView::GetTop() const { return FButton->y(); }
int TQueryRowView::GetHeight() const { return FButton->height(); }
int TQueryRowView::GetLeft() const { return FButton->x(); }

int TQueryRowView::ContentEdge() const
{
    const bool rtl = FPanel->layoutDirection() == Qt::RightToLeft;
    int edge = rtl ? FButton->geometry().left() : FButton->geometry().right();
    auto take = [&](const QWidget *w) {
        if (!w || w->geometry().isEmpty())
            return;
        edge = rtl ? std::min(edge, w->geometry().left()) : std::max(edge, w->geometry().right());
    };
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
        if (!label->isHidden() || !FVisible)
            if (!label->Caption().isEmpty())
                words << label->Caption();
    return words.join(QLatin1Char(' '));
}

} // namespace vm20
