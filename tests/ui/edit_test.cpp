#include "uitest.h"

#include "ui/dropdownedit.h"
#include "ui/dropdownmaskedit.h"
#include "ui/dropdowndatetimeedit.h"
#include "support/exception.h"

#include <QLineEdit>

namespace vm20 {
namespace {

using DropDownEdit = HostTest;

TEST_F(DropDownEdit, KeyFilterLetsThroughWhatEachValueTypeTakes)
{
    struct Row { int line; QLocale locale; TValueType type; QString typed; QString value; const char *why; };
    const QLocale german(QLocale::German, QLocale::Germany);
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    const Row rows[] = {
        {__LINE__, english, vtInteger, QStringLiteral("1,5"), QStringLiteral("1,5"), "a comma separates listed values"},
        {__LINE__, english, vtInteger, QStringLiteral("a-1.5\""), QStringLiteral("-15\""), "letters and the point are swallowed"},
        {__LINE__, english, vtFloat, QStringLiteral("1.5e"), QStringLiteral("1.5"), "the locale's separator is a point"},
        {__LINE__, german, vtFloat, QStringLiteral("1.5"), QStringLiteral("15"), "under German the point is no separator"},
        {__LINE__, german, vtFloat, QStringLiteral("-2,25"), QStringLiteral("-2,25"), "under German the comma is"},
        {__LINE__, german, vtString, QStringLiteral("a.b"), QStringLiteral("a.b"), "strings take anything"},
    };
    for (const Row &r : rows) {
        SCOPED_TRACE(testing::Message() << "line " << r.line << ": " << r.why);
        LocaleScope scope(r.locale);
        auto *label = Place<TDropDownEdit>(10, 10);
        label->SetValueType(r.type);
        label->DropDown();
        auto *editor = static_cast<QLineEdit *>(label->EditControl());
        editor->clear();
        QTest::keyClicks(editor, r.typed);
        QTest::keyClick(editor, Qt::Key_Enter);
        EXPECT_EQ(label->Value(), r.value);
        EXPECT_FALSE(label->Dropped());
        delete label;
    }
}

TEST_F(DropDownEdit, PastedTextIsFilteredLikeTypedText)
{
    auto *label = Place<TDropDownEdit>(10, 10);
    label->SetValueType(vtInteger);
    label->DropDown();
    auto *editor = static_cast<QLineEdit *>(label->EditControl());
    editor->clear();
    editor->insert(QStringLiteral("12abc3"));
    EXPECT_EQ(editor->text(), QStringLiteral("123"));
}

TEST_F(DropDownEdit, EnterAcceptsEscapeDiscardsFocusLossAccepts)
{
    struct Row { int line; int key; QString value; const char *why; };
    const Row rows[] = {
        {__LINE__, Qt::Key_Return, QStringLiteral("oldnew"), "Enter accepts"},
        {__LINE__, Qt::Key_Escape, QStringLiteral("old"), "Escape discards"},
        {__LINE__, 0, QStringLiteral("oldnew"), "leaving the box accepts"},
    };
    auto *other = Place<QLineEdit>(10, 200);
    for (const Row &r : rows) {
        SCOPED_TRACE(testing::Message() << "line " << r.line << ": " << r.why);
        auto *label = Place<TDropDownEdit>(10, 10);
        label->SetValue(QStringLiteral("old"));
        label->DropDown();
        QWidget *editor = label->EditControl();
        QTest::keyClick(editor, Qt::Key_End);
        QTest::keyClicks(editor, QStringLiteral("new"));
        if (r.key)
            QTest::keyClick(editor, Qt::Key(r.key));
        else
            other->setFocus(Qt::MouseFocusReason);
        EXPECT_EQ(label->Value(), r.value);
        EXPECT_FALSE(label->Dropped());
        EXPECT_TRUE(label->isVisible()) << "the label shows again";
        delete label;
    }
}

TEST_F(DropDownEdit, BoxGrowsWithItsTextAndHugsTheLabelsRightEdgeRightToLeft)
{
    auto *label = Place<TDropDownEdit>(100, 10);
    label->SetValue(QStringLiteral("abc"));
    label->SetBiDiMode(Qt::RightToLeft);
    label->DropDown();
    QWidget *editor = label->EditControl();
    const int before = editor->width();
    QTest::keyClick(editor, Qt::Key_End);
    QTest::keyClicks(editor, QStringLiteral("WWWWWW"));
    QApplication::processEvents();
    const QFontMetrics metrics(label->font());
    EXPECT_EQ(editor->width(), metrics.horizontalAdvance(QStringLiteral("abcWWWWWWW")) + 6);
    EXPECT_GT(editor->width(), before);
    EXPECT_EQ(editor->geometry().right(), label->geometry().right());
}

TEST_F(DropDownEdit, AutoUpperCaseWinsOverLowerCase)
{
    auto *label = Place<TDropDownEdit>(10, 10);
    label->SetAutoLowerCase(true);
    label->SetAutoUpperCase(true);
    label->SetValue(QStringLiteral("Straße"));
    EXPECT_EQ(label->Value(), QStringLiteral("STRASSE"));
    EXPECT_EQ(label->Caption(), QStringLiteral("STRASSE"));
}

using DropDownMaskEdit = HostTest;

TEST_F(DropDownMaskEdit, InputThatDoesNotFillTheMaskKeepsTheLabelDropped)
{
    auto *label = Place<TDropDownMaskEdit>(10, 10);
    label->SetEditMask(QStringLiteral("!\\(999\\)000-0000;0;_"));
    label->DropDown();
    QWidget *editor = label->EditControl();
    QTest::keyClicks(editor, QStringLiteral("555123"));
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_TRUE(label->Dropped()) << "an unfilled mask refuses Enter";
    EXPECT_EQ(label->Value(), QString());

    QTest::keyClicks(editor, QStringLiteral("4567"));
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_FALSE(label->Dropped());
    EXPECT_EQ(label->Value(), QStringLiteral("5551234567")) << "literals are not saved";
    EXPECT_EQ(label->Caption(), QStringLiteral("(555)123-4567"));
}

TEST_F(DropDownMaskEdit, MalformedMaskIsRefusedAndTheOldOneStays)
{
    auto *label = Place<TDropDownMaskEdit>(10, 10);
    label->SetEditMask(QStringLiteral("000;1;_"));
    EXPECT_THROW(label->SetEditMask(QStringLiteral("00\\")), Exception);
    EXPECT_EQ(label->EditMask(), QStringLiteral("000;1;_"));
}

using DropDownDateTimeEdit = HostTest;

TEST_F(DropDownDateTimeEdit, ValueIsTheDayCountAndCaptionTheLocalesDate)
{
    auto *label = Place<TDropDownDateTimeEdit>(10, 10);
    label->SetValue(QStringLiteral("45306"));
    EXPECT_EQ(label->Caption(), QLocale().toString(QDate(2024, 1, 15), QLocale::ShortFormat));
    label->DropDown();
    auto *picker = static_cast<QDateTimeEdit *>(label->EditControl());
    EXPECT_EQ(picker->date(), QDate(2024, 1, 15));
    picker->setDate(QDate(2024, 1, 16));
    QTest::keyClick(picker, Qt::Key_Return);
    EXPECT_EQ(label->Value(), QStringLiteral("45307"));
}

TEST_F(DropDownDateTimeEdit, UnreadableValueShowsAsWrittenAndRefusesToDrop)
{
    auto *label = Place<TDropDownDateTimeEdit>(10, 10);
    label->SetValue(QStringLiteral("not a date"));
    EXPECT_EQ(label->Caption(), QStringLiteral("not a date"));
    EXPECT_THROW(label->DropDown(), EConvertError);
    EXPECT_FALSE(label->Dropped());
    EXPECT_TRUE(label->isVisible());
    label->SetValue(QStringLiteral("45306"));
    label->DropDown();
    EXPECT_TRUE(label->EditMode()) << "the label stays usable";
}

} // namespace
} // namespace vm20
