// One parsed condition becomes one row: a predefined condition when its text
// is one, else a simple condition on the field named on its left with the
// operator whose template its text fits, and the values that fit into the
// template's placeholders.
#include "query/parsesql.h"

#include "model/dbstructure.h"
#include "query/query.h"
#include "query/sqldatevalue.h"
#include "query/sqlparam.h"
#include "query/templatematcher.h"
#include "query/valueformat.h"
#include "sqlparse/sqlconditions.h"
#include "sqlparse/sqltables.h"
#include "support/nstrings.h"

namespace vm20 {

namespace {

// Two spellings of "not equal" that no built-in template carries, read as the
// one that the built-in operators do.
struct TRewritePair
{
    const char16_t *Pattern;
    const char16_t *Replacement;
    // A character the text must hold for the pattern to fit: spares the
    // matcher for nearly every condition.
    bool (*MayFit)(const QString &text);
};
constexpr TRewritePair RewritePairs[] = {
    {u"@f != '@1'", u"@f <> '@1'", [](const QString &text) { return text.contains(QLatin1Char('!')); }},
    {u"not(@f = '@1')", u"@f <> '@1'",
     [](const QString &text) { return text.startsWith(QLatin1Char('n'), Qt::CaseInsensitive); }},
};

// The condition's text as TSQLCondition::SQLExpr gives it, made in one piece.
QString ConditionText(const TSQLCondition &cond)
{
    const QStringView left = cond.LeftView();
    const QStringView operation = cond.OperationView();
    const QStringView right = cond.RightView();
    QString text;
    text.reserve(left.size() + operation.size() + right.size() + 7);
    if (cond.Negative())
        text += QLatin1String("not(");
    text += left;
    text += QLatin1Char(' ');
    text += operation;
    text += QLatin1Char(' ');
    text += right;
    if (cond.Negative())
        text += QLatin1Char(')');
    return text;
}

inline bool IsBlank(QChar c)
{
    const char16_t u = c.unicode();
    return u <= u' ' || (u >= 0x80 && IsSpace(c));
}

// EqualToSpaces without building the two blank-free copies.
bool SameIgnoringBlanks(QStringView a, QStringView b)
{
    qsizetype i = 0;
    qsizetype j = 0;
    for (;;) {
        while (i < a.size() && IsBlank(a[i]))
            ++i;
        while (j < b.size() && IsBlank(b[j]))
            ++j;
        if (i == a.size() || j == b.size())
            return i == a.size() && j == b.size();
        if (a[i++] != b[j++])
            return false;
    }
}

} // namespace

QString TSQLLoader::FieldExprKey(QString text, QChar quote1, QChar quote2)
{
    text.remove(quote1);
    text.remove(quote2);
    return text.toCaseFolded();
}

QString TSQLLoader::ConditionKey(const QString &text)
{
    QString key;
    key.reserve(text.size());
    for (QChar c : text.toLower())
        if (!IsSpace(c))
            key.append(c);
    return key;
}

TDSField *TSQLLoader::FieldBySQLName(const QString &name) const
{
    if (TDSField *field = FFieldsByExactSQLExpr.value(name))
        return field;
    const TSQLFormats &formats = FModel.SQLFormats();
    if (TDSField *field = FFieldsBySQLExpr.value(
            FieldExprKey(name, formats.QuoteSymbol1(), formats.QuoteSymbol2())))
        return field;
    return FFieldsByFullName.value(name.toCaseFolded());
}

TDSCondition *TSQLLoader::CustomConditionByText(const QString &sqlExpr) const
{
    if (FConditionsByText.isEmpty())
        return nullptr;
    return FConditionsByText.value(ConditionKey(sqlExpr));
}

TDSCondition *TSQLLoader::FindCustomCondition(const TSQLCondition &cond) const
{
    return CustomConditionByText(ConditionText(cond));
}

TDSOperator *TSQLLoader::OperatorBySQLCond(const TSQLCondition &cond, QString &value1,
                                           QStringList &values, QString &value2)
{
    const TOperatorEntry *entry = MatchOperator(cond, ConditionText(cond), value1, values, value2);
    return entry ? entry->Op : nullptr;
}

const TSQLLoader::TOperatorEntry *TSQLLoader::MatchOperator(const TSQLCondition &cond,
                                                            const QString &sqlExpr,
                                                            QString &value1, QStringList &values,
                                                            QString &value2)
{
    QString text = sqlExpr;
    TTemplateVars vars;
    for (const TRewritePair &pair : RewritePairs)
        if (pair.MayFit(text) && MatchSQLTemplate(QStringView(pair.Pattern), text, vars))
            text = FillSQLTemplate(QStringView(pair.Replacement), vars);

    const bool subQuery = cond.ContainsSubQuery();
    const QStringView leftExpr = cond.LeftView();
    for (const TOperatorEntry &entry : FOperators) {
        const bool subQueryOperator = entry.Op->ValueKind() == vkSubQuery;
        if (subQuery != subQueryOperator)
            continue;
        if (!MatchSQLTemplate(entry.Template, text, vars) || !SameIgnoringBlanks(vars.F, leftExpr))
            continue;
        value1 = vars.V1.toString();
        value2 = vars.V2.toString();
        if (subQueryOperator)
            ProcessSubQuery(value1, values, value1);
        return &entry;
    }
    if (FLikeFallback.Op && cond.OperationView() == QLatin1String("like")) {
        value1 = cond.RightExpr();
        return &FLikeFallback;
    }
    return nullptr;
}

void TSQLLoader::LoadCondition(TFilterBracket *bracket, const TSQLCondition &sqlCond,
                               const TSQLTableList &tables)
{
    const QString sqlExpr = ConditionText(sqlCond);
    if (TDSCondition *custom = CustomConditionByText(sqlExpr)) {
        bracket->AddCustomCond(custom);
        return;
    }
    TSimpleCond *cond = bracket->AddCond();
    QString name = sqlCond.LeftExpr();
    if (tables.Count() > 0 && !name.contains(QLatin1Char('.')))
        name = tables.Items(0)->AliasName() + QLatin1Char('.') + name;
    TDSField *field = FieldBySQLName(name);
    if (!field)
        field = FModel.UnrecognizedField();

    QString values[2];
    QStringList subQuery;
    const TOperatorEntry *entry = MatchOperator(sqlCond, sqlExpr, values[0], subQuery, values[1]);
    if (!entry)
        entry = &FUnrecognized;
    TDSOperator *op = entry->Op;
    cond->SetField(field);
    cond->SetOperator(op);

    const bool isParam[2] = {values[0].startsWith(QLatin1Char(':')),
                             values[1].startsWith(QLatin1Char(':'))};
    const QString paramNames[2] = {values[0].mid(1), values[1].mid(1)};
    if (IsDateType(cond->GetExprType())) {
        for (int i = 0; i < 2; ++i)
            values[i] = !isParam[i] && entry->ParamCount > i
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
        if (entry->Quoted[i] && !entry->FallBack && op->ValueKind() == vkScalar
            && IsStringType(cond->GetValueType(index)))
            values[i].replace(QStringLiteral("''"), QStringLiteral("'"));
        cond->SetValue(index, values[i]);
        if (index > entry->ParamCount)
            cond->SetValueCaption(index, QString());
    }
    cond->SetSubQuery(subQuery);
    if (!subQuery.isEmpty()) {
        cond->SetSubQueryOptions(FQuery.SQLOptions());
        cond->SetValueHint(1, values[0]);
    }
}

} // namespace vm20
