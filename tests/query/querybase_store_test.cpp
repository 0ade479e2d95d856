// The query store: its index rules, the order of its notifications and the
// query that follows it.
#include "model/errors.h"
#include "query/querybase.h"
#include "query/queryitem.h"
#include "shopquery.h"

using namespace vm20;
using namespace shop;

namespace {

class TMemoryItem : public TNQueryItem
{
public:
    using TNQueryItem::TNQueryItem;
    void LoadContent(QStringList &lines) override { lines = Text; }
    void SaveContent(const QStringList &lines) override { Text = lines; }
    QStringList Text;
};

// Its storage is a list of names; events and link calls go to one log.
class TLoggedBase : public TNQueryBase
{
public:
    explicit TLoggedBase(QStringList &log)
    {
        const auto logged = [&log](const char *name) { return [&log, name](TNQueryBase *) { log << name; }; };
        BeforeOpen = logged("BeforeOpen");
        AfterOpen = logged("AfterOpen");
        BeforeClose = logged("BeforeClose");
        AfterClose = logged("AfterClose");
        BeforeScroll = logged("BeforeScroll");
        AfterScroll = logged("AfterScroll");
    }
    QStringList Stored;

protected:
    void LoadQueryList() override
    {
        for (const QString &name : Stored)
            AddLoadedItem(std::make_unique<TMemoryItem>(name));
    }
};

class TLogLink : public TNQueryBaseLink
{
public:
    TLogLink(QStringList &log, bool answers = false) : Log(log), Answers(answers) {}
    void QueryChanged(int index) override { Log << QString("changed %1").arg(index); }
    void QueryIndexChanged() override { Log << QString("index %1").arg(QueryBase()->ItemIndex()); }
    void QueryListChanged(TQBOperation op, int index) override { Log << QString("list %1 %2").arg(op).arg(index); }
    bool GetQueryContent(QStringList &lines) override { Log << "get"; lines = {"given"}; return Answers; }
    bool PutQueryContent(const QStringList &lines) override { Log << "put " + lines.join(','); return Answers; }
    QStringList &Log;
    bool Answers;
};

class TNQueryBaseTest : public ::testing::Test
{
protected:
    TNQueryBaseTest() { link.SetQueryBase(&store); }
    void AddItems(int count)
    {
        for (int i = 0; i < count; ++i)
            store.AddItem(std::make_unique<TMemoryItem>(QString("q%1").arg(i)));
    }
    QStringList log;
    TLoggedBase store{log};
    TLogLink link{log};
};

TEST_F(TNQueryBaseTest, MovesTheIndexOnlyWhenTheCurrentItemIsOneOfTheLastTwo)
{
    struct Row { int line, count, current, deleted, index; QStringList calls; const char *reason; };
    const QStringList scrolled{"list 3 1", "BeforeScroll", "index 0", "AfterScroll"};
    const Row rows[] = {
        {__LINE__, 3, 0, 0, 0, {"list 3 0"}, "two after it: the index stays, now on the next item"},
        {__LINE__, 3, 1, 1, 0, scrolled, "one after it: the previous"},
        {__LINE__, 2, 1, 1, 0, scrolled, "the last: the previous"},
        {__LINE__, 2, 0, 0, -1, {"list 3 0"}, "the first with one after it: none, silently"},
        {__LINE__, 3, 2, 0, 2, {"list 3 0"}, "another item: the index is left as it is"},
    };
    for (const Row &row : rows) {
        store.ClearQueries();
        AddItems(row.count);
        store.SetItemIndex(row.current);
        log.clear();
        store.DeleteQuery(row.deleted);
        EXPECT_EQ(store.ItemIndex(), row.index) << "line " << row.line << ": " << row.reason;
        EXPECT_EQ(log, row.calls) << "line " << row.line << ": " << row.reason;
    }
}

TEST_F(TNQueryBaseTest, TellsLinksAndEventsInOrderWhenOpeningAndClosing)
{
    store.Open();
    EXPECT_EQ(log, (QStringList{"BeforeOpen", "list 0 -1", "AfterOpen"})) << "an empty store";
    store.Close();
    store.Stored = QStringList{"a", "b"};
    log.clear();
    store.Open();
    store.Close();
    EXPECT_EQ(log, (QStringList{"BeforeOpen", "list 0 -1", "BeforeScroll", "index 0", "AfterScroll",
                                "AfterOpen", "BeforeClose", "list 1 -1", "AfterClose"}));
}

TEST_F(TNQueryBaseTest, TellsNoLinkWhileUpdating)
{
    store.SetBaseUpdating(true);
    AddItems(2);
    store.DeleteQuery(1);
    store.GetQuery(0)->SetQueryName("renamed");
    EXPECT_EQ(log, QStringList());
    store.SetBaseUpdating(false);
    AddItems(1);
    EXPECT_EQ(log, (QStringList{"list 2 1", "changed 1"}));
}

TEST_F(TNQueryBaseTest, RefusesIndexesOutsideTheListAndItemsWithoutStore)
{
    AddItems(2);
    store.SetItemIndex(0);
    for (int index : {-1, 2}) {
        EXPECT_THROW(store.DeleteQuery(index), ENQueryBaseError);
        EXPECT_THROW(store.SetItemIndex(index), ENQueryBaseError);
    }
    EXPECT_EQ(store.ItemIndex(), 0);
    EXPECT_THROW(TMemoryItem("loose").Load(), ENQueryBaseError);
}

TEST_F(TNQueryBaseTest, AsksLinksForContentUntilOneAnswers)
{
    AddItems(1);
    TLogLink second(log, true), third(log, true);
    second.SetQueryBase(&store);
    third.SetQueryBase(&store);
    log.clear();
    store.GetQuery(0)->Save();
    store.GetQuery(0)->Load();
    EXPECT_EQ(log, (QStringList{"get", "get", "put given", "put given"}));
    EXPECT_EQ(static_cast<TMemoryItem *>(store.GetQuery(0))->Text, QStringList{"given"});
}

class TNQPBaseLinkTest : public ShopQueryFixture
{
protected:
    QStringList log;
    TLoggedBase store{log};
};

TEST_F(TNQPBaseLinkTest, FollowsTheStoresCurrentItem)
{
    query.SetQueryBase(&store);
    AddCond(s.custCity, "Equal", "Paris");
    auto *paris = new TMemoryItem("paris");
    store.AddItem(std::unique_ptr<TNQueryItem>(paris));
    store.AddItem(std::make_unique<TMemoryItem>("empty"));
    paris->Save();
    store.SetItemIndex(1);
    EXPECT_EQ(query.GetRowCount(), 1) << "an item without text loads as an empty query";
    store.SetItemIndex(0);
    QStringList lines;
    query.SaveToStrings(lines);
    EXPECT_EQ(lines, paris->Text) << "saved, then loaded back when it became current";

    paris->SetDescription({"Customers in Paris"});
    store.GetQuery(1)->SetDescription({"not current"});
    EXPECT_EQ(query.Description(), QStringList{"Customers in Paris"});
    store.DeleteQuery(0);
    EXPECT_EQ(query.GetRowCount(), 1) << "deleting the current item clears the query";
}

} // namespace
