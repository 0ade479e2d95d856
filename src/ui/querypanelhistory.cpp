// The condition panel's undo and redo of user actions, and copying and
// pasting rows as query text.
#include "ui/querypanel.h"

namespace vm20 {

void TNQueryPanel::RecordUndoStep()
{
}

} // namespace vm20
