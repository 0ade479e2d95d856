#include "common/printers.h"
#include "model/dbstructure.h"
#include "model/errors.h"
#include "model/messages.h"

#include <gtest/gtest.h>

namespace vm20 {
namespace {

QStringList OperatorNames(const TNCustomDBStructure &model)
{
    QStringList names;
    model.GetOperatorNames(names);
    return names;
}

const QStringList AllFifteen = {
    "Equal", "NotEqual", "LessThan", "LessOrEqual", "GreaterThan", "GreaterOrEqual", "IsNull",
    "InList", "NotInList", "StartsWith", "NotStartsWith", "Contains", "NotContains", "Between",
    "NotBetween"};

TEST(TNCustomDBStructureOperators, NewModelHoldsTheFifteenBuiltInOperatorsInTableOrder)
{
    TNCustomDBStructure model;
    EXPECT_EQ(OperatorNames(model), AllFifteen);
}

} // namespace
} // namespace vm20
