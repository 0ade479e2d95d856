#pragma once
// The condition tree: brackets (inner nodes) and conditions (leaves). The
// tree is data; a view shows it through the query's observers. Row numbers,
// identifiers and levels follow the display order (a pre-order walk) and are
// recomputed in one pass the first time they are asked for after a change.
#include "support/typeset.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

namespace vm20 {

class TNQuery;
class TFilterBracket;
class TFilterCond;
class TSimpleCond;
class TCustomCond;
class TDSCondition;
class TDSField;

enum TFilterRowType { frtSimpleCondition, frtBracket, frtCustomCondition };
enum TFilterLinkType { fltAll, fltAny, fltNone, fltNotAll };
inline constexpr int FilterLinkTypeCount = 4;
using TFilterLinkTypes = TSet<TFilterLinkType>;

// The text of an empty drop-down label.
inline const QString EmptyLabelText = QStringLiteral("_____");

class TFilterRow
{
public:
    virtual ~TFilterRow();
    TFilterRow(const TFilterRow &) = delete;
    TFilterRow &operator=(const TFilterRow &) = delete;

    TFilterRowType RowType() const { return FRowType; }
    TNQuery *Query() const { return FQuery; }
    TFilterBracket *Parent() const { return FParent; }
    bool IsBracket() const { return FRowType == frtBracket; }

    bool Enabled() const { return FEnabled; }
    void SetEnabled(bool value);
    // Enabled, and so is every bracket above it.
    bool IsEffectivelyEnabled() const;

    // Display position: the root is row 0, then a pre-order walk. -1 while the
    // row is not in a query's tree.
    int RowNum() const;
    // "" for the root, "1." for the first top-level row, "1.2." for the second
    // row inside it.
    QString RowID() const;
    // The row button's caption: the identifier without its last ".".
    QString ButtonCaption() const;
    // Nesting depth: 0 for the root, 1 for its rows, ...
    int Level() const;
    // Position within the parent bracket (-1 for the root).
    int IndexInParent() const;

    virtual bool GetIsHavingRow() const = 0;
    // The texts the row's labels show, in display order.
    virtual QStringList Labels() const = 0;

protected:
    TFilterRow(TFilterRowType type, TNQuery *query);
    void NotifyChanged();

private:
    friend class TFilterBracket;
    friend class TNQuery;

    TFilterRowType FRowType;
    TNQuery *FQuery;
    TFilterBracket *FParent = nullptr;
    bool FEnabled = true;
    // Filled by the query's numbering pass.
    int FRowNum = -1;
    int FIndex = -1;
    int FLevel = 0;
};

class TFilterBracket : public TFilterRow
{
public:
    // A bracket takes the query's DefaultLinkType.
    explicit TFilterBracket(TNQuery *query);
    ~TFilterBracket() override;

    TFilterLinkType LinkType() const { return FLinkType; }
    void SetLinkType(TFilterLinkType value);
    bool IsRoot() const { return Parent() == nullptr; }
    // 0 for the root and plain nesting, 1 for a WHERE, 2 for a HAVING bracket.
    int BracketKind() const;

    int GetRowCount() const { return int(FRows.size()); }
    TFilterRow *GetRow(int index) const;   // EListError outside the list
    const std::vector<std::unique_ptr<TFilterRow>> &Rows() const { return FRows; }
    int IndexOf(const TFilterRow *row) const;

    // Takes the row (which must belong to the same query) into this bracket.
    TFilterRow *InsertRow(int index, std::unique_ptr<TFilterRow> row);
    TFilterRow *AddRow(std::unique_ptr<TFilterRow> row);
    // Removes the row from the bracket without freeing it (to move it).
    std::unique_ptr<TFilterRow> InternalDeleteRow(int index);
    void DeleteRow(int index);
    void ClearRows();

    // Positions by row number: the index of the child numbered `rowNum`
    // (-1 if none), and the index a new row numbered `rowNum` takes.
    int IndexByRowNum(int rowNum) const;
    int IndexForNewRow(int rowNum) const;
    // The number of the last row of this bracket's sub-tree (its own number
    // when it is empty).
    int GetLastRowNum() const;

    TFilterBracket *InsertNewBracket(int index);
    TFilterBracket *InsertNewBracketByNum(int rowNum);
    TSimpleCond *InsertSimpleCondByNum(int rowNum);
    TCustomCond *InsertCustomCondByNum(int rowNum, TDSCondition *condition);
    TFilterBracket *AddNewBracket();
    TSimpleCond *AddCond();
    TCustomCond *AddCustomCond(TDSCondition *condition);

    // The row of the sub-tree with this identifier ("1.2."), or none.
    TFilterRow *RowByID(const QString &id) const;
    TFilterCond *GetFirstCondition() const;   // first direct child that is a condition
    TFilterRow *GetFirstRow() const;
    TFilterRow *GetLastRow() const;
    bool CheckIfAllDisabled() const;

    bool GetIsHavingRow() const override;
    QStringList Labels() const override;

    // The title parts around the link-type word: ttlFilter for the root,
    // ttlBracket otherwise (ENQueryPanelError 4 or 5 without "@").
    void GetTitleParts(QString &before, QString &after) const;

private:
    friend class TNQuery;
    // Take a row out and put it back without telling the query's observers:
    // the query's moves send one RowMoved instead.
    std::unique_ptr<TFilterRow> TakeRow(int index);
    void PutRow(int index, std::unique_ptr<TFilterRow> row);

    TFilterLinkType FLinkType;
    std::vector<std::unique_ptr<TFilterRow>> FRows;
};

// Visits the enabled rows below `root` in display order (pre-order) with
// their depth, 1 for the root's own rows; the rows of a disabled bracket are
// left out with it. Trees may nest deeper than the call stack allows, so the
// walk keeps its own stack.
void ForEachEnabledRow(const TFilterBracket &root,
                       const std::function<void(const TFilterRow &row, int depth)> &visit);

} // namespace vm20
