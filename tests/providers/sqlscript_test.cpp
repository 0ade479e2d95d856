#include "providers/sqlscript.h"

#include "common/printers.h"

#include <gtest/gtest.h>

namespace vm20 {
namespace {

QStringList Texts(const std::vector<TSQLStatement> &statements)
{
    QStringList out;
    for (const TSQLStatement &s : statements)
        out << s.Text;
    return out;
}

TEST(SplitSQLScript, SplitsOnlyAtSemicolonsOutsideLiteralsNamesAndComments)
{
    struct Row { int line; const char *script; QStringList expected; const char *reason; };
    const Row rows[] = {
        {__LINE__, "SELECT 1; SELECT 2", {"SELECT 1", "SELECT 2"}, "last statement needs no ';'"},
        {__LINE__, "SELECT 'a;b'; SELECT 2;", {"SELECT 'a;b'", "SELECT 2"}, "';' inside a string"},
        {__LINE__, "SELECT 'it''s;'; SELECT 2", {"SELECT 'it''s;'", "SELECT 2"}, "doubled quote stays inside"},
        {__LINE__, "SELECT \"a;b\" FROM [x;y] JOIN `p;q`", {"SELECT \"a;b\" FROM [x;y] JOIN `p;q`"}, "quoted names"},
        {__LINE__, "SELECT 1 -- no; split\n; SELECT 2", {"SELECT 1 -- no; split", "SELECT 2"}, "line comment"},
        {__LINE__, "SELECT /* a; b */ 1; SELECT 2", {"SELECT /* a; b */ 1", "SELECT 2"}, "block comment"},
        {__LINE__, ";;  ; -- only a comment\n /* and another */ ;", {}, "empty pieces dropped"},
        {__LINE__, "SELECT 'open; SELECT 2", {"SELECT 'open; SELECT 2"}, "unterminated string runs to the end"},
        {__LINE__, "SELECT 1 /* open; ", {"SELECT 1 /* open;"}, "unterminated comment runs to the end"},
        {__LINE__, "SELECT 'Øster;Müller'; SELECT 'José'", {"SELECT 'Øster;Müller'", "SELECT 'José'"}, "non-ASCII text"},
        {__LINE__, "SELECT 1-2; SELECT 4/2", {"SELECT 1-2", "SELECT 4/2"}, "lone '-' and '/' are operators"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(Texts(SplitSQLScript(QString::fromUtf8(row.script))), row.expected)
            << "line " << row.line << ": " << row.reason;
}

TEST(SplitSQLScript, ReportsTheLineWhereEachStatementStarts)
{
    const QString script = QStringLiteral(
        "-- header\n"
        "\n"
        "CREATE TABLE t (\n"
        "  a TEXT DEFAULT 'x\n;y'\n"
        ");\n"
        "/* two\n lines */ INSERT INTO t VALUES ('1');\n"
        "\n"
        "  SELECT 1;");
    const auto statements = SplitSQLScript(script);
    ASSERT_EQ(statements.size(), 3u);
    EXPECT_EQ(statements[0].Line, 3);
    EXPECT_EQ(statements[1].Line, 8);
    EXPECT_EQ(statements[2].Line, 10);
}

} // namespace
} // namespace vm20
