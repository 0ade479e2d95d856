#include "common/printers.h"
#include "common/raises.h"
#include "model/dbstructure.h"
#include "model/errors.h"
#include "modeltext_samples.h"
#include "richmodel.h"

#include <gtest/gtest.h>

namespace vm20 {
namespace {

using testing::OperatorNames;

const QStringList AlwaysSeven = {"Equal", "NotEqual", "LessThan", "LessOrEqual", "GreaterThan",
                                 "GreaterOrEqual", "IsNull"};

const TFieldTypes Comparable{ftString, ftSmallint, ftInteger, ftWord, ftBoolean, ftFloat,
                             ftCurrency, ftBCD, ftDate, ftTime, ftDateTime, ftAutoInc,
                             ftFixedChar, ftWideString, ftLargeint, ftTimeStamp};
const TFieldTypes Ordered = Comparable - TFieldTypes{ftBoolean};
const TFieldTypes Textual{ftString, ftMemo, ftFmtMemo, ftFixedChar, ftWideString};

TEST(TNCustomDBStructureOperators, NewModelHoldsTheBuiltInTable)
{
    TNCustomDBStructure model;
    // Written out independently of the library's own table, templates exactly as stored.
    QStringList templates;
    for (int i = 0; i < model.GetOperatorCount(); ++i)
        templates << model.GetOperator(i)->Name() + ": " + model.GetOperator(i)->SQLExpr();
    EXPECT_EQ(templates, (QStringList{"Equal: @f = '@1'", "NotEqual: @f <> '@1'", "LessThan: @f < '@1'",
                                      "LessOrEqual: @f <= '@1'", "GreaterThan: @f >'@1'",
                                      "GreaterOrEqual: @f >= '@1'", "IsNull: @f is null", "InList: @f in (@1)",
                                      "NotInList: NOT (@f in (@1))", "StartsWith: @f like '@1%'",
                                      "NotStartsWith: not(@f like '@1%')", "Contains: @f like '%@1%'",
                                      "NotContains: not(@f like '%@1%')", "Between: @f between '@1' and '@2'",
                                      "NotBetween: NOT (@f between '@1' and '@2')"}));
    EXPECT_EQ(model.OperatorByName("NotEqual")->AppliedTypes(), Comparable);
    EXPECT_EQ(model.OperatorByName("LessThan")->AppliedTypes(), Ordered);
    EXPECT_EQ(model.OperatorByName("IsNull")->AppliedTypes(), (Comparable + TFieldTypes{ftMemo, ftFmtMemo}));
    EXPECT_EQ(model.OperatorByName("NotContains")->AppliedTypes(), Textual);
}

TEST(TDSOperator, ParamCountStopsAtTheFirstMissingNumber)
{
    struct { int line; const char *sql; int count; } rows[] = {
        {__LINE__, "@f = @1 or @f = @3", 1},
        {__LINE__, "@f = @2", 0},
        {__LINE__, "@f in (@1, @2, @3, @4, @5, @6, @7, @8, @9, @10)", 10},
        {__LINE__, "@f = @12", 1},   // "@1" is found inside "@12"
    };
    for (const auto &row : rows) {
        TDSOperator op;
        op.SetSQLExpr(row.sql);
        EXPECT_EQ(op.ParamCount(), row.count) << "line " << row.line;
    }
}

TEST(TNCustomDBStructureOperators, ExOperatorsSwitchPairsAndAReAddedPairGoesAfterUserOperators)
{
    TNCustomDBStructure model;
    model.SetExOperators({xoContains, xoInList});
    EXPECT_EQ(OperatorNames(model), (AlwaysSeven + QStringList{"InList", "NotInList", "Contains", "NotContains"}));
    model.SetExOperators(AllExOperators - TExOperators{xoBetween});
    model.AddOperator("Soundex", "sounds like", "SOUNDEX(@f) = SOUNDEX('@1')", "", {ftString});
    model.SetExOperators(AllExOperators);
    const QStringList names = OperatorNames(model);
    EXPECT_EQ(names.mid(names.size() - 3), (QStringList{"Soundex", "Between", "NotBetween"}));
}

TEST(TNCustomDBStructureOperators, DeletingAnOperatorTakesItOffEveryField)
{
    TNCustomDBStructure model;
    TDSTable *table = testing::AddTable(model, "T", "T");
    TDSField *field = testing::AddDataField(model, table, "Name", "Name", ftString, 10);
    model.SetExOperators(AllExOperators - TExOperators{xoContains});
    EXPECT_EQ(model.OperatorByName("Contains"), nullptr);
    QStringList names;
    field->GetOperatorNames(names);
    EXPECT_FALSE(names.contains("Contains"));
    model.UnrecognizedField()->GetOperatorNames(names);
    EXPECT_EQ(names, OperatorNames(model)) << "the placeholder field offers every operator";
    model.DeleteOperatorByName("NoSuchOperator");
    EXPECT_THROW(model.DelOperator(99), ENDBStructError);
}

TEST(TNCustomDBStructureOperators, CaptionListTranslatesAndMergeKeepsTranslations)
{
    TNCustomDBStructure model;
    QStringList captions = model.DefOperators();
    ASSERT_EQ(captions.size(), 15);
    EXPECT_EQ(captions.last(), "NotBetween=is not between");

    model.SetDefOperators({"Equal=ist gleich", "Between=liegt zwischen"});
    EXPECT_EQ(model.OperatorByName("Equal")->DisplayName(), "ist gleich");
    EXPECT_EQ(model.OperatorByName("NotEqual")->DisplayName(), "") << "captions come from the list only";

    model.MergeDefOperators();
    EXPECT_EQ(model.GetDefOperator("NotEqual"), "is not equal to");
    model.LoadDefsOpertors();
    EXPECT_EQ(model.DefOperators(), captions);
}

TEST(TNCustomDBStructureOperators, UpdateDefOperatorsDeletesSwitchedOffPairsExceptStartsWith)
{
    TNCustomDBStructure model;
    model.SetExOperators({xoInList, xoBetween});
    // Operators of those names added by hand survive UpdateExOperators' absence...
    model.AddOperator("StartsWith", "begins", "@f like '@1%'", "", Textual);
    model.AddOperator("Contains", "has", "@f like '%@1%'", "", Textual);
    model.UpdateDefOperators();
    // ...but a caption refresh drops every switched-off pair except StartsWith.
    EXPECT_GE(model.OperatorIndexByName("StartsWith"), 0);
    EXPECT_EQ(model.OperatorIndexByName("Contains"), -1);
}

TEST(TNCustomDBStructureOperators, LookupsByNameAndByTemplate)
{
    TNCustomDBStructure model;
    EXPECT_EQ(model.OperatorIndexByName("EQUALTO"), 0);
    EXPECT_EQ(model.OperatorByExpr("LIKE '%@1%'")->Name(), "Contains");

    EXPECT_EQ(model.AddUpdateOperator("Equal", "equals", "@f = @1", "", {ftInteger}), 0);
    EXPECT_EQ(model.GetOperator(0)->SQLExpr(), "@f = @1");
    EXPECT_EQ(Raised<ENDBStructError>([&] { model.GetOperator(15); }), "3: Invalid operator index 15");
}

} // namespace
} // namespace vm20
