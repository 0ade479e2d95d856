#include "uitest.h"

#include "ui/dropdownpopup.h"
#include "ui/menuview.h"

#include <QTimer>

#include <QGuiApplication>
#include <QScreen>

#include <functional>
#include <numeric>

namespace vm20 {
namespace {

using DropDownPopup = HostTest;

// Runs `drive` on the open menu once the modal loop has started.
void WhileOpen(TDropDownPopup *label, std::function<void(TMenuView *)> drive)
{
    QTimer::singleShot(0, label, [label, drive] {
        auto *view = static_cast<TMenuView *>(label->Menu()->TopView());
        ASSERT_NE(view, nullptr);
        drive(view);
    });
}

std::vector<int> ColumnLengths(const TMenuView *view)
{
    std::vector<int> lengths(std::size_t(view->ColumnCount()), 0);
    for (int i = 0; i < view->Level()->Count(); ++i)
        ++lengths[std::size_t(view->ColumnOf(i))];
    return lengths;
}

TDropDownPopup *Numbered(TDropDownPopup *label, int count)
{
    for (int i = 0; i < count; ++i)
        label->AddItem(QString(), QString::number(i), QStringLiteral("Item %1").arg(i));
    return label;
}

TEST_F(DropDownPopup, MaxItemCountLaysTheMenuOutInColumnsAndArrowsCrossThem)
{
    auto *label = Numbered(Place<TDropDownPopup>(10, 10), 25);
    label->SetMaxItemCount(10);
    std::vector<int> lengths;
    WhileOpen(label, [&](TMenuView *view) {
        lengths = ColumnLengths(view);
        QTest::keyClick(view, Qt::Key_Down);
        QTest::keyClick(view, Qt::Key_Down);
        QTest::keyClick(view, Qt::Key_Right);
        QTest::keyClick(view, Qt::Key_Right);
        QTest::keyClick(view, Qt::Key_Return);
    });
    label->DropDown();
    EXPECT_EQ(lengths, (std::vector<int>{10, 10, 5}));
    EXPECT_FALSE(label->Dropped());
    EXPECT_EQ(label->Value(), QStringLiteral("21")) << "second row of the third column";
}

TEST_F(DropDownPopup, EscapeClosesTheMenuAndDiscards)
{
    auto *label = Numbered(Place<TDropDownPopup>(10, 10), 3);
    label->SetValue(QStringLiteral("1"));
    events.Attach(label);
    WhileOpen(label, [](TMenuView *view) {
        QTest::keyClick(view, Qt::Key_Down);
        QTest::keyClick(view, Qt::Key_Escape);
    });
    label->DropDown();
    EXPECT_EQ(label->Value(), QStringLiteral("1"));
    EXPECT_EQ(events.Text(), QStringLiteral("before-down before-up(0) after-up(0)"))
        << "the menu returns before AfterDropDown, the label already idle";
}

TEST_F(DropDownPopup, TypingTheStartOfAnItemJumpsToIt)
{
    auto *label = Place<TDropDownPopup>(10, 10);
    label->AddItems(QString(), {QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"), QStringLiteral("4")},
                    {QStringLiteral("Apple"), QStringLiteral("Cherry"), QStringLiteral("Chestnut"), QStringLiteral("-")});
    WhileOpen(label, [](TMenuView *view) {
        QTest::keyClicks(view, QStringLiteral("chest"));
        QTest::keyClick(view, Qt::Key_Return);
    });
    label->DropDown();
    EXPECT_EQ(label->Value(), QStringLiteral("3"));
}

TEST_F(DropDownPopup, NamedGroupsBecomeSubMenusWithTheirImages)
{
    auto *label = Place<TDropDownPopup>(10, 10);
    label->AddItem(QString(), QStringLiteral("id"), QStringLiteral("Id"));
    label->AddItem(QStringLiteral("Customer"), QStringLiteral("c.name"), QStringLiteral("Name"));
    label->AddItem(QStringLiteral("customer"), QStringLiteral("c.city"), QStringLiteral("City"));
    QStringList asked;
    label->OnGetGroupImageIndex = [&](const QString &group, int &index) {
        asked << group;
        index = 99; // beyond any image list: drawn without an image
    };
    label->OnGetItemImageIndex = [&](const QString &group, const QString &item, int &) { asked << group + '/' + item; };
    QStringList topLevel;
    WhileOpen(label, [&](TMenuView *view) {
        for (int i = 0; i < view->Level()->Count(); ++i)
            topLevel << view->Level()->Items(i)->Caption;
        QTest::keyClick(view, Qt::Key_Down);
        QTest::keyClick(view, Qt::Key_Down);
        QTest::keyClick(view, Qt::Key_Return);
        ASSERT_NE(view->SubView(), nullptr);
        view->SubView()->grab(); // paints the out-of-range image index
        QTest::keyClick(view->SubView(), Qt::Key_Down);
        QTest::keyClick(view->SubView(), Qt::Key_Down);
        QTest::keyClick(view->SubView(), Qt::Key_Return);
    });
    label->DropDown();
    EXPECT_EQ(topLevel, (QStringList{QStringLiteral("Id"), QStringLiteral("Customer")}))
        << "groups compare without regard to case";
    EXPECT_EQ(asked, (QStringList{QStringLiteral("/Id"), QStringLiteral("Customer"), QStringLiteral("Customer/Name"),
                                  QStringLiteral("Customer/City")}));
    EXPECT_EQ(label->Value(), QStringLiteral("c.city"));
    EXPECT_EQ(label->Caption(), QStringLiteral("City"));
}

TEST_F(DropDownPopup, TenThousandItemsFitTheScreenInColumns)
{
    auto *label = Numbered(Place<TDropDownPopup>(10, 10), 10000);
    std::vector<int> lengths;
    WhileOpen(label, [&](TMenuView *view) {
        lengths = ColumnLengths(view);
        view->grab();
        QTest::keyClick(view, Qt::Key_End);
        QTest::keyClick(view, Qt::Key_Return);
    });
    label->DropDown();
    const int rows = TNPopupMenu::ScreenRows(QGuiApplication::primaryScreen()->geometry().height());
    ASSERT_FALSE(lengths.empty());
    EXPECT_LE(*std::max_element(lengths.begin(), lengths.end()), rows);
    EXPECT_EQ(std::accumulate(lengths.begin(), lengths.end(), 0), 10000);
    EXPECT_EQ(label->Value(), QStringLiteral("9999"));
}

} // namespace
} // namespace vm20
