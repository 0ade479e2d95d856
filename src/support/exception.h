#pragma once
// Root of every error the library raises, and the two runtime errors that
// several layers share (conversion and list index).
#include <QByteArray>
#include <QString>

#include <exception>

namespace vm20 {

class Exception : public std::exception
{
public:
    explicit Exception(QString message);
    const QString &Message() const { return FMessage; }
    const char *what() const noexcept override { return FUtf8.constData(); }

private:
    QString FMessage;
    QByteArray FUtf8;
};

// Raised when a text cannot be converted to a number, date or Boolean.
class EConvertError : public Exception
{
public:
    using Exception::Exception;
};

// Raised for an index outside a list: "List index out of bounds (%d)".
class EListError : public Exception
{
public:
    using Exception::Exception;
    static EListError IndexOutOfBounds(int index);
};

QString ListIndexErrorText(int index);

} // namespace vm20
