#include "common/printers.h"
#include "model/dbstructure.h"
#include "model/dmxmlformat.h"

#include <gtest/gtest.h>

#include <QtGlobal>

namespace vm20 {
namespace {

TDSField *AddField(TNCustomDBStructure &model, TNFieldKind kind, const QString &expr, const QString &caption,
                   TDSTable *table, TFieldType type, int size)
{
    auto field = std::make_unique<TDSField>(&model);
    field->SetFieldKind(kind);
    field->SetDisplayName(caption);
    field->SetFieldType(type);
    field->SetFieldSize(size);
    if (table)
        field->Tables().Add(table);
    TDSField *added = field.get();
    model.AddFieldRef(std::move(field));
    if (kind == nfkVirtual)
        added->SetSQLExpr(expr);
    else
        added->SetFieldExpr(expr);
    added->AddAppliedOperators();
    return added;
}

// Small enough to read whole, yet touching every element and attribute.
void BuildSmallModel(TNCustomDBStructure &model)
{
    model.SetDBParams({"DSN=shop", "UserName=admin"});
    model.SetDescription({"Shop orders", "second line"});
    model.SetCustomInfo({"owner=sales"});
    model.ClearOperators();
    model.AddOperator("Equal", "is equal to", "@f = '@1'", "",
                      {ftString, ftSmallint, ftInteger, ftWord, ftMemo, ftFmtMemo});
    const int inList = model.AddOperator("InList", "is in list", "@f in (@1)", "", {ftInteger});
    model.GetOperator(inList)->SetValueKind(vkList);
    model.AddOperator("Between", "is between", "@f between '@1' and '@2'", "and", {ftCurrency, ftTimeStamp});

    TDSTable *customers = model.GetTable(model.AddTable("Customers", "Our customers"));
    customers->SetTableAlias("C");
    TDSTable *orders = model.GetTable(model.AddTable("Orders", "Orders"));
    orders->SetTableAlias("O");
    orders->SetDatabaseName("Sales");
    orders->SetTableHints("NOLOCK");
    TDSLink *link = model.AddLinkByExpr("Orders-Customers:CustomerID=ID,Kind<>val:1");
    link->SetLinkType(ltOuterLeft);
    link->SetQuoteFields(true);

    TDSField *name = AddField(model, nfkData, "Name", "Name <&>", customers, ftString, 40);
    name->SetEditType(etList);
    auto *list = static_cast<TDSListEditor *>(name->ValueEditor());
    list->Items() << "Smith & \"Sons\"";
    list->Values() << "S1";
    name->SetUserData(QStringLiteral("tag"));

    TDSFieldGroup *group = model.FieldGroups().AddGroup("Order");
    TDSField *total = AddField(model, nfkVirtual, "SUM(O.Amount)", "Total", nullptr, ftCurrency, 8);
    total->SetGroup(group);
    total->SetUseInResult(false);
    total->SetEditType(etSQL);
    static_cast<TDSSQLEditor *>(total->ValueEditor())->SetSQLText("SELECT 1\nFROM O");
    TDSField *kind = AddField(model, nfkData, "Kind", "Kind", orders, ftBytes, 0);
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
        <Type>Int</Type>
        <Type>Memo</Type>
      </Types>
    </Operator>
    <Operator id="InList" caption="is in list" expr="@f in (@1)" format="" kind="vkList">
      <Types>
        <Type>Int</Type>
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
        <Attr id="2" kind="nfkVirtual" expr="SUM(O.Amount)" caption="Total" type="Currency" size="8" UIC="1" UIR="0" tables="O">
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

TEST_F(DMXmlFormat, ReadsBackWhatItWrites)
{
    BuildSmallModel(Model);
    QStringList lines;
    SaveDMToXml(Model, lines);
    TNDBStructure loaded;
    LoadDMFromXml(loaded, lines);
    EXPECT_EQ(Save(loaded), Save(Model));
    EXPECT_EQ(loaded.DBParams(), QStringList({"DSN=shop", "UserName=admin", "Password="}));
}

TEST_F(DMXmlFormat, ReadsElementAndAttributeNamesInAnyLetterCase)
{
    BuildSmallModel(Model);
    const QString mixed = R"xml(<?xml version="1.0"?>
<datamodel>
  <DBPARAMS><dsn>shop</dsn><USERNAME>admin</USERNAME><password></password></DBPARAMS>
  <description>Shop orders
second line</description>
  <customInfo>owner=sales</customInfo>
  <OPERATORS>
    <operator ID="Equal" Caption="is equal to" EXPR="@f = '@1'" Format="" KIND="vkscalar">
      <types><TYPE>string</TYPE><type>WORD</type><type>int</type><type>memo</type></types>
    </operator>
    <Operator Id="InList" caption="is in list" expr="@f in (@1)" kind="VKLIST"><TYPES><Type>Int</Type></TYPES></Operator>
    <Operator id="Between" caption="is between" expr="@f between '@1' and '@2'" format="and">
      <Types><Type>currency</Type><Type>datetime</Type></Types>
    </Operator>
  </OPERATORS>
  <tables>
    <TABLE NAME="Customers" ALIAS="C"/>
    <table Name="Orders" Alias="O" DB="Sales" HINTS="NOLOCK"/>
  </tables>
  <LINKS>
    <link TABLE1="Orders" Table2="c" TYPE="left" qf="true">
      <CONDITION Type="ff" EXPR1="CustomerID" Expr2="ID" OP="="/>
      <condition type="fc" expr1="Kind" expr2="1" op="&lt;&gt;"/>
    </link>
  </LINKS>
  <ENTITIES>
    <ENTITY NAME="root entity">
      <ATTR ID="1" KIND="NFKDATA" EXPR="Name" CAPTION="Name &lt;&amp;&gt;" TYPE="STRING" SIZE="40" uic="1" uir="1" USERDATA="tag" TABLES="c">
        <OPERATORS><OPERATOR>equal</OPERATOR></OPERATORS>
        <EDITORS><DEFAULT TYPE="list"><VALUES><VALUE ID="S1" TEXT="Smith &amp; &quot;Sons&quot;"/></VALUES></DEFAULT></EDITORS>
      </ATTR>
      <entity name="Order">
        <attr id="2" kind="nfkvirtual" expr="SUM(O.Amount)" caption="Total" type="currency" size="8" UIR="false">
          <operators><operator>BETWEEN</operator></operators>
          <editors><default type="sqlList"><sql>SELECT 1
FROM O</sql></default></editors>
        </attr>
        <attr id="3" kind="nfkData" expr="Kind" caption="Kind" type="unknown" size="0" UIC="0" table="o">
          <operators/>
          <editors><default type="Custom"><values><value text="a=1"/></values></default></editors>
        </attr>
      </entity>
    </ENTITY>
  </ENTITIES>
</datamodel>)xml";
    TNDBStructure loaded;
    LoadDMFromXml(loaded, mixed.split('\n'));
    EXPECT_EQ(Save(loaded), Save(Model));
}

TEST_F(DMXmlFormat, GivesEachSharedTypeNameOneType)
{
    // Each row: a field type, the type it comes back as, and why.
    struct Row { int line; TFieldType written; TFieldType read; const char *reason; };
    const Row rows[] = {
        {__LINE__, ftSmallint, ftSmallint, "Word is read as the common SQL small integer"},
        {__LINE__, ftWord, ftSmallint, "the unsigned twin shares its name"},
        {__LINE__, ftDateTime, ftDateTime, "DateTime is read as the date-time type"},
        {__LINE__, ftTimeStamp, ftDateTime, "the time stamp shares its name"},
        {__LINE__, ftMemo, ftMemo, "Memo is read as text"},
        {__LINE__, ftBlob, ftMemo, "binary data shares the name with text"},
        {__LINE__, ftFmtMemo, ftUnknown, "a type without a name is written Unknown"},
        {__LINE__, ftLargeint, ftLargeint, "a name of its own comes back as it was"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(testing::Message() << "line " << row.line << ": " << row.reason);
        TNDBStructure model;
        AddField(model, nfkVirtual, "1", "f", nullptr, row.written, 1);
        QStringList lines;
        SaveDMToXml(model, lines);
        TNDBStructure loaded;
        LoadDMFromXml(loaded, lines);
        ASSERT_EQ(loaded.GetFieldCount(), 1);
        EXPECT_EQ(loaded.GetField(0)->FieldType(), row.read);
    }
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
        {__LINE__, "%VM20_XML_A%", "alpha", "a whole reference"},
        {__LINE__, "x%VM20_XML_A%y%VM20_XML_A%", "xalphayalpha", "two references in text"},
        {__LINE__, "%VM20_XML_A%%VM20_XML_A%", "alphaalpha", "references back to back"},
        {__LINE__, "[%VM20_XML_EMPTY%]", "[]", "a set but empty value"},
        {__LINE__, "%VM20_XML_UNSET%", "%VM20_XML_UNSET%", "an unset name stays as written"},
        {__LINE__, "50% of %VM20_XML_A%", "50% of alpha", "a lone percent sign does not swallow the reference"},
        {__LINE__, "%%VM20_XML_A%", "%alpha", "an empty name is no reference"},
        {__LINE__, "%VM20_XML_A", "%VM20_XML_A", "no closing percent sign"},
        {__LINE__, "100%", "100%", "a trailing percent sign"},
        {__LINE__, "%VM20_XML_A=x%", "%VM20_XML_A=x%", "a name with = is not looked up"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(testing::Message() << "line " << row.line << ": " << row.reason);
        EXPECT_EQ(ExpandEnvironmentReferences(QString::fromUtf8(row.text)), QString::fromUtf8(row.expected));
    }
}

} // namespace
} // namespace vm20
