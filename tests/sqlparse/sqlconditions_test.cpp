#include "sqlparse/sqlparser.h"

#include "common/printers.h"
#include "resultdump.h"

#include <gtest/gtest.h>

namespace vm20 {
namespace {

using testing::DumpNode;

std::unique_ptr<TSQLNode> C(const char *left)
{
    auto c = std::make_unique<TSQLCondition>();
    c->SetLeftExpr(QString::fromUtf8(left));
    c->SetOperation(QStringLiteral("="));
    c->SetRightExpr(QStringLiteral("1"));
    return c;
}

template <typename... Nodes>
std::unique_ptr<TSQLNode> B(const char *op, Nodes... nodes)
{
    auto b = std::make_unique<TSQLBracket>();
    b->SetBoolOperator(QString::fromUtf8(op));
    (b->Nodes().Add(std::move(nodes)), ...);
    return b;
}

std::unique_ptr<TSQLNode> Not(std::unique_ptr<TSQLNode> node)
{
    node->SetNegative(true);
    return node;
}

struct FlattenRow
{
    int line;
    const char *why;
    std::unique_ptr<TSQLNode> (*build)();
    QString flattened;
};

TEST(TSQLBracket, DeleteEmptyBracketsLeavesThisTree)
{
    const FlattenRow rows[] = {
        {__LINE__, "a one-node bracket gives way to its node",
                   [] { return B("and", B("or", C("a")), C("b")); }, "and(<a|=|1>, <b|=|1>)"},
        {__LINE__, "a chain of one-node brackets collapses entirely",
                   [] { return B("and", B("or", B("", B("and", C("a")))), C("b")); }, "and(<a|=|1>, <b|=|1>)"},
        {__LINE__, "the NOT of a removed bracket is lost, the node's own stays",
                   [] { return B("and", Not(B("or", C("a"))), B("or", Not(C("b")))); },
                   "and(<a|=|1>, not <b|=|1>)"},
        {__LINE__, "brackets further down are flattened too",
                   [] { return B("and", C("a"), B("or", C("b"), B("and", C("c")), C("d"))); },
                   "and(<a|=|1>, or(<b|=|1>, <c|=|1>, <d|=|1>))"},
        {__LINE__, "a collapsed chain that ends in a bracket is flattened inside",
                   [] { return B("", B("or", B("and", C("a"), B("or", C("b"))))); },
                   "_(and(<a|=|1>, <b|=|1>))"},
        {__LINE__, "the root itself stays, even with one node", [] { return B("", C("a")); }, "_(<a|=|1>)"},
    };
    for (const FlattenRow &row : rows) {
        SCOPED_TRACE(::testing::Message() << "row at line " << row.line << ": " << row.why);
        std::unique_ptr<TSQLNode> tree = row.build();
        auto *root = static_cast<TSQLBracket *>(tree.get());
        root->DeleteEmptyBrackets();
        EXPECT_EQ(DumpNode(root), row.flattened);
        EXPECT_TRUE(testing::ParentsKept(root));
    }
}

TEST(TSQLConditionTest, WritesItsExpressionWrappedInNotWhenNegated)
{
    TNSQLParser parser;
    parser.SetSQL({"select a from t where not Name like 'J%' or d between 1 and 2"});
    parser.Parse();
    const TSQLBracket *where = parser.ParserResult().WhereClause();
    EXPECT_EQ(static_cast<const TSQLCondition *>(where->Nodes().Items(0))->SQLExpr(), "not(Name like 'J%')");
    EXPECT_EQ(static_cast<const TSQLCondition *>(where->Nodes().Items(1))->SQLExpr(), "d between 1 and 2");
}

TEST(TSQLConditionTest, FreesATreeDeeperThanTheParserBuilds)
{
    auto root = std::make_unique<TSQLBracket>();
    TSQLBracket *tip = root.get();
    for (int i = 0; i < 200000; ++i)
        tip = static_cast<TSQLBracket *>(tip->Nodes().Add(std::make_unique<TSQLBracket>()));
    tip->Nodes().Add(std::make_unique<TSQLCondition>());
    EXPECT_EQ(tip->Nodes().Items(0)->Parent(), tip);
    root.reset();  // must not overflow the stack
}

} // namespace
} // namespace vm20
