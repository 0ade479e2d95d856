#pragma once
// Loading a parsed SELECT statement into a query (TNQuery::ParseSQL): the
// select list becomes result columns, the WHERE tree the condition tree. Each
// parsed condition is matched against the model's predefined conditions and
// then against its operators' templates; what cannot be matched becomes a row
// on the model's fallback field and operator, for the user to correct.
//
// One loader serves one ParseSQL call: the lookups it needs for every
// condition (fields by name, operators longest template first, predefined
// conditions by text) are built once when it is made.
#include "model/fieldtype.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

namespace vm20 {

class TDSCondition;
class TDSField;
class TDSOperator;
class TFilterBracket;
class TNCustomDBStructure;
class TNParserResult;
class TNQuery;
class TSQLBracket;
class TSQLCondition;
class TSQLTableList;

class TSQLLoader
{
public:
    // The query must have its model.
    explicit TSQLLoader(TNQuery &query);
    TSQLLoader(const TSQLLoader &) = delete;
    TSQLLoader &operator=(const TSQLLoader &) = delete;

    // Replaces the query by the statement in `lines`. On any failure the
    // query is left empty; its loading mark and active state are restored
    // either way.
    void Load(const QStringList &lines);

    // The model's first predefined condition whose SQL text equals the
    // condition's, letter case and blanks aside; none when no text does.
    TDSCondition *FindCustomCondition(const TSQLCondition &cond) const;
    // The operator whose template produced the condition, with the operand
    // texts it holds; `values` receives a sub-query's saved query. None when
    // no template fits (a LIKE falls back to "contains" or "startswith").
    TDSOperator *OperatorBySQLCond(const TSQLCondition &cond, QString &value1, QStringList &values,
                                   QString &value2);
    // Loads one parsed bracket into `bracket`, and its sub-brackets into new
    // brackets below it.
    void ProcessSQLBracket(TFilterBracket *bracket, const TSQLBracket &sqlBracket,
                           const TSQLTableList &tables);
    // The field named `name`: by SQL expression (quote symbols aside), then by
    // full name; none when neither matches.
    TDSField *FieldBySQLName(const QString &name) const;
    // Loads the sub-query `text` into a hidden query set up like this one:
    // `values` receives its saved query, `sqlText` its statement as it builds.
    void ProcessSubQuery(const QString &text, QStringList &values, QString &sqlText);

private:
    // An operator with what every match needs of it, taken once per load.
    struct TOperatorEntry
    {
        TDSOperator *Op = nullptr;
        QString Template;
        int ParamCount = 0;
        // The value placeholders "@1" and "@2" stand between quotes of the
        // template, so that their text is the inside of a string literal.
        bool Quoted[2] = {false, false};
        // Taken by the LIKE fallback, not by matching the template.
        bool FallBack = false;
    };
    TOperatorEntry MakeEntry(TDSOperator *op) const;
    const TOperatorEntry *MatchOperator(const TSQLCondition &cond, const QString &sqlExpr,
                                        QString &value1, QStringList &values, QString &value2);
    TDSCondition *CustomConditionByText(const QString &sqlExpr) const;
    // The lookup keys: FieldByName's mode 3 ignores letter case and the quote
    // symbols; predefined conditions compare in lower case without blanks.
    static QString FieldExprKey(QString text, QChar quote1, QChar quote2);
    static QString ConditionKey(const QString &text);

    void LoadResultFields(const TNParserResult &result);
    void LoadCondition(TFilterBracket *bracket, const TSQLCondition &cond,
                       const TSQLTableList &tables);

    TNQuery &FQuery;
    TNCustomDBStructure &FModel;
    // FieldByName mode 3 (by the key that ignores case and quote symbols),
    // the same answers by the exact text (the usual case, no key to make),
    // and mode 2.
    QHash<QString, TDSField *> FFieldsBySQLExpr;
    QHash<QString, TDSField *> FFieldsByExactSQLExpr;
    QHash<QString, TDSField *> FFieldsByFullName;
    QHash<QString, TDSCondition *> FConditionsByText;
    std::vector<TOperatorEntry> FOperators;   // longest template first
    TOperatorEntry FLikeFallback;
    TOperatorEntry FUnrecognized;
};

} // namespace vm20
