#pragma once
// Which typed characters a text-entry label lets through, by value type.
#include <QChar>
#include <QString>

namespace vm20 {

enum TValueType : int { vtInteger, vtFloat, vtString };

// Numbers take digits, "-", and the double quote and comma that a list of
// quoted values needs; floats also the locale's decimal separator.
bool KeyAllowed(TValueType type, QChar c, QChar decimalPoint);

// The text without the characters KeyAllowed refuses (pasted text).
QString FilterText(TValueType type, const QString &text, QChar decimalPoint);

} // namespace vm20
