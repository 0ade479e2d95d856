#pragma once
// One run of BuildQuery: gathers the tables the query uses, joins them along
// the model's links, derives ORDER BY and GROUP BY from the result columns,
// and walks the condition tree for WHERE and HAVING. Lives only during the
// build; everything it learns is cached for that build alone.
#include "query/joinpaths.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <optional>
#include <vector>

namespace vm20 {

class TDSField;
class TDSTable;
class TFilterBracket;
class TFilterCond;
class TNCustomDBStructure;
class TNQuery;
class TQueryResult;

class TQueryBuilder
{
public:
    explicit TQueryBuilder(TNQuery &query);
    void Run();

private:
    // Tables.
    void RefreshMainTable();
    void UseTable(TDSTable *table);
    void GatherTables();
    void AddTable(TDSTable *table);
    void AddTableChained(TDSTable *table, std::vector<TDSTable *> &chain);

    // Columns.
    void SortingAndGrouping();

    // Conditions (the text of one condition is formed in conditiontext.cpp).
    void WalkTree(bool having);
    std::optional<QString> FormCondition(TFilterCond &condition);
    QString FieldExpression(const TDSField *field);
    void FillValue(TFilterCond &condition, int index, QString &text);

    // The pieces of text a pass writes: brackets are opened and link words
    // written only once a row below them really writes a condition.
    enum TTokenKind { tkOpen, tkLink };
    struct TToken
    {
        TTokenKind Kind;
        QString Text;
    };
    void Flush(bool having);
    void WriteCondition(bool having, TFilterCond &condition, const QString &text);
    void WriteClose(bool having);

    TNQuery &FQuery;
    TQueryResult &FResult;
    TNCustomDBStructure *FModel;
    TJoinPathFinder FPaths;
    std::vector<TDSTable *> FUsedTables;
    QSet<const TDSTable *> FUsedSet;
    std::vector<int> FUsedNodes;   // the path finder's handle of each used table
    std::vector<TToken> FPending;
    QHash<const TDSField *, QString> FFieldExpressions;
    bool FFilters;
};

} // namespace vm20
