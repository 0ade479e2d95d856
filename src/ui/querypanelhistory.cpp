// The condition panel's undo and redo of user actions, and copying and
// pasting rows as query text.
#include "ui/querypanel.h"

#include "query/loadingscope.h"
#include "query/resultfield.h"
#include "support/exception.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QUndoStack>

#include <functional>
#include <utility>

namespace vm20 {

namespace {

// Rows on the clipboard under a type of their own too, so that a paste does
// not depend on what another program made of the plain text.
const QString RowsMimeType = QStringLiteral("application/x-vm20-query-rows");

// The query text without its result columns: those are the result panel's
// to undo, and a step here must not take back a change made there.
QStringList ConditionText(TNQuery &query)
{
    QStringList lines;
    query.SaveToStrings(lines);
    const qsizetype from = lines.indexOf(QStringLiteral("[RFields]"));
    if (from >= 0) {
        qsizetype to = lines.indexOf(QStringLiteral("[Row]"), from);
        if (to < 0)
            to = lines.size();
        lines.remove(from, to - from);
    }
    return lines;
}

// One batch for the observers: one Reset, one rebuild of each panel.
void LoadConditionText(TNQuery &query, const QStringList &text)
{
    QStringList columns;
    query.RFields().SaveToStrings(columns);
    {
        TLoadingScope loading(query);
        query.LoadFromStrings(text);
        query.RFields().LoadFromStrings(columns);
    }
    query.ParametersListChanged();
}

QStringList Lines(QString text)
{
    text.remove(QLatin1Char('\r'));
    return text.split(QLatin1Char('\n'));
}

// Every change of the query reaches the history: one that no user action's
// step follows is a change made in code.
class THistoryWatch : public TNQueryObserver
{
public:
    THistoryWatch(TNQuery *query, std::function<void()> changed) : FQuery(query), FChanged(std::move(changed))
    {
        FQuery->AddObserver(this);
    }
    ~THistoryWatch() override
    {
        if (FQuery)
            FQuery->RemoveObserver(this);
    }
    THistoryWatch(const THistoryWatch &) = delete;
    THistoryWatch &operator=(const THistoryWatch &) = delete;

    void RowInserted(TFilterRow *) override { FChanged(); }
    void RowRemoved(TFilterRow *) override { FChanged(); }
    void RowChanged(TFilterRow *) override { FChanged(); }
    void RowMoved(TFilterRow *, TFilterBracket *, int) override { FChanged(); }
    void TitlesChanged() override { FChanged(); }
    void Reset() override { FChanged(); }

private:
    QPointer<TNQuery> FQuery;
    std::function<void()> FChanged;
};

} // namespace

// Called before the panel observes the query: a row about to be removed is
// still the current one when the history hears of it.
void TNQueryPanel::WatchForHistory()
{
    FHistoryWatch.reset();
    FHistoryWatch = std::make_unique<THistoryWatch>(FQuery, [this] {
        if (FHistory && !FDestroying)
            FHistory->Changed();
    });
}

TQueryHistory &TNQueryPanel::History()
{
    if (!FHistory) {
        FHistory = std::make_unique<TQueryHistory>(TQueryHistory::TAccess{
            [this] { return ConditionText(*FQuery); },
            [this](const QStringList &text) { Restore(text); },
            [this] { return CurrentRowNum(); },
            [this](int rowNum) {
                if (rowNum >= 0)
                    SetCurrentRow(FQuery->GetRowByNum(qMin(rowNum, FQuery->GetRowCount() - 1)));
            }});
    }
    return *FHistory;
}

void TNQueryPanel::HistoryRestart()
{
    if (FHistory)
        FHistory->Restart();
}

void TNQueryPanel::HistorySync()
{
    if (!FDestroying && FQuery)
        History().Sync();
}

void TNQueryPanel::Restore(const QStringList &text)
{
    LoadConditionText(*FQuery, text);
}

QUndoStack *TNQueryPanel::UndoStack() const
{
    return const_cast<TNQueryPanel *>(this)->History().Stack();
}

void TNQueryPanel::RecordUndoStep()
{
    History().Record();
}

// A step loads a text the model must still read; without one the panel has
// no rows to go back to.
void TNQueryPanel::Undo()
{
    if (FReadOnly || !FQuery->DBStruct() || !History().Undo())
        return;
    if (!FInsideEventHandler)
        FQuery->QueryChanged();
}

void TNQueryPanel::Redo()
{
    if (FReadOnly || !FQuery->DBStruct() || !History().Redo())
        return;
    if (!FInsideEventHandler)
        FQuery->QueryChanged();
}

void TNQueryPanel::CopyCurrentRow()
{
    if (!FCurrentRow)
        return;
    QStringList lines;
    FQuery->SaveRowToStrings(FCurrentRow, lines);
    const QString text = lines.join(QLatin1Char('\n'));
    auto *data = new QMimeData;
    data->setText(text);
    data->setData(RowsMimeType, text.toUtf8());
    QGuiApplication::clipboard()->setMimeData(data);
}

bool TNQueryPanel::PasteRows()
{
    FPasteError.clear();
    if (FReadOnly)
        return false;
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    const QString text = !data                              ? QString()
                         : data->hasFormat(RowsMimeType) ? QString::fromUtf8(data->data(RowsMimeType))
                                                            : data->text();
    TFilterBracket *bracket = FQuery->Filter();
    int index = bracket->GetRowCount();
    if (FCurrentRow && FCurrentRow->Parent()) {
        bracket = FCurrentRow->Parent();
        index = FCurrentRow->IndexInParent() + 1;
    }
    std::vector<TFilterRow *> pasted;
    try {
        pasted = FQuery->InsertRowsFromStrings(bracket, index, Lines(text));
    } catch (const Exception &error) {
        FPasteError = error.Message();
        return false;
    }
    if (pasted.empty())
        return false;
    SetCurrentRow(pasted.front());
    NotifyChange();
    return true;
}

} // namespace vm20
