#pragma once
// The design panel's own error: raised for an operation the panel's state
// cannot carry out (no model, a table window that is not the panel's).
#include "support/exception.h"

namespace vm20 {

class EStructureDesignError : public Exception
{
public:
    using Exception::Exception;
};

} // namespace vm20
