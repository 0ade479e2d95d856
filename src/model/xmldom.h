#pragma once
// Reading helpers over the DOM of a model XML document. Element and attribute
// names are compared without regard to letter case (and namespace prefix), so
// documents written by other tools in other spellings are taken as well.
#include <QDomElement>
#include <QList>
#include <QString>
#include <QVariant>

#include <initializer_list>

namespace vm20 {

// Raises ENDBStructError (dbseInvalidXml) with the message filled from `args`.
[[noreturn]] void XmlFail(const QString &message, std::initializer_list<QVariant> args);

// The first child element of that name, or a null element.
QDomElement XmlChild(const QDomElement &parent, const QString &name);
// Every child element of that name, in document order.
QList<QDomElement> XmlChildren(const QDomElement &parent, const QString &name);
bool XmlIsNamed(const QDomElement &element, const QString &name);
bool XmlHasChildElements(const QDomElement &element);
// The name without its namespace prefix.
QString XmlLocalName(const QDomElement &element);

// The attribute's value; false when the element has no such attribute.
bool XmlFindAttr(const QDomElement &element, const QString &name, QString &value);
QString XmlAttr(const QDomElement &element, const QString &name, const QString &defaultValue = QString());
// Raises when the attribute is missing, naming the element and its line.
QString XmlRequiredAttr(const QDomElement &element, const QString &name);
// A decimal integer; raises for any other text, the default when missing.
int XmlIntAttr(const QDomElement &element, const QString &name, int defaultValue);
// "1"/"0", true/false, yes/no; raises for any other text, the default when missing.
bool XmlBoolAttr(const QDomElement &element, const QString &name, bool defaultValue);

} // namespace vm20
