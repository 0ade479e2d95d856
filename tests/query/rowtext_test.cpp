// One row with its sub-tree as query text, and rows read from such text
// into a bracket of a query: what copying and pasting rows rests on.
#include "shopquery.h"
#include "support/exception.h"

using namespace vm20;
using namespace shop;

namespace {

struct TRecorder : TNQueryObserver
{
    QStringList calls;
    void RowInserted(TFilterRow *row) override { calls << "inserted " + row->RowID(); }
    void RowRemoved(TFilterRow *row) override { calls << "removed " + row->RowID(); }
    void RowChanged(TFilterRow *row) override { calls << "changed " + row->RowID(); }
    void RowAdded(TFilterRow *row) override { calls << "added " + row->RowID(); }
    void Reset() override { calls << "reset"; }
};

class TRowTextTest : public ShopQueryFixture
{
protected:
    // 1. name = Ann; 2. (any: 2.1. city = Paris; 2.2. (none: 2.2.1. big customers)); 3. vip only
    void Build()
    {
        AddCond(s.custName, "Equal", "Ann");
        TFilterBracket *b = query.AddBracket(nullptr);
        b->SetLinkType(fltAny);
        AddCond(b, s.custCity, "Equal", "Paris");
        TFilterBracket *inner = query.AddBracket(b);
        inner->SetLinkType(fltNone);
        query.AddCustomCondition(inner, s.bigCustomers)->SetValue(1, "1000");
        query.AddCustomCondition(nullptr, s.vipOnly);
        query.SetQueryName("kept");
    }
    QStringList Text(const TFilterRow *row)
    {
        QStringList lines;
        query.SaveRowToStrings(row, lines);
        return lines;
    }
    QStringList Whole()
    {
        QStringList lines;
        query.SaveToStrings(lines);
        return lines;
    }
};

TEST_F(TRowTextTest, PastedRowsReadAsTheCopiedOnesAndOnlyThemChange)
{
    Build();
    TFilterRow *bracket = query.GetRowByNum(2);
    const QStringList copied = Text(bracket);
    TRecorder recorder;
    query.AddObserver(&recorder);
    // After the bracket's sub-tree: into the root at index 2.
    const std::vector<TFilterRow *> pasted = query.InsertRowsFromStrings(nullptr, 2, copied);
    query.RemoveObserver(&recorder);

    ASSERT_EQ(pasted.size(), 1u);
    EXPECT_EQ(pasted[0]->RowID(), "3.");
    EXPECT_EQ(Text(pasted[0]), copied) << "the copy reads exactly as the original";
    EXPECT_EQ(recorder.calls, QStringList{"inserted 3."}) << "one insertion, the sub-tree within it";
    EXPECT_EQ(query.GetRowCount(), 7 + 4);
    EXPECT_EQ(query.GetRowByNum(10)->RowID(), "4.") << "the row after it moved down";
    EXPECT_EQ(query.QueryName(), "kept");
    EXPECT_EQ(static_cast<TFilterBracket *>(pasted[0])->LinkType(), fltAny);
}

TEST_F(TRowTextTest, TheRootStandsForAllRowsAndTheTextLoadsAsAQuery)
{
    Build();
    const QStringList all = Text(query.Filter());
    TNQuery other;
    other.SetDBStruct(s.model.get());
    other.AddBracket(nullptr);
    const std::vector<TFilterRow *> pasted =
        other.InsertRowsFromStrings(static_cast<TFilterBracket *>(other.GetRowByNum(1)), 0, all);
    EXPECT_EQ(pasted.size(), 3u) << "the root's three rows, not the root";
    EXPECT_EQ(other.GetRowCount(), 1 + 1 + 6);
    EXPECT_EQ(other.GetRowByNum(7)->RowID(), "1.3.");

    // A single row's text is a whole query holding just that row.
    const QStringList one = Text(query.GetRowByNum(3));
    other.LoadFromStrings(one);
    EXPECT_EQ(other.GetRowCount(), 2);
    EXPECT_EQ(other.GetRowByNum(1)->Labels(), query.GetRowByNum(3)->Labels());
    EXPECT_EQ(other.Filter()->LinkType(), fltAny) << "the link type it had in its bracket";
    EXPECT_TRUE(other.UnresolvedItems().empty());
}

TEST_F(TRowTextTest, RefusesWhatIsNoRowTextAndLeavesTheQueryAsItWas)
{
    const QStringList good = {"[Main]", "Version=3.6", "", "[Row]", "Enabled=1", "RowType=1", "LinkType=0",
                              "RowCount=2", "", "[Row1.]", "RowType=0", "Enabled=1", "FieldID=3",
                              "Operator=Equal", "Value1=Paris", "", "[Row2.]", "Enabled=1", "RowType=1",
                              "LinkType=1", "RowCount=1", "", "[Row2.1.]", "RowType=2", "Enabled=1",
                              "CondID=2", ""};
    const auto replaced = [&good](const QString &from, const QString &to) {
        QStringList lines = good;
        lines[lines.indexOf(from)] = to;
        return lines;
    };
    struct Row { int line; QStringList text; const char *reason; };
    const Row rows[] = {
        {__LINE__, {}, "nothing at all"},
        {__LINE__, {"name = Ann", "and more words"}, "plain text"},
        {__LINE__, good.mid(0, 3), "a [Main] without rows"},
        {__LINE__, replaced("CondID=2", "CondID=x"), "a nested row that is malformed, after good rows"},
        {__LINE__, replaced("[Row2.1.]", "[Row2.7.]"), "a nested row under the wrong name"},
        {__LINE__, {QString(5000, QChar('[')), "[Row]", "RowType=1", "RowCount=99999999"}, "a hostile count"},
    };
    Build();
    const QStringList before = Whole();
    TRecorder recorder;
    query.AddObserver(&recorder);
    for (const Row &row : rows) {
        const std::string where = "line " + std::to_string(row.line) + ": " + row.reason;
        EXPECT_THROW(query.InsertRowsFromStrings(nullptr, 1, row.text), EConvertError) << where;
        EXPECT_EQ(Whole(), before) << where;
        EXPECT_TRUE(recorder.calls.isEmpty()) << where << ": " << recorder.calls.join(", ").toStdString();
        EXPECT_TRUE(query.UnresolvedItems().empty()) << where;
    }
    query.RemoveObserver(&recorder);
    EXPECT_EQ(query.InsertRowsFromStrings(nullptr, 1, good).size(), 2u) << "still usable";

    // Not a place in this query's tree.
    TNQuery other;
    other.SetDBStruct(s.model.get());
    EXPECT_THROW(query.InsertRowsFromStrings(other.Filter(), 0, good), Exception);
    EXPECT_THROW(query.InsertRowsFromStrings(nullptr, 99, good), EListError);
}

TEST_F(TRowTextTest, KeepsConditionsTheModelCannotResolve)
{
    const QStringList text = {"[Main]", "Version=3.6", "", "[Row]", "Enabled=1", "RowType=1", "LinkType=0",
                              "RowCount=1", "", "[Row1.]", "RowType=0", "Enabled=1", "FieldID=99",
                              "Operator=Equal", "Value1=x", ""};
    query.InsertRowsFromStrings(nullptr, 0, text);
    const std::vector<TUnresolvedItem> items = query.UnresolvedItems();
    ASSERT_EQ(items.size(), 1u);
    EXPECT_EQ(items[0].Text(), "row 1: unknown field (FieldID=99)");
}

} // namespace
