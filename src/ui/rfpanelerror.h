#pragma once
// The error of the result column panel.
#include "support/exception.h"

namespace vm20 {

class ERFPanelError : public Exception
{
public:
    using Exception::Exception;
};

} // namespace vm20
