// A parsed WHERE tree is owned by its parse result; callers may still edit it
// with nodes of their own. Each edit must leave a sound tree whose texts
// outlive the scanner's source, and the next statement must free it all
// (the sanitizer build reports any leak, double free or dangling text).
#include "sqlparse/sqlparser.h"

#include "common/printers.h"
#include "resultdump.h"

#include <gtest/gtest.h>

#include <functional>

namespace vm20 {
namespace {

using testing::DumpNode;

TSQLCondition &ConditionAt(TSQLBracket &bracket, int index)
{
    return static_cast<TSQLCondition &>(*bracket.Nodes().Items(index));
}

std::unique_ptr<TSQLCondition> HeapCondition(const char *left)
{
    auto c = std::make_unique<TSQLCondition>();
    c->SetLeftExpr(QString::fromUtf8(left));
    c->SetOperation(QStringLiteral("="));
    c->SetRightExpr(QStringLiteral("0"));
    return c;
}

struct EditRow
{
    int line;
    const char *why;
    std::function<void(TNSQLParser &, TSQLBracket &)> edit;
    QString tree;
};

TEST(ParsedTree, KeepsItsTextsThroughEditsAndIsFreedByTheNextStatement)
{
    const EditRow rows[] = {
        {__LINE__, "untouched", [](TNSQLParser &, TSQLBracket &) {},
         "or(and(<a|=|'x'>, <b|between|1 and 2>), not <c|like|'J%'>)"},
        {__LINE__, "the scanner reads another source while the tree is kept",
         [](TNSQLParser &parser, TSQLBracket &) {
             parser.Scanner().SetSource({QStringLiteral("select zz from yy where ww = 99999999")});
             parser.Scanner().FirstToken();
         },
         "or(and(<a|=|'x'>, <b|between|1 and 2>), not <c|like|'J%'>)"},
        {__LINE__, "a caller's condition joins a parsed bracket",
         [](TNSQLParser &, TSQLBracket &root) { root.Nodes().Add(HeapCondition("h")); },
         "or(and(<a|=|'x'>, <b|between|1 and 2>), not <c|like|'J%'>, <h|=|0>)"},
        {__LINE__, "a caller's condition replaces a parsed one",
         [](TNSQLParser &, TSQLBracket &root) { root.Nodes().SetItem(1, HeapCondition("h")); },
         "or(and(<a|=|'x'>, <b|between|1 and 2>), <h|=|0>)"},
        {__LINE__, "a parsed condition moves into a caller's bracket, which joins the tree",
         [](TNSQLParser &, TSQLBracket &root) {
             auto bracket = std::make_unique<TSQLBracket>();
             bracket->SetBoolOperator(QStringLiteral("and"));
             bracket->Nodes().Add(root.Nodes().Extract(1));
             bracket->Nodes().Add(HeapCondition("h"));
             root.Nodes().Add(std::move(bracket));
         },
         "or(and(<a|=|'x'>, <b|between|1 and 2>), and(not <c|like|'J%'>, <h|=|0>))"},
        {__LINE__, "parsed texts are rewritten, one from its own old text",
         [](TNSQLParser &, TSQLBracket &root) {
             TSQLCondition &c = ConditionAt(root, 1);
             c.SetRightExpr(c.RightView().mid(1, 2));
             c.SetLeftExpr(QStringLiteral("upper(c)"));
             c.SetOperation(QString());
         },
         "or(and(<a|=|'x'>, <b|between|1 and 2>), not <upper(c)||J%>)"},
        {__LINE__, "a caller's condition rewrites its text from its own old text",
         [](TNSQLParser &, TSQLBracket &root) {
             TSQLCondition &c = static_cast<TSQLCondition &>(*root.Nodes().Add(HeapCondition("hh")));
             c.SetLeftExpr(c.LeftView().mid(1));
         },
         "or(and(<a|=|'x'>, <b|between|1 and 2>), not <c|like|'J%'>, <h|=|0>)"},
        {__LINE__, "brackets of one node give way inside a parsed tree",
         [](TNSQLParser &, TSQLBracket &root) {
             auto *inner = static_cast<TSQLBracket *>(root.Nodes().Items(0));
             inner->Nodes().Delete(1);
             root.DeleteEmptyBrackets();
         },
         "or(<a|=|'x'>, not <c|like|'J%'>)"},
    };
    for (const EditRow &row : rows) {
        SCOPED_TRACE(::testing::Message() << "row at line " << row.line << ": " << row.why);
        TNSQLParser parser;
        parser.SetSQL({QStringLiteral("select a from t where a = \"x\" and b BETWEEN 1 AND 2"),
                       QStringLiteral("  or not c like 'J%'")});
        parser.Parse();
        TSQLBracket &root = *parser.ParserResult().WhereClause();
        row.edit(parser, root);
        EXPECT_EQ(DumpNode(&root), row.tree);
        EXPECT_TRUE(testing::ParentsKept(&root));

        parser.SetSQL({QStringLiteral("select a from t where d is NULL")});
        parser.Parse();
        EXPECT_EQ(DumpNode(parser.ParserResult().WhereClause()), "_(<d|is|null>)");
    }
}

} // namespace
} // namespace vm20
