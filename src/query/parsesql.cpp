#include "query/parsesql.h"

#include "model/dbstructure.h"
#include "query/loadingscope.h"
#include "query/query.h"
#include "sqlparse/sqlparser.h"
#include "sqlparse/sqltables.h"
#include "support/nstrings.h"

#include <algorithm>

namespace vm20 {

namespace {

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

// Whether the alias made from `caption` (blanks become "_") is a name that
// SQL takes after AS without quotes.
bool GivesPlainAlias(const QString &caption)
{
    QString alias = caption;
    return IsValidIdent(alias.replace(QLatin1Char(' '), QLatin1Char('_')));
}

// The caption of a column the statement leaves without alias: its one field's
// name, else the name the parser gives the expression, without quotes. A
// computed column such as count(o.id) would give an alias that is no SQL
// name, so it is named by the words of its expression instead (count o id),
// or by its position when those are no name either.
QString BareName(const TNCustomDBStructure &model, const TResultField &column,
                 const QString &parsedCaption, int position)
{
    const TDSFieldList &fields = column.DSFields();
    if (fields.Count() == 1 && fields.Items(0))
        return fields.Items(0)->FieldName();
    const QChar quote1 = model.SQLFormats().QuoteSymbol1();
    const QChar quote2 = model.SQLFormats().QuoteSymbol2();
    if (parsedCaption.size() >= 2 && parsedCaption.front() == quote1 && parsedCaption.back() == quote2)
        return parsedCaption.mid(1, parsedCaption.size() - 2);
    if (GivesPlainAlias(parsedCaption))
        return parsedCaption;
    QStringList words;
    QString word;
    for (const QChar c : parsedCaption + QLatin1Char(' ')) {
        if (c.isLetterOrNumber() || c == QLatin1Char('_')) {
            word += c;
        } else if (!word.isEmpty()) {
            words.append(word);
            word.clear();
        }
    }
    const QString caption = words.join(QLatin1Char(' '));
    return GivesPlainAlias(caption) ? caption : QStringLiteral("Column") + QString::number(position);
}

TNCustomDBStructure &ModelOf(const TNQuery &query)
{
    query.CheckIfDBStructAssigned();
    return *query.DBStruct();
}

} // namespace

TSQLLoader::TSQLLoader(TNQuery &query)
    : FQuery(query), FModel(ModelOf(query))
{
    const QChar quote1 = FModel.SQLFormats().QuoteSymbol1();
    const QChar quote2 = FModel.SQLFormats().QuoteSymbol2();
    const int fieldCount = FModel.GetFieldCount();
    FFieldsBySQLExpr.reserve(fieldCount);
    FFieldsByFullName.reserve(fieldCount);
    for (int i = 0; i < fieldCount; ++i) {
        TDSField *field = FModel.GetField(i);
        // The first field in model order wins, as in FieldByName.
        const QString expr = field->SQLExpr();
        const QString exprKey = FieldExprKey(expr, quote1, quote2);
        if (!FFieldsBySQLExpr.contains(exprKey))
            FFieldsBySQLExpr.insert(exprKey, field);
        if (!FFieldsByExactSQLExpr.contains(expr))
            FFieldsByExactSQLExpr.insert(expr, FFieldsBySQLExpr.value(exprKey));
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
        FOperators.push_back(MakeEntry(FModel.GetOperator(i)));
    std::stable_sort(FOperators.begin(), FOperators.end(),
                     [](const TOperatorEntry &a, const TOperatorEntry &b) {
                         return a.Template.size() > b.Template.size();
                     });
    FContains[0] = MakeEntry(FModel.OperatorByName(QStringLiteral("contains")));
    FContains[1] = MakeEntry(FModel.OperatorByName(QStringLiteral("notcontains")));
    FStartsWith[0] = MakeEntry(FModel.OperatorByName(QStringLiteral("startswith")));
    FStartsWith[1] = MakeEntry(FModel.OperatorByName(QStringLiteral("notstartswith")));
    FUnrecognized = MakeEntry(FModel.UnrecognizedOperator());
}

TSQLLoader::TOperatorEntry TSQLLoader::MakeEntry(TDSOperator *op) const
{
    TOperatorEntry entry;
    if (!op)
        return entry;
    entry.Op = op;
    entry.Template = op->SQLExpr();
    entry.ParamCount = op->ParamCount();
    for (int i = 0; i < 2; ++i) {
        const qsizetype at = entry.Template.indexOf(QLatin1Char('@') + QString::number(i + 1));
        entry.Quoted[i] = at > 0 && entry.Template.left(at).count(QLatin1Char('\'')) % 2 == 1;
    }
    return entry;
}

void TSQLLoader::Load(const QStringList &lines)
{
    TLoadingScope scope(FQuery);
    FQuery.ClearAll();
    const QString mainTable = FQuery.MainTableName();
    try {
        TNSQLParser parser;
        parser.SetSQL(lines);
        parser.Parse();
        const TNParserResult &result = parser.ParserResult();
        LoadMainTable(result.Tables());
        LoadResultFields(result);
        if (const TSQLBracket *where = result.WhereClause())
            ProcessSQLBracket(FQuery.Filter(), *where, result.Tables());
    } catch (...) {
        FQuery.ClearAll();
        FQuery.SetMainTableName(mainTable);
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
            column->SetCaption(source.Alias().isEmpty() ? BareName(FModel, *column, source.Caption(), i + 1)
                                                        : source.Alias());
            column->GenerateAlias();
        }
    }
}

// The statement's first table becomes the main table where the model knows
// it: by name and alias, else by name. A table the model lacks is listed as
// unresolved, and the main table stays as it was.
void TSQLLoader::LoadMainTable(const TSQLTableList &tables)
{
    if (tables.Count() == 0)
        return;
    const TSQLTable &first = *tables.Items(0);
    TDSTable *main = nullptr;
    for (int i = 0; i < FModel.GetTableCount() && !main; ++i) {
        TDSTable *table = FModel.GetTable(i);
        if (SameText(table->TableName(), first.TableName()) && SameText(table->TableAlias(), first.AliasName()))
            main = table;
    }
    if (!main)
        main = FModel.TableByName(0, first.TableName());
    if (main)
        FQuery.SetMainTableName(main->CompoundName());
    else
        FQuery.AddLoadProblem(TUnresolvedItem::ukTable, QStringLiteral("FROM ") + first.TableName());
}

void TSQLLoader::ProcessSQLBracket(TFilterBracket *bracket, const TSQLBracket &sqlBracket,
                                   const TSQLTableList &tables)
{
    const bool any = sqlBracket.BoolOperator() == QLatin1String("or");
    const bool negated = sqlBracket.Negative() != sqlBracket.InnerNegative();
    if (any)
        bracket->SetLinkType(negated ? fltNone : fltAny);
    else
        bracket->SetLinkType(negated ? fltNotAll : fltAll);
    const TSQLConditionNodeList &nodes = sqlBracket.Nodes();
    for (int i = 0; i < nodes.Count(); ++i) {
        const TSQLNode *node = nodes.Items(i);
        if (const auto *inner = dynamic_cast<const TSQLBracket *>(node))
            ProcessSQLBracket(bracket->AddNewBracket(), *inner, tables);
        else
            LoadCondition(bracket, static_cast<const TSQLCondition &>(*node), tables);
    }
}

// --- TNQuery -------------------------------------------------------------------

void TNQuery::ParseSQL(const QStringList &lines)
{
    TSQLLoader(*this).Load(lines);
    RFields().RFieldChanged(nullptr);
    ParametersListChanged();
}

} // namespace vm20
