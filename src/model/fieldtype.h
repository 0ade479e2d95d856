#pragma once
// The column type vocabulary of the whole library: operators say which types
// they apply to, fields carry one, text formats store names or ordinals.
#include "support/typeset.h"

#include <QString>

namespace vm20 {

// A fixed underlying type, so that the "unknown" value -1 is a valid value.
enum TFieldType : int {
    ftUnknown, ftString, ftSmallint, ftInteger, ftWord, ftBoolean, ftFloat,
    ftCurrency, ftBCD, ftDate, ftTime, ftDateTime, ftBytes, ftVarBytes,
    ftAutoInc, ftBlob, ftMemo, ftGraphic, ftFmtMemo, ftParadoxOle, ftDBaseOle,
    ftTypedBinary, ftCursor, ftFixedChar, ftWideString, ftLargeint, ftADT,
    ftArray, ftReference, ftDataSet, ftOraBlob, ftOraClob, ftVariant,
    ftInterface, ftIDispatch, ftGuid, ftTimeStamp, ftFMTBcd, ftFixedWideChar,
    ftWideMemo, ftOraTimeStamp, ftOraInterval, ftLongWord, ftShortint, ftByte,
    ftExtended, ftConnection, ftParams, ftStream, ftTimeStampOffset, ftObject,
    ftSingle
};

constexpr int FieldTypeCount = ftSingle + 1;

using TFieldTypes = TSet<TFieldType>;

// "ftString" and back. Unknown ordinals give an empty text; unknown names
// (compared without regard to case) give TFieldType(-1), which callers test.
QString FldTypeToStr(TFieldType type);
TFieldType StrToFldType(const QString &name);
bool IsValidFieldType(int ordinal);
// The whole-number types: their values are digits with an optional sign.
bool IsIntegerType(TFieldType type);

} // namespace vm20
