#include "sqlparse/sqlconditions.h"

#include "support/exception.h"

#include <algorithm>
#include <vector>

namespace vm20 {

void TSQLNodeDeleter::operator()(TSQLNode *node) const
{
    if (node->FPool)
        node->~TSQLNode();
    else
        delete node;
}

TSQLConditionNodeList::TSQLConditionNodeList(TSQLBracket *parentBracket, std::pmr::memory_resource *pool)
    : FParentBracket(parentBracket), FItems(pool ? pool : std::pmr::new_delete_resource())
{
}

void TSQLConditionNodeList::CheckIndex(int index) const
{
    if (index < 0 || index >= Count())
        throw EListError::IndexOutOfBounds(index);
}

TSQLNode *TSQLConditionNodeList::Items(int index) const
{
    CheckIndex(index);
    return FItems[size_t(index)].get();
}

TSQLNode *TSQLConditionNodeList::Add(TSQLNodePtr node)
{
    node->FParent = FParentBracket;
    FItems.push_back(std::move(node));
    return FItems.back().get();
}

void TSQLConditionNodeList::SetItem(int index, TSQLNodePtr node)
{
    CheckIndex(index);
    node->FParent = FParentBracket;
    FItems[size_t(index)] = std::move(node);
}

TSQLNodePtr TSQLConditionNodeList::Extract(int index)
{
    CheckIndex(index);
    TSQLNodePtr node = std::move(FItems[size_t(index)]);
    FItems.erase(FItems.begin() + index);
    node->FParent = nullptr;
    return node;
}

void TSQLConditionNodeList::Delete(int index)
{
    CheckIndex(index);
    FItems.erase(FItems.begin() + index);
}

TSQLBracket::~TSQLBracket()
{
    // Nested brackets are emptied one by one from a work list, so freeing a
    // deep tree takes no deep recursion.
    std::vector<TSQLNodePtr> pending;
    const auto takeNodes = [&pending](TSQLConditionNodeList &nodes) {
        for (TSQLNodePtr &node : nodes.FItems)
            if (node->IsBracket())
                pending.push_back(std::move(node));
        nodes.FItems.clear();
    };
    takeNodes(FNodes);
    while (!pending.empty()) {
        TSQLNodePtr node = std::move(pending.back());
        pending.pop_back();
        takeNodes(static_cast<TSQLBracket *>(node.get())->FNodes);
    }
}

void TSQLBracket::DeleteEmptyBrackets()
{
    for (int i = 0; i < FNodes.Count(); ++i) {
        TSQLNode *node = FNodes.Items(i);
        while (node->IsBracket() && static_cast<TSQLBracket *>(node)->FNodes.Count() == 1) {
            FNodes.SetItem(i, static_cast<TSQLBracket *>(node)->FNodes.Extract(0));
            node = FNodes.Items(i);
        }
        if (node->IsBracket())
            static_cast<TSQLBracket *>(node)->DeleteEmptyBrackets();
    }
}

void TSQLCondition::Keep(QStringView &text, int slot, QStringView value)
{
    if (std::pmr::memory_resource *pool = Pool()) {
        // The old copy stays in the pool until the pool goes.
        if (value.isEmpty()) {
            text = QStringView();
            return;
        }
        auto *copy = static_cast<char16_t *>(pool->allocate(size_t(value.size()) * sizeof(char16_t),
                                                            alignof(char16_t)));
        std::copy(value.utf16(), value.utf16() + value.size(), copy);
        text = QStringView(copy, value.size());
        return;
    }
    if (!FOwned)
        FOwned = std::make_unique<QString[]>(3);
    FOwned[slot] = value.toString();
    text = FOwned[slot];
}

QString TSQLCondition::SQLExpr() const
{
    QString text;
    text.reserve(FLeftExpr.size() + FOperator.size() + FRightExpr.size() + 7);
    if (Negative())
        text += QLatin1String("not(");
    text += FLeftExpr;
    text += QLatin1Char(' ');
    text += FOperator;
    text += QLatin1Char(' ');
    text += FRightExpr;
    if (Negative())
        text += QLatin1Char(')');
    return text;
}

} // namespace vm20
