#pragma once
// The WHERE clause of a parsed statement: brackets of nodes joined by one
// logical operator, and conditions whose operands are kept as written.
//
// A node lives on the heap (made with std::make_unique) or in the pool of a
// parse result (made by TNParserResult). A pooled node keeps its texts and
// its list of nodes in the pool too, so that a parsed tree of any size is
// freed a few large blocks at a time instead of node by node; it must not
// outlive the result that made it.
#include <QString>
#include <QStringView>

#include <memory>
#include <memory_resource>
#include <type_traits>
#include <vector>

namespace vm20 {

class TSQLBracket;
class TSQLNode;

// Frees a heap node, and only destroys a pooled one (its pool frees the
// memory). Takes over from std::default_delete, so that a std::unique_ptr of
// a heap node converts to a node pointer.
struct TSQLNodeDeleter
{
    TSQLNodeDeleter() = default;
    template <typename T, typename = std::enable_if_t<std::is_convertible_v<T *, TSQLNode *>>>
    TSQLNodeDeleter(std::default_delete<T>) {}
    void operator()(TSQLNode *node) const;
};

using TSQLNodePtr = std::unique_ptr<TSQLNode, TSQLNodeDeleter>;

class TSQLNode
{
public:
    virtual ~TSQLNode() = default;
    TSQLNode(const TSQLNode &) = delete;
    TSQLNode &operator=(const TSQLNode &) = delete;

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
    bool IsBracket() const { return FIsBracket; }

protected:
    TSQLNode(bool isBracket, std::pmr::memory_resource *pool) : FPool(pool), FIsBracket(isBracket) {}
    // The pool that holds the node; null for a heap node.
    std::pmr::memory_resource *Pool() const { return FPool; }

private:
    friend class TSQLConditionNodeList;
    friend struct TSQLNodeDeleter;
    TSQLBracket *FParent = nullptr;
    std::pmr::memory_resource *FPool;
    bool FIsBracket;
    bool FNegative = false;
    bool FInnerNegative = false;
};

// Owns its nodes and makes its bracket their parent.
class TSQLConditionNodeList
{
public:
    explicit TSQLConditionNodeList(TSQLBracket *parentBracket, std::pmr::memory_resource *pool = nullptr);
    TSQLBracket *ParentBracket() const { return FParentBracket; }

    int Count() const { return int(FItems.size()); }
    TSQLNode *Items(int index) const;  // EListError outside the list
    TSQLNode *Add(TSQLNodePtr node);
    // Stores `node` in slot `index`, freeing the node that was there.
    void SetItem(int index, TSQLNodePtr node);
    // Takes the node out of the list and hands it to the caller, parentless.
    TSQLNodePtr Extract(int index);
    void Delete(int index);
    void Clear() { FItems.clear(); }

private:
    friend class TSQLBracket;
    void CheckIndex(int index) const;
    TSQLBracket *FParentBracket;
    std::pmr::vector<TSQLNodePtr> FItems;
};

class TSQLBracket : public TSQLNode
{
public:
    // A heap bracket; pooled ones come from TNParserResult::NewBracket.
    TSQLBracket() : TSQLBracket(nullptr) {}
    explicit TSQLBracket(std::pmr::memory_resource *pool) : TSQLNode(true, pool), FNodes(this, pool) {}
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
    // A heap condition; pooled ones come from TNParserResult::NewCondition.
    TSQLCondition() : TSQLCondition(nullptr) {}
    explicit TSQLCondition(std::pmr::memory_resource *pool) : TSQLNode(false, pool) {}

    QString LeftExpr() const { return FLeftExpr.toString(); }
    void SetLeftExpr(QStringView value) { Keep(FLeftExpr, 0, value); }
    QString RightExpr() const { return FRightExpr.toString(); }
    void SetRightExpr(QStringView value) { Keep(FRightExpr, 1, value); }
    // The operator token in lower case ("=", "like", "between", ...).
    QString Operation() const { return FOperator.toString(); }
    void SetOperation(QStringView value) { Keep(FOperator, 2, value); }
    bool ContainsSubQuery() const { return FContainsSubQuery; }
    void SetContainsSubQuery(bool value) { FContainsSubQuery = value; }

    // The same texts without a copy, valid while the condition is unchanged.
    QStringView LeftView() const { return FLeftExpr; }
    QStringView RightView() const { return FRightExpr; }
    QStringView OperationView() const { return FOperator; }

    // "left op right", wrapped in "not(...)" when negated.
    QString SQLExpr() const;

private:
    // Copies `value` into the pool, or for a heap condition into owned slot
    // `slot` of FOwned, and points `text` at the copy.
    void Keep(QStringView &text, int slot, QStringView value);

    QStringView FLeftExpr;
    QStringView FRightExpr;
    QStringView FOperator;
    std::unique_ptr<QString[]> FOwned;  // a heap condition's three texts
    bool FContainsSubQuery = false;
};

} // namespace vm20
