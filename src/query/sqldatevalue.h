#pragma once
// A date or time literal read from SQL text becomes the stored form of a
// condition value: the day count written by VmDateTimeToStr.
#include "model/fieldtype.h"

#include <QString>

namespace vm20 {

// ftDate: the first of the accepted date forms that reads the text, else
// today. ftDateTime: when one of the accepted date-time forms reads the text,
// the value is nevertheless taken from StrToTime of the whole text (which
// raises EConvertError for anything that is not a time); else today. Any
// other type: the text unchanged.
QString ProcessSQLDateValue(TFieldType fieldType, const QString &text);

} // namespace vm20
