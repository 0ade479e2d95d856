#include "query/sqldatevalue.h"

#include "support/dattime.h"

namespace vm20 {

namespace {

struct TForm
{
    const char *Pattern;
    int YearGroup;   // the run of digits that holds a four-digit year, -1 for none
};

constexpr TForm DateForms[] = {{"yyyy-mm-dd", 0}, {"mm/dd/yyyy", 2}, {"mm/dd/yy", -1},
                               {"dd.mm.yyyy", 2}, {"dd.mm.yy", -1}};
constexpr TForm DateTimeForms[] = {{"yyyy-mm-dd hh:nn:ss", 0}, {"mm/dd/yyyy hh:nn:ss", 2},
                                   {"mm/dd/yy hh:nn:ss", -1}, {"dd.mm.yyyy hh:nn:ss", 2},
                                   {"dd.mm.yy hh:nn:ss", -1}};

// The length of the run of digits number `group` (from 0) of the text.
qsizetype DigitRun(const QString &text, int group)
{
    qsizetype i = 0;
    const qsizetype n = text.size();
    for (int g = 0;; ++g) {
        while (i < n && !text[i].isDigit())
            ++i;
        const qsizetype start = i;
        while (i < n && text[i].isDigit())
            ++i;
        if (g == group || i == start)
            return i - start;
    }
}

// The date reader's "yyyy" also takes a shorter year. The two-digit forms
// come after the four-digit ones, so a four-digit form must not take "20"
// for the year 20.
template <std::size_t N>
bool ReadsAs(const QString &text, const TForm (&forms)[N], TDateTime &value)
{
    for (const TForm &form : forms) {
        if (form.YearGroup >= 0 && DigitRun(text, form.YearGroup) != 4)
            continue;
        if (TryStrToDateTimeByFormat(text, QLatin1String(form.Pattern), value))
            return true;
    }
    return false;
}

} // namespace

QString ProcessSQLDateValue(TFieldType fieldType, const QString &text)
{
    TDateTime value = 0;
    switch (fieldType) {
    case ftDate:
        if (!ReadsAs(text, DateForms, value))
            value = Date();
        break;
    case ftDateTime:
        // The form only decides whether the text is a date-time at all; the
        // value itself comes from the time reader.
        if (ReadsAs(text, DateTimeForms, value))
            value = StrToTime(text);
        else
            value = Date();
        break;
    default:
        return text;
    }
    return VmDateTimeToStr(value);
}

} // namespace vm20
