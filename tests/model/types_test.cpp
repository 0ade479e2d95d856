#include "common/printers.h"
#include "model/errors.h"
#include "model/fieldtype.h"
#include "model/messages.h"
#include "model/sqlformats.h"
#include "model/vmglobal.h"

#include <gtest/gtest.h>

namespace vm20 {
namespace {

TEST(FieldTypeNames, EveryOrdinalHasItsNameAndReadsBack)
{
    // Spot checks of ordinals that text formats store as numbers.
    const struct
    {
        TFieldType type;
        int ordinal;
        const char *name;
    } anchors[] = {{ftUnknown, 0, "ftUnknown"},   {ftString, 1, "ftString"},
                   {ftFmtMemo, 18, "ftFmtMemo"},  {ftFixedChar, 23, "ftFixedChar"},
                   {ftLargeint, 25, "ftLargeint"}, {ftTimeStamp, 36, "ftTimeStamp"},
                   {ftLongWord, 42, "ftLongWord"}, {ftSingle, 51, "ftSingle"}};
    for (const auto &a : anchors) {
        EXPECT_EQ(int(a.type), a.ordinal);
        EXPECT_EQ(FldTypeToStr(a.type), a.name);
    }
    EXPECT_EQ(FieldTypeCount, 52);
    for (int i = 0; i < FieldTypeCount; ++i) {
        const QString name = FldTypeToStr(TFieldType(i));
        EXPECT_TRUE(name.startsWith("ft")) << i;
        EXPECT_EQ(StrToFldType(name), TFieldType(i)) << name.toStdString();
    }
}

TEST(FieldTypeNames, UnknownNamesAndOrdinalsAreRejected)
{
    EXPECT_EQ(int(StrToFldType("ftNothing")), -1);
    EXPECT_EQ(int(StrToFldType("")), -1);
    EXPECT_EQ(int(StrToFldType("String")), -1);
    EXPECT_EQ(StrToFldType("FTSTRING"), ftString) << "names compare without regard to case";
    EXPECT_EQ(FldTypeToStr(TFieldType(52)), "");
    EXPECT_EQ(FldTypeToStr(TFieldType(-1)), "");
}

TEST(MessageTable, HoldsFortySevenTextsWithOneGap)
{
    const QList<int> ids = MessageIds();
    EXPECT_EQ(ids.size(), 47);
    EXPECT_EQ(ids.first(), 65488);
    EXPECT_EQ(ids.last(), 65535);
    EXPECT_FALSE(ids.contains(65503));
    EXPECT_EQ(LoadMessage(65503), "");
    const struct
    {
        int id;
        const char *identifier;
        const QString &text;
        const char *expected;
    } rows[] = {
        {65498, "SQPEUnrecognizedField", SQPEUnrecognizedField, "Unrecognized field \"%s\""},
        {65508, "SDBSECantFindFieldInTbl", SDBSECantFindFieldInTbl, "Can not find field \"%s\" in table \"%s\""},
        {65515, "SNotConnected", SNotConnected, "<Not connected>"},
        {65523, "SDeleteLink", SDeleteLink, "Delete Link?"},
        {65528, "SClearStructure", SClearStructure, "Clear Structure?"},
        {65534, "SDBSENoTable", SDBSENoTable, "No such table %s"},
        {65535, "SDBSENoPath", SDBSENoPath, "Can not find path between tables"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(row.text, row.expected);
        EXPECT_EQ(LoadMessage(row.id), row.expected);
        EXPECT_EQ(MessageIdentifier(row.id), row.identifier);
    }
}

TEST(ENVellumError, FormatsItsArgumentsAndKeepsTheCode)
{
    const ENDBStructError error(10, SDBSECantFindFieldInTbl, {"Name", "Orders"});
    EXPECT_EQ(error.ErrorCode(), 10);
    EXPECT_EQ(error.Message(), "Can not find field \"Name\" in table \"Orders\"");
    EXPECT_STREQ(error.what(), "Can not find field \"Name\" in table \"Orders\"");
    const ENQueryBaseError plain(1, "Query base is not specified");
    EXPECT_EQ(plain.Message(), "Query base is not specified");
    const ENVellumError &base = plain;
    EXPECT_EQ(base.ErrorCode(), 1);
}

TEST(TSQLFormats, QuoteDateAndQuoteBoolAreViewsOfQuotedTypes)
{
    TSQLFormats formats;
    EXPECT_TRUE(formats.QuoteDate());
    EXPECT_TRUE(formats.QuoteBool());
    formats.SetQuoteDate(false);
    EXPECT_EQ(formats.QuotedTypes(),
              (TFieldTypes{ftString, ftBoolean, ftMemo, ftFmtMemo, ftFixedChar, ftWideString}));
    formats.SetQuoteDate(true);
    EXPECT_EQ(formats.QuotedTypes(), TSQLFormats::DefaultQuotedTypes());
    formats.SetQuoteBool(false);
    EXPECT_FALSE(formats.QuotedTypes().contains(ftBoolean));
    formats.SetQuotedTypes({ftTime});
    EXPECT_FALSE(formats.QuoteDate()) << "only ftDate is read";
}

TEST(AnsiText, LinesTravelAsOneUtf8BufferAndBack)
{
    const QStringList lines{"Müller", "", "a=b"};
    const QByteArray text = GetStringsAsAnsiChar(lines);
    EXPECT_EQ(text, QByteArray("M\xc3\xbcller\n\na=b\n"));
    EXPECT_EQ(SplitAnsiText(text), lines);
    EXPECT_EQ(SplitAnsiText("x\r\ny"), (QStringList{"x", "y"}));
}

} // namespace
} // namespace vm20
