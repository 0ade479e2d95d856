// The build's join path search answers as the model's GetPath does, on
// random models with parallel links, links to the same table and islands.
#include "query/joinpaths.h"
#include "shopmodel.h"

#include <gtest/gtest.h>

#include <QRandomGenerator>

using namespace vm20;

namespace {

TEST(TJoinPathFinderTest, FindsTheSameChainsAsTheModelOnRandomModels)
{
    QRandomGenerator random(20240315);
    for (int round = 0; round < 150; ++round) {
        TNDBStructure model;
        const int tables = 2 + int(random.bounded(9));
        for (int t = 0; t < tables; ++t)
            model.AddTable(QStringLiteral("T%1").arg(t), QString());
        const int links = int(random.bounded(2 * tables));
        for (int l = 0; l < links; ++l)
            shop::AddShopLink(model, model.GetTable(int(random.bounded(tables))), "A",
                              model.GetTable(int(random.bounded(tables))), "B");
        TJoinPathFinder finder(&model);
        for (int a = 0; a < tables; ++a) {
            for (int b = 0; b < tables; ++b) {
                TDSTable *from = model.GetTable(a);
                TDSTable *to = model.GetTable(b);
                const std::vector<TDSTable *> ours = finder.Path(from, to);
                const TDSPath *path = model.GetPath(from->TableAlias(), to->TableAlias());
                const std::vector<TDSTable *> theirs = path ? path->Tables() : std::vector<TDSTable *>();
                ASSERT_EQ(ours, theirs) << "round " << round << ", T" << a << " to T" << b;
            }
        }
    }
}

} // namespace
