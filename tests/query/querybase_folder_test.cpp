// The folder store: query files in a folder, listed, written and deleted.
#include "model/errors.h"
#include "query/folderquerybase.h"
#include "query/querytextfile.h"
#include "shopquery.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace vm20;
using namespace shop;

namespace {

class TNFolderQueryBaseTest : public ShopQueryFixture
{
protected:
    TNFolderQueryBaseTest()
    {
        store.SetFolder(dir.path());
        query.SetQueryBase(&store);
    }
    QString Path(const QString &name) const { return dir.filePath(name); }
    QStringList Saved()
    {
        QStringList lines;
        query.SaveToStrings(lines);
        return lines;
    }

    QTemporaryDir dir;
    TNFolderQueryBase store;
};

TEST_F(TNFolderQueryBaseTest, ListsItsQueryFilesAndLoadsTheCurrentOne)
{
    AddCond(s.custCity, "Equal", "Paris");
    query.Description() = QStringList{"first", "of two"};
    const QStringList paris = Saved();
    WriteQueryTextFile(Path("beta.vmq"), {});
    WriteQueryTextFile(Path("Alpha.vmq"), paris);
    WriteQueryTextFile(Path("notes.txt"), paris);
    QDir().mkpath(Path("sub.vmq"));
    store.Open();
    ASSERT_EQ(store.GetCount(), 2);
    EXPECT_EQ(store.GetQuery(0)->QueryName(), "Alpha") << "in name order, without regard to case";
    EXPECT_EQ(store.GetQuery(0)->Description(), (QStringList{"first", "of two"}));
    EXPECT_EQ(query.GetRowCount(), 2) << "the first file loaded on opening";
    store.SetItemIndex(1);
    EXPECT_EQ(query.GetRowCount(), 1) << "an empty file is an empty query";
}

TEST_F(TNFolderQueryBaseTest, WritesAQueryWhenItIsSavedAndDeletesItWhenErased)
{
    store.Open();
    TNQueryItem *item = store.NewQuery();
    EXPECT_FALSE(QFile::exists(Path("Query1.vmq"))) << "nothing is written before saving";
    AddCond(s.custCity, "Equal", "Paris");
    query.Description() = QStringList{"Paris customers"};
    item->Save();
    EXPECT_EQ(ReadQueryTextFile(Path("Query1.vmq")), Saved());
    EXPECT_EQ(item->Description(), QStringList{"Paris customers"});
    EXPECT_EQ(store.NewQuery()->QueryName(), "Query2");

    item->SetQueryName("Paris");
    item->Save();
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList{"Paris.vmq"}) << "no file left under the old name";
    store.EraseQuery(1);   // never saved: no file to delete
    store.EraseQuery(0);
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList());
    EXPECT_EQ(store.GetCount(), 0);
}

TEST_F(TNFolderQueryBaseTest, RefusesNamesThatAreNoFileNamesAndAMissingFolder)
{
    store.Open();
    TNQueryItem *item = store.NewQuery();
    for (const char *name : {"", " ", "..", "a/b", "a\\b", "a:b", "a?"}) {
        item->SetQueryName(name);
        EXPECT_THROW(item->Save(), ENQueryBaseError) << name;
    }
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList());
    TNFolderQueryBase nowhere;
    EXPECT_THROW(nowhere.Open(), ENQueryBaseError);
    EXPECT_FALSE(nowhere.Active());
}

} // namespace
