#pragma once
// A metadata provider that answers from a Qt Sql connection: the database's
// tables and views, their columns typed for the model, the links its foreign
// keys describe, and the rows of the list editors' queries.
#include "model/dbinfo.h"

#include <QSqlDatabase>
#include <QString>

namespace vm20 {

class TNSqlDBInfo : public TNDBInfo
{
public:
    // Over a connection registered with QSqlDatabase::addDatabase; the
    // provider does not own it. A closed connection is opened on the first
    // request; one that cannot be opened raises ENDBInfoError.
    explicit TNSqlDBInfo(const QString &connectionName = QLatin1String(QSqlDatabase::defaultConnection),
                         QObject *parent = nullptr);
    explicit TNSqlDBInfo(const QSqlDatabase &database, QObject *parent = nullptr);

    const QString &ConnectionName() const { return FConnectionName; }
    // Switching connections forgets the cached columns (ConnectionChanged).
    void SetConnectionName(const QString &value);
    QSqlDatabase Database() const;

    // The connection exists and is open.
    bool Connected() const override;
    // PostgreSQL's own rule: names it folds or reserves are quoted.
    bool NameNeedsQuotes(const QString &name) const override;
    void ConnectionChanged() override;
    void Update() override;

    // SQLite: the attached databases ("main" first); PostgreSQL: the server's
    // databases; otherwise the connection's database name.
    void AvailableDatabases(QStringList &list) override;
    // Tables, then views, as the database lists them; system tables left out.
    void TablesByDatabase(QStringList &list) override;
    // Columns in table order; an unknown table has none.
    void FieldsByTable(const QString &tableName, TDBFieldList &list) override;
    // One line per foreign key, "T1-T2:a=b,c=d" (T1 refers to T2). Keys that
    // refer to their own table or to a table that is not listed are left out,
    // as the model has one alias per table and could not join them.
    void LinksByDatabase(QStringList &list) override;
    // Values from the first column, captions from the second (or the first
    // again when there is one column); NULL reads as an empty text.
    void GetSQLValues(const QString &sql, QStringList &values, QStringList &items) override;

private:
    // The connection, opened if need be (ENDBInfoError when impossible).
    QSqlDatabase OpenDatabase() const;

    QString FConnectionName;
};

} // namespace vm20
