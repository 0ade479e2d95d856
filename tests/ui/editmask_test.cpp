#include "uitest.h"

#include "ui/ddlabelerror.h"
#include "ui/editmask.h"

#include "common/raises.h"

namespace vm20 {
namespace {

TEST(EditMask, TranslatesTheModelsMasksToQtInputMasks)
{
    struct Row { int line; QString mask; QString input; bool save; const char *why; };
    const Row rows[] = {
        {__LINE__, QStringLiteral("!99/99/0000;1;_"), QStringLiteral("00/00/9999;_"), true, "a date: optional and required digits swap letters"},
        {__LINE__, QStringLiteral("!\\(999\\)000-0000;0;_"), QStringLiteral("(000)999-9999;_"), false, "a phone number with escaped literals"},
        {__LINE__, QStringLiteral(">LL-aaa;0; "), QStringLiteral(">AA-nnn; "), false, "an upper-case code with a blank of its own"},
        {__LINE__, QStringLiteral("<>cC\\AL#"), QStringLiteral("!xX\\AA#;_"), true, "case off, any character, an escaped letter"},
        {__LINE__, QStringLiteral("00_00"), QStringLiteral("99 99;_"), true, "an underscore stands for a blank"},
        {__LINE__, QString(), QString(), true, "no mask"},
    };
    LocaleScope scope(QLocale(QLocale::English, QLocale::UnitedStates));
    for (const Row &r : rows) {
        SCOPED_TRACE(testing::Message() << "line " << r.line << ": " << r.why);
        const TQtEditMask mask = TranslateEditMask(r.mask);
        EXPECT_EQ(mask.inputMask, r.input);
        EXPECT_EQ(mask.saveLiterals, r.save);
    }
}

TEST(EditMask, DateSeparatorFollowsTheLocale)
{
    LocaleScope scope(QLocale(QLocale::German, QLocale::Germany));
    EXPECT_EQ(TranslateEditMask(QStringLiteral("99/99/0000")).inputMask, QStringLiteral("00.00.9999;_"));
}

TEST(EditMask, MalformedMasksRaise)
{
    struct Row { int line; QString mask; QString error; };
    const Row rows[] = {
        {__LINE__, QStringLiteral("00\\"), QStringLiteral("Invalid edit mask '00\\': \"\\\" at the end")},
        {__LINE__, QStringLiteral("00;2;_"), QStringLiteral("Invalid edit mask '00;2;_': the second section must be 0 or 1")},
        {__LINE__, QStringLiteral("00;1;__"), QStringLiteral("Invalid edit mask '00;1;__': the blank section must be one character")},
        {__LINE__, QStringLiteral("0;1;_;x"), QStringLiteral("Invalid edit mask '0;1;_;x': more than three sections")},
    };
    for (const Row &r : rows) {
        SCOPED_TRACE(testing::Message() << "line " << r.line);
        EXPECT_EQ(Raised<EDDLabelError>([&] { TranslateEditMask(r.mask); }), r.error);
    }
}

TEST(EditMask, StrippingKeepsOnlyWhatWasTyped)
{
    const TQtEditMask mask = TranslateEditMask(QStringLiteral("!\\(999\\)000-0000;0;_"));
    EXPECT_EQ(StripMaskLiterals(mask, QStringLiteral("(55_)123-4567")), QStringLiteral("551234567"));
}

} // namespace
} // namespace vm20
