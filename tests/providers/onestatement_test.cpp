#include "providers/onestatement.h"

#include "model/errors.h"
#include "providers/sqlerrors.h"

#include <gtest/gtest.h>

namespace vm20 {
namespace {

TEST(CheckOneSelect, PassesOneSelectAndRefusesEverythingThatCouldBeMore)
{
    struct Row { int line; const char *sql; bool passes; const char *reason; };
    const Row rows[] = {
        {__LINE__, "SELECT a FROM t WHERE b = 'x; y'", true, "a separator inside a literal"},
        {__LINE__, "select a from t where b = 'it''s; fine'", true, "a doubled quote stays inside"},
        {__LINE__, "SELECT \"a;b\" FROM \"Order; Lines\"", true, "separators inside quoted names"},
        {__LINE__, "SELECT \"it's\" FROM t WHERE b = ';'", true, "a quote inside a quoted name opens no literal"},
        {__LINE__, "SELECT a -- ; not a separator\nFROM t", true, "a separator inside a line comment"},
        {__LINE__, "SELECT a /* ; */ FROM t", true, "a separator inside a block comment"},
        {__LINE__, "SELECT a -- see /* there\nFROM t", true, "a block marker inside a line comment"},
        {__LINE__, "SELECT a FROM t WHERE b = 'back\\slash'", true, "a plain literal may hold a backslash"},
        {__LINE__, "SELECT \"a--b\", \"c/*\" FROM t", true, "comment markers inside quoted names"},
        {__LINE__, "SELECT a FROM t; DROP TABLE t", false, "two statements"},
        {__LINE__, "SELECT \"a--b\"; DROP TABLE t", false, "a line comment marker inside a name hides nothing"},
        {__LINE__, "SELECT \"x'\"; DROP TABLE t; --'", false, "a quote inside a name hides nothing"},
        {__LINE__, "SELECT a FROM t;", false, "even a trailing separator"},
        {__LINE__, "SELECT a FROM t WHERE b = 'x'; DELETE FROM t; --'", false, "a literal closed early"},
        {__LINE__, "DELETE FROM t", false, "not a SELECT"},
        {__LINE__, "WITH d AS (DELETE FROM t RETURNING *) SELECT * FROM d", false, "a changing WITH"},
        {__LINE__, "", false, "nothing at all"},
        {__LINE__, "  -- only a comment", false, "nothing but a comment"},
        {__LINE__, "SELECT a FROM t WHERE b = 'open", false, "an unterminated literal"},
        {__LINE__, "SELECT a FROM t WHERE b = 'open''", false, "an unterminated literal ending in a doubled quote"},
        {__LINE__, "SELECT \"a FROM t", false, "an unterminated quoted name"},
        {__LINE__, "SELECT $$ ' $$; DROP TABLE t; $$ ' $$", false, "dollar quoting ends elsewhere"},
        {__LINE__, "SELECT E'\\''; DROP TABLE t; --'", false, "an escape string ends elsewhere"},
        {__LINE__, "SELECT 1 /* /* */ ' */; DROP TABLE t; -- '", false, "a nested comment ends elsewhere"},
        {__LINE__, "SELECT 1 /* never closed", false, "an unterminated comment"},
        {__LINE__, "SELECT 1\tFROM t\r\nWHERE a = 1", true, "tabs and line ends are blanks"},
        {__LINE__, "SELECT 1 FROM t WHERE a = 'x\x01'", false, "a control character, even inside a literal"},
    };
    for (const Row &row : rows) {
        const QString sql = QString::fromUtf8(row.sql);
        if (row.passes) {
            EXPECT_NO_THROW(CheckOneSelect(sql)) << "line " << row.line << ": " << row.reason;
            continue;
        }
        try {
            CheckOneSelect(sql);
            ADD_FAILURE() << "line " << row.line << ": passed, but " << row.reason;
        } catch (const ENDBInfoError &e) {
            EXPECT_EQ(e.ErrorCode(), dbieNotOneSelect) << "line " << row.line;
            EXPECT_TRUE(e.Message().startsWith(QStringLiteral("Refused to run a statement that is not one SELECT")))
                << "line " << row.line;
        }
    }
}

} // namespace
} // namespace vm20
