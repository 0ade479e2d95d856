#include "query/sqlsyntax.h"

#include "support/nstrings.h"

#include <array>

namespace vm20 {

namespace {

constexpr std::array<const char *, SQLSyntaxCount> SyntaxNames = {
    "ssSQL1", "ssSQL2", "ssOracle", "ssAccess", "ssNexusDB"};

constexpr std::array<const char *, SQLOptionCount> OptionNames = {
    "soASCIIRFields", "soSelectDistinct", "soQuoteAliases", "soBracketJoins",
    "soBracketConditions", "soSortByNames", "soFilter"};

template <std::size_t N>
int IndexOfName(const std::array<const char *, N> &names, const QString &name)
{
    for (std::size_t i = 0; i < N; ++i)
        if (SameText(name, QLatin1String(names[i])))
            return int(i);
    return -1;
}

} // namespace

QString SQLSyntaxToStr(TSQLSyntax syntax)
{
    const int i = int(syntax);
    return i >= 0 && i < SQLSyntaxCount ? QLatin1String(SyntaxNames[i]) : QString();
}

int StrToSQLSyntax(const QString &name)
{
    return IndexOfName(SyntaxNames, name.trimmed());
}

QString SQLOptionToStr(TSQLOption option)
{
    const int i = int(option);
    return i >= 0 && i < SQLOptionCount ? QLatin1String(OptionNames[i]) : QString();
}

int StrToSQLOption(const QString &name)
{
    return IndexOfName(OptionNames, name.trimmed());
}

} // namespace vm20
