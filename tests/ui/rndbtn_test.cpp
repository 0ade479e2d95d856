#include "uitest.h"

#include "ui/rndbtn.h"

#include <QImage>

namespace vm20 {
namespace {

using RndBtn = HostTest;

TEST_F(RndBtn, AutoSizeIsCaptionWidthPlusTenByHeightPlusOne)
{
    auto *button = Place<TNRndBtn>(10, 10);
    button->SetAutoSize(true);
    button->SetCaption(QStringLiteral("128"));
    const QFontMetrics metrics(button->font());
    EXPECT_EQ(button->size(), QSize(metrics.horizontalAdvance(QStringLiteral("128")) + 10, metrics.height() + 1));
}

TEST_F(RndBtn, OnlyAButtonThatAllowsPressingStaysPressedInItsColour)
{
    struct Row { int line; bool allow; bool pressed; const char *why; };
    const Row rows[] = {
        {__LINE__, true, true, "a click presses it"},
        {__LINE__, false, false, "a plain button springs back"},
    };
    for (const Row &r : rows) {
        SCOPED_TRACE(testing::Message() << "line " << r.line << ": " << r.why);
        auto *button = Place<TNRndBtn>(10, 10);
        button->resize(30, 20);
        button->SetRounded(false);
        button->SetAllowPress(r.allow);
        button->SetPressedColor(QColor(255, 0, 0));
        int clicks = 0;
        button->OnClick = [&](QObject *) { ++clicks; };
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(15, 10));
        EXPECT_EQ(clicks, 1);
        EXPECT_EQ(button->Pressed(), r.pressed);
        const QImage face = button->grab().toImage();
        EXPECT_EQ(face.pixelColor(5, 15) == QColor(255, 0, 0), r.pressed);
        delete button;
    }
}

} // namespace
} // namespace vm20
