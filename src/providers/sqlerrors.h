#pragma once
// Codes and texts of the errors the Qt Sql provider raises (ENDBInfoError).
#include <QString>

namespace vm20 {

enum TDBInfoErrorCode {
    dbieNoConnection = 1,
    dbieCannotOpen = 2,
    dbieQueryFailed = 3,
    dbieBadUrl = 4,
    dbieNotOneSelect = 5,
    dbieNoColumns = 6
};

inline const QString SNoConnection = QStringLiteral("No database connection named \"%s\"");
inline const QString SCannotOpen = QStringLiteral("Can not open database \"%s\": %s");
inline const QString SQueryFailed = QStringLiteral("Query failed: %s\n%s");
inline const QString SUnsupportedUrl = QStringLiteral(
    "Unsupported database URL \"%s\": expected sqlite:PATH or postgresql://USER@HOST:PORT/DATABASE");
inline const QString SNotOneSelect = QStringLiteral(
    "Refused to run a statement that is not one SELECT: %s");
inline const QString SNoColumns = QStringLiteral(
    "The database lists table \"%s\" but shows none of its columns; check the user's privileges");
inline const QString SBadUrlParameter = QStringLiteral(
    "Database URL parameter \"%s\" is not supported: %s");
inline const QString SNoDatabaseFile = QStringLiteral("Database file \"%s\" does not exist");

} // namespace vm20
