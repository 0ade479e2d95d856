#include "common/printers.h"
#include "supporttest.h"
#include "support/exception.h"
#include "support/nstrings.h"

#include <gtest/gtest.h>

#include <limits>

using namespace vm20;

namespace {

class Numbers : public ::testing::Test
{
protected:
    // The locale-independent forms must not notice a decimal comma.
    ScopedLocale german{QLocale(QLocale::German, QLocale::Germany)};
};

TEST_F(Numbers, WritesFloatsInTheShortestFormThatReadsBack)
{
    const struct { int line; double value; const char *text; } rows[] = {
        {__LINE__, 3.6, "3.6"},
        {__LINE__, -0.0, "0"},
        {__LINE__, -1234567.25, "-1234567.25"},   // no group separators
        {__LINE__, 100000.0, "100000"},           // not "1e+05"
        {__LINE__, 1.0 / 3.0, "0.3333333333333333"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(testing::Message() << "line " << row.line);
        EXPECT_EQ(XFloatToStr(row.value), row.text);
        EXPECT_EQ(XStrToFloat(row.text, 99.0), row.value);
    }
    for (double v : {1e20, -3.5e-9, std::numeric_limits<double>::max(), std::numeric_limits<double>::denorm_min()})
        EXPECT_EQ(XStrToFloat(XFloatToStr(v), 0.0), v) << XFloatToStr(v).toStdString();
    EXPECT_EQ(XCurrToStr(1.23456), "1.2346");
    EXPECT_EQ(XCurrToStr(1e14 + 0.5), "100000000000000.5") << "no exponent for large amounts";
    EXPECT_EQ(XStrToCurr(" 2,71828 "), 2.7183);
}

TEST_F(Numbers, LenientReadersFallBackToTheDefault)
{
    const struct { int line; const char *text; double asFloat; int asInt; bool asBool; } rows[] = {
        {__LINE__, " 12 ", 12.0, 12, true},
        {__LINE__, "1,5", 1.5, -1, false},        // the comma tolerated as decimal point
        {__LINE__, "1,234.5", -1.0, -1, false},   // but never as a group separator
        {__LINE__, "", -1.0, -1, false},
        {__LINE__, "-7", -7.0, -7, true},
        {__LINE__, "99999999999", 99999999999.0, -1, true},   // too big for int, still a true Boolean
        {__LINE__, "TRUE", -1.0, -1, true},
        {__LINE__, "nan", -1.0, -1, false},
        {__LINE__, "1 2", -1.0, -1, false},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(testing::Message() << "line " << row.line << ": '" << row.text << "'");
        EXPECT_EQ(XStrToFloat(row.text, -1.0), row.asFloat);
        EXPECT_EQ(XStrToInt(row.text, -1), row.asInt);
        EXPECT_EQ(XStrToBool(row.text, false), row.asBool);
    }
    EXPECT_TRUE(XStrToBool("maybe", true));
}

TEST_F(Numbers, StrictParsersFollowTheCurrentLocaleAndNameTheText)
{
    EXPECT_EQ(StrToFloat(" 1,5 "), 1.5);
    EXPECT_EQ(StrToCurr("3,14159"), 3.1416);
    EXPECT_EQ(StrToInt(" -15 "), -15);
    EXPECT_EQ(FloatToStr(-1234.5), "-1234,5");
    ExpectConvertError([] { StrToFloat("1.5"); }, "'1.5' is not a valid floating point value");
    ExpectConvertError([] { StrToFloat("inf"); }, "'inf' is not a valid floating point value");
    ExpectConvertError([] { StrToCurr("1e300"); }, "'1e300' is not a valid floating point value");
    ExpectConvertError([] { StrToInt("1,0"); }, "'1,0' is not a valid integer value");
    ExpectConvertError([] { StrToInt("2147483648"); }, "'2147483648' is not a valid integer value");
    ScopedLocale c(QLocale::c());
    EXPECT_EQ(StrToFloat("1.5"), 1.5);
    EXPECT_THROW(StrToFloat("1,5"), EConvertError);
}

} // namespace
