#include "query/paramnames.h"

#include "common/printers.h"

#include <QRandomGenerator>
#include <QStringList>

#include <gtest/gtest.h>

namespace vm20 {
namespace {

// The free name found the slow way: base, base1, base2, ... tried against
// every name in turn.
QString SlowFirstFree(const QStringList &names, const QString &base)
{
    for (int n = 0;; ++n) {
        const QString candidate = n == 0 ? base : base + QString::number(n);
        if (!names.contains(candidate, Qt::CaseInsensitive))
            return candidate;
    }
}

struct FreeNameRow { int line; const char *why; QStringList added, removed; QString base, free; };

TEST(TParamNameIndex, FindsTheFirstFreeNameAfterNamesComeAndGo)
{
    const FreeNameRow rows[] = {
        {__LINE__, "numbers follow the base, letter case aside", {"amount", "AMOUNT1"}, {}, "Amount", "Amount2"},
        {__LINE__, "a leading zero is not the number", {"Amount", "Amount01"}, {}, "Amount", "Amount1"},
        {__LINE__, "a name of two numbers frees both readings (P1 number 2)",
         {"P1", "P11", "P12"}, {"P12"}, "P1", "P12"},
        {__LINE__, "a name taken twice stays taken until both go", {"P", "p"}, {"P"}, "P", "P1"},
        {__LINE__, "removing an unknown name changes nothing", {"P"}, {"Q", "P7"}, "P", "P1"},
    };
    for (const FreeNameRow &row : rows) {
        SCOPED_TRACE(::testing::Message() << "row at line " << row.line << ": " << row.why);
        TParamNameIndex index;
        for (const QString &name : row.added)
            index.Add(name);
        // Asking before the removals leaves a search start that they must move back.
        index.FirstFree(row.base);
        for (const QString &name : row.removed)
            index.Remove(name);
        EXPECT_EQ(index.FirstFree(row.base), row.free);
    }
}

TEST(TParamNameIndex, AgreesWithTryingEveryNameOverRandomChanges)
{
    QRandomGenerator random(20);
    const QStringList bases = {"P", "p1", "Amount"};
    TParamNameIndex index;
    QStringList names;
    for (int step = 0; step < 5000; ++step) {
        const QString base = bases[random.bounded(int(bases.size()))];
        SCOPED_TRACE(::testing::Message() << "step " << step);
        if (!names.isEmpty() && random.bounded(3) == 0) {
            const QString name = names.takeAt(random.bounded(int(names.size())));
            index.Remove(name);
        } else {
            const QString name = index.FirstFree(base);
            ASSERT_EQ(name, SlowFirstFree(names, base));
            names.append(name);
            index.Add(name);
        }
        ASSERT_EQ(index.Contains(base.toUpper()), names.contains(base, Qt::CaseInsensitive));
    }
}

} // namespace
} // namespace vm20
