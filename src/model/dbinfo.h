#pragma once
// The metadata provider: the model asks it for database, table and column
// names, the links the database knows, and the rows of an SQL query. The base
// answers each request through an event the application handles; a subclass
// for a data-access library overrides the virtual fallbacks instead.
#include "model/fieldtype.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

namespace vm20 {

class TDBFieldInfo
{
public:
    TDBFieldInfo() = default;
    TDBFieldInfo(const QString &name, int size, TFieldType type)
        : FFieldName(name), FFieldSize(size), FFieldType(type) {}

    const QString &FieldName() const { return FFieldName; }
    void SetFieldName(const QString &value) { FFieldName = value; }
    int FieldSize() const { return FFieldSize; }
    void SetFieldSize(int value) { FFieldSize = value; }
    TFieldType FieldType() const { return FFieldType; }
    void SetFieldType(TFieldType value) { FFieldType = value; }
    void Assign(const TDBFieldInfo &source) { *this = source; }

private:
    QString FFieldName;
    int FFieldSize = 0;
    TFieldType FFieldType = ftUnknown;
};

// The columns of one table.
class TDBFieldList
{
public:
    int Count() const { return int(FItems.size()); }
    TDBFieldInfo *Items(int index) const;   // EListError outside the list
    TDBFieldInfo *Add(const QString &name, int size, TFieldType type);
    void Delete(int index);
    void Clear() { FItems.clear(); }
    // Compared without regard to case; none when absent.
    TDBFieldInfo *FindByName(const QString &name) const;
    void CopyTo(TDBFieldList &dest) const;

    // "Count=n", then "F<i>Name=", "F<i>Size=", "F<i>Type=" (type name) per column.
    void SaveToStrings(QStringList &lines) const;
    // Missing keys read as empty / 0; an unknown type name as TFieldType(-1).
    // A count beyond the number of lines is cut to it.
    void LoadFromStrings(const QStringList &lines);
    QByteArray GetText() const;
    void SetText(const QByteArray &text);

private:
    std::vector<std::unique_ptr<TDBFieldInfo>> FItems;
};

class TNDBInfo : public QObject
{
public:
    using TDBNamesRequestEvent = std::function<void(TNDBInfo *sender, QStringList &dbNames)>;
    using TTablesRequestEvent = std::function<void(TNDBInfo *sender, QStringList &tableList)>;
    using TLinksRequestEvent = std::function<void(TNDBInfo *sender, QStringList &links)>;
    using TFieldsRequestEvent =
        std::function<void(TNDBInfo *sender, const QString &tableName, TDBFieldList &fieldList)>;
    using TGetSQLValueEvent = std::function<void(TNDBInfo *sender, const QString &sql,
                                                 QStringList &values, QStringList &captions)>;

    explicit TNDBInfo(QObject *parent = nullptr);
    ~TNDBInfo() override;

    TDBNamesRequestEvent OnDBNamesRequest;
    TTablesRequestEvent OnTablesRequest;
    TFieldsRequestEvent OnFieldsRequest;
    TLinksRequestEvent OnLinksRequest;
    TGetSQLValueEvent OnGetSQLValues;

    // Whether the provider can answer now.
    virtual bool Connected() const { return true; }
    // Whether a table or column name must be quoted to reach it in SQL; by
    // default when it is not a plain identifier. Engines that fold unquoted
    // names to one case, or reserve words, say more.
    virtual bool NameNeedsQuotes(const QString &name) const;
    const QString &CurrentDBName() const { return FCurrentDBName; }
    // A different name is stored and reported to DatabaseChanged.
    void SetCurrentDBName(const QString &value);
    // The full-name pattern that suits the provider's database.
    const QString &TableNameFormat() const { return FTableNameFormat; }
    void SetTableNameFormat(const QString &value) { FTableNameFormat = value; }
    // The columns of the table asked for last, and that table's name.
    TDBFieldList &Fields() { return FFields; }
    const QString &FieldsTableName() const { return FFieldsTableName; }

    // Each request fires its event, or calls the virtual fallback when the
    // event is unassigned.
    void GetDatabaseNames(QStringList &list);
    void GetTableNames(QStringList &list);
    void GetLinkList(QStringList &list);
    // Asks only when `tableName` differs (exactly) from the table asked for
    // last; the list belongs to the provider and is refilled by the next call
    // for another table.
    TDBFieldList &GetFieldList(const QString &tableName);
    // Forgets the remembered table so the next GetFieldList asks again.
    void ResetFieldList();
    void RunQuery(const QString &sql, QStringList &values, QStringList &items);
    void GetFieldNamesByTable(const QString &tableName, QStringList &list);

    QString GetDatabaseNamesAsText();
    QString GetTableNamesAsText();
    QString GetLinksAsText();
    QString GetFieldsAsText(const QString &tableName);

    // The provider's own cached description (the base keeps none).
    virtual void LoadInfo(const QStringList &lines);
    virtual void SaveInfo(QStringList &lines) const;
    QString GetInfoText() const;

    // Notifications for subclasses after the application changed the connection.
    virtual void Update() {}
    virtual void ConnectionChanged() {}

    // The event-firing forms: true when a handler was called.
    bool DoDBNamesRequest(QStringList &list);
    bool DoTablesRequest(QStringList &list);
    bool DoLinksRequest(QStringList &list);
    bool DoFieldsRequest(const QString &tableName, TDBFieldList &list);
    bool DoGetSQLValues(const QString &sql, QStringList &values, QStringList &items);

    // The fallbacks used when the matching event is unassigned (the base
    // answers nothing).
    virtual void AvailableDatabases(QStringList &list);
    virtual void TablesByDatabase(QStringList &list);
    virtual void LinksByDatabase(QStringList &list);
    virtual void FieldsByTable(const QString &tableName, TDBFieldList &list);
    virtual void GetSQLValues(const QString &sql, QStringList &values, QStringList &items);

protected:
    virtual void DatabaseChanged() {}

private:
    TDBFieldList FFields;
    QString FFieldsTableName;
    bool FFieldsValid = false;
    QString FCurrentDBName;
    QString FTableNameFormat;
};

} // namespace vm20
