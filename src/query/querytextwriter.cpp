// Writing a query as text: the titles (when asked for), [Main],
// [Description], [UserData], the result columns, then the condition tree
// depth first, one section per row named by the row's identifier.
#include "query/query.h"

#include "model/dscondition.h"
#include "model/dsfield.h"
#include "model/dsoperator.h"
#include "model/dstable.h"
#include "query/querytextfile.h"
#include "query/valueformat.h"
#include "support/exception.h"
#include "support/nstrings.h"

#include <QHash>

#include <functional>

namespace vm20 {

namespace {

// A query of thousands of rows writes a line per key: lines that are the
// same in most rows ("Param1=0", "Value2=") share one string, the others take
// one allocation each.
struct TKey
{
    explicit TKey(const char *name) : Bare(QLatin1String(name) + QLatin1Char('='))
    {
        for (int i = 0; i < SmallCount; ++i)
            Small[i] = Bare + QString::number(i);
    }
    QString operator()(const QString &value) const
    {
        if (value.isEmpty())
            return Bare;
        QString line;
        line.reserve(Bare.size() + value.size());
        line.append(Bare).append(value);
        return line;
    }
    // Row types, link types and option sets are small numbers: their lines
    // are shared too.
    QString operator()(int value) const
    {
        return value >= 0 && value < SmallCount ? Small[value] : (*this)(QString::number(value));
    }
    static constexpr int SmallCount = 10;
    QString Bare;
    QString Small[SmallCount];
};

// The two lines of a 0/1 key.
struct TFlagKey
{
    explicit TFlagKey(const char *name)
        : Off(QLatin1String(name) + QLatin1String("=0")), On(QLatin1String(name) + QLatin1String("=1"))
    {
    }
    const QString &operator()(bool value) const { return value ? On : Off; }
    QString Off;
    QString On;
};

QString SectionLine(const QString &id)
{
    QString line;
    line.reserve(id.size() + 5);
    line.append(QLatin1String("[Row")).append(id).append(QLatin1Char(']'));
    return line;
}

void WriteBracketSection(const QString &id, bool isEnabled, TFilterLinkType link, int count, QStringList &lines)
{
    static const TFlagKey enabled("Enabled");
    static const QString bracketType = QStringLiteral("RowType=1");
    static const TKey linkType("LinkType"), rowCount("RowCount");
    lines << SectionLine(id) << enabled(isEnabled) << bracketType << linkType(int(link)) << rowCount(count)
          << QString();
}

void WriteBracket(const TFilterBracket &bracket, const QString &id, QStringList &lines)
{
    WriteBracketSection(id, bracket.Enabled(), bracket.LinkType(), bracket.GetRowCount(), lines);
}

// The lines naming a row's field, operator or model condition, one string
// per model object: thousands of rows use a few dozen of them, and sharing
// keeps a large query's text compact in memory.
class TModelLines
{
public:
    const QString &Line(const void *object, const TKey &key, const std::function<QString()> &value)
    {
        auto it = FLines.find(object);
        if (it == FLines.end())
            it = FLines.insert(object, key(value()));
        return it.value();
    }

private:
    QHash<const void *, QString> FLines;
};

// Both value slots are written whatever the operator uses, so that a value
// survives switching to an operator with fewer values and back.
void WriteCondition(const TFilterCond &condition, const QString &id, QStringList &lines,
                    TModelLines &modelLines)
{
    static const TKey rowType("RowType"), fieldID("FieldID"), condID("CondID"), op("Operator"),
        subQuery("SubQuery"), subQueryOptions("SubQueryOptions");
    static const TKey values[] = {TKey("Value1"), TKey("Value2")};
    static const TKey captions[] = {TKey("Caption1"), TKey("Caption2")};
    static const TKey formats[] = {TKey("VFormat1"), TKey("VFormat2")};
    static const TFlagKey enabled("Enabled");
    static const TFlagKey params[] = {TFlagKey("Param1"), TFlagKey("Param2")};

    const auto *simple = dynamic_cast<const TSimpleCond *>(&condition);
    const auto *custom = dynamic_cast<const TCustomCond *>(&condition);
    lines << SectionLine(id) << rowType(int(condition.RowType())) << enabled(condition.Enabled());
    // 0 is no model ID: a condition without field or model condition.
    if (simple) {
        const TDSField *field = simple->Field();
        lines << (field ? modelLines.Line(field, fieldID, [field] { return QString::number(field->ID()); })
                        : fieldID(0));
    } else if (custom) {
        const TDSCondition *model = custom->Condition();
        lines << (model ? modelLines.Line(model, condID, [model] { return QString::number(model->ID()); })
                        : condID(0));
    }
    lines << params[0](condition.GetValueIsParam(1)) << params[1](condition.GetValueIsParam(2));
    if (simple) {
        const TDSOperator *oper = simple->Operator();
        lines << (oper ? modelLines.Line(oper, op, [oper] { return oper->Name(); }) : op(QString()));
    }
    QString value1;
    QString value2;
    SaveValues(condition, value1, value2);
    lines << values[0](value1) << values[1](value2);
    for (int i = 0; i < 2; ++i) {
        if (condition.GetValueIsParam(i + 1)) {
            const TSQLParam *param = condition.GetParam(i + 1);
            lines << formats[i](param ? param->ValueFormat() : QString());
        } else {
            lines << captions[i](condition.GetValueCaption(i + 1));
        }
    }
    lines << subQuery(ListToCommaText(condition.SubQuery()))
          << subQueryOptions(SQLOptionsToInt(condition.SubQueryOptions())) << QString();
}

// Pre-order walk of one row's sub-tree with an explicit stack: trees may
// nest deeper than the call stack would allow.
void WriteSubTree(const TFilterRow &first, const QString &firstID, QStringList &lines, TModelLines &modelLines)
{
    struct Frame
    {
        const TFilterBracket *bracket;
        QString id;
        int next;
    };
    if (!first.IsBracket()) {
        WriteCondition(static_cast<const TFilterCond &>(first), firstID, lines, modelLines);
        return;
    }
    const auto &firstBracket = static_cast<const TFilterBracket &>(first);
    WriteBracket(firstBracket, firstID, lines);
    std::vector<Frame> stack{{&firstBracket, firstID, 0}};
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
            WriteCondition(static_cast<const TFilterCond &>(*row), id, lines, modelLines);
        }
    }
}

void WriteTree(const TFilterBracket &root, QStringList &lines)
{
    TModelLines modelLines;
    WriteSubTree(root, QString(), lines, modelLines);
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
    lines << QStringLiteral("[Main]") << TKey("QueryName")(FQueryName)
          << TKey("Version")(XFloatToStr(QueryTextVersion))
          << TKey("Options")(FSaveSQLOptions ? QString::number(SQLOptionsToInt(FSQLOptions)) : QString());
    // A main table other than the model's default (one read from a FROM
    // clause) is kept; older readers skip the key and use the default.
    const TDSTable *main = FDBStruct && !FMainTableName.isEmpty() ? FDBStruct->TableByName(3, FMainTableName)
                                                                   : nullptr;
    if (main && main != FDBStruct->DefaultMainTable())
        lines << TKey("MainTable")(main->CompoundName());
    lines << QString();
    lines << QStringLiteral("[Description]") << FDescription << QString();
    lines << QStringLiteral("[UserData]") << FUserData << QString();
    RFields().SaveToStrings(lines);
    // A condition writes about fourteen lines.
    lines.reserve(lines.size() + 14 * qsizetype(GetRowCount()) + 6);
    WriteTree(*FFilter, lines);
}

void TNQuery::SaveRowToStrings(const TFilterRow *row, QStringList &lines)
{
    if (!row || row->Query() != this)
        throw Exception(QStringLiteral("The row to save is not a row of this query"));
    TSavingScope saving(FSaving);
    lines.clear();
    lines << QStringLiteral("[Main]") << TKey("Version")(XFloatToStr(QueryTextVersion)) << QString();
    // The root stands for all its rows; any other row goes under a root of
    // its own that keeps its parent's link type, so the text also loads as a
    // whole query reading as the row did where it was.
    if (row->IsBracket() && static_cast<const TFilterBracket *>(row)->IsRoot()) {
        WriteTree(*FFilter, lines);
        return;
    }
    WriteBracketSection(QString(), true, row->Parent()->LinkType(), 1, lines);
    TModelLines modelLines;
    WriteSubTree(*row, QStringLiteral("1."), lines, modelLines);
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
