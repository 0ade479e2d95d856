#include "common/printers.h"
#include "common/raises.h"
#include "model/dbstructure.h"
#include "model/errors.h"

#include <gtest/gtest.h>

#include <random>

namespace vm20 {
namespace {

// The level-by-level search as the model once ran it, with the model's own
// expansion step; exponential on dense models, so only small ones use it.
bool LiteralGetPath(TNCustomDBStructure &model, const QString &name1, const QString &name2, TDSPath &result)
{
    TDSTable *b = model.TableByName(1, name2);
    std::vector<std::unique_ptr<TDSPath>> current;
    current.push_back(std::make_unique<TDSPath>(&model));
    current.back()->AddTable(model.TableByName(1, name1));
    while (!current.empty()) {
        std::vector<std::unique_ptr<TDSPath>> next;
        for (auto &path : current)
            if (model.CheckPath(*path, b, next)) {
                path->AddTable(b);
                result.Assign(*path);
                return true;
            }
        current = std::move(next);
    }
    return false;
}

QString Chain(const TDSPath *path)
{
    if (!path)
        return "none";
    QStringList names;
    for (const TDSTable *table : path->Tables())
        names.append(table->TableName());
    return names.join(",");
}

class TNCustomDBStructurePath : public ::testing::Test
{
protected:
    void Tables(const QStringList &names)
    {
        for (const QString &name : names)
            model.AddTable(name, name);
    }
    void Links(const QStringList &lines) { model.LoadLinksFromStrings(lines); }
    QString Path(const QString &a, const QString &b) { return Chain(model.GetPath(a, b)); }
    TNCustomDBStructure model;
};

TEST_F(TNCustomDBStructurePath, EdgeCasesOfTheSearch)
{
    Tables({"A", "B", "C", "D", "X", "Lone", "S"});
    Links({"A-B:i=i", "C-B:i=i", "A-C:j=j", "B-D:i=i", "C-D:i=i", "X-A:k=k", "S-S:p=q", "S-A:r=r"});
    const struct { int line; const char *from; const char *to; const char *chain; } rows[] = {
        {__LINE__, "A", "B", "A,B"},          // joined directly, start first
        {__LINE__, "X", "D", "X,A,B,D"},      // A's link to B was attached before its link to C
        {__LINE__, "Lone", "A", "none"},
        {__LINE__, "a", "d", "A,B,D"},        // aliases ignore letter case
        {__LINE__, "A", "A", "A,B,A"},        // round trip through the first neighbour
        {__LINE__, "S", "D", "S,A,B,D"},      // self-links elsewhere are skipped
    };
    for (const auto &row : rows)
        EXPECT_EQ(Path(row.from, row.to), row.chain) << "line " << row.line;
}

TEST_F(TNCustomDBStructurePath, UnknownNamesRaiseCodeFourForTheFirstMissing)
{
    Tables({"A"});
    EXPECT_EQ(Raised<ENDBStructError>([&] { model.GetPath("Q", "R"); }), "4: No such table Q");
}

TEST_F(TNCustomDBStructurePath, FollowsLinkAndAliasChangesAndKeepsTheLastResultOnFailure)
{
    Tables({"A", "B", "C"});
    Links({"A-B:x=y", "B-C:x=y"});
    TDSPath *path = model.GetPath("A", "C");
    ASSERT_EQ(path, &model.Path());
    model.AddLinkByExpr("A-C:x=y");
    EXPECT_EQ(Path("A", "C"), "A,C");
    model.GetTable(2)->SetTableAlias("Z");
    EXPECT_THROW(model.GetPath("A", "C"), ENDBStructError);
    EXPECT_EQ(Path("Z", "B"), "C,B");
    model.DelLink(2);
    model.DelLink(1);
    EXPECT_EQ(model.GetPath("A", "Z"), nullptr);
    EXPECT_EQ(Chain(&model.Path()), "C,B") << "a failed search leaves the previous chain";
    model.GetTable(1)->DelLink(0);   // B forgets its link to A; A still knows it
    EXPECT_EQ(Path("A", "B"), "A,B");
    EXPECT_EQ(Path("B", "A"), "none");
}

// Random models (parallel links, self-links, shared aliases, hand-edited link
// lists): the fast search must return the literal search's chain every time.
TEST_F(TNCustomDBStructurePath, AgreesWithTheLiteralSearchOnRandomModels)
{
    std::mt19937 random(20240611);
    const auto pick = [&](int n) { return int(random() % unsigned(n)); };
    int compared = 0;
    int found = 0;
    for (int round = 0; round < 10000; ++round) {
        TNCustomDBStructure m;
        const int tables = 1 + pick(7);
        for (int i = 0; i < tables; ++i)
            m.AddTable(QString("T%1").arg(i), "");
        if (tables > 2 && pick(4) == 0)
            m.GetTable(pick(tables))->SetTableAlias(m.GetTable(pick(tables))->TableAlias());
        const bool dense = round % 2;
        const int links = dense ? pick(3 * tables + 1) : pick(tables + 1);
        for (int k = 0; k < links; ++k) {
            auto link = std::make_unique<TDSLink>();
            link->SetTable1(m.GetTable(pick(tables)));
            link->SetTable2(pick(6) == 0 ? link->Table1() : m.GetTable(pick(tables)));
            link->Fields1() << "a";
            link->Fields2() << "b";
            m.AddLinkByRef(std::move(link));
        }
        if (links && pick(5) == 0)   // a reference kept by a table at neither end
            m.GetTable(pick(tables))->AddLinkRef(m.GetLink(pick(links)));
        if (links && pick(5) == 0) {
            TDSTable *t = m.GetTable(pick(tables));
            if (t->LinkCount())
                t->DelLink(pick(t->LinkCount()));
        }
        for (int q = 0; q < 6; ++q) {
            const QString a = m.GetTable(pick(tables))->TableAlias();
            const QString b = q == 0 ? a : m.GetTable(pick(tables))->TableAlias();
            TDSPath expected(&m);
            const bool literal = LiteralGetPath(m, a, b, expected);
            const QString fast = Chain(m.GetPath(a, b));
            ASSERT_EQ(fast, literal ? Chain(&expected) : "none")
                << "round " << round << " from " << a.toStdString() << " to " << b.toStdString();
            ++compared;
            found += literal;
        }
    }
    EXPECT_EQ(compared, 60000);
    EXPECT_GT(found, 20000) << "enough connected pairs to mean something";
    EXPECT_LT(found, 55000) << "and enough unconnected ones";
}

} // namespace
} // namespace vm20
