// The condition panel's editing by the user: its menus, the mouse, and the
// labels wired back into the query.
#include "ui/querypanel.h"

#include "model/dbstructure.h"
#include "model/dscondition.h"
#include "model/dsfield.h"
#include "model/dsoperator.h"
#include "support/exception.h"
#include "ui/dropdowncustomedit.h"
#include "ui/dropdownlist.h"
#include "ui/dropdownpopup.h"
#include "ui/rndbtn.h"

#include <QActionGroup>
#include <QCheckBox>
#include <QMenu>
#include <QMouseEvent>
#include <QPointer>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QTimer>

namespace vm20 {

namespace {

// Link types in the order a bracket's selector lists them.
constexpr TFilterLinkType LinkOrder[] = {fltAll, fltAny, fltNone, fltNotAll};

// The link type at a position of a selector that lists only `types`.
bool LinkTypeAt(TFilterLinkTypes types, int index, TFilterLinkType &type)
{
    for (TFilterLinkType candidate : LinkOrder) {
        if (!types.contains(candidate))
            continue;
        if (index-- == 0) {
            type = candidate;
            return true;
        }
    }
    return false;
}

// The number a row takes right after `row` and its sub-tree.
int NumAfter(const TFilterRow *row)
{
    if (row->IsBracket())
        return static_cast<const TFilterBracket *>(row)->GetLastRowNum() + 1;
    return row->RowNum() + 1;
}

QAction *FindTag(const QMenu *menu, int tag)
{
    for (QAction *action : menu->actions()) {
        if (action->menu())
            if (QAction *inner = FindTag(action->menu(), tag))
                return inner;
        if (!action->isSeparator() && action->data().toInt() == tag)
            return action;
    }
    return nullptr;
}

// Left presses on the add-row label, which as a fixed label ignores them.
class TPressFilter : public QObject
{
public:
    TPressFilter(QObject *parent, std::function<void(Qt::MouseButton)> onPress)
        : QObject(parent), FOnPress(std::move(onPress))
    {
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::MouseButtonPress) {
            FOnPress(static_cast<QMouseEvent *>(event)->button());
            return true;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void(Qt::MouseButton)> FOnPress;
};

} // namespace

void TNQueryPanel::SetReadOnly(bool value)
{
    if (FReadOnly == value)
        return;
    FReadOnly = value;
    for (auto &[row, view] : FViews)
        if (QCheckBox *box = view->CheckBox())
            box->setEnabled(!value);
    PlaceAddRow();
    viewport()->update();
}

// --- menus -------------------------------------------------------------------------------

void TNQueryPanel::CreateMenus()
{
    if (FMainPopup)
        return;
    const auto add = [](QMenu *menu, int tag) { menu->addAction(QString())->setData(tag); };
    const auto separator = [](QMenu *menu, int tag) { menu->addSeparator()->setData(tag); };

    FMainPopup = new QMenu(this);
    add(FMainPopup, 11);
    add(FMainPopup, 12);
    FMainCondMenuItem = new QMenu(FMainPopup);
    FMainPopup->addMenu(FMainCondMenuItem)->setData(5);

    FRowPopup = new QMenu(this);
    add(FRowPopup, 1);
    add(FRowPopup, 2);
    separator(FRowPopup, 31);
    add(FRowPopup, 3);
    add(FRowPopup, 4);
    separator(FRowPopup, 32);
    FRowCondMenuItem = new QMenu(FRowPopup);
    FRowPopup->addMenu(FRowCondMenuItem)->setData(5);
    separator(FRowPopup, 33);
    add(FRowPopup, 20);
    separator(FRowPopup, 34);
    add(FRowPopup, 21);

    FValuePopup = new QMenu(this);
    auto *group = new QActionGroup(FValuePopup);
    for (int tag : {1, 2}) {
        QAction *action = group->addAction(QString());
        action->setData(tag);
        action->setCheckable(true);
        FValuePopup->addAction(action);
    }
    FindTag(FValuePopup, 1)->setChecked(true);
    UpdateMenus();
}

void TNQueryPanel::UpdateMenus()
{
    if (!FMainPopup || !FQuery)
        return;
    // Rebuilding a menu that is showing would pull its entries away.
    if (FMenuOpen) {
        FMenusStale = true;
        return;
    }
    const auto title = [this](const char *name) { return GetTitle(QString::fromLatin1(name)); };
    const QString after = QStringLiteral(" (") + title("ttlAfterCurrent") + QLatin1Char(')');
    const QString inside = QStringLiteral(" (") + title("ttlInsideCurrent") + QLatin1Char(')');
    const std::pair<int, QString> mainCaptions[] = {
        {11, title("ttlAddCond")}, {12, title("ttlAddBracket")}, {5, title("ttlCustomCond")}};
    const std::pair<int, QString> rowCaptions[] = {
        {1, title("ttlAddCond") + after},     {2, title("ttlAddBracket") + after},
        {3, title("ttlAddCond") + inside},    {4, title("ttlAddBracket") + inside},
        {5, title("ttlCustomCond")},          {20, title("ttlDelRow")},
        {21, title("ttlEnableDisable")}};
    for (const auto &[tag, text] : mainCaptions)
        FindTag(FMainPopup, tag)->setText(text);
    for (const auto &[tag, text] : rowCaptions)
        FindTag(FRowPopup, tag)->setText(text);
    FindTag(FValuePopup, 1)->setText(title("ttlConstant"));
    FindTag(FValuePopup, 2)->setText(title("ttlParameter"));
    FillCustomMenu(FMainCondMenuItem);
    FillCustomMenu(FRowCondMenuItem);
}

void TNQueryPanel::FillCustomMenu(QMenu *menu)
{
    menu->clear();
    const TNCustomDBStructure *model = DBStruct();
    const int count = model ? model->Conditions().Count() : 0;
    for (int i = 0; i < count; ++i) {
        const TDSCondition *condition = model->Conditions().Items(i);
        menu->addAction(condition->Caption())->setData(CustomCondTag + condition->ID());
    }
}

// Every entry changes the query: none is offered read-only, and the
// custom-condition sub-menu only when the model has conditions.
void TNQueryPanel::EnableMenu(QMenu *menu)
{
    for (QAction *action : menu->actions()) {
        if (action->isSeparator())
            continue;
        const bool empty = action->menu() && action->menu()->isEmpty();
        action->setEnabled(!FReadOnly && !empty);
    }
}

void TNQueryPanel::RowMenuPopup()
{
    EnableMenu(FRowPopup);
    const bool nested = FCurrentRow && FCurrentRow->IsBracket() && FCurrentRow->Parent();
    for (QAction *action : FRowPopup->actions())
        if (const int tag = action->data().toInt(); tag == 3 || tag == 4 || tag == 32)
            action->setVisible(nested);
}

void TNQueryPanel::ValueMenuPopup()
{
    const bool params = FAppearance->Has(TQPAppearance::aoAllowParams);
    QAction *constant = FindTag(FValuePopup, 1);
    QAction *parameter = FindTag(FValuePopup, 2);
    parameter->setVisible(params);
    constant->setEnabled(!FReadOnly);
    parameter->setEnabled(!FReadOnly);
    bool isParam = false;
    const TQueryRowView *view = FCurrentRow ? RowView(FCurrentRow) : nullptr;
    if (view && FCurrentRow->RowType() != frtBracket) {
        const TDropDownLabel *control = view->CurrentControl();
        const auto *cond = static_cast<const TFilterCond *>(FCurrentRow);
        if (control && control == view->Slot(rsFirstValue))
            isParam = cond->GetValueIsParam(1);
        else if (control && control == view->Slot(rsSecondValue))
            isParam = cond->GetValueIsParam(2);
    }
    (isParam ? parameter : constant)->setChecked(true);
}

int TNQueryPanel::ExecMenu(QMenu *menu, const QWidget *control)
{
    const bool rtl = layoutDirection() == Qt::RightToLeft;
    const QPoint pos = control ? control->mapToGlobal(QPoint(rtl ? control->width() : 0, control->height()))
                               : viewport()->mapToGlobal(QPoint(0, 0));
    FMenuOpen = true;
    const auto closed = qScopeGuard([this] {
        FMenuOpen = false;
        if (std::exchange(FMenusStale, false))
            UpdateMenus();
    });
    int tag = 0;
    if (MenuHook) {
        tag = MenuHook(menu, pos);
    } else {
        const QPointer<QAction> chosen = menu->exec(pos);
        tag = chosen ? chosen->data().toInt() : 0;
    }
    // Only what the menu offered counts, as if it had been clicked.
    const QAction *action = tag ? FindTag(menu, tag) : nullptr;
    if (!action || !action->isEnabled() || !action->isVisible())
        return 0;
    return tag;
}

void TNQueryPanel::RunMenu(QMenu *menu, const QWidget *control, TFilterRow *row)
{
    const int tag = ExecMenu(menu, control);
    // The row may have gone while the menu showed.
    if (tag == 0 || !RowInTree(row))
        return;
    SetCurrentRow(row);
    ApplyMenuTag(tag, row);
}

bool TNQueryPanel::RowInTree(const TFilterRow *row) const
{
    std::vector<const TFilterRow *> stack{FQuery->Filter()};
    while (!stack.empty()) {
        const TFilterRow *next = stack.back();
        stack.pop_back();
        if (next == row)
            return true;
        if (next->IsBracket())
            for (const auto &child : static_cast<const TFilterBracket *>(next)->Rows())
                stack.push_back(child.get());
    }
    return false;
}

TFilterBracket *TNQueryPanel::BracketOfRow(TFilterRow *row) const
{
    if (!row)
        return FQuery->Filter();
    if (row->IsBracket())
        return static_cast<TFilterBracket *>(row);
    return row->Parent() ? row->Parent() : FQuery->Filter();
}

void TNQueryPanel::MenuItemClick(int tag)
{
    ApplyMenuTag(tag, FCurrentRow ? FCurrentRow : FQuery->Filter());
}

void TNQueryPanel::AddCustomConditionClick(TDSCondition *condition)
{
    if (condition)
        ApplyMenuTag(CustomCondTag + condition->ID(), FCurrentRow ? FCurrentRow : FQuery->Filter());
}

void TNQueryPanel::ApplyMenuTag(int tag, TFilterRow *row)
{
    if (FReadOnly)
        return;
    TFilterBracket *root = FQuery->Filter();
    const bool atRoot = row == root;
    // A bracket the user adds gets its first condition with aoNonEmptyBrackets.
    const bool nonEmpty = FQuery->NonEmptyBrackets();
    FQuery->SetNonEmptyBrackets(nonEmpty || FAppearance->Has(TQPAppearance::aoNonEmptyBrackets));
    const auto restore = qScopeGuard([this, nonEmpty] { FQuery->SetNonEmptyBrackets(nonEmpty); });

    TFilterRow *added = nullptr;
    bool changed = false;
    switch (tag) {
    case 1:
    case 11:
        added = atRoot ? FQuery->AddCondition(root, nullptr)
                       : FQuery->AddConditionNum(row->Parent(), NumAfter(row), nullptr);
        break;
    case 2:
    case 12:
        added = atRoot ? FQuery->AddBracket(root) : FQuery->AddBracketNum(row->Parent(), NumAfter(row));
        break;
    case 3:
        added = FQuery->AddCondition(BracketOfRow(row), nullptr);
        break;
    case 4:
        added = FQuery->AddBracket(BracketOfRow(row));
        break;
    case 20: {
        if (atRoot)
            break;
        const int num = row->RowNum();
        if (!FQuery->DeleteRow(row))
            break;
        changed = true;
        // The row below takes its place as current, else the one above.
        TFilterRow *next = FQuery->GetRowByNum(num);
        if (!next && num > 1)
            next = FQuery->GetRowByNum(num - 1);
        SetCurrentRow(next);
        break;
    }
    case 21:
        if (atRoot)
            break;
        row->SetEnabled(!row->Enabled());
        changed = true;
        break;
    default:
        if (tag >= CustomCondTag) {
            TNCustomDBStructure *model = DBStruct();
            if (TDSCondition *condition = model ? model->ConditionByID(tag - CustomCondTag) : nullptr)
                added = atRoot ? FQuery->AddCustomCondition(root, condition)
                               : FQuery->AddCustomConditionNum(row->Parent(), NumAfter(row), condition);
        }
        break;
    }
    if (!added && !changed)
        return;
    NotifyChange();
    // The current row is the one the user goes on with (a new bracket's own
    // condition when it got one).
    if (added && FCurrentRow && FCurrentRow->RowType() == frtSimpleCondition)
        OpenFieldList(FCurrentRow);
}

void TNQueryPanel::ValueMenuItemClick(int tag)
{
    if (FReadOnly || (tag != 1 && tag != 2) || !FCurrentRow || FCurrentRow->IsBracket())
        return;
    const TQueryRowView *view = RowView(FCurrentRow);
    const TDropDownLabel *control = view ? view->CurrentControl() : nullptr;
    if (!control || (control != view->Slot(rsFirstValue) && control != view->Slot(rsSecondValue)))
        return;
    const int index = control == view->Slot(rsFirstValue) ? 1 : 2;
    auto *cond = static_cast<TFilterCond *>(FCurrentRow);
    const bool param = tag == 2;
    if (cond->GetValueIsParam(index) == param)
        return;
    cond->SetValueIsParam(index, param);
    NotifyChange();
}

// --- mouse ---------------------------------------------------------------------------------

// Clicks come from rows; an inactive panel shows none (a host may still
// call these, and gets what the rows it does not see would offer: nothing).
void TNQueryPanel::MainButtonClick()
{
    TNCustomDBStructure *model = DBStruct();
    if (!model || !FActive)
        return;
    bool anyOperator = false;
    for (int i = 0; i < model->GetFieldCount() && !anyOperator; ++i)
        anyOperator = model->GetField(i)->OperatCount() > 0;
    if (!anyOperator)
        return;
    TFilterBracket *root = FQuery->Filter();
    SetCurrentRow(root);
    EnableMenu(FMainPopup);
    const TQueryRowView *view = RowView(root);
    RunMenu(FMainPopup, view ? view->Button() : nullptr, root);
}

void TNQueryPanel::RowButtonClick(TFilterRow *row)
{
    const TQueryRowView *view = row ? RowView(row) : nullptr;
    if (!view)
        return;
    SetCurrentRow(row);
    RowMenuPopup();
    RunMenu(FRowPopup, view->Button(), row);
}

void TNQueryPanel::AddRowLabelMouseDown(Qt::MouseButton button)
{
    if (!FActive)
        return;
    if (button == Qt::LeftButton) {
        ProcessAddRowClick(nullptr);
    } else if (button == Qt::RightButton) {
        TFilterBracket *root = FQuery->Filter();
        SetCurrentRow(root);
        EnableMenu(FMainPopup);
        RunMenu(FMainPopup, FAddRowLabel.get(), root);
    }
}

void TNQueryPanel::ProcessAddRowClick(TDSField *field)
{
    if (FReadOnly)
        return;
    TFilterBracket *bracket = FCurrentRow && FCurrentRow->Parent() ? FCurrentRow->Parent() : FQuery->Filter();
    TSimpleCond *added = FQuery->AddCondition(bracket, field);
    NotifyChange();
    if (!field && RowInTree(added))
        OpenFieldList(added);
}

void TNQueryPanel::mousePressEvent(QMouseEvent *event)
{
    // A press beside every control ends editing, keeping what was typed.
    CloseEditors(nullptr);
    setFocus(Qt::MouseFocusReason);
    event->accept();
}

void TNQueryPanel::CloseEditors(const TDropDownLabel *except)
{
    // Closing one editor may rebuild rows; the list is taken first and the
    // replaced labels live on until the event loop runs.
    std::vector<QPointer<TDropDownLabel>> labels;
    for (const auto &[row, view] : FViews)
        for (TDropDownLabel *label : view->Controls())
            if (label != except && label->EditMode())
                labels.emplace_back(label);
    for (const QPointer<TDropDownLabel> &label : labels)
        if (label)
            label->CloseEdit(true);
}

// Opens the field list of a condition just added, once the event loop has
// placed it (and no menu of the panel still shows).
void TNQueryPanel::OpenFieldList(TFilterRow *row)
{
    if (!FAppearance->Has(TQPAppearance::aoFieldsMenuOnAdd))
        return;
    const TQueryRowView *view = RowView(row);
    TDropDownLabel *field = view ? view->Slot(rsFirstLabel) : nullptr;
    if (!field)
        return;
    QTimer::singleShot(0, field, [this, field] {
        if (!FActive || !RowOfControl(field) || field->Dropped())
            return;
        try {
            field->DropDown();
        } catch (const Exception &) {
            // A list that cannot show leaves the label as it was.
        }
    });
}

// --- wiring the row controls -------------------------------------------------------------------

TFilterRow *TNQueryPanel::RowOfControl(const QObject *control) const
{
    if (!control)
        return nullptr;
    for (const auto &[row, view] : FViews) {
        if (view->Button() == control || view->CheckBox() == control || view->LogOpLabel() == control)
            return const_cast<TFilterRow *>(row);
        for (int i = 0; i < RowSlotCount; ++i)
            if (view->Slot(i) == control)
                return const_cast<TFilterRow *>(row);
    }
    return nullptr;
}

TNQueryPanel::TLabelRole TNQueryPanel::RoleOf(const TQueryRowView *view, const TDropDownLabel *label) const
{
    if (label == view->LogOpLabel())
        return lrLogOp;
    if (label->Fixed())
        return lrNone;
    const TFilterRowType type = view->Row()->RowType();
    if (type == frtBracket)
        return label == view->Slot(rsSecondLabel) ? lrLinkType : lrNone;
    if (label == view->Slot(rsFirstValue))
        return lrValue1;
    if (label == view->Slot(rsSecondValue))
        return lrValue2;
    if (type == frtSimpleCondition && label == view->Slot(rsFirstLabel))
        return lrField;
    if (type == frtSimpleCondition && label == view->Slot(rsSecondLabel))
        return lrOperator;
    return lrNone;
}

void TNQueryPanel::WireRowView(TQueryRowView *view)
{
    TNRndBtn *button = view->Button();
    // The root's button shows no number: it is read by what it opens.
    if (!view->Row()->Parent())
        button->setAccessibleName(QStringLiteral("Query menu"));
    button->OnClick = [this, button](QObject *) {
        const QScopedValueRollback busy(FInControlHandler, true);
        TFilterRow *row = RowOfControl(button);
        if (!row)
            return;
        if (row->Parent())
            RowButtonClick(row);
        else
            MainButtonClick();
    };
    if (QCheckBox *box = view->CheckBox()) {
        // Read as the menu entry that does the same, without its mnemonic.
        QString name = GetTitle(QStringLiteral("ttlEnableDisable"));
        name.replace(QLatin1String("&&"), QLatin1String("\x01")).remove(QLatin1Char('&')).replace(QLatin1Char('\x01'), QLatin1Char('&'));
        box->setAccessibleName(name);
        if (FReadOnly)
            box->setEnabled(false);
        connect(box, &QCheckBox::toggled, this, [this, box](bool on) {
            const QScopedValueRollback busy(FInControlHandler, true);
            CheckBoxToggled(box, on);
        });
    }
    std::vector<TDropDownLabel *> labels;
    for (int i = 0; i < RowSlotCount; ++i)
        if (view->Slot(i))
            labels.push_back(view->Slot(i));
    if (view->LogOpLabel())
        labels.push_back(view->LogOpLabel());
    for (TDropDownLabel *label : labels)
        if (const TLabelRole role = RoleOf(view, label); role != lrNone)
            WireLabel(label, role);
}

void TNQueryPanel::WireLabel(TDropDownLabel *label, TLabelRole role)
{
    // The row view may already fill the label's list before it drops.
    const TDropDownLabel::TNotifyEvent fill = label->BeforeDropDown;
    label->BeforeDropDown = [this, label, fill](QObject *sender) {
        const QScopedValueRollback busy(FInControlHandler, true);
        if (TFilterRow *row = RowOfControl(label))
            BeforeDropLabel(row, label);
        if (fill)
            fill(sender);
    };
    label->BeforeDropUp = [this](QObject *, QString &, bool &accept) {
        if (FReadOnly)
            accept = false;
    };
    label->AfterDropUp = [this, label, role](QObject *, bool accepted) {
        const QScopedValueRollback busy(FInControlHandler, true);
        if (TFilterRow *row = RowOfControl(label))
            AfterDropUpLabel(row, label, role, accepted);
        KeyboardDropEnded(label);
    };
    if (role != lrValue1 && role != lrValue2)
        return;
    if (FAppearance->Has(TQPAppearance::aoAllowParams))
        label->OnRightClick = [this, label](QObject *) {
            const QScopedValueRollback busy(FInControlHandler, true);
            ValueLabelRightClick(label);
        };
    if (auto *edit = qobject_cast<TDropDownCustomEdit *>(label))
        edit->OnEditDblClick = [this, label](QObject *, QString &text) {
            const QScopedValueRollback busy(FInControlHandler, true);
            ValueEditDblClick(label, text);
        };
}

void TNQueryPanel::WireAddRowLabel()
{
    auto *filter = new TPressFilter(FAddRowLabel.get(), [this](Qt::MouseButton button) {
        const QScopedValueRollback busy(FInControlHandler, true);
        AddRowLabelMouseDown(button);
    });
    FAddRowLabel->installEventFilter(filter);
}

void TNQueryPanel::CheckBoxToggled(QObject *box, bool on)
{
    TFilterRow *row = RowOfControl(box);
    if (!row)
        return;
    if (FReadOnly || row->Enabled() == on) {
        const QSignalBlocker quiet(box);
        static_cast<QCheckBox *>(box)->setChecked(row->Enabled());
        return;
    }
    row->SetEnabled(on);
    NotifyChange();
}

// --- labels ------------------------------------------------------------------------------------------

void TNQueryPanel::BeforeDropLabel(TFilterRow *row, TDropDownLabel *label)
{
    CloseEditors(label);
    // Closing them may have replaced this row's view.
    if (!RowOfControl(label))
        return;
    SetCurrentRow(row);
    if (TQueryRowView *view = RowView(row)) {
        const std::vector<TDropDownLabel *> controls = view->Controls();
        const auto found = std::find(controls.begin(), controls.end(), label);
        if (found != controls.end())
            view->SetCurrentControlIndex(int(found - controls.begin()));
    }
    FShowFrame = false;
    RefreshRow(row);
}

void TNQueryPanel::AfterDropUpLabel(TFilterRow *row, TDropDownLabel *label, TLabelRole role, bool accepted)
{
    SetShowFrame(true);
    if (FReadOnly) {
        // A pick shows in the label before it is refused: show the row again.
        RowChanged(row);
        return;
    }
    if (!accepted)
        return;
    bool changed = false;
    try {
        changed = ApplyLabel(row, label, role);
    } catch (const Exception &) {
        // The query refused the value: the row shows what it holds.
        RowChanged(row);
        return;
    }
    if (changed)
        NotifyChange();
}

bool TNQueryPanel::ApplyLabel(TFilterRow *row, TDropDownLabel *label, TLabelRole role)
{
    auto *list = qobject_cast<TDropDownList *>(label);
    switch (role) {
    case lrNone:
        return false;
    case lrLogOp:
        return LogOpLabelDropUp(row, label);
    case lrLinkType: {
        auto *bracket = static_cast<TFilterBracket *>(row);
        TFilterLinkType type;
        if (!list || !LinkTypeAt(FAppearance->LinkTypes(), list->ItemIndex(), type) || type == bracket->LinkType())
            return false;
        bracket->SetLinkType(type);
        return true;
    }
    case lrField: {
        auto *cond = static_cast<TSimpleCond *>(row);
        bool ok = false;
        const int id = label->Value().toInt(&ok);
        TNCustomDBStructure *model = DBStruct();
        TDSField *field = ok && model ? model->FieldByID(id) : nullptr;
        if (!field || field == cond->Field())
            return false;
        cond->SetField(field);
        return true;
    }
    case lrOperator: {
        auto *cond = static_cast<TSimpleCond *>(row);
        const TDSField *field = cond->Field();
        if (!field)
            return false;
        TDSOperator *op = nullptr;
        for (TDSOperator *candidate : field->Operators())
            if (candidate->Name() == label->Value())
                op = candidate;
        if (!op && list && list->ItemIndex() >= 0 && list->ItemIndex() < field->OperatCount())
            op = field->GetOperator(list->ItemIndex());
        if (!op || op == cond->Operator())
            return false;
        cond->SetOperator(op);
        return true;
    }
    case lrValue1:
    case lrValue2: {
        auto *cond = static_cast<TFilterCond *>(row);
        const int index = role == lrValue1 ? 1 : 2;
        const QString value = label->Value();
        if (!cond->GetValueIsParam(index) && cond->GetValue(index) == value)
            return false;
        cond->SetValueIsParam(index, false);
        cond->SetValue(index, value);
        return true;
    }
    }
    return false;
}

// The operator joins a row to its neighbour in its bracket; standing after
// a bracket's last row it joins that bracket to what follows it.
bool TNQueryPanel::LogOpLabelDropUp(TFilterRow *row, TDropDownLabel *label)
{
    auto *list = qobject_cast<TDropDownList *>(label);
    TFilterBracket *bracket = row->Parent();
    if (!list || !bracket || list->ItemIndex() < 0)
        return false;
    const bool after = FAppearance->LogOpStyle() == losAfterCond;
    if (after && row->IndexInParent() == bracket->GetRowCount() - 1 && bracket->Parent())
        bracket = bracket->Parent();
    // "and" and "or" keep a bracket's negation.
    const TFilterLinkType old = bracket->LinkType();
    const bool negated = old == fltNone || old == fltNotAll;
    const TFilterLinkType type = list->ItemIndex() == 0 ? (negated ? fltNotAll : fltAll) : (negated ? fltNone : fltAny);
    if (type == old)
        return false;
    bracket->SetLinkType(type);
    return true;
}

void TNQueryPanel::ValueLabelRightClick(TDropDownLabel *label)
{
    TFilterRow *row = RowOfControl(label);
    TQueryRowView *view = row ? RowView(row) : nullptr;
    if (!view)
        return;
    CloseEditors(nullptr);
    if (!RowOfControl(label))
        return;
    SetCurrentRow(row);
    const std::vector<TDropDownLabel *> controls = view->Controls();
    const auto found = std::find(controls.begin(), controls.end(), label);
    view->SetCurrentControlIndex(found == controls.end() ? -1 : int(found - controls.begin()));
    RefreshRow(row);
    ValueMenuPopup();
    const int tag = ExecMenu(FValuePopup, label);
    // The label's row may have been rebuilt or gone meanwhile.
    if (tag == 0 || !RowInTree(row) || FCurrentRow != row)
        return;
    ValueMenuItemClick(tag);
}

void TNQueryPanel::ValueEditDblClick(TDropDownLabel *label, QString &text)
{
    TFilterRow *row = RowOfControl(label);
    if (!OnValueDblClick || !row || row->IsBracket())
        return;
    const TQueryRowView *view = RowView(row);
    const int index = view && label == view->Slot(rsSecondValue) ? 2 : 1;
    const QScopedValueRollback inside(FInsideEventHandler, true);
    OnValueDblClick(static_cast<TFilterCond *>(row), index, text);
}

} // namespace vm20
