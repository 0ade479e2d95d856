// The condition tree: numbering in display order, identifiers, positions by
// row number, what links are told, labels and query text.
#include "model/errors.h"
#include "common/raises.h"
#include "shopquery.h"

using namespace vm20;
using namespace shop;

namespace {

class TFilterBracketTest : public ShopQueryFixture
{
protected:
    // root [ a, b [ c, d [ e ] ], f ]
    void BuildTree()
    {
        TFilterBracket *root = query.Filter();
        a = AddCond(s.custCity, "Equal", "Paris");
        b = query.AddBracket(root);
        c = AddCond(b, s.custName, "Equal", "x");
        d = query.AddBracket(b);
        e = AddCond(d, s.custId, "Equal", "1");
        f = AddCond(s.custVip, "Equal", "True");
    }
    // "number id level" of every row in display order.
    QStringList Numbering() const
    {
        QStringList rows;
        for (int n = 0; n < query.GetRowCount(); ++n) {
            const TFilterRow *row = query.GetRowByNum(n);
            rows << QStringLiteral("%1 %2 %3").arg(row->RowNum()).arg(row->RowID()).arg(row->Level());
        }
        return rows;
    }

    TFilterRow *a, *c, *e, *f;
    TFilterBracket *b, *d;
};

TEST_F(TFilterBracketTest, NumbersRowsInDisplayOrderWithTheirIdentifiers)
{
    BuildTree();
    EXPECT_EQ(Numbering(), QStringList({"0  0", "1 1. 1", "2 2. 1", "3 2.1. 2", "4 2.2. 2", "5 2.2.1. 3",
                                         "6 3. 1"}));
    EXPECT_EQ(e->ButtonCaption(), "2.2.1");
    EXPECT_EQ(query.Filter()->RowByID("2.2.1."), e);
    EXPECT_EQ(query.Filter()->RowByID("2.3."), nullptr);

    query.Filter()->DeleteRow(1);
    EXPECT_EQ(Numbering(), QStringList({"0  0", "1 1. 1", "2 2. 1"})) << "b and its sub-tree are gone";
    EXPECT_EQ(f->RowID(), "2.");
}

TEST_F(TFilterBracketTest, InsertsByRowNumberAtTheDisplayedPlace)
{
    BuildTree();
    EXPECT_EQ(query.Filter()->GetLastRowNum(), 6);
    EXPECT_EQ(b->GetLastRowNum(), 5) << "the last row of the sub-tree";
    EXPECT_EQ(b->IndexForNewRow(4), 1);
    EXPECT_EQ(query.Filter()->IndexByRowNum(6), 2);
    TSimpleCond *inserted = query.AddConditionNum(b, 4, s.orderTotal);
    EXPECT_EQ(inserted->RowID(), "2.2.");
    EXPECT_EQ(d->RowID(), "2.3.");
    EXPECT_EQ(inserted->Operator(), s.orderTotal->GetOperator(0)) << "a new field brings its first operator";
    TFilterRow *appended = query.AddCondition(b, nullptr);
    EXPECT_EQ(appended->RowNum(), 7) << "after the last row of b's sub-tree";
    query.SetNonEmptyBrackets(true);
    EXPECT_EQ(query.AddBracket(nullptr)->GetRowCount(), 1);
}

TEST_F(TFilterBracketTest, RefusesRowsThatWouldBreakTheTree)
{
    BuildTree();
    std::unique_ptr<TFilterRow> detached = query.Filter()->InternalDeleteRow(1);
    EXPECT_THROW(d->InsertRow(0, std::move(detached)), Exception) << "b would hold itself";
    TNQuery other;
    EXPECT_THROW(query.Filter()->AddRow(std::make_unique<TSimpleCond>(&other)), Exception);
    EXPECT_THROW(query.Filter()->InsertRow(5, std::make_unique<TSimpleCond>(&query)), EListError);
    EXPECT_EQ(query.GetRowCount(), 3) << "root, a and f remain";
}

TEST_F(TFilterBracketTest, DerivesHavingAndBracketKindFromTheFirstCondition)
{
    TFilterBracket *outer = query.AddBracket(query.Filter());
    TFilterBracket *inner = query.AddBracket(outer);
    EXPECT_FALSE(outer->GetIsHavingRow()) << "no condition: WHERE";
    AddCond(outer, s.totalSales, "GreaterThan", "1");
    EXPECT_TRUE(outer->GetIsHavingRow()) << "the bracket before the condition is skipped";
    EXPECT_EQ(outer->BracketKind(), 1) << "but the kind asks the first row, a bracket";
    outer->InsertRow(0, outer->InternalDeleteRow(1));
    EXPECT_EQ(outer->BracketKind(), 2);
    EXPECT_EQ(inner->BracketKind(), 2) << "inherits its parent's";
    EXPECT_EQ(inner->RowID(), "1.2.");
    EXPECT_EQ(query.Filter()->BracketKind(), 0);
}

TEST_F(TFilterBracketTest, NumbersAndFreesDeeplyNestedTreesWithoutRecursion)
{
    TFilterBracket *bracket = query.Filter();
    query.BeginUpdate();
    for (int i = 0; i < 100000; ++i)
        bracket = bracket->AddNewBracket();
    AddCond(bracket, s.custCity, "Equal", "Deep");
    query.EndUpdate();
    AddColumn(s.custName);
    EXPECT_EQ(query.GetRowByNum(100001)->Level(), 100001);
    query.BuildQuery();
    EXPECT_EQ(query.QResult().WhereLines().size(), 2 * 100001 + 1);
    query.ClearAll();
    EXPECT_EQ(query.GetRowCount(), 1);
}

TEST_F(TFilterBracketTest, WritesTheTreeAsTextFromTheLabels)
{
    query.Filter()->SetLinkType(fltAll);
    AddCond(s.custCity, "Equal", "Paris");
    TFilterBracket *bracket = query.AddBracket(query.Filter());
    AddCond(bracket, s.orderTotal, "Between", "1", "5");
    AddCond(bracket, s.custVip, "IsNull");
    AddCond(s.custName, "Equal", "hidden")->SetEnabled(false);
    query.AddCustomCondition(query.Filter(), s.bigCustomers);
    query.AddCustomCondition(query.Filter(), s.vipOnly);
    EXPECT_EQ(query.GetQueryText(),
              "Choose records where all of the following apply \r\n"
              "  City is equal to Paris \r\n"
              "   any of the following apply \r\n"
              "    Order total is between 1 and 5 \r\n"
              "    VIP is null \r\n"
              "  Customer has more than _____ \r\n"
              "  VIP customers only");
    query.SetTitle("ttlBracket", "_ @ of these");
    EXPECT_EQ(bracket->Labels(), QStringList({"_", "any", "of these"}));
    EXPECT_TRUE(query.GetQueryText().contains("\r\n  any of these \r\n")) << "a label reading _ is skipped";
}

TEST_F(TFilterBracketTest, RejectsTitlesWithoutTheLinkTypeMark)
{
    TFilterBracket *bracket = query.AddBracket(query.Filter());
    query.SetTitle("ttlFilter", "Choose records");
    query.SetTitle("ttlBracket", "broken");
    EXPECT_TRUE(Raised<ENQueryPanelError>([&] { query.Filter()->Labels(); }).startsWith("4: "));
    EXPECT_TRUE(Raised<ENQueryPanelError>([&] { bracket->Labels(); }).startsWith("5: "));
}

class LinkRecorder : public TNQueryPanelLink
{
public:
    LinkRecorder(QStringList &log, const char *name) : FLog(log), FName(name) {}
    void QueryChanged() override { FLog << FName; }

private:
    QStringList &FLog;
    QString FName;
};

TEST_F(TFilterBracketTest, QueryChangedTellsLinksThenOnChangeOnce)
{
    QStringList log;
    LinkRecorder first(log, "first"), second(log, "second");
    first.SetQueryPanel(&query);
    second.SetQueryPanel(&query);
    query.OnChange = [&log](TNQuery *sender) {
        log << "change";
        sender->QueryChanged();   // a change made inside the handler does not come back
    };
    query.QueryChanged();
    EXPECT_EQ(log, QStringList({"first", "second", "change"}));
    EXPECT_TRUE(query.Modified());

    log.clear();
    query.BeginLoading();
    query.QueryChanged();
    query.EndLoading();
    second.SetQueryPanel(nullptr);
    query.QueryChanged();
    EXPECT_EQ(log, QStringList({"first", "change"}));
}

TEST_F(TFilterBracketTest, KeepsParametersWithTheirConditions)
{
    int paramListChanges = 0;
    query.OnParamListChange = [&paramListChanges](TNQuery *) { ++paramListChanges; };
    TSimpleCond *cond = AddCond(s.custName, "Between");
    cond->SetValueIsParam(1, true);
    cond->SetValueIsParam(2, true);
    AddCond(s.custName, "Equal")->SetValueIsParam(1, true);
    const TQueryResult &result = query.QResult();
    ASSERT_EQ(result.GetParamCount(), 3);
    EXPECT_EQ(result.GetParam(0)->ParamName(), "Name");
    EXPECT_EQ(result.GetParam(1)->ParamName(), "Name1");
    EXPECT_EQ(result.GetParam(1)->DisplayName(), "Customer name 2");
    EXPECT_EQ(result.FindParameterByCondition(cond, 2), cond->GetParam(2));
    EXPECT_EQ(cond->Labels().value(4), "Customer name 2");
    query.Filter()->DeleteRow(0);
    EXPECT_EQ(result.GetParamCount(), 1);
    EXPECT_EQ(result.FindParameter("name1"), nullptr);
    EXPECT_EQ(paramListChanges, 4);
}

TEST_F(TFilterBracketTest, WritesTheEqualValueOfAFieldIntoSQLParams)
{
    TSimpleCond *cond = AddCond(s.custCity, "Equal", "Rome");
    EXPECT_EQ(query.SQLParams(), QStringList({"City='Rome'"}));
    cond->SetOperator(s.Op("NotEqual"));
    EXPECT_EQ(query.SQLParams(), QStringList({"City="}));
}

} // namespace
