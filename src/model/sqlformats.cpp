#include "model/sqlformats.h"

namespace vm20 {

namespace {
const TFieldTypes DateTypes{ftDate, ftTime, ftDateTime, ftTimeStamp};
}

TSQLFormats::TSQLFormats()
    : FQuoteSymbol1(QLatin1Char('"'))
    , FQuoteSymbol2(QLatin1Char('"'))
    , FFalseValue(QStringLiteral("false"))
    , FTrueValue(QStringLiteral("true"))
    , FFullTableName(QStringLiteral("DB.OWNER.TABLE"))
    , FQuotedTypes(DefaultQuotedTypes())
    , FLowerFunc(QStringLiteral("LOWER"))
    , FWildcardChar(QLatin1Char('%'))
{
}

TFieldTypes TSQLFormats::DefaultQuotedTypes()
{
    return {ftString, ftBoolean, ftDate, ftTime, ftDateTime, ftMemo, ftFmtMemo,
            ftFixedChar, ftWideString, ftTimeStamp};
}

void TSQLFormats::AssignTo(TSQLFormats &dest) const
{
    dest = *this;
}

bool TSQLFormats::QuoteBool() const
{
    return FQuotedTypes.contains(ftBoolean);
}

void TSQLFormats::SetQuoteBool(bool value)
{
    if (value)
        FQuotedTypes.include(ftBoolean);
    else
        FQuotedTypes.exclude(ftBoolean);
}

bool TSQLFormats::QuoteDate() const
{
    return FQuotedTypes.contains(ftDate);
}

void TSQLFormats::SetQuoteDate(bool value)
{
    if (value)
        FQuotedTypes += DateTypes;
    else
        FQuotedTypes -= DateTypes;
}

} // namespace vm20
