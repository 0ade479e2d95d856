#include "sqlparse/sqlconditions.h"

#include "support/exception.h"

namespace vm20 {

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

TSQLNode *TSQLConditionNodeList::Add(std::unique_ptr<TSQLNode> node)
{
    node->FParent = FParentBracket;
    FItems.push_back(std::move(node));
    return FItems.back().get();
}

void TSQLConditionNodeList::SetItem(int index, std::unique_ptr<TSQLNode> node)
{
    CheckIndex(index);
    node->FParent = FParentBracket;
    FItems[size_t(index)] = std::move(node);
}

std::unique_ptr<TSQLNode> TSQLConditionNodeList::Extract(int index)
{
    CheckIndex(index);
    std::unique_ptr<TSQLNode> node = std::move(FItems[size_t(index)]);
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
    std::vector<std::unique_ptr<TSQLNode>> pending;
    while (FNodes.Count() > 0)
        pending.push_back(FNodes.Extract(FNodes.Count() - 1));
    while (!pending.empty()) {
        std::unique_ptr<TSQLNode> node = std::move(pending.back());
        pending.pop_back();
        if (auto *bracket = dynamic_cast<TSQLBracket *>(node.get()))
            while (bracket->FNodes.Count() > 0)
                pending.push_back(bracket->FNodes.Extract(bracket->FNodes.Count() - 1));
    }
}

void TSQLBracket::DeleteEmptyBrackets()
{
    for (int i = 0; i < FNodes.Count(); ++i) {
        auto *bracket = dynamic_cast<TSQLBracket *>(FNodes.Items(i));
        while (bracket && bracket->FNodes.Count() == 1) {
            FNodes.SetItem(i, bracket->FNodes.Extract(0));
            bracket = dynamic_cast<TSQLBracket *>(FNodes.Items(i));
        }
        if (bracket)
            bracket->DeleteEmptyBrackets();
    }
}

QString TSQLCondition::SQLExpr() const
{
    const QString text = FLeftExpr + QLatin1Char(' ') + FOperator + QLatin1Char(' ') + FRightExpr;
    return Negative() ? QStringLiteral("not(") + text + QLatin1Char(')') : text;
}

} // namespace vm20
