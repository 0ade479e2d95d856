#include "query/sqldatevalue.h"

#include "support/dattime.h"

#include <QList>
#include <QStringView>

namespace vm20 {

namespace {

constexpr const char *DateForms[] = {"yyyy-mm-dd", "mm/dd/yyyy", "mm/dd/yy", "dd.mm.yyyy",
                                     "dd.mm.yy"};
constexpr const char *DateTimeForms[] = {"yyyy-mm-dd hh:nn:ss", "mm/dd/yyyy hh:nn:ss",
                                         "mm/dd/yy hh:nn:ss", "dd.mm.yyyy hh:nn:ss",
                                         "dd.mm.yy hh:nn:ss"};

// The runs of digits of a text, or of letters of a form, in order.
QList<QStringView> Groups(const QString &text, bool letters)
{
    QList<QStringView> groups;
    qsizetype start = -1;
    for (qsizetype i = 0; i <= text.size(); ++i) {
        const bool in = i < text.size() && (letters ? text[i].isLetter() : text[i].isDigit());
        if (in && start < 0)
            start = i;
        else if (!in && start >= 0) {
            groups.append(QStringView(text).sliced(start, i - start));
            start = -1;
        }
    }
    return groups;
}

// The date reader's "yyyy" also takes a shorter year. The two-digit forms
// come after the four-digit ones, so a four-digit form must not take "20"
// for the year 20.
bool YearFits(const QString &text, const QString &form)
{
    const QList<QStringView> formGroups = Groups(form, true);
    const qsizetype at = formGroups.indexOf(QStringView(u"yyyy"));
    if (at < 0)
        return true;
    const QList<QStringView> textGroups = Groups(text, false);
    return at < textGroups.size() && textGroups[at].size() == 4;
}

template <std::size_t N>
bool ReadsAs(const QString &text, const char *const (&forms)[N], TDateTime &value)
{
    for (const char *form : forms) {
        const QString pattern = QLatin1String(form);
        if (YearFits(text, pattern) && TryStrToDateTimeByFormat(text, pattern, value))
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
