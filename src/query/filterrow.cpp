#include "query/filterrow.h"

#include "model/errors.h"
#include "model/messages.h"
#include "query/filtercond.h"
#include "query/query.h"
#include "support/exception.h"

namespace vm20 {

// --- TFilterRow ----------------------------------------------------------------

TFilterRow::TFilterRow(TFilterRowType type, TNQuery *query)
    : FRowType(type), FQuery(query)
{
}

TFilterRow::~TFilterRow() = default;

void TFilterRow::SetEnabled(bool value)
{
    if (FEnabled == value)
        return;
    FEnabled = value;
    NotifyChanged();
}

bool TFilterRow::IsEffectivelyEnabled() const
{
    for (const TFilterRow *row = this; row; row = row->FParent)
        if (!row->FEnabled)
            return false;
    return true;
}

int TFilterRow::RowNum() const
{
    if (FQuery)
        FQuery->EnsureNumbers();
    return FRowNum;
}

QString TFilterRow::RowID() const
{
    // Built on demand from the positions: storing every identifier would cost
    // the square of the depth on deeply nested trees.
    if (FQuery)
        FQuery->EnsureNumbers();
    QStringList parts;
    for (const TFilterRow *row = this; row->FParent; row = row->FParent)
        parts.append(QString::number(row->FIndex + 1));
    QString id;
    for (auto it = parts.crbegin(); it != parts.crend(); ++it)
        id += *it + QLatin1Char('.');
    return id;
}

QString TFilterRow::ButtonCaption() const
{
    const QString id = RowID();
    return id.isEmpty() ? id : id.left(id.size() - 1);
}

int TFilterRow::Level() const
{
    if (FQuery)
        FQuery->EnsureNumbers();
    return FLevel;
}

int TFilterRow::IndexInParent() const
{
    if (FQuery)
        FQuery->EnsureNumbers();
    return FIndex;
}

void TFilterRow::NotifyChanged()
{
    if (FQuery)
        FQuery->RowChanged(this);
}

// --- TFilterBracket -------------------------------------------------------------

TFilterBracket::TFilterBracket(TNQuery *query)
    : TFilterRow(frtBracket, query),
      FLinkType(query ? query->DefaultLinkType() : fltAny)
{
}

TFilterBracket::~TFilterBracket()
{
    // Free the sub-tree without recursion: a deeply nested tree must not
    // exhaust the stack.
    std::vector<std::unique_ptr<TFilterRow>> pending = std::move(FRows);
    while (!pending.empty()) {
        std::unique_ptr<TFilterRow> row = std::move(pending.back());
        pending.pop_back();
        if (row->IsBracket()) {
            auto *bracket = static_cast<TFilterBracket *>(row.get());
            for (auto &child : bracket->FRows)
                pending.push_back(std::move(child));
            bracket->FRows.clear();
        }
    }
}

void TFilterBracket::SetLinkType(TFilterLinkType value)
{
    if (FLinkType == value)
        return;
    FLinkType = value;
    NotifyChanged();
}

int TFilterBracket::BracketKind() const
{
    // A nested bracket takes the first kind above 0 among its ancestors, so
    // the kinds are settled from the top down (without recursion).
    std::vector<const TFilterBracket *> chain;
    for (const TFilterBracket *bracket = this; bracket; bracket = bracket->Parent())
        chain.push_back(bracket);
    int kind = 0;
    for (auto it = chain.rbegin() + 1; it < chain.rend() && kind == 0; ++it) {
        const TFilterBracket *bracket = *it;
        if (bracket->Level() > 1)
            kind = 1;
        else if (bracket->GetRowCount() >= 2)
            kind = bracket->FRows.front()->GetIsHavingRow() ? 2 : 1;
    }
    return kind;
}

TFilterRow *TFilterBracket::GetRow(int index) const
{
    if (index < 0 || index >= GetRowCount())
        throw EListError::IndexOutOfBounds(index);
    return FRows[std::size_t(index)].get();
}

int TFilterBracket::IndexOf(const TFilterRow *row) const
{
    if (!row || row->Parent() != this)
        return -1;
    if (FQuery) {
        const int index = row->IndexInParent();
        if (index >= 0 && index < GetRowCount() && FRows[std::size_t(index)].get() == row)
            return index;
    }
    for (std::size_t i = 0; i < FRows.size(); ++i)
        if (FRows[i].get() == row)
            return int(i);
    return -1;
}

TFilterRow *TFilterBracket::InsertRow(int index, std::unique_ptr<TFilterRow> row)
{
    if (!row)
        return nullptr;
    if (index < 0 || index > GetRowCount())
        throw EListError::IndexOutOfBounds(index);
    if (row->FQuery != FQuery)
        throw Exception(QStringLiteral("A row can only be inserted into a bracket of its own query"));
    // Only a bracket with rows can hold this bracket; the walk up is skipped
    // for new rows, so building a deep tree stays linear.
    if (row->IsBracket() && !static_cast<const TFilterBracket *>(row.get())->FRows.empty())
        for (const TFilterRow *above = this; above; above = above->FParent)
            if (above == row.get())
                throw Exception(QStringLiteral("A bracket cannot be inserted into itself"));
    TFilterRow *raw = row.get();
    raw->FParent = this;
    FRows.insert(FRows.begin() + index, std::move(row));
    if (FQuery)
        FQuery->RowInserted(raw);
    return raw;
}

TFilterRow *TFilterBracket::AddRow(std::unique_ptr<TFilterRow> row)
{
    return InsertRow(GetRowCount(), std::move(row));
}

std::unique_ptr<TFilterRow> TFilterBracket::InternalDeleteRow(int index)
{
    if (index < 0 || index >= GetRowCount())
        throw EListError::IndexOutOfBounds(index);
    TFilterRow *raw = FRows[std::size_t(index)].get();
    if (FQuery)
        FQuery->RowRemoving(raw);
    std::unique_ptr<TFilterRow> row = std::move(FRows[std::size_t(index)]);
    FRows.erase(FRows.begin() + index);
    row->FParent = nullptr;
    row->FRowNum = -1;
    row->FIndex = -1;
    return row;
}

std::unique_ptr<TFilterRow> TFilterBracket::TakeRow(int index)
{
    std::unique_ptr<TFilterRow> row = std::move(FRows[std::size_t(index)]);
    FRows.erase(FRows.begin() + index);
    row->FParent = nullptr;
    if (FQuery)
        FQuery->InvalidateNumbers();
    return row;
}

void TFilterBracket::PutRow(int index, std::unique_ptr<TFilterRow> row)
{
    row->FParent = this;
    FRows.insert(FRows.begin() + index, std::move(row));
    if (FQuery)
        FQuery->InvalidateNumbers();
}

void TFilterBracket::DeleteRow(int index)
{
    InternalDeleteRow(index).reset();
}

void TFilterBracket::ClearRows()
{
    if (FRows.empty())
        return;
    if (FQuery)
        FQuery->BeginUpdate();
    std::vector<std::unique_ptr<TFilterRow>> rows = std::move(FRows);
    FRows.clear();
    rows.clear();
    if (FQuery) {
        FQuery->InvalidateNumbers();
        FQuery->EndUpdate();
    }
}

int TFilterBracket::IndexByRowNum(int rowNum) const
{
    for (std::size_t i = 0; i < FRows.size(); ++i)
        if (FRows[i]->RowNum() == rowNum)
            return int(i);
    return -1;
}

int TFilterBracket::IndexForNewRow(int rowNum) const
{
    for (std::size_t i = 0; i < FRows.size(); ++i)
        if (FRows[i]->RowNum() >= rowNum)
            return int(i);
    return GetRowCount();
}

int TFilterBracket::GetLastRowNum() const
{
    const TFilterRow *row = this;
    while (row->IsBracket()) {
        const auto *bracket = static_cast<const TFilterBracket *>(row);
        if (bracket->FRows.empty())
            break;
        row = bracket->FRows.back().get();
    }
    return row->RowNum();
}

TFilterBracket *TFilterBracket::InsertNewBracket(int index)
{
    return static_cast<TFilterBracket *>(InsertRow(index, std::make_unique<TFilterBracket>(FQuery)));
}

TFilterBracket *TFilterBracket::InsertNewBracketByNum(int rowNum)
{
    return InsertNewBracket(IndexForNewRow(rowNum));
}

TSimpleCond *TFilterBracket::InsertSimpleCondByNum(int rowNum)
{
    return static_cast<TSimpleCond *>(
        InsertRow(IndexForNewRow(rowNum), std::make_unique<TSimpleCond>(FQuery)));
}

TCustomCond *TFilterBracket::InsertCustomCondByNum(int rowNum, TDSCondition *condition)
{
    return static_cast<TCustomCond *>(
        InsertRow(IndexForNewRow(rowNum), std::make_unique<TCustomCond>(FQuery, condition)));
}

TFilterBracket *TFilterBracket::AddNewBracket()
{
    return InsertNewBracket(GetRowCount());
}

TSimpleCond *TFilterBracket::AddCond()
{
    return static_cast<TSimpleCond *>(AddRow(std::make_unique<TSimpleCond>(FQuery)));
}

TCustomCond *TFilterBracket::AddCustomCond(TDSCondition *condition)
{
    return static_cast<TCustomCond *>(AddRow(std::make_unique<TCustomCond>(FQuery, condition)));
}

TFilterRow *TFilterBracket::RowByID(const QString &id) const
{
    // Follow the identifier's numbers down the tree: "1.2." is row 2 of row 1.
    if (id.isEmpty())
        return const_cast<TFilterBracket *>(this);
    const TFilterBracket *bracket = this;
    TFilterRow *row = nullptr;
    const QStringList parts = id.split(QLatin1Char('.'));
    if (!parts.last().isEmpty())
        return nullptr;
    for (qsizetype i = 0; i + 1 < parts.size(); ++i) {
        if (!bracket)
            return nullptr;
        bool ok = false;
        const int number = parts[i].toInt(&ok);
        if (!ok || number < 1 || number > bracket->GetRowCount())
            return nullptr;
        row = bracket->FRows[std::size_t(number - 1)].get();
        bracket = row->IsBracket() ? static_cast<const TFilterBracket *>(row) : nullptr;
    }
    return row;
}

TFilterCond *TFilterBracket::GetFirstCondition() const
{
    for (const auto &row : FRows)
        if (!row->IsBracket())
            return static_cast<TFilterCond *>(row.get());
    return nullptr;
}

TFilterRow *TFilterBracket::GetFirstRow() const
{
    return FRows.empty() ? nullptr : FRows.front().get();
}

TFilterRow *TFilterBracket::GetLastRow() const
{
    return FRows.empty() ? nullptr : FRows.back().get();
}

bool TFilterBracket::CheckIfAllDisabled() const
{
    for (const auto &row : FRows)
        if (row->Enabled())
            return false;
    return true;
}

bool TFilterBracket::GetIsHavingRow() const
{
    const TFilterCond *first = GetFirstCondition();
    return first && first->GetIsHavingRow();
}

void TFilterBracket::GetTitleParts(QString &before, QString &after) const
{
    const bool root = IsRoot();
    const QString title = FQuery ? FQuery->GetTitle(root ? QStringLiteral("ttlFilter")
                                                         : QStringLiteral("ttlBracket"))
                                 : QString();
    const qsizetype at = title.indexOf(QLatin1Char('@'));
    if (at < 0) {
        if (root)
            throw ENQueryPanelError(qpeInvalidFltrTitle, SQPEInvalidFltrTitle);
        throw ENQueryPanelError(qpeInvalidStrFmt, SQPEInvalidStrFmt);
    }
    before = title.left(at).trimmed();
    after = title.mid(at + 1).trimmed();
}

QStringList TFilterBracket::Labels() const
{
    QString before;
    QString after;
    GetTitleParts(before, after);
    const QString word = FQuery ? FQuery->LinkTypeTitle(FLinkType) : QString();
    return {before, word.isEmpty() ? EmptyLabelText : word, after};
}

void ForEachEnabledRow(const TFilterBracket &root,
                       const std::function<void(const TFilterRow &row, int depth)> &visit)
{
    std::vector<std::pair<const TFilterBracket *, std::size_t>> stack{{&root, 0}};
    while (!stack.empty()) {
        auto &[bracket, next] = stack.back();
        if (next == bracket->Rows().size()) {
            stack.pop_back();
            continue;
        }
        const TFilterRow *row = bracket->Rows()[next++].get();
        if (!row->Enabled())
            continue;
        visit(*row, int(stack.size()));
        if (row->IsBracket())
            stack.emplace_back(static_cast<const TFilterBracket *>(row), 0);
    }
}

} // namespace vm20
