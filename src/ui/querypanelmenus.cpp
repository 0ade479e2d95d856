// The condition panel's editing by the user: its menus, the mouse, and the
// labels wired back into the query.
#include "ui/querypanel.h"

namespace vm20 {

void TNQueryPanel::SetReadOnly(bool value)
{
    if (FReadOnly == value)
        return;
    FReadOnly = value;
    viewport()->update();
}

} // namespace vm20
