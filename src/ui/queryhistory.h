#pragma once
// Undo and redo by snapshots: a step holds the whole text of what it covers
// before and after one user action, and going back or forth loads one of
// the two. Loading a text restores the state exactly, whatever the action
// did, and consecutive steps share their texts.
#include <QStringList>

#include <functional>
#include <memory>

class QUndoStack;

namespace vm20 {

class TQueryHistory
{
public:
    struct TAccess
    {
        std::function<QStringList()> Save;
        // `from` is the state the history last saw, normally the present
        // one: a load may change only what differs.
        std::function<void(const QStringList &text, const QStringList &from)> Load;
        // The position the user is at (a row number, -1 for none), and
        // putting the user back there.
        std::function<int()> Current;
        std::function<void(int position)> SetCurrent;
    };

    explicit TQueryHistory(TAccess access);
    ~TQueryHistory();
    TQueryHistory(const TQueryHistory &) = delete;
    TQueryHistory &operator=(const TQueryHistory &) = delete;

    QUndoStack *Stack() const { return FStack.get(); }
    // One step from the state the history last saw to the state as it now
    // stands; none when the two read the same.
    void Record();
    // Forgets every step: the state as it now stands is where undo stops.
    void Restart();
    // After a change made in code: steps that could only load a state that is
    // gone are forgotten, unless the state still reads as the history's.
    void Sync();
    // The state changed. Unless a step is recorded before control returns
    // to the event loop, the change was made in code, not by a user action,
    // and the history starts over from it (see Sync).
    void Changed();
    // False, and nothing is loaded, without a step to go to or when the
    // state was changed in code since the last step (the history then starts
    // over from it).
    bool Undo();
    bool Redo();
    // True while a step loads its text: what the load itself reports is no
    // user action.
    bool Restoring() const { return FRestoring; }

private:
    class TStep;
    void Apply(const QStringList &text, int position);
    void RestartFrom(QStringList state);
    bool StillCurrent();

    TAccess FAccess;
    std::unique_ptr<QUndoStack> FStack;
    QStringList FState;
    int FPosition = -1;
    bool FRestoring = false;
    bool FUnrecorded = false;
    int FActionStart = -1;
    bool FSettlePending = false;
};

} // namespace vm20
