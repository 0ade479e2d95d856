#include "model/modeltext.h"

#include "model/errors.h"
#include "support/exception.h"

namespace vm20::modeltext {

namespace {

const char *const LinkTypeWords[] = {"Inner", "Left", "Right", "Full"};

bool IsBlank(const QString &line)
{
    for (QChar c : line)
        if (!IsSpace(c))
            return false;
    return true;
}

} // namespace

void RaiseNotValid(const QString &text, const char *what)
{
    throw EConvertError(Format(QStringLiteral("'%s' is not a valid %s"), {text, QString::fromLatin1(what)}));
}

void RaiseNoTableForField(const QString &table, const QString &field)
{
    throw ENDBStructError(dbseNoTable, QStringLiteral("Can not find table \"%s\" for field \"%s\""),
                          {table, field});
}

QString LinkTypeToText(TDSLinkType type)
{
    const int i = int(type) >= 0 && int(type) <= int(ltOuterFull) ? int(type) : 0;
    return QString::fromLatin1(LinkTypeWords[i]);
}

TDSLinkType TextToLinkType(const QString &text)
{
    const QString word = text.trimmed();
    for (int i = int(ltOuterLeft); i <= int(ltOuterFull); ++i)
        if (word.compare(QLatin1String(LinkTypeWords[i]), Qt::CaseInsensitive) == 0)
            return TDSLinkType(i);
    return ltInner;
}

QStringList WithoutTrailingBlankLines(QStringList lines)
{
    while (!lines.isEmpty() && IsBlank(lines.last()))
        lines.removeLast();
    return lines;
}

TSectionKeys::TSectionKeys(const QStringList &lines)
    : FLines(lines)
{
    FEntries.reserve(FLines.size());
    for (const QString &line : std::as_const(FLines)) {
        const qsizetype eq = line.indexOf(QLatin1Char('='));
        if (eq >= 0)
            FEntries.push_back({QStringView(line).left(eq), QStringView(line).mid(eq + 1)});
    }
}

std::optional<QStringView> TSectionKeys::View(std::initializer_list<QLatin1StringView> keys) const
{
    const size_t count = FEntries.size();
    for (QLatin1StringView key : keys) {
        for (size_t step = 0; step < count; ++step) {
            const size_t i = (FNext + step) % count;
            const QStringView candidate = FEntries[i].Key;
            // Keys are nearly always spelled as the writer spells them, so the
            // exact comparison settles most lookups before the folding one.
            if (candidate.size() == key.size()
                && (candidate == key || candidate.compare(key, Qt::CaseInsensitive) == 0)) {
                FNext = i + 1;
                return FEntries[i].Value;
            }
        }
    }
    return std::nullopt;
}

std::optional<QString> TSectionKeys::Find(std::initializer_list<QLatin1StringView> keys) const
{
    if (const auto value = View(keys))
        return value->toString();
    return std::nullopt;
}

// Thousands of fields each hold a handful of numbers and flags, so they are
// parsed from the line itself; the text is copied only for an error.
int StrictInt(const TSectionKeys &keys, std::initializer_list<QLatin1StringView> names, int defaultValue)
{
    const auto text = keys.View(names);
    if (!text)
        return defaultValue;
    bool ok = false;
    const int value = text->trimmed().toInt(&ok, 10);
    return ok ? value : StrToInt(text->toString());
}

bool LenientBool(const TSectionKeys &keys, std::initializer_list<QLatin1StringView> names, bool defaultValue)
{
    const auto text = keys.View(names);
    if (!text)
        return defaultValue;
    if (text->size() == 1 && (text->front() == QLatin1Char('0') || text->front() == QLatin1Char('1')))
        return text->front() == QLatin1Char('1');
    return XStrToBool(text->toString(), defaultValue);
}

TFieldType StrictFieldType(QStringView text)
{
    return TFieldType(StrictEnum(text, FieldTypeCount, [](const QString &name) { return int(StrToFldType(name)); },
                                 "field type"));
}

int StrictEnum(QStringView text, int count, int (*toValue)(const QString &), const char *what)
{
    const QStringView word = text.trimmed();
    bool isNumber = false;
    int value = word.toInt(&isNumber, 10);
    if (!isNumber)
        value = toValue ? toValue(word.toString()) : -1;
    if (value < 0 || value >= count)
        RaiseNotValid(text.toString(), what);
    return value;
}

} // namespace vm20::modeltext
