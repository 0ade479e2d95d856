// Model listeners, and what a live query and its result columns do when the
// model frees an entity they use: nothing may dangle (the sanitizer build
// proves it), conditions fall back to the unrecognized placeholders with
// their values, result columns that used a freed field are removed.
#include "model/errors.h"
#include "support/exception.h"
#include "shopquery.h"

#include <QStringList>

#include <functional>

using namespace vm20;
using namespace shop;

namespace {

class ColumnRecorder : public TRFieldListObserver
{
public:
    void FieldInserted(int index) override { events << QStringLiteral("inserted %1").arg(index); }
    void FieldRemoving(int index) override { events << QStringLiteral("removing %1").arg(index); }
    void FieldMoved(int from, int to) override { events << QStringLiteral("moved %1 %2").arg(from).arg(to); }
    void FieldChanged(int index) override { events << QStringLiteral("changed %1").arg(index); }
    void Reset() override { events << "reset"; }
    QStringList events;
};

class ModelRecorder : public TNModelObserver
{
public:
    void ModelChanged(TNCustomDBStructure *, const TModelChange &change) override
    {
        events << QStringLiteral("changed %1%2").arg(change.Kind).arg(change.Entity ? "*" : "");
    }
    void EntityDeleting(TNCustomDBStructure *model, const TModelChange &entity) override
    {
        // Still in the model while the listeners hear of it.
        const bool listed = entity.Kind != mckFields || !entity.Entity ||
                            model->IndexOfField(static_cast<const TDSField *>(entity.Entity)) >= 0;
        events << QStringLiteral("deleting %1%2%3").arg(entity.Kind).arg(entity.Entity ? "*" : "").arg(listed ? "" : " gone");
    }
    QStringList events;
};

// A live query over its own shop model with listeners on the model and on
// the result columns.
struct Scene
{
    Scene()
    {
        query.SetDBStruct(s.model.get());
        name = query.AddCondition(nullptr, s.custName);
        name->SetOperator(s.Op("Equal"));
        name->SetValue(1, "Bob");
        city = query.AddCondition(query.AddBracket(nullptr), s.custCity);
        city->SetOperator(s.Op("Contains"));
        city->SetValue(1, "Par");
        custom = query.AddCustomCondition(nullptr, s.bigCustomers);
        custom->SetValue(1, "5");
        query.RFields().Add(QString(), {s.custCity}, QString());
        query.RFields().Add(QString(), {s.custName}, QString());
        query.TableFilters().Add(s.customers);
        query.BuildQuery();
        query.RFields().AddObserver(&columns);
        s.model->AddObserver(&model);
    }
    ~Scene()
    {
        if (s.model)
            s.model->RemoveObserver(&model);
    }
    // Save, build and load again: every path that reads the references.
    void UseEverything()
    {
        QStringList text;
        query.SaveToStrings(text);
        try {
            query.BuildQuery();
        } catch (const Exception &) {
            // A query left incomplete may refuse to build; it must not crash.
        }
        (void)query.GetQueryText();
        query.LoadFromStrings(text);
    }

    ShopModel s = MakeShopModel();
    TNQuery query;
    TSimpleCond *name, *city;
    TCustomCond *custom;
    ColumnRecorder columns;
    ModelRecorder model;
};

TEST(EntityDeletion, QueriesLetGoOfEachKindOfEntity)
{
    using Remove = std::function<void(TNCustomDBStructure &m, ShopModel &s)>;
    const struct {
        int line;
        Remove remove;
        QStringList modelEvents;
        QStringList columnEvents;
        bool nameUnrecognized, operatorUnrecognized, customUnrecognized;
        int tableFilters;
    } cases[] = {
        {__LINE__, [](auto &m, auto &s) { m.DelField(m.IndexOfField(s.custName)); },
         {"deleting 2*", "changed 2*"}, {"removing 1"}, true, false, false, 1},
        {__LINE__, [](auto &m, auto &) { m.DelOperator(m.OperatorIndexByName("Equal")); },
         {"deleting 5*", "changed 5*"}, {}, false, true, false, 1},
        {__LINE__, [](auto &m, auto &) { m.Conditions().Delete(0); },
         {"deleting 6*", "changed 6*"}, {}, false, false, true, 1},
        {__LINE__, [](auto &m, auto &s) { m.DelLink(m.IndexOfLink(s.customerOrders)); },
         {"deleting 4*", "changed 4*"}, {}, false, false, false, 1},
        {__LINE__, [](auto &m, auto &s) { m.DelTable(m.IndexOfTable(s.customers)); },
         {"deleting 1*", "deleting 4*", "changed 1*"}, {}, false, false, false, 0},
        {__LINE__, [](auto &m, auto &) { m.ClearStructure(); },
         {"deleting 4", "deleting 2", "deleting 1", "deleting 6", "deleting 5", "changed 0"},
         {"removing 1", "removing 0"}, true, true, true, 0},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(::testing::Message() << "line " << c.line);
        Scene scene;
        TNCustomDBStructure &m = *scene.s.model;
        c.remove(m, scene.s);
        EXPECT_EQ(scene.model.events, c.modelEvents);
        EXPECT_EQ(scene.columns.events, c.columnEvents);
        EXPECT_EQ(scene.name->Field() == m.UnrecognizedField(), c.nameUnrecognized);
        EXPECT_EQ(scene.name->Operator() == m.UnrecognizedOperator(), c.operatorUnrecognized);
        EXPECT_EQ(scene.custom->Condition() == m.UnrecognizedCondition(), c.customUnrecognized);
        EXPECT_EQ(scene.name->GetValue(1), "Bob") << "values stay";
        EXPECT_EQ(scene.custom->GetValue(1), "5");
        EXPECT_EQ(scene.query.TableFilters().Count(), c.tableFilters);
        scene.UseEverything();
    }
}

TEST(EntityDeletion, AModelDestroyedUnderALiveQueryLeavesNothingDangling)
{
    Scene scene;
    scene.s.model->RemoveObserver(&scene.model);
    scene.s.model.reset();
    EXPECT_EQ(scene.name->Field(), nullptr);
    EXPECT_EQ(scene.custom->Condition(), nullptr);
    EXPECT_EQ(scene.query.RFields().Count(), 0);
    EXPECT_EQ(scene.query.TableFilters().Count(), 0);
    QStringList text;
    scene.query.SaveToStrings(text);
    (void)scene.query.GetQueryText();
    EXPECT_THROW(scene.query.BuildQuery(), ENQueryPanelError);
}

// Listeners that come and go while they are told.
class SelfRemoving : public TNModelObserver
{
public:
    void ModelChanged(TNCustomDBStructure *model, const TModelChange &) override
    {
        ++calls;
        model->RemoveObserver(this);
        if (add)
            model->AddObserver(add);
    }
    int calls = 0;
    TNModelObserver *add = nullptr;
};

TEST(ModelListeners, MayComeAndGoWhileTheyAreTold)
{
    ShopModel s = MakeShopModel();
    SelfRemoving first, second;
    ModelRecorder late;
    first.add = &late;
    s.model->AddObserver(&first);
    s.model->AddObserver(&second);
    QStringList order;
    s.model->OnChange = [&](TNCustomDBStructure *) { order << "host"; };
    s.model->Changed(mckOptions);
    s.model->Changed(mckOptions);
    EXPECT_EQ(first.calls, 1);
    EXPECT_EQ(second.calls, 1);
    EXPECT_EQ(late.events, QStringList({"changed 7"})) << "added during a notification, told from the next one";
    EXPECT_EQ(order, QStringList({"host", "host"}));
    s.model->RemoveObserver(&late);
}

TEST(ResultColumnListeners, HearEachChangeAndOneResetPerBatch)
{
    ShopModel s = MakeShopModel();
    TRFieldList list(s.model.get());
    ColumnRecorder recorder;
    list.AddObserver(&recorder);
    list.Add(QString(), {s.custName}, QString());
    list.AddByExpression(QString(), "Customers.City", stAscending, 1);
    list.Move(0, 1);
    list.GetRField(0)->SetCaption("Town");
    list.GetRField(0)->SetCaption("Town");
    list.Delete(1);
    EXPECT_EQ(recorder.events, QStringList({"inserted 0", "inserted 1", "moved 0 1", "changed 0", "removing 1"}));

    recorder.events.clear();
    TRFieldList copy(s.model.get());
    copy.AddObserver(&recorder);
    copy.Assign(list);
    QStringList text;
    list.SaveToStrings(text);
    copy.LoadFromStrings(text);
    list.BeginUpdate();
    list.New();
    list.Clear();
    list.EndUpdate();
    EXPECT_EQ(recorder.events, QStringList({"reset", "reset", "reset"}));
    copy.RemoveObserver(&recorder);
}

TEST(ResultColumnListeners, NewResultFieldAndSortOrder)
{
    ShopModel s = MakeShopModel();
    TRFieldList list(s.model.get());
    TResultField *first = list.NewResultField();
    ASSERT_EQ(first->DSFields().Count(), 1);
    EXPECT_EQ(first->DSFields().Items(0), s.model->GetFirstResultField());

    list.NewResultField()->SetSorting(stDescending);
    list.NewResultField();
    list.NewResultField()->SetSorting(stAscending);
    first->SetSorting(stAscending);
    list.GetRField(2)->SetSortOrder(7);
    list.RefreshSortOrder();
    QList<int> orders;
    for (int i = 0; i < list.Count(); ++i)
        orders << list.GetRField(i)->SortOrder();
    EXPECT_EQ(orders, QList<int>({1, 2, 0, 3}));

    s.model->ClearFields();
    EXPECT_TRUE(s.model->GetEmpty());
    EXPECT_EQ(list.Count(), 0) << "every column used a field that went";
    EXPECT_EQ(list.NewResultField()->DSFields().Count(), 0);
}

} // namespace
