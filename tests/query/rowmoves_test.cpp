// Row moves, row deletion and the notifications a view over the tree hears:
// each move checked as the whole tree before and after, and the exact order
// of notifications for adds, moves, deletion, loading and SQL reading.
#include "shopquery.h"

#include <QStringList>

using namespace vm20;
using namespace shop;

namespace {

class RowMovesTest : public ShopQueryFixture
{
protected:
    // A tree written as "1 (2 3 (4)) 5": numbers are conditions (City equal
    // to that number), parentheses brackets.
    void Build(const QString &shape)
    {
        std::vector<TFilterBracket *> open{query.Filter()};
        const QStringList tokens = QString(shape).replace("(", " ( ").replace(")", " ) ").split(' ', Qt::SkipEmptyParts);
        for (const QString &token : tokens) {
            if (token == "(")
                open.push_back(query.AddBracket(open.back()));
            else if (token == ")")
                open.pop_back();
            else
                AddCond(open.back(), s.custCity, "Equal", token);
        }
    }
    QString Shape(const TFilterBracket *bracket = nullptr) const
    {
        QStringList parts;
        for (const auto &row : (bracket ? bracket : query.Filter())->Rows())
            parts << (row->IsBracket() ? "(" + Shape(static_cast<TFilterBracket *>(row.get())) + ")"
                                       : static_cast<TFilterCond *>(row.get())->GetValue(1));
        return parts.join(' ');
    }
    TFilterRow *Row(const QString &value) const
    {
        for (int n = 1; n < query.GetRowCount(); ++n)
            if (auto *cond = dynamic_cast<TFilterCond *>(query.GetRowByNum(n)); cond && cond->GetValue(1) == value)
                return cond;
        return nullptr;
    }
};

// Names a row as a view would: a condition by its value, a bracket by its
// identifier.
QString Name(const TFilterRow *row)
{
    if (!row)
        return "none";
    if (row->IsBracket())
        return row->Parent() ? "bracket " + row->RowID() : QString("root");
    return static_cast<const TFilterCond *>(row)->GetValue(1);
}

class Recorder : public TNQueryObserver
{
public:
    void RowInserted(TFilterRow *row) override { events << "inserted " + Name(row); }
    void RowRemoved(TFilterRow *row) override
    {
        // A removed bracket still holds its sub-tree while the observers hear of it.
        events << "removed " + Name(row)
                      + (row->IsBracket() ? QStringLiteral(" of %1").arg(static_cast<TFilterBracket *>(row)->GetRowCount()) : QString());
    }
    void RowChanged(TFilterRow *row) override { events << "changed " + Name(row); }
    void RowMoved(TFilterRow *row, TFilterBracket *oldParent, int oldIndex) override
    {
        events << QStringLiteral("moved %1 from %2 at %3").arg(Name(row), Name(oldParent)).arg(oldIndex);
    }
    void RowAdded(TFilterRow *row) override { events << "added " + Name(row); }
    void TitlesChanged() override { events << "titles"; }
    void Reset() override { events << "reset"; }
    QStringList events;
};

enum Move { Up, Down, Left, Right };

TEST_F(RowMovesTest, MovesRowsWithinTheTreeRules)
{
    const struct {
        int line;
        const char *tree;
        const char *row;
        Move move;
        bool moved;
        const char *after;
    } cases[] = {
        {__LINE__, "1 2 3", "1", Up, false, "1 2 3"},                       // first row stays
        {__LINE__, "1 2 3", "2", Up, true, "2 1 3"},                        // swaps with the previous
        {__LINE__, "1 (2 3) 4", "3", Down, false, "1 (2 3) 4"},             // last in its bracket stays
        {__LINE__, "1 (2 3) 4", "1", Down, true, "(2 3) 1 4"},              // swaps with a whole bracket
        {__LINE__, "1 2", "1", Left, false, "1 2"},                         // level 1 cannot outdent
        {__LINE__, "1 (2 3) 4", "2", Left, true, "1 (3) 2 4"},              // right after its bracket
        {__LINE__, "1 (2) 4", "2", Left, true, "1 2 4"},                    // the emptied bracket goes
        {__LINE__, "((1))", "1", Left, true, "(1)"},                        // only row of a nested bracket
        {__LINE__, "1 2", "1", Right, true, "(1) 2"},                       // first row: wrapped alone
        {__LINE__, "1 (2) 3", "3", Right, true, "1 (2 3)"},                 // joins the bracket before it
        {__LINE__, "1 2 3", "2", Right, true, "1 (2) 3"},                   // wrapped in place
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(::testing::Message() << "line " << c.line);
        query.ClearAll();
        query.SetNonEmptyBrackets(true);   // a wrapping bracket must not get an empty condition
        Build(c.tree);
        query.SetNonEmptyBrackets(false);
        if (QString(c.tree).contains('('))
            for (int n = query.GetRowCount() - 1; n > 0; --n)   // drop the brackets' own empty conditions
                if (auto *cond = dynamic_cast<TFilterCond *>(query.GetRowByNum(n)); cond && cond->GetValue(1).isEmpty())
                    query.DeleteRow(cond);
        ASSERT_EQ(Shape(), c.tree);
        TFilterRow *row = Row(c.row);
        bool moved = false;
        switch (c.move) {
        case Up: moved = query.MoveRowUp(row); break;
        case Down: moved = query.MoveRowDown(row); break;
        case Left: moved = query.MoveRowLeft(row); break;
        case Right: moved = query.MoveRowRight(row); break;
        }
        EXPECT_EQ(moved, c.moved);
        EXPECT_EQ(Shape(), c.after);
        EXPECT_EQ(Row(c.row), row) << "the moved row is the same object";
    }
}

TEST_F(RowMovesTest, RefusesTheRootAndRowsOfOtherQueries)
{
    Build("1 2");
    TNQuery other;
    TSimpleCond *foreign = other.AddCondition(nullptr, nullptr);
    for (TFilterRow *row : {static_cast<TFilterRow *>(query.Filter()), static_cast<TFilterRow *>(foreign), static_cast<TFilterRow *>(nullptr)}) {
        EXPECT_FALSE(query.MoveRowUp(row) || query.MoveRowDown(row) || query.MoveRowLeft(row) ||
                     query.MoveRowRight(row) || query.DeleteRow(row));
    }
    EXPECT_EQ(Shape(), "1 2");
    EXPECT_EQ(other.Filter()->GetRowCount(), 1);
}

TEST_F(RowMovesTest, ObserversHearOneNotificationPerMoveAndTheRowToMakeCurrent)
{
    const struct {
        int line;
        std::function<void()> act;
        QStringList events;
    } cases[] = {
        {__LINE__, [this] { query.MoveRowUp(Row("3")); },
         {"moved 3 from bracket 2. at 1"}},
        {__LINE__, [this] { query.MoveRowRight(Row("1")); },
         {"inserted bracket 1.", "moved 1 from root at 1"}},
        {__LINE__, [this] { query.MoveRowLeft(Row("2")); },
         {"moved 2 from bracket 2. at 0"}},
        {__LINE__, [this] { query.MoveRowLeft(Row("4")); query.MoveRowLeft(Row("3")); query.MoveRowLeft(Row("2")); },
         {"moved 4 from bracket 2. at 2", "moved 3 from bracket 2. at 1", "moved 2 from bracket 2. at 0",
          "removed bracket 2. of 0"}},
        {__LINE__, [this] { query.AddCondition(nullptr, s.custName); },
         {"inserted ", "changed ", "added "}},
        {__LINE__, [this] { query.SetNonEmptyBrackets(true); query.AddBracket(nullptr); },
         {"inserted bracket 3.", "inserted ", "added "}},
        {__LINE__, [this] { query.Filter()->SetEnabled(false); query.DeleteRow(Row("1")); query.DeleteRow(query.GetRowByNum(1)); },
         {"changed root", "removed 1", "removed bracket 1. of 4", "changed root"}},
        {__LINE__, [this] { Row("2")->SetEnabled(false); Row("2")->SetEnabled(false); },
         {"changed 2"}},   // the second call is no change
        {__LINE__, [this] { query.BeginUpdate(); AddCond(s.custCity, "Equal", "9"); query.Filter()->ClearRows(); query.EndUpdate(); },
         {"reset"}},
        {__LINE__, [this] { query.SetTitle("ttlBracket", "@ of these"); query.SetTitle("ttlBracket", "@ of these"); },
         {"titles"}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(::testing::Message() << "line " << c.line);
        query.ClearAll();
        Build("1 (2 3 4)");
        Recorder recorder;
        query.AddObserver(&recorder);
        c.act();
        EXPECT_EQ(recorder.events, c.events);
        query.RemoveObserver(&recorder);
    }
}

TEST_F(RowMovesTest, LoadingAndReadingSQLSendOneReset)
{
    Build("1 (2 3)");
    static_cast<TFilterBracket *>(query.GetRowByNum(2))->SetLinkType(fltAll);   // keeps it a bracket in SQL
    AddColumn(s.custName);
    query.SetSaveTitles(true);
    query.SetTitle("ttlBracket", "@ of these");
    QStringList text;
    query.SaveToStrings(text);
    query.BuildQuery();
    const QStringList sql = query.GetSQL();

    Recorder recorder;
    query.AddObserver(&recorder);
    query.LoadFromStrings(text);
    EXPECT_EQ(recorder.events, QStringList({"reset"})) << "titles that did not change are not news";
    recorder.events.clear();
    query.LoadDefTitles();
    query.LoadFromStrings(text);
    EXPECT_EQ(recorder.events, QStringList({"titles", "reset", "titles"}));
    recorder.events.clear();
    query.ParseSQL(sql);
    EXPECT_EQ(recorder.events, QStringList({"reset"}));
    EXPECT_EQ(Shape(), "1 (2 3)");
    query.RemoveObserver(&recorder);
}

} // namespace
