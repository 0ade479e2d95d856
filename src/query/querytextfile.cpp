#include "query/querytextfile.h"

#include "support/exception.h"
#include "support/nstrings.h"

#include <QFile>
#include <QSaveFile>

namespace vm20 {

QStringList ReadQueryTextFile(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        throw Exception(Format(QStringLiteral("Cannot open file \"%s\". %s"),
                               {fileName, file.errorString()}));
    QByteArray data = file.readAll();
    if (data.startsWith("\xEF\xBB\xBF"))
        data.remove(0, 3);
    if (data.isEmpty())
        return {};
    QStringList lines = QString::fromUtf8(data).split(QLatin1Char('\n'));
    // A final line break ends the last line rather than starting another.
    if (lines.last().isEmpty())
        lines.removeLast();
    for (QString &line : lines)
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
    return lines;
}

void WriteQueryTextFile(const QString &fileName, const QStringList &lines)
{
    QByteArray data;
    for (const QString &line : lines) {
        data += line.toUtf8();
        data += '\n';
    }
    // Written aside and renamed, so that a failed save keeps the old file.
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(data) != data.size() || !file.commit())
        throw Exception(Format(QStringLiteral("Cannot create file \"%s\". %s"),
                               {fileName, file.errorString()}));
}

} // namespace vm20
