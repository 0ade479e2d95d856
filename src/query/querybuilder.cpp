#include "query/querybuilder.h"

#include "model/dbstructure.h"
#include "model/errors.h"
#include "model/messages.h"
#include "query/query.h"
#include "support/nstrings.h"

#include <algorithm>

namespace vm20 {

namespace {

constexpr int Unresolved = -2;
const QString NoPathMessage = QStringLiteral("No path between table \"%s\" and \"$s\"");

QString OpenerOf(TFilterLinkType type)
{
    return type == fltNone || type == fltNotAll ? QStringLiteral("NOT (") : QStringLiteral("(");
}

QString LinkWordOf(TFilterLinkType type)
{
    return type == fltAll || type == fltNotAll ? QStringLiteral(" AND") : QStringLiteral(" OR");
}

} // namespace

TQueryBuilder::TQueryBuilder(TNQuery &query)
    : FQuery(query),
      FResult(query.QResult()),
      FModel(query.DBStruct()),
      FPaths(query.DBStruct()),
      FFilters(query.BuildingFilters())
{
}

void TQueryBuilder::Run()
{
    FResult.SetOrderByText(QString());
    FResult.SetGroupByText(QString());
    FResult.SetHavingText(QString());
    FResult.ResultTables().Clear();

    RefreshMainTable();
    GatherTables();

    FResult.WhereLines().clear();
    TRFieldList &columns = FResult.RFields();
    columns.GenerateNumbers();
    columns.RegenerateAliases();

    SortingAndGrouping();

    if (FQuery.Active()) {
        WalkTree(false);
        WalkTree(true);
        if (FResult.ResultTables().Count() == 0)
            throw ENVellumError(0, SQPENoEnoughInfo);
    }
}

// --- tables ------------------------------------------------------------------------------

void TQueryBuilder::RefreshMainTable()
{
    TDSTable *main = nullptr;
    if (!FQuery.MainTableName().isEmpty())
        main = FModel->TableByName(3, FQuery.MainTableName());
    if (!main) {
        main = FModel->DefaultMainTable();
        if (main)
            FQuery.SetMainTableName(main->CompoundName());
    }
    if (main) {
        UseTable(main);
        FResult.ResultTables().Add(main, nullptr);
    }
}

void TQueryBuilder::UseTable(TDSTable *table)
{
    if (table && !FUsedSet.contains(table)) {
        FUsedSet.insert(table);
        FUsedTables.push_back(table);
    }
}

void TQueryBuilder::GatherTables()
{
    for (const auto &column : FResult.RFields().Items())
        for (const TDSField *field : column->DSFields().Fields())
            if (field)
                for (TDSTable *table : field->Tables().Tables())
                    UseTable(table);

    const TFilterBracket *root = FQuery.Filter();
    if (!root->Enabled())
        return;
    ForEachEnabledRow(*root, [this](const TFilterRow &row, int) {
        if (!row.IsBracket())
            for (TDSTable *table : static_cast<const TFilterCond &>(row).GetTables())
                UseTable(table);
    });
}

void TQueryBuilder::AddTable(TDSTable *table)
{
    if (!table)
        return;
    TRTableList &tables = FResult.ResultTables();
    if (tables.Count() == 0 || FFilters) {
        tables.Add(table, nullptr);
        return;
    }
    std::vector<TDSTable *> chain{table};
    AddTableChained(table, chain);
}

void TQueryBuilder::AddTableChained(TDSTable *table, std::vector<TDSTable *> &chain)
{
    TRTableList &tables = FResult.ResultTables();
    if (tables.IndexOf(table) >= 0)
        return;

    // Among the chains from the used tables, keep the shortest; a chain that
    // avoids the other used tables is preferred; ties go to the earlier table.
    // Only lengths are compared; the chain kept is spelled out at the end.
    const int target = FPaths.IndexOf(table);
    int bestFrom = -1;
    int bestLength = 0;
    bool bestTouches = false;
    for (std::size_t i = 0; i < FUsedTables.size(); ++i) {
        TDSTable *used = FUsedTables[i];
        if (std::find(chain.begin(), chain.end(), used) != chain.end())
            continue;
        if (FUsedNodes.size() < FUsedTables.size())
            FUsedNodes.resize(FUsedTables.size(), Unresolved);
        if (FUsedNodes[i] == Unresolved)
            FUsedNodes[i] = FPaths.IndexOf(used);
        const int from = FUsedNodes[i];
        const int length = FPaths.Length(from, target);
        if (length == 0)
            throw ENQueryPanelError(qpeNoPath, NoPathMessage, {used->TableName(), table->TableName()});
        const bool touches = FPaths.Touches(from, target, FUsedSet);
        const bool better = bestFrom < 0
                            || (!touches && bestTouches)
                            || (length < bestLength && !(!bestTouches && touches));
        if (better) {
            bestFrom = from;
            bestLength = length;
            bestTouches = touches;
        }
    }
    if (bestFrom < 0)
        return;
    const std::vector<TDSTable *> best = FPaths.Path(bestFrom, target);
    if (tables.IndexOf(best.front()) < 0) {
        chain.push_back(best.front());
        AddTableChained(best.front(), chain);
    }
    for (std::size_t k = 1; k < best.size(); ++k) {
        TDSTable *next = best[k];
        if (tables.IndexOf(next) >= 0)
            continue;
        TDSLink *link = next->LinkByTable(best[k - 1]);
        if (!link)
            throw ENQueryPanelError(qpeWrongLink, SQPEWrongLink);
        tables.Add(next, link);
    }
}

// --- columns -----------------------------------------------------------------------------

void TQueryBuilder::SortingAndGrouping()
{
    TRFieldList &columns = FResult.RFields();
    const bool byNames = FQuery.SQLOptions().contains(soSortByNames) || columns.JustSorting();
    bool aggregated = false;
    std::vector<std::pair<int, QString>> entries;
    for (const auto &column : columns.Items()) {
        for (const TDSField *field : column->DSFields().Fields())
            if (field)
                for (TDSTable *table : field->Tables().Tables())
                    AddTable(table);
        if (column->GetAgregate())
            aggregated = true;
        if (column->Sorting() == stNoSort)
            continue;
        const QString key = byNames ? column->GetOrderName() : QString::number(column->Number());
        const QString entry = key + (column->Sorting() == stAscending ? QStringLiteral(" ASC")
                                                                      : QStringLiteral(" DESC"));
        const auto at = std::find_if(entries.begin(), entries.end(), [&column](const auto &e) {
            return e.first > column->SortOrder();
        });
        entries.emplace(at, column->SortOrder(), entry);
    }
    QStringList orderBy;
    for (const auto &entry : entries)
        orderBy.append(entry.second);
    FResult.SetOrderByText(orderBy.join(QStringLiteral(", ")));

    if (aggregated) {
        QStringList groupBy;
        for (const auto &column : columns.Items())
            if (!column->GetAgregate())
                groupBy.append(column->GetSQLExpr());
        FResult.SetGroupByText(groupBy.join(QStringLiteral(", ")));
    }
}

// --- the condition tree ------------------------------------------------------------------

void TQueryBuilder::Flush(bool having)
{
    for (const TToken &token : FPending) {
        if (having) {
            // HAVING is one line: an opener after a link word needs its blank.
            const QString &sofar = FResult.HavingText();
            const bool afterWord = token.Kind == tkOpen && !sofar.isEmpty() && sofar.back().isLetter();
            FResult.SetHavingText(sofar + (afterWord ? QStringLiteral(" ") : QString()) + token.Text);
        }
        else if (token.Kind == tkOpen || FResult.WhereLines().isEmpty())
            FResult.WhereLines().append(token.Text);
        else
            FResult.WhereLines().last() += token.Text;
    }
    FPending.clear();
}

void TQueryBuilder::WriteCondition(bool having, TFilterCond &condition, const QString &text)
{
    Flush(having);
    if (having) {
        FResult.AddHavingCondition(text);
    } else if (FFilters) {
        const auto &tables = condition.GetTables();
        FResult.AddTableFilterCondition(tables.empty() ? nullptr : tables.front(), text);
    } else {
        FResult.AddCondition(text);
    }
}

void TQueryBuilder::WriteClose(bool having)
{
    if (having)
        FResult.SetHavingText(FResult.HavingText() + QStringLiteral(" )"));
    else
        FResult.WhereLines().append(QStringLiteral(")"));
}

void TQueryBuilder::WalkTree(bool having)
{
    // An explicit stack keeps deep nesting off the call stack. A bracket's
    // opener and the link word before a row wait in FPending until a
    // condition below them is written, so a bracket that writes nothing
    // leaves no trace, not even its parent's link word.
    struct TFrame
    {
        const TFilterBracket *Bracket;
        std::size_t Next;
        bool Any;
        std::size_t Mark;      // pending size when the bracket was entered
        std::size_t RowMark;   // pending size before the current row
    };
    const TFilterBracket *root = FQuery.Filter();
    if (!root->Enabled())
        return;
    FPending.clear();
    std::vector<TFrame> stack{{root, 0, false, 0, 0}};
    while (!stack.empty()) {
        TFrame &frame = stack.back();
        const auto &rows = frame.Bracket->Rows();
        if (frame.Next == rows.size()) {
            const bool any = frame.Any;
            if (any)
                WriteClose(having);
            else
                FPending.resize(frame.Mark);
            stack.pop_back();
            if (!stack.empty()) {
                if (any)
                    stack.back().Any = true;
                else
                    FPending.resize(stack.back().RowMark);
            }
            continue;
        }
        TFilterRow *row = rows[frame.Next++].get();
        if (!row->Enabled() || row->GetIsHavingRow() != having)
            continue;
        frame.RowMark = FPending.size();
        if (frame.Any)
            FPending.push_back({tkLink, LinkWordOf(frame.Bracket->LinkType())});
        else
            FPending.push_back({tkOpen, OpenerOf(frame.Bracket->LinkType())});
        if (row->IsBracket()) {
            const std::size_t mark = FPending.size();
            stack.push_back({static_cast<const TFilterBracket *>(row), 0, false, mark, mark});
            continue;
        }
        auto &condition = static_cast<TFilterCond &>(*row);
        const std::optional<QString> text = FormCondition(condition);
        if (!text) {
            FPending.resize(frame.RowMark);
            continue;
        }
        WriteCondition(having, condition, *text);
        frame.Any = true;
    }
    FPending.clear();
}

} // namespace vm20
