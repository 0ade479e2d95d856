#include "common/printers.h"
#include "model/fieldtype.h"
#include "model/messages.h"
#include "model/vmglobal.h"

#include <gtest/gtest.h>

namespace vm20 {
namespace {

TEST(FieldTypeNames, EveryOrdinalHasItsNameAndReadsBackAndOthersAreRejected)
{
    // Spot checks of ordinals that text formats store as numbers.
    EXPECT_EQ(FldTypeToStr(TFieldType(36)), "ftTimeStamp");
    EXPECT_EQ(FieldTypeCount, 52);
    for (int i = 0; i < FieldTypeCount; ++i)
        EXPECT_EQ(StrToFldType(FldTypeToStr(TFieldType(i))), TFieldType(i)) << i;
    EXPECT_EQ(int(StrToFldType("String")), -1);
    EXPECT_EQ(StrToFldType("FTSTRING"), ftString) << "names compare without regard to case";
    EXPECT_EQ(FldTypeToStr(TFieldType(52)), "");
}

TEST(MessageTable, HoldsFortySevenTextsWithOneGap)
{
    const QList<int> ids = MessageIds();
    EXPECT_EQ(ids.size(), 47);
    EXPECT_EQ(ids.last(), 65535);
    EXPECT_FALSE(ids.contains(65503));
    EXPECT_EQ(LoadMessage(65503), "");
    const struct { int id; const char *identifier; const QString &text; const char *expected; } rows[] = {
        {65498, "SQPEUnrecognizedField", SQPEUnrecognizedField, "Unrecognized field \"%s\""},
        {65535, "SDBSENoPath", SDBSENoPath, "Can not find path between tables"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(row.text, row.expected);
        EXPECT_EQ(LoadMessage(row.id), row.expected);
        EXPECT_EQ(MessageIdentifier(row.id), row.identifier);
    }
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
