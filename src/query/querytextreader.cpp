// Reading a query text back. Sections are read in the order they were
// written, each read continuing where the previous one ended, so a text is
// read in one pass; the rows are numbered once, when first asked for after
// the load.
#include "query/loadingscope.h"
#include "query/query.h"

#include "model/dbstructure.h"
#include "query/querytextfile.h"
#include "query/valueformat.h"
#include "support/exception.h"
#include "support/nstrings.h"

#include <exception>

namespace vm20 {

namespace {

[[noreturn]] void InvalidValue(const char *key, const QString &text)
{
    throw EConvertError(Format(QStringLiteral("'%s' is not a valid %s value"),
                               {text, QLatin1String(key)}));
}

class TQueryTextReader
{
public:
    TQueryTextReader(TNQuery &query, const QStringList &lines)
        : FQuery(query), FModel(*query.DBStruct()), FLines(lines)
    {
    }

    void Run()
    {
        if (FQuery.SaveTitles())
            ReadTitles();
        ReadMain();
        FQuery.Description().clear();
        if (ReadSection(QStringLiteral("Description")))
            FQuery.Description() = FValues;
        if (ReadSection(QStringLiteral("UserData")))
            FQuery.UserData() = FValues;
        ReadResultFields();
        ReadRows(FQuery.Filter());
    }

    // Only the rows, into a bracket out of the tree; the query's own
    // settings stay as they are. A text without rows is no query text.
    void RunRows(TFilterBracket *root)
    {
        FVersion = ReadSection(QStringLiteral("Main")) ? XStrToFloat(Value(QStringLiteral("Version")), 1.1) : 1.1;
        if (!HasSection(QStringLiteral("Row")))
            throw EConvertError(QStringLiteral("The text is not a query text: it has no [Row] section"));
        ReadRows(root);
    }

private:
    struct TBracketFrame
    {
        TFilterBracket *bracket;
        QString id;
        int rowCount;
        int next;
        TFilterLinkType linkType;
    };

    // Reads the next section of that name; a missing one leaves the position
    // where it was and reads as no lines.
    bool ReadSection(const QString &name)
    {
        const int next = XReadSLSectionValues(FPos, FLines, name, FValues);
        if (next < 0)
            return false;
        FPos = next;
        return true;
    }

    bool HasSection(const QString &name) const
    {
        QStringList values;
        return XReadSLSectionValues(FPos, FLines, name, values) >= 0;
    }

    QString Value(const QString &key) const { return ValueOf(FValues, key); }
    int StrictInt(const QString &key) const { return StrToInt(Value(key)); }

    // The version the query had before this load decides the titles' form:
    // the text's own version comes later, in [Main].
    void ReadTitles()
    {
        if (FQuery.Version() < 2.2) {
            if (ReadSection(QStringLiteral("Titles")) && !FValues.isEmpty())
                FQuery.LoadOldTitlesFromStrings(FValues);
            return;
        }
        // The titles are the lines in front of [Main]; each key=text line
        // replaces (or adds) that title, the rest of the store stays.
        int main = -1;
        QString name;
        for (int i = 0; i < int(FLines.size()) && main < 0; ++i)
            if (IsSectionHeader(FLines.at(i), &name) && SameText(name, QStringLiteral("Main")))
                main = i;
        if (main < 0)
            return;
        for (int i = 0; i < main; ++i) {
            const QString &line = FLines.at(i);
            if (!IsSectionHeader(line) && line.contains(QLatin1Char('=')))
                FQuery.SetTitle(NameOfLine(line), ValueOfLine(line));
        }
        FPos = main;
    }

    // A text cut short would otherwise load as a query without its columns
    // or conditions: the query lists what is missing.
    void Incomplete(const QString &what) { FQuery.AddLoadProblem(TUnresolvedItem::ukQueryText, what); }

    void ReadMain()
    {
        if (!ReadSection(QStringLiteral("Main")))
            Incomplete(QStringLiteral("no [Main] section"));
        FQuery.SetQueryName(Value(QStringLiteral("QueryName")));
        FVersion = XStrToFloat(Value(QStringLiteral("Version")), 1.1);
        FQuery.SetVersion(FVersion);
        const QString options = Value(QStringLiteral("Options"));
        if (FQuery.SaveSQLOptions() && !options.isEmpty())
            FQuery.SetSQLOptions(IntToSQLOptions(StrToInt(options)));
        // Written only for a main table other than the model's default; texts
        // without it keep the query's own setting.
        const QString mainTable = Value(QStringLiteral("MainTable"));
        if (mainTable.isEmpty())
            return;
        const TDSTable *table = FModel.TableByName(3, mainTable);
        if (!table)
            table = FModel.TableByName(0, mainTable);
        if (table)
            FQuery.SetMainTableName(table->CompoundName());
        else
            FQuery.AddLoadProblem(TUnresolvedItem::ukTable, QStringLiteral("MainTable=") + mainTable);
    }

    void ReadResultFields()
    {
        QStringList header;
        const bool present = XReadSLSectionValues(FPos, FLines, QStringLiteral("RFields"), header) >= 0;
        FPos = FQuery.RFields().LoadFromStrings(FLines, FPos);
        const int count = XStrToInt(ValueOf(header, QStringLiteral("Count")));
        if (present && FQuery.RFields().Count() < count)
            Incomplete(QStringLiteral("%1 of %2 result columns").arg(FQuery.RFields().Count()).arg(count));
    }

    TBracketFrame ReadBracket(TFilterBracket *bracket, const QString &id)
    {
        bracket->SetEnabled(StrictInt(QStringLiteral("Enabled")) != 0);
        const int rowCount = StrictInt(QStringLiteral("RowCount"));
        const QString linkText = Value(QStringLiteral("LinkType"));
        const int linkType = StrToInt(linkText);
        if (linkType < 0 || linkType >= FilterLinkTypeCount)
            InvalidValue("LinkType", linkText);
        return {bracket, id, rowCount, 0, TFilterLinkType(linkType)};
    }

    // Depth first with an explicit stack, as the rows were written.
    void ReadRows(TFilterBracket *root)
    {
        if (!ReadSection(QStringLiteral("Row"))) {
            Incomplete(QStringLiteral("no [Row] section"));
            return;
        }
        const QString rootType = Value(QStringLiteral("RowType"));
        if (StrToInt(rootType) != frtBracket)
            InvalidValue("RowType", rootType);
        std::vector<TBracketFrame> stack{ReadBracket(root, QString())};
        while (!stack.empty()) {
            TBracketFrame &top = stack.back();
            if (top.next >= top.rowCount) {
                top.bracket->SetLinkType(top.linkType);
                stack.pop_back();
                continue;
            }
            ++top.next;
            const QString id = top.id + QString::number(top.next) + QLatin1Char('.');
            ReadSection(QStringLiteral("Row") + id);
            const QString typeText = Value(QStringLiteral("RowType"));
            switch (StrToInt(typeText)) {
            case frtBracket: {
                TFilterBracket *bracket = top.bracket->AddNewBracket();
                stack.push_back(ReadBracket(bracket, id));   // `top` is gone from here on
                break;
            }
            case frtSimpleCondition:
                ReadCondition(ReadSimpleCond(top.bracket));
                break;
            case frtCustomCondition: {
                TDSCondition *model = FModel.ConditionByID(StrictInt(QStringLiteral("CondID")));
                TCustomCond *condition = top.bracket->AddCustomCond(model);
                if (!model)
                    FQuery.SetRowSource(condition, QStringLiteral("CondID=") + Value(QStringLiteral("CondID")));
                ReadCondition(condition);
                break;
            }
            default:
                InvalidValue("RowType", typeText);
            }
        }
    }

    TSimpleCond *ReadSimpleCond(TFilterBracket *bracket)
    {
        TSimpleCond *condition = bracket->AddCond();
        TDSField *field = nullptr;
        const QString fieldKey = FVersion < 2.0 ? QStringLiteral("FldName") : QStringLiteral("FieldID");
        if (FVersion < 2.0)
            field = FModel.FieldByName(FVersion < 1.4 ? 2 : 3, Value(fieldKey));
        else
            field = FModel.FieldByID(XStrToInt(Value(fieldKey)));
        condition->SetField(field);
        TDSOperator *op = FModel.OperatorByName(Value(QStringLiteral("Operator")));
        condition->SetOperator(op);
        QStringList missing;
        if (!field)
            missing << fieldKey + QLatin1Char('=') + Value(fieldKey);
        if (!op)
            missing << QStringLiteral("Operator=") + Value(QStringLiteral("Operator"));
        if (!missing.isEmpty())
            FQuery.SetRowSource(condition, missing.join(QStringLiteral(", ")));
        return condition;
    }

    void ReadCondition(TFilterCond *condition)
    {
        condition->SetEnabled(StrictInt(QStringLiteral("Enabled")) != 0);
        // The parameter marks first: a value then goes to its parameter.
        condition->SetValueIsParam(1, XStrToBool(Value(QStringLiteral("Param1"))));
        condition->SetValueIsParam(2, XStrToBool(Value(QStringLiteral("Param2"))));
        LoadValues(Value(QStringLiteral("Value1")), Value(QStringLiteral("Value2")), *condition);
        for (int i = 1; i <= 2; ++i)
            if (TSQLParam *param = condition->GetParam(i); param && condition->GetValueIsParam(i))
                param->SetValueFormat(Value(QStringLiteral("VFormat%1").arg(i)));
        const QString subQuery = Value(QStringLiteral("SubQuery"));
        condition->SetSubQuery(subQuery.isEmpty() ? QStringList() : ComposeCommaText(subQuery));
        // A sub-query value's hint shows the statement it stands for.
        for (int i = 1; i <= 2; ++i)
            if (condition->GetValueKind(i) == vkSubQuery)
                condition->SetValueHint(i, condition->GetValue(i));
        condition->SetSubQueryOptions(
            IntToSQLOptions(XStrToInt(Value(QStringLiteral("SubQueryOptions")))));
        // Captions as stored; a text without them keeps the ones the values gave.
        for (int i = 1; i <= 2; ++i) {
            const QString key = QStringLiteral("Caption%1").arg(i);
            if (!condition->GetValueIsParam(i) && HasName(FValues, key))
                condition->SetValueCaption(i, Value(key));
        }
    }

    TNQuery &FQuery;
    const TNCustomDBStructure &FModel;
    const QStringList &FLines;
    QStringList FValues;
    int FPos = 0;
    double FVersion = 0;
};

} // namespace

void TNQuery::LoadFromStrings(const QStringList &lines)
{
    CheckIfDBStructAssigned();
    std::exception_ptr failure;
    {
        TLoadingScope loading(*this);
        ClearAll();
        try {
            if (!lines.isEmpty())
                TQueryTextReader(*this, lines).Run();
        } catch (...) {
            failure = std::current_exception();
        }
        // Half a query is worse than none.
        if (failure)
            ClearAll();
    }
    ParametersListChanged();
    if (failure)
        std::rethrow_exception(failure);
}

std::vector<TFilterRow *> TNQuery::InsertRowsFromStrings(TFilterBracket *bracket, int index,
                                                         const QStringList &lines)
{
    CheckIfDBStructAssigned();
    if (!bracket)
        bracket = FFilter.get();
    if (bracket->Query() != this || (bracket != FFilter.get() && bracket->RowNum() < 0))
        throw Exception(QStringLiteral("The rows can only go into a bracket of this query's tree"));
    if (index < 0 || index > bracket->GetRowCount())
        throw EListError::IndexOutOfBounds(index);
    // The rows are read into a bracket outside the tree, with nobody told,
    // and go in only once the whole text has been read: a text that fails
    // halfway leaves the query as it was.
    TFilterBracket holder(this);
    try {
        ++FUpdating;
        BeginLoading();
        TQueryTextReader(*this, lines).RunRows(&holder);
        EndLoading();
        --FUpdating;
    } catch (...) {
        EndLoading();
        --FUpdating;
        for (const auto &row : holder.Rows())
            ForgetRowSources(row.get());
        throw;
    }
    std::vector<TFilterRow *> inserted;
    inserted.reserve(std::size_t(holder.GetRowCount()));
    while (holder.GetRowCount() > 0)
        inserted.push_back(bracket->InsertRow(index + int(inserted.size()), holder.TakeRow(0)));
    ParametersListChanged();
    return inserted;
}

void TNQuery::LoadFromFile(const QString &fileName)
{
    LoadFromStrings(ReadQueryTextFile(fileName));
}

void TNQuery::LoadValues(const QString &value1, const QString &value2, TFilterCond &condition)
{
    vm20::LoadValues(value1, value2, condition);
}

} // namespace vm20
