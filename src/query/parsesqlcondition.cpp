// One parsed condition becomes one row: a predefined condition when its text
// is one, else a simple condition on the field named on its left with the
// operator whose template its text fits, and the values that fit into the
// template's placeholders. A negated condition is matched with its NOT; when
// only its un-negated text fits, the row goes into a "none of" bracket.
#include "query/parsesql.h"

#include "model/dbstructure.h"
#include "model/valueeditors.h"
#include "query/query.h"
#include "query/sqldatevalue.h"
#include "query/sqlparam.h"
#include "query/templatematcher.h"
#include "query/valueformat.h"
#include "sqlparse/scanner.h"
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
    // The replacement for a value that stood outside quotes (a number, a
    // parameter), which must not become a string literal.
    const char16_t *BareReplacement;
    // A character the text must hold for the pattern to fit: spares the
    // matcher for nearly every condition.
    bool (*MayFit)(const QString &text);
};
constexpr TRewritePair RewritePairs[] = {
    {u"@f != '@1'", u"@f <> '@1'", u"@f <> @1",
     [](const QString &text) { return text.contains(QLatin1Char('!')); }},
    {u"not(@f = '@1')", u"@f <> '@1'", u"@f <> @1",
     [](const QString &text) { return text.startsWith(QLatin1Char('n'), Qt::CaseInsensitive); }},
};

// The condition's text without any NOT: "left op right".
QString PlainText(const TSQLCondition &cond)
{
    const QStringView left = cond.LeftView();
    const QStringView operation = cond.OperationView();
    const QStringView right = cond.RightView();
    QString text;
    text.reserve(left.size() + operation.size() + right.size() + 2);
    text += left;
    text += QLatin1Char(' ');
    text += operation;
    text += QLatin1Char(' ');
    text += right;
    return text;
}

// A negated condition in its two spellings: the NOT round the whole
// ("not(a like 'x')"), and the NOT inside it ("a not like 'x'",
// "a is not null").
QString WrappedText(const QString &plain)
{
    return QStringLiteral("not(") + plain + QLatin1Char(')');
}

QString InnerText(const TSQLCondition &cond)
{
    if (cond.Operation() == QLatin1String("is"))
        return cond.LeftExpr() + QStringLiteral(" is not ") + cond.RightExpr();
    return cond.LeftExpr() + QStringLiteral(" not ") + cond.Operation() + QLatin1Char(' ') + cond.RightExpr();
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

// The inside of a string literal, its doubled quotes made single.
QString Undoubled(QStringView inside)
{
    QString text = inside.toString();
    return text.replace(QStringLiteral("''"), QStringLiteral("'"));
}

// Whether `text` (blanks aside) is exactly one string literal; `inside`
// then receives its text.
bool ReadLiteral(QStringView text, QString &inside)
{
    text = text.trimmed();
    if (!IsOneLiteral(text))
        return false;
    inside = Undoubled(text.sliced(1, text.size() - 2));
    return true;
}

// The items of an SQL list ("'a b', 'O''Brien', 5") as the query keeps them:
// literals without their quotes, anything else as written.
QStringList SqlListItems(QStringView text)
{
    QStringList items;
    if (text.trimmed().isEmpty())
        return items;
    int depth = 0;
    QChar quote;
    bool quoted = false;
    qsizetype start = 0;
    const auto take = [&](qsizetype end) {
        const QStringView item = text.sliced(start, end - start).trimmed();
        QString inside;
        items << (ReadLiteral(item, inside) ? inside : item.toString());
        start = end + 1;
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (quoted) {
            quoted = c != quote;   // a doubled quote closes and opens again
        } else if (c == QLatin1Char('\'') || c == QLatin1Char('"')) {
            quote = c;
            quoted = true;
        } else if (c == QLatin1Char('(')) {
            ++depth;
        } else if (c == QLatin1Char(')')) {
            --depth;
        } else if (c == QLatin1Char(',') && depth == 0) {
            take(i);
        }
    }
    take(text.size());
    return items;
}

// A list value's caption: the items as a list editor shows them.
QString ListCaption(const TSimpleCond &cond, const QStringList &items)
{
    const TDSField *field = cond.Field();
    const auto *list = field ? dynamic_cast<const TDSListEditor *>(field->ValueEditor()) : nullptr;
    if (!list)
        return ListToCommaText(items);
    QStringList captions;
    for (const QString &item : items) {
        const qsizetype at = list->Values().indexOf(item);
        captions << (at >= 0 && at < list->Items().size() ? list->Items()[at] : item);
    }
    return ListToCommaText(captions);
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
    QString texts[2];
    return CustomConditionByTexts(Readings(cond, cond.Negative() != cond.InnerNegative(), texts));
}

TDSOperator *TSQLLoader::OperatorBySQLCond(const TSQLCondition &cond, QString &value1,
                                           QStringList &values, QString &value2)
{
    TMatch match;
    const bool negated = cond.Negative() != cond.InnerNegative();
    QString texts[2];
    if (!MatchOperators(cond, negated, Readings(cond, negated, texts), match))
        return nullptr;
    value1 = match.Values[0];
    value2 = match.Values[1];
    values = match.SubQuery;
    return match.Entry->Op;
}

std::span<const QString> TSQLLoader::Readings(const TSQLCondition &cond, bool negated, QString (&texts)[2])
{
    const QString plain = PlainText(cond);
    if (!negated) {
        texts[0] = plain;
        return {texts, 1};
    }
    texts[0] = WrappedText(plain);
    texts[1] = InnerText(cond);
    return {texts, 2};
}

TDSCondition *TSQLLoader::CustomConditionByTexts(std::span<const QString> texts) const
{
    for (const QString &text : texts)
        if (TDSCondition *found = CustomConditionByText(text))
            return found;
    return nullptr;
}

bool TSQLLoader::MatchOperators(const TSQLCondition &cond, bool negated, std::span<const QString> texts,
                                TMatch &match)
{
    for (const QString &text : texts)
        if (MatchOperator(cond, text, match))
            return true;
    return MatchLikePattern(cond, negated, match);
}

bool TSQLLoader::Match(const TSQLCondition &cond, bool negated, TMatch &match)
{
    QString texts[2];
    const std::span<const QString> readings = Readings(cond, negated, texts);
    if ((match.Custom = CustomConditionByTexts(readings)))
        return true;
    return MatchOperators(cond, negated, readings, match);
}

bool TSQLLoader::MatchOperator(const TSQLCondition &cond, const QString &sqlExpr, TMatch &match)
{
    QString text = sqlExpr;
    TTemplateVars vars;
    for (const TRewritePair &pair : RewritePairs)
        if (pair.MayFit(text) && MatchSQLTemplate(QStringView(pair.Pattern), text, vars))
            text = FillSQLTemplate(QStringView(vars.V1Literal ? pair.Replacement : pair.BareReplacement), vars);

    const bool subQuery = cond.ContainsSubQuery();
    const QStringView leftExpr = cond.LeftView();
    for (const TOperatorEntry &entry : FOperators) {
        const bool subQueryOperator = entry.Op->ValueKind() == vkSubQuery;
        if (subQuery != subQueryOperator)
            continue;
        if (!MatchSQLTemplate(entry.Template, text, vars) || !SameIgnoringBlanks(vars.F, leftExpr))
            continue;
        match.Entry = &entry;
        match.Literal[0] = vars.V1Literal;
        match.Literal[1] = vars.V2Literal;
        match.Values[0] = vars.V1Literal ? Undoubled(vars.V1) : vars.V1.toString();
        match.Values[1] = vars.V2Literal ? Undoubled(vars.V2) : vars.V2.toString();
        if (subQueryOperator)
            ProcessSubQuery(match.Values[0], match.SubQuery, match.Values[0]);
        return true;
    }
    return false;
}

// A LIKE pattern no template fits is still read where an operator keeps its
// meaning: "%x%" by "contains" (x may hold wildcards of its own), anything
// else that ends in "%" by "starts with". Other patterns ("%son", "J_n")
// have no operator and are not loaded.
bool TSQLLoader::MatchLikePattern(const TSQLCondition &cond, bool negated, TMatch &match) const
{
    QString pattern;
    if (cond.Operation() != QLatin1String("like") || !ReadLiteral(cond.RightExpr(), pattern)
        || !pattern.endsWith(QLatin1Char('%')))
        return false;
    const TOperatorEntry &contains = FContains[negated ? 1 : 0];
    const TOperatorEntry &startsWith = FStartsWith[negated ? 1 : 0];
    if (contains.Op && pattern.size() >= 2 && pattern.startsWith(QLatin1Char('%'))) {
        match.Entry = &contains;
        match.Values[0] = pattern.mid(1, pattern.size() - 2);
    } else if (startsWith.Op) {
        match.Entry = &startsWith;
        match.Values[0] = pattern.chopped(1);
    } else {
        return false;
    }
    match.Literal[0] = true;
    return true;
}

void TSQLLoader::LoadCondition(TFilterBracket *bracket, const TSQLCondition &sqlCond,
                               const TSQLTableList &tables)
{
    const bool negated = sqlCond.Negative() != sqlCond.InnerNegative();
    TMatch match;
    if (!Match(sqlCond, negated, match) && negated) {
        match = TMatch();
        match.Negate = Match(sqlCond, false, match);
    }
    if (match.Negate) {
        bracket = bracket->AddNewBracket();
        bracket->SetLinkType(fltNone);
    }
    if (match.Custom) {
        bracket->AddCustomCond(match.Custom);
        return;
    }
    TSimpleCond *cond = bracket->AddCond();
    QString name = sqlCond.LeftExpr();
    if (tables.Count() > 0 && !name.contains(QLatin1Char('.')))
        name = tables.Items(0)->AliasName() + QLatin1Char('.') + name;
    TDSField *field = FieldBySQLName(name);
    if (!field)
        field = FModel.UnrecognizedField();
    const TOperatorEntry &entry = match.Entry ? *match.Entry : FUnrecognized;
    cond->SetField(field);
    cond->SetOperator(entry.Op);
    if (!match.Entry || field == FModel.UnrecognizedField()) {
        const QString plain = PlainText(sqlCond);
        FQuery.SetRowSource(cond, !negated ? plain : sqlCond.Negative() ? WrappedText(plain) : InnerText(sqlCond));
    }
    LoadValues(cond, entry, match);
}

void TSQLLoader::LoadValues(TSimpleCond *cond, const TOperatorEntry &entry, TMatch &match)
{
    QString *values = match.Values;
    TDSOperator *op = entry.Op;
    // A parameter stands outside quotes; ':x' is text.
    const bool isParam[2] = {!match.Literal[0] && values[0].startsWith(QLatin1Char(':')),
                             !match.Literal[1] && values[1].startsWith(QLatin1Char(':'))};
    const QString paramNames[2] = {values[0].mid(1), values[1].mid(1)};
    const bool list = op->ValueKind() == vkList && !isParam[0];
    QStringList items;
    if (list)
        items = SqlListItems(values[0]);
    if (IsDateType(cond->GetExprType())) {
        for (int i = 0; i < 2; ++i) {
            if (isParam[i] || entry.ParamCount <= i)
                values[i].clear();
            else if (i == 0 && list)
                for (QString &item : items)
                    item = ProcessSQLDateValue(cond->GetValueType(1), item);
            else
                values[i] = ProcessSQLDateValue(cond->GetValueType(i + 1), values[i]);
        }
    }
    if (list)
        values[0] = ListToCommaText(items);
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
        cond->SetValue(index, values[i]);
        if (index > entry.ParamCount)
            cond->SetValueCaption(index, QString());
    }
    if (list)
        cond->SetValueCaption(1, ListCaption(*cond, items));
    cond->SetSubQuery(match.SubQuery);
    if (!match.SubQuery.isEmpty()) {
        cond->SetSubQueryOptions(FQuery.SQLOptions());
        cond->SetValueHint(1, values[0]);
    }
}

} // namespace vm20
