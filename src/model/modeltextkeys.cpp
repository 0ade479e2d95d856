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

std::optional<QString> TSectionKeys::Find(QLatin1StringView key) const
{
    const size_t count = FEntries.size();
    for (size_t step = 0; step < count; ++step) {
        const size_t i = (FNext + step) % count;
        if (FEntries[i].Key.compare(key, Qt::CaseInsensitive) == 0) {
            FNext = i + 1;
            return FEntries[i].Value.toString();
        }
    }
    return std::nullopt;
}

std::optional<QString> TSectionKeys::Find(std::initializer_list<QLatin1StringView> keys) const
{
    for (QLatin1StringView key : keys)
        if (auto value = Find(key))
            return value;
    return std::nullopt;
}

int StrictInt(const TSectionKeys &keys, std::initializer_list<QLatin1StringView> names, int defaultValue)
{
    const auto text = keys.Find(names);
    return text ? StrToInt(*text) : defaultValue;
}

bool LenientBool(const TSectionKeys &keys, std::initializer_list<QLatin1StringView> names, bool defaultValue)
{
    const auto text = keys.Find(names);
    return text ? XStrToBool(*text, defaultValue) : defaultValue;
}

TFieldType StrictFieldType(const QString &text)
{
    return TFieldType(StrictEnum(text, FieldTypeCount, [](const QString &name) { return int(StrToFldType(name)); },
                                 "field type"));
}

int StrictEnum(const QString &text, int count, int (*toValue)(const QString &), const char *what)
{
    const QString word = text.trimmed();
    bool isNumber = false;
    int value = word.toInt(&isNumber, 10);
    if (!isNumber)
        value = toValue ? toValue(word) : -1;
    if (value < 0 || value >= count)
        RaiseNotValid(text, what);
    return value;
}

} // namespace vm20::modeltext
