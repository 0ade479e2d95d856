#include "model/fieldtype.h"

#include "support/nstrings.h"

#include <QHash>

namespace vm20 {

namespace {

const char *const FieldTypeNames[FieldTypeCount] = {
    "ftUnknown", "ftString", "ftSmallint", "ftInteger", "ftWord", "ftBoolean", "ftFloat",
    "ftCurrency", "ftBCD", "ftDate", "ftTime", "ftDateTime", "ftBytes", "ftVarBytes",
    "ftAutoInc", "ftBlob", "ftMemo", "ftGraphic", "ftFmtMemo", "ftParadoxOle", "ftDBaseOle",
    "ftTypedBinary", "ftCursor", "ftFixedChar", "ftWideString", "ftLargeint", "ftADT",
    "ftArray", "ftReference", "ftDataSet", "ftOraBlob", "ftOraClob", "ftVariant",
    "ftInterface", "ftIDispatch", "ftGuid", "ftTimeStamp", "ftFMTBcd", "ftFixedWideChar",
    "ftWideMemo", "ftOraTimeStamp", "ftOraInterval", "ftLongWord", "ftShortint", "ftByte",
    "ftExtended", "ftConnection", "ftParams", "ftStream", "ftTimeStampOffset", "ftObject",
    "ftSingle"};

// Case-folded name -> ordinal; model texts convert thousands of names.
const QHash<QString, int> &NameIndex()
{
    static const QHash<QString, int> index = [] {
        QHash<QString, int> h;
        for (int i = 0; i < FieldTypeCount; ++i)
            h.insert(QString::fromLatin1(FieldTypeNames[i]).toCaseFolded(), i);
        return h;
    }();
    return index;
}

} // namespace

bool IsValidFieldType(int ordinal)
{
    return ordinal >= 0 && ordinal < FieldTypeCount;
}

bool IsIntegerType(TFieldType type)
{
    switch (type) {
    case ftSmallint:
    case ftInteger:
    case ftWord:
    case ftAutoInc:
    case ftLargeint:
    case ftLongWord:
    case ftShortint:
    case ftByte:
        return true;
    default:
        return false;
    }
}

QString FldTypeToStr(TFieldType type)
{
    if (!IsValidFieldType(type))
        return QString();
    return QString::fromLatin1(FieldTypeNames[type]);
}

TFieldType StrToFldType(const QString &name)
{
    const auto it = NameIndex().constFind(name.toCaseFolded());
    return it == NameIndex().constEnd() ? TFieldType(-1) : TFieldType(*it);
}

} // namespace vm20
