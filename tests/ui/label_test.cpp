#include "uitest.h"

#include "ui/dropdownedit.h"
#include "ui/dropdownlabel.h"


namespace vm20 {
namespace {

using DropDownLabel = HostTest;

TEST_F(DropDownLabel, CaptionShowsUnderscoresWhenEmptyAndAmpersandsAsWritten)
{
    auto *label = Place<TDropDownLabel>(10, 10);
    label->SetValue(QStringLiteral("A&B"));
    EXPECT_EQ(label->Caption(), QStringLiteral("A&B"));
    EXPECT_EQ(label->width(), label->fontMetrics().horizontalAdvance(QStringLiteral("A&B")))
        << "the ampersand is drawn, not taken as an accelerator";
    label->SetValue(QString());
    EXPECT_EQ(label->Caption(), QStringLiteral("_____"));
}

TEST_F(DropDownLabel, CustomDropDownPassesThroughDroppedWithinOneCall)
{
    struct Row { int line; QString answer; bool accept; QString value; const char *why; };
    const Row rows[] = {
        {__LINE__, QStringLiteral("new"), true, QStringLiteral("new"), "an accepted answer becomes the value"},
        {__LINE__, QString(), true, QStringLiteral("old"), "an empty answer never clears the value"},
        {__LINE__, QStringLiteral("new"), false, QStringLiteral("old"), "a refused answer is dropped"},
    };
    for (const Row &r : rows) {
        SCOPED_TRACE(testing::Message() << "line " << r.line << ": " << r.why);
        auto *label = Place<TDropDownLabel>(10, 10);
        label->SetValue(QStringLiteral("old"));
        events.log.clear();
        events.Attach(label);
        label->OnCustomDropDown = [&](QObject *, QString &value, bool &accept) {
            EXPECT_EQ(value, QStringLiteral("old"));
            value = r.answer;
            accept = r.accept;
        };
        label->DropDown();
        EXPECT_EQ(label->Value(), r.value);
        EXPECT_FALSE(label->Dropped());
        EXPECT_EQ(events.Text(), QStringLiteral("before-down before-up(%1) after-up(%1)").arg(r.accept))
            << "AfterDropDown is skipped once the label is idle again";
        delete label;
    }
}

TEST_F(DropDownLabel, CtrlClickIsAnAltClickAndNeverOpensTheEditor)
{
    auto *label = Place<TDropDownEdit>(10, 10);
    events.Attach(label);
    QTest::mouseClick(label, Qt::LeftButton, Qt::ControlModifier, QPoint(2, 2));
    EXPECT_EQ(events.Text(), QStringLiteral("alt-click"));
    EXPECT_FALSE(label->EditMode());

    QTest::mouseClick(label, Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
    EXPECT_TRUE(label->EditMode()) << "a plain click drops down";
}

TEST_F(DropDownLabel, FixedLabelNeverLeavesIdle)
{
    auto *label = Place<TDropDownEdit>(10, 10);
    label->SetFixed(true);
    events.Attach(label);
    QTest::mouseClick(label, Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
    label->SetDropped(true);
    EXPECT_FALSE(label->Dropped());
    EXPECT_EQ(events.Text(), QString());
}

TEST_F(DropDownLabel, BeforeDropUpVetoTurnsEnterIntoCancel)
{
    auto *label = Place<TDropDownEdit>(10, 10);
    label->SetValue(QStringLiteral("kept"));
    label->BeforeDropUp = [](QObject *, QString &value, bool &accept) {
        value = QStringLiteral("ignored");
        accept = false;
    };
    bool accepted = true;
    label->AfterDropUp = [&](QObject *, bool a) { accepted = a; };
    label->DropDown();
    QWidget *editor = label->EditControl();
    QTest::keyClicks(editor, QStringLiteral("typed"));
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_FALSE(label->Dropped());
    EXPECT_FALSE(accepted);
    EXPECT_EQ(label->Value(), QStringLiteral("kept"));
}

TEST_F(DropDownLabel, SecondClickWhileDroppedDiscards)
{
    auto *edit = Place<TDropDownEdit>(10, 40);
    edit->SetValue(QStringLiteral("kept"));
    bool accepted = true;
    edit->AfterDropUp = [&](QObject *, bool a) { accepted = a; };
    edit->Click();
    ASSERT_TRUE(edit->Dropped());
    QTest::keyClicks(edit->EditControl(), QStringLiteral("x"));
    edit->Click();
    EXPECT_FALSE(edit->Dropped());
    EXPECT_FALSE(accepted);
    EXPECT_EQ(edit->Value(), QStringLiteral("kept"));
}

} // namespace
} // namespace vm20
