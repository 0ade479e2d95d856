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

// Numbers written as the user typed them, digits and all.
bool IsExactNumberType(TFieldType type)
{
    return type == ftBCD || type == ftFMTBcd || type == ftExtended || type == ftSingle;
}

bool IsDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

// [+-]digits, as SQL reads an integer literal.
bool IsIntegerLiteral(const QString &text)
{
    qsizetype i = !text.isEmpty() && (text[0] == QLatin1Char('+') || text[0] == QLatin1Char('-')) ? 1 : 0;
    if (i == text.size())
        return false;
    for (; i < text.size(); ++i)
        if (!IsDigit(text[i]))
            return false;
    return true;
}

// [+-]digits[.digits][e[+-]digits], with digits on at least one side of the point.
bool IsNumberLiteral(const QString &text)
{
    qsizetype i = !text.isEmpty() && (text[0] == QLatin1Char('+') || text[0] == QLatin1Char('-')) ? 1 : 0;
    qsizetype digits = 0;
    for (; i < text.size() && IsDigit(text[i]); ++i)
        ++digits;
    if (i < text.size() && text[i] == QLatin1Char('.'))
        for (++i; i < text.size() && IsDigit(text[i]); ++i)
            ++digits;
    if (digits == 0)
        return false;
    if (i < text.size() && (text[i] == QLatin1Char('e') || text[i] == QLatin1Char('E'))) {
        ++i;
        if (i < text.size() && (text[i] == QLatin1Char('+') || text[i] == QLatin1Char('-')))
            ++i;
        const qsizetype start = i;
        while (i < text.size() && IsDigit(text[i]))
            ++i;
        if (i == start)
            return false;
    }
    return i == text.size();
}

QString CheckedInteger(const QString &text)
{
    const QString literal = text.trimmed();
    if (!IsIntegerLiteral(literal))
        throw EConvertError(Format(QStringLiteral("'%s' is not a valid integer value"), {text}));
    return literal;
}

QString CheckedNumber(const QString &text)
{
    const QString literal = text.trimmed();
    if (!IsNumberLiteral(literal))
        throw EConvertError(Format(QStringLiteral("'%s' is not a valid floating point value"), {text}));
    return literal;
}

// True and False in any case, or the formats' own words; written as the
// formats' words when they have them.
QString BooleanLiteral(const TNCustomDBStructure *model, const QString &text)
{
    const QString word = text.trimmed();
    const QString trueWord = model ? model->SQLFormats().TrueValue() : QString();
    const QString falseWord = model ? model->SQLFormats().FalseValue() : QString();
    if (SameText(word, QStringLiteral("True")) || (!trueWord.isEmpty() && SameText(word, trueWord)))
        return trueWord.isEmpty() ? QStringLiteral("True") : trueWord;
    if (SameText(word, QStringLiteral("False")) || (!falseWord.isEmpty() && SameText(word, falseWord)))
        return falseWord.isEmpty() ? QStringLiteral("False") : falseWord;
    throw EConvertError(Format(QStringLiteral("'%s' is not a valid boolean value"), {text}));
}

const TNCustomDBStructure *ModelOf(const TFilterCond &condition)
{
    return condition.Query() ? condition.Query()->DBStruct() : nullptr;
}

TSQLSyntax SyntaxOf(const TFilterCond &condition)
{
    return condition.Query() ? condition.Query()->SQLSyntax() : ssSQL2;
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

bool IsQuotedValueType(const TNCustomDBStructure *model, TFieldType type)
{
    // A text written without quotes would be read as SQL, whatever the
    // model's list says.
    if (IsStringType(type))
        return true;
    const TFieldTypes quoted = model ? model->SQLFormats().QuotedTypes()
                                     : TSQLFormats::DefaultQuotedTypes();
    return quoted.contains(type);
}

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
    const QString quote = IsQuotedValueType(model, type) ? QStringLiteral("'") : QString();
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
    // Written without quotes, so nothing but a literal of the type may pass.
    if (IsIntegerType(type))
        return CheckedInteger(text);
    if (IsExactNumberType(type))
        return CheckedNumber(text);
    if (type == ftBoolean)
        return BooleanLiteral(ModelOf(condition), text);
    if (IsQuotedValueType(ModelOf(condition), type)) {
        QString result = text;
        return result.replace(QLatin1Char('\''), QStringLiteral("''"));
    }
    return CheckedNumber(text);
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
