#include "common/printers.h"
#include "model/dbstructure.h"
#include "model/dmxmlformat.h"
#include "model/errors.h"

#include <gtest/gtest.h>

namespace vm20 {
namespace {

// A valid document to wrap a broken piece in.
QString Document(const QString &operators, const QString &tables, const QString &links, const QString &entities)
{
    return "<DataModel><Operators>" + operators + "</Operators><Tables>" + tables + "</Tables><Links>" + links
        + "</Links><Entities>" + entities + "</Entities></DataModel>";
}

const QString Ops = R"(<Operator id="Equal" expr="@f = '@1'"><Types><Type>String</Type></Types></Operator>)";
const QString Tables = R"(<Table name="Customers" alias="C"/><Table name="Orders" alias="O"/>)";

QString WithLinks(const QString &links) { return Document(Ops, Tables, links, ""); }
QString WithField(const QString &attr) { return Document(Ops, Tables, "", "<Entity name=\"E\">" + attr + "</Entity>"); }

QString Nested(int depth)
{
    return "<DataModel><Entities>" + QString("<Entity>").repeated(depth) + QString("</Entity>").repeated(depth)
        + "</Entities></DataModel>";
}

class DMXmlBadInput : public ::testing::Test
{
protected:
    void ExpectRejected(const QString &document, int code, const QString &fragment)
    {
        TNDBStructure model;
        model.AddTable("Left", "Left over");
        int changes = 0;
        model.OnChange = [&](TNCustomDBStructure *) { ++changes; };
        try {
            LoadDMFromXml(model, document.split('\n'));
            ADD_FAILURE() << "accepted";
        } catch (const ENDBStructError &e) {
            EXPECT_EQ(e.ErrorCode(), code);
            EXPECT_TRUE(e.Message().contains(fragment)) << e.Message().toStdString();
        }
        // Cleared, notified once, and ready for the next load.
        EXPECT_EQ(model.GetTableCount() + model.GetFieldCount() + model.GetLinkCount() + model.GetOperatorCount(), 0);
        EXPECT_FALSE(model.Updating());
        EXPECT_EQ(changes, 1);
        LoadDMFromXml(model, WithField(R"(<Attr expr="Name" tables="C"/>)").split('\n'));
        EXPECT_EQ(model.GetFieldCount(), 1);
    }
};

TEST_F(DMXmlBadInput, RejectsEachBrokenDocumentWithAClearMessageAndLeavesTheModelEmpty)
{
    struct Row { int line; QString document; int code; QString fragment; const char *reason; };
    const Row rows[] = {
        {__LINE__, "", 13, "XML error at line 1", "an empty text is no document"},
        {__LINE__, "<DataModel>\n<Tables>\n<Table name=\"a\">\n</DataModel>", 13, "XML error at line 4",
         "mismatched end tag, reported where it stands"},
        {__LINE__, Nested(300), 13, "nested deeper than 256 levels", "a nesting the DOM could not free"},
        {__LINE__, Document(R"(<Operator expr="x"/>)", "", "", ""), 13,
         "Element \"Operator\" at line 1 has no attribute \"id\"", "an operator needs its name"},
        {__LINE__, Document(R"(<Operator id="X" kind="vkMaybe"/>)", "", "", ""), 13,
         "Unknown value kind \"vkMaybe\" of operator \"X\"", "value kinds by name only"},
        {__LINE__, Document(R"(<Operator id="X"><Types><Type>Text</Type></Types></Operator>)", "", "", ""), 13,
         "Unknown data type \"Text\"", "an applied type outside the name table"},
        {__LINE__, WithLinks(R"(<Link table1="O" table2="Nowhere"/>)"), dbseNoTable, "No such table Nowhere",
         "a link to a table the document lacks"},
        {__LINE__, WithLinks(R"(<Link table1="O" table2="C"><Condition type="FX" expr1="a" expr2="b"/></Link>)"),
         13, "\"FX\" at line 1 is not two of the letters F and C", "operand kinds are F or C"},
        {__LINE__, WithLinks(R"(<Link table1="O" table2="C" QF="perhaps"/>)"), 13,
         "Attribute \"QF\" of element \"Link\" at line 1 is not a Boolean: \"perhaps\"", "flags are Booleans"},
        {__LINE__, WithField(R"(<Attr expr="Name" tables="Nowhere"/>)"), dbseNoTable,
         "Can not find table \"Nowhere\" for field \"Name\"", "a data field of a table the document lacks"},
        {__LINE__, WithField(R"(<Attr expr="a" kind="nfkOther"/>)"), 13, "Unknown field kind \"nfkOther\"",
         "field kinds by name only"},
        {__LINE__, WithField(R"(<Attr expr="a"><Editors><Default type="SPIN"/></Editors></Attr>)"), 13,
         "Unknown editor type \"SPIN\"", "editor kinds by name only"},
        {__LINE__, WithField(R"(<Attr expr="a" size="big"/>)"), 13,
         "Attribute \"size\" of element \"Attr\" at line 1 is not an integer: \"big\"", "sizes are integers"},
        {__LINE__, WithField(R"(<Attr expr="a" id="-3"/>)"), 13, "Invalid field id -3", "ids are positive"},
        {__LINE__, WithField(R"(<Attr expr="a" id="4"/><Attr expr="b" id="4"/>)"), 13, "Duplicate field id 4 at line 1",
         "ids name one field each"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(::testing::Message() << "line " << row.line << ": " << row.reason);
        ExpectRejected(row.document, row.code, row.fragment);
    }
}

TEST_F(DMXmlBadInput, TakesNestingAsDeepAsTheLimit)
{
    TNDBStructure model;
    LoadDMFromXml(model, {Nested(254)});
    EXPECT_EQ(model.FieldGroups().Count(), 0) << "nameless entities are the root group";
}

} // namespace
} // namespace vm20
