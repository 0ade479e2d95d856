#pragma once
// The WHERE clause of a parsed statement: brackets of nodes joined by one
// logical operator, and conditions whose operands are kept as written.
#include <QString>

#include <memory>
#include <vector>

namespace vm20 {

class TSQLBracket;

class TSQLNode
{
public:
    virtual ~TSQLNode() = default;
    // The bracket that holds the node; kept by the node list.
    TSQLBracket *Parent() const { return FParent; }
    // Preceded by NOT.
    bool Negative() const { return FNegative; }
    void SetNegative(bool value) { FNegative = value; }
    // A NOT that Negative does not show: inside a condition ("a NOT LIKE x",
    // "a IS NOT NULL"), or before the node inside brackets that read as the
    // node itself ("(NOT a = 1)"). The node is negated when exactly one of
    // the two flags is set.
    bool InnerNegative() const { return FInnerNegative; }
    void SetInnerNegative(bool value) { FInnerNegative = value; }

private:
    friend class TSQLConditionNodeList;
    TSQLBracket *FParent = nullptr;
    bool FNegative = false;
    bool FInnerNegative = false;
};

// Owns its nodes and makes its bracket their parent.
class TSQLConditionNodeList
{
public:
    explicit TSQLConditionNodeList(TSQLBracket *parentBracket) : FParentBracket(parentBracket) {}
    TSQLBracket *ParentBracket() const { return FParentBracket; }

    int Count() const { return int(FItems.size()); }
    TSQLNode *Items(int index) const;  // EListError outside the list
    TSQLNode *Add(std::unique_ptr<TSQLNode> node);
    // Stores `node` in slot `index`, freeing the node that was there.
    void SetItem(int index, std::unique_ptr<TSQLNode> node);
    // Takes the node out of the list and hands it to the caller, parentless.
    std::unique_ptr<TSQLNode> Extract(int index);
    void Delete(int index);
    void Clear() { FItems.clear(); }

private:
    void CheckIndex(int index) const;
    TSQLBracket *FParentBracket;
    std::vector<std::unique_ptr<TSQLNode>> FItems;
};

class TSQLBracket : public TSQLNode
{
public:
    TSQLBracket() : FNodes(this) {}
    ~TSQLBracket() override;

    bool FirstNOT() const { return FFirstNOT; }
    void SetFirstNOT(bool value) { FFirstNOT = value; }
    // "or", "and", or empty for the bracket that wraps a lone WHERE condition.
    QString BoolOperator() const { return FBoolOperator; }
    void SetBoolOperator(const QString &value) { FBoolOperator = value; }
    TSQLConditionNodeList &Nodes() { return FNodes; }
    const TSQLConditionNodeList &Nodes() const { return FNodes; }

    // Replaces every bracket of one node by that node, all the way down. The
    // replaced bracket's NOT is dropped with it.
    void DeleteEmptyBrackets();

private:
    bool FFirstNOT = false;
    QString FBoolOperator;
    TSQLConditionNodeList FNodes;
};

class TSQLCondition : public TSQLNode
{
public:
    QString LeftExpr() const { return FLeftExpr; }
    void SetLeftExpr(const QString &value) { FLeftExpr = value; }
    QString RightExpr() const { return FRightExpr; }
    void SetRightExpr(const QString &value) { FRightExpr = value; }
    // The operator token in lower case ("=", "like", "between", ...).
    QString Operation() const { return FOperator; }
    void SetOperation(const QString &value) { FOperator = value; }
    bool ContainsSubQuery() const { return FContainsSubQuery; }
    void SetContainsSubQuery(bool value) { FContainsSubQuery = value; }

    // "left op right", wrapped in "not(...)" when negated.
    QString SQLExpr() const;

private:
    QString FLeftExpr;
    QString FRightExpr;
    QString FOperator;
    bool FContainsSubQuery = false;
};

} // namespace vm20
