// The condition panel's undo and redo of user actions, and copying and
// pasting rows as query text.
#include "ui/querypanel.h"

namespace vm20 {

QUndoStack *TNQueryPanel::UndoStack() const
{
    return nullptr;
}

void TNQueryPanel::Undo()
{
}

void TNQueryPanel::Redo()
{
}

void TNQueryPanel::CopyCurrentRow()
{
}

void TNQueryPanel::PasteRows()
{
}

void TNQueryPanel::RecordUndoStep()
{
}

} // namespace vm20
