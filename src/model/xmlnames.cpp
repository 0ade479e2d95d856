#include "model/xmlnames.h"

#include "support/nstrings.h"

#include <iterator>

namespace vm20 {

namespace {

struct TTypeName
{
    TFieldType Type;
    const char *Name;
};

// The reader takes the first entry of a name, so of two types that share one
// the type it is read as comes first: ftSmallint before ftWord, ftDateTime
// before ftTimeStamp, ftMemo before ftBlob.
constexpr TTypeName TypeNames[] = {
    {ftUnknown, "Unknown"},     {ftString, "String"},       {ftSmallint, "Word"},
    {ftInteger, "Int"},         {ftWord, "Word"},           {ftBoolean, "Bool"},
    {ftFloat, "Float"},         {ftCurrency, "Currency"},   {ftBCD, "BCD"},
    {ftDate, "Date"},           {ftTime, "Time"},           {ftDateTime, "DateTime"},
    {ftAutoInc, "Autoinc"},     {ftMemo, "Memo"},           {ftBlob, "Memo"},
    {ftFixedChar, "FixedChar"}, {ftWideString, "WideString"}, {ftLargeint, "Int64"},
    {ftTimeStamp, "DateTime"},
};

constexpr const char *LinkTypeNames[] = {"Inner", "Left", "Right", "Full"};

struct TEditorName
{
    TDSEditType Type;
    const char *Name;
};

constexpr TEditorName EditorNames[] = {
    {etEdit, "EDIT"}, {etList, "LIST"}, {etSQL, "SQLLIST"}, {etCustom, "CUSTOM"},
};

} // namespace

QString XmlTypeName(TFieldType type)
{
    for (const TTypeName &entry : TypeNames)
        if (entry.Type == type)
            return QLatin1String(entry.Name);
    return QStringLiteral("Unknown");
}

bool XmlTypeHasName(TFieldType type)
{
    for (const TTypeName &entry : TypeNames)
        if (entry.Type == type)
            return true;
    return false;
}

TFieldType XmlNameToType(const QString &name)
{
    for (const TTypeName &entry : TypeNames)
        if (SameText(name, QLatin1String(entry.Name)))
            return entry.Type;
    return TFieldType(-1);
}

QString XmlLinkTypeName(TDSLinkType type)
{
    const int index = int(type);
    if (index < 0 || index >= int(std::size(LinkTypeNames)))
        return QLatin1String(LinkTypeNames[0]);
    return QLatin1String(LinkTypeNames[index]);
}

TDSLinkType XmlNameToLinkType(const QString &name)
{
    for (int i = 1; i < int(std::size(LinkTypeNames)); ++i)
        if (SameText(name, QLatin1String(LinkTypeNames[i])))
            return TDSLinkType(i);
    return ltInner;
}

QString XmlEditorName(TDSEditType type)
{
    for (const TEditorName &entry : EditorNames)
        if (entry.Type == type)
            return QLatin1String(entry.Name);
    return QString();
}

TDSEditType XmlNameToEditor(const QString &name)
{
    for (const TEditorName &entry : EditorNames)
        if (SameText(name, QLatin1String(entry.Name)))
            return entry.Type;
    return TDSEditType(-1);
}

} // namespace vm20
