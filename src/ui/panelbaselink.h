#pragma once
// The link by which a condition panel or a result column panel follows a
// query store: when the store's current item changes, the panel first saves
// what it shows into the item it was showing, then shows the new item; it
// gives its query's text when an item is saved, takes a text when an item is
// loaded, and clears itself when its item is deleted.
//
// Panels that show one query (a result panel given the condition panel's
// query) may each have a link: the first link over a query loads and saves
// it, the others only see that their panel is up to date. A query that has
// its own link to the same store (TNQuery::SetQueryBase) is left to that
// link.
#include "query/querybase.h"

#include <QPointer>

namespace vm20 {

class TNQuery;
class TNQueryItem;
class TNQueryPanel;
class TNResultFieldsPanel;

class TNPanelBaseLink : public TNQueryBaseLink
{
public:
    explicit TNPanelBaseLink(TNQueryPanel *panel);
    explicit TNPanelBaseLink(TNResultFieldsPanel *panel);

    // The query the panel shows now; none once the panel is gone or shows a
    // column list of no query.
    TNQuery *Query() const;
    // The item whose text the panel shows; none before the first load and
    // after that item is deleted or the store closed.
    TNQueryItem *ShownItem() const;

    void QueryChanged(int index) override;
    void QueryIndexChanged() override;
    void QueryListChanged(TQBOperation operation, int index) override;
    bool GetQueryContent(QStringList &lines) override;
    bool PutQueryContent(const QStringList &lines) override;

private:
    // Whether this link loads and saves its query: no earlier link of the
    // store, and no link of the query itself, covers the same query.
    bool Leads() const;

    QPointer<TNQueryPanel> FQueryPanel;
    QPointer<TNResultFieldsPanel> FResultPanel;
    TNQueryItem *FShownItem = nullptr;
};

} // namespace vm20
