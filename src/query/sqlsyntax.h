#pragma once
// The dialect a statement is written for and the options that change its
// spelling. Stored queries keep the options as a small integer whose bit
// values are fixed; two options never travel in that form.
#include "support/typeset.h"

#include <QString>

namespace vm20 {

enum TSQLSyntax { ssSQL1, ssSQL2, ssOracle, ssAccess, ssNexusDB };
inline constexpr int SQLSyntaxCount = 5;

enum TSQLOption {
    soASCIIRFields,
    soSelectDistinct,
    soQuoteAliases,
    soBracketJoins,
    soBracketConditions,
    soSortByNames,
    soFilter
};
inline constexpr int SQLOptionCount = 7;
using TSQLOptions = TSet<TSQLOption>;

// The integer value of each option in stored queries (0 = never stored).
inline constexpr int SQLOptionIntValue(TSQLOption option)
{
    switch (option) {
    case soSelectDistinct: return 2;
    case soQuoteAliases: return 8;
    case soBracketJoins: return 16;
    case soBracketConditions: return 32;
    case soSortByNames: return 64;
    case soASCIIRFields:
    case soFilter: return 0;
    }
    return 0;
}

inline int SQLOptionsToInt(TSQLOptions options)
{
    int result = 0;
    for (int i = 0; i < SQLOptionCount; ++i)
        if (options.contains(TSQLOption(i)))
            result |= SQLOptionIntValue(TSQLOption(i));
    return result;
}

inline TSQLOptions IntToSQLOptions(int value)
{
    TSQLOptions result;
    for (int i = 0; i < SQLOptionCount; ++i) {
        const int bit = SQLOptionIntValue(TSQLOption(i));
        if (bit != 0 && (value & bit) != 0)
            result.include(TSQLOption(i));
    }
    return result;
}

// Enumeration names, for texts and command lines.
QString SQLSyntaxToStr(TSQLSyntax syntax);
int StrToSQLSyntax(const QString &name);     // -1 when unknown
QString SQLOptionToStr(TSQLOption option);
int StrToSQLOption(const QString &name);     // -1 when unknown

} // namespace vm20
