// Value literals: every field type and value kind under each syntax, with a
// German default locale so that decimal commas must be rewritten.
#include "query/valueformat.h"
#include "common/raises.h"
#include "shopquery.h"
#include "support/supporttest.h"
#include "support/dattime.h"
#include "support/exception.h"

using namespace vm20;
using namespace shop;

namespace {

class ValueFormatTest : public ShopQueryFixture
{
protected:
    ValueFormatTest() : german(QLocale(QLocale::German, QLocale::Germany))
    {
        TSQLFormats &formats = s.model->SQLFormats();
        formats.SetDate("dd.mm.yyyy");
        formats.SetTime("hh:nn");
        formats.SetDateTime("yyyy-mm-dd hh:nn:ss");
    }

    // The text of one condition in the WHERE lines.
    QString ConditionText(TDSField *field, const char *op, const QString &v1, const QString &v2)
    {
        query.Filter()->ClearRows();
        query.RFields().Clear();
        AddColumn(field);
        AddCond(field, op, v1, v2);
        query.BuildQuery();
        return query.QResult().WhereLines().value(1);
    }

    ScopedLocale german;
};

// 2024-03-15 13:45:30 as the day count a condition stores.
QString StoredDate(bool withTime)
{
    return VmDateTimeToStr(EncodeDate(2024, 3, 15) + (withTime ? EncodeTime(13, 45, 30) : 0.0));
}

struct LiteralRow { int line; TSQLSyntax syntax; TDSField *ShopModel::*field; const char *op; QString value1;
    QString value2; bool quoteDates; QString expected; const char *reason; };

TEST_F(ValueFormatTest, WritesTheLiteralOfEveryTypeAndKind)
{
    const QString day = StoredDate(false);
    const QString moment = StoredDate(true);
    const LiteralRow rows[] = {
        {__LINE__, ssSQL2, &ShopModel::custId, "Equal", "5", {}, true, "c.ID = 5", "quotes go with the region"},
        {__LINE__, ssSQL2, &ShopModel::custId, "Equal", "", {}, true, "c.ID = 0", "empty integer"},
        {__LINE__, ssSQL2, &ShopModel::custName, "Equal", "O'Brien", {}, true, "c.Name = 'O''Brien'",
         "inner quotes doubled"},
        {__LINE__, ssSQL2, &ShopModel::productNotes, "Contains", "50%", {}, true, "p.Notes like '%50%%'",
         "memo is a string type"},
        {__LINE__, ssSQL2, &ShopModel::custVip, "Equal", "", {}, true, "c.Vip = 'false'", "empty boolean: the formats' false word"},
        {__LINE__, ssSQL2, &ShopModel::orderDiscount, "Equal", "1,5", {}, true, "o.Discount = 1.5",
         "decimal comma of the locale"},
        {__LINE__, ssSQL2, &ShopModel::linePrice, "Between", "1", "2,25", true, "Order_Lines.\"Unit Price\" between 1 and 2.25",
         "two values, quoted column"},
        {__LINE__, ssSQL2, &ShopModel::custName, "InList", "a,b", {}, true, "c.Name in ('a','b')", "list of strings"},
        {__LINE__, ssSQL2, &ShopModel::custId, "NotInList", "1,2", {}, true, "NOT (c.ID in (1,2))",
         "list of integers"},
        {__LINE__, ssSQL2, &ShopModel::orderDiscount, "InList", "\"1,5\",2", {}, true, "o.Discount in (1.5,2)",
         "list items are numbers of the locale"},
        {__LINE__, ssSQL2, &ShopModel::custSince, "Equal", day, {}, true, "c.Since = '15.03.2024'",
         "the model's date format"},
        {__LINE__, ssSQL2, &ShopModel::custSince, "Equal", "", {}, true, "c.Since = '30.12.1899'",
         "empty date: the zero date"},
        {__LINE__, ssSQL2, &ShopModel::custSince, "InList", "", {}, true, "c.Since in ('30.12.1899')",
         "an empty list is one zero date, whatever blanks its text holds"},
        {__LINE__, ssSQL2, &ShopModel::orderShipTime, "Equal", moment, {}, true, "o.ShipTime = '13:45'",
         "the model's time format"},
        {__LINE__, ssSQL2, &ShopModel::orderDate, "Equal", moment, {}, true, "o.OrderDate = '2024-03-15 13:45:30'",
         "the model's date-time format"},
        {__LINE__, ssOracle, &ShopModel::custSince, "Equal", day, {}, true,
         "c.Since = TO_DATE('15-03-2024 00:00:00', 'dd-mm-yyyy hh24:mi:ss')", "TO_DATE replaces the quoted region"},
        {__LINE__, ssOracle, &ShopModel::productCreated, "Equal", moment, {}, true,
         "p.Created = 'TO_DATE('15-03-2024 13:45:30', 'dd-mm-yyyy hh24:mi:ss')'",
         "only date and date-time replace the region"},
        {__LINE__, ssNexusDB, &ShopModel::custSince, "Equal", day, {}, false, "c.Since = DATE '2024-03-15'",
         "DATE literal when dates are not quoted"},
        {__LINE__, ssNexusDB, &ShopModel::orderShipTime, "Equal", moment, {}, false, "o.ShipTime = TIME '13:45:30'",
         "TIME literal"},
        {__LINE__, ssNexusDB, &ShopModel::orderDate, "Equal", moment, {}, false,
         "o.OrderDate = TIMESTAMP '2024-03-15 13:45:30'", "TIMESTAMP literal"},
        {__LINE__, ssSQL2, &ShopModel::custSince, "Equal", day, {}, false, "c.Since = 15.03.2024",
         "unquoted dates replace the region"},
    };
    for (const LiteralRow &row : rows) {
        query.SetSQLSyntax(row.syntax);
        s.model->SQLFormats().SetQuoteDate(row.quoteDates);
        EXPECT_EQ(ConditionText(s.*row.field, row.op, row.value1, row.value2), row.expected)
            << "line " << row.line << ": " << row.reason;
    }
}

TEST_F(ValueFormatTest, LowersFieldAndValueForACaseInsensitiveOperator)
{
    TNDBStructure &model = *s.model;
    TDSOperator *like = model.GetOperator(model.AddOperator("LikeText", "is like", "@f like '%@1%'", "",
                                                            TextualTypes()));
    like->SetCaseInsensative(true);
    TDSOperator *among = model.GetOperator(model.AddOperator("AmongText", "is among", "@f in (@1)", "",
                                                             TextualTypes()));
    among->SetCaseInsensative(true);
    among->SetValueKind(vkList);
    s.custName->AddOperator(like);
    s.custName->AddOperator(among);
    EXPECT_EQ(ConditionText(s.custName, "LikeText", "Ab", {}), "LOWER(c.Name) like LOWER('%Ab%')");
    EXPECT_EQ(ConditionText(s.custName, "AmongText", "a,B", {}), "LOWER(c.Name) in (LOWER('a'),LOWER('B'))");
    s.orderId->AddOperator(like);
    EXPECT_EQ(ConditionText(s.orderId, "LikeText", "7", {}), "o.ID like 7")
        << "a number is not lowered, and an unquoted type takes the template's quotes with it";
}

TEST_F(ValueFormatTest, RaisesAConversionErrorNamingTheValue)
{
    for (TDSField *field : {s.orderDiscount, s.orderTotal, s.custSince}) {
        EXPECT_TRUE(Raised<EConvertError>([&] { ConditionText(field, "Equal", "x1y", {}); }).contains("x1y"))
            << field->DisplayName().toStdString();
    }
}

struct NumberRow { int line; TDSField *ShopModel::*field; TFieldType type; const char *op; QString value1;
    QString value2; QString expected; const char *reason; };

// Values pasted without quotes must be literals of their type: anything else
// would become part of the statement. An empty expectation is a conversion error.
TEST_F(ValueFormatTest, WritesOnlyNumbersForUnquotedNumericTypes)
{
    const NumberRow rows[] = {
        {__LINE__, &ShopModel::custId, ftInteger, "Equal", "1 OR 1=1", {}, {}, "a second condition"},
        {__LINE__, &ShopModel::custId, ftInteger, "InList", "1,\"2) OR (1=1\"", {}, {}, "every list item"},
        {__LINE__, &ShopModel::custId, ftInteger, "Between", "1", "2 OR 1=1", {}, "the second bound"},
        {__LINE__, &ShopModel::custId, ftInteger, "Equal", "1.5", {}, {}, "a fraction is no integer"},
        {__LINE__, &ShopModel::productCode, ftLargeint, "Equal", "0x10", {}, {}, "large integer"},
        {__LINE__, &ShopModel::custId, ftBCD, "Equal", "1.5.2", {}, {}, "BCD"},
        {__LINE__, &ShopModel::custId, ftInteger, "Equal", "-12", {}, "c.ID = -12", "a sign"},
        {__LINE__, &ShopModel::custId, ftInteger, "InList", "1, 2", {}, "c.ID in (1,2)", "blanks around items"},
        {__LINE__, &ShopModel::custId, ftInteger, "Between", "+1", "2", "c.ID between +1 and 2", "both bounds"},
        {__LINE__, &ShopModel::productCode, ftLargeint, "Equal", "123456789012345678901", {},
         "p.Code = 123456789012345678901", "digits beyond 64 bits are still a number"},
        {__LINE__, &ShopModel::custId, ftBCD, "Equal", "-12.50", {}, "c.ID = -12.50", "BCD keeps its digits"},
        {__LINE__, &ShopModel::custId, ftBCD, "Equal", ".5e3", {}, "c.ID = .5e3", "BCD exponent"},
        {__LINE__, &ShopModel::custId, ftGuid, "Equal", "abc", {}, {}, "an unquoted type of no group"},
        {__LINE__, &ShopModel::custId, ftVariant, "Equal", "12", {}, "c.ID = 12", "a number passes any type"},
    };
    for (const NumberRow &row : rows) {
        (s.*row.field)->SetFieldType(row.type);
        const QString raised = Raised<EConvertError>([&] {
            const QString text = ConditionText(s.*row.field, row.op, row.value1, row.value2);
            if (!row.expected.isEmpty()) {
                EXPECT_EQ(text, row.expected) << "line " << row.line << ": " << row.reason;
            }
        });
        if (row.expected.isEmpty())
            EXPECT_TRUE(raised.startsWith('\'')) << "line " << row.line << ": " << row.reason << ": "
                                                 << raised.toStdString();
        else
            EXPECT_EQ(raised, "no error") << "line " << row.line << ": " << row.reason;
    }
}

struct BoolRow { int line; const char *trueValue; const char *falseValue; bool quoted; QString value;
    QString expected; const char *reason; };

TEST_F(ValueFormatTest, WritesBooleansWithTheFormatsWords)
{
    const BoolRow rows[] = {
        {__LINE__, "1", "0", false, "True", "c.Vip = 1", "the true word"},
        {__LINE__, "1", "0", false, "", "c.Vip = 0", "empty is false"},
        {__LINE__, "Y", "N", true, "n", "c.Vip = 'N'", "the formats' word in any case"},
        {__LINE__, "", "", true, "TRUE", "c.Vip = 'True'", "no words set"},
        {__LINE__, "1", "0", false, "2", {}, "another number"},
        {__LINE__, "1", "0", false, "1 OR 1=1", {}, "a second condition"},
        {__LINE__, "", "", false, "yes", {}, "not a truth word"},
    };
    for (const BoolRow &row : rows) {
        TSQLFormats &formats = s.model->SQLFormats();
        formats.SetTrueValue(row.trueValue);
        formats.SetFalseValue(row.falseValue);
        formats.SetQuoteBool(row.quoted);
        QString text;
        const QString raised = Raised<EConvertError>([&] { text = ConditionText(s.custVip, "Equal", row.value, {}); });
        if (row.expected.isEmpty())
            EXPECT_TRUE(raised.contains(row.value)) << "line " << row.line << ": " << row.reason;
        else
            EXPECT_EQ(text, row.expected) << "line " << row.line << ": " << row.reason << ": "
                                          << raised.toStdString();
    }
}

struct QuotedRow { int line; TFieldTypes quoted; TFieldType type; const char *op; QString value; QString expected;
    const char *reason; };

// A text value stays one literal whatever the model says about its quotes.
TEST_F(ValueFormatTest, KeepsTextValuesInsideTheirQuotes)
{
    TNDBStructure &model = *s.model;
    s.custName->AddOperator(model.GetOperator(model.AddOperator("Is", "is", "@f = @1", "", TextualTypes())));
    const QuotedRow rows[] = {
        {__LINE__, {}, ftString, "Equal", "x' OR '1'='1", "c.Name = 'x'' OR ''1''=''1'",
         "a string type is quoted even when the model leaves it out"},
        {__LINE__, {}, ftString, "InList", "a,b'", "c.Name in ('a','b''')", "and so is every list item"},
        {__LINE__, {ftVariant}, ftVariant, "Equal", "O'Brien", "c.Name = 'O''Brien'",
         "a quoted type of no group doubles its quotes"},
        {__LINE__, TSQLFormats::DefaultQuotedTypes(), ftString, "Is", "x OR 1=1", "c.Name = 'x OR 1=1'",
         "a template without quotes gets them around a text"},
    };
    for (const QuotedRow &row : rows) {
        model.SQLFormats().SetQuotedTypes(row.quoted);
        s.custName->SetFieldType(row.type);
        EXPECT_EQ(ConditionText(s.custName, row.op, row.value, {}), row.expected)
            << "line " << row.line << ": " << row.reason;
    }
}

TEST_F(ValueFormatTest, ChecksTheValuesOfPredefinedConditions)
{
    s.bigCustomers->Values().Items(0)->SetDataType(ftInteger);
    AddColumn(s.custId);
    TFilterCond *cond = query.AddCustomCondition(query.Filter(), s.bigCustomers);
    cond->SetValue(1, "3 OR 1=1");
    EXPECT_TRUE(Raised<EConvertError>([&] { query.BuildQuery(); }).contains("3 OR 1=1"));
    cond->SetValue(1, "3");
    query.BuildQuery();
    EXPECT_TRUE(query.QResult().WhereLines().join(' ').contains("> 3"));
}

TEST_F(ValueFormatTest, ExtractsDisplayTextsAndStoredValues)
{
    TSimpleCond *cond = AddCond(s.orderDate, "Between", StoredDate(true), "");
    EXPECT_EQ(ProcessDateValue(s.model.get(), ssSQL2, ftDateTime, StoredDate(true), false),
              DateTimeToStr(EncodeDate(2024, 3, 15) + EncodeTime(13, 45, 30)));
    cond->SetValueIsParam(2, true);
    LoadValues("a", "b", *cond);
    QString value1, value2;
    SaveValues(*cond, value1, value2);
    EXPECT_EQ(value1, "a");
    EXPECT_EQ(value2, "b");
    EXPECT_EQ(cond->GetValue(2), "") << "a parameter's value is not the condition's text";
    EXPECT_EQ(ExtractValue(*AddCond(s.custName, "IsNull", "raw'"), 1), "raw'")
        << "a value the operator does not use is left as typed";
}

} // namespace
