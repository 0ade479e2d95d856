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
    void Write(const QString &name, const QStringList &lines) { WriteQueryTextFile(Path(name), lines); }
    QStringList Names() const
    {
        QStringList names;
        for (int i = 0; i < store.GetCount(); ++i)
            names << store.GetQuery(i)->QueryName();
        return names;
    }
    QStringList Saved()
    {
        QStringList lines;
        query.SaveToStrings(lines);
        return lines;
    }

    QTemporaryDir dir;
    TNFolderQueryBase store;
};

TEST_F(TNFolderQueryBaseTest, ListsTheQueryFilesOfItsFolderWithTheirDescriptions)
{
    Write("beta.vmq", {"[Main]", "", "[Description]", "second one", ""});
    Write("Alpha.vmq", {"[Description]", "first", "of two", ""});
    Write("notes.txt", {"[Description]", "not a query"});
    QDir().mkpath(Path("sub.vmq"));
    store.Open();
    EXPECT_EQ(Names(), (QStringList{"Alpha", "beta"}));
    EXPECT_EQ(store.GetQuery(0)->Description(), (QStringList{"first", "of two"}));
    EXPECT_EQ(store.GetQuery(1)->Description(), QStringList{"second one"});
    EXPECT_EQ(store.ItemIndex(), 0);
}

TEST_F(TNFolderQueryBaseTest, WritesANewQueryWhenItIsSaved)
{
    store.Open();
    TNQueryItem *item = store.NewQuery();
    EXPECT_EQ(item->QueryName(), "Query1");
    EXPECT_FALSE(QFile::exists(Path("Query1.vmq"))) << "nothing is written before saving";
    AddCond(s.custCity, "Equal", "Paris");
    query.Description() = QStringList{"Paris customers"};
    item->Save();
    EXPECT_EQ(ReadQueryTextFile(Path("Query1.vmq")), Saved());
    EXPECT_EQ(item->Description(), QStringList{"Paris customers"});
    EXPECT_EQ(store.NewQuery()->QueryName(), "Query2");

    item->SetQueryName("Paris");
    item->Save();
    EXPECT_TRUE(QFile::exists(Path("Paris.vmq")));
    EXPECT_FALSE(QFile::exists(Path("Query1.vmq"))) << "a renamed item leaves no old file";
}

TEST_F(TNFolderQueryBaseTest, LoadsTheCurrentFileIntoItsQuery)
{
    AddCond(s.custCity, "Equal", "Paris");
    const QStringList paris = Saved();
    Write("a.vmq", {});
    Write("b.vmq", paris);
    store.Open();
    EXPECT_EQ(query.GetRowCount(), 1) << "an empty file is an empty query";
    store.SetItemIndex(1);
    EXPECT_EQ(Saved(), paris);
}

TEST_F(TNFolderQueryBaseTest, DeletesTheFileOfAnErasedQuery)
{
    Write("a.vmq", {});
    store.Open();
    store.NewQuery();
    store.EraseQuery(1);   // never saved: no file to delete
    store.EraseQuery(0);
    EXPECT_FALSE(QFile::exists(Path("a.vmq")));
    EXPECT_EQ(store.GetCount(), 0);
}

TEST_F(TNFolderQueryBaseTest, RefusesNamesThatAreNoFileNamesAndAMissingFolder)
{
    store.Open();
    TNQueryItem *item = store.NewQuery();
    for (const char *name : {"", " ", "..", "a/b", "a\\b", "a:b", "a?"}) {
        item->SetQueryName(name);
        try {
            item->Save();
            ADD_FAILURE() << name;
        } catch (const ENQueryBaseError &e) {
            EXPECT_EQ(e.ErrorCode(), qbeInvalidQueryName) << name;
        }
    }
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList());

    TNFolderQueryBase nowhere;
    EXPECT_THROW(nowhere.Open(), ENQueryBaseError);
    EXPECT_FALSE(nowhere.Active());
}

} // namespace
