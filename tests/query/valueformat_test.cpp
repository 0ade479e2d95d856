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
        {__LINE__, ssSQL2, &ShopModel::productCode, "Equal", "123456789012", {}, true, "p.Code = 123456789012",
         "large integers pass through"},
        {__LINE__, ssSQL2, &ShopModel::custName, "Equal", "O'Brien", {}, true, "c.Name = 'O''Brien'",
         "inner quotes doubled"},
        {__LINE__, ssSQL2, &ShopModel::productNotes, "Contains", "50%", {}, true, "p.Notes like '%50%%'",
         "memo is a string type"},
        {__LINE__, ssSQL2, &ShopModel::custVip, "Equal", "", {}, true, "c.Vip = 'False'", "empty boolean"},
        {__LINE__, ssSQL2, &ShopModel::orderDiscount, "Equal", "1,5", {}, true, "o.Discount = 1.5",
         "decimal comma of the locale"},
        {__LINE__, ssSQL2, &ShopModel::orderTotal, "Equal", "1234,5", {}, true, "o.Total = 1234.5", "currency"},
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
        {__LINE__, ssSQL2, &ShopModel::productCreated, "Equal", moment, {}, true, "p.Created = '2024-03-15 13:45:30'",
         "a time stamp takes the date-time format"},
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
