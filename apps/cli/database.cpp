#include "database.h"

#include "providers/dburl.h"
#include "support/exception.h"

#include <QSqlError>
#include <QSqlQuery>

namespace vm20::cli {

TDatabase::TDatabase(const QString &url) : FDatabase(OpenDatabaseUrl(url, true))
{
    // SQLite opens any file and only complains at the first statement; ask
    // now, so that a file that is no database is not taken for an empty one.
    if (FDatabase.driverName() == QLatin1String("QSQLITE")) {
        QSqlQuery probe(FDatabase);
        if (!probe.exec(QStringLiteral("SELECT COUNT(*) FROM sqlite_master"))) {
            const QString message = probe.lastError().databaseText();
            probe = QSqlQuery();
            CloseDatabase(FDatabase);
            throw Exception(QStringLiteral("Can not read database \"%1\": %2").arg(url, message));
        }
    }
}

TDatabase::~TDatabase()
{
    CloseDatabase(FDatabase);
}

} // namespace vm20::cli
