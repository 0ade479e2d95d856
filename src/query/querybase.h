#pragma once
// A store of named queries with a current one, much like a small dataset of
// queries. Queries travel as query text lines between an item's storage and
// a linked query: the store itself keeps no text. Where items live is up to
// descendants (TNFolderQueryBase keeps them as files).
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

namespace vm20 {

class TNQueryBase;
class TNQueryItem;

enum TQBOperation { qboListLoaded, qboListCleared, qboItemAdded, qboItemDeleted };

// Error codes of ENQueryBaseError.
enum TQueryBaseErrorCode {
    qbeNoQueryBase = 1,        // "Query base is not specified"
    qbeIndexOutOfBounds = 2,   // the list-index message with the index
    qbeInvalidQueryName = 3,   // a name a folder store cannot use as a file name
    qbeNoFolder = 4            // a folder store without its folder
};

// An object told of the store's changes; the base does nothing and takes no
// content.
class TNQueryBaseLink
{
public:
    TNQueryBaseLink() = default;
    virtual ~TNQueryBaseLink();
    TNQueryBaseLink(const TNQueryBaseLink &) = delete;
    TNQueryBaseLink &operator=(const TNQueryBaseLink &) = delete;

    TNQueryBase *QueryBase() const { return FQueryBase; }
    void SetQueryBase(TNQueryBase *value);

    virtual void QueryChanged(int index) { (void)index; }
    virtual void QueryIndexChanged() {}
    virtual void QueryListChanged(TQBOperation operation, int index)
    {
        (void)operation;
        (void)index;
    }
    // Fills the lines with a query text; whether this link did.
    virtual bool GetQueryContent(QStringList &lines) { (void)lines; return false; }
    // Takes a query text; whether this link did.
    virtual bool PutQueryContent(const QStringList &lines) { (void)lines; return false; }

private:
    friend class TNQueryBase;
    TNQueryBase *FQueryBase = nullptr;
};

class TNQueryBase : public QObject
{
public:
    explicit TNQueryBase(QObject *parent = nullptr);
    ~TNQueryBase() override;

    bool Active() const { return FActive; }
    // Loads the list (descendants), selects the first item when there is one.
    void Open();
    // Frees every item; ItemIndex becomes -1 without an index notification.
    void Close();

    int ItemIndex() const { return FItemIndex; }
    // ENQueryBaseError outside 0 .. count-1 (also for -1 once an item is current).
    void SetItemIndex(int index);
    // While set, no link is notified of anything.
    bool BaseUpdating() const { return FBaseUpdating; }
    void SetBaseUpdating(bool value) { FBaseUpdating = value; }

    // Takes the item; returns its index.
    int AddItem(std::unique_ptr<TNQueryItem> item);
    // A new item in the store's storage; the base store makes none.
    virtual TNQueryItem *NewQuery() { return nullptr; }
    // Frees the item. When it was the current one the index moves back only
    // when the item was one of the last two: deleting the current item in
    // front of two or more others keeps the index (now on the next item)
    // and sends no index notification.
    void DeleteQuery(int index);
    // Removes the item from the storage; the base store has none.
    virtual void EraseQuery(int index) { (void)index; }
    int IndexByName(const QString &name) const;   // without regard to case, -1 when absent
    void ClearQueries();
    TNQueryItem *GetQuery(int index) const;       // EListError outside the list
    int GetCount() const { return int(FQueries.size()); }
    TNQueryItem *GetCurrentQuery() const;         // none without a current item

    const std::vector<TNQueryBaseLink *> &Links() const { return FLinks; }
    void AddLink(TNQueryBaseLink *link);
    void DelLink(TNQueryBaseLink *link);
    // Asks the links in order for a query text until one gives it.
    bool NeedContent(QStringList &lines);
    // Offers a query text to the links in order until one takes it.
    bool GiveContent(const QStringList &lines);

    // Tell every link, in link order, unless BaseUpdating is set.
    void IndexChanged();
    void ListChanged(TQBOperation operation, int index);
    void QueryChanged(int index);

    virtual void DoBeforeOpen();
    virtual void DoAfterOpen();
    virtual void DoBeforeClose();
    virtual void DoAfterClose();
    virtual void DoBeforeScroll();
    virtual void DoAfterScroll();

    std::function<void(TNQueryBase *sender)> BeforeScroll;
    std::function<void(TNQueryBase *sender)> AfterScroll;
    std::function<void(TNQueryBase *sender)> BeforeOpen;
    std::function<void(TNQueryBase *sender)> AfterOpen;
    std::function<void(TNQueryBase *sender)> BeforeClose;
    std::function<void(TNQueryBase *sender)> AfterClose;

protected:
    // Fills the list from the storage (AddItem for each); called by Open.
    virtual void LoadQueryList() {}
    // Appends an item of the list being loaded, telling no link: Open tells
    // them once the list is complete.
    void AddLoadedItem(std::unique_ptr<TNQueryItem> item);
    void CheckIndex(int index) const;

private:
    void ForEachLink(const std::function<void(TNQueryBaseLink *)> &call);

    std::vector<TNQueryBaseLink *> FLinks;
    int FItemIndex = -1;
    bool FActive = false;
    bool FBaseUpdating = false;
    std::vector<std::unique_ptr<TNQueryItem>> FQueries;
};

} // namespace vm20
