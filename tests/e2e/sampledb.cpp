#include "sampledb.h"

#include "clirunner.h"
#include "providers/dburl.h"
#include "support/exception.h"

#include <QDate>
#include <QDateTime>
#include <QFile>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTime>

#include <cmath>

namespace e2e {

const char *EngineName(TEngine engine)
{
    return engine == TEngine::SQLite ? "SQLite" : "PostgreSQL";
}

QString SampleDbUrl(TEngine engine)
{
    if (engine == TEngine::SQLite)
        return QStringLiteral("sqlite:" VM20_BINARY_DIR "/examples/shop.sqlite");
    const QString overridden = qEnvironmentVariable("VM20_PG_URL");
    if (!overridden.isEmpty())
        return overridden;
    QFile file(QStringLiteral(VM20_PGSERVER_STATE "/url"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).trimmed();
}

QString FormatsFile(TEngine engine)
{
    return Examples(engine == TEngine::SQLite ? QStringLiteral("sqlite.formats")
                                              : QStringLiteral("postgresql.formats"));
}

std::unique_ptr<vm20::TNDBStructure> LoadShopModel(TEngine engine)
{
    auto model = std::make_unique<vm20::TNDBStructure>();
    model->LoadFromFile(Examples(QStringLiteral("shop.model")));
    vm20::TSQLFormats &formats = model->SQLFormats();
    formats.SetDate(QStringLiteral("yyyy-mm-dd"));
    formats.SetTime(QStringLiteral("hh:nn:ss"));
    formats.SetDateTime(QStringLiteral("yyyy-mm-dd hh:nn:ss"));
    const bool sqlite = engine == TEngine::SQLite;
    formats.SetTrueValue(sqlite ? QStringLiteral("1") : QStringLiteral("TRUE"));
    formats.SetFalseValue(sqlite ? QStringLiteral("0") : QStringLiteral("FALSE"));
    formats.SetQuoteBool(false);
    return model;
}

TSampleDb::TSampleDb(TEngine engine)
{
    const QString url = SampleDbUrl(engine);
    if (url.isEmpty()) {
        FError = QStringLiteral("the PostgreSQL test server is not running (ctest starts it through "
                                "tests/pgserver/pgserver.sh; see the output of vm20_pgserver_start), "
                                "or set VM20_PG_URL");
        return;
    }
    try {
        FDatabase = vm20::OpenDatabaseUrl(url, true);
    } catch (const vm20::Exception &e) {
        FError = e.Message();
    }
}

TSampleDb::~TSampleDb()
{
    if (FDatabase.isValid())
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

namespace {

QString Comparable(const QVariant &value)
{
    if (value.isNull())
        return QStringLiteral("<null>");
    switch (value.metaType().id()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double: {
        const double number = value.toDouble();
        const double rounded = std::round(number * 10000.0) / 10000.0;
        return QString::number(rounded == 0.0 ? 0.0 : rounded, 'f', 4);
    }
    case QMetaType::QDate:
        return value.toDate().toString(Qt::ISODate);
    case QMetaType::QTime:
        return value.toTime().toString(QStringLiteral("hh:mm:ss"));
    case QMetaType::QDateTime:
        return value.toDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    default:
        return value.toString();
    }
}

} // namespace

QStringList ComparableRows(QSqlDatabase &database, const QString &sql)
{
    QSqlQuery query(database);
    query.setForwardOnly(true);
    if (!query.exec(sql))
        return {QStringLiteral("<error> ") + query.lastError().text()};
    QStringList rows;
    while (query.next()) {
        QStringList values;
        for (int i = 0; i < query.record().count(); ++i)
            values << Comparable(query.value(i));
        rows << values.join(QLatin1String(" | "));
    }
    rows.sort();
    return rows;
}

} // namespace e2e
