#include "model/errors.h"

#include "support/nstrings.h"

namespace vm20 {

ENVellumError::ENVellumError(int code, const QString &message)
    : Exception(message)
    , FErrorCode(code)
{
}

ENVellumError::ENVellumError(int code, const QString &message, std::initializer_list<QVariant> args)
    : Exception(Format(message, args))
    , FErrorCode(code)
{
}

} // namespace vm20
