// The query text: the exact layout, and what a save keeps through a load.
#include "query/sqlparam.h"
#include "shopquery.h"

#include <QRandomGenerator>

using namespace vm20;
using namespace shop;

namespace {

class TNQueryTextTest : public ShopQueryFixture
{
protected:
    QStringList Save()
    {
        QStringList lines;
        query.SaveToStrings(lines);
        return lines;
    }
    // Saves, loads into a fresh query on the same model and saves that.
    QStringList SaveLoadSave()
    {
        TNQuery other;
        other.SetDBStruct(s.model.get());
        other.SetSaveTitles(query.SaveTitles());
        other.LoadFromStrings(Save());
        QStringList lines;
        other.SaveToStrings(lines);
        return lines;
    }
    // Paris customers, and in a bracket big customers or a parameter on the
    // order total (disabled).
    void SmallQuery()
    {
        query.SetQueryName("Paris orders");
        query.Description() = QStringList{"Orders from Paris", "worth a look"};
        query.UserData() = QStringList{"owner=ann"};
        query.SetSQLOptions(TSQLOptions{soSelectDistinct});
        AddColumn(s.custName, "Customer");
        query.Filter()->SetLinkType(fltAll);
        AddCond(s.custCity, "Equal", "Paris");
        TFilterBracket *bracket = query.AddBracket(query.Filter());
        bracket->SetLinkType(fltAny);
        query.AddCustomCondition(bracket, s.bigCustomers)->SetValue(1, "5");
        TSimpleCond *total = AddCond(bracket, s.orderTotal, "GreaterThan");
        total->SetValueIsParam(1, true);
        total->GetParam(1)->SetValue("100");
        total->GetParam(1)->SetValueFormat("@v");
        total->SetEnabled(false);
    }
};

const QString SmallQueryText = QStringLiteral(
    "[Main]\nQueryName=Paris orders\nVersion=3.6\nOptions=2\n\n"
    "[Description]\nOrders from Paris\nworth a look\n\n"
    "[UserData]\nowner=ann\n\n"
    "[RFields]\nCount=1\nVersion=3.6\nJustSorting=0\n\n"
    "[RField1]\nFormula=@1\nFields=2\nAlias=Customer\nCaption=Customer\nSorting=0\nSortOrder=0\n\n"
    "[Row]\nEnabled=1\nRowType=1\nLinkType=0\nRowCount=2\n\n"
    "[Row1.]\nRowType=0\nEnabled=1\nFieldID=3\nParam1=0\nParam2=0\nOperator=Equal\n"
    "Value1=Paris\nValue2=\nCaption1=Paris\nCaption2=\nSubQuery=\nSubQueryOptions=0\n\n"
    "[Row2.]\nEnabled=1\nRowType=1\nLinkType=1\nRowCount=2\n\n"
    "[Row2.1.]\nRowType=2\nEnabled=1\nCondID=1\nParam1=0\nParam2=0\n"
    "Value1=5\nValue2=\nCaption1=5\nCaption2=\nSubQuery=\nSubQueryOptions=0\n\n"
    "[Row2.2.]\nRowType=0\nEnabled=0\nFieldID=8\nParam1=1\nParam2=0\nOperator=GreaterThan\n"
    "Value1=100\nValue2=\nVFormat1=@v\nCaption2=\nSubQuery=\nSubQueryOptions=0\n");

TEST_F(TNQueryTextTest, WritesTheWholeLayoutInOrder)
{
    SmallQuery();
    EXPECT_EQ(Save().join('\n'), SmallQueryText);
}

TEST_F(TNQueryTextTest, WritesTheTitlesFirstWhenAskedTo)
{
    SmallQuery();
    query.SetSaveTitles(true);
    query.SetTitle("ttlAll", "every one");
    const QStringList lines = Save();
    ASSERT_EQ(query.Titles().Lines().size(), 58);
    EXPECT_EQ(lines.mid(0, 59), query.Titles().Lines() + QStringList{QString()});
    EXPECT_EQ(SaveLoadSave(), lines) << "the titles read back from in front of [Main]";
}

TEST_F(TNQueryTextTest, IgnoresTheOptionsWhenTheyAreNotSaved)
{
    SmallQuery();
    const QStringList withOptions = Save();
    query.SetSaveSQLOptions(false);
    EXPECT_TRUE(Save().contains("Options="));
    query.SetSQLOptions(TSQLOptions{soBracketJoins});
    query.LoadFromStrings(withOptions);
    EXPECT_EQ(query.SQLOptions(), TSQLOptions{soBracketJoins}) << "Options=2 ignored";
}

TEST_F(TNQueryTextTest, KeepsAMainTableOtherThanTheModelsDefault)
{
    SmallQuery();
    s.model->SetDefaultMainTable(s.orders);
    query.SetMainTableName(s.orders->CompoundName());
    EXPECT_EQ(Save().join('\n'), SmallQueryText) << "the default main table is not written";
    query.SetMainTableName(s.customers->CompoundName());
    const QStringList lines = Save();
    EXPECT_EQ(lines.mid(3, 2), QStringList({"Options=2", "MainTable=Customers - c"}));
    TNQuery copy;
    copy.SetDBStruct(s.model.get());
    copy.LoadFromStrings(lines);
    EXPECT_EQ(copy.MainTableName(), s.customers->CompoundName());
    copy.SetMainTableName(s.products->CompoundName());
    copy.LoadFromStrings(SmallQueryText.split('\n'));
    EXPECT_EQ(copy.MainTableName(), s.products->CompoundName()) << "a text without the key keeps the query's own";
}

// Random queries over the shop model, with texts free of line breaks and of
// lines that would read as section ends or headers (the format cannot carry
// them).
class RandomQuery
{
public:
    RandomQuery(const ShopModel &s, TNQuery &query, quint32 seed) : S(s), Q(query), R(seed)
    {
        Q.SetQueryName(Text());
        Q.Description() << "d " + Text() << "d " + Text();
        Q.UserData() << "u=" + Text();
        Q.SetSQLOptions(IntToSQLOptions(int(R.bounded(128))));
        for (int i = R.bounded(4); i > 0; --i)
            Q.RFields().Add(Text(), {Field()}, QString())->SetSorting(TSortingType(R.bounded(3)));
        FillBracket(Q.Filter(), 0);
    }

private:
    QString Text()
    {
        static const QString chars = QStringLiteral("ab Z09=,'\"[]@%;:\u00e9");
        QString text;
        for (int i = R.bounded(8); i > 0; --i)
            text += chars[R.bounded(int(chars.size()))];
        return text;
    }
    TDSField *Field() { return S.model->GetField(R.bounded(S.model->GetFieldCount())); }
    void FillBracket(TFilterBracket *bracket, int depth)
    {
        bracket->SetLinkType(TFilterLinkType(R.bounded(4)));
        bracket->SetEnabled(depth == 0 || R.bounded(4) != 0);
        for (int i = R.bounded(5); i > 0; --i) {
            const int kind = R.bounded(depth < 3 ? 4 : 3);
            if (kind == 3) {
                FillBracket(bracket->AddNewBracket(), depth + 1);
                continue;
            }
            TFilterCond *cond = kind == 2 ? static_cast<TFilterCond *>(bracket->AddCustomCond(
                                                R.bounded(2) ? S.bigCustomers : S.vipOnly))
                                          : bracket->AddCond();
            if (auto *simple = dynamic_cast<TSimpleCond *>(cond); simple && kind == 1) {
                simple->SetField(Field());
                simple->SetOperator(simple->Field()->GetOperator(R.bounded(simple->Field()->OperatCount())));
            }
            for (int v = 1; v <= 2; ++v) {
                cond->SetValueIsParam(v, R.bounded(4) == 0);
                cond->SetValue(v, Text());
                cond->SetValueCaption(v, Text());
                if (TSQLParam *param = cond->GetParam(v)) {
                    param->SetValue(Text());
                    param->SetValueFormat(Text());
                }
            }
            cond->SetSubQuery(R.bounded(3) ? QStringList() : QStringList{Text(), Text()});
            cond->SetSubQueryOptions(IntToSQLOptions(int(R.bounded(128))));
            cond->SetEnabled(R.bounded(4) != 0);
        }
    }

    const ShopModel &S;
    TNQuery &Q;
    QRandomGenerator R;
};

TEST_F(TNQueryTextTest, SavesWhatItLoadsForRandomQueries)
{
    for (quint32 seed = 1; seed <= 200; ++seed) {
        query.ClearAll();
        RandomQuery(s, query, seed);
        query.SetSaveTitles(seed % 2 == 0);
        ASSERT_EQ(SaveLoadSave(), Save()) << "seed " << seed;
    }
}

} // namespace
