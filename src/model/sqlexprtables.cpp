// Which model tables an SQL expression uses: every qualified column "q.name"
// (either part may be a double-quoted name) names its table by alias or by
// table name.
#include "model/dbstructure.h"

#include "sqlparse/scanner.h"

namespace vm20 {

namespace {

bool IsName(const TNToken &token)
{
    return token.TokType == tokWord || token.TokType == tokKeyword;
}

bool IsQuote(const TNToken &token)
{
    return token.TokType == tokSymbol && token.RealText == QLatin1String("\"");
}

bool IsDot(const TNToken &token)
{
    return token.TokType == tokSymbol && token.RealText == QLatin1String(".");
}

} // namespace

void TNCustomDBStructure::ExcludeTablesBySQLExpr(const QString &expr, TSimpleDSTableList &tables,
                                                 QStringList &columns) const
{
    tables.Clear();
    columns.clear();
    if (expr.trimmed().isEmpty())
        return;
    TNScanner scanner;
    scanner.SetSourceStyle(sstSQL);
    scanner.SetSource(expr.split(QLatin1Char('\n')));
    scanner.FirstToken();
    std::vector<TNToken> tokens;
    while (!scanner.EOS()) {
        tokens.push_back(scanner.GetToken(0));
        scanner.NextToken();
    }
    const int count = int(tokens.size());
    // The token index at which a name ending at (or starting at) `i` begins
    // (ends): a plain word, or a run of tokens between two double quotes.
    const auto nameStartingBefore = [&](int i) {
        if (i < 0)
            return -1;
        if (IsName(tokens[i]))
            return i;
        if (IsQuote(tokens[i]))
            for (int j = i - 1; j >= 0; --j)
                if (IsQuote(tokens[j]))
                    return j < i - 1 ? j : -1;
        return -1;
    };
    const auto nameEndingAfter = [&](int i) {
        if (i >= count)
            return -1;
        if (IsName(tokens[i]))
            return i;
        if (IsQuote(tokens[i]))
            for (int j = i + 1; j < count; ++j)
                if (IsQuote(tokens[j]))
                    return j > i + 1 ? j : -1;
        return -1;
    };
    const auto text = [&](int from, int to) {
        return expr.mid(tokens[from].Start, tokens[to].End - tokens[from].Start);
    };
    for (int i = 0; i < count; ++i) {
        if (!IsDot(tokens[i]))
            continue;
        const int qualifierStart = nameStartingBefore(i - 1);
        const int nameEnd = nameEndingAfter(i + 1);
        if (qualifierStart < 0 || nameEnd < 0)
            continue;
        QString qualifier = text(qualifierStart, i - 1);
        if (IsQuote(tokens[qualifierStart]))
            qualifier = qualifier.mid(1, qualifier.size() - 2);
        TDSTable *table = TableByName(1, qualifier);
        if (!table)
            table = TableByName(0, qualifier);
        if (!table)
            continue;
        if (!tables.Contains(table))
            tables.Add(table);
        const QString column = text(qualifierStart, nameEnd);
        if (!columns.contains(column))
            columns.append(column);
    }
}

} // namespace vm20
