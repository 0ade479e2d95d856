// The condition panel's undo and redo of user actions, and copying and
// pasting rows as query text.
#include "ui/querypanel.h"

#include "query/loadingscope.h"
#include "query/resultfield.h"
#include "support/exception.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QScopedValueRollback>
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

// A condition text cut at its top-level rows: the lines before the root's
// section, the root's section, and each top-level row with its sub-tree.
struct TTopRows
{
    QStringList Head;
    QStringList Root;
    std::vector<QStringList> Rows;
};

bool IsTopRowHeader(const QString &line)
{
    if (!line.startsWith(QLatin1String("[Row")) || !line.endsWith(QLatin1String(".]")))
        return false;
    return line.indexOf(QLatin1Char('.')) == line.size() - 2;
}

bool SplitTopRows(const QStringList &lines, TTopRows &parts)
{
    const qsizetype root = lines.indexOf(QStringLiteral("[Row]"));
    if (root < 0)
        return false;
    parts.Head = lines.mid(0, root);
    qsizetype i = root;
    while (i < lines.size() && !IsTopRowHeader(lines.at(i)))
        parts.Root << lines.at(i++);
    while (i < lines.size()) {
        QStringList row{lines.at(i++)};
        while (i < lines.size() && !IsTopRowHeader(lines.at(i)))
            row << lines.at(i++);
        parts.Rows.push_back(std::move(row));
    }
    return true;
}

// Two top-level rows read the same wherever they stand: section names are
// compared without the row's own number.
bool SameRow(const QStringList &a, const QStringList &b)
{
    if (a.size() != b.size())
        return false;
    for (qsizetype i = 0; i < a.size(); ++i) {
        const QString &x = a.at(i);
        const QString &y = b.at(i);
        if (x.startsWith(QLatin1String("[Row")) && y.startsWith(QLatin1String("[Row"))) {
            if (QStringView(x).mid(x.indexOf(QLatin1Char('.'))) != QStringView(y).mid(y.indexOf(QLatin1Char('.'))))
                return false;
        } else if (x != y) {
            return false;
        }
    }
    return true;
}

bool SameRoot(const QStringList &a, const QStringList &b)
{
    const auto withoutCount = [](QStringList lines) {
        lines.removeIf([](const QString &line) { return line.startsWith(QLatin1String("RowCount=")); });
        return lines;
    };
    return withoutCount(a) == withoutCount(b);
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
            [this](const QStringList &text, const QStringList &from) { Restore(text, from); },
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

void TNQueryPanel::Restore(const QStringList &text, const QStringList &from)
{
    if (!RestoreChangedRows(text, from))
        LoadConditionText(*FQuery, text);
}

// A step mostly changes a few top-level rows: only those are replaced, and
// the panel rebuilds only their views. False when more than rows differ or
// the query was not in the state `from` (the caller then loads the whole
// text).
bool TNQueryPanel::RestoreChangedRows(const QStringList &text, const QStringList &from)
{
    TTopRows target;
    TTopRows now;
    if (!SplitTopRows(text, target) || !SplitTopRows(from, now) || target.Head != now.Head
        || !SameRoot(target.Root, now.Root) || int(now.Rows.size()) != FQuery->Filter()->GetRowCount())
        return false;
    std::size_t first = 0;
    while (first < now.Rows.size() && first < target.Rows.size() && SameRow(now.Rows[first], target.Rows[first]))
        ++first;
    std::size_t last = 0;   // rows alike at the end
    while (last < now.Rows.size() - first && last < target.Rows.size() - first
           && SameRow(now.Rows[now.Rows.size() - 1 - last], target.Rows[target.Rows.size() - 1 - last]))
        ++last;
    const int removed = int(now.Rows.size() - first - last);
    const int added = int(target.Rows.size() - first - last);
    QStringList rows = target.Head;
    for (const QString &line : target.Root)
        rows << (line.startsWith(QLatin1String("RowCount=")) ? QStringLiteral("RowCount=%1").arg(added) : line);
    for (int i = 0; i < added; ++i)
        for (const QString &line : target.Rows[first + std::size_t(i)])
            rows << (line.startsWith(QLatin1String("[Row"))
                         ? QStringLiteral("[Row%1").arg(i + 1) + line.mid(line.indexOf(QLatin1Char('.')))
                         : line);
    try {
        for (int i = 0; i < removed; ++i)
            FQuery->Filter()->DeleteRow(int(first));
        if (added > 0)
            FQuery->InsertRowsFromStrings(FQuery->Filter(), int(first), rows);
    } catch (const Exception &) {
        return false;
    }
    // Whatever went differently, the whole text puts it right.
    return ConditionText(*FQuery) == text;
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
    if (!FReadOnly && FQuery->DBStruct() && History().Undo())
        HistoryChangeEvent();
}

void TNQueryPanel::Redo()
{
    if (!FReadOnly && FQuery->DBStruct() && History().Redo())
        HistoryChangeEvent();
}

// The host hears of an undo or redo as of any change; a change its handler
// makes is one made in code.
void TNQueryPanel::HistoryChangeEvent()
{
    if (FInsideEventHandler)
        return;
    const QScopedValueRollback inside(FInsideEventHandler, true);
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
