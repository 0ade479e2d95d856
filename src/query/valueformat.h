#pragma once
// A condition value as the user entered it becomes the SQL literal that
// replaces its placeholder: defaults for empty values, locale-independent
// numbers, dates in the model's or the dialect's form, doubled quotes.
// Conversion failures raise EConvertError with the offending text.
#include "model/fieldtype.h"
#include "query/sqlsyntax.h"

#include <QChar>
#include <QString>

namespace vm20 {

class TFilterCond;
class TNCustomDBStructure;

// The SQL text of value 1 (index 1) or value 2 (any other index).
QString ExtractValue(const TFilterCond &condition, int index);
QString ProcessScalarValue(const TFilterCond &condition, int index, const QString &text);
// A date or time value stored as a day count; `forSQL` false gives the
// locale's date-time text instead of a literal.
QString ProcessDateValue(const TNCustomDBStructure *model, TSQLSyntax syntax, TFieldType type,
                         const QString &text, bool forSQL);
QString ProcessFloatValue(TFieldType type, const QString &text);
// The identifier quote: 1 the opening, any other the closing one.
QChar GetQuoteSymbol(const TNCustomDBStructure *model, int which);

// The two value texts as the query text stores them (a parameter's value for
// a value that is a parameter) and back; the parameter marks must be set
// before LoadValues.
void SaveValues(const TFilterCond &condition, QString &value1, QString &value2);
void LoadValues(const QString &value1, const QString &value2, TFilterCond &condition);

// Whether the value's literal goes between single quotes: the model's quoted
// types, and the string types always.
bool IsQuotedValueType(const TNCustomDBStructure *model, TFieldType type);
bool IsDateType(TFieldType type);
bool IsFloatType(TFieldType type);

} // namespace vm20
