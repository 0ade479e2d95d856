#pragma once
// The curated shop model with the SQL formats of the sample SQLite database
// (as examples/sqlite.formats sets them), and the sample database itself.
#include "model/dbstructure.h"

#include <QSqlDatabase>
#include <QString>

#include <memory>

namespace e2e {

std::unique_ptr<vm20::TNDBStructure> LoadShopModel();

// Opens the sample database read-only for the life of the object.
class TSampleDb
{
public:
    TSampleDb();
    ~TSampleDb();
    TSampleDb(const TSampleDb &) = delete;
    TSampleDb &operator=(const TSampleDb &) = delete;
    QSqlDatabase &Get() { return FDatabase; }

private:
    QSqlDatabase FDatabase;
};

// Executes `sql` and steps through at most `maxRows` rows: empty when the
// database took it, else the database's message.
QString ExecutionError(QSqlDatabase &database, const QString &sql, int maxRows = 20);

} // namespace e2e
