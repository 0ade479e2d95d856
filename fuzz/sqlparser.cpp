// Parses arbitrary bytes as an SQL statement. A parser or runtime error of
// the library is an answer; any other exception, a crash or a broken tree is
// a bug.
#include "sqlparse/sqlparser.h"

#include <QString>
#include <QStringList>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace {

void Check(bool ok)
{
    if (!ok)
        __builtin_trap();
}

void CheckTree(const vm20::TSQLBracket *root)
{
    std::vector<const vm20::TSQLBracket *> pending{root};
    while (!pending.empty()) {
        const vm20::TSQLBracket *b = pending.back();
        pending.pop_back();
        for (int i = 0; i < b->Nodes().Count(); ++i) {
            const vm20::TSQLNode *node = b->Nodes().Items(i);
            Check(node->Parent() == b);
            if (auto *inner = dynamic_cast<const vm20::TSQLBracket *>(node))
                pending.push_back(inner);
            else
                Check(!static_cast<const vm20::TSQLCondition *>(node)->SQLExpr().isEmpty());
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    vm20::TNSQLParser parser;
    parser.SetSQL(text.split(QLatin1Char('\n')));
    try {
        parser.Parse();
    } catch (const vm20::ESQLParserError &e) {
        Check(e.Message().contains(QStringLiteral("\r\nLine:")));
    } catch (const vm20::Exception &) {
    }
    // Whatever was built, complete or partial, must be a sound tree.
    if (const vm20::TSQLBracket *where = parser.ParserResult().WhereClause())
        CheckTree(where);
    return 0;
}
