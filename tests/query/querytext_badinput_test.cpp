// Malformed query texts: a conversion error, and a cleared query that still
// works.
#include "model/errors.h"
#include "shopquery.h"

using namespace vm20;
using namespace shop;

namespace {

class TNQueryBadTextTest : public ShopQueryFixture
{
protected:
    // A valid text: root bracket with a condition and a nested bracket
    // holding a custom condition.
    static QStringList Good()
    {
        return {"[Main]", "QueryName=good", "Version=3.6", "Options=2", "",
                "[RFields]", "Count=1", "Version=3.6", "JustSorting=0", "",
                "[RField1]", "Formula=@1", "Fields=2", "Alias=Name", "Caption=Name", "",
                "[Row]", "Enabled=1", "RowType=1", "LinkType=0", "RowCount=2", "",
                "[Row1.]", "RowType=0", "Enabled=1", "FieldID=3", "Operator=Equal", "Value1=Paris", "",
                "[Row2.]", "Enabled=1", "RowType=1", "LinkType=1", "RowCount=1", "",
                "[Row2.1.]", "RowType=2", "Enabled=1", "CondID=2", ""};
    }
    static QStringList Replaced(const QString &from, const QString &to)
    {
        QStringList lines = Good();
        const int at = int(lines.indexOf(from));
        EXPECT_GE(at, 0) << from.toStdString();
        if (to.isNull())
            lines.removeAt(at);
        else
            lines[at] = to;
        return lines;
    }
};

TEST_F(TNQueryBadTextTest, RaisesAConversionErrorAndClearsTheQueryOnBadText)
{
    struct Row { int line; QStringList text; const char *reason; };
    const Row rows[] = {
        {__LINE__, Replaced("RowType=0", QString()), "a condition without RowType"},
        {__LINE__, Replaced("RowType=0", "RowType=7"), "an unknown row type"},
        {__LINE__, Replaced("Enabled=1", "Enabled="), "the root's Enabled empty"},
        {__LINE__, Replaced("RowCount=2", "RowCount=two"), "a row count that is no number"},
        {__LINE__, Replaced("RowCount=2", "RowCount=3"), "a row section that is missing"},
        {__LINE__, Replaced("LinkType=1", "LinkType=4"), "a link type out of range"},
        {__LINE__, Replaced("CondID=2", QString()), "a custom condition without CondID"},
        {__LINE__, Replaced("Options=2", "Options=distinct"), "options that are no number"},
        {__LINE__, Replaced("[Row2.1.]", "[Row2.9.]"), "a row under the wrong name"},
        {__LINE__, Replaced("RowType=1", "RowType=0"), "a root that is no bracket"},
    };
    for (const Row &row : rows) {
        const std::string where = "line " + std::to_string(row.line) + ": " + row.reason;
        query.AddCondition(nullptr, s.custName);
        query.SetActive(true);
        EXPECT_THROW(query.LoadFromStrings(row.text), EConvertError) << where;
        EXPECT_EQ(query.GetRowCount(), 1) << where;
        EXPECT_EQ(query.RFields().Count(), 0) << where;
        EXPECT_EQ(query.QueryName(), "") << where;
        EXPECT_TRUE(query.Active()) << where;
        EXPECT_FALSE(query.Loading()) << where;

        query.LoadFromStrings(Good());
        EXPECT_EQ(query.GetRowCount(), 4) << where << " (the query is usable after)";
    }
}

TEST_F(TNQueryBadTextTest, LoadsWhatOnlyLosesPartsAndListsWhatIsLost)
{
    struct Row { int line; QStringList text; int rows; const char *unresolved, *reason; };
    const Row rows[] = {
        {__LINE__, {}, 1, "", "no lines: an empty query"},
        {__LINE__, {"just", "some", "words"}, 1,
         "query: incomplete query text (no [Main] section); query: incomplete query text (no [Row] section)",
         "no sections at all"},
        {__LINE__, Good().mid(0, 16), 1, "query: incomplete query text (no [Row] section)", "no conditions"},
        {__LINE__, Replaced("RowCount=2", "RowCount=-5"), 1, "", "a negative row count reads no rows"},
        {__LINE__, Replaced("Count=1", "Count=1000000"), 4,
         "query: incomplete query text (1 of 1000000 result columns)", "result columns that are not there"},
        {__LINE__, Replaced("FieldID=3", "FieldID=abc"), 4, "row 1: unknown field (FieldID=abc)",
         "a field ID that is no number"},
        {__LINE__, Replaced("Operator=Equal", "Operator=Nope"), 4, "row 1: unknown operator (Operator=Nope)",
         "an operator the model lacks"},
        {__LINE__, Replaced("CondID=2", "CondID=99"), 4, "row 3: unknown predefined condition (CondID=99)",
         "a predefined condition the model lacks"},
        {__LINE__, Replaced("Fields=2", "Fields=99"), 4, "result column 1: unknown field (Name)",
         "a column's field the model lacks"},
        {__LINE__, Replaced("Options=2", "MainTable=Nowhere"), 4, "query: unknown table (MainTable=Nowhere)",
         "a main table the model lacks"},
    };
    for (const Row &row : rows) {
        query.LoadFromStrings(row.text);
        EXPECT_EQ(query.GetRowCount(), row.rows) << "line " << row.line << ": " << row.reason;
        QStringList texts;
        for (const TUnresolvedItem &item : query.UnresolvedItems())
            texts << item.Text();
        EXPECT_EQ(texts.join("; "), row.unresolved) << "line " << row.line << ": " << row.reason;
    }
    query.LoadFromStrings(Replaced("FieldID=3", "FieldID=99"));
    const std::vector<TUnresolvedItem> items = query.UnresolvedItems();
    ASSERT_EQ(items.size(), 1u);
    EXPECT_EQ(items[0].Row, query.GetRowByNum(1)) << "the row itself, for a view to mark";
    query.Filter()->DeleteRow(0);
    EXPECT_TRUE(query.UnresolvedItems().empty()) << "a removed row is no longer listed";
}

TEST_F(TNQueryBadTextTest, ReportsFilesItCannotReadOrWriteAndAMissingModel)
{
    EXPECT_THROW(TNQuery().LoadFromStrings(Good()), ENQueryPanelError);
    const QString missing = QString(VM20_BINARY_DIR) + "/no/such/dir/q.vmq";
    EXPECT_THROW(query.LoadFromFile(missing), Exception);
    EXPECT_THROW(query.SaveToFile(missing), Exception);
}

} // namespace
