#include "ui/queryhistory.h"

#include <QScopedValueRollback>
#include <QTimer>
#include <QUndoCommand>
#include <QUndoStack>

#include <utility>

namespace vm20 {

namespace {

// A large query's text is some fourteen lines per row: a bounded history
// keeps an editing session's memory bounded too.
constexpr int UndoLimit = 100;

} // namespace

class TQueryHistory::TStep : public QUndoCommand
{
public:
    TStep(TQueryHistory &history, QStringList before, int positionBefore, QStringList after, int positionAfter)
        : FHistory(history), FBefore(std::move(before)), FAfter(std::move(after)),
          FPositionBefore(positionBefore < 0 ? positionAfter : positionBefore),
          FPositionAfter(positionAfter < 0 ? positionBefore : positionAfter)
    {
    }
    // Pushing a step runs redo: the state is already the one after.
    void redo() override
    {
        if (std::exchange(FPushed, true))
            FHistory.Apply(FAfter, FPositionAfter);
    }
    void undo() override { FHistory.Apply(FBefore, FPositionBefore); }

private:
    TQueryHistory &FHistory;
    QStringList FBefore;
    QStringList FAfter;
    // Where the user was when the action began and where it left them (the
    // nearest row when that one is gone).
    int FPositionBefore;
    int FPositionAfter;
    bool FPushed = false;
};

TQueryHistory::TQueryHistory(TAccess access)
    : FAccess(std::move(access)), FStack(std::make_unique<QUndoStack>())
{
    FStack->setUndoLimit(UndoLimit);
    Restart();
}

TQueryHistory::~TQueryHistory() = default;

void TQueryHistory::Record()
{
    if (FRestoring)
        return;
    const int before = std::exchange(FUnrecorded, false) ? FActionStart : FPosition;
    QStringList now = FAccess.Save();
    FPosition = FAccess.Current();
    if (now == FState)
        return;
    FStack->push(new TStep(*this, FState, before, now, FPosition));
    FState = std::move(now);
}

void TQueryHistory::Changed()
{
    if (FRestoring)
        return;
    // The first change of an action: the user is still where it began.
    if (!std::exchange(FUnrecorded, true))
        FActionStart = FAccess.Current();
    if (std::exchange(FSettlePending, true))
        return;
    QTimer::singleShot(0, FStack.get(), [this] {
        FSettlePending = false;
        if (std::exchange(FUnrecorded, false))
            Sync();
    });
}

void TQueryHistory::Restart()
{
    RestartFrom(FAccess.Save());
}

// A large query's text takes a while to write: it is written once per check.
void TQueryHistory::RestartFrom(QStringList state)
{
    FStack->clear();
    FState = std::move(state);
    FPosition = FAccess.Current();
}

void TQueryHistory::Sync()
{
    if (FRestoring)
        return;
    if (QStringList now = FAccess.Save(); now != FState)
        RestartFrom(std::move(now));
}

bool TQueryHistory::StillCurrent()
{
    QStringList now = FAccess.Save();
    if (now == FState)
        return true;
    RestartFrom(std::move(now));
    return false;
}

bool TQueryHistory::Undo()
{
    if (FRestoring || !FStack->canUndo() || !StillCurrent())
        return false;
    FStack->undo();
    return true;
}

bool TQueryHistory::Redo()
{
    if (FRestoring || !FStack->canRedo() || !StillCurrent())
        return false;
    FStack->redo();
    return true;
}

void TQueryHistory::Apply(const QStringList &text, int position)
{
    const QScopedValueRollback restoring(FRestoring, true);
    FAccess.Load(text, FState);
    FState = text;
    FPosition = position;
    FAccess.SetCurrent(position);
}

} // namespace vm20
