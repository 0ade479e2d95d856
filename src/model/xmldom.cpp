#include "model/xmldom.h"

#include "model/errors.h"
#include "support/nstrings.h"

#include <QDomNamedNodeMap>

namespace vm20 {

namespace {

QString LocalPart(const QString &name)
{
    const qsizetype colon = name.lastIndexOf(QLatin1Char(':'));
    return colon < 0 ? name : name.mid(colon + 1);
}

bool SameName(const QString &a, const QString &b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

} // namespace

void XmlFail(const QString &message, std::initializer_list<QVariant> args)
{
    throw ENDBStructError(dbseInvalidXml, message, args);
}

QString XmlLocalName(const QDomElement &element)
{
    return LocalPart(element.tagName());
}

bool XmlIsNamed(const QDomElement &element, const QString &name)
{
    return SameName(XmlLocalName(element), name);
}

QDomElement XmlChild(const QDomElement &parent, const QString &name)
{
    for (QDomElement child = parent.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
        if (XmlIsNamed(child, name))
            return child;
    return QDomElement();
}

QList<QDomElement> XmlChildren(const QDomElement &parent, const QString &name)
{
    QList<QDomElement> result;
    for (QDomElement child = parent.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
        if (XmlIsNamed(child, name))
            result.append(child);
    return result;
}

bool XmlHasChildElements(const QDomElement &element)
{
    return !element.firstChildElement().isNull();
}

bool XmlFindAttr(const QDomElement &element, const QString &name, QString &value)
{
    const QDomNamedNodeMap attributes = element.attributes();
    for (int i = 0; i < attributes.length(); ++i) {
        const QDomNode attribute = attributes.item(i);
        if (SameName(LocalPart(attribute.nodeName()), name)) {
            value = attribute.nodeValue();
            return true;
        }
    }
    return false;
}

QString XmlAttr(const QDomElement &element, const QString &name, const QString &defaultValue)
{
    QString value;
    return XmlFindAttr(element, name, value) ? value : defaultValue;
}

QString XmlRequiredAttr(const QDomElement &element, const QString &name)
{
    QString value;
    if (!XmlFindAttr(element, name, value))
        XmlFail(QStringLiteral("Element \"%s\" at line %d has no attribute \"%s\""),
                {element.tagName(), element.lineNumber(), name});
    return value;
}

int XmlIntAttr(const QDomElement &element, const QString &name, int defaultValue)
{
    QString text;
    if (!XmlFindAttr(element, name, text))
        return defaultValue;
    bool ok = false;
    const int value = text.trimmed().toInt(&ok);
    if (!ok)
        XmlFail(QStringLiteral("Attribute \"%s\" of element \"%s\" at line %d is not an integer: \"%s\""),
                {name, element.tagName(), element.lineNumber(), text});
    return value;
}

bool XmlBoolAttr(const QDomElement &element, const QString &name, bool defaultValue)
{
    QString text;
    if (!XmlFindAttr(element, name, text))
        return defaultValue;
    // Two lenient reads with opposite defaults agree only on a Boolean text.
    const bool value = XStrToBool(text, false);
    if (value != XStrToBool(text, true))
        XmlFail(QStringLiteral("Attribute \"%s\" of element \"%s\" at line %d is not a Boolean: \"%s\""),
                {name, element.tagName(), element.lineNumber(), text});
    return value;
}

} // namespace vm20
