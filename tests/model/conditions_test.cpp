#include "common/printers.h"
#include "common/raises.h"
#include "model/dbstructure.h"
#include "model/errors.h"
#include "richmodel.h"

#include <gtest/gtest.h>

namespace vm20 {
namespace {

QStringList ValueTexts(const TDSCondition &condition)
{
    QStringList texts;
    for (int i = 0; i < condition.Values().Count(); ++i)
        texts.append(condition.Values().Items(i)->Text());
    return texts;
}

TEST(TDSCondition, DisplayFormatGivesOneValuePerMarkHoldingTheTextBeforeIt)
{
    struct { int line; const char *format; QStringList values; const char *caption; } rows[] = {
        {__LINE__, "Freight between @ and @ dollars", {"Freight between ", " and "}, "Freight between   and "},
        {__LINE__, "No marks at all", {}, "No marks at all"},
        {__LINE__, "@@", {"", ""}, " "},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.line);
        TDSCondition condition;
        condition.SetDisplayFormat(row.format);
        EXPECT_EQ(ValueTexts(condition), row.values);
        EXPECT_EQ(condition.Caption(), row.caption);
    }
}

TEST(TDSCondition, EditingTheFormatKeepsExistingValuesAndDropsSurplusOnes)
{
    TDSCondition condition;
    condition.SetDisplayFormat("a@b@c@");
    ASSERT_EQ(condition.Values().Count(), 3);
    condition.Values().Items(0)->SetDataType(ftInteger);
    condition.SetDisplayFormat("x@");
    EXPECT_EQ(ValueTexts(condition), QStringList{"x"});
    EXPECT_EQ(condition.Values().Items(0)->DataType(), ftInteger);
}

TEST(TDSCondition, TablesFollowTheSqlExpression)
{
    TNCustomDBStructure model;
    testing::BuildRichModel(model);
    TDSCondition *condition = model.AddCondition("Cheap", "O.Freight < 5 and \"Order Lines\".Quantity > 1");
    EXPECT_EQ(condition->Tables().CommaText(), "Orders,Order Lines");
    condition->SetSQLExpr("C.City = 'x' and c.Name = O.Name");
    EXPECT_EQ(condition->Tables().CommaText(), "Customers,Orders");
}

TEST(TDSConditionList, IdentifiersComeFromTheLargestSeen)
{
    TDSConditionList list;
    auto make = [](int id) {
        auto c = std::make_unique<TDSCondition>();
        c->SetID(id);
        return c;
    };
    EXPECT_EQ(list.Add(make(0))->ID(), 1);
    EXPECT_EQ(list.Add(make(10))->ID(), 10);
    EXPECT_EQ(list.Add(make(4))->ID(), 4);
    EXPECT_EQ(list.Add(make(0))->ID(), 11);
    list.Delete(list.IndexByID(11));
    EXPECT_EQ(list.Add(make(0))->ID(), 12) << "identifiers are not reused after a delete";
    EXPECT_EQ(list.IndexByID(4), 2);
    EXPECT_THROW(list.GetItem(9), EListError);
}

TEST(TDSValue, AssignCopiesTheEditorAndATypeChangeDropsIt)
{
    TDSValue source;
    source.SetDataType(ftInteger);
    source.SetDataKind(vkList);
    auto editor = std::make_unique<TDSListEditor>();
    editor->Items() << "one";
    source.SetValueEditor(std::move(editor));
    TDSValue copy;
    copy.Assign(source);
    ASSERT_NE(copy.ValueEditor(), nullptr);
    EXPECT_NE(copy.ValueEditor(), source.ValueEditor()) << "an own copy";
    EXPECT_EQ(static_cast<TDSListEditor *>(copy.ValueEditor())->Items(), QStringList{"one"});
    copy.SetDataType(ftString);
    EXPECT_EQ(copy.ValueEditor(), nullptr);
}

class TDSSQLEditorTest : public ::testing::Test
{
protected:
    TDSSQLEditorTest() : editor(&model)
    {
        editor.SetSQLText("SELECT id, name FROM t WHERE kind = :kind AND k2 = :kind2");
        editor.SQLParams() << "kind2=7" << "kind=3";
        info.OnGetSQLValues = [this](TNDBInfo *, const QString &sql, QStringList &values, QStringList &captions) {
            queries.append(sql);
            values << "1" << "2";
            captions << "one" << "two";
        };
    }
    TNCustomDBStructure model;
    TNDBInfo info;
    TDSSQLEditor editor;
    QStringList queries;
};

TEST_F(TDSSQLEditorTest, ParametersAreReplacedLineByLineInOrder)
{
    EXPECT_TRUE(editor.HasParameter("kind"));
    // ":kind2" goes first, so ":kind" does not eat the start of it.
    EXPECT_EQ(editor.ApplyParams(editor.SQLText()), "SELECT id, name FROM t WHERE kind = 3 AND k2 = 7");
}

TEST_F(TDSSQLEditorTest, OpeningNeedsTheProviderAndFillsTheParallelLists)
{
    EXPECT_EQ(Raised<ENDBStructError>([&] { editor.SetOpened(true); }), "11: DatabaseInfo is not specified");
    EXPECT_FALSE(editor.Opened());
    model.SetDatabaseInfo(&info);
    editor.SetOpened(true);
    EXPECT_EQ(editor.Items(), (QStringList{"one", "two"}));
    editor.SetOpened(true);
    EXPECT_EQ(queries.size(), 1) << "an open list is not refilled";
    editor.Refresh();
    EXPECT_EQ(queries.size(), 2);
    editor.SetOpened(false);
    EXPECT_TRUE(editor.Items().isEmpty() && editor.Values().isEmpty());
}

} // namespace
} // namespace vm20
