// The result column panel: row placement, what a row shows, the row menu,
// moves and deletions by mouse and keyboard, with the SQL following.
#include "model/dbstructure.h"
#include "query/query.h"
#include "query/resultfield.h"
#include "ui/dropdownpopup.h"
#include "ui/resultfieldspanel.h"
#include "ui/rfpanelerror.h"
#include "uitest.h"

#include "common/raises.h"

#include <gmock/gmock.h>

#include "ui/menuview.h"
#include "ui/npopupmenu.h"

#include <QAccessible>
#include <QAction>
#include <QScrollBar>
#include <QTimer>

namespace vm20 {
namespace {

class RFPanelTest : public HostTest
{
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        model.LoadFromFile(QStringLiteral(VM20_SOURCE_DIR "/examples/shop.model"));
        query.SetDBStruct(&model);
        panel = new TNResultFieldsPanel(host.get());
        panel->resize(380, 280);
        panel->show();
        panel->SetQuery(&query);
        panel->MenuHook = [this](QMenu *menu, QPoint) {
            menuSeen = menu;
            for (QAction *a : menu->actions())
                if (a->text() == chosen)
                    return a->isEnabled() ? a->data().toInt() : 0;
            return 0;
        };
    }
    void TearDown() override
    {
        delete panel;
        HostTest::TearDown();
    }
    TDSField *Field(const char *name) { return model.FieldByName(1, QString::fromUtf8(name)); }
    TResultField *Column(const char *name, const QString &formula = QStringLiteral("@1"))
    {
        TResultField *column = query.RFields().Add(QString(), {Field(name)}, formula);
        panel->Refresh();
        return column;
    }
    bool Enabled(const QString &caption)
    {
        for (QAction *a : panel->RowPopup()->actions())
            if (a->text() == caption)
                return a->isEnabled();
        ADD_FAILURE() << "no entry " << caption.toStdString();
        return false;
    }
    void ClickButton(int row)
    {
        QTest::mouseClick(panel->Row(row)->Button(), Qt::LeftButton);
    }
    QString Sql()
    {
        query.BuildQuery();
        return query.GetSQL().join(QLatin1Char('\n'));
    }
    QString SelectList() { return Sql().section(QStringLiteral("FROM"), 0, 0).simplified(); }

    TNDBStructure model;
    TNQuery query;
    TNResultFieldsPanel *panel = nullptr;
    QString chosen;
    QMenu *menuSeen = nullptr;
};

TEST_F(RFPanelTest, RowsUseThePureLayout)
{
    Column("Product");
    Column("Customer");
    Column("Region");
    const int h = QFontMetrics(panel->font()).height();
    const QRect b = panel->Row(2)->Button()->geometry();
    EXPECT_EQ(b.top(), 5 + 2 * (3 + h + 1));
    EXPECT_EQ(b.height(), h + 1);
    EXPECT_EQ(panel->Row(2)->Button()->Caption(), "3");
    EXPECT_EQ(panel->AddRowLabel()->geometry().topLeft(), QPoint(5, b.bottom() + 1 + 3 + 2));
    EXPECT_EQ(panel->AddRowLabel()->text(), "< Click to add new field >");
}

TEST_F(RFPanelTest, RowReadsLikeASentence)
{
    Column("List price", QStringLiteral("sum(@1)"));
    TResultField *plain = Column("Product");
    TResultFieldRow *agg = panel->Row(0);
    ASSERT_TRUE(agg->TextLabel1() && agg->TextLabel2() && agg->FieldLabel());
    EXPECT_EQ(agg->TextLabel1()->text(), "SUM(");
    EXPECT_EQ(agg->FieldLabel()->Caption(), "List price");
    EXPECT_EQ(agg->TextLabel2()->text(), ")");
    EXPECT_LT(agg->TextLabel2()->x(), agg->SortLabel()->x()) << "the sort label goes last";
    EXPECT_EQ(agg->SortLabel()->Caption(), "Not Sorted");

    TResultFieldRow *row = panel->Row(1);
    EXPECT_FALSE(row->TextLabel1());
    EXPECT_FALSE(row->TextLabel2());
    row->FieldLabel()->SetValue(QString::number(Field("Customer")->ID()));
    row->AfterDropUpLabel(true);
    EXPECT_EQ(plain->Caption(), "Customer") << "a bare field column takes the new field's caption";
    EXPECT_EQ(panel->Row(1)->FieldLabel()->Caption(), "Customer");

    panel->Appearance().SetOption(TRFPAppearance::aoShowGroupName, true);
    panel->Refresh();
    EXPECT_EQ(panel->Row(1)->FieldLabel()->Caption(),
              Field("Customer")->GetCompoundName(QStringLiteral(".")));
}

TEST_F(RFPanelTest, MenuEntriesFollowThePosition)
{
    Column("Product");
    ClickButton(0);
    EXPECT_FALSE(Enabled("Move Up")) << "single row";
    EXPECT_FALSE(Enabled("Move Down")) << "single row";
    EXPECT_TRUE(Enabled("Delete current field"));
    Column("Customer");
    ClickButton(0);
    EXPECT_FALSE(Enabled("Move Up")) << "first row";
    EXPECT_TRUE(Enabled("Move Down"));
    ClickButton(1);
    EXPECT_TRUE(Enabled("Move Up"));
    EXPECT_FALSE(Enabled("Move Down")) << "last row";

    panel->SetTitle(QStringLiteral("ttlMoveUp"), QStringLiteral("Earlier"));
    ClickButton(1);
    EXPECT_TRUE(Enabled("Earlier")) << "renamed entries are still found";
}

TEST_F(RFPanelTest, SortPositionsCountSortedColumnsOnly)
{
    Column("Product")->SetSorting(stAscending);
    Column("Customer");
    Column("Region")->SetSorting(stDescending);
    panel->Refresh();
    panel->RefreshSortOrder();
    EXPECT_EQ(query.RFields().GetRField(0)->SortOrder(), 1);
    EXPECT_EQ(query.RFields().GetRField(2)->SortOrder(), 2);
    EXPECT_EQ(panel->Row(2)->SortLabel()->Caption(), "Descending");
}

TEST_F(RFPanelTest, ColumnsEditedByMouseFollowInSql)
{
    QTest::mouseClick(panel->AddRowLabel(), Qt::LeftButton);
    ASSERT_EQ(panel->RowCount(), 1);
    const QString first = model.GetFirstResultField()->DisplayName();
    EXPECT_EQ(query.RFields().GetRField(0)->Caption(), first);
    TResultFieldRow *row = panel->Row(0);
    row->FieldLabel()->SetValue(QString::number(Field("Product")->ID()));
    row->SortLabel()->SetValue(QStringLiteral("2"));
    row->AfterDropUpLabel(true);
    Column("Customer");
    EXPECT_THAT(Sql().toStdString(), testing::HasSubstr("ORDER BY"));
    const QString before = SelectList();
    EXPECT_LT(before.indexOf("Product"), before.indexOf("Customer")) << before.toStdString();

    chosen = QStringLiteral("Move Down");
    ClickButton(0);
    EXPECT_EQ(panel->Row(1)->RField(), query.RFields().GetRField(1));
    const QString moved = SelectList();
    EXPECT_GT(moved.indexOf("Product"), moved.indexOf("Customer")) << moved.toStdString();

    chosen = QStringLiteral("Delete current field");
    ClickButton(1);
    ASSERT_EQ(panel->RowCount(), 1);
    EXPECT_EQ(query.RFields().Count(), 1);
    EXPECT_THAT(Sql().toStdString(), testing::Not(testing::HasSubstr("ORDER BY")));
    EXPECT_EQ(panel->Row(0)->Button()->Caption(), "1");
}

TEST_F(RFPanelTest, ColumnsEditedByKeyboardFollowInSql)
{
    Column("Product");
    Column("Customer");
    panel->setFocus();
    QTest::keyClick(panel, Qt::Key_Down);
    EXPECT_EQ(panel->CurrentRow(), panel->Row(0));
    QTest::keyClick(panel, Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(panel->CurrentRow(), panel->Row(1)) << "the current row moves with its column";
    const QString moved = SelectList();
    EXPECT_GT(moved.indexOf("Product"), moved.indexOf("Customer")) << moved.toStdString();
    QTest::keyClick(panel, Qt::Key_Delete);
    EXPECT_EQ(panel->RowCount(), 2) << "Delete alone keeps the column";
    QTest::keyClick(panel, Qt::Key_Delete, Qt::ControlModifier);
    ASSERT_EQ(panel->RowCount(), 1);
    EXPECT_THAT(SelectList().toStdString(), testing::Not(testing::HasSubstr("Product")));
    QTest::keyClick(panel, Qt::Key_Insert);
    EXPECT_EQ(query.RFields().Count(), 2);

    // Enter opens the current row's field list; Escape leaves the column.
    TDropDownList *field = panel->CurrentRow()->FieldLabel();
    bool dropped = false;
    QTimer::singleShot(0, field, [field, &dropped] {
        dropped = field->Dropped();
        QTest::keyClick(static_cast<TDropDownPopup *>(field)->Menu()->TopView(), Qt::Key_Escape);
    });
    QTest::keyClick(panel, Qt::Key_Return);
    EXPECT_TRUE(dropped);
    EXPECT_EQ(query.RFields().Count(), 2);
}

TEST_F(RFPanelTest, PanelFollowsColumnsChangedInCode)
{
    Column("Product");
    query.RFields().Add(QString(), {Field("Customer")}, QStringLiteral("max(@1)"));
    ASSERT_EQ(panel->RowCount(), 2);
    EXPECT_EQ(panel->Row(1)->TextLabel1()->text(), "MAX(");

    query.RFields().Move(1, 0);
    EXPECT_EQ(panel->Row(0)->RField(), query.RFields().GetRField(0)) << "rows move with their columns";
    EXPECT_EQ(panel->Row(1)->Button()->Caption(), "2") << "and are numbered again";

    query.RFields().GetRField(0)->SetSorting(stDescending);
    EXPECT_EQ(panel->Row(0)->SortLabel()->Caption(), "Descending");

    query.RFields().Delete(0);
    EXPECT_EQ(panel->RowCount(), 1);
    query.RFields().Clear();
    EXPECT_EQ(panel->RowCount(), 0);

    QTest::mouseClick(panel->AddRowLabel(), Qt::LeftButton);
    EXPECT_EQ(panel->RowCount(), 1) << "the panel stays usable after a clear";
    EXPECT_EQ(query.RFields().Count(), 1);
}

TEST_F(RFPanelTest, MissingOrEmptyModelIsReported)
{
    TRFieldList list;
    TNResultFieldsPanel bare;
    bare.SetResultFields(&list);
    EXPECT_EQ(Raised<ERFPanelError>([&] { bare.Activate(); }), "DBStructure is not specified");
    TNDBStructure empty;
    bare.SetDBStruct(&empty);
    EXPECT_EQ(Raised<ERFPanelError>([&] { bare.AddEmptyRow(); }), "Structure is empty");
    EXPECT_EQ(list.Count(), 0);
}

TEST_F(RFPanelTest, ColumnsTheModelCannotShowAreMarkedNotDropped)
{
    TNDBStructure other;   // the same fields, but not the panel's
    other.LoadFromFile(QStringLiteral(VM20_SOURCE_DIR "/examples/shop.model"));
    query.RFields().Add(QStringLiteral("Ghost"), {other.FieldByName(1, QStringLiteral("Product"))},
                        QStringLiteral("sum(@1)"));
    query.RFields().AddByExpression(QStringLiteral("Rows"), QStringLiteral("count(*)"), stNoSort, 0);
    TResultField *gone = query.RFields().New();   // as read from a text whose field ID is unknown
    gone->SetFormula(QStringLiteral("@1"));
    gone->SetCaption(QStringLiteral("Gone"));
    ASSERT_EQ(panel->RowCount(), 3);

    struct Case { int line; int row; QString missing, sentence; const char *why; } cases[] = {
        {__LINE__, 0, "Ghost", "1 SUM( Ghost ) Not Sorted", "a field of another model, inside its formula"},
        {__LINE__, 1, "", "2 COUNT(*) Not Sorted", "no field at all: the whole formula is text"},
        {__LINE__, 2, "Gone", "3 Gone Not Sorted", "a field the model never had"},
    };
    QAccessibleInterface *face = QAccessible::queryAccessibleInterface(panel);
    ASSERT_TRUE(face);
    for (const Case &c : cases) {
        TResultFieldRow *row = panel->Row(c.row);
        EXPECT_EQ(row->Missing(), c.missing) << "line " << c.line << ": " << c.why;
        EXPECT_EQ(row->MissingLabel() != nullptr, !c.missing.isEmpty()) << "line " << c.line;
        EXPECT_FALSE(row->FieldLabel()) << "line " << c.line << ": nothing to choose from";
        EXPECT_EQ(face->child(c.row)->text(QAccessible::Name), c.sentence) << "line " << c.line;
        EXPECT_EQ(!face->child(c.row)->text(QAccessible::Description).isEmpty(), !c.missing.isEmpty())
            << "line " << c.line;
    }

    // Sorting a marked column keeps it and its field.
    panel->Row(2)->SortLabel()->SetValue(QStringLiteral("1"));
    panel->Row(2)->AfterDropUpLabel(true);
    panel->Refresh();
    ASSERT_EQ(query.RFields().Count(), 3);
    EXPECT_EQ(query.RFields().GetRField(2)->Sorting(), stAscending);
    EXPECT_EQ(panel->Row(0)->Missing(), "Ghost");
}

TEST_F(RFPanelTest, ListChangedInCodeWhileALabelIsDropped)
{
    struct Case { int line; std::function<void()> change; int rowsLeft; const char *why; } cases[] = {
        {__LINE__, [this] { query.RFields().Delete(0); }, 1, "the dropped row's column goes"},
        {__LINE__, [this] { query.RFields().Clear(); }, 0, "every column goes"},
        {__LINE__, [this] { query.RFields().Move(0, 1); }, 2, "the dropped row moves"},
    };
    for (const Case &c : cases) {
        query.RFields().Clear();
        Column("Product");
        Column("Customer");
        TDropDownPopup *sort = panel->Row(0)->SortLabel();
        QTimer::singleShot(0, sort, [sort, &c] {
            auto *view = static_cast<TMenuView *>(sort->Menu()->TopView());
            ASSERT_NE(view, nullptr);
            c.change();
            QTest::keyClick(view, Qt::Key_Down);
            QTest::keyClick(view, Qt::Key_Return);
        });
        sort->DropDown();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        ASSERT_EQ(panel->RowCount(), c.rowsLeft) << "line " << c.line << ": " << c.why;
        EXPECT_EQ(query.RFields().Count(), c.rowsLeft) << "line " << c.line;
        for (int i = 0; i < panel->RowCount(); ++i)
            EXPECT_EQ(panel->Row(i)->RField(), query.RFields().GetRField(i)) << "line " << c.line;
    }
    QTest::mouseClick(panel->AddRowLabel(), Qt::LeftButton);
    EXPECT_EQ(query.RFields().Count(), 3) << "the panel stays usable";
}

} // namespace
} // namespace vm20
