#include "query/valueformat.h"

#include "model/dbstructure.h"
#include "model/sqlformats.h"
#include "query/filtercond.h"
#include "query/query.h"
#include "query/sqlparam.h"
#include "support/dattime.h"
#include "support/exception.h"
#include "support/nstrings.h"

namespace vm20 {

namespace {

bool IsZeroDefaultType(TFieldType type)
{
    switch (type) {
    case ftSmallint:
    case ftInteger:
    case ftWord:
    case ftFloat:
    case ftCurrency:
    case ftAutoInc:
    case ftLargeint:
        return true;
    default:
        return false;
    }
}

bool IsPlainInteger(const QString &text)
{
    if (text.isEmpty() || text.size() > 15)
        return false;
    for (qsizetype i = 0; i < text.size(); ++i)
        if (text[i] < QLatin1Char('0') || text[i] > QLatin1Char('9'))
            return false;
    return true;
}

const TNCustomDBStructure *ModelOf(const TFilterCond &condition)
{
    return condition.Query() ? condition.Query()->DBStruct() : nullptr;
}

TSQLSyntax SyntaxOf(const TFilterCond &condition)
{
    return condition.Query() ? condition.Query()->SQLSyntax() : ssSQL2;
}

bool IsQuotedType(const TNCustomDBStructure *model, TFieldType type)
{
    const TFieldTypes quoted = model ? model->SQLFormats().QuotedTypes()
                                     : TSQLFormats::DefaultQuotedTypes();
    return quoted.contains(type);
}

// The stored form is a day count; a date typed in the locale's own form is
// accepted too, so the default text of an empty date value converts.
TDateTime ParseDateValue(const QString &text)
{
    try {
        return VmStrToDateTime(text);
    } catch (const EConvertError &) {
        // The locale's short date may have a two-digit year: read the zero
        // date's own text back as the zero date.
        if (text == DateToStr(0.0))
            return 0.0;
        try {
            return StrToDateTime(text);
        } catch (const EConvertError &) {
        }
        throw;
    }
}

QString ModelDateFormat(const TNCustomDBStructure *model, TFieldType type)
{
    QString format;
    if (model) {
        const TSQLFormats &formats = model->SQLFormats();
        format = type == ftDate ? formats.Date() : type == ftTime ? formats.Time() : formats.DateTime();
    }
    if (!format.isEmpty())
        return format;
    // A model without formats still gets a literal most databases read.
    if (type == ftDate)
        return QStringLiteral("yyyy-mm-dd");
    if (type == ftTime)
        return QStringLiteral("hh:nn:ss");
    return QStringLiteral("yyyy-mm-dd hh:nn:ss");
}

} // namespace

bool IsDateType(TFieldType type)
{
    return type == ftDate || type == ftTime || type == ftDateTime || type == ftTimeStamp;
}

bool IsFloatType(TFieldType type)
{
    return type == ftFloat || type == ftCurrency;
}

QString ExtractValue(const TFilterCond &condition, int index)
{
    QString text = condition.GetValue(index);
    if (condition.GetValueCount() < index)
        return text;
    const TFieldType type = condition.GetValueType(index);
    const bool defaulted = text.isEmpty();
    if (defaulted) {
        if (IsZeroDefaultType(type))
            text = QStringLiteral("0");
        else if (type == ftBoolean)
            text = QStringLiteral("False");
        else if (IsDateType(type))
            text = DateToStr(0.0);
    }
    if (condition.GetValueKind(index) != vkList)
        return ProcessScalarValue(condition, index, text);

    const TNCustomDBStructure *model = ModelOf(condition);
    const QString quote = IsQuotedType(model, type) ? QStringLiteral("'") : QString();
    const auto *simple = dynamic_cast<const TSimpleCond *>(&condition);
    const bool lower = simple && simple->IsCaseInsensitive() && model;
    QStringList items;
    // The default stands for one item: a date's text may hold blanks, which
    // comma text would split.
    const QStringList listItems = defaulted ? QStringList{text} : ComposeCommaText(text);
    for (const QString &item : listItems) {
        QString literal = quote + ProcessScalarValue(condition, index, item) + quote;
        if (lower)
            literal = model->SQLFormats().LowerFunc() + QLatin1Char('(') + literal + QLatin1Char(')');
        items.append(literal);
    }
    return items.join(QLatin1Char(','));
}

QString ProcessScalarValue(const TFilterCond &condition, int index, const QString &text)
{
    if (condition.GetValueKind(index) == vkSubQuery)
        return text;
    const TFieldType type = condition.GetValueType(index);
    if (IsDateType(type))
        return ProcessDateValue(ModelOf(condition), SyntaxOf(condition), type, text, true);
    if (IsFloatType(type))
        return ProcessFloatValue(type, text);
    if (IsStringType(type)) {
        QString result = text;
        return result.replace(QLatin1Char('\''), QStringLiteral("''"));
    }
    return text;
}

QString ProcessDateValue(const TNCustomDBStructure *model, TSQLSyntax syntax, TFieldType type,
                         const QString &text, bool forSQL)
{
    const TDateTime value = ParseDateValue(text);
    if (!forSQL)
        return DateTimeToStr(value);
    if (syntax == ssNexusDB) {
        if (type == ftDate)
            return QStringLiteral("DATE ") + QuotedStr(FormatDateTime(QStringLiteral("yyyy-mm-dd"), value));
        if (type == ftTime)
            return QStringLiteral("TIME ") + QuotedStr(FormatDateTime(QStringLiteral("hh:mm:ss"), value));
        return QStringLiteral("TIMESTAMP ")
               + QuotedStr(FormatDateTime(QStringLiteral("yyyy-mm-dd hh:mm:ss"), value));
    }
    if (syntax == ssOracle)
        return QStringLiteral("TO_DATE('")
               + FormatDateTime(QStringLiteral("dd-mm-yyyy hh:mm:ss"), value)
               + QStringLiteral("', 'dd-mm-yyyy hh24:mi:ss')");
    return FormatDateTime(ModelDateFormat(model, type), value);
}

QString ProcessFloatValue(TFieldType type, const QString &text)
{
    if (type != ftFloat && type != ftCurrency)
        return text;
    // Plain digits read the same in every locale; they skip the locale's parser.
    if (IsPlainInteger(text))
        return type == ftFloat ? XFloatToStr(double(text.toLongLong())) : XCurrToStr(double(text.toLongLong()));
    return type == ftFloat ? XFloatToStr(StrToFloat(text)) : XCurrToStr(StrToCurr(text));
}

QChar GetQuoteSymbol(const TNCustomDBStructure *model, int which)
{
    if (!model)
        return QLatin1Char('"');
    return which == 1 ? model->SQLFormats().QuoteSymbol1() : model->SQLFormats().QuoteSymbol2();
}

void SaveValues(const TFilterCond &condition, QString &value1, QString &value2)
{
    const auto text = [&condition](int index) {
        const TSQLParam *param = condition.GetParam(index);
        return condition.GetValueIsParam(index) && param ? param->Value() : condition.GetValue(index);
    };
    value1 = text(1);
    value2 = text(2);
}

void LoadValues(const QString &value1, const QString &value2, TFilterCond &condition)
{
    const auto store = [&condition](int index, const QString &value) {
        TSQLParam *param = condition.GetParam(index);
        if (condition.GetValueIsParam(index) && param)
            param->SetValue(value);
        else
            condition.SetValue(index, value);
    };
    store(1, value1);
    store(2, value2);
}

} // namespace vm20
