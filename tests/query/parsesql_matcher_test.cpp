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

struct MatchRow { int line; const char *templ, *text; bool matches; const char *f, *v1, *v2, *reason; };

TEST(MatchSQLTemplate, ReadsFieldAndValuesOrRefuses)
{
    const MatchRow rows[] = {
        {__LINE__, "@f = '@1'", "t.Name = 'Bob'", true, "t.Name", "Bob", "", "quotes enclose the value"},
        {__LINE__, "@f = '@1'", "t.Id = 5", true, "t.Id", "5", "", "a quoted placeholder, no quotes"},
        {__LINE__, "@f = '@1'", "t.Name = 'O''Brien'", true, "t.Name", "O''Brien", "", "a doubled quote"},
        {__LINE__, "@f = '@1'", "T.NAME   =   'x'", true, "T.NAME", "x", "", "case and blanks"},
        {__LINE__, "@f = '@1'", "x = '5\" screen'", true, "x", "5\" screen", "", "a double quote inside a literal is text"},
        {__LINE__, "@f = '@1'", "x = 'a(b'", true, "x", "a(b", "", "so is a bracket"},
        {__LINE__, "@f = '@1'", "x = '  a '", true, "x", "  a ", "", "blanks after the opening quote are the value's"},
        {__LINE__, "@f like '%@1%'", "x like '%a''\"b%'", true, "x", "a''\"b", "", "a doubled quote goes on"},
        {__LINE__, "@f like '@1%'", "x like 'ab'", false, "", "", "", "the literal ends before the template's %"},
        {__LINE__, "@f = '@1'", "\"A B\".\"C D\" = 5", true, "\"A B\".\"C D\"", "5", "",
         "a blank inside a quoted name"},
        {__LINE__, "@f = '@1'", "x = 'a' and y", false, "", "", "", "text left over"},
        {__LINE__, "@f is null", "x is", false, "", "", "", "text ends first"},
        {__LINE__, "@f in (@1)", "c.Name in ('a)','b')", true, "c.Name", "'a)','b'", "", "a bracket inside quotes"},
        {__LINE__, "@f in (@1)", "c.ID in (select id from t where x in (1))", true, "c.ID",
         "select id from t where x in (1)", "", "nested brackets"},
        {__LINE__, "@f between '@1' and '@2'", "n between f(1 and 2) and 3", true, "n", "f(1 and 2)",
         "3", "an unquoted value, the stop inside brackets"},
        {__LINE__, "@f like '@1%'", "x like :P", true, "x", ":P", "",
         "an unquoted value skips to the template's closing quote"},
        {__LINE__, "NOT (@f in (@1))", "not(c.ID in (1,2))", true, "c.ID", "1,2", "",
         "a blank after a matched character"},
        {__LINE__, "@f < '@1'", "x <= 5", true, "x", "= 5", "", "why longer templates go first"},
        {__LINE__, "@F = @1 and @3", "x = 1 and 2", true, "x", "1", "", "@F, and @3 not kept"},
    };
    for (const MatchRow &row : rows) {
        TTemplateVars vars;   // views into `text`
        const QString text = QString::fromUtf8(row.text);
        const bool matches = MatchSQLTemplate(QString::fromUtf8(row.templ), text, vars);
        EXPECT_EQ(matches, row.matches) << "line " << row.line << ": " << row.reason;
        if (matches && row.matches) {
            EXPECT_EQ(QStringList({vars.F.toString(), vars.V1.toString(), vars.V2.toString()}),
                      QStringList({row.f, row.v1, row.v2}))
                << "line " << row.line << ": " << row.reason;
        }
    }
    TTemplateVars vars;
    MatchSQLTemplate(u"@f between '@1' and '@2'", u"n between 1 and 5", vars);
    ASSERT_TRUE(MatchSQLTemplate(u"@f is null", u"n is null", vars));
    EXPECT_TRUE(vars.V1.isEmpty() && vars.V2.isEmpty()) << "every match starts empty";
    EXPECT_EQ(FillSQLTemplate(u"@f <> '@1' @2 @t", vars), "n <> ''  @t");
    ASSERT_TRUE(MatchSQLTemplate(u"@f = '@1'", u"n = ':p'", vars));
    EXPECT_TRUE(vars.V1Literal) << "a quoted value is text, whatever it starts with";
    ASSERT_TRUE(MatchSQLTemplate(u"@f = '@1'", u"n = :p", vars));
    EXPECT_FALSE(vars.V1Literal) << "an unquoted one may be a parameter";
}

TEST(ProcessSQLDateValue, ReadsEachDateFormOrFallsBack)
{
    const QString march4 = VmDateTimeToStr(EncodeDate(2020, 3, 4));
    const QString today = VmDateTimeToStr(Date());
    const struct { TFieldType type; const char *text; QString expected; } rows[] = {
        {ftDate, "2020-03-04", march4},  {ftDate, "03/04/20", march4},
        {ftDate, "04.03.2020", march4},  {ftDate, "2020-13-45", today},
        {ftDateTime, "someday", today},  {ftTime, "10:20:30", "10:20:30"},
        {ftTimeStamp, "2020-03-04 10:20:30", "2020-03-04 10:20:30"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(ProcessSQLDateValue(row.type, QString::fromUtf8(row.text)), row.expected) << row.text;
}

} // namespace
