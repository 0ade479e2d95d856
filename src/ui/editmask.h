#pragma once
// The model's edit masks ("mask;save literals;blank", e.g. "!99/99/0000;1;_")
// as a Qt input mask.
#include <QString>

#include <vector>

namespace vm20 {

struct TQtEditMask
{
    QString inputMask;          // for QLineEdit::setInputMask, blank included
    bool saveLiterals = true;   // whether the plain text keeps the literals
    QChar blank = QLatin1Char('_');
    std::vector<bool> literal;  // per position of the shown text: a literal?
};

// Raises EDDLabelError for a mask that cannot be read (a "\" with nothing
// after it, a literal-saving section other than 0 or 1, a blank section of
// more than one character). An empty mask gives an empty input mask.
TQtEditMask TranslateEditMask(const QString &editMask);

// The text without the mask's literals and with blanks removed.
QString StripMaskLiterals(const TQtEditMask &mask, const QString &shownText);

} // namespace vm20
