#include "common/printers.h"
#include "model/errors.h"
#include "modeltext_samples.h"

#include <gtest/gtest.h>

namespace vm20 {
namespace {

using testing::Saved;
using testing::SmallModelText;

TEST(TNCustomDBStructureBadText, RaisesTheLibrarysErrorAndLeavesANewModel)
{
    // from: a line of the small model's text; code: the ENDBStructError code, 0 for EConvertError.
    struct Row { int line; const char *reason; QString from, to; int code; QString message; };
    const Row rows[] = {
        {__LINE__, "no main section", "[Main]", "[Mian]", 9, "Can not find section Main"},
        {__LINE__, "huge count stops at the first missing section", "FieldCount=3", "FieldCount=2000000000", 9,
         "Can not find section Field:4"},
        {__LINE__, "link to an unknown alias", "Links=A", "Links=A,Z", 4, "No such table Z"},
        {__LINE__, "field of an unknown alias", "TableAlias=A", "TableAlias=Nowhere", 4,
         "Can not find table \"Nowhere\" for field \"Name\""},
        {__LINE__, "field names an operator the text lacks", "Operators=Equal", "Operators=Equal,Like", 6,
         "Operator not found: Like"},
        {__LINE__, "count not a number", "FieldCount=3", "FieldCount=3x", 0, "'3x' is not a valid integer value"},
        {__LINE__, "unknown type name", "AppliedTypes=ftString,ftInteger,", "AppliedTypes=ftString,ftText,", 0,
         "'ftText' is not a valid field type"},
        {__LINE__, "type ordinal out of range", "FieldType=3", "FieldType=52", 0, "'52' is not a valid field type"},
        {__LINE__, "edit type out of range", "EditType=4", "EditType=-1", 0, "'-1' is not a valid edit type"},
        {__LINE__, "unknown field kind", "Kind=nfkVirtual", "Kind=nfkCalc", 0, "'nfkCalc' is not a valid field kind"},
        {__LINE__, "unknown value kind", "Values=ftString:vkScalar", "Values=ftString:vkRange", 0,
         "'vkRange' is not a valid value kind"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(::testing::Message() << "row at line " << row.line << ": " << row.reason);
        QStringList text = SmallModelText();
        const int at = text.indexOf(row.from);
        ASSERT_GE(at, 0) << row.from.toStdString();
        text[at] = row.to;
        TNCustomDBStructure model;
        testing::BuildSmallModel(model);
        try {
            model.LoadFromStrings(text);
            ADD_FAILURE() << "no error";
        } catch (const ENDBStructError &e) {
            EXPECT_EQ(e.ErrorCode(), row.code);
            EXPECT_EQ(e.Message(), row.message);
        } catch (const EConvertError &e) {
            EXPECT_EQ(row.code, 0);
            EXPECT_EQ(e.Message(), row.message);
        }
        EXPECT_EQ(Saved(model), Saved(TNCustomDBStructure()));
        model.LoadFromStrings(SmallModelText());
        EXPECT_EQ(Saved(model), SmallModelText());
    }
}

} // namespace
} // namespace vm20
