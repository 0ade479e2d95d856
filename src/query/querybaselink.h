#pragma once
// The link by which a query follows a query store: it loads the store's
// current item when the index moves, gives its text when an item is saved,
// takes a text when an item is loaded, and clears itself when the current
// item is deleted.
#include "query/querybase.h"

namespace vm20 {

class TNQuery;

class TNQPBaseLink : public TNQueryBaseLink
{
public:
    explicit TNQPBaseLink(TNQuery *query) : FQuery(query) {}

    TNQuery *Query() const { return FQuery; }

    // The current item's name and description go to the query.
    void QueryChanged(int index) override;
    void QueryIndexChanged() override;
    void QueryListChanged(TQBOperation operation, int index) override;
    bool GetQueryContent(QStringList &lines) override;
    bool PutQueryContent(const QStringList &lines) override;

private:
    TNQuery *FQuery;
};

} // namespace vm20
