#include "sqlparse/sqlparser.h"

#include "common/printers.h"
#include "common/raises.h"

#include <gtest/gtest.h>

namespace vm20 {
namespace {

// The message of the ESQLParserError that parsing raises, or "no error".
QString ParseError(const QStringList &sql)
{
    TNSQLParser parser;
    parser.SetSQL(sql);
    return Raised<ESQLParserError>([&] { parser.Parse(); });
}

QString Nested(int depth, const QString &open, const QString &inner, const QString &close)
{
    return open.repeated(depth) + inner + close.repeated(depth);
}

struct ErrorRow { int line; const char *why; QStringList sql; QString message; };

const QString Wrong = QStringLiteral("Wrong SQL statement\r\nLine:");
const QString Lost = QStringLiteral("Lost bracket\r\nLine:");
const QString Deep = QStringLiteral("Brackets nested too deeply (more than 200)\r\nLine:");

TEST(TNSQLParserError, RaisesThisMessageWithTheLine)
{
    const ErrorRow rows[] = {
        {__LINE__, "nothing at all", {}, Wrong + "1"},
        {__LINE__, "not a SELECT", {"", "update t set a = 1"}, Wrong + "2"},
        {__LINE__, "no FROM; the end reports the last token's line", {"select a,", "b", ""}, Wrong + "2"},
        {__LINE__, "WHERE where FROM belongs", {"select a", "", "where a = 1"}, Wrong + "3"},
        {__LINE__, "a group left open", {"select a from t", "where (a = 1", "  and b = 2"}, Lost + "3"},
        {__LINE__, "a group closed by something else", {"select a from t where (a = 1 b"}, Lost + "1"},
        {__LINE__, "ORDER without BY", {"select a from t", "order", "a"}, Wrong + "3"},
        {__LINE__, "OUTER without JOIN", {"select * from a left outer b on a.x = b.x"}, Wrong + "1"},
        {__LINE__, "BETWEEN without AND", {"select a from t where d between 1", "or 2"}, Wrong + "2"},
        {__LINE__, "an unterminated quoted alias", {"select a as \"x from t"}, Wrong + "1"},
        {__LINE__, "an unterminated literal would swallow the rest",
         {"select a from t", "where a = 'x", "and b = 1"}, "Unterminated string literal\r\nLine:2"},
        {__LINE__, "a doubled quote does not end a literal", {"select a from t where a = 'it''"},
         "Unterminated string literal\r\nLine:1"},
        {__LINE__, "a literal ending in a doubled quote is whole", {"select a from t where a = 'it'''"}, "no error"},
        {__LINE__, "a lone quote", {"select a from t where a = '"}, "Unterminated string literal\r\nLine:1"},
        {__LINE__, "a condition without operator", {"select a from t where", "a"}, Wrong + "2"},
        {__LINE__, "an unknown ORDER BY column", {"select a from t order by", "b"}, Wrong + "2"},
        {__LINE__, "a column among positions", {"select a, b from t order by 1, b"}, Wrong + "1"},
        {__LINE__, "a bracket left open in the select list", {"select count(x", "from t"}, Wrong + "2"},
        {__LINE__, "200 nested groups are fine",
         {"select a from t where " + Nested(200, "(", "a = 1", ")")}, "no error"},
        {__LINE__, "201 nested groups are not",
         {"select a from t where " + Nested(201, "(", "a = 1", ")")}, Deep + "1"},
        {__LINE__, "groups and operand brackets count together",
         {"select a from t where " + Nested(100, "(", "a in " + Nested(101, "(", "1", ")"), ")")}, Deep + "1"},
        {__LINE__, "200 operand brackets are fine",
         {"select a from t where a in " + Nested(200, "(", "1", ")")}, "no error"},
        {__LINE__, "a hundred thousand open brackets stop early",
         {"select a from t where", Nested(100000, "not (", "a", "")}, Deep + "2"},
    };
    for (const ErrorRow &row : rows) {
        SCOPED_TRACE(::testing::Message() << "row at line " << row.line << ": " << row.why);
        EXPECT_EQ(ParseError(row.sql), row.message);
    }
}

TEST(TNSQLParserFailureTest, ReportsABadOrderByPositionAsARuntimeErrorNotAParserError)
{
    for (const char *sql : {"select a from t order by 2", "select a from t order by 0"}) {
        TNSQLParser parser;
        parser.SetSQL({QString::fromUtf8(sql)});
        EXPECT_THROW(parser.Parse(), EListError) << sql;
    }
    TNSQLParser parser;
    parser.SetSQL({"select a from t order by 99999999999999"});
    EXPECT_THROW(parser.Parse(), EConvertError) << "too large for a position";
}

} // namespace
} // namespace vm20
