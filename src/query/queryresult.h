#pragma once
// The pieces of the statement a build produces (tables with their joins,
// WHERE lines, GROUP BY, HAVING and ORDER BY texts), the printing of the
// statement, and the query's parameters.
#include "query/paramnames.h"
#include "query/resultfield.h"
#include "query/sqlparam.h"
#include "query/sqlsyntax.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace vm20 {

class TDSLink;
class TDSTable;
class TFilterCond;
class TNQuery;

class TResultTable
{
public:
    TResultTable(TDSTable *table, TDSLink *link) : FTable(table), FLink(link) {}
    TDSTable *Table() const { return FTable; }
    // The link by which the table was reached; none for the main table.
    TDSLink *Link() const { return FLink; }
    bool Used() const { return FUsed; }
    void SetUsed(bool value) { FUsed = value; }

private:
    TDSTable *FTable;
    TDSLink *FLink;
    bool FUsed = false;
};

class TRTableList
{
public:
    int Count() const { return int(FItems.size()); }
    TResultTable *Items(int index) const;   // EListError outside the list
    TResultTable *Add(TDSTable *table, TDSLink *link);
    // By the table's name, without regard to case; none when absent.
    TResultTable *Find(const QString &name) const;
    int IndexOf(const TDSTable *table) const;
    void Delete(int index);
    void Clear();
    void ResetAll();

private:
    std::vector<std::unique_ptr<TResultTable>> FItems;
    QHash<const TDSTable *, int> FIndex;   // first entry of each table
};

class TQueryResult
{
public:
    explicit TQueryResult(TNQuery *query);
    ~TQueryResult();
    TQueryResult(const TQueryResult &) = delete;
    TQueryResult &operator=(const TQueryResult &) = delete;

    TNQuery *Query() const { return FQuery; }
    TRFieldList &RFields() { return FRFields; }
    const TRFieldList &RFields() const { return FRFields; }
    TRTableList &ResultTables() { return FResultTables; }
    const TRTableList &ResultTables() const { return FResultTables; }

    QStringList &WhereLines() { return FWhereLines; }
    const QStringList &WhereLines() const { return FWhereLines; }
    const QString &GroupByText() const { return FGroupByText; }
    void SetGroupByText(const QString &value) { FGroupByText = value; }
    const QString &HavingText() const { return FHavingText; }
    void SetHavingText(const QString &value) { FHavingText = value; }
    const QString &OrderByText() const { return FOrderByText; }
    void SetOrderByText(const QString &value) { FOrderByText = value; }
    bool JoinsInWhere() const { return FJoinsInWhere; }
    TSQLOptions SQLOptions() const { return FSQLOptions; }
    void SetSQLOptions(TSQLOptions value) { FSQLOptions = value; }
    TSQLSyntax SQLSyntax() const { return FSQLSyntax; }
    void SetSQLSyntax(TSQLSyntax value) { FSQLSyntax = value; }
    // Empties every piece of the last build.
    void ClearPieces();

    QString AdjustCondition(const QString &text) const;
    void AddCondition(const QString &text);
    void AddHavingCondition(const QString &text);
    void AddTableFilterCondition(TDSTable *table, const QString &text);

    QString GetSelectClause();
    // ENQueryPanelError 8 when the last build left no table.
    QString GetFromClause();
    void BuildTableJoins(TResultTable *entry, const QString &indent, QString &text, bool withTable);
    // The join conditions as WHERE lines; whether any line was written.
    bool AddSQL1Joins(QStringList &lines);
    // The statement of the last build, one item per clause (WHERE lines are
    // items of their own); GetSQL does not build.
    const QStringList &GetSQL();
    const QStringList &SQLLines() const { return FSQLLines; }

    // Parameters.
    TSQLParam *AddParameter(TFilterCond *condition, int valueIndex);
    void DeleteParameter(TSQLParam *param);
    void DeleteParameters(const TFilterCond *condition);
    TSQLParam *FindParameter(const QString &name) const;   // without regard to case
    TSQLParam *FindParameterByCondition(const TFilterCond *condition, int valueIndex) const;
    void ClearParams();
    TSQLParam *GetParam(int index) const;   // EListError outside the list
    int GetParamCount() const { return int(FParams.size()); }
    QString GenerateParamDisplayName(const TFilterCond *condition, int valueIndex) const;

private:
    friend class TSQLParam;
    QString GenerateParamName(const TFilterCond *condition) const;
    void ParametersListChanged();

    TNQuery *FQuery;
    TRFieldList FRFields;
    TRTableList FResultTables;
    QStringList FWhereLines;
    QString FGroupByText;
    QString FHavingText;
    QString FOrderByText;
    QStringList FSQLLines;
    bool FJoinsInWhere = false;
    TSQLOptions FSQLOptions;
    TSQLSyntax FSQLSyntax = ssSQL2;
    std::vector<std::unique_ptr<TSQLParam>> FParams;
    TParamNameIndex FParamNames;
};

} // namespace vm20
