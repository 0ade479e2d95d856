#pragma once
// Private to the model text writer and reader: the pieces both sides share
// and the reader's helpers for one section's key=value lines.
#include "model/fieldtype.h"
#include "model/vmglobal.h"
#include "support/nstrings.h"

#include <QHash>
#include <QLatin1StringView>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace vm20 {

class TDSField;
class TDSOperator;
class TDSTable;
class TNCustomDBStructure;

namespace modeltext {

inline constexpr double CurrentVersion = 3.6;
// Older texts store an operator's applied types as ordinals.
inline constexpr double TypeNamesVersion = 2.0;

QString LinkTypeToText(TDSLinkType type);
// "Left", "Right", "Full" in any case; anything else is an inner join.
TDSLinkType TextToLinkType(const QString &text);

// Drops the empty or blank lines at the end: the writer puts a separator
// after a section of free text, which is not part of that text.
QStringList WithoutTrailingBlankLines(QStringList lines);

// The key=value lines of one section. Lookups compare keys without regard to
// case. The writer puts keys in a fixed order and the reader asks for them in
// that order, so each search starts after the previous match and wraps
// around: a section is then read in one pass instead of one scan per key.
// Lines without "=" answer for no key.
class TSectionKeys
{
public:
    explicit TSectionKeys(const QStringList &lines);
    // The value of the first key present: today's name, then older spellings.
    // The view lives as long as this object.
    std::optional<QStringView> View(std::initializer_list<QLatin1StringView> keys) const;
    std::optional<QStringView> View(QLatin1StringView key) const { return View({key}); }
    std::optional<QString> Find(std::initializer_list<QLatin1StringView> keys) const;
    std::optional<QString> Find(QLatin1StringView key) const { return Find({key}); }
    QString Value(QLatin1StringView key) const { return Find(key).value_or(QString()); }
    bool Has(QLatin1StringView key) const { return View(key).has_value(); }

private:
    struct Entry
    {
        QStringView Key;
        QStringView Value;
    };
    QStringList FLines;   // keeps the views below alive
    std::vector<Entry> FEntries;
    mutable size_t FNext = 0;
};

// ENDBStructError 4: a data field names a table the model lacks.
[[noreturn]] void RaiseNoTableForField(const QString &table, const QString &field);

// EConvertError "'text' is not a valid <what>".
[[noreturn]] void RaiseNotValid(const QString &text, const char *what);

// Value readers. The strict ones raise EConvertError for a value that is
// present but is not what the key must hold; an absent key gives the default.
int StrictInt(const TSectionKeys &keys, std::initializer_list<QLatin1StringView> names, int defaultValue);
bool LenientBool(const TSectionKeys &keys, std::initializer_list<QLatin1StringView> names, bool defaultValue);
// A type given by ordinal or by name ("3" or "ftInteger").
TFieldType StrictFieldType(QStringView text);
// An enumeration value given by ordinal below `count` or by a name `toValue` knows.
int StrictEnum(QStringView text, int count, int (*toValue)(const QString &), const char *what);

} // namespace modeltext

// Builds a model from its text. Tables come first, then the links listed
// under each table, then fields, groups and conditions. Huge counts cost
// nothing up front: sections are fetched one by one from an index built in
// one pass, and the first missing one stops the read.
class TModelTextReader
{
public:
    TModelTextReader(TNCustomDBStructure &model, const QStringList &lines);
    void Read();

private:
    // Required sections raise ENDBStructError 9 when missing.
    QStringList Section(const QString &name) const;
    int Count(const modeltext::TSectionKeys &keys, QLatin1StringView name) const;

    void ReadOperators();
    void ReadOperator(const QString &section);
    void IndexOperators();
    TDSOperator *OperatorByName(const QString &name) const;
    void ReadTables();
    void ReadTable(int n);
    void ReadLinks(TDSTable *table);
    TDSTable *TableByAlias(const QString &alias) const;
    void ReadFields();
    void ReadField(int n);
    void ReadFieldOperators(TDSField &field, const modeltext::TSectionKeys &keys);
    void ReadEditor(TDSField &field, const modeltext::TSectionKeys &keys, int n);
    void ReadGroups();
    void ReadConditions();
    void ReadCondition(int n);
    void ReadMainTable();
    void ReadDBSpecInfo();

    // Layouts before numbered table and field sections (modeltextlegacy.cpp).
    void ReadTableList();
    void ReadFieldList();

    TNCustomDBStructure &FModel;
    TSectionIndex FIndex;
    modeltext::TSectionKeys FMain;
    double FVersion = 0;
    // Case-folded operator names; the model's own lookup scans its list, which
    // would cost one scan per operator of every field.
    QHash<QString, TDSOperator *> FOperatorsByName;
    QString FLastAlias;
    TDSTable *FLastTable = nullptr;
    // A field's "Operators" text and the operators it names.
    QHash<QString, std::vector<TDSOperator *>> FOperatorLists;
};

} // namespace vm20
