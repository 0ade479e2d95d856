#include "common/printers.h"
#include "model/dbstructure.h"
#include "model/dmxmlformat.h"
#include "richmodel.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QtGlobal>

namespace vm20 {
namespace {

using testing::AddDataField;
using testing::AddVirtualField;

// Small enough to read whole, yet touching every element and attribute.
void BuildSmallModel(TNCustomDBStructure &model)
{
    model.SetDBParams({"DSN=shop", "UserName=admin"});
    model.SetDescription({"Shop orders", "second line"});
    model.SetCustomInfo({"owner=sales"});
    model.ClearOperators();
    model.AddOperator("Equal", "is equal to", "@f = '@1'", "",
                      {ftString, ftSmallint, ftWord, ftMemo, ftFmtMemo});
    model.AddOperator("Between", "is between", "@f between '@1' and '@2'", "and", {ftCurrency, ftTimeStamp});

    testing::AddTable(model, "Customers", "Our customers")->SetTableAlias("C");
    TDSTable *orders = testing::AddTable(model, "Orders", "Orders");
    orders->SetTableAlias("O");
    orders->SetDatabaseName("Sales");
    orders->SetTableHints("NOLOCK");
    TDSLink *link = model.AddLinkByExpr("Orders-Customers:CustomerID=ID,Kind<>val:1");
    link->SetLinkType(ltOuterLeft);
    link->SetQuoteFields(true);

    TDSField *name = AddDataField(model, model.GetTable(0), "Name", "Name <&>", ftString, 40);
    name->SetEditType(etList);
    auto *list = static_cast<TDSListEditor *>(name->ValueEditor());
    list->Items() << "Smith & \"Sons\"";
    list->Values() << "S1";
    name->SetUserData(QStringLiteral("tag"));

    TDSFieldGroup *group = model.FieldGroups().AddGroup("Order");
    TDSField *total = AddVirtualField(model, "SUM(O.Amount)", "Total", ftCurrency);
    total->SetGroup(group);
    total->SetUseInResult(false);
    total->SetEditType(etSQL);
    static_cast<TDSSQLEditor *>(total->ValueEditor())->SetSQLText("SELECT 1\nFROM O");
    TDSField *kind = AddDataField(model, orders, "Kind", "Kind", ftBytes, 0);
    kind->SetGroup(group);
    kind->SetUseInConditions(false);
    kind->SetEditType(etCustom);
    static_cast<TDSCustomEditor *>(kind->ValueEditor())->Data() << "a=1";
}

class DMXmlFormat : public ::testing::Test
{
protected:
    QString Save(const TNCustomDBStructure &model)
    {
        QStringList lines;
        SaveDMToXml(model, lines);
        return lines.join('\n');
    }

    TNDBStructure Model;
};

TEST_F(DMXmlFormat, WritesTheSmallModelAsThisDocument)
{
    BuildSmallModel(Model);
    const QString expected = R"xml(<?xml version="1.0"?>
<DataModel formatVersion="3">
  <DBParams>
    <DSN>shop</DSN>
    <UserName>admin</UserName>
    <Password></Password>
  </DBParams>
  <Description>Shop orders
second line</Description>
  <CustomInfo>owner=sales</CustomInfo>
  <Operators>
    <Operator id="Equal" caption="is equal to" expr="@f = '@1'" format="" kind="vkScalar">
      <Types>
        <Type>String</Type>
        <Type>Word</Type>
        <Type>Memo</Type>
        <Type>Unknown</Type>
      </Types>
    </Operator>
    <Operator id="Between" caption="is between" expr="@f between '@1' and '@2'" format="and" kind="vkScalar">
      <Types>
        <Type>Currency</Type>
        <Type>DateTime</Type>
      </Types>
    </Operator>
  </Operators>
  <Tables>
    <Table name="Customers" alias="C" db="" hints=""/>
    <Table name="Orders" alias="O" db="Sales" hints="NOLOCK"/>
  </Tables>
  <Links>
    <Link table1="O" table2="C" type="Left" QF="1">
      <Condition type="FF" expr1="CustomerID" expr2="ID" op="="/>
      <Condition type="FC" expr1="Kind" expr2="1" op="&lt;&gt;"/>
    </Link>
  </Links>
  <Entities>
    <Entity name="Root entity">
      <Attr id="1" kind="nfkData" expr="Name" caption="Name &lt;&amp;&gt;" type="String" size="40" UIC="1" UIR="1" userData="tag" tables="C">
        <Operators>
          <Operator>Equal</Operator>
        </Operators>
        <Editors>
          <Default type="LIST">
            <Values>
              <Value id="S1" text="Smith &amp; &quot;Sons&quot;"/>
            </Values>
          </Default>
        </Editors>
      </Attr>
      <Entity name="Order">
        <Attr id="2" kind="nfkVirtual" expr="SUM(O.Amount)" caption="Total" type="Currency" size="100" UIC="1" UIR="0" tables="O">
          <Operators>
            <Operator>Between</Operator>
          </Operators>
          <Editors>
            <Default type="SQLLIST">
              <SQL>SELECT 1
FROM O</SQL>
            </Default>
          </Editors>
        </Attr>
        <Attr id="3" kind="nfkData" expr="Kind" caption="Kind" type="Unknown" size="0" UIC="0" UIR="1" tables="O">
          <Operators/>
          <Editors>
            <Default type="CUSTOM">
              <Values>
                <Value text="a=1"/>
              </Values>
            </Default>
          </Editors>
        </Attr>
      </Entity>
    </Entity>
  </Entities>
</DataModel>)xml";
    EXPECT_EQ(Save(Model), expected);
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

TEST_F(DMXmlFormat, ReadsNamesAndEnumeratedValuesInAnyLetterCase)
{
    BuildSmallModel(Model);
    const QString respelled = Respelled(Save(Model));
    ASSERT_TRUE(respelled.contains("<ATTR ID=\"1\" KIND=\"NFKDATA\""));
    TNDBStructure loaded;
    LoadDMFromXml(loaded, respelled.split('\n'));
    EXPECT_EQ(Save(loaded), Save(Model));
}

TEST_F(DMXmlFormat, KeepsFieldIdsAndAddsFieldsInIdOrder)
{
    // Groups written before the root fields and ids out of document order.
    const QString document = R"xml(<DataModel><Entities>
  <Entity name="G"><Attr id="7" kind="nfkVirtual" expr="7"/><Attr id="2" kind="nfkVirtual" expr="2"/></Entity>
  <Entity name="Root entity"><Attr id="5" kind="nfkVirtual" expr="5"/><Attr kind="nfkVirtual" expr="new"/></Entity>
</Entities></DataModel>)xml";
    LoadDMFromXml(Model, document.split('\n'));
    QStringList order;
    for (int i = 0; i < Model.GetFieldCount(); ++i)
        order << QString::number(Model.GetField(i)->ID()) + ":" + Model.GetField(i)->FieldExpr();
    EXPECT_EQ(order, QStringList({"2:2", "5:5", "7:7", "8:new"}));
    QStringList group;
    for (const TDSField *field : Model.FieldGroups().Items(0)->Fields())
        group << field->FieldExpr();
    EXPECT_EQ(group, QStringList({"7", "2"})) << "members keep document order";
    QStringList root;
    for (const TDSField *field : Model.RootGroup().Fields())
        root << field->FieldExpr();
    EXPECT_EQ(root, QStringList({"5", "new"}));
}

// A provider that records the description the model hands it.
class TRecordingInfo : public TNDBInfo
{
public:
    void LoadInfo(const QStringList &lines) override { Loaded = lines; }
    QStringList Loaded;
};

TEST_F(DMXmlFormat, HandsProviderValuesWithEnvironmentReferencesExpanded)
{
    qputenv("VM20_XML_SERVER", "db01");
    TRecordingInfo info;
    Model.SetDatabaseInfo(&info);
    const QString document = R"xml(<DataModel><options><DbInfo>
  <Server>%VM20_XML_SERVER%:5432</Server>
  <Nested><Inner>x</Inner></Nested>
  <Path>%VM20_XML_UNSET_NAME%\data</Path>
  <Empty/>
</DbInfo></options></DataModel>)xml";
    LoadDMFromXml(Model, document.split('\n'));
    EXPECT_EQ(info.Loaded, QStringList({"Server=db01:5432", "Path=%VM20_XML_UNSET_NAME%\\data", "Empty="}));
    Model.SetDatabaseInfo(nullptr);
}

TEST(ExpandEnvironmentReferences, ReplacesSetNamesAndKeepsEverythingElse)
{
    qputenv("VM20_XML_A", "alpha");
    qputenv("VM20_XML_EMPTY", "");
    qunsetenv("VM20_XML_UNSET");
    struct Row { int line; const char *text; const char *expected; const char *reason; };
    const Row rows[] = {
        {__LINE__, "%VM20_XML_A%%VM20_XML_A%", "alphaalpha", "references back to back"},
        {__LINE__, "[%VM20_XML_EMPTY%]", "[]", "a set but empty value"},
        {__LINE__, "%VM20_XML_UNSET%", "%VM20_XML_UNSET%", "an unset name stays as written"},
        {__LINE__, "50% of %VM20_XML_A%", "50% of alpha", "a lone percent sign does not swallow the reference"},
        {__LINE__, "%%VM20_XML_A%", "%alpha", "an empty name is no reference"},
        {__LINE__, "%VM20_XML_A=x%", "%VM20_XML_A=x%", "a name with = is not looked up"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(::testing::Message() << "line " << row.line << ": " << row.reason);
        EXPECT_EQ(ExpandEnvironmentReferences(QString::fromUtf8(row.text)), QString::fromUtf8(row.expected));
    }
}

} // namespace
} // namespace vm20
