#include "query/resultfield.h"

#include "model/dbstructure.h"
#include "model/sqlformats.h"
#include "model/sqlnames.h"
#include "support/exception.h"
#include "support/nstrings.h"

#include <algorithm>
#include <utility>

namespace vm20 {

// --- TResultField ---------------------------------------------------------------------

TResultField::TResultField(TRFieldList *list)
    : FDSFields(list ? list->DBStruct() : nullptr), FRFList(list)
{
}

TNCustomDBStructure *TResultField::DBStruct() const
{
    return FRFList ? FRFList->DBStruct() : nullptr;
}

void TResultField::Changed()
{
    if (FRFList)
        FRFList->RFieldChanged(this);
}

void TResultField::SetCaption(const QString &value)
{
    if (FCaption == value)
        return;
    FCaption = value;
    Changed();
}

void TResultField::SetAlias(const QString &value)
{
    if (FAlias == value)
        return;
    FAlias = value;
    Changed();
}

void TResultField::SetFormula(const QString &value)
{
    if (FFormula == value)
        return;
    FFormula = value;
    Changed();
}

void TResultField::SetSorting(TSortingType value)
{
    if (FSorting == value)
        return;
    FSorting = value;
    Changed();
}

void TResultField::SetSortOrder(int value)
{
    if (FSortOrder == value)
        return;
    FSortOrder = value;
    Changed();
}

QString TResultField::ExpandFormula(bool normal) const
{
    // Placeholders are replaced in increasing order, so "@1" also hits the
    // start of "@10"; stored formulas rely on that order.
    QString result = FFormula;
    const qsizetype marks = FFormula.count(QLatin1Char('@'));
    for (qsizetype i = 1; i <= marks && i <= FDSFields.Count(); ++i) {
        const TDSField *field = FDSFields.Items(int(i - 1));
        if (!field)
            continue;
        result.replace(QLatin1Char('@') + QString::number(i),
                       normal ? field->NormalSQLExpr() : field->SQLExpr());
    }
    return result;
}

QString TResultField::GetSQLExpr() const
{
    return ExpandFormula(false);
}

QString TResultField::GetNormalSQLExpr() const
{
    return ExpandFormula(true);
}

QChar TResultField::GetQuoteSymbol(int which) const
{
    const TNCustomDBStructure *model = DBStruct();
    if (!model)
        return QLatin1Char('"');
    return which == 1 ? model->SQLFormats().QuoteSymbol1() : model->SQLFormats().QuoteSymbol2();
}

QString TResultField::GetSQLAlias() const
{
    // A caption may hold anything: an alias that is not one plain name is
    // quoted even when aliases are not, or it would end the column early.
    if ((FRFList && FRFList->QuoteAliases()) || !IsPlainSQLName(FAlias))
        return QuotedSQLName(FAlias, GetQuoteSymbol(1), GetQuoteSymbol(2));
    return FAlias;
}

QString TResultField::GetSelectExpr() const
{
    QString expr = GetSQLExpr();
    const bool aliasIsFieldName = FDSFields.Count() == 1 && FDSFields.Items(0)
                                  && SameText(FDSFields.Items(0)->FieldName(), FAlias);
    if (!FAlias.isEmpty() && !aliasIsFieldName)
        expr += QStringLiteral(" as ") + GetSQLAlias();
    return expr;
}

QString TResultField::GetOrderName() const
{
    if (FAlias.isEmpty())
        return QString::number(FNumber);
    if (FDSFields.Count() == 1 && FDSFields.Items(0) && FDSFields.Items(0)->FieldName() == FAlias)
        return GetSQLExpr();
    return GetSQLAlias();
}

bool TResultField::GetAgregate() const
{
    if (FDSFields.Count() > 0 && FDSFields.Items(0) && FDSFields.Items(0)->IsAggregate())
        return true;
    const QString formula = FFormula.toLower();
    for (const char *function : {"sum(", "count(", "max(", "min(", "avg("})
        if (formula.contains(QLatin1String(function)))
            return true;
    return false;
}

void TResultField::GenerateAlias()
{
    QString alias;
    if (FRFList && FRFList->UseAliases()) {
        if (FRFList->QuoteAliases()) {
            alias = FCaption;
        } else if (FRFList->AsciiAliases()) {
            for (qsizetype i = 0; i < FCaption.size(); ++i) {
                const char16_t c = FCaption[i].unicode();
                const bool letter = (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || c == u'_';
                const bool digit = c >= u'0' && c <= u'9';
                if (letter || (digit && i > 0))
                    alias += QChar(c);
            }
        } else {
            alias = FCaption;
            alias.replace(QLatin1Char(' '), QLatin1Char('_'));
        }
    }
    SetAlias(alias);
}

void TResultField::Assign(const TResultField &source)
{
    FDSFields.Clear();
    for (TDSField *field : source.FDSFields.Fields())
        FDSFields.Add(field);
    FCaption = source.FCaption;
    FAlias = source.FAlias;
    FFormula = source.FFormula;
    FSorting = source.FSorting;
    FNumber = source.FNumber;
    FSortOrder = source.FSortOrder;
    FOleObject = source.FOleObject;
    Changed();
}

// --- TRFieldList -------------------------------------------------------------------------

TRFieldList::TRFieldList(TNCustomDBStructure *dbStruct)
    : FDBStruct(dbStruct)
{
    FModelWatch.OnDeleting = [this](const TModelChange &entity) { DropModelFields(entity); };
    FModelWatch.OnDestroyed = [this] { DropModelFields({mckFields, nullptr}); };
    FModelWatch.Watch(dbStruct);
}

void TRFieldList::SetDBStruct(TNCustomDBStructure *value)
{
    FDBStruct = value;
    FModelWatch.Watch(value);
}

void TRFieldList::DropModelFields(const TModelChange &entity)
{
    if (entity.Kind != mckFields)
        return;
    for (int i = Count() - 1; i >= 0; --i) {
        const std::vector<TDSField *> &fields = FItems[std::size_t(i)]->DSFields().Fields();
        const bool uses = entity.Entity
            ? std::find(fields.begin(), fields.end(), entity.Entity) != fields.end()
            : !fields.empty();
        if (uses)
            Delete(i);
    }
}

TRFieldList::~TRFieldList() = default;

void TRFieldList::SetJustSorting(bool value)
{
    if (FJustSorting == value)
        return;
    FJustSorting = value;
    RFieldChanged(nullptr);
}

TResultField *TRFieldList::GetRField(int index) const
{
    if (index < 0 || index >= Count())
        throw EListError::IndexOutOfBounds(index);
    return FItems[std::size_t(index)].get();
}

int TRFieldList::IndexOf(const TResultField *field) const
{
    for (std::size_t i = 0; i < FItems.size(); ++i)
        if (FItems[i].get() == field)
            return int(i);
    return -1;
}

std::unique_ptr<TResultField> TRFieldList::CreateRField()
{
    return std::make_unique<TResultField>(this);
}

TResultField *TRFieldList::New()
{
    return InsertMade(Count(), CreateRField());
}

TResultField *TRFieldList::Add(const QString &caption, const std::vector<TDSField *> &fields,
                               const QString &formula)
{
    return Insert(Count(), caption, fields, formula);
}

TResultField *TRFieldList::Insert(int index, const QString &caption,
                                  const std::vector<TDSField *> &fields, const QString &formula)
{
    if (index < 0 || index > Count())
        throw EListError::IndexOutOfBounds(index);
    return InsertMade(index, MakeField(caption, fields, formula));
}

std::unique_ptr<TResultField> TRFieldList::MakeField(const QString &caption,
                                                     const std::vector<TDSField *> &fields,
                                                     const QString &formula)
{
    auto field = CreateRField();
    for (TDSField *f : fields)
        field->DSFields().Add(f);
    field->FFormula = formula.isEmpty() && !fields.empty() ? QStringLiteral("@1") : formula;
    QString text = caption;
    if (text.isEmpty())
        text = fields.size() == 1 && fields.front() && field->FFormula == QLatin1String("@1")
                   ? fields.front()->DisplayName() : field->GetSQLExpr();
    field->FCaption = text;
    field->GenerateAlias();
    return field;
}

TResultField *TRFieldList::InsertMade(int index, std::unique_ptr<TResultField> field)
{
    TResultField *raw = field.get();
    FItems.insert(FItems.begin() + index, std::move(field));
    Signal([index](TRFieldListObserver *observer) { observer->FieldInserted(index); });
    return raw;
}

TResultField *TRFieldList::NewResultField()
{
    TDSField *field = FDBStruct ? FDBStruct->GetFirstResultField() : nullptr;
    if (!field)
        return New();
    return Add(field->DisplayName(), {field}, QStringLiteral("@1"));
}

void TRFieldList::RefreshSortOrder()
{
    int order = 0;
    for (auto &field : FItems)
        field->SetSortOrder(field->Sorting() == stNoSort ? 0 : ++order);
}

TResultField *TRFieldList::AddByExpression(const QString &caption, const QString &expression,
                                           TSortingType sorting, int sortOrder)
{
    return InsertExpression(Count(), caption, expression, sorting, sortOrder, false);
}

TResultField *TRFieldList::InsertByExpression(int index, const QString &caption,
                                              const QString &expression, TSortingType sorting,
                                              int sortOrder)
{
    return InsertExpression(index, caption, expression, sorting, sortOrder, false);
}

TResultField *TRFieldList::AddBySQLExpr(const QString &sqlExpr, const QString &caption,
                                        TSortingType sorting, int sortOrder)
{
    return InsertExpression(Count(), caption, sqlExpr, sorting, sortOrder, true);
}

TResultField *TRFieldList::InsertBySQLExpr(int index, const QString &sqlExpr, const QString &caption,
                                           TSortingType sorting, int sortOrder)
{
    return InsertExpression(index, caption, sqlExpr, sorting, sortOrder, true);
}

void TRFieldList::Delete(int index)
{
    if (index < 0 || index >= Count())
        throw EListError::IndexOutOfBounds(index);
    if (FUpdating > 0) {
        FResetPending = true;
        FItems.erase(FItems.begin() + index);
        return;
    }
    const TResultField *going = FItems[std::size_t(index)].get();
    FObservers.Notify([index](TRFieldListObserver *observer) { observer->FieldRemoving(index); });
    // A listener may have changed the list while it was told.
    const int at = IndexOf(going);
    if (at >= 0)
        FItems.erase(FItems.begin() + at);
    if (OnChange)
        OnChange(this);
}

void TRFieldList::Move(int from, int to)
{
    if (from < 0 || from >= Count())
        throw EListError::IndexOutOfBounds(from);
    if (to < 0 || to >= Count())
        throw EListError::IndexOutOfBounds(to);
    if (from == to)
        return;
    auto item = std::move(FItems[std::size_t(from)]);
    FItems.erase(FItems.begin() + from);
    FItems.insert(FItems.begin() + to, std::move(item));
    Signal([from, to](TRFieldListObserver *observer) { observer->FieldMoved(from, to); });
}

void TRFieldList::Clear()
{
    if (FItems.empty())
        return;
    FItems.clear();
    Signal([](TRFieldListObserver *observer) { observer->Reset(); });
}

bool TRFieldList::CheckUniqAlias(const QString &alias, const TResultField *except) const
{
    for (const auto &field : FItems)
        if (field.get() != except && SameText(field->Alias(), alias))
            return false;
    return true;
}

bool TRFieldList::CheckUniqCaption(const QString &caption, const TResultField *except) const
{
    for (const auto &field : FItems)
        if (field.get() != except && SameText(field->Caption(), caption))
            return false;
    return true;
}

QString TRFieldList::GetUniqAlias(const QString &base) const
{
    QString alias = base;
    for (int n = 1; !CheckUniqAlias(alias); ++n)
        alias = base + QString::number(n);
    return alias;
}

QString TRFieldList::GetUniqCaption(const QString &base) const
{
    QString caption = base;
    for (int n = 1; !CheckUniqCaption(caption); ++n)
        caption = base + QLatin1Char(' ') + QString::number(n);
    return caption;
}

void TRFieldList::GenerateNumbers()
{
    for (std::size_t i = 0; i < FItems.size(); ++i)
        FItems[i]->SetNumber(int(i) + 1);
}

void TRFieldList::RegenerateAliases()
{
    BeginUpdate();
    for (auto &field : FItems)
        field->GenerateAlias();
    EndUpdate();
}

int TRFieldList::GetSortCount() const
{
    int count = 0;
    for (const auto &field : FItems)
        if (field->Sorting() != stNoSort)
            ++count;
    return count;
}

QString TRFieldList::GetCaption(int index) const
{
    return GetRField(index)->Caption();
}

void TRFieldList::AddObserver(TRFieldListObserver *observer)
{
    FObservers.Add(observer);
}

void TRFieldList::RemoveObserver(TRFieldListObserver *observer)
{
    FObservers.Remove(observer);
}

void TRFieldList::EndUpdate()
{
    if (FUpdating == 0 || --FUpdating > 0 || !std::exchange(FResetPending, false))
        return;
    Signal([](TRFieldListObserver *observer) { observer->Reset(); });
}

void TRFieldList::RFieldChanged(TResultField *field)
{
    if (!field) {
        Signal([](TRFieldListObserver *observer) { observer->Reset(); });
        return;
    }
    if (FUpdating > 0) {
        FResetPending = true;
        return;
    }
    const int index = IndexOf(field);
    if (index >= 0)
        Signal([index](TRFieldListObserver *observer) { observer->FieldChanged(index); });
}

void TRFieldList::Assign(const TRFieldList &source)
{
    if (&source == this)
        return;
    BeginUpdate();
    FResetPending = true;
    FItems.clear();
    FDBStruct = source.FDBStruct;
    FQuoteAliases = source.FQuoteAliases;
    FVersion = source.FVersion;
    FAsciiAliases = source.FAsciiAliases;
    FJustSorting = source.FJustSorting;
    FUseAliases = source.FUseAliases;
    for (const auto &item : source.FItems) {
        FItems.push_back(CreateRField());
        FItems.back()->Assign(*item);
    }
    EndUpdate();
}

} // namespace vm20
