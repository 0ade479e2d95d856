// The result column panel's undo and redo: each step holds the column list's
// text before and after one change the panel reported.
#include "ui/resultfieldspanel.h"

#include "query/resultfield.h"

#include <QKeyEvent>
#include <QUndoStack>

namespace vm20 {

TQueryHistory &TNResultFieldsPanel::History()
{
    if (!FHistory) {
        FHistory = std::make_unique<TQueryHistory>(TQueryHistory::TAccess{
            [this] {
                QStringList lines;
                if (FResultFields)
                    FResultFields->SaveToStrings(lines);
                return lines;
            },
            [this](const QStringList &text, const QStringList &) {
                // The list sends one Reset, on which the rows are built anew.
                if (FResultFields)
                    FResultFields->LoadFromStrings(text);
            },
            [this] { return FCurrentRow ? FCurrentRow->RowIndex() : -1; },
            [this](int index) {
                if (index >= 0 && RowCount() > 0)
                    SetCurrentRow(Row(qMin(index, RowCount() - 1)));
            }});
    }
    return *FHistory;
}

// A new list starts a new history; a list reset in code starts one only when
// it no longer reads as the history's last state.
void TNResultFieldsPanel::HistorySync(bool restart)
{
    if (restart)
        History().Restart();
    else
        History().Sync();
}

QUndoStack *TNResultFieldsPanel::UndoStack()
{
    return History().Stack();
}

void TNResultFieldsPanel::Undo()
{
    if (FResultFields && History().Undo())
        Changed();
}

void TNResultFieldsPanel::Redo()
{
    if (FResultFields && History().Redo())
        Changed();
}

bool TNResultFieldsPanel::HistoryKey(QKeyEvent *event)
{
    const Qt::KeyboardModifiers mods = event->modifiers() & (Qt::ControlModifier | Qt::ShiftModifier);
    const bool undo = event->key() == Qt::Key_Z && mods == Qt::ControlModifier;
    const bool redo = (event->key() == Qt::Key_Z && mods == (Qt::ControlModifier | Qt::ShiftModifier))
                      || (event->key() == Qt::Key_Y && mods == Qt::ControlModifier);
    if (!undo && !redo)
        return false;
    RunGuarded([&] { undo ? Undo() : Redo(); });
    event->accept();
    return true;
}

} // namespace vm20
