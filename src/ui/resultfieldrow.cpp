#include "ui/resultfieldrow.h"

#include "model/dbstructure.h"
#include "model/dsfield.h"
#include "model/dsfieldgroup.h"
#include "query/resultfield.h"
#include "ui/dropdownlistbox.h"
#include "ui/dropdownpopup.h"
#include "ui/querypanel.h"
#include "ui/readablecolor.h"
#include "ui/resultfieldspanel.h"
#include "ui/rfpanelerror.h"
#include "ui/rfrowgeometry.h"

#include <QLocale>
#include <QScrollBar>

namespace vm20 {

namespace {

void StyleLabel(QWidget *label, const QFont &font, const QColor &color, bool underline)
{
    QFont f = font;
    f.setUnderline(underline);
    label->setFont(f);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, color);
    palette.setColor(QPalette::Text, color);
    label->setPalette(palette);
}

// A plain label keeps its colour: it is matched to the panel's background
// when set and again when the palette changes.
QColor MissingColorOn(const QWidget *panel)
{
    return ReadableOn(TNQueryPanel::MissingColor(), panel->palette().color(QPalette::Base));
}

// Freed later: a label may be freed from inside its own event.
void Dispose(QWidget *widget)
{
    if (!widget)
        return;
    widget->hide();
    widget->deleteLater();
}

} // namespace

TRFRowButton::TRFRowButton(TResultFieldRow *row, QWidget *parent)
    : TNRndBtn(parent), FRow(row)
{
}

// --- TResultFieldRow ----------------------------------------------------------------

TResultFieldRow::TResultFieldRow(TResultFieldRows *rows, TResultField *field)
    : FRows(rows), FRField(field)
{
    TNResultFieldsPanel *panel = rows->RFPanel();
    if (!panel->DBStruct())
        throw ERFPanelError(QStringLiteral("DBStructure is not specified"));
    FButton = std::make_unique<TRFRowButton>(this, panel->viewport());
    FButton->SetAutoSize(true);
    FButton->OnClick = [this](QObject *) { RFPanel()->RowButtonClick(this); };

    FSortLabel = new TDropDownPopup(panel->viewport());
    StyleLabel(FSortLabel, panel->font(), panel->Appearance().SortColor(), true);
    FSortLabel->AddItem(QString(), QStringLiteral("0"), panel->GetTitle(QStringLiteral("ttlNotSorted")));
    FSortLabel->AddItem(QString(), QStringLiteral("1"), panel->GetTitle(QStringLiteral("ttlAscending")));
    FSortLabel->AddItem(QString(), QStringLiteral("2"), panel->GetTitle(QStringLiteral("ttlDescending")));
    FSortLabel->SetValue(QStringLiteral("0"));
    FSortLabel->AfterDropUp = [this](QObject *, bool accepted) { AfterDropUpLabel(accepted); };
    if (FRField)
        SetSorting(FRField->Sorting());
}

TResultFieldRow::~TResultFieldRow()
{
    // A row may go while one of its labels is dropped down or its button is
    // being clicked (the list changed in code meanwhile): the controls go
    // later and no longer call back into this row.
    if (FFieldLabel)
        FFieldLabel->AfterDropUp = nullptr;
    if (FSortLabel)
        FSortLabel->AfterDropUp = nullptr;
    FButton->OnClick = nullptr;
    Dispose(FButton.release());
    FreeLabels();
    Dispose(FSortLabel);
}

TNResultFieldsPanel *TResultFieldRow::RFPanel() const { return FRows->RFPanel(); }

int TResultFieldRow::RowIndex() const { return FRows->IndexOf(this); }

void TResultFieldRow::SetRField(TResultField *value)
{
    if (FRField == value)
        return;
    FRField = value;
    if (FRField)
        SetSorting(FRField->Sorting());
}

int TResultFieldRow::Sorting() const { return FSortLabel ? FSortLabel->Value().toInt() : 0; }

void TResultFieldRow::SetSorting(int value)
{
    if (FSortLabel)
        FSortLabel->SetValue(QString::number(value));
}

void TResultFieldRow::SetVisible(bool value)
{
    if (FVisible == value)
        return;
    FVisible = value;
    for (QWidget *w : {static_cast<QWidget *>(FButton.get()), static_cast<QWidget *>(FTextLabel1),
                       static_cast<QWidget *>(FTextLabel2), static_cast<QWidget *>(FFieldLabel),
                       static_cast<QWidget *>(FMissingLabel), static_cast<QWidget *>(FSortLabel)})
        if (w)
            w->setVisible(value);
}

QLabel *TResultFieldRow::NewTextLabel(const QString &text)
{
    TNResultFieldsPanel *panel = RFPanel();
    // The gap between controls already parts the words: blanks at either
    // end of the text would only widen it.
    auto *label = new QLabel(QLocale().toUpper(text.trimmed()), panel->viewport());
    label->setFont(panel->font());
    label->setTextFormat(Qt::PlainText);
    label->resize(label->sizeHint());
    return label;
}

void TResultFieldRow::FreeLabels()
{
    if (FFieldLabel)
        FFieldLabel->AfterDropUp = nullptr;
    Dispose(FTextLabel1);
    Dispose(FTextLabel2);
    Dispose(FFieldLabel);
    Dispose(FMissingLabel);
    FTextLabel1 = nullptr;
    FTextLabel2 = nullptr;
    FFieldLabel = nullptr;
    FMissingLabel = nullptr;
    FMissing.clear();
}

const TDSField *TResultFieldRow::ModelField(const TResultField *column) const
{
    if (!column || column->DSFields().Count() == 0)
        return nullptr;
    const TDSField *field = column->DSFields().Items(0);
    const TNCustomDBStructure *model = RFPanel()->DBStruct();
    return field && model && model->FieldByID(field->ID()) == field ? field : nullptr;
}

void TResultFieldRow::CreateFieldLabel()
{
    TNResultFieldsPanel *panel = RFPanel();
    const TRFPAppearance &look = panel->Appearance();
    if (look.Has(TRFPAppearance::aoPopupField))
        FFieldLabel = new TDropDownPopup(panel->viewport());
    else
        FFieldLabel = new TDropDownListBox(panel->viewport());
    StyleLabel(FFieldLabel, panel->font(), look.FieldColor(), true);
    if (panel->DBStruct()->RootFieldsFirst()) {
        AddRootFields();
        AddGroupedFields();
    } else {
        AddGroupedFields();
        AddRootFields();
    }
    if (!FFieldLabel->Items().isEmpty())
        FFieldLabel->SetItemIndex(0);
    FFieldLabel->AfterDropUp = [this](QObject *, bool accepted) { AfterDropUpLabel(accepted); };
}

void TResultFieldRow::AddRootFields()
{
    const TDSFieldGroup &root = RFPanel()->DBStruct()->RootGroup();
    for (TDSField *field : root.Fields())
        if (field->UseInResult())
            FFieldLabel->AddItem(root.GroupName(), QString::number(field->ID()), field->DisplayName());
}

void TResultFieldRow::AddGroupedFields()
{
    const TDSFieldGroupList &groups = RFPanel()->DBStruct()->FieldGroups();
    for (int g = 0; g < groups.Count(); ++g) {
        const TDSFieldGroup *group = groups.Items(g);
        for (TDSField *field : group->Fields())
            if (field->UseInResult())
                FFieldLabel->AddItem(group->GroupName(), QString::number(field->ID()), field->DisplayName());
    }
}

TResultField *TResultFieldRow::LiveField() const
{
    const TRFieldList *list = RFPanel()->ResultFields();
    return list && list->IndexOf(FRField) >= 0 ? FRField : nullptr;
}

void TResultFieldRow::PlaceRow()
{
    TNResultFieldsPanel *panel = RFPanel();
    TResultField *const rfield = LiveField();
    const TRFPAppearance &look = panel->Appearance();
    FButton->SetRounded(look.Has(TRFPAppearance::aoRoundButtons));
    FButton->SetFlat(look.Has(TRFPAppearance::aoFlatButtons));
    FButton->setFont(panel->font());

    FreeLabels();
    const TRFExpressionParts parts =
        rfield ? SplitRFExpression(rfield->Formula()) : TRFExpressionParts{};
    const TDSField *field = parts.HasField ? ModelField(rfield) : nullptr;
    if (!parts.Leading.trimmed().isEmpty())
        FTextLabel1 = NewTextLabel(parts.Leading);
    if (field) {
        CreateFieldLabel();
        FFieldLabel->SetValue(QString::number(field->ID()));
        FFieldLabel->SetCaption(look.Has(TRFPAppearance::aoShowGroupName)
                                    ? field->GetCompoundName(look.NameSeparator())
                                    : field->DisplayName());
    } else if (parts.HasField) {
        // The column names a field the model lacks: say so where the field
        // would be, and leave the column to the user.
        FMissing = rfield->Caption().isEmpty() ? QStringLiteral("@1") : rfield->Caption();
        FMissingLabel = new QLabel(FMissing, panel->viewport());
        FMissingLabel->setTextFormat(Qt::PlainText);
        StyleLabel(FMissingLabel, panel->font(), MissingColorOn(panel), false);
        FMissingLabel->resize(FMissingLabel->sizeHint());
        FMissingLabel->setToolTip(QStringLiteral("Not in the model: %1").arg(FMissing));
    }
    if (parts.HasField && !parts.Trailing.trimmed().isEmpty())
        FTextLabel2 = NewTextLabel(parts.Trailing);
    Arrange();
    FButton->setAccessibleName(Sentence());
}

void TResultFieldRow::Arrange()
{
    TNResultFieldsPanel *panel = RFPanel();
    const TRFRowSpacing spacing = panel->Appearance().Spacing();
    const QPoint scroll(panel->horizontalScrollBar()->value(), panel->verticalScrollBar()->value());
    FButton->SetCaption(RowNumStr());
    const QRect buttonRect = RFRowButtonRect(spacing, RowIndex(), panel->TextHeight(),
                                             FButton->AutoSizeHint().width(), scroll);
    FButton->resize(buttonRect.size());
    panel->PlaceControl(FButton.get(), buttonRect.left(), buttonRect.top());
    FButton->setVisible(FVisible);
    int x = buttonRect.left() + spacing.ElemSpace + buttonRect.width();
    for (QWidget *control : {static_cast<QWidget *>(FTextLabel1), static_cast<QWidget *>(FFieldLabel),
                             static_cast<QWidget *>(FMissingLabel), static_cast<QWidget *>(FTextLabel2),
                             static_cast<QWidget *>(FSortLabel)}) {
        if (!control)
            continue;
        control->setLayoutDirection(panel->layoutDirection());
        panel->PlaceControl(control, x, buttonRect.top());
        control->setVisible(FVisible);
        x += spacing.ElemSpace + control->width();
    }
    FExtent = x - spacing.ElemSpace + scroll.x();
}

void TResultFieldRow::RefreshResultField()
{
    if (!LiveField())
        return;
    TNResultFieldsPanel *panel = RFPanel();
    if (FFieldLabel) {
        TDSField *field = panel->DBStruct()->FieldByID(FFieldLabel->Value().toInt());
        if (field) {
            FRField->DSFields().Clear();
            FRField->DSFields().Add(field);
            if (FRField->Formula() == QLatin1String("@1")) {
                FRField->SetCaption(field->DisplayName());
                FRField->GenerateAlias();
            }
        }
    }
    FRField->SetSorting(TSortingType(qBound(0, Sorting(), 2)));
    panel->RefreshSortOrder();
    panel->Changed();
}

void TResultFieldRow::AfterDropUpLabel(bool accepted)
{
    if (!accepted)
        return;
    RFPanel()->RowLabelAccepted(this);
}

QString TResultFieldRow::Sentence() const
{
    QStringList words{RowNumStr()};
    for (QWidget *w : {static_cast<QWidget *>(FTextLabel1), static_cast<QWidget *>(FFieldLabel),
                       static_cast<QWidget *>(FMissingLabel), static_cast<QWidget *>(FTextLabel2),
                       static_cast<QWidget *>(FSortLabel)}) {
        if (auto *label = qobject_cast<QLabel *>(w))
            words << label->text();
        else if (auto *dd = qobject_cast<TDropDownLabel *>(w))
            words << dd->Caption();
    }
    return words.join(QLatin1Char(' '));
}

// --- TResultFieldRows -----------------------------------------------------------------

TResultFieldRow *TResultFieldRows::Items(int index) const
{
    if (index < 0 || index >= Count())
        throw ERFPanelError(QStringLiteral("Row index out of bounds (%1)").arg(index));
    return FItems[std::size_t(index)].get();
}

TResultFieldRow *TResultFieldRows::AddRow(TResultField *field) { return InsertRow(Count(), field); }

TResultFieldRow *TResultFieldRows::InsertRow(int index, TResultField *field)
{
    auto row = std::make_unique<TResultFieldRow>(this, field);
    TResultFieldRow *raw = row.get();
    FItems.insert(FItems.begin() + qBound(0, index, Count()), std::move(row));
    return raw;
}

void TResultFieldRows::Delete(int index)
{
    Items(index);
    FItems.erase(FItems.begin() + index);
}

void TResultFieldRows::Move(int from, int to)
{
    Items(from);
    Items(to);
    auto row = std::move(FItems[std::size_t(from)]);
    FItems.erase(FItems.begin() + from);
    FItems.insert(FItems.begin() + to, std::move(row));
}

int TResultFieldRows::IndexOf(const TResultFieldRow *row) const
{
    for (std::size_t i = 0; i < FItems.size(); ++i)
        if (FItems[i].get() == row)
            return int(i);
    return -1;
}

void TResultFieldRows::SetVisible(bool value)
{
    FVisible = value;
    for (const auto &row : FItems)
        row->SetVisible(value);
}

void TResultFieldRow::RefreshColors()
{
    if (FMissingLabel)
        StyleLabel(FMissingLabel, RFPanel()->font(), MissingColorOn(RFPanel()), false);
}

} // namespace vm20
