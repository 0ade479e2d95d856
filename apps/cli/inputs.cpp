#include "inputs.h"

#include "cli.h"

#include "model/dbstructure.h"
#include "model/dmxmlformat.h"
#include "query/query.h"
#include "support/exception.h"
#include "support/nstrings.h"

#include <QFile>

#include <algorithm>
#include <cstdio>
#include <functional>

namespace vm20::cli {

namespace {

QStringList SplitLines(const QByteArray &data)
{
    QString text = QString::fromUtf8(data);
    if (text.startsWith(QChar(0xFEFF)))
        text.remove(0, 1);
    if (text.isEmpty())
        return {};
    QStringList lines = text.split(QLatin1Char('\n'));
    if (lines.constLast().isEmpty())
        lines.removeLast();
    for (QString &line : lines)
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
    return lines;
}

// Boolean values of the formats file: a typo must not silently read as false.
bool StrictBool(const QString &text, bool &value)
{
    static const QStringList trueWords{QStringLiteral("1"), QStringLiteral("true"), QStringLiteral("yes")};
    static const QStringList falseWords{QStringLiteral("0"), QStringLiteral("false"), QStringLiteral("no")};
    const QString word = text.trimmed().toLower();
    if (trueWords.contains(word))
        value = true;
    else if (falseWords.contains(word))
        value = false;
    else
        return false;
    return true;
}

struct TFormatKey
{
    const char *Name;
    enum { Text, Char, Bool } Kind;
    std::function<void(TNCustomDBStructure &, const QString &, QChar, bool)> Apply;
};

using TFS = TNCustomDBStructure;

const TFormatKey FormatKeys[] = {
    {"Date", TFormatKey::Text, [](TFS &m, const QString &v, QChar, bool) { m.SQLFormats().SetDate(v); }},
    {"Time", TFormatKey::Text, [](TFS &m, const QString &v, QChar, bool) { m.SQLFormats().SetTime(v); }},
    {"DateTime", TFormatKey::Text,
     [](TFS &m, const QString &v, QChar, bool) { m.SQLFormats().SetDateTime(v); }},
    {"QuoteSymbol1", TFormatKey::Char,
     [](TFS &m, const QString &, QChar c, bool) { m.SQLFormats().SetQuoteSymbol1(c); }},
    {"QuoteSymbol2", TFormatKey::Char,
     [](TFS &m, const QString &, QChar c, bool) { m.SQLFormats().SetQuoteSymbol2(c); }},
    {"FalseValue", TFormatKey::Text,
     [](TFS &m, const QString &v, QChar, bool) { m.SQLFormats().SetFalseValue(v); }},
    {"TrueValue", TFormatKey::Text,
     [](TFS &m, const QString &v, QChar, bool) { m.SQLFormats().SetTrueValue(v); }},
    {"FullTableName", TFormatKey::Text,
     [](TFS &m, const QString &v, QChar, bool) { m.SQLFormats().SetFullTableName(v); }},
    {"QuoteBool", TFormatKey::Bool,
     [](TFS &m, const QString &, QChar, bool b) { m.SQLFormats().SetQuoteBool(b); }},
    {"QuoteDate", TFormatKey::Bool,
     [](TFS &m, const QString &, QChar, bool b) { m.SQLFormats().SetQuoteDate(b); }},
    {"UseOuterKeyword", TFormatKey::Bool,
     [](TFS &m, const QString &, QChar, bool b) { m.SQLFormats().SetUseOuterKeyword(b); }},
    {"LowerFunc", TFormatKey::Text,
     [](TFS &m, const QString &v, QChar, bool) { m.SQLFormats().SetLowerFunc(v); }},
    {"WildcardChar", TFormatKey::Char,
     [](TFS &m, const QString &, QChar c, bool) { m.SQLFormats().SetWildcardChar(c); }},
    {"UseAsInFrom", TFormatKey::Bool,
     [](TFS &m, const QString &, QChar, bool b) { m.SQLFormats().SetUseAsInFrom(b); }},
    {"MultiDB", TFormatKey::Bool, [](TFS &m, const QString &, QChar, bool b) { m.DMOptions().SetMultiDB(b); }},
    {"DefaultDatabase", TFormatKey::Text,
     [](TFS &m, const QString &v, QChar, bool) { m.DMOptions().SetDefaultDatabase(v); }},
    {"DefaultDBOwner", TFormatKey::Text,
     [](TFS &m, const QString &v, QChar, bool) { m.DMOptions().SetDefaultDBOwner(v); }},
};

} // namespace

QStringList ReadTextFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Exception(QStringLiteral("Can not read file \"%1\": %2").arg(path, file.errorString()));
    const QByteArray data = file.readAll();
    if (file.error() != QFileDevice::NoError)
        throw Exception(QStringLiteral("Can not read file \"%1\": %2").arg(path, file.errorString()));
    return SplitLines(data);
}

QStringList ReadInput(const QString &path)
{
    if (!path.isEmpty())
        return ReadTextFile(path);
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly))
        throw Exception(QStringLiteral("Can not read standard input: %1").arg(input.errorString()));
    return SplitLines(input.readAll());
}

bool LooksLikeXml(const QStringList &lines)
{
    for (const QString &line : lines) {
        const QString text = line.trimmed();
        if (!text.isEmpty())
            return text.startsWith(QLatin1Char('<'));
    }
    return false;
}

void LoadModelFile(TNCustomDBStructure &model, const QString &path)
{
    const QStringList lines = ReadTextFile(path);
    if (LooksLikeXml(lines))
        LoadDMFromXml(model, lines);
    else
        model.LoadFromStrings(lines);
}

QStringList ModelFileLines(const TNCustomDBStructure &model, bool xml)
{
    QStringList lines;
    if (xml)
        SaveDMToXml(model, lines);
    else
        model.SaveToStrings(lines);
    return lines;
}

void ApplyFormats(TNCustomDBStructure &model, const QStringList &lines, const QString &source)
{
    for (int i = 0; i < lines.size(); ++i) {
        const QString line = lines[i].trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')) || line.startsWith(QLatin1Char(';')))
            continue;
        const auto fail = [&](const QString &what) {
            return Exception(QStringLiteral("%1, line %2: %3").arg(source).arg(i + 1).arg(what));
        };
        if (!line.contains(QLatin1Char('=')))
            throw fail(QStringLiteral("expected name=value, found \"%1\"").arg(line));
        const QString name = NameOfLine(line).trimmed();
        const QString value = ValueOfLine(lines[i]);
        const TFormatKey *key = nullptr;
        for (const TFormatKey &candidate : FormatKeys)
            if (SameText(name, QLatin1String(candidate.Name)))
                key = &candidate;
        if (!key)
            throw fail(QStringLiteral("unknown key \"%1\"").arg(name));
        QChar symbol;
        bool flag = false;
        if (key->Kind == TFormatKey::Char) {
            if (value.size() > 1)
                throw fail(QStringLiteral("%1 takes one character, not \"%2\"").arg(name, value));
            symbol = value.isEmpty() ? QChar() : value[0];
        } else if (key->Kind == TFormatKey::Bool && !StrictBool(value, flag)) {
            throw fail(QStringLiteral("%1 takes 0 or 1, not \"%2\"").arg(name, value));
        }
        key->Apply(model, value, symbol, flag);
    }
}

void LoadFormatsFile(TNCustomDBStructure &model, const QString &path)
{
    ApplyFormats(model, ReadTextFile(path), QStringLiteral("Formats file \"%1\"").arg(path));
}

void PrepareQuery(TNQuery &query, TNCustomDBStructure &model)
{
    query.SetDBStruct(&model);
    query.SetActive(true);
    query.SetSaveSQLOptions(true);
    query.SetSaveTitles(false);
}

void LoadQueryInput(TNQuery &query, const QString &path)
{
    const QStringList lines = ReadInput(path);
    if (std::all_of(lines.begin(), lines.end(), [](const QString &line) { return line.trimmed().isEmpty(); }))
        throw Exception(path.isEmpty() ? QStringLiteral("Standard input holds no query text")
                                       : QStringLiteral("Query file \"%1\" holds no query text").arg(path));
    query.LoadFromStrings(lines);
}

} // namespace vm20::cli

#include "options.h"

namespace vm20::cli {

void AddModelOptions(TCommandOptions &options)
{
    options.AddValue(QStringLiteral("model"), QStringLiteral("file"),
                     QStringLiteral("The data model, as model text or XML."));
    options.AddValue(QStringLiteral("formats"), QStringLiteral("file"),
                     QStringLiteral("name=value lines setting the model's SQL formats and options "
                                    "(Date, TrueValue, QuoteSymbol1, MultiDB, ...)."));
}

void LoadModelOptions(TNCustomDBStructure &model, const TCommandOptions &options)
{
    const QString modelPath = options.Required(QStringLiteral("model"));
    LoadModelFile(model, modelPath);
    if (options.IsSet(QStringLiteral("formats")))
        LoadFormatsFile(model, options.Value(QStringLiteral("formats")));
}

} // namespace vm20::cli

namespace vm20::cli {

void AddIncompleteOption(TCommandOptions &options)
{
    options.AddFlag(QStringLiteral("allow-incomplete"),
                    QStringLiteral("Go on when the model lacks a field, operator, predefined condition or "
                                   "table the query names, or the query text is cut short: the statement "
                                   "then leaves those parts out. Without it such a query exits with 1."));
}

void CheckComplete(const TNQuery &query, const TCommandOptions &options)
{
    QStringList items;
    for (const TUnresolvedItem &item : query.UnresolvedItems())
        if (item.Enabled)   // a disabled row asks for nothing
            items << item.Text();
    if (items.isEmpty())
        return;
    if (!options.IsSet(QStringLiteral("allow-incomplete")))
        throw EIncompleteQuery(
            QStringLiteral("the model cannot resolve the query in full (--allow-incomplete leaves these out):"),
            items);
    for (const QString &item : items)
        std::fprintf(stderr, "vm20 %s: warning: left out: %s\n", qUtf8Printable(options.Command()),
                     qUtf8Printable(item));
}

} // namespace vm20::cli
