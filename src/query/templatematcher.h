#pragma once
// Matching a condition's SQL text against an operator's template ("@f" the
// field, "@1" and "@2" the values). The match is lenient the way SQL text is:
// letters compare without regard to case, blanks after a matched character
// do not count, and a quoted placeholder also takes an unquoted value
// ("@f = '@1'" reads both "a = 'x'" and "a = 5"). Inside a literal only a
// doubled quote is special: blanks, double quotes and brackets are its text.
#include <QString>
#include <QStringView>

namespace vm20 {

// What a match found: views into the matched text, empty when the template
// has no such placeholder. Placeholders other than these three are read (to
// step over their text) but not kept.
struct TTemplateVars
{
    QStringView F;
    QStringView V1;
    QStringView V2;
    // The value stood inside the template's quotes, so it is the inside of a
    // string literal (":x" there is text, not a parameter).
    bool V1Literal = false;
    bool V2Literal = false;

    void Clear() { *this = TTemplateVars(); }
    // "@f" (or "@F"), "@1", "@2"; any other name gives an empty view.
    QStringView Value(QStringView name) const;
};

// True when `text` has the shape of `templ`; `vars` is emptied first and then
// holds the placeholder values (on failure, whatever was read before the
// mismatch).
bool MatchSQLTemplate(QStringView templ, QStringView text, TTemplateVars &vars);

// The template with "@f", "@1" and "@2" replaced by the values in `vars`.
QString FillSQLTemplate(QStringView templ, const TTemplateVars &vars);

} // namespace vm20
