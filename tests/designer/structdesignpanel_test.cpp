#include "designer/designarea.h"
#include "designer/structdesignpanel.h"
#include "designer/structuredesignerror.h"
#include "model/dbstructure.h"

#include "common/printers.h"
#include "common/raises.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QImage>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPixmap>
#include <QScreen>
#include <QToolButton>
#include <QVBoxLayout>

#include <memory>

namespace vm20 {
namespace {

void SendMouse(QWidget *widget, QEvent::Type type, QPoint pos, Qt::MouseButton button)
{
    const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(button);
    QMouseEvent event(type, QPointF(pos), QPointF(widget->mapToGlobal(pos)),
                      type == QEvent::MouseMove ? Qt::NoButton : button, held, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

void Click(QWidget *widget, QPoint pos)
{
    SendMouse(widget, QEvent::MouseButtonPress, pos, Qt::LeftButton);
    SendMouse(widget, QEvent::MouseButtonRelease, pos, Qt::LeftButton);
}

void AddColumn(TNCustomDBStructure &model, TDSTable *table, const QString &column)
{
    auto field = std::make_unique<TDSField>(&model);
    field->SetFieldKind(nfkData);
    field->SetFieldExpr(column);
    field->SetDisplayName(column);
    field->Tables().Add(table);
    model.AddFieldRef(std::move(field));
}

class StructDesignPanel : public ::testing::Test
{
public:
    void SetUp() override
    {
        TDSTable *customers = model.GetTable(model.AddTable("customers", "Customers"));
        TDSTable *orders = model.GetTable(model.AddTable("orders", "Orders"));
        TDSTable *items = model.GetTable(model.AddTable("items", "Items"));
        for (const char *c : {"id", "name", "city"})
            AddColumn(model, customers, c);
        for (const char *c : {"id", "customer_id", "placed_on"})
            AddColumn(model, orders, c);
        for (const char *c : {"order_id", "product", "quantity"})
            AddColumn(model, items, c);
        model.AddLinkByExpr("orders-customers:customer_id=id");
        panel.resize(900, 600);
        panel.OnConfirm = [this](const QString &question) {
            questions << question;
            return answer;
        };
        panel.SetStruct(&model);
        panel.show();
    }

protected:
    TTableRep *Rep(const char *name) { return panel.TableRep(model.TableByName(0, name)); }
    QPoint FieldPoint(TTableRep *rep, const QString &field)
    {
        return rep->ListBox()->ItemRect(rep->ListBox()->IndexOf(field)).center();
    }

public:
    TNDBStructure model;
    TNStructDesignPanel panel;
    QStringList questions;
    bool answer = true;
};

TEST_F(StructDesignPanel, ShowsEveryTableArrangedAndEveryLinkOnItsFields)
{
    ASSERT_EQ(panel.TableReps().Count(), 3);
    const QRect customers = Rep("customers")->geometry();
    const QRect orders = Rep("orders")->geometry();
    EXPECT_EQ(customers.topLeft(), QPoint(12, 10));
    EXPECT_EQ(orders.topLeft(), QPoint(12 + customers.width() + 40, 10));
    EXPECT_EQ(model.TableByName(0, "orders")->DesignPositions(),
              QStringLiteral("%1,10,%2,%3").arg(orders.left()).arg(orders.width()).arg(orders.height()));

    TLinkRep *link = panel.LinkRep(model.GetLink(0));
    ASSERT_NE(link, nullptr);
    EXPECT_EQ(link->Nodes1().GetLinkNode(0)->X, orders.left() - 1) << "customers lie left of orders";
}

TEST_F(StructDesignPanel, LinkDrawnByTwoClicksEndsInTheModelAndIsDeletedAgain)
{
    panel.SetActionHints(true);
    int started = 0, finished = 0;
    panel.OnAddLinkStart = [&](TNStructDesignPanel *) { ++started; };
    panel.OnAddLinkFinish = [&](TNStructDesignPanel *) { ++finished; };
    TTableRep *items = Rep("items");
    TTableRep *orders = Rep("orders");

    panel.StartAddLink();
    EXPECT_EQ(panel.CurrentHint(), "Select a field in the first linking table");
    Click(items->ListBox(), FieldPoint(items, "order_id"));
    EXPECT_EQ(panel.AddLinkStage(), 2);
    EXPECT_EQ(panel.CurrentHint(), "Select a field in the second linking table");
    Click(orders->ListBox(), FieldPoint(orders, "id"));

    ASSERT_EQ(model.GetLinkCount(), 2);
    TDSLink *added = model.GetLink(1);
    EXPECT_EQ(added->Table1(), items->Table());
    EXPECT_EQ(added->Table2(), orders->Table());
    EXPECT_EQ(added->Fields1(), QStringList{"order_id"});
    EXPECT_EQ(added->Fields2(), QStringList{"id"});
    EXPECT_EQ(panel.AddLinkStage(), 0);
    EXPECT_EQ(panel.CurrentHint(), "To add/delete tables and links - right click on selected object and chose necessary operation");
    EXPECT_EQ(started, 1);
    EXPECT_EQ(finished, 1);
    ASSERT_NE(panel.LinkRep(added), nullptr);
    EXPECT_EQ(panel.ActiveLink(), panel.LinkRep(added));

    answer = false;
    panel.DeleteActiveLink();
    EXPECT_EQ(model.GetLinkCount(), 2) << "a refused confirmation keeps the link";
    answer = true;
    QKeyEvent del(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier);
    QApplication::sendEvent(&panel, &del);
    EXPECT_EQ(model.GetLinkCount(), 1);
    EXPECT_EQ(questions, (QStringList{"Delete Link?", "Delete Link?"}));
    EXPECT_EQ(panel.LinkRep(added), nullptr);
}

TEST_F(StructDesignPanel, AddingALinkEndsWithoutALinkWhenCancelled)
{
    struct Row { int line; std::function<void(StructDesignPanel &)> cancel; const char *why; };
    const Row rows[] = {
        {__LINE__, [](StructDesignPanel &t) {
             QKeyEvent esc(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
             QApplication::sendEvent(&t.panel, &esc);
         }, "Escape"},
        {__LINE__, [](StructDesignPanel &t) { Click(t.panel.DesignArea()->Canvas(), {880, 580}); },
         "a click beside the tables"},
        {__LINE__, [](StructDesignPanel &t) { t.model.ClearStructure(); }, "the model cleared meanwhile"},
    };
    for (const Row &r : rows) {
        SetUp();   // a fresh model and panel state per row
        panel.StartAddLink();
        TTableRep *items = Rep("items");
        Click(items->ListBox(), FieldPoint(items, "order_id"));
        const int links = model.GetLinkCount();
        r.cancel(*this);
        EXPECT_EQ(panel.AddLinkStage(), 0) << r.line << ": " << r.why;
        EXPECT_LE(model.GetLinkCount(), links) << r.line << ": no link added: " << r.why;
        EXPECT_EQ(panel.LinkReps().Count(), model.GetLinkCount()) << r.line << ": " << r.why;
        model.ClearStructure();
    }
}

TEST_F(StructDesignPanel, DraggedTableTakesItsLinksAlong)
{
    TTableRep *orders = Rep("orders");
    TLinkRep *link = panel.LinkRep(model.GetLink(0));
    const TLinkNode before = *link->Nodes1().GetLinkNode(0);
    const QPoint grip(20, 5);   // in the title bar
    SendMouse(orders, QEvent::MouseButtonPress, grip, Qt::LeftButton);
    SendMouse(orders, QEvent::MouseMove, grip + QPoint(60, 90), Qt::LeftButton);
    SendMouse(orders, QEvent::MouseButtonRelease, grip + QPoint(60, 90), Qt::LeftButton);

    const TLinkNode after = *link->Nodes1().GetLinkNode(0);
    EXPECT_EQ(after.X - before.X, 60);
    EXPECT_EQ(after.Y - before.Y, 90);
    EXPECT_EQ(model.TableByName(0, "orders")->DesignTop(), 100);
    EXPECT_EQ(panel.ActiveTable(), orders);
}

// Only what a move changes is repainted; what is on screen after a drag
// must still be what a full repaint draws: no line left behind, none cut
// where it passes windows or crosses other lines.
TEST_F(StructDesignPanel, DragRepaintsEverythingThatMoved)
{
    for (const char *name : {"products", "stock", "suppliers"}) {
        TDSTable *table = model.GetTable(model.AddTable(name, name));
        for (const char *c : {"id", "code", "orders_id"})
            AddColumn(model, table, c);
    }
    model.AddLinkByExpr("items-orders:order_id=id");
    model.AddLinkByExpr("products-orders:orders_id=id");
    model.AddLinkByExpr("suppliers-customers:code=id");
    model.AddLinkByExpr("stock-items:code=product");
    model.Changed();
    QApplication::processEvents();
    auto shown = [this] { return panel.screen()->grabWindow(panel.winId()).toImage(); };

    TTableRep *orders = Rep("orders");
    orders->move(200, 150);   // amid the others' lines, well inside the view
    QApplication::processEvents();
    const QPoint grip(20, 5);
    const QPoint pressed = orders->mapToParent(grip);
    SendMouse(orders, QEvent::MouseButtonPress, grip, Qt::LeftButton);
    // Amid the lines, then past the right edge so that the area grows.
    for (int step = 1; step <= 24; ++step) {
        const QPoint offset = step <= 12 ? QPoint(step * 9, step * 7) : QPoint(step * 40, 84);
        const QPoint mouse = orders->mapFromParent(pressed + offset);
        SendMouse(orders, QEvent::MouseMove, mouse, Qt::LeftButton);
        QApplication::processEvents();
    }
    SendMouse(orders, QEvent::MouseButtonRelease, grip, Qt::LeftButton);
    QApplication::processEvents();
    const QImage afterDrag = shown();
    panel.DesignArea()->Canvas()->update();
    QApplication::processEvents();
    EXPECT_TRUE(afterDrag == shown());
}

TEST_F(StructDesignPanel, OddLinksAndTablesAreShownWithoutFailing)
{
    model.AddTable("empty", "No fields");
    model.AddLinkByExpr("items-orders:fld:order_id=id,product=val:'x'");
    TDSLink *ghost = model.AddLinkByExpr("items-customers:nowhere=id");
    // The model lists the ghost column as a join column, so it is shown.
    TTableRep *items = Rep("items");
    ASSERT_NE(items, nullptr);
    EXPECT_GE(items->ListBox()->IndexOf("nowhere"), 0);
    TLinkRep *valueLink = panel.LinkRep(model.GetLink(1));
    ASSERT_NE(valueLink, nullptr);
    EXPECT_EQ(valueLink->Nodes1().Count(), 2) << "fld: prefix removed, product kept";
    EXPECT_EQ(valueLink->Nodes2().Count(), 1) << "the val: entry has no end";
    EXPECT_NE(panel.LinkRep(ghost), nullptr);
    EXPECT_NE(Rep("empty"), nullptr);
    QImage image(panel.DiagramSize(), QImage::Format_ARGB32);
    panel.RenderTo(&image);
}

TEST_F(StructDesignPanel, FullScreenFormHoldsThePanelUntilRestored)
{
    QWidget host;
    auto *layout = new QVBoxLayout(&host);
    TNStructDesignPanel *inner = new TNStructDesignPanel;
    layout->addWidget(inner);
    inner->SetFullScreenMode(true);
    ASSERT_NE(inner->FullScreenForm(), nullptr);
    EXPECT_TRUE(inner->FullScreenForm()->windowTitle().startsWith("Design panel full screen mode "));
    EXPECT_EQ(inner->parentWidget(), inner->FullScreenForm());
    EXPECT_EQ(inner->FullScreenButton()->toolTip(), "Restore");
    inner->FullScreenForm()->close();
    EXPECT_FALSE(inner->FullScreenMode());
    EXPECT_EQ(inner->parentWidget(), &host);
    EXPECT_EQ(layout->indexOf(inner), 0);
}

TEST_F(StructDesignPanel, TableDeletedFromItsOwnMenuTakesItsLinks)
{
    TTableRep *orders = Rep("orders");
    panel.MenuHook = [](QMenu *menu, QPoint) -> QAction * {
        for (QAction *action : menu->actions())
            if (action->text() == "Delete table")
                return action;
        return nullptr;
    };
    QContextMenuEvent menu(QContextMenuEvent::Mouse, QPoint(20, 5), orders->mapToGlobal(QPoint(20, 5)));
    QApplication::sendEvent(orders, &menu);   // the window is deleted while it handles this
    EXPECT_EQ(questions, QStringList{"Delete table?"});
    EXPECT_EQ(model.TableByName(0, "orders"), nullptr);
    EXPECT_EQ(model.GetLinkCount(), 0);
    EXPECT_EQ(panel.TableReps().Count(), 2);
    EXPECT_EQ(panel.LinkReps().Count(), 0);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST(StructDesignPanelAlone, ActivatingWithoutAModelRaisesItsOwnError)
{
    TNStructDesignPanel panel;
    EXPECT_EQ(Raised<EStructureDesignError>([&] { panel.Activate(); }), "Structure is not specified");
    EXPECT_FALSE(panel.Active());
}

TEST_F(StructDesignPanel, HintLineFollowsTheMouse)
{
    panel.SetActionHints(true);
    TLinkRep *link = panel.LinkRep(model.GetLink(0));
    const TLinkNode *n1 = link->Nodes1().GetLinkNode(0);
    const TLinkNode *n2 = link->Nodes2().GetLinkNode(0);
    const QPoint onLine = (LinkJunction(*n1) + LinkJunction(*n2)) / 2;
    struct Row { int line; std::function<void()> move; const char *hint; };
    const Row rows[] = {
        {__LINE__, [&] { SendMouse(Rep("items"), QEvent::MouseMove, {30, 30}, Qt::NoButton); },
         "Click inside table to select it"},
        {__LINE__, [&] { SendMouse(panel.DesignArea()->Canvas(), QEvent::MouseMove, onLine, Qt::NoButton); },
         "Click on link line to select it"},
        {__LINE__, [&] { SendMouse(panel.DesignArea()->Canvas(), QEvent::MouseMove, {880, 580}, Qt::NoButton); },
         "To add/delete tables and links - right click on selected object and chose necessary operation"},
    };
    for (const Row &r : rows) {
        r.move();
        EXPECT_EQ(panel.CurrentHint(), r.hint) << r.line;
    }
    panel.SetActionHints(false);
    EXPECT_EQ(panel.CurrentHint(), QString());
}

} // namespace
} // namespace vm20
