#pragma once
// Query files: the lines of a query text as UTF-8, one line per text line.
// Reading accepts "\n" and "\r\n" line ends and a leading byte-order mark.
#include <QString>
#include <QStringList>

namespace vm20 {

// Raises vm20::Exception "Cannot open file ..." when the file cannot be read.
QStringList ReadQueryTextFile(const QString &fileName);
// Raises vm20::Exception "Cannot create file ..." when the file cannot be written.
void WriteQueryTextFile(const QString &fileName, const QStringList &lines);

} // namespace vm20
