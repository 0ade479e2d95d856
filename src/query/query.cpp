#include "query/query.h"

#include "model/dbstructure.h"
#include "model/errors.h"
#include "model/messages.h"
#include "query/querybaselink.h"
#include "query/querybuilder.h"

#include <algorithm>
#include <utility>

namespace vm20 {

namespace {

// Sets a flag for the lifetime of the guard and restores it on any exit.
class TFlagGuard
{
public:
    TFlagGuard(bool &flag, bool value) : FFlag(flag), FOld(flag) { FFlag = value; }
    ~TFlagGuard() { FFlag = FOld; }
    TFlagGuard(const TFlagGuard &) = delete;
    TFlagGuard &operator=(const TFlagGuard &) = delete;

private:
    bool &FFlag;
    bool FOld;
};

} // namespace

// --- TNQueryPanelLink ---------------------------------------------------------------

TNQueryPanelLink::~TNQueryPanelLink()
{
    SetQueryPanel(nullptr);
}

void TNQueryPanelLink::SetQueryPanel(TNQuery *query)
{
    if (FQueryPanel == query)
        return;
    if (FQueryPanel) {
        auto &links = FQueryPanel->FLinks;
        links.erase(std::remove(links.begin(), links.end(), this), links.end());
    }
    FQueryPanel = query;
    if (query)
        query->FLinks.push_back(this);
}

// --- TNQuery: life --------------------------------------------------------------------

TNQuery::TNQuery(QObject *parent)
    : QObject(parent), FResult(this)
{
    // The root reads the default link type, so it comes after the members.
    FFilter = std::make_unique<TFilterBracket>(this);
    SQLOptionsChanged();
    FTitles.OnChange = [this] { TitlesChanged(); };
    FModelWatch.OnDeleting = [this](const TModelChange &entity) { DropModelEntity(entity, false); };
    FModelWatch.OnDestroyed = [this] {
        for (TModelChangeKind kind : {mckTables, mckLinks, mckFields, mckOperators, mckConditions})
            DropModelEntity({kind, nullptr}, true);
    };
}

TNQuery::~TNQuery()
{
    FDestroying = true;
    FFilter.reset();
    for (TNQueryPanelLink *link : FLinks)
        link->FQueryPanel = nullptr;
}

void TNQuery::SetDBStruct(TNCustomDBStructure *value)
{
    if (FDBStruct == value)
        return;
    FDBStruct = value;
    FModelWatch.Watch(value);
    RFields().SetDBStruct(value);
}

void TNQuery::CheckIfDBStructAssigned() const
{
    if (!FDBStruct)
        throw ENQueryPanelError(qpeNoDBStruct, SQPENoDBStruct);
}

void TNQuery::SetSQLSyntax(TSQLSyntax value)
{
    if (FSQLSyntax == value)
        return;
    FSQLSyntax = value;
    SQLOptionsChanged();
}

void TNQuery::SetSQLOptions(TSQLOptions value)
{
    if (FSQLOptions == value)
        return;
    FSQLOptions = value;
    SQLOptionsChanged();
}

void TNQuery::SQLOptionsChanged()
{
    FResult.SetSQLOptions(FSQLOptions);
    FResult.SetSQLSyntax(FSQLSyntax);
    RFields().SetAsciiAliases(FSQLOptions.contains(soASCIIRFields));
    RFields().SetQuoteAliases(FSQLOptions.contains(soQuoteAliases));
}

QString TNQuery::LinkTypeTitle(TFilterLinkType type) const
{
    switch (type) {
    case fltAll: return GetTitle(QStringLiteral("ttlAll"));
    case fltAny: return GetTitle(QStringLiteral("ttlAny"));
    case fltNone: return GetTitle(QStringLiteral("ttlNone"));
    case fltNotAll: return GetTitle(QStringLiteral("ttlNotAll"));
    }
    return QString();
}

// --- TNQuery: notifications -------------------------------------------------------------

void TNQuery::QueryChanged()
{
    if (FDestroying || FLoading > 0 || FRefreshing > 0 || FInsideOnChange)
        return;
    FModified = true;
    const std::vector<TNQueryPanelLink *> links = FLinks;
    for (TNQueryPanelLink *link : links)
        link->QueryChanged();
    if (OnChange) {
        TFlagGuard guard(FInsideOnChange, true);
        OnChange(this);
    }
}

void TNQuery::ParametersListChanged()
{
    if (FDestroying || FLoading > 0)
        return;
    if (OnParamListChange)
        OnParamListChange(this);
}

void TNQuery::AddObserver(TNQueryObserver *observer)
{
    FObservers.Add(observer);
}

void TNQuery::RemoveObserver(TNQueryObserver *observer)
{
    FObservers.Remove(observer);
}

void TNQuery::EndUpdate()
{
    if (FUpdating == 0 || --FUpdating > 0)
        return;
    InvalidateNumbers();
    if (FDestroying)
        return;
    FObservers.Notify([](TNQueryObserver *observer) { observer->Reset(); });
    if (std::exchange(FTitlesPending, false))
        TitlesChanged();
}

void TNQuery::RowInserted(TFilterRow *row)
{
    InvalidateNumbers();
    if (FUpdating > 0 || FDestroying)
        return;
    FObservers.Notify([row](TNQueryObserver *observer) { observer->RowInserted(row); });
}

void TNQuery::ForgetRowSources(const TFilterRow *row)
{
    if (FRowSources.isEmpty())
        return;
    std::vector<const TFilterRow *> pending{row};
    while (!pending.empty()) {
        const TFilterRow *next = pending.back();
        pending.pop_back();
        FRowSources.remove(next);
        if (next->IsBracket())
            for (const auto &child : static_cast<const TFilterBracket *>(next)->Rows())
                pending.push_back(child.get());
    }
}

void TNQuery::RowRemoving(TFilterRow *row)
{
    ForgetRowSources(row);
    if (FUpdating == 0 && !FDestroying)
        FObservers.Notify([row](TNQueryObserver *observer) { observer->RowRemoved(row); });
    InvalidateNumbers();
}

void TNQuery::RowChanged(TFilterRow *row)
{
    if (FUpdating > 0 || FDestroying)
        return;
    FObservers.Notify([row](TNQueryObserver *observer) { observer->RowChanged(row); });
}

void TNQuery::ConditionChanged(TFilterCond *condition)
{
    RowChanged(condition);
    if (FDestroying || FLoading > 0)
        return;
    if (auto *simple = dynamic_cast<TSimpleCond *>(condition))
        simple->UpdateSQLParams();
    if (OnConditionChange)
        OnConditionChange(condition);
}

// --- TNQuery: numbering ----------------------------------------------------------------------

void TNQuery::EnsureNumbers() const
{
    if (FNumbersValid)
        return;
    // One pre-order pass gives every row its number, identifier, level and
    // index; an explicit stack keeps deep nesting off the call stack.
    FRowsByNum.clear();
    TFilterRow *root = FFilter.get();
    root->FRowNum = 0;
    root->FLevel = 0;
    root->FIndex = -1;
    FRowsByNum.push_back(root);
    std::vector<std::pair<const TFilterBracket *, std::size_t>> stack{{FFilter.get(), 0}};
    while (!stack.empty()) {
        auto &[bracket, next] = stack.back();
        if (next == bracket->Rows().size()) {
            stack.pop_back();
            continue;
        }
        TFilterRow *row = bracket->Rows()[next].get();
        row->FIndex = int(next);
        ++next;
        row->FRowNum = int(FRowsByNum.size());
        row->FLevel = bracket->FLevel + 1;
        FRowsByNum.push_back(row);
        if (row->IsBracket())
            stack.emplace_back(static_cast<const TFilterBracket *>(row), 0);
    }
    FNumbersValid = true;
}

TFilterRow *TNQuery::GetRowByNum(int rowNum) const
{
    EnsureNumbers();
    if (rowNum < 0 || rowNum >= int(FRowsByNum.size()))
        return nullptr;
    return FRowsByNum[std::size_t(rowNum)];
}

int TNQuery::GetRowCount() const
{
    EnsureNumbers();
    return int(FRowsByNum.size());
}

// --- TNQuery: tree operations ---------------------------------------------------------------

TSimpleCond *TNQuery::InitializeNewCondition(TSimpleCond *condition, TDSField *field)
{
    if (field)
        condition->SetField(field);
    return condition;
}

// Appending after a bracket's last row number is appending to the bracket;
// doing it directly spares a renumbering per added row.
TSimpleCond *TNQuery::AddCondition(TFilterBracket *bracket, TDSField *field)
{
    if (!bracket)
        bracket = FFilter.get();
    TSimpleCond *added = InitializeNewCondition(bracket->AddCond(), field);
    RowAdded(added);
    return added;
}

TSimpleCond *TNQuery::AddConditionNum(TFilterBracket *bracket, int rowNum, TDSField *field)
{
    if (!bracket)
        bracket = FFilter.get();
    TSimpleCond *added = InitializeNewCondition(bracket->InsertSimpleCondByNum(rowNum), field);
    RowAdded(added);
    return added;
}

TCustomCond *TNQuery::AddCustomCondition(TFilterBracket *bracket, TDSCondition *condition)
{
    if (!bracket)
        bracket = FFilter.get();
    TCustomCond *added = bracket->AddCustomCond(condition);
    RowAdded(added);
    return added;
}

TCustomCond *TNQuery::AddCustomConditionNum(TFilterBracket *bracket, int rowNum, TDSCondition *condition)
{
    if (!bracket)
        bracket = FFilter.get();
    TCustomCond *added = bracket->InsertCustomCondByNum(rowNum, condition);
    RowAdded(added);
    return added;
}

TFilterBracket *TNQuery::AddBracket(TFilterBracket *bracket)
{
    if (!bracket)
        bracket = FFilter.get();
    return FinishNewBracket(bracket->AddNewBracket());
}

TFilterBracket *TNQuery::AddBracketNum(TFilterBracket *bracket, int rowNum)
{
    if (!bracket)
        bracket = FFilter.get();
    return FinishNewBracket(bracket->InsertNewBracketByNum(rowNum));
}

TFilterBracket *TNQuery::FinishNewBracket(TFilterBracket *added)
{
    // The user goes on with the bracket's own condition when it gets one.
    TFilterRow *current = added;
    if (FNonEmptyBrackets)
        current = added->AddCond();
    RowAdded(current);
    return added;
}

void TNQuery::ClearAll()
{
    BeginUpdate();
    FResult.ClearParams();
    FFilter->ClearRows();
    FFilter->SetEnabled(true);
    FFilter->SetLinkType(FDefaultLinkType);
    EndUpdate();
    RFields().Clear();
    RFields().SetJustSorting(false);
    FResult.ClearPieces();
    FTableFilters.Clear();
    FSQLParams.clear();
    FQueryName.clear();
    FDescription.clear();
    FUserData.clear();
    FRowSources.clear();
    FLoadProblems.clear();
}

// --- TNQuery: building ----------------------------------------------------------------------

void TNQuery::BuildQuery()
{
    if (FBuilding)
        return;
    CheckIfDBStructAssigned();
    TFlagGuard building(FBuilding, true);
    TQueryBuilder(*this).Run();
}

void TNQuery::BuildFilters()
{
    if (FBuilding)
        return;
    TFlagGuard filters(FBuildingFilters, true);
    FTableFilters.Clear();
    BuildQuery();
}

} // namespace vm20
