// The template matcher and the date literals of the SQL loader: pure
// functions, checked row by row.
#include "common/printers.h"
#include "query/sqldatevalue.h"
#include "query/templatematcher.h"
#include "support/dattime.h"
#include "support/exception.h"

#include <gtest/gtest.h>

using namespace vm20;

namespace {

struct MatchRow
{
    int line;
    const char *templ;
    const char *text;
    bool matches;
    const char *f;
    const char *v1;
    const char *v2;
    const char *reason;
};

TEST(MatchSQLTemplate, ReadsFieldAndValuesOrRefuses)
{
    const MatchRow rows[] = {
        {__LINE__, "@f = '@1'", "t.Name = 'Bob'", true, "t.Name", "Bob", "",
         "the template's quotes enclose the value"},
        {__LINE__, "@f = '@1'", "t.Id = 5", true, "t.Id", "5", "",
         "a quoted placeholder also takes an unquoted value"},
        {__LINE__, "@f = '@1'", "t.Name = 'O''Brien'", true, "t.Name", "O''Brien", "",
         "a doubled quote does not end the value"},
        {__LINE__, "@f = '@1'", "t.Name = ''", true, "t.Name", "", "", "an empty literal"},
        {__LINE__, "@f = '@1'", "t.Name = ''''", true, "t.Name", "''", "",
         "a literal of one quote"},
        {__LINE__, "@f = '@1'", "T.NAME   =   'x'", true, "T.NAME", "x", "",
         "letter case and blanks after a matched character do not count"},
        {__LINE__, "@f = '@1'", "x = 'say \"hi\"'", true, "x", "say \"hi\"", "",
         "paired double quotes inside a literal"},
        {__LINE__, "@f = '@1'", "x = '5\" screen'", false, "", "", "",
         "an unpaired double quote opens a quoted part that swallows the closing quote"},
        {__LINE__, "@f = '@1'", "x = 'a(b'", false, "", "", "",
         "an unclosed bracket hides the closing quote"},
        {__LINE__, "@f = '@1'", "\"Order Lines\".\"Unit Price\" = 5", true,
         "\"Order Lines\".\"Unit Price\"", "5", "", "a blank inside a quoted name is not the stop"},
        {__LINE__, "@f = '@1'", "SUM(o.Total) = 5", true, "SUM(o.Total)", "5", "",
         "a function call as the field"},
        {__LINE__, "@f = '@1'", "x = 'a' and y", false, "", "", "",
         "text left over after the template"},
        {__LINE__, "@f is null", "x is", false, "", "", "", "text ends before the template"},
        {__LINE__, "@f in (@1)", "c.ID in (1,2,3)", true, "c.ID", "1,2,3", "",
         "a list ends at its closing bracket"},
        {__LINE__, "@f in (@1)", "c.Name in ('a)','b')", true, "c.Name", "'a)','b'", "",
         "a bracket inside quotes does not end the list"},
        {__LINE__, "@f in (@1)", "c.ID in (select id from t where x in (1))", true, "c.ID",
         "select id from t where x in (1)", "", "nested brackets are counted"},
        {__LINE__, "@f between '@1' and '@2'", "d between '2020-01-01' and '2020-12-31'", true, "d",
         "2020-01-01", "2020-12-31", "two quoted values"},
        {__LINE__, "@f between '@1' and '@2'", "n between 1 and 5", true, "n", "1", "5",
         "two unquoted values stop at the blank after the template's quote"},
        {__LINE__, "@f between '@1' and '@2'", "n between f(1 and 2) and 3", true, "n", "f(1 and 2)",
         "3", "the stop character inside brackets does not end the value"},
        {__LINE__, "@f like '@1%'", "x like :P", true, "x", ":P", "",
         "an unquoted value skips to the template's closing quote, past the wildcard"},
        {__LINE__, "@f like '%@1%'", "x like 'abc%'", false, "", "", "",
         "the template's leading wildcard is missing"},
        {__LINE__, "not(@f like '@1%')", "not(x like 'a%')", true, "x", "a", "",
         "a negated like template"},
        {__LINE__, "NOT (@f in (@1))", "not(c.ID in (1,2))", true, "c.ID", "1,2", "",
         "the template's blank after NOT is skipped"},
        {__LINE__, "@f >'@1'", "x > 5", true, "x", "5", "", "the text's blank after > is skipped"},
        {__LINE__, "@f < '@1'", "x <= 5", true, "x", "= 5", "",
         "a shorter template takes the rest: why longer templates are tried first"},
        {__LINE__, "@F = @1", "x = 1", true, "x", "1", "", "the field placeholder in upper case"},
        {__LINE__, "@f = @1 and @3", "x = 1 and 2", true, "x", "1", "",
         "a placeholder that is not kept still reads its text"},
    };
    for (const MatchRow &row : rows) {
        TTemplateVars vars;
        const QString templ = QString::fromUtf8(row.templ);
        const QString text = QString::fromUtf8(row.text);
        const bool matches = MatchSQLTemplate(templ, text, vars);
        EXPECT_EQ(matches, row.matches) << "line " << row.line << ": " << row.reason;
        if (!matches || !row.matches)
            continue;
        EXPECT_EQ(vars.F.toString(), QString::fromUtf8(row.f)) << "line " << row.line;
        EXPECT_EQ(vars.V1.toString(), QString::fromUtf8(row.v1)) << "line " << row.line;
        EXPECT_EQ(vars.V2.toString(), QString::fromUtf8(row.v2)) << "line " << row.line;
    }
}

TEST(MatchSQLTemplate, StartsEveryMatchWithEmptyValues)
{
    TTemplateVars vars;
    ASSERT_TRUE(MatchSQLTemplate(u"@f between '@1' and '@2'", u"n between 1 and 5", vars));
    ASSERT_TRUE(MatchSQLTemplate(u"@f is null", u"n is null", vars));
    EXPECT_TRUE(vars.V1.isEmpty());
    EXPECT_TRUE(vars.V2.isEmpty());
}

TEST(FillSQLTemplate, ReplacesKnownPlaceholdersAndKeepsTheRest)
{
    TTemplateVars vars;
    ASSERT_TRUE(MatchSQLTemplate(u"@f != '@1'", u"t.Name != 'O''Brien'", vars));
    EXPECT_EQ(FillSQLTemplate(u"@f <> '@1'", vars), "t.Name <> 'O''Brien'");
    EXPECT_EQ(FillSQLTemplate(u"@t.@f = @2 or @3", vars), "@t.t.Name =  or @3");
}

struct DateRow
{
    int line;
    TFieldType type;
    const char *text;
    const char *reason;
};

TEST(ProcessSQLDateValue, ReadsEveryAcceptedDateForm)
{
    const QString expected = VmDateTimeToStr(EncodeDate(2020, 3, 4));
    const DateRow rows[] = {
        {__LINE__, ftDate, "2020-03-04", "ISO"},
        {__LINE__, ftDate, "03/04/2020", "month first, four-digit year"},
        {__LINE__, ftDate, "03/04/20", "month first, two-digit year"},
        {__LINE__, ftDate, "04.03.2020", "day first, four-digit year"},
        {__LINE__, ftDate, "04.03.20", "day first, two-digit year"},
    };
    for (const DateRow &row : rows)
        EXPECT_EQ(ProcessSQLDateValue(row.type, QString::fromUtf8(row.text)), expected)
            << "line " << row.line << ": " << row.reason;
}

TEST(ProcessSQLDateValue, FallsBackToTodayOrLeavesTheTextAlone)
{
    const QString today = VmDateTimeToStr(Date());
    const DateRow rows[] = {
        {__LINE__, ftDate, "2020-13-45", "not a date"},
        {__LINE__, ftDate, "2020-03-04 10:20:30", "a date with a time is no date form"},
        {__LINE__, ftDateTime, "someday", "not a date-time"},
    };
    for (const DateRow &row : rows)
        EXPECT_EQ(ProcessSQLDateValue(row.type, QString::fromUtf8(row.text)), today)
            << "line " << row.line << ": " << row.reason;
    EXPECT_EQ(ProcessSQLDateValue(ftTime, "10:20:30"), "10:20:30");
    EXPECT_EQ(ProcessSQLDateValue(ftTimeStamp, "2020-03-04 10:20:30"), "2020-03-04 10:20:30");
}

TEST(ProcessSQLDateValue, TakesADateTimeThatFitsAFormFromTheTimeReader)
{
    // The form only admits the text; the time reader then refuses a date.
    EXPECT_THROW(ProcessSQLDateValue(ftDateTime, "2020-03-04 10:20:30"), EConvertError);
}

} // namespace
