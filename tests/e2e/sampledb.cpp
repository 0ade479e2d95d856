#include "sampledb.h"

#include "clirunner.h"
#include "providers/dburl.h"

#include <QSqlError>
#include <QSqlQuery>

namespace e2e {

std::unique_ptr<vm20::TNDBStructure> LoadShopModel()
{
    auto model = std::make_unique<vm20::TNDBStructure>();
    model->LoadFromFile(Examples(QStringLiteral("shop.model")));
    vm20::TSQLFormats &formats = model->SQLFormats();
    formats.SetDate(QStringLiteral("yyyy-mm-dd"));
    formats.SetTime(QStringLiteral("hh:nn:ss"));
    formats.SetDateTime(QStringLiteral("yyyy-mm-dd hh:nn:ss"));
    formats.SetTrueValue(QStringLiteral("1"));
    formats.SetFalseValue(QStringLiteral("0"));
    formats.SetQuoteBool(false);
    return model;
}

TSampleDb::TSampleDb() : FDatabase(vm20::OpenDatabaseUrl(SampleDbUrl(), true))
{
}

TSampleDb::~TSampleDb()
{
    vm20::CloseDatabase(FDatabase);
}

QString ExecutionError(QSqlDatabase &database, const QString &sql, int maxRows)
{
    QSqlQuery query(database);
    query.setForwardOnly(true);
    if (!query.exec(sql))
        return query.lastError().text();
    for (int i = 0; i < maxRows && query.next(); ++i) {
    }
    return query.lastError().isValid() ? query.lastError().text() : QString();
}

} // namespace e2e
