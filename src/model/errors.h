#pragma once
// The model's, the provider's, the store's and the panel's errors: each
// carries a code local to the unit that raises it.
#include "support/exception.h"

#include <QVariant>

#include <initializer_list>

namespace vm20 {

class ENVellumError : public Exception
{
public:
    ENVellumError(int code, const QString &message);
    // Fills %s / %d of `message` with `args` in order.
    ENVellumError(int code, const QString &message, std::initializer_list<QVariant> args);
    int ErrorCode() const { return FErrorCode; }

private:
    int FErrorCode;
};

class ENDBStructError : public ENVellumError
{
public:
    using ENVellumError::ENVellumError;
};

class ENDBInfoError : public ENVellumError
{
public:
    using ENVellumError::ENVellumError;
};

class ENQueryBaseError : public ENVellumError
{
public:
    using ENVellumError::ENVellumError;
};

class ENQueryPanelError : public ENVellumError
{
public:
    using ENVellumError::ENVellumError;
};

// Codes of ENDBStructError.
enum TDBStructErrorCode {
    dbseInvalidTableIndex = 1,
    dbseInvalidLinkIndex = 2,
    dbseInvalidOperatorIndex = 3,
    dbseNoTable = 4,
    dbseNoPath = 5,
    dbseOperatorNotFound = 6,
    dbseAssignVirtFldName = 7,
    dbseAssignExpr = 8,
    dbseCantFindSection = 9,
    dbseCantFindFieldInTbl = 10,
    dbseDbInfoNotSpecified = 11,
    dbseInvalidLinkText = 12,
    dbseInvalidXml = 13   // a model XML document the reader cannot take
};

} // namespace vm20
