#include "database.h"

#include "providers/dburl.h"

namespace vm20::cli {

TDatabase::TDatabase(const QString &url) : FDatabase(OpenDatabaseUrl(url, true))
{
}

TDatabase::~TDatabase()
{
    CloseDatabase(FDatabase);
}

} // namespace vm20::cli
