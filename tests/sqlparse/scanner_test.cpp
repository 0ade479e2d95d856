#include "sqlparse/scanner.h"

#include "common/printers.h"

#include <gtest/gtest.h>

namespace vm20 {
namespace {

// Every token of the source as "text(type)", joined with blanks.
QString Dump(TNScanner &s)
{
    QStringList out;
    for (s.FirstToken(); !s.EOS(); s.NextToken())
        out << QStringLiteral("%1(%2)").arg(s.GetTokStr()).arg(s.GetTokType());
    return out.join(QLatin1Char(' '));
}

TNScanner SqlScanner(const QStringList &lines)
{
    TNScanner s;
    s.SetSourceStyle(sstSQL);
    s.KeyWords() << QStringLiteral("select") << QStringLiteral("from") << QStringLiteral("where");
    s.SetSource(lines);
    return s;
}

struct TokenRow { int line; const char *why; QStringList source; QString tokens; };

TEST(TNScanner, CutsTheSourceIntoTheseTokens)
{
    const TokenRow rows[] = {
        {__LINE__, "keywords are type 2, other words type 1, all lower case",
         {"SELECT a.b FROM t"}, "select(2) a(1) .(3) b(1) from(2) t(1)"},
        {__LINE__, "a literal is one token and ends an operator", {"x<>'a b'"}, "x(1) <>(3) 'a b'(4)"},
        {__LINE__, "the double quote is a symbol, not a delimiter", {"\"My Table\""}, "\"(3) my(1) table(1) \"(3)"},
        {__LINE__, "two-character operators are single tokens", {"a<=b>=c!=d<e>f=g"},
         "a(1) <=(3) b(1) >=(3) c(1) !=(3) d(1) <(3) e(1) >(3) f(1) =(3) g(1)"},
        {__LINE__, "a blank splits an operator", {"a < > b ! = c"},
         "a(1) <(3) >(3) b(1) !(3) =(3) c(1)"},
        {__LINE__, "keywords inside a literal stay inside, doubled quotes kept",
         {"'it''s from and' where"}, "'it''s from and'(4) where(2)"},
        {__LINE__, "an unterminated literal runs to the end", {"a = 'abc", "from t"}, "a(1) =(3) 'abc\nfrom t(4)"},
        {__LINE__, "comments are skipped", {"a -- from b", "c /* x", "y */ d"},
         "a(1) c(1) d(1)"},
        {__LINE__, "an unterminated block comment swallows the rest", {"a /* b c"}, "a(1)"},
        {__LINE__, "a decimal is number, dot, number", {"12.50"}, "12(7) .(3) 50(7)"},
        {__LINE__, "underscores, digits, $ and # belong to words",
         {"Order_Lines2 $x #tmp 2nd"}, "order_lines2(1) $x(1) #tmp(1) 2nd(1)"},
        {__LINE__, "letters of any script are word characters", {"Größe=ÄPFEL"}, "größe(1) =(3) äpfel(1)"},
        {__LINE__, "other punctuation is one character per token",
         {"f(a,:p1)-b/c"}, "f(1) ((3) a(1) ,(3) :(3) p1(1) )(3) -(3) b(1) /(3) c(1)"},
        {__LINE__, "nothing but blanks and comments", {"  ", "-- x", "\t"}, ""},
    };
    for (const TokenRow &row : rows) {
        SCOPED_TRACE(::testing::Message() << "row at line " << row.line << ": " << row.why);
        TNScanner s = SqlScanner(row.source);
        EXPECT_EQ(Dump(s), row.tokens);
    }
}

TEST(TNScannerWalkTest, KeepsOffsetsWhenLowerCasingChangesTheLength)
{
    // The lower case of U+0130 is two characters in full case mapping; the
    // keyword after it must still be found at its own offset.
    TNScanner s = SqlScanner({QStringLiteral(u"\u0130D FROM t")});
    EXPECT_EQ(Dump(s), QStringLiteral(u"id(1) from(2) t(1)"));
    s.FirstToken();
    EXPECT_EQ(s.GetRealStr(), QStringLiteral(u"\u0130D"));
}

} // namespace
} // namespace vm20
