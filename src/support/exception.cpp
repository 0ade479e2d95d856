#include "support/exception.h"

namespace vm20 {

Exception::Exception(QString message)
    : FMessage(std::move(message))
    , FUtf8(FMessage.toUtf8())
{
}

QString ListIndexErrorText(int index)
{
    return QStringLiteral("List index out of bounds (%1)").arg(index);
}

EListError EListError::IndexOutOfBounds(int index)
{
    return EListError(ListIndexErrorText(index));
}

} // namespace vm20
