#pragma once
// One named query of a store. Its text lives in the store's storage
// (LoadContent, SaveContent of descendants); Load hands it to a linked query,
// Save takes it from one.
#include <QString>
#include <QStringList>

namespace vm20 {

class TNQueryBase;

class TNQueryItem
{
public:
    explicit TNQueryItem(const QString &queryName = QString());
    virtual ~TNQueryItem();
    TNQueryItem(const TNQueryItem &) = delete;
    TNQueryItem &operator=(const TNQueryItem &) = delete;

    const QString &QueryName() const { return FQueryName; }
    void SetQueryName(const QString &value);
    const QStringList &Description() const { return FDescription; }
    void SetDescription(const QStringList &value);
    // The owning store; none until the item is added to one.
    TNQueryBase *QueryBase() const { return FQueryBase; }

    // The text from the storage to the first linked query that takes it.
    // ENQueryBaseError "Query base is not specified" without a store.
    void Load();
    // The text of the first linked query that gives one, into the storage;
    // with no query giving one the storage is left as it was.
    void Save();
    // Tells the store's links that this item changed.
    void Changed();
    // Whether a linked query gave its text.
    bool TakeContent(QStringList &lines);
    void GiveContent(const QStringList &lines);

    // The storage: the base item keeps nothing.
    virtual void LoadContent(QStringList &lines) { lines.clear(); }
    virtual void SaveContent(const QStringList &lines) { (void)lines; }

private:
    friend class TNQueryBase;
    void CheckQueryBase() const;

    QString FQueryName;
    QStringList FDescription;
    TNQueryBase *FQueryBase = nullptr;
};

} // namespace vm20
