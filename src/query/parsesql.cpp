#include "query/parsesql.h"

#include "model/dbstructure.h"
#include "query/query.h"
#include "query/sqldatevalue.h"
#include "query/sqlparam.h"
#include "query/templatematcher.h"
#include "query/valueformat.h"
#include "sqlparse/sqlparser.h"
#include "support/nstrings.h"

#include <algorithm>

namespace vm20 {

namespace {

// Two spellings of "not equal" that no operator template carries, read as the
// one that the built-in operators do.
struct TRewritePair
{
    const char16_t *Pattern;
    const char16_t *Replacement;
};
constexpr TRewritePair RewritePairs[] = {
    {u"@f != '@1'", u"@f <> '@1'"},
    {u"not(@f = '@1')", u"@f <> '@1'"},
};

// Keys of the lookups: FieldByName's mode 3 ignores the quote symbols, every
// name lookup ignores letter case, and predefined conditions compare in lower
// case without blanks.
QString FieldExprKey(QString text, QChar quote1, QChar quote2)
{
    text.remove(quote1);
    text.remove(quote2);
    return text.toCaseFolded();
}

QString ConditionKey(const QString &text)
{
    QString key;
    key.reserve(text.size());
    for (QChar c : text.toLower())
        if (!IsSpace(c))
            key.append(c);
    return key;
}

// Sets the query up for loading and puts its state back on every way out.
class TLoadingScope
{
public:
    explicit TLoadingScope(TNQuery &query) : FQuery(query), FWasActive(query.Active())
    {
        FQuery.BeginLoading();
        FQuery.SetActive(false);
        FQuery.BeginUpdate();
        FQuery.RFields().BeginUpdate();
    }
    ~TLoadingScope()
    {
        FQuery.RFields().EndUpdate();
        FQuery.EndUpdate();
        FQuery.EndLoading();
        FQuery.SetActive(FWasActive);
    }
    TLoadingScope(const TLoadingScope &) = delete;
    TLoadingScope &operator=(const TLoadingScope &) = delete;

private:
    TNQuery &FQuery;
    bool FWasActive;
};

// Whether the column, with its present caption, is named in the select list
// and in ORDER BY as the statement names it: by `alias`, or by its bare
// expression when `alias` is empty (an alias that is the field's own name,
// letter case included, is left out of both).
bool NamedAs(const TResultField &column, const QString &alias)
{
    const TDSFieldList &fields = column.DSFields();
    const TDSField *field = fields.Count() == 1 ? fields.Items(0) : nullptr;
    if (alias.isEmpty())
        return column.Alias().isEmpty() || (field && column.Alias() == field->FieldName());
    return column.Alias() == alias && !(field && SameText(field->FieldName(), alias));
}

// The caption of a column the statement leaves without alias: its one field's
// name, else the name the parser gives the expression, without quotes.
QString BareName(const TNCustomDBStructure &model, const TResultField &column,
                 const QString &parsedCaption)
{
    const TDSFieldList &fields = column.DSFields();
    if (fields.Count() == 1 && fields.Items(0))
        return fields.Items(0)->FieldName();
    const QChar quote1 = model.SQLFormats().QuoteSymbol1();
    const QChar quote2 = model.SQLFormats().QuoteSymbol2();
    if (parsedCaption.size() >= 2 && parsedCaption.front() == quote1 && parsedCaption.back() == quote2)
        return parsedCaption.mid(1, parsedCaption.size() - 2);
    return parsedCaption;
}

// Whether the placeholder "@n" stands between quotes of the template, so that
// the value read for it is the inside of an SQL string literal.
bool PlaceholderQuoted(const QString &templ, int index)
{
    const qsizetype at = templ.indexOf(QLatin1Char('@') + QString::number(index));
    return at > 0 && templ.left(at).count(QLatin1Char('\'')) % 2 == 1;
}

} // namespace

TSQLLoader::TSQLLoader(TNQuery &query)
    : FQuery(query), FModel((query.CheckIfDBStructAssigned(), *query.DBStruct()))
{
    const QChar quote1 = FModel.SQLFormats().QuoteSymbol1();
    const QChar quote2 = FModel.SQLFormats().QuoteSymbol2();
    const int fieldCount = FModel.GetFieldCount();
    FFieldsBySQLExpr.reserve(fieldCount);
    FFieldsByFullName.reserve(fieldCount);
    for (int i = 0; i < fieldCount; ++i) {
        TDSField *field = FModel.GetField(i);
        // The first field in model order wins, as in FieldByName.
        const QString exprKey = FieldExprKey(field->SQLExpr(), quote1, quote2);
        if (!FFieldsBySQLExpr.contains(exprKey))
            FFieldsBySQLExpr.insert(exprKey, field);
        const QString nameKey = field->FullName().toCaseFolded();
        if (!FFieldsByFullName.contains(nameKey))
            FFieldsByFullName.insert(nameKey, field);
    }

    const TDSConditionList &conditions = FModel.Conditions();
    for (int i = 0; i < conditions.Count(); ++i) {
        const QString key = ConditionKey(conditions.Items(i)->SQLExpr());
        if (!FConditionsByText.contains(key))
            FConditionsByText.insert(key, conditions.Items(i));
    }

    // Longest template first, so that "@f <= '@1'" is tried before the
    // "@f < '@1'" that would read "= 5" as its value. Equal lengths keep the
    // model's order.
    for (int i = 0; i < FModel.GetOperatorCount(); ++i)
        FOperators.push_back({FModel.GetOperator(i), FModel.GetOperator(i)->SQLExpr()});
    std::stable_sort(FOperators.begin(), FOperators.end(),
                     [](const TOperatorEntry &a, const TOperatorEntry &b) {
                         return a.Template.size() > b.Template.size();
                     });
    FLikeFallback = FModel.OperatorByName(QStringLiteral("contains"));
    if (!FLikeFallback)
        FLikeFallback = FModel.OperatorByName(QStringLiteral("startswith"));
}

void TSQLLoader::Load(const QStringList &lines)
{
    TLoadingScope scope(FQuery);
    FQuery.ClearAll();
    try {
        TNSQLParser parser;
        parser.SetSQL(lines);
        parser.Parse();
        const TNParserResult &result = parser.ParserResult();
        LoadResultFields(result);
        if (const TSQLBracket *where = result.WhereClause())
            ProcessSQLBracket(FQuery.Filter(), *where, result.Tables());
    } catch (...) {
        FQuery.ClearAll();
        throw;
    }
}

void TSQLLoader::LoadResultFields(const TNParserResult &result)
{
    TRFieldList &list = FQuery.RFields();
    const TSQLResultFieldList &fields = result.ResultFields();
    list.SetJustSorting(fields.JustSorting());
    for (int i = 0; i < fields.Count(); ++i) {
        const TSQLResultField &source = *fields.Items(i);
        const auto sorting = TSortingType(qBound(0, source.Sorting(), 2));
        TResultField *column = list.AddBySQLExpr(source.SQLExpr(), QString(), sorting, source.SortOrder());
        // The model's caption stays when it gives the column the name the
        // statement gives it; otherwise the statement's name wins, so that
        // the column keeps its name in the rebuilt statement.
        column->GenerateAlias();
        if (!NamedAs(*column, source.Alias())) {
            column->SetCaption(source.Alias().isEmpty() ? BareName(FModel, *column, source.Caption())
                                                        : source.Alias());
            column->GenerateAlias();
        }
    }
}

TDSField *TSQLLoader::FieldBySQLName(const QString &name) const
{
    const TSQLFormats &formats = FModel.SQLFormats();
    if (TDSField *field = FFieldsBySQLExpr.value(
            FieldExprKey(name, formats.QuoteSymbol1(), formats.QuoteSymbol2())))
        return field;
    return FFieldsByFullName.value(name.toCaseFolded());
}

TDSCondition *TSQLLoader::FindCustomCondition(const TSQLCondition &cond) const
{
    if (FConditionsByText.isEmpty())
        return nullptr;
    return FConditionsByText.value(ConditionKey(cond.SQLExpr()));
}

TDSOperator *TSQLLoader::OperatorBySQLCond(const TSQLCondition &cond, QString &value1,
                                           QStringList &values, QString &value2)
{
    FFellBack = false;
    QString text = cond.SQLExpr();
    TTemplateVars vars;
    for (const TRewritePair &pair : RewritePairs)
        if (MatchSQLTemplate(QStringView(pair.Pattern), text, vars))
            text = FillSQLTemplate(QStringView(pair.Replacement), vars);

    const bool subQuery = cond.ContainsSubQuery();
    const QString leftExpr = cond.LeftExpr();
    for (const TOperatorEntry &entry : FOperators) {
        if (subQuery != (entry.Op->ValueKind() == vkSubQuery))
            continue;
        if (!MatchSQLTemplate(entry.Template, text, vars)
            || !EqualToSpaces(vars.F.toString(), leftExpr))
            continue;
        value1 = vars.V1.toString();
        value2 = vars.V2.toString();
        if (entry.Op->ValueKind() == vkSubQuery)
            ProcessSubQuery(value1, values, value1);
        return entry.Op;
    }
    if (cond.Operation() == QLatin1String("like") && FLikeFallback) {
        value1 = cond.RightExpr();
        FFellBack = true;
        return FLikeFallback;
    }
    return nullptr;
}

void TSQLLoader::ProcessSQLBracket(TFilterBracket *bracket, const TSQLBracket &sqlBracket,
                                   const TSQLTableList &tables)
{
    const bool any = sqlBracket.BoolOperator() == QLatin1String("or");
    if (any)
        bracket->SetLinkType(sqlBracket.Negative() ? fltNone : fltAny);
    else
        bracket->SetLinkType(sqlBracket.Negative() ? fltNotAll : fltAll);
    const TSQLConditionNodeList &nodes = sqlBracket.Nodes();
    for (int i = 0; i < nodes.Count(); ++i) {
        const TSQLNode *node = nodes.Items(i);
        if (const auto *inner = dynamic_cast<const TSQLBracket *>(node))
            ProcessSQLBracket(bracket->AddNewBracket(), *inner, tables);
        else
            LoadCondition(bracket, static_cast<const TSQLCondition &>(*node), tables);
    }
}

void TSQLLoader::LoadCondition(TFilterBracket *bracket, const TSQLCondition &sqlCond,
                               const TSQLTableList &tables)
{
    if (TDSCondition *custom = FindCustomCondition(sqlCond)) {
        bracket->AddCustomCond(custom);
        return;
    }
    TSimpleCond *cond = bracket->AddCond();
    QString name = sqlCond.LeftExpr();
    if (!name.contains(QLatin1Char('.')) && tables.Count() > 0)
        name = tables.Items(0)->AliasName() + QLatin1Char('.') + name;
    TDSField *field = FieldBySQLName(name);
    if (!field)
        field = FModel.UnrecognizedField();

    QString values[2];
    QStringList subQuery;
    TDSOperator *op = OperatorBySQLCond(sqlCond, values[0], subQuery, values[1]);
    const bool matched = op && !FFellBack;
    if (!op)
        op = FModel.UnrecognizedOperator();
    cond->SetField(field);
    cond->SetOperator(op);

    const bool isParam[2] = {values[0].startsWith(QLatin1Char(':')),
                             values[1].startsWith(QLatin1Char(':'))};
    const QString paramNames[2] = {values[0].mid(1), values[1].mid(1)};
    const int paramCount = op->ParamCount();
    if (IsDateType(cond->GetExprType())) {
        for (int i = 0; i < 2; ++i)
            values[i] = !isParam[i] && paramCount > i
                            ? ProcessSQLDateValue(cond->GetValueType(i + 1), values[i])
                            : QString();
    }
    if (!isParam[0] && op->ValueKind() == vkList)
        values[0].replace(QLatin1Char('\''), QLatin1Char('"'));
    for (int i = 0; i < 2; ++i) {
        const int index = i + 1;
        if (isParam[i]) {
            cond->SetValueIsParam(index, true);
            // The statement names the parameter; keep its name when it is free.
            TSQLParam *param = cond->GetParam(index);
            if (param && IsValidIdent(paramNames[i])
                && !FQuery.QResult().FindParameter(paramNames[i]))
                param->SetParamName(paramNames[i]);
            continue;
        }
        // A literal doubles the quotes it holds; the value keeps them single.
        if (matched && op->ValueKind() == vkScalar && IsStringType(cond->GetValueType(index))
            && PlaceholderQuoted(op->SQLExpr(), index))
            values[i].replace(QStringLiteral("''"), QStringLiteral("'"));
        cond->SetValue(index, values[i]);
        if (index > paramCount)
            cond->SetValueCaption(index, QString());
    }
    cond->SetSubQuery(subQuery);
    if (!subQuery.isEmpty())
        cond->SetSubQueryOptions(FQuery.SQLOptions());
}

} // namespace vm20

namespace vm20 {

void TNQuery::ParseSQL(const QStringList &lines)
{
    TSQLLoader(*this).Load(lines);
    RFields().RFieldChanged(nullptr);
    ParametersListChanged();
}

} // namespace vm20
