// Default colours on dark palettes: lighter and readable, hue kept; the
// light look and the host's own colours untouched.
#include "ui/readablecolor.h"

#include "ui/querypanel.h"
#include "ui/queryrowview.h"
#include "uitest.h"

#include "query/shopmodel.h"

#include <QImage>
#include <QPalette>

namespace vm20 {
namespace {

const QColor Blue(0, 0, 255), Green(0, 128, 0), Navy(0, 0, 128), Black(0, 0, 0), Missing(191, 3, 3);
const QColor White(255, 255, 255), Window(240, 240, 240), DarkBase(30, 30, 30), DarkWindow(45, 45, 45);

TEST(ReadableOn, KeepsOrAdaptsByBackgroundAndOrigin)
{
    struct Row
    {
        int line;
        QColor color, background;
        bool adapted;
        const char *why;
    };
    const Row rows[] = {
        {__LINE__, Blue, White, false, "the light look is the designed one"},
        {__LINE__, Navy, Window, false, "a light window is light too"},
        {__LINE__, Blue, QColor(128, 128, 128), false, "a mid-grey background is not dark"},
        {__LINE__, Blue, DarkBase, true, "blue on near-black cannot be read"},
        {__LINE__, Green, DarkBase, true, "the sort label's green"},
        {__LINE__, Navy, DarkWindow, true, "the focus frame's navy"},
        {__LINE__, Black, DarkBase, true, "borders and link lines"},
        {__LINE__, Missing, DarkBase, true, "the unresolved name's red"},
        {__LINE__, QColor(255, 200, 0), DarkBase, false, "a host colour that already reads"},
        {__LINE__, QColor(60, 0, 90), DarkBase, false, "a host colour stays the host's even when dim"},
        {__LINE__, QColor(0, 0, 255, 128), DarkBase, false, "a translucent colour is not the default"},
        {__LINE__, QColor(), DarkBase, false, "no colour stays none"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(::testing::Message() << "line " << row.line << ": " << row.why);
        const QColor drawn = ReadableOn(row.color, row.background);
        if (!row.adapted) {
            EXPECT_EQ(drawn, row.color);
            continue;
        }
        EXPECT_GE(ContrastRatio(drawn, row.background), 4.5);
        EXPECT_GT(drawn.lightnessF(), row.color.lightnessF());
        if (row.color.hslHue() >= 0)
            EXPECT_NEAR(drawn.hslHue(), row.color.hslHue(), 2);
        else
            EXPECT_EQ(drawn.hslSaturation(), 0);
    }
}

TEST(ContrastRatio, MatchesKnownPairs)
{
    EXPECT_NEAR(ContrastRatio(Black, White), 21.0, 0.01);
    EXPECT_NEAR(ContrastRatio(White, Black), 21.0, 0.01);
    EXPECT_NEAR(ContrastRatio(Blue, White), 8.59, 0.01);
    EXPECT_DOUBLE_EQ(ContrastRatio(Green, Green), 1.0);
    // Frames: the dark shade on a light window, the light one on a dark window.
    const QColor mid(160, 160, 160), light(80, 80, 80);
    EXPECT_EQ(MoreContrasting(Window, mid, White), mid);
    EXPECT_EQ(MoreContrasting(DarkWindow, QColor(40, 40, 40), light), light);
}

// The highest contrast any pixel of the widget has against the background
// it is painted over: the text's own colour, not its anti-aliased edge.
double BestContrast(QWidget *widget, const QColor &background)
{
    QImage image(widget->size(), QImage::Format_ARGB32);
    image.fill(background);
    widget->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    double best = 1;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            best = std::max(best, ContrastRatio(image.pixelColor(x, y), background));
    return best;
}

TEST(ReadableOn, PanelOnDarkPaletteDrawsReadableFieldLabels)
{
    shop::ShopModel shop = shop::MakeShopModel();
    TNQueryPanel panel;
    panel.resize(500, 200);
    panel.SetDBStruct(shop.model.get());
    panel.Loaded();
    TSimpleCond *cond = panel.Query()->AddCondition(panel.Filter(), shop.custName);
    QPalette dark = panel.palette();
    dark.setColor(QPalette::Base, DarkBase);
    dark.setColor(QPalette::Window, DarkWindow);
    dark.setColor(QPalette::Text, QColor(220, 220, 220));
    dark.setColor(QPalette::WindowText, QColor(220, 220, 220));
    panel.setPalette(dark);
    QApplication::processEvents();
    TQueryRowView *view = panel.RowView(cond);
    ASSERT_NE(view, nullptr);
    TDropDownLabel *field = view->Slot(rsFirstLabel);
    ASSERT_NE(field, nullptr);
    EXPECT_GE(BestContrast(field, DarkBase), 4.5);
    // What the host reads back is still what it set, or the default.
    EXPECT_EQ(panel.Appearance().FieldColor(), Blue);
}

} // namespace
} // namespace vm20
