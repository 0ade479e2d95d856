#include "common/printers.h"
#include "model/dbstructure.h"
#include "modeltext_samples.h"

#include <gtest/gtest.h>

namespace vm20 {
namespace {

using testing::OperatorNames;
using testing::Saved;

// Today's text of a model read from an older one must read back as itself.
void ExpectStableOnceConverted(const TNCustomDBStructure &model)
{
    TNCustomDBStructure again;
    again.LoadFromStrings(Saved(model));
    EXPECT_EQ(Saved(again), Saved(model));
}

TEST(TNCustomDBStructureOlderText, NumberedSectionsWithOldKeysAndOrdinalTypes)
{
    const QStringList text = {
        "[Main]", "Version=1.5", "TableCount=2", "FieldCount=2",
        "[Operations]", "Count=2",
        "[Operation:1]", "Name=EqualTo", "DisplayName=equals", "SQLName=@f = '@1'", "AppliedTypes=1,3,",
        "ValueType=ftInteger",
        "[Operation:2]", "Name=InList", "DisplayName=in", "SQLName=@f in (@1)", "AppliedTypes=1,99,",
        "ValueIsList=1",
        "[Table:1]", "Name=Authors", "DisplayName=Authors", "Links=",
        "[Table:2]", "Name=Books", "Links=Authors",
        "[Link:Books-Authors]", "FldName1=AuthorID", "FldName2=ID", "LinkType=right",
        "[Field:1]", "ID=1", "Kind=nfkData", "FieldName=Name", "TableName=Authors", "DisplayName=Author",
        "EditType=1", "FieldType=1", "DefaultValue=Smith", "Operats=EqualTo,InList",
        "[Field:2]", "Kind=nfkVirtual", "FieldExpr=SUM(Books.Price)", "FieldType=6", "CondField=0",
        "Operats=EqualTo",
    };
    TNCustomDBStructure model;
    model.LoadFromStrings(text);

    EXPECT_EQ(OperatorNames(model), QStringList({"Equal", "InList"}));
    EXPECT_EQ(model.GetOperator(0)->ExprType(), ftInteger);
    EXPECT_EQ(model.GetOperator(1)->ValueKind(), vkList);
    EXPECT_EQ(model.GetOperator(1)->AppliedTypes(), TFieldTypes({ftString})) << "ordinal 99 is no type";

    EXPECT_EQ(model.GetLink(0)->SQLExpr(), "(Books.AuthorID=Authors.ID)");

    const TDSField *name = model.FieldByID(1);
    EXPECT_EQ(name->SQLExpr(), "Authors.Name");
    EXPECT_EQ(static_cast<const TDSTextEditor *>(name->ValueEditor())->DefaultValue(), "Smith");
    const TDSField *total = model.FieldByID(2);
    ASSERT_NE(total, nullptr) << "a field without ID gets the next one";
    EXPECT_TRUE(total->IsAggregate());
    EXPECT_FALSE(total->UseInConditions());
    EXPECT_EQ(model.RootGroup().Count(), 2) << "without a root group section every field is a root field";
    ExpectStableOnceConverted(model);
}

TEST(TNCustomDBStructureOlderText, ListSectionsAndNoOperatorsKeepTheBuiltInOperators)
{
    const QStringList text = {
        "[Main]", "Version=1.0",
        "[Tables]", "Customers=Our customers", "Order Lines",
        "[Fields]", "Customers.Name=Customer name", "Order Lines.Unit Price", "Loose",
    };
    TNCustomDBStructure model;
    model.LoadFromStrings(text);

    EXPECT_EQ(model.GetOperatorCount(), 15);
    EXPECT_EQ(model.GetTable(0)->DisplayName(), "Our customers");
    EXPECT_EQ(model.GetTable(1)->TableAlias(), "Order_Lines");
    EXPECT_EQ(model.FieldByID(2)->SQLExpr(), "Order_Lines.\"Unit Price\"");
    EXPECT_EQ(model.FieldByID(3)->SQLExpr(), "Loose");
    ExpectStableOnceConverted(model);
}

} // namespace
} // namespace vm20
