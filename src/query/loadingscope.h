#pragma once
// Loading a query (from its text or from SQL) runs with the query inactive,
// marked as loading and with its notifications held; every way out, a
// failure included, puts the query back as it was.
#include "query/query.h"

namespace vm20 {

class TLoadingScope
{
public:
    explicit TLoadingScope(TNQuery &query) : FQuery(query), FWasActive(query.Active())
    {
        FQuery.SetActive(false);
        FQuery.BeginLoading();
        FQuery.BeginUpdate();
        FQuery.RFields().BeginUpdate();
    }
    ~TLoadingScope()
    {
        FQuery.RFields().EndUpdate();
        FQuery.EndUpdate();
        FQuery.EndLoading();
        FQuery.SetActive(FWasActive);
    }
    TLoadingScope(const TLoadingScope &) = delete;
    TLoadingScope &operator=(const TLoadingScope &) = delete;

private:
    TNQuery &FQuery;
    bool FWasActive;
};

} // namespace vm20
