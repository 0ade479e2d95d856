#include "common/printers.h"
#include "model/dbstructure.h"
#include "model/dmxmlformat.h"
#include "richmodel.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

namespace vm20 {
namespace {

// The type a field of `type` has after the trip: three names stand for two
// types each, and the types without a name of their own come back unknown.
TFieldType TypeAfterTrip(TFieldType type)
{
    switch (type) {
    case ftWord: return ftSmallint;
    case ftTimeStamp: return ftDateTime;
    case ftBlob: return ftMemo;
    case ftUnknown: case ftString: case ftSmallint: case ftInteger: case ftBoolean: case ftFloat:
    case ftCurrency: case ftBCD: case ftDate: case ftTime: case ftDateTime: case ftAutoInc: case ftMemo:
    case ftFixedChar: case ftWideString: case ftLargeint:
        return type;
    default:
        return ftUnknown;
    }
}

TFieldTypes TypesAfterTrip(TFieldTypes types)
{
    TFieldTypes result;
    for (int ordinal = 0; ordinal < FieldTypeCount; ++ordinal) {
        const auto type = TFieldType(ordinal);
        if (types.contains(type))   // nameless ones come back as ftUnknown
            result.include(TypeAfterTrip(type));
    }
    return result;
}

// Everything the XML document cannot carry, dropped from the original the
// way the reader fills it in. The trip must differ in exactly these.
void ForgetWhatXmlCannotCarry(TNCustomDBStructure &model)
{
    for (int i = 0; i < model.GetTableCount(); ++i) {
        TDSTable *table = model.GetTable(i);
        table->SetDisplayName(table->TableName());                      // no caption: the name stands in
        table->SetQuoted(table->TableName().contains(' '));              // quoted when it must be
        table->SetDesignPositions("0,0,0,0");                            // no design box
    }
    for (int i = 0; i < model.GetLinkCount(); ++i)
        for (QStringList *side : {&model.GetLink(i)->Fields1(), &model.GetLink(i)->Fields2()})
            for (QString &entry : *side)
                if (entry.startsWith("fld:"))
                    entry = entry.mid(4);                                // a column is a column
    for (int i = 0; i < model.GetOperatorCount(); ++i) {
        TDSOperator *op = model.GetOperator(i);
        op->SetExprType(ftUnknown);                                      // no attribute for it
        op->SetCaseInsensative(false);                                   // nor for this
        op->SetAppliedTypes(TypesAfterTrip(op->AppliedTypes()));
    }
    for (int i = 0; i < model.GetFieldCount(); ++i) {
        TDSField *field = model.GetField(i);
        field->SetFieldType(TypeAfterTrip(field->FieldType()));
        field->SetQuoted(field->FieldKind() == nfkData && field->FieldExpr().contains(' '));
        if (field->OperatCount() == 0)
            field->SetUseInConditions(false);                            // as the text reader does
        if (field->EditType() == etEdit) {                               // only the editor's kind
            field->SetEditType(etAuto);
            field->SetEditType(etEdit);
        }
        if (auto *sql = dynamic_cast<TDSSQLEditor *>(field->ValueEditor()))
            sql->SQLParams().clear();
    }
    model.Conditions().Clear();                                          // no section for them
    model.SetDefaultMainTable(nullptr);
    model.SetRootFieldsFirst(false);
}

// Element and attribute names upper-cased (the declaration line dropped), and
// the enumerated values in other spellings, as another tool might write them.
QString Respelled(const QString &document)
{
    QString result = document.section('\n', 1);
    for (const char *pattern : {"</?(\\w+)", "\\s(\\w+)(?==\")"})
        for (auto it = QRegularExpression(pattern).globalMatch(result); it.hasNext();) {
            const QRegularExpressionMatch match = it.next();
            result.replace(match.capturedStart(1), match.capturedLength(1), match.captured(1).toUpper());
        }
    return result.replace(">String<", ">sTRING<").replace("vkScalar", "VKSCALAR").replace("\"Left\"", "\"left\"")
        .replace("nfkData", "NFKDATA").replace("\"LIST\"", "\"List\"").replace("Root entity", "ROOT ENTITY");
}

QString Text(const TNCustomDBStructure &model)
{
    QStringList lines;
    model.SaveToStrings(lines);
    return lines.join('\n');
}

TEST(DMXmlRoundTrip, ChangesTheRichModelOnlyInWhatTheDocumentCannotCarryWhateverTheLetterCase)
{
    TNDBStructure original;
    testing::BuildRichModel(original);
    // What only the document carries.
    original.SetDBParams({"DSN=shop", "UserName=admin", "Password=a&b<c>"});
    original.SetDescription({"Rich model", "", "  indented"});
    original.SetCustomInfo({"x=1"});
    original.GetField(0)->SetUserData(QStringLiteral("tag \"1\""));
    QStringList document;
    SaveDMToXml(original, document);

    const QString respelled = Respelled(document.join('\n'));
    ASSERT_TRUE(respelled.contains("<ATTR ID=\"1\" KIND=\"NFKDATA\""));
    TNDBStructure loaded;
    LoadDMFromXml(loaded, respelled.split('\n'));

    ForgetWhatXmlCannotCarry(original);
    EXPECT_EQ(Text(loaded), Text(original));
    QStringList expected;
    SaveDMToXml(original, expected);
    QStringList again;
    SaveDMToXml(loaded, again);
    EXPECT_EQ(again, expected);
}

} // namespace
} // namespace vm20
