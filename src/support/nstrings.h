#pragma once
// String helpers shared by every layer: name=value lines, comma text,
// sections of sectioned texts, locale-independent numbers, lenient parsers,
// quoting and the comparisons the model and the loader need.
#include <QChar>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <initializer_list>

namespace vm20 {

// --- name=value lines (the first "=" separates name and value) -------------
QString NameOfLine(const QString &line);            // text before the first "=" (the whole line without one)
QString ValueOfLine(const QString &line);           // text after the first "=" (empty without one)
int IndexOfName(const QStringList &lines, const QString &name);   // case-insensitive, -1 when absent
QString ValueOf(const QStringList &lines, const QString &name);   // empty when absent
bool HasName(const QStringList &lines, const QString &name);
void SetValueOf(QStringList &lines, const QString &name, const QString &value); // replace or append

// --- comma text, as the framework writes and reads it ----------------------
// Items are separated by ","; an item holding a character up to the blank, a
// comma or a double quote is written in double quotes with inner quotes doubled.
// Reading also treats unquoted blanks as separators and keeps empty items
// between two commas; a single empty item is written as "".
QString ListToCommaText(const QStringList &items);
QStringList ComposeCommaText(const QString &text);

// --- sections: "[Name]" header lines ---------------------------------------
bool IsSectionHeader(const QString &line, QString *name = nullptr);
// Reads the lines of section `section` searching from line `start`; the
// section ends at the next header or at an empty line. Fills `values` (cleared
// first) and returns the index of the line after the section, or -1 when the
// section is not found (then `values` is empty).
int XReadSLSectionValues(int start, const QStringList &lines, const QString &section, QStringList &values);

// An index of the section headers of a text, built in one pass, so that a
// reader can fetch any section by name without rescanning the text. Sections
// end at the next header; names compare without regard to case; of two
// sections with the same name the first one counts. The index keeps its own
// (implicitly shared) copy of the lines.
class TSectionIndex
{
public:
    explicit TSectionIndex(const QStringList &lines);
    bool Contains(const QString &section) const;
    // Lines between the header and the next header (all of them, blank ones included).
    QStringList Lines(const QString &section) const;
    // The same, dropping empty and blank-only lines: the key=value lines.
    QStringList Values(const QString &section) const;
    QStringList SectionNames() const;

private:
    struct Range { int first; int last; };
    QStringList FLines;
    QHash<QString, Range> FRanges;
    QStringList FOrder;
};

// --- numbers written without regard to the locale --------------------------
QString XFloatToStr(double value);        // shortest round-trip form, "." as decimal point: 3.6 -> "3.6"
double XStrToFloat(const QString &text, double defaultValue = 0.0);   // lenient: default on failure
QString XCurrToStr(double value);         // currency: at most 4 decimals, "." as decimal point
double XStrToCurr(const QString &text, double defaultValue = 0.0);
// Lenient integer: blanks around are allowed; anything else gives the default.
int XStrToInt(const QString &text, int defaultValue = 0);
// Lenient Boolean: "1"/"0", "true"/"false", "yes"/"no" (any case, any non-zero
// integer is true); anything else gives the default.
bool XStrToBool(const QString &text, bool defaultValue = false);
QString XBoolToStr(bool value);           // "1" or "0"

// --- the runtime's strict conversions (raise EConvertError with the text) ---
int StrToInt(const QString &text);                 // "'%s' is not a valid integer value"
double StrToFloat(const QString &text);            // current locale; "'%s' is not a valid floating point value"
double StrToCurr(const QString &text);             // current locale, rounded to 4 decimals
QString IntToStr(int value);
// Current locale, shortest round-trip form, no group separators: 1.5 -> "1,5" in German.
QString FloatToStr(double value);

// --- quoting ----------------------------------------------------------------
QString QuotedStr(const QString &text, QChar quote = QLatin1Char('\''));   // doubles inner quotes
QString DequotedStr(const QString &text, QChar quote = QLatin1Char('\'')); // reverse; unquoted text unchanged

// --- comparisons -------------------------------------------------------------
bool SameText(const QString &a, const QString &b);   // Unicode case folding
// Case-insensitive comparison that ignores every occurrence of the two symbols.
bool SameTextIgnoring(const QString &a, const QString &b, QChar symbol1, QChar symbol2);
// Equal when the texts differ only in blanks (blanks removed, exact comparison).
bool EqualToSpaces(const QString &a, const QString &b);
bool IsSpace(QChar c);
// Letter or underscore first, then letters, digits and underscores.
bool IsValidIdent(const QString &text);

// --- message formatting -----------------------------------------------------
// Fills %s and %d (and %%) of a message in order, as the framework's format
// function does for the message table.
QString Format(const QString &pattern, std::initializer_list<QVariant> args);

} // namespace vm20
