// The condition panel's current row and current control, and its keyboard.
#include "ui/querypanel.h"

namespace vm20 {

} // namespace vm20
