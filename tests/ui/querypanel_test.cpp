#include "nestedpanel.h"

#include "common/raises.h"
#include "model/errors.h"
#include "ui/dropdownlabel.h"
#include "ui/dropdownlist.h"
#include "ui/dropdownpopup.h"
#include "ui/rndbtn.h"
#include "uitest.h"

#include "query/shopmodel.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QSplitter>
#include <QVBoxLayout>
#include <QScrollBar>
#include <QImage>
#include <QPainter>

namespace vm20 {
namespace {

class QueryPanelTest : public NestedPanelTest
{
protected:
    QString Captions(const TFilterRow *row) const
    {
        QStringList texts;
        for (TDropDownLabel *label : panel->RowView(row)->Controls())
            texts << label->Caption();
        return texts.join(QLatin1Char('|'));
    }
};

TEST_F(QueryPanelTest, WidgetsStandWhereThePlacementRulesSay)
{
    BuildNested();
    const TQueryRowView *row5 = panel->RowView(deep);
    ASSERT_NE(row5, nullptr);
    EXPECT_EQ(row5->Button()->Caption(), QStringLiteral("2.2.1"));
    EXPECT_EQ(row5->RowID(), QStringLiteral("2.2.1."));
    EXPECT_EQ(row5->CheckBox()->x(), 5) << "check boxes stand in the margin whatever the depth";
    EXPECT_EQ(panel->AddRowLabel()->geometry().topLeft(),
              QPoint(row5->Button()->x(), row5->Button()->geometry().bottom() + 1 + 3 + 2));
    EXPECT_EQ(panel->AddRowLabel()->Caption(), QStringLiteral("< Click here to add new condition >"));
}

// A window freeing a panel nested in containers of its own: the panel's
// teardown must not deliver events to the widgets around it, which are
// already half gone.
TEST_F(QueryPanelTest, GoesWithTheWindowItIsNestedIn)
{
    BuildNested();
    auto window = std::make_unique<QWidget>();
    auto *splitter = new QSplitter(Qt::Vertical, window.get());
    auto *box = new QWidget;
    auto *layout = new QVBoxLayout(box);
    layout->addWidget(new QLabel(QStringLiteral("Conditions")));
    layout->addWidget(panel.release());
    splitter->addWidget(box);
    splitter->addWidget(new QLabel(QStringLiteral("below")));
    window->setAttribute(Qt::WA_DontShowOnScreen);
    window->show();   // posts polish and layout requests, still queued below
    window.reset();
    SUCCEED();
}

TEST_F(QueryPanelTest, RowsShowTheirSentences)
{
    BuildNested();
    first->SetValue(1, QStringLiteral("Jo"));
    EXPECT_EQ(Captions(panel->Filter()), QStringLiteral("Choose records where|any|of the following apply"));
    EXPECT_EQ(Captions(outer), QStringLiteral("any|of the following apply")) << "an empty leading text has no label";
    EXPECT_EQ(Captions(first).section(QLatin1Char('|'), 0, 0), QStringLiteral("Customer name"));
    EXPECT_TRUE(Captions(first).endsWith(QStringLiteral("|Jo"))) << Captions(first).toStdString();
    TCustomCond *custom = panel->Query()->AddCustomCondition(panel->Filter(), shop.vipOnly);
    EXPECT_EQ(Captions(custom), QStringLiteral("VIP customers only"));
}

TEST_F(QueryPanelTest, FollowsTheQueryChangedInCode)
{
    BuildNested();
    TNQuery *q = panel->Query();
    EXPECT_EQ(panel->RowViewCount(), 6);
    q->DeleteRow(outer);
    EXPECT_EQ(panel->RowViewCount(), 2) << "a bracket goes with its rows";
    EXPECT_EQ(panel->RowView(deep), nullptr);
    QStringList text;
    q->SaveToStrings(text);
    q->ClearAll();
    EXPECT_EQ(panel->RowViewCount(), 1);
    q->LoadFromStrings(text);
    EXPECT_EQ(panel->RowViewCount(), 2);
    q->SetTitle(QStringLiteral("ttlAny"), QStringLiteral("either"));
    EXPECT_EQ(Captions(panel->Filter()), QStringLiteral("Choose records where|either|of the following apply"));
    q->MoveRowRight(panel->Filter()->GetRow(0));
    EXPECT_EQ(panel->RowView(panel->Filter()->GetRow(0))->Button()->Caption(), QStringLiteral("1"));
    EXPECT_EQ(panel->RowViewCount(), 3);
}

TEST_F(QueryPanelTest, AppearanceRebuildsOnlyOnARealChange)
{
    BuildNested();
    TQPAppearance &look = panel->Appearance();
    const TNRndBtn *before = panel->RowView(first)->Button();
    look.SetFieldColor(look.FieldColor());
    EXPECT_EQ(panel->RowView(first)->Button(), before) << "the same value rebuilds nothing";
    look.SetFieldColor(QColor(0, 128, 0));
    EXPECT_NE(panel->RowView(first)->Button(), before) << "another value rebuilds the rows";
    EXPECT_EQ(panel->RowView(first)->Slot(rsFirstLabel)->palette().color(QPalette::WindowText), QColor(0, 128, 0));

    TQPAppearance other;
    other.SetAddRowColor(Qt::red);
    other.SetButtonColor(Qt::yellow);
    look.SetLogOpStyle(losBeforeCond);
    look.AssignTo(other);
    EXPECT_EQ(other.AddRowColor(), QColor(Qt::red)) << "the target keeps its add-row colour";
    EXPECT_EQ(other.ButtonColor(), QColor(Qt::yellow));
    EXPECT_EQ(other.FieldColor(), QColor(0, 128, 0));
    EXPECT_EQ(other.LogOpStyle(), losBeforeCond);
}

TEST_F(QueryPanelTest, RefreshLosesNothing)
{
    BuildNested();
    deep->SetValue(1, QStringLiteral("100"));
    TNQuery *q = panel->Query();
    q->SetModified(false);
    QStringList before;
    q->SaveToStrings(before);
    const QString sentence = panel->RowView(deep)->Sentence();
    panel->RefreshPanel();
    QStringList after;
    q->SaveToStrings(after);
    EXPECT_EQ(after, before);
    EXPECT_FALSE(q->Modified());
    EXPECT_EQ(panel->Filter()->GetRow(1), outer) << "row pointers a host holds stay valid";
    EXPECT_EQ(panel->RowView(deep)->Sentence(), sentence);
    EXPECT_EQ(panel->CurrentRow(), nullptr);
}

TEST_F(QueryPanelTest, TitlesWithoutTheMarkAreRefusedOrShownAsWritten)
{
    BuildNested();
    panel->Deactivate();
    panel->Query()->SetTitle(QStringLiteral("ttlFilter"), QStringLiteral("Records"));
    EXPECT_EQ(Raised<ENQueryPanelError>([&] { panel->Activate(); }), QStringLiteral("4: Invalid filter title"));
    EXPECT_FALSE(panel->Active()) << "a failed activation leaves the panel usable";
    panel->Query()->SetTitle(QStringLiteral("ttlFilter"), QStringLiteral("Records @"));
    panel->Query()->SetTitle(QStringLiteral("ttlBracket"), QStringLiteral("Group"));
    EXPECT_EQ(Raised<ENQueryPanelError>([&] { panel->Activate(); }), QStringLiteral("5: Invalid string format"));
    panel->Query()->SetTitle(QStringLiteral("ttlBracket"), QStringLiteral("@ of these"));
    panel->Activate();
    panel->Query()->SetTitle(QStringLiteral("ttlBracket"), QStringLiteral("Group"));
    EXPECT_EQ(Captions(outer).section(QLatin1Char('|'), 0, 0), QStringLiteral("Group"))
        << "a live panel shows the title as written";
}

TEST_F(QueryPanelTest, UnresolvedRowsAreKeptAndMarked)
{
    BuildNested();
    QStringList text;
    panel->Query()->SaveToStrings(text);
    // A model changed after the query was saved: one field and one operator are gone.
    text.replaceInStrings(QStringLiteral("FieldID=8"), QStringLiteral("FieldID=999"));
    const qsizetype op = text.indexOf(QStringLiteral("Operator=Equal"), text.indexOf(QStringLiteral("[Row2.1.]")));
    text[op] = QStringLiteral("Operator=Resembles");
    panel->Query()->LoadFromStrings(text);
    deep = static_cast<TSimpleCond *>(panel->Filter()->RowByID(QStringLiteral("2.2.1.")));
    ASSERT_NE(panel->RowView(deep), nullptr) << "the row is kept";
    EXPECT_EQ(panel->RowView(deep)->Missing(), QStringLiteral("field"));
    EXPECT_EQ(panel->RowView(deep)->Slot(rsFirstLabel)->palette().color(QPalette::WindowText),
              TNQueryPanel::MissingColor());
    EXPECT_EQ(panel->RowView(panel->Filter()->RowByID(QStringLiteral("2.1.")))->Missing(), QStringLiteral("operator"));
    EXPECT_EQ(panel->RowView(panel->Filter()->RowByID(QStringLiteral("1.")))->Missing(), QString());
}

TEST_F(QueryPanelTest, SurvivesItsModelBeingFreed)
{
    BuildNested();
    shop.model.reset();
    EXPECT_FALSE(panel->Active());
    panel->Activate();
    EXPECT_EQ(panel->RowView(deep)->Missing(), QStringLiteral("field, operator"));
    QImage image(panel->viewport()->size(), QImage::Format_ARGB32);
    QPainter painter(&image);
    panel->draw(&painter, image.rect());
}

TEST_F(QueryPanelTest, PaintsTheCurrentRowAndItsFocusFrame)
{
    BuildNested();
    panel->Appearance().SetActiveRowColor(QColor(255, 255, 0));
    panel->SetCurrentRow(first);
    const TQueryRowView *view = panel->RowView(first);
    ASSERT_NE(view->CurrentControl(), nullptr);
    QImage image(panel->viewport()->size(), QImage::Format_ARGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    panel->draw(&painter, image.rect());
    painter.end();
    const QRect band = view->GetRowRect();
    EXPECT_EQ(image.pixelColor(band.right() - 1, band.top() + 1), QColor(255, 255, 0));
    const QRect control = view->CurrentControl()->geometry().adjusted(-2, -2, 1, 1);
    EXPECT_EQ(image.pixelColor(control.topLeft()), QColor(Qt::black)) << "focus frame grown by 2 pixels";
    EXPECT_NE(image.pixelColor(panel->RowView(deep)->GetRowRect().center().x() + 200,
                               panel->RowView(deep)->GetRowRect().center().y()),
              QColor(255, 255, 0));
}

TEST_F(QueryPanelTest, DeepNestingAndLargeQueriesStayUsable)
{
    TNQuery *q = panel->Query();
    q->BeginUpdate();
    TFilterBracket *bracket = q->Filter();
    for (int level = 0; level < 200; ++level)
        bracket = bracket->AddNewBracket();
    TSimpleCond *bottom = q->AddCondition(bracket, shop.custName);
    q->EndUpdate();
    ASSERT_NE(panel->RowView(bottom), nullptr);
    EXPECT_EQ(panel->RowView(bottom)->Button()->x(), 5 + 20 * 201);
    EXPECT_GT(panel->horizontalScrollBar()->maximum(), 0) << "the deep rows can be scrolled to";
    q->DeleteRow(q->Filter()->GetRow(0));
    EXPECT_EQ(panel->RowViewCount(), 1);
    EXPECT_NE(q->AddCondition(q->Filter(), shop.custCity), nullptr);
    EXPECT_EQ(panel->RowViewCount(), 2);
}

TEST_F(QueryPanelTest, ListsFillWhenFirstDroppedAndTheCheckBoxTogglesTheRow)
{
    BuildNested();
    auto *field = static_cast<TDropDownList *>(panel->RowView(first)->Slot(rsFirstLabel));
    auto *op = static_cast<TDropDownList *>(panel->RowView(first)->Slot(rsSecondLabel));
    EXPECT_TRUE(field->Items().isEmpty()) << "nothing is built before it is needed";
    field->BeforeDropDown(field);
    op->BeforeDropDown(op);
    EXPECT_TRUE(field->Items().contains(QStringLiteral("Customer name")));
    EXPECT_EQ(field->Caption(), QStringLiteral("Customer name")) << "the current field stays selected";
    EXPECT_EQ(op->Values().size(), shop.custName->OperatCount());
    EXPECT_EQ(op->Caption(), panel->RowView(first)->Slot(rsSecondLabel)->Caption());

    panel->RowView(outer)->CheckBox()->setChecked(false);
    QCoreApplication::processEvents();
    EXPECT_FALSE(outer->Enabled());
    EXPECT_FALSE(panel->RowView(deep)->Slot(rsFirstLabel)->isEnabled()) << "rows of a disabled bracket grey out";
}

TEST_F(QueryPanelTest, LogicalOperatorsJoinNeighbouringRows)
{
    struct Row { int line; TLogicalOperatorStyle style; QString shown; const char *why; };
    const Row rows[] = {
        {__LINE__, losHidden, QStringLiteral("----"), "hidden everywhere"},
        {__LINE__, losBeforeCond, QStringLiteral("-+-+"), "before all but a bracket's first row"},
        {__LINE__, losAfterCond, QStringLiteral("+-+-"), "after all but a bracket's last row"},
    };
    BuildNested();
    TFilterRow *city = outer->GetRow(0);
    for (const Row &r : rows) {
        SCOPED_TRACE(::testing::Message() << "line " << r.line << ": " << r.why);
        panel->Appearance().SetLogOpStyle(r.style);
        QString shown;
        for (const TFilterRow *row : {static_cast<TFilterRow *>(first), static_cast<TFilterRow *>(outer), city,
                                      static_cast<TFilterRow *>(inner)})
            shown += panel->RowView(row)->LogOpLabel()->isHidden() ? QLatin1Char('-') : QLatin1Char('+');
        EXPECT_EQ(shown, r.shown);
    }
    panel->Query()->DeleteRow(inner);
    EXPECT_TRUE(panel->RowView(city)->LogOpLabel()->isHidden()) << "the row left last loses its operator";
}

} // namespace
} // namespace vm20
