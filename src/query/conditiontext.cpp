// The SQL text of one condition: its template with the field expression, the
// tables and the values filled in.
#include "query/querybuilder.h"

#include "model/dbstructure.h"
#include "query/query.h"
#include "query/valueformat.h"
#include "support/nstrings.h"

namespace vm20 {

namespace {

// The text a value placeholder stands in: the placeholder with the quotes
// around it, as far as the nearest quote on each side. The outermost
// characters of the template are never taken as quotes, and a quote on one
// side only stretches the region to the template's end on the other.
QString PlaceholderRegion(const QString &text, const QString &placeholder)
{
    const qsizetype found = text.indexOf(placeholder);
    if (found < 0)
        return QString();
    // 1-based positions, as the rule is stated.
    const qsizetype length = text.size();
    const qsizetype p = found + 1;
    const auto at = [&text](qsizetype pos) { return text[pos - 1]; };
    qsizetype left = p - 1;
    while (left > 1 && at(left) != QLatin1Char('\''))
        --left;
    if (left < 1)
        left = 1;
    qsizetype right = p + placeholder.size();
    while (right < length && at(right) != QLatin1Char('\''))
        ++right;
    if (left == 1 && right >= length)
        return placeholder;
    right = qMin(right, length);
    return text.mid(left - 1, right - left + 1);
}

QString LowerCall(const TNCustomDBStructure *model, const QString &text)
{
    return model->SQLFormats().LowerFunc() + QLatin1Char('(') + text + QLatin1Char(')');
}

} // namespace

QString TQueryBuilder::FieldExpression(const TDSField *field)
{
    // Fixed for the whole build: the same field always reads the same.
    const auto it = FFieldExpressions.constFind(field);
    if (it != FFieldExpressions.constEnd())
        return *it;
    const bool plain = FFilters || (FUsedTables.size() < 2 && FQuery.SQLOptions().contains(soFilter));
    return *FFieldExpressions.insert(field, plain ? field->FilterSQLExpr() : field->SQLExpr());
}

std::optional<QString> TQueryBuilder::FormCondition(TFilterCond &condition)
{
    QString text = condition.GetSQLExpr();
    auto *simple = dynamic_cast<TSimpleCond *>(&condition);
    // A condition without template (or a simple one without field) has
    // nothing to say and takes no part.
    if (text.isEmpty() || (simple && !simple->Field()))
        return std::nullopt;

    const auto &tables = condition.GetTables();
    for (TDSTable *table : tables)
        AddTable(table);

    if (simple) {
        QString fieldExpr = FieldExpression(simple->Field());
        if (simple->IsCaseInsensitive())
            fieldExpr = LowerCall(FModel, fieldExpr);
        text.replace(QLatin1String("@f"), fieldExpr);
    }
    if (!tables.empty() && tables.front() && text.contains(QLatin1String("@t")))
        text.replace(QLatin1String("@t"), tables.front()->SQLAlias());
    if (FResult.ResultTables().Count() > 0 && text.contains(QLatin1String("@m")))
        text.replace(QLatin1String("@m"), FResult.ResultTables().Items(0)->Table()->SQLAlias());

    const int count = condition.GetValueCount();
    for (int i = 1; i <= count; ++i)
        FillValue(condition, i, text);

    if (FQuery.OnBuildSQL)
        FQuery.OnBuildSQL(&condition, text);
    return text;
}

void TQueryBuilder::FillValue(TFilterCond &condition, int index, QString &text)
{
    static const QString placeholders[] = {QStringLiteral("@1"), QStringLiteral("@2"), QStringLiteral("@3")};
    const QString placeholder = index <= 3 ? placeholders[index - 1] : QLatin1Char('@') + QString::number(index);
    const QString region = PlaceholderRegion(text, placeholder);
    if (region.isEmpty())
        return;

    TSQLParam *param = condition.GetValueIsParam(index) ? condition.GetParam(index) : nullptr;
    if (param) {
        text.replace(region, QLatin1Char(':') + param->ParamName());
        QString format = DequotedStr(region, QLatin1Char('\''));
        param->SetValueFormat(format.replace(placeholder, QStringLiteral("@v")));
        return;
    }

    const QString value = ExtractValue(condition, index);
    const TFieldType type = condition.GetValueType(index);
    const TValueKind kind = condition.GetValueKind(index);
    const bool quoted = IsQuotedValueType(FModel, type);
    const bool oracleDate = (type == ftDate || type == ftDateTime) && FQuery.SQLSyntax() == ssOracle;
    QString replacement;
    if ((!quoted && kind == vkScalar) || oracleDate) {
        replacement = value;
    } else if (kind == vkScalar && !region.startsWith(QLatin1Char('\''))) {
        // A template without quotes around the value: the value's own quotes
        // are doubled, so it needs the quotes that make them mean anything.
        replacement = region;
        replacement.replace(placeholder, QLatin1Char('\'') + value + QLatin1Char('\''));
    } else {
        replacement = region;
        replacement.replace(placeholder, value);
    }
    // List items are lowered one by one when they are formatted.
    const auto *simple = dynamic_cast<const TSimpleCond *>(&condition);
    if (simple && simple->IsCaseInsensitive() && kind != vkList)
        replacement = LowerCall(FModel, replacement);
    text.replace(region, replacement);
}

} // namespace vm20
