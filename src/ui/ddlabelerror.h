#pragma once
// The error of the drop-down labels and their pop-up menu.
#include "support/exception.h"

namespace vm20 {

class EDDLabelError : public Exception
{
public:
    using Exception::Exception;
};

} // namespace vm20
