#include "common/printers.h"
#include "modeltext_samples.h"
#include "richmodel.h"

#include <gtest/gtest.h>

namespace vm20 {
namespace {

using testing::Saved;
using testing::SmallModelText;

// Keeps a description of its own, as a provider for a particular database would.
class TCachingInfo : public TNDBInfo
{
public:
    void LoadInfo(const QStringList &lines) override { Cache = lines; }
    void SaveInfo(QStringList &lines) const override { lines = Cache; }
    QStringList Cache;
};

TEST(TNCustomDBStructureText, SmallModelIsWrittenExactlyAndReadBackToTheSameText)
{
    TNCustomDBStructure model;
    testing::BuildSmallModel(model);
    EXPECT_EQ(Saved(model).join('\n'), SmallModelText().join('\n'));

    TNCustomDBStructure loaded;
    loaded.LoadFromStrings(SmallModelText());
    EXPECT_EQ(Saved(loaded), SmallModelText());
    EXPECT_EQ(loaded.Conditions().Items(0)->Tables().CommaText(), "Books") << "derived, not stored";
}

TEST(TNCustomDBStructureText, RichModelSurvivesSaveLoadSaveUnchanged)
{
    TNCustomDBStructure model;
    testing::BuildRichModel(model);
    // The loader switches conditions off for a field without operators, as the blob column is.
    model.FieldByName(0, "Picture")->SetUseInConditions(false);
    const QStringList first = Saved(model);

    TNCustomDBStructure loaded;
    int changes = 0;
    loaded.OnChange = [&](TNCustomDBStructure *) { ++changes; };
    loaded.LoadFromStrings(first);
    EXPECT_EQ(Saved(loaded).join('\n'), first.join('\n'));
    EXPECT_EQ(changes, 1) << "one notification for the whole load";
}

TEST(TNCustomDBStructureText, ProviderDescriptionTravelsInItsOwnSectionWhenStored)
{
    TCachingInfo info;
    info.Cache = {"Count=1", "F1Name=ID"};
    TNCustomDBStructure model;
    model.SetDatabaseInfo(&info);
    const QStringList lines = Saved(model);
    EXPECT_EQ(lines.mid(lines.size() - 4), QStringList({"", "[DBSpecInfo]", "Count=1", "F1Name=ID"}));

    TCachingInfo other;
    TNCustomDBStructure loaded;
    loaded.SetDatabaseInfo(&other);
    loaded.LoadFromStrings(lines + QStringList{" "});
    EXPECT_EQ(other.Cache, info.Cache) << "the trailing separator is not part of the description";

    model.DMOptions().SetStoreDBInfo(false);
    EXPECT_FALSE(Saved(model).contains("[DBSpecInfo]"));
}

// Keys a text may hold in another spelling or leave out.
TEST(TNCustomDBStructureText, ReaderDerivesWhatAFieldSectionLeavesOut)
{
    QStringList text = SmallModelText();
    text.removeAll("Aggr=1");                    // derived from the expression
    text[text.indexOf("Operators=Equal")] = "Operators=";   // field 1: no operators
    text[text.indexOf("LinkType=Left")] = "LinkType=FULL";
    text[text.indexOf("CaseInsens=1")] = "CaseInsens=true";
    text[text.indexOf("Fields=2,3")] = "Fields=3,77";      // 77 is no field; field 2 is listed nowhere
    TNCustomDBStructure model;
    model.LoadFromStrings(text);
    EXPECT_TRUE(model.FieldByID(3)->IsAggregate());
    EXPECT_FALSE(model.FieldByID(1)->UseInConditions());
    EXPECT_EQ(model.GetLink(0)->LinkType(), ltOuterFull);
    EXPECT_TRUE(model.GetOperator(1)->CaseInsensative());
    ASSERT_EQ(model.RootGroup().Count(), 2);
    EXPECT_EQ(model.RootGroup().Items(0)->ID(), 3);
    EXPECT_EQ(model.RootGroup().Items(1)->ID(), 2);
}

} // namespace
} // namespace vm20
