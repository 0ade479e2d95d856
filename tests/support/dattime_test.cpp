#include "common/printers.h"
#include "supporttest.h"
#include "support/dattime.h"
#include "support/exception.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace vm20;

namespace {

class DateTime : public ::testing::Test
{
protected:
    ScopedLocale english{QLocale(QLocale::English, QLocale::UnitedStates)};
    // 2021-03-04 15:07:09.012, a Thursday
    const TDateTime sample = EncodeDate(2021, 3, 4) + EncodeTime(15, 7, 9, 12);
};

TEST_F(DateTime, CountsDaysFromTheEndOf1899)
{
    const struct { int line; const char *why; QDateTime when; TDateTime value; } rows[] = {
        {__LINE__, "the epoch", QDateTime(QDate(1899, 12, 30), QTime(0, 0)), 0.0},
        {__LINE__, "noon is half a day", QDateTime(QDate(1900, 1, 1), QTime(12, 0)), 2.5},
        {__LINE__, "before the epoch the time still counts forward", QDateTime(QDate(1899, 12, 29), QTime(6, 0)), -1.25},
        {__LINE__, "milliseconds survive", QDateTime(QDate(2000, 1, 1), QTime(0, 0, 0, 1)), 36526.0 + 1.0 / 86400000},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(testing::Message() << "line " << row.line << ": " << row.why);
        EXPECT_DOUBLE_EQ(QDateTimeToDateTime(row.when), row.value);
        EXPECT_EQ(DateTimeToQDateTime(row.value), row.when);
    }
    EXPECT_EQ(DateTimeToQDateTime(2.0 - 1e-12), QDateTime(QDate(1900, 1, 1), QTime(0, 0))) << "rounds up to the next day";
    EXPECT_FALSE(DateTimeToQDateTime(1e300).isValid());
    EXPECT_THROW(EncodeDate(2021, 2, 29), EConvertError);
    EXPECT_THROW(EncodeTime(24, 0, 0), EConvertError);
}

TEST_F(DateTime, StoredFormFollowsTheLocaleDecimalPoint)
{
    EXPECT_EQ(VmDateTimeToStr(44928.5), "44928.5");
    EXPECT_EQ(VmStrToDateTime(" 44928.25 "), 44928.25);
    ScopedLocale german(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(VmDateTimeToStr(1.5), "1,5");
    EXPECT_EQ(VmDateTimeToStr(44928.0), "44928") << "no group separator";
    EXPECT_EQ(VmStrToDateTime(VmDateTimeToStr(sample)), sample);
    EXPECT_THROW(VmStrToDateTime("2021-03-04"), EConvertError);
}

TEST_F(DateTime, FormatsByPatternLetters)
{
    const struct { int line; const char *why; QString format; QString expected; } rows[] = {
        {__LINE__, "mm right after hh is minutes", "hh:mm", "15:07"},
        {__LINE__, "mm after minutes is the month again", "hh:mm mm", "15:07 03"},
        {__LINE__, "a quoted literal does not break the rule", "hh' h 'mm", "15 h 07"},
        {__LINE__, "without an hour mm is the month", "dd.mm.yy", "04.03.21"},
        {__LINE__, "12-hour clock in the pattern's case", "h:nn AM/PM", "3:07 PM"},
        {__LINE__, "names from the locale", "ddd dddd mmm mmmm", "Thu Thursday Mar March"},
        {__LINE__, "double-quoted literal keeps pattern letters", "\"yyyy\" yyyy", "yyyy 2021"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(testing::Message() << "line " << row.line << ": " << row.why);
        EXPECT_EQ(FormatDateTime(row.format, sample), row.expected);
    }
    EXPECT_EQ(FormatDateTime("h am/pm", EncodeTime(0, 30, 0)), "12 am") << "midnight is 12 am";
}

TEST_F(DateTime, ParsesByPatternOrRefuses)
{
    const struct {
        int line;
        const char *why;
        QString text;
        QString format;
        QDateTime expected;   // invalid: the text must be refused
    } rows[] = {
        {__LINE__, "US date, unpadded", "3/4/2021", "mm/dd/yyyy", QDateTime(QDate(2021, 3, 4), QTime(0, 0))},
        {__LINE__, "yy below 50 is this century", "03/04/49", "mm/dd/yy", QDateTime(QDate(2049, 3, 4), QTime(0, 0))},
        {__LINE__, "yy from 50 is the last one", "04.03.50", "dd.mm.yy", QDateTime(QDate(1950, 3, 4), QTime(0, 0))},
        {__LINE__, "date and time", "2021-03-04 15:07:09", "yyyy-mm-dd hh:nn:ss", QDateTime(QDate(2021, 3, 4), QTime(15, 7, 9))},
        {__LINE__, "mm after hh reads minutes", "15:07", "hh:mm", QDateTime(QDate(1899, 12, 30), QTime(15, 7))},
        {__LINE__, "12-hour clock", "12:30 am", "hh:nn AM/PM", QDateTime(QDate(1899, 12, 30), QTime(0, 30))},
        {__LINE__, "no 30th of February", "2021-02-30", "yyyy-mm-dd", {}},
        {__LINE__, "a four-digit year is too long for yy", "03/04/2021", "mm/dd/yy", {}},
        {__LINE__, "trailing text", "2021-03-04x", "yyyy-mm-dd", {}},
        {__LINE__, "13 o'clock pm", "13:00 pm", "hh:nn am/pm", {}},
        {__LINE__, "names are not read", "Mar 4 2021", "mmm d yyyy", {}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(testing::Message() << "line " << row.line << ": " << row.why);
        TDateTime value = -7.0;
        const bool ok = TryStrToDateTimeByFormat(row.text, row.format, value);
        EXPECT_EQ(ok, row.expected.isValid());
        if (row.expected.isValid())
            EXPECT_EQ(DateTimeToQDateTime(value), row.expected);
        else
            EXPECT_EQ(value, -7.0) << "a refused text leaves the value alone";
    }
}

TEST_F(DateTime, LocaleTextsReadBackUnderSeveralLocales)
{
    const TDateTime value = EncodeDate(2023, 1, 2) + EncodeTime(15, 4, 0);
    for (const QLocale &locale : {QLocale(QLocale::English, QLocale::UnitedStates), QLocale(QLocale::German, QLocale::Germany),
                                  QLocale(QLocale::French, QLocale::France), QLocale::c()}) {
        ScopedLocale scoped(locale);
        SCOPED_TRACE(locale.name().toStdString());
        EXPECT_EQ(StrToDate(DateToStr(value)), std::floor(value)) << "two-digit years must stay in this century";
        EXPECT_EQ(StrToTime(TimeToStr(value)), EncodeTime(15, 4, 0));
        EXPECT_EQ(StrToDateTime(DateTimeToStr(value)), value);
        EXPECT_EQ(StrToDateTime(DateTimeToStr(std::floor(value))), std::floor(value));
    }
}

TEST_F(DateTime, LocaleParsersAlsoTakeIsoAndNameTheBadText)
{
    EXPECT_EQ(StrToDate("2023-01-02"), 44928.0);
    EXPECT_EQ(StrToTime("06:00"), 0.25);
    EXPECT_EQ(StrToDateTime("2023-01-02 06:00:00"), 44928.25);
    ExpectConvertError([] { StrToDate("2023-02-30"); }, "'2023-02-30' is not a valid date");
    ExpectConvertError([] { StrToTime("2023-01-02 06:00:00"); }, "'2023-01-02 06:00:00' is not a valid time");
    ExpectConvertError([] { StrToDateTime("tomorrow"); }, "'tomorrow' is not a valid date and time");
}

} // namespace
