#include "common/printers.h"
#include "model/dbstructure.h"
#include "model/dmxmlformat.h"

#include <gtest/gtest.h>

#include <QtGlobal>

namespace vm20 {
namespace {

class DMXmlFormat : public ::testing::Test
{
protected:
    TNDBStructure Model;
};

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
    std::vector<TDSField *> members = Model.FieldGroups().Items(0)->Fields();
    ASSERT_EQ(members.size(), 2u);
    EXPECT_EQ(members[0]->FieldExpr(), "7") << "members keep document order";
    EXPECT_EQ(Model.RootGroup().Items(1)->FieldExpr(), "new");
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
    struct Row { int line; const char *text; const char *expected; const char *reason; };
    const Row rows[] = {
        {__LINE__, "%VM20_XML_A%%VM20_XML_A%", "alphaalpha", "references back to back"},
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
