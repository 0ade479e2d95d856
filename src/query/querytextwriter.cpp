// Writing a query as text: the titles (when asked for), [Main],
// [Description], [UserData], the result columns, then the condition tree
// depth first, one section per row named by the row's identifier.
#include "query/query.h"

#include "model/dscondition.h"
#include "model/dsfield.h"
#include "model/dsoperator.h"
#include "query/querytextfile.h"
#include "query/valueformat.h"
#include "support/nstrings.h"

namespace vm20 {

namespace {

QString Key(const char *name, const QString &value)
{
    return QLatin1String(name) + QLatin1Char('=') + value;
}

QString IndexedKey(const char *name, int index, const QString &value)
{
    return QLatin1String(name) + QString::number(index) + QLatin1Char('=') + value;
}

void WriteBracket(const TFilterBracket &bracket, const QString &id, QStringList &lines)
{
    lines << QStringLiteral("[Row") + id + QLatin1Char(']')
          << Key("Enabled", XBoolToStr(bracket.Enabled()))
          << Key("RowType", QString::number(int(frtBracket)))
          << Key("LinkType", QString::number(int(bracket.LinkType())))
          << Key("RowCount", QString::number(bracket.GetRowCount()))
          << QString();
}

// Both value slots are written whatever the operator uses, so that a value
// survives switching to an operator with fewer values and back.
void WriteCondition(const TFilterCond &condition, const QString &id, QStringList &lines)
{
    const auto *simple = dynamic_cast<const TSimpleCond *>(&condition);
    const auto *custom = dynamic_cast<const TCustomCond *>(&condition);
    lines << QStringLiteral("[Row") + id + QLatin1Char(']')
          << Key("RowType", QString::number(int(condition.RowType())))
          << Key("Enabled", XBoolToStr(condition.Enabled()));
    // 0 is no model ID: a condition without field or model condition.
    if (simple)
        lines << Key("FieldID", QString::number(simple->Field() ? simple->Field()->ID() : 0));
    else if (custom)
        lines << Key("CondID", QString::number(custom->Condition() ? custom->Condition()->ID() : 0));
    lines << Key("Param1", XBoolToStr(condition.GetValueIsParam(1)))
          << Key("Param2", XBoolToStr(condition.GetValueIsParam(2)));
    if (simple)
        lines << Key("Operator", simple->Operator() ? simple->Operator()->Name() : QString());
    QString value1;
    QString value2;
    SaveValues(condition, value1, value2);
    lines << Key("Value1", value1) << Key("Value2", value2);
    for (int i = 1; i <= 2; ++i) {
        if (condition.GetValueIsParam(i)) {
            const TSQLParam *param = condition.GetParam(i);
            lines << IndexedKey("VFormat", i, param ? param->ValueFormat() : QString());
        } else {
            lines << IndexedKey("Caption", i, condition.GetValueCaption(i));
        }
    }
    lines << Key("SubQuery", ListToCommaText(condition.SubQuery()))
          << Key("SubQueryOptions", QString::number(SQLOptionsToInt(condition.SubQueryOptions())))
          << QString();
}

// Pre-order walk with an explicit stack: trees may nest deeper than the
// call stack would allow.
void WriteTree(const TFilterBracket &root, QStringList &lines)
{
    struct Frame
    {
        const TFilterBracket *bracket;
        QString id;
        int next;
    };
    WriteBracket(root, QString(), lines);
    std::vector<Frame> stack{{&root, QString(), 0}};
    while (!stack.empty()) {
        Frame &top = stack.back();
        if (top.next >= top.bracket->GetRowCount()) {
            stack.pop_back();
            continue;
        }
        const TFilterRow *row = top.bracket->Rows()[std::size_t(top.next)].get();
        ++top.next;
        QString id = top.id + QString::number(top.next) + QLatin1Char('.');
        if (row->IsBracket()) {
            const auto *bracket = static_cast<const TFilterBracket *>(row);
            WriteBracket(*bracket, id, lines);
            stack.push_back({bracket, std::move(id), 0});
        } else {
            WriteCondition(static_cast<const TFilterCond &>(*row), id, lines);
        }
    }
}

class TSavingScope
{
public:
    explicit TSavingScope(int &counter) : FCounter(counter) { ++FCounter; }
    ~TSavingScope() { --FCounter; }
    TSavingScope(const TSavingScope &) = delete;
    TSavingScope &operator=(const TSavingScope &) = delete;

private:
    int &FCounter;
};

} // namespace

void TNQuery::SaveToStrings(QStringList &lines)
{
    TSavingScope saving(FSaving);
    lines.clear();
    if (FSaveTitles)
        lines << FTitles.Lines() << QString();
    lines << QStringLiteral("[Main]")
          << Key("QueryName", FQueryName)
          << Key("Version", XFloatToStr(QueryTextVersion))
          << Key("Options", FSaveSQLOptions ? QString::number(SQLOptionsToInt(FSQLOptions)) : QString())
          << QString();
    lines << QStringLiteral("[Description]") << FDescription << QString();
    lines << QStringLiteral("[UserData]") << FUserData << QString();
    RFields().SaveToStrings(lines);
    WriteTree(*FFilter, lines);
}

void TNQuery::SaveToFile(const QString &fileName)
{
    QStringList lines;
    SaveToStrings(lines);
    WriteQueryTextFile(fileName, lines);
}

void TNQuery::SaveValues(const TFilterCond &condition, QString &value1, QString &value2) const
{
    vm20::SaveValues(condition, value1, value2);
}

} // namespace vm20
