#pragma once
// Loading a parsed SELECT statement into a query (TNQuery::ParseSQL): the
// select list becomes result columns, the WHERE tree the condition tree. Each
// parsed condition is matched against the model's predefined conditions and
// then against its operators' templates; what cannot be matched becomes a row
// on the model's fallback field and operator, for the user to correct, and
// is listed by the query's UnresolvedItems. A NOT is never lost: a negated
// condition takes a negated operator, or else loads as a bracket of "none of
// the following" round the operator that reads it without its NOT.
//
// One loader serves one ParseSQL call: the lookups it needs for every
// condition (fields by name, operators longest template first, predefined
// conditions by text) are built once when it is made.
#include "model/fieldtype.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <span>
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
class TSimpleCond;

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
    // condition's (a negated condition's in either spelling, "not(a like 'x')"
    // or "a not like 'x'"), letter case and blanks aside; none when no text does.
    TDSCondition *FindCustomCondition(const TSQLCondition &cond) const;
    // The operator whose template produced the condition, NOT included, with
    // the operand texts it holds; `values` receives a sub-query's saved query.
    // None when no template fits (a LIKE falls back to "contains" or
    // "startswith", or their negations, where its pattern allows).
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
    };
    // What one parsed condition was read as.
    struct TMatch
    {
        TDSCondition *Custom = nullptr;
        const TOperatorEntry *Entry = nullptr;
        QString Values[2];
        // The value was the inside of a string literal.
        bool Literal[2] = {false, false};
        QStringList SubQuery;
        // The match is the condition without its NOT: it loads into a bracket
        // of "none of the following".
        bool Negate = false;
    };
    TOperatorEntry MakeEntry(TDSOperator *op) const;
    // The condition as the model's predefined conditions and templates read
    // it, NOT included; false when nothing does.
    bool Match(const TSQLCondition &cond, bool negated, TMatch &match);
    // The texts a condition is read by: "left op right", or for a negated
    // one its two spellings, the NOT round the whole and the NOT inside.
    static std::span<const QString> Readings(const TSQLCondition &cond, bool negated, QString (&texts)[2]);
    TDSCondition *CustomConditionByTexts(std::span<const QString> texts) const;
    // Templates over the texts in turn, then a LIKE pattern's fallback.
    bool MatchOperators(const TSQLCondition &cond, bool negated, std::span<const QString> texts,
                        TMatch &match);
    bool MatchOperator(const TSQLCondition &cond, const QString &text, TMatch &match);
    bool MatchLikePattern(const TSQLCondition &cond, bool negated, TMatch &match) const;
    TDSCondition *CustomConditionByText(const QString &sqlExpr) const;
    // The lookup keys: FieldByName's mode 3 ignores letter case and the quote
    // symbols; predefined conditions compare in lower case without blanks.
    static QString FieldExprKey(QString text, QChar quote1, QChar quote2);
    static QString ConditionKey(const QString &text);

    void LoadResultFields(const TNParserResult &result);
    void LoadMainTable(const TSQLTableList &tables);
    void LoadCondition(TFilterBracket *bracket, const TSQLCondition &cond,
                       const TSQLTableList &tables);
    void LoadValues(TSimpleCond *cond, const TOperatorEntry &entry, TMatch &match);

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
    // What a LIKE no template fits is read as, by the shape of its pattern
    // ("%x%" or "x%"), plain and negated.
    TOperatorEntry FContains[2];
    TOperatorEntry FStartsWith[2];
    TOperatorEntry FUnrecognized;
};

} // namespace vm20
