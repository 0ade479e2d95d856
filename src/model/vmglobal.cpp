#include "model/vmglobal.h"

#include "support/nstrings.h"

namespace vm20 {

namespace {

int IndexOfName(const QString &name, std::initializer_list<const char *> names)
{
    int i = 0;
    for (const char *candidate : names) {
        if (SameText(name, QLatin1String(candidate)))
            return i;
        ++i;
    }
    return -1;
}

} // namespace

QString FldKindToStr(TNFieldKind kind)
{
    switch (kind) {
    case nfkData: return QStringLiteral("nfkData");
    case nfkVirtual: return QStringLiteral("nfkVirtual");
    }
    return QString();
}

TNFieldKind StrToFldKind(const QString &name)
{
    return TNFieldKind(IndexOfName(name, {"nfkData", "nfkVirtual"}));
}

QString ValueKindToStr(TValueKind kind)
{
    switch (kind) {
    case vkScalar: return QStringLiteral("vkScalar");
    case vkList: return QStringLiteral("vkList");
    case vkSubQuery: return QStringLiteral("vkSubQuery");
    }
    return QString();
}

TValueKind StrToValueKind(const QString &name)
{
    return TValueKind(IndexOfName(name, {"vkScalar", "vkList", "vkSubQuery"}));
}

QByteArray GetStringsAsAnsiChar(const QStringList &lines)
{
    QByteArray text;
    for (const QString &line : lines) {
        text += line.toUtf8();
        text += '\n';
    }
    return text;
}

QStringList SplitAnsiText(const QByteArray &text)
{
    QStringList lines = QString::fromUtf8(text).split(QLatin1Char('\n'));
    // A final line break ends the last line rather than starting an empty one.
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    for (QString &line : lines)
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
    return lines;
}

} // namespace vm20
