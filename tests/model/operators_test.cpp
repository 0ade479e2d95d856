#include "common/printers.h"
#include "model/dbstructure.h"
#include "model/errors.h"
#include "richmodel.h"

#include <gtest/gtest.h>

namespace vm20 {
namespace {

QStringList OperatorNames(const TNCustomDBStructure &model)
{
    QStringList names;
    model.GetOperatorNames(names);
    return names;
}

const QStringList AlwaysSeven = {"Equal", "NotEqual", "LessThan", "LessOrEqual", "GreaterThan",
                                 "GreaterOrEqual", "IsNull"};

struct OperatorRow
{
    const char *name;
    const char *caption;
    const char *sql;
    TFieldTypes types;
    TValueKind kind;
    const char *valFormat;
    int params;
};

const TFieldTypes Comparable{ftString, ftSmallint, ftInteger, ftWord, ftBoolean, ftFloat,
                             ftCurrency, ftBCD, ftDate, ftTime, ftDateTime, ftAutoInc,
                             ftFixedChar, ftWideString, ftLargeint, ftTimeStamp};
const TFieldTypes Nullable = Comparable + TFieldTypes{ftMemo, ftFmtMemo};
const TFieldTypes Ordered = Comparable - TFieldTypes{ftBoolean};
const TFieldTypes Textual{ftString, ftMemo, ftFmtMemo, ftFixedChar, ftWideString};

// Written out independently of the library's own table, templates exactly as stored.
const OperatorRow Expected[] = {
    {"Equal", "is equal to", "@f = '@1'", Comparable, vkScalar, "", 1},
    {"NotEqual", "is not equal to", "@f <> '@1'", Comparable, vkScalar, "", 1},
    {"LessThan", "is less than", "@f < '@1'", Ordered, vkScalar, "", 1},
    {"LessOrEqual", "is less than or equal to", "@f <= '@1'", Ordered, vkScalar, "", 1},
    {"GreaterThan", "is greater than", "@f >'@1'", Ordered, vkScalar, "", 1},
    {"GreaterOrEqual", "is greater than or equal to", "@f >= '@1'", Ordered, vkScalar, "", 1},
    {"IsNull", "is null", "@f is null", Nullable, vkScalar, "", 0},
    {"InList", "is in list", "@f in (@1)", Comparable, vkList, "", 1},
    {"NotInList", "is not in list", "NOT (@f in (@1))", Comparable, vkList, "", 1},
    {"StartsWith", "starts with", "@f like '@1%'", Textual, vkScalar, "", 1},
    {"NotStartsWith", "does not start with", "not(@f like '@1%')", Textual, vkScalar, "", 1},
    {"Contains", "contains", "@f like '%@1%'", Textual, vkScalar, "", 1},
    {"NotContains", "does not contain", "not(@f like '%@1%')", Textual, vkScalar, "", 1},
    {"Between", "is between", "@f between '@1' and '@2'", Ordered, vkScalar, "and", 2},
    {"NotBetween", "is not between", "NOT (@f between '@1' and '@2')", Ordered, vkScalar, "and", 2},
};
static_assert(std::size(Expected) == DefOperatorCount);

TEST(TNCustomDBStructureOperators, NewModelHoldsTheBuiltInTableExactly)
{
    TNCustomDBStructure model;
    ASSERT_EQ(model.GetOperatorCount(), int(std::size(Expected)));
    for (int i = 0; i < model.GetOperatorCount(); ++i) {
        const TDSOperator *op = model.GetOperator(i);
        const OperatorRow &row = Expected[i];
        SCOPED_TRACE(row.name);
        EXPECT_EQ(op->Name(), row.name);
        EXPECT_EQ(op->DisplayName(), row.caption);
        EXPECT_EQ(op->SQLExpr(), row.sql);
        EXPECT_EQ(op->AppliedTypes(), row.types);
        EXPECT_EQ(op->ValueKind(), row.kind);
        EXPECT_EQ(op->ValFormat(), row.valFormat);
        EXPECT_EQ(op->ParamCount(), row.params);
        EXPECT_EQ(op->ExprType(), ftUnknown);
        EXPECT_FALSE(op->CaseInsensative());
    }
}

TEST(TDSOperator, ParamCountStopsAtTheFirstMissingNumber)
{
    struct
    {
        int line;
        const char *sql;
        int count;
    } rows[] = {
        {__LINE__, "@f = @1 or @f = @3", 1},
        {__LINE__, "@f = @2", 0},
        {__LINE__, "@f in (@1, @2, @3, @4, @5, @6, @7, @8, @9, @10)", 10},
        {__LINE__, "@f = @12", 1},   // "@1" is found inside "@12"
        {__LINE__, "", 0},
    };
    for (const auto &row : rows) {
        TDSOperator op;
        op.SetSQLExpr(row.sql);
        EXPECT_EQ(op.ParamCount(), row.count) << "line " << row.line;
    }
    EXPECT_EQ(TDSOperator().AppliedTypes(), (Ordered + TFieldTypes{ftBoolean, ftMemo, ftFmtMemo}));
}

TEST(TNCustomDBStructureOperators, ExOperatorsSwitchPairsOnAndOff)
{
    TNCustomDBStructure model;
    model.SetExOperators({});
    EXPECT_EQ(OperatorNames(model), AlwaysSeven);

    model.SetExOperators({xoContains, xoInList});
    EXPECT_EQ(OperatorNames(model),
              (AlwaysSeven + QStringList{"InList", "NotInList", "Contains", "NotContains"}));
}

TEST(TNCustomDBStructureOperators, ReAddedPairGoesAfterUserOperators)
{
    TNCustomDBStructure model;
    model.SetExOperators(AllExOperators - TExOperators{xoBetween});
    model.AddOperator("Soundex", "sounds like", "SOUNDEX(@f) = SOUNDEX('@1')", "", {ftString});
    model.SetExOperators(AllExOperators);
    const QStringList names = OperatorNames(model);
    EXPECT_EQ(names.mid(names.size() - 3), (QStringList{"Soundex", "Between", "NotBetween"}));
    EXPECT_EQ(model.OperatorByName("NotBetween")->ValFormat(), "and");
}

TEST(TNCustomDBStructureOperators, DeletingAnOperatorTakesItOffEveryField)
{
    TNCustomDBStructure model;
    TDSTable *table = testing::AddTable(model, "T", "T");
    TDSField *field = testing::AddDataField(model, table, "Name", "Name", ftString, 10);
    TDSOperator *contains = model.OperatorByName("Contains");
    ASSERT_GE(field->IndexOfOperator(contains), 0);
    ASSERT_GE(model.UnrecognizedField()->IndexOfOperator(contains), 0);
    model.SetExOperators(AllExOperators - TExOperators{xoContains});
    EXPECT_EQ(model.OperatorByName("Contains"), nullptr);
    QStringList names;
    field->GetOperatorNames(names);
    EXPECT_FALSE(names.contains("Contains"));
    EXPECT_FALSE(names.contains("NotContains"));
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
    EXPECT_EQ(captions.first(), "Equal=is equal to");
    EXPECT_EQ(captions.last(), "NotBetween=is not between");

    model.SetDefOperators({"Equal=ist gleich", "Between=liegt zwischen"});
    EXPECT_EQ(model.OperatorByName("Equal")->DisplayName(), "ist gleich");
    EXPECT_EQ(model.OperatorByName("Between")->DisplayName(), "liegt zwischen");
    EXPECT_EQ(model.OperatorByName("NotEqual")->DisplayName(), "") << "captions come from the list only";

    model.MergeDefOperators();
    EXPECT_EQ(model.DefOperators().size(), 15);
    EXPECT_EQ(model.GetDefOperator("Equal"), "ist gleich");
    EXPECT_EQ(model.GetDefOperator("NotEqual"), "is not equal to");
    model.LoadDefsOpertors();
    EXPECT_EQ(model.DefOperators(), captions);
}

TEST(TNCustomDBStructureOperators, UpdateDefOperatorsDeletesSwitchedOffPairsExceptStartsWith)
{
    TNCustomDBStructure model;
    model.SetExOperators({xoInList, xoBetween});
    EXPECT_EQ(model.OperatorIndexByName("StartsWith"), -1);
    EXPECT_EQ(model.OperatorIndexByName("Contains"), -1);
    // Operators of those names added by hand survive UpdateExOperators' absence...
    model.AddOperator("StartsWith", "begins", "@f like '@1%'", "", Textual);
    model.AddOperator("Contains", "has", "@f like '%@1%'", "", Textual);
    model.UpdateDefOperators();
    // ...but a caption refresh drops every switched-off pair except StartsWith.
    EXPECT_GE(model.OperatorIndexByName("StartsWith"), 0);
    EXPECT_EQ(model.OperatorIndexByName("Contains"), -1);
    EXPECT_EQ(model.OperatorByName("StartsWith")->DisplayName(), "begins");
}

TEST(TNCustomDBStructureOperators, LookupsByNameAndByTemplate)
{
    TNCustomDBStructure model;
    EXPECT_EQ(model.OperatorIndexByName("EQUALTO"), 0);
    EXPECT_EQ(model.OperatorIndexByName("notequal"), 1);
    EXPECT_EQ(model.OperatorIndexByName("Nope"), -1);
    EXPECT_EQ(model.OperatorByExpr("LIKE '%@1%'")->Name(), "Contains");
    EXPECT_EQ(model.OperatorByExpr(" between ")->Name(), "Between");
    EXPECT_EQ(model.OperatorByExpr("soundex"), nullptr);

    const int index = model.AddUpdateOperator("Equal", "equals", "@f = @1", "", {ftInteger});
    EXPECT_EQ(index, 0);
    EXPECT_EQ(model.GetOperator(0)->SQLExpr(), "@f = @1");
    EXPECT_EQ(model.GetOperatorCount(), 15);
    try {
        model.GetOperator(15);
        FAIL();
    } catch (const ENDBStructError &e) {
        EXPECT_EQ(e.ErrorCode(), 3);
        EXPECT_EQ(e.Message(), "Invalid operator index 15");
    }
}

} // namespace
} // namespace vm20
