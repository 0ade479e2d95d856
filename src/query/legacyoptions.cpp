#include "query/legacyoptions.h"

#include "support/nstrings.h"

namespace vm20 {

namespace {

enum TQPOption {
    poFlatButtons,
    poRoundButtons,
    poNonEmptyBrackets,
    poNewJoinsStyle,
    poAsciiRFields,
    poPopupField,
    poPopupValue,
    poSelectDistinct,
    poShowGroupName,
    poAllowKeyboard,
    poOracleJoins,
    poQuoteAliases,
    poSortListData,
    poShowAddRow,
    poBracketJoins,
    poBracketConditions,
    poShowCheckBoxes
};

// The appearance ordinal an old option became, or -1.
int AppearanceBit(int option)
{
    switch (option) {
    case poFlatButtons: return 0;
    case poRoundButtons: return 1;
    case poNonEmptyBrackets: return 2;
    case poPopupField: return 3;
    case poPopupValue: return 4;
    case poShowGroupName: return 5;
    case poAllowKeyboard: return 6;
    case poSortListData: return 7;
    case poShowAddRow: return 8;
    case poShowCheckBoxes: return 9;
    default: return -1;
    }
}

int SQLOptionOf(int option)
{
    switch (option) {
    case poAsciiRFields: return soASCIIRFields;
    case poSelectDistinct: return soSelectDistinct;
    case poQuoteAliases: return soQuoteAliases;
    case poBracketJoins: return soBracketJoins;
    case poBracketConditions: return soBracketConditions;
    default: return -1;
    }
}

} // namespace

const QStringList &OldPanelOptionNames()
{
    static const QStringList names = {
        QStringLiteral("poFlatButtons"),      QStringLiteral("poRoundButtons"),
        QStringLiteral("poNonEmptyBrackets"), QStringLiteral("poNewJoinsStyle"),
        QStringLiteral("poAsciiRFields"),     QStringLiteral("poPopupField"),
        QStringLiteral("poPopupValue"),       QStringLiteral("poSelectDistinct"),
        QStringLiteral("poShowGroupName"),    QStringLiteral("poAllowKeyboard"),
        QStringLiteral("poOracleJoins"),      QStringLiteral("poQuoteAliases"),
        QStringLiteral("poSortListData"),     QStringLiteral("poShowAddRow"),
        QStringLiteral("poBracketJoins"),     QStringLiteral("poBracketConditions"),
        QStringLiteral("poShowCheckBoxes"),
    };
    return names;
}

TLegacyPanelOptions ConvertOldOptions(const QStringList &names)
{
    const QStringList &known = OldPanelOptionNames();
    TLegacyPanelOptions result;
    bool newJoins = false;
    bool oracleJoins = false;
    for (const QString &name : names) {
        int option = int(known.size()) - 1;
        while (option >= 0 && known[option].compare(name.trimmed(), Qt::CaseInsensitive) != 0)
            --option;
        if (option < 0)
            continue;
        if (const int bit = AppearanceBit(option); bit >= 0)
            result.Appearance |= 1u << bit;
        if (const int sqlOption = SQLOptionOf(option); sqlOption >= 0)
            result.SQLOptions.include(TSQLOption(sqlOption));
        newJoins = newJoins || option == poNewJoinsStyle;
        oracleJoins = oracleJoins || option == poOracleJoins;
    }
    result.SQLSyntax = oracleJoins ? ssOracle : newJoins ? ssSQL2 : ssSQL1;
    return result;
}

TLegacyPanelOptions ReadOldOptions(const QString &text)
{
    const QString set = text.trimmed();
    if (set.size() < 2 || !set.startsWith(QLatin1Char('[')) || !set.endsWith(QLatin1Char(']')))
        throw EPropertyError(QStringLiteral("Invalid property value"));
    const QString inner = set.mid(1, set.size() - 2).trimmed();
    QStringList names;
    if (!inner.isEmpty()) {
        names = inner.split(QLatin1Char(','));
        for (QString &name : names) {
            name = name.trimmed();
            if (!IsValidIdent(name))
                throw EPropertyError(QStringLiteral("Invalid property value"));
        }
    }
    return ConvertOldOptions(names);
}

} // namespace vm20
