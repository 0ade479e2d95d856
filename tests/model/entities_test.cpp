#include "common/printers.h"
#include "common/raises.h"
#include "model/dbstructure.h"
#include "model/errors.h"
#include "richmodel.h"

#include <gtest/gtest.h>

namespace vm20 {
namespace {

using testing::AddDataField;
using testing::AddVirtualField;

// --- tables -------------------------------------------------------------------

TEST(TDSTable, DerivesItsSqlTextsFromNameAliasAndOptions)
{
    // alias empty: the one AddTable gives; expected texts are main|from|where.
    struct Row { int line; const char *reason; QString name, alias; bool quoted; QString database, hints;
                 bool multiDB; QString fullTableName; bool useAs; QString texts; };
    const QString full = "DB.OWNER.TABLE";
    const Row rows[] = {
        {__LINE__, "alias equal to the name is not repeated", "Orders", "", false, "", "", false, full, false,
         "Orders|Orders|Orders"},
        {__LINE__, "a blank in the name becomes _ in the alias", "Order Lines", "", true, "", "", false, full, false,
         "[Order Lines]|[Order Lines] Order_Lines|Order_Lines"},
        {__LINE__, "AS before the alias when asked, hints after it", "Orders", "O", false, "", "NOLOCK", false, full,
         true, "Orders|Orders AS O WITH NOLOCK|O"},
        {__LINE__, "a name already in double quotes is not quoted again", "\"Odd\"", "", true, "", "", false, full,
         false, "\"Odd\"|\"Odd\"|\"Odd\""},
        {__LINE__, "the closing quote inside a name is doubled", "Odd]Name", "O", true, "", "", false, full, false,
         "[Odd]]Name]|[Odd]]Name] O|O"},
        {__LINE__, "a name that only starts with a double quote is not taken as quoted", "\"a\" b", "O", true, "",
         "", false, full, false, "[\"a\" b]|[\"a\" b] O|O"},
        {__LINE__, "an alias that is not a plain name is quoted wherever it stands", "Lines", "L-1", false, "", "",
         false, full, false, "Lines|Lines [L-1]|[L-1]"},
        {__LINE__, "another database goes through the full-name pattern", "Orders", "O", true, "stock", "", true,
         full, false, "stock.dbo.[Orders]|stock.dbo.[Orders] O|O"},
        {__LINE__, "the default database needs no qualification", "Orders", "O", false, "main", "", true, full,
         false, "Orders|Orders O|O"},
        {__LINE__, "qualified name is the qualifier when there is no alias", "Orders", "", false, "stock", "", true,
         "DB..TABLE", false, "stock..Orders|stock..Orders|stock..Orders"},
    };
    for (const Row &c : rows) {
        SCOPED_TRACE(::testing::Message() << "line " << c.line << ": " << c.reason);
        TNCustomDBStructure model;
        model.DMOptions().SetMultiDB(c.multiDB);
        model.DMOptions().SetDefaultDatabase("main");
        model.DMOptions().SetDefaultDBOwner("dbo");
        model.SQLFormats().SetFullTableName(c.fullTableName);
        model.SQLFormats().SetUseAsInFrom(c.useAs);
        model.SQLFormats().SetQuoteSymbol1('[');
        model.SQLFormats().SetQuoteSymbol2(']');
        TDSTable *table = model.GetTable(model.AddTable(c.name, "caption"));
        if (!c.alias.isEmpty())
            table->SetTableAlias(c.alias);
        table->SetQuoted(c.quoted);
        table->SetDatabaseName(c.database);
        table->SetTableHints(c.hints);
        EXPECT_EQ(table->MainExpr() + "|" + table->FromExpr() + "|" + table->WhereExpr(), c.texts);
    }
}

TEST(TDSTable, NameFillsOnlyAnEmptyAliasAndDesignPositionsAreNormalised)
{
    TNCustomDBStructure model;
    TDSTable *table = model.GetTable(model.AddTable("Order Lines", "Lines"));
    table->SetTableName("Orders");
    EXPECT_EQ(table->TableAlias(), "Order_Lines");
    model.DMOptions().SetDefaultDBOwner("dbo");
    EXPECT_EQ(table->FullName(), "dbo.Orders");
    table->SetDesignPositions(" 5, -7,x,100");
    EXPECT_EQ(table->DesignPositions(), "5,-7,0,100");
}

// --- links ----------------------------------------------------------------------

class TDSLinkTest : public ::testing::Test
{
protected:
    TDSLinkTest()
    {
        t = model.GetTable(model.AddTable("Alpha", "A"));
        t->SetTableAlias("T");
        u = model.GetTable(model.AddTable("Beta", "B"));
        u->SetTableAlias("U");
    }
    TDSLink *Link(const QStringList &f1, const QStringList &f2, const QStringList &ops, TDSLinkType type)
    {
        auto link = std::make_unique<TDSLink>();
        link->SetTable1(t);
        link->SetTable2(u);
        link->SetFields1(f1);
        link->SetFields2(f2);
        link->SetOperators(ops);
        link->SetLinkType(type);
        TDSLink *added = link.get();
        model.AddLinkByRef(std::move(link));
        return added;
    }
    TNCustomDBStructure model;
    TDSTable *t;
    TDSTable *u;
};

TEST_F(TDSLinkTest, RendersConditionsBareAndIsFoundFromEitherTable)
{
    TDSLink *link = Link({"A", "B"}, {"X", "val:1"}, {"=", "<>"}, ltInner);
    EXPECT_EQ(link->SQLExpr(), "(T.A=U.X) and (T.B<>1)");
    EXPECT_EQ(t->LinkByTable(u), link);
    EXPECT_EQ(model.FindLink("beta", "Alpha"), nullptr) << "table names compare exactly";
}

TEST_F(TDSLinkTest, OldOuterNotationMarksTheOptionalSideColumnsOnly)
{
    TDSLink *left = Link({"A", "val:2"}, {"X", "Y"}, {"=", "="}, ltOuterLeft);
    EXPECT_EQ(left->OracleSQLExpr(), "(T.A=U.X (+) ) and (2=U.Y (+) )");
    TDSLink *right = Link({"A"}, {"val:3"}, {"="}, ltOuterRight);
    EXPECT_EQ(right->GetSQLExpr(2), "(T.A (+) =3)");
    TDSLink *full = Link({"A"}, {"X"}, {"="}, ltOuterFull);
    EXPECT_EQ(full->GetSQLExpr(2), "(T.A=U.X)");
}

TEST_F(TDSLinkTest, QuotesColumnsWithTheModelSymbolsAndStripsTheFieldPrefix)
{
    model.SQLFormats().SetQuoteSymbol1('[');
    model.SQLFormats().SetQuoteSymbol2(']');
    TDSLink *link = Link({"fld:Order ID"}, {"ID"}, {}, ltInner);
    link->SetQuoteFields(true);
    EXPECT_EQ(link->SQLExpr(), "(T.[Order ID]=U.[ID])");
    TDSLink *odd = Link({"x]y"}, {"ID"}, {}, ltInner);
    odd->SetQuoteFields(true);
    EXPECT_EQ(odd->SQLExpr(), "(T.[x]]y]=U.[ID])") << "the closing quote inside a name is doubled";
}

// --- fields -----------------------------------------------------------------------

class TDSFieldTest : public ::testing::Test
{
protected:
    TDSFieldTest()
    {
        orders = testing::AddTable(model, "Orders", "Orders");
        orders->SetTableAlias("O");
        model.SQLFormats().SetQuoteSymbol1('[');
        model.SQLFormats().SetQuoteSymbol2(']');
    }
    TNCustomDBStructure model;
    TDSTable *orders;
};

TEST_F(TDSFieldTest, DerivedTextsOfDataVirtualAndTablelessFields)
{
    TDSField *plain = AddDataField(model, orders, "Freight", "Freight", ftFloat, 8);
    TDSField *blank = AddDataField(model, orders, "Ship Name", "Ship name", ftString, 40);
    TDSField *virt = AddVirtualField(model, "O.Freight * 2", "Double freight", ftFloat);
    auto loose = std::make_unique<TDSField>(&model);
    loose->SetFieldExpr("Total");
    loose->SetQuoted(true);
    auto odd = std::make_unique<TDSField>(&model);
    odd->SetFieldExpr("a]\"b");
    odd->SetQuoted(true);

    struct Row { int line; const TDSField *field; QString sql, normal, full, filter; } rows[] = {
        {__LINE__, plain, "O.Freight", "O.\"Freight\"", "Orders.Freight", "Freight"},
        {__LINE__, blank, "O.[Ship Name]", "O.\"Ship Name\"", "Orders.Ship Name", "[Ship Name]"},
        {__LINE__, virt, "O.Freight * 2", "O.Freight * 2", "O.Freight * 2", "O.Freight * 2"},
        {__LINE__, loose.get(), "[Total]", "\"Total\"", "Total", "[Total]"},
        {__LINE__, odd.get(), "[a]]\"b]", "\"a]\"\"b\"", "a]\"b", "[a]]\"b]"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.line);
        EXPECT_EQ(row.field->SQLExpr(), row.sql);
        EXPECT_EQ(row.field->NormalSQLExpr(), row.normal);
        EXPECT_EQ(row.field->FullName(), row.full);
        EXPECT_EQ(row.field->FilterSQLExpr(), row.filter);
    }
    EXPECT_EQ(virt->DBFields(), QStringList{"O.Freight"});
    EXPECT_EQ(plain->GroupByFields(), "O.Freight");
}

TEST_F(TDSFieldTest, KindGuardsNameExpressionAndAggregate)
{
    TDSField *data = AddDataField(model, orders, "Freight", "Freight", ftFloat, 8);
    TDSField *virt = AddVirtualField(model, "SUM(O.Freight)", "Sum", ftFloat);
    EXPECT_TRUE(Raised<ENDBStructError>([&] { virt->SetFieldName("x"); }).startsWith("7: "));
    EXPECT_EQ(Raised<ENDBStructError>([&] { data->SetSQLExpr("x"); }), "8: Can not assign expression to data field");
    EXPECT_EQ(data->FieldName(), "Freight");
    EXPECT_EQ(virt->SQLExpr(), "SUM(O.Freight)");
    data->SetIsAggregate(true);
    EXPECT_FALSE(data->IsAggregate()) << "only virtual fields can be aggregate";
}

TEST_F(TDSFieldTest, EditTypeSwitchReplacesTheEditorByOneOfTheNewKind)
{
    TDSField *field = AddDataField(model, orders, "Status", "Status", ftInteger, 4);
    field->SetEditType(etList);
    auto *list = dynamic_cast<TDSListEditor *>(field->ValueEditor());
    ASSERT_NE(list, nullptr);
    list->Items() << "open";
    field->SetEditType(etList);
    EXPECT_EQ(field->ValueEditor(), list) << "the same type keeps the editor";
    field->SetEditType(etSQL);
    ASSERT_NE(dynamic_cast<TDSSQLEditor *>(field->ValueEditor()), nullptr);
    EXPECT_EQ(static_cast<TDSSQLEditor *>(field->ValueEditor())->DBStruct(), &model);
    field->SetEditType(etList);
    EXPECT_EQ(dynamic_cast<TDSSQLEditor *>(field->ValueEditor()), nullptr);
    EXPECT_TRUE(static_cast<TDSListEditor *>(field->ValueEditor())->Items().isEmpty());
    field->SetEditType(etAuto);
    EXPECT_EQ(field->ValueEditor(), nullptr);
}

TEST_F(TDSFieldTest, ValuesOfQuotedTypesAreQuotedWithInnerQuotesDoubled)
{
    TDSField *name = AddDataField(model, orders, "Name", "Name", ftString, 20);
    TDSField *freight = AddDataField(model, orders, "Freight", "Freight", ftFloat, 8);
    EXPECT_EQ(name->ValueAsString("O'Brien"), "'O''Brien'");
    model.SetQuotedTypes({ftFloat});
    EXPECT_EQ(name->ValueAsString("x"), "x");
    EXPECT_EQ(freight->ValueAsString("1.5"), "'1.5'");
}

TEST_F(TDSFieldTest, GroupsMoveFieldsAndLoseThemWhenDestroyed)
{
    TDSField *a = AddDataField(model, orders, "A", "A", ftString, 1);
    TDSField *b = AddDataField(model, orders, "B", "B", ftString, 1);
    model.FieldGroups().AddGroup("One", a);
    TDSFieldGroup *g2 = model.FieldGroups().AddGroup("Two");
    a->SetGroup(g2);
    b->SetGroup(g2);
    EXPECT_EQ(g2->Fields(), (std::vector<TDSField *>{a, b}));
    EXPECT_EQ(a->GetCompoundName(" / "), "Two / A");

    model.DeleteGroup(model.FieldGroups().IndexOf(g2));
    EXPECT_EQ(a->Group(), nullptr);
    EXPECT_EQ(a->GetCompoundName(" / "), "A");
    EXPECT_EQ(model.RootGroup().Fields(), (std::vector<TDSField *>{a, b}));

    model.DelField(model.IndexOfField(b));
    EXPECT_EQ(model.RootGroup().Fields(), std::vector<TDSField *>{a}) << "a deleted field leaves the root group";
}

TEST_F(TDSFieldTest, OperatorListOperationsAndUnknownNames)
{
    TDSField *field = AddDataField(model, orders, "Freight", "Freight", ftFloat, 8);
    QStringList names;
    field->GetOperatorNames(names);
    EXPECT_EQ(names, (QStringList{"Equal", "NotEqual", "LessThan", "LessOrEqual", "GreaterThan",
                                  "GreaterOrEqual", "IsNull", "InList", "NotInList", "Between",
                                  "NotBetween"}))
        << "a float takes the comparable, ordered and nullable operators, not the textual ones";
    field->MoveOperat(0, 2);
    field->ClearOperators();
    field->AddOperatorByName("equalto");
    EXPECT_EQ(field->GetOperator(0)->Name(), "Equal");
    EXPECT_EQ(Raised<ENDBStructError>([&] { field->AddOperatorByName("Sounds"); }), "6: Operator not found: Sounds");
    EXPECT_THROW(field->MoveOperat(0, 5), EListError);
}

TEST_F(TDSFieldTest, SwitchingConditionsOnFillsOperatorsOnlyWhenThereAreNone)
{
    TDSField *field = AddDataField(model, orders, "Note", "Note", ftMemo, 0);
    field->ClearOperators();
    field->SetUseInConditions(false);
    EXPECT_EQ(field->OperatCount(), 0);
    field->SetUseInConditions(true);
    QStringList names;
    field->GetOperatorNames(names);
    EXPECT_EQ(names, (QStringList{"IsNull", "StartsWith", "NotStartsWith", "Contains", "NotContains"}));
    field->DelOperator(0);
    field->SetUseInConditions(true);
    EXPECT_EQ(field->OperatCount(), 4);
}

TEST_F(TDSFieldTest, TypesOutsideTheStoredRangeGetNoOperators)
{
    TDSField *field = AddDataField(model, orders, "X", "X", TFieldType(60), 0);
    EXPECT_EQ(field->OperatCount(), 0);
    field->SetFieldType(TFieldType(-1));
    field->AddAppliedOperators();
    EXPECT_EQ(field->OperatCount(), 0);
}

} // namespace
} // namespace vm20
