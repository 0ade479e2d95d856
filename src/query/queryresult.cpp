#include "query/queryresult.h"

#include "model/dbstructure.h"
#include "model/dsfield.h"
#include "model/dslink.h"
#include "model/dstable.h"
#include "model/errors.h"
#include "model/messages.h"
#include "query/filtercond.h"
#include "query/query.h"
#include "support/exception.h"
#include "support/nstrings.h"

#include <QRegularExpression>

#include <algorithm>

namespace vm20 {

namespace {

// TOP and LIMIT come from the host's options, not from the model: only row
// counts in the forms the dialects know may pass, or they could add columns
// or statements.
QString CheckedRowCount(const QString &clause, bool top)
{
    static const QRegularExpression topForm(
        QStringLiteral(R"(^\s*(\d+|\(\s*\d+\s*\))(\s+PERCENT)?(\s+WITH\s+TIES)?\s*$)"),
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression limitForm(QStringLiteral(R"(^\s*\d+\s*((,|\bOFFSET\b)\s*\d+\s*)?$)"),
                                              QRegularExpression::CaseInsensitiveOption);
    if (!(top ? topForm : limitForm).match(clause).hasMatch())
        throw EConvertError(Format(top ? QStringLiteral("'%s' is not a valid TOP clause")
                                       : QStringLiteral("'%s' is not a valid LIMIT clause"),
                                   {clause}));
    return clause;
}

const QString CRLF = QStringLiteral("\r\n");
const QString FromIndent = QStringLiteral("     ");
const QString JoinLineIndent = QStringLiteral("   ");

bool HasNonAsciiCharacter(const QString &text)
{
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c.unicode() >= 128; });
}

} // namespace

// --- TRTableList -------------------------------------------------------------------

TResultTable *TRTableList::Items(int index) const
{
    if (index < 0 || index >= Count())
        throw EListError::IndexOutOfBounds(index);
    return FItems[std::size_t(index)].get();
}

TResultTable *TRTableList::Add(TDSTable *table, TDSLink *link)
{
    FItems.push_back(std::make_unique<TResultTable>(table, link));
    if (!FIndex.contains(table))
        FIndex.insert(table, Count() - 1);
    return FItems.back().get();
}

TResultTable *TRTableList::Find(const QString &name) const
{
    for (const auto &item : FItems)
        if (item->Table() && SameText(item->Table()->TableName(), name))
            return item.get();
    return nullptr;
}

int TRTableList::IndexOf(const TDSTable *table) const
{
    return FIndex.value(table, -1);
}

void TRTableList::Delete(int index)
{
    if (index < 0 || index >= Count())
        throw EListError::IndexOutOfBounds(index);
    FItems.erase(FItems.begin() + index);
    FIndex.clear();
    for (int i = 0; i < Count(); ++i)
        if (!FIndex.contains(FItems[std::size_t(i)]->Table()))
            FIndex.insert(FItems[std::size_t(i)]->Table(), i);
}

void TRTableList::Clear()
{
    FItems.clear();
    FIndex.clear();
}

void TRTableList::ResetAll()
{
    for (auto &item : FItems)
        item->SetUsed(false);
}

// --- TQueryResult: pieces ---------------------------------------------------------------

TQueryResult::TQueryResult(TNQuery *query)
    : FQuery(query)
{
    FRFields.SetQueryPanel(query);
}

TQueryResult::~TQueryResult() = default;

void TQueryResult::ClearPieces()
{
    FResultTables.Clear();
    FWhereLines.clear();
    FGroupByText.clear();
    FHavingText.clear();
    FOrderByText.clear();
    FSQLLines.clear();
    FJoinsInWhere = false;
}

QString TQueryResult::AdjustCondition(const QString &text) const
{
    if (FSQLOptions.contains(soBracketConditions))
        return QLatin1Char('(') + text + QLatin1Char(')');
    return text;
}

void TQueryResult::AddCondition(const QString &text)
{
    FWhereLines.append(AdjustCondition(text));
}

void TQueryResult::AddHavingCondition(const QString &text)
{
    FHavingText += QLatin1Char(' ') + AdjustCondition(text);
}

void TQueryResult::AddTableFilterCondition(TDSTable *table, const QString &text)
{
    TNTableFilterList &filters = FQuery->TableFilters();
    TNTableFilter *filter = filters.FindByTable(table);
    if (!filter)
        filter = filters.Add(table);
    QString value = filter->Filter();
    if (!value.isEmpty())
        value += QStringLiteral(" AND ");
    filter->SetFilter(value + text);
}

// --- TQueryResult: the statement ---------------------------------------------------------

QString TQueryResult::GetSelectClause()
{
    if (FSQLOptions.contains(soASCIIRFields)) {
        for (int i = 0; i < FRFields.Count(); ++i) {
            TResultField *field = FRFields.GetRField(i);
            if (HasNonAsciiCharacter(field->Alias()))
                field->SetAlias(QStringLiteral("C%1").arg(i + 1));
        }
    }
    QString text = FSQLOptions.contains(soSelectDistinct) ? QStringLiteral("SELECT DISTINCT ")
                                                         : QStringLiteral("SELECT ");
    const QString top = FQuery ? FQuery->SQLTopClause() : QString();
    if (!top.isEmpty())
        text += QStringLiteral(" TOP ") + CheckedRowCount(top, true) + QLatin1Char(' ');
    if (!FRFields.JustSorting() && FRFields.Count() > 0) {
        QStringList columns;
        columns.reserve(FRFields.Count());
        for (const auto &field : FRFields.Items())
            columns.append(field->GetSelectExpr());
        text += columns.join(QStringLiteral(", "));
    } else {
        text += QLatin1Char('*');
    }
    return text;
}

QString TQueryResult::GetFromClause()
{
    if (FResultTables.Count() == 0)
        throw ENQueryPanelError(qpeQueryWasNotBuilt, SQPEQueryWasNotBuilt);
    FJoinsInWhere = false;
    FResultTables.ResetAll();
    QString text;
    BuildTableJoins(FResultTables.Items(0), FromIndent, text, true);
    return QStringLiteral("FROM ") + CRLF + FromIndent + text;
}

void TQueryResult::BuildTableJoins(TResultTable *entry, const QString &indent, QString &text,
                                   bool withTable)
{
    entry->SetUsed(true);
    TDSTable *table = entry->Table();
    text = withTable && table ? table->FromExpr() : QString();

    const bool explicitJoins = FSQLSyntax == ssSQL2 || FSQLSyntax == ssAccess
                               || FSQLSyntax == ssNexusDB;
    const bool bracketJoins = FSQLOptions.contains(soBracketJoins);
    const TNCustomDBStructure *model = FQuery ? FQuery->DBStruct() : nullptr;
    const QString outerWord = model && model->SQLFormats().UseOuterKeyword()
                                  ? QStringLiteral(" OUTER") : QString();

    for (int i = 0; i < FResultTables.Count(); ++i) {
        TResultTable *child = FResultTables.Items(i);
        TDSLink *link = child->Link();
        bool isFirst = false;
        if (child->Used() || !link || !link->ContainsTableEx(table, isFirst))
            continue;
        QString childText;
        if (!explicitJoins) {
            FJoinsInWhere = true;
            BuildTableJoins(child, indent, childText, false);
            text += QStringLiteral(", ") + CRLF + indent + child->Table()->FromExpr() + childText;
            continue;
        }
        QString word;
        switch (link->LinkType()) {
        case ltInner: word = QStringLiteral("INNER"); break;
        case ltOuterFull: word = QStringLiteral("FULL"); break;
        case ltOuterLeft: word = (isFirst ? QStringLiteral("LEFT") : QStringLiteral("RIGHT")) + outerWord; break;
        case ltOuterRight: word = (isFirst ? QStringLiteral("RIGHT") : QStringLiteral("LEFT")) + outerWord; break;
        }
        text += QLatin1Char(' ') + word + QStringLiteral(" JOIN ");
        const QString childIndent = bracketJoins ? indent + QStringLiteral("    ") : indent;
        BuildTableJoins(child, childIndent, childText, bracketJoins);
        if (bracketJoins) {
            if (!childText.contains(QLatin1Char('\n')) && !childText.contains(QLatin1Char('\r')))
                text += QLatin1Char(' ') + childText.trimmed();
            else
                text += CRLF + childIndent + childText;
            text = QLatin1Char('(') + text + CRLF + childIndent + QStringLiteral("ON ")
                   + link->GetSQLExpr(1) + QLatin1Char(')');
        } else {
            text += QLatin1Char(' ') + child->Table()->FromExpr() + QStringLiteral(" ON ")
                    + link->GetSQLExpr(1) + CRLF + indent + childText.trimmed();
        }
    }
}

bool TQueryResult::AddSQL1Joins(QStringList &lines)
{
    const int mode = FSQLSyntax == ssOracle ? TDSLink::OuterJoinMarkSyntax : 1;
    bool written = false;
    for (int i = 1; i < FResultTables.Count(); ++i) {
        const TDSLink *link = FResultTables.Items(i)->Link();
        if (!link)
            continue;
        if (written)
            lines.last() += QStringLiteral(" AND");
        lines.append(JoinLineIndent + AdjustCondition(link->GetSQLExpr(mode)));
        written = true;
    }
    return written;
}

const QStringList &TQueryResult::GetSQL()
{
    FSQLLines.clear();
    FSQLLines.append(GetSelectClause());
    FSQLLines.append(GetFromClause());
    if (FJoinsInWhere || !FWhereLines.isEmpty()) {
        FSQLLines.append(QStringLiteral("WHERE"));
        if (FJoinsInWhere && AddSQL1Joins(FSQLLines) && !FWhereLines.isEmpty())
            FSQLLines.last() += QStringLiteral(" AND");
        FSQLLines.append(FWhereLines);
    }
    if (!FGroupByText.isEmpty())
        FSQLLines.append(QStringLiteral("GROUP BY ") + FGroupByText);
    if (!FHavingText.isEmpty())
        FSQLLines.append(QStringLiteral("HAVING ") + FHavingText);
    if (!FOrderByText.isEmpty())
        FSQLLines.append(QStringLiteral("ORDER BY ") + FOrderByText);
    const QString limit = FQuery ? FQuery->SQLLimitClause() : QString();
    if (!limit.isEmpty())
        FSQLLines.append(QStringLiteral("LIMIT ") + CheckedRowCount(limit, false));
    return FSQLLines;
}

// --- TQueryResult: parameters ------------------------------------------------------------

TSQLParam *TQueryResult::AddParameter(TFilterCond *condition, int valueIndex)
{
    auto param = std::make_unique<TSQLParam>(condition, valueIndex);
    param->SetParamName(GenerateParamName(condition));
    param->SetDisplayName(GenerateParamDisplayName(condition, valueIndex));
    if (condition) {
        param->SetParamType(condition->GetValueType(valueIndex));
        condition->SetParam(valueIndex, param.get());
    }
    FParams.push_back(std::move(param));
    ParametersListChanged();
    return FParams.back().get();
}

void TQueryResult::DeleteParameter(TSQLParam *param)
{
    const auto it = std::find_if(FParams.begin(), FParams.end(),
                                 [param](const auto &p) { return p.get() == param; });
    if (it == FParams.end())
        return;
    if (param->Condition() && param->Condition()->GetParam(param->ValueIndex()) == param)
        param->Condition()->SetParam(param->ValueIndex(), nullptr);
    FParams.erase(it);
    ParametersListChanged();
}

void TQueryResult::DeleteParameters(const TFilterCond *condition)
{
    const auto end = std::remove_if(FParams.begin(), FParams.end(),
                                    [condition](const auto &p) { return p->Condition() == condition; });
    if (end == FParams.end())
        return;
    FParams.erase(end, FParams.end());
    ParametersListChanged();
}

TSQLParam *TQueryResult::FindParameter(const QString &name) const
{
    for (const auto &param : FParams)
        if (SameText(param->ParamName(), name))
            return param.get();
    return nullptr;
}

TSQLParam *TQueryResult::FindParameterByCondition(const TFilterCond *condition, int valueIndex) const
{
    for (const auto &param : FParams)
        if (param->Condition() == condition && param->ValueIndex() == valueIndex)
            return param.get();
    return nullptr;
}

void TQueryResult::ClearParams()
{
    if (FParams.empty())
        return;
    for (const auto &param : FParams)
        if (param->Condition())
            param->Condition()->SetParam(param->ValueIndex(), nullptr);
    FParams.clear();
    ParametersListChanged();
}

TSQLParam *TQueryResult::GetParam(int index) const
{
    if (index < 0 || index >= GetParamCount())
        throw EListError::IndexOutOfBounds(index);
    return FParams[std::size_t(index)].get();
}

QString TQueryResult::GenerateParamDisplayName(const TFilterCond *condition, int valueIndex) const
{
    QString base;
    if (const auto *simple = dynamic_cast<const TSimpleCond *>(condition); simple && simple->Field())
        base = simple->Field()->DisplayName();
    else if (condition)
        base = condition->Labels().value(0);
    if (base.isEmpty())
        base = QStringLiteral("Parameter");
    return valueIndex > 1 ? base + QStringLiteral(" 2") : base;
}

QString TQueryResult::GenerateParamName(const TFilterCond *condition) const
{
    // The field's column name when it can be written after ":", else "Param".
    QString base;
    if (const auto *simple = dynamic_cast<const TSimpleCond *>(condition); simple && simple->Field())
        base = simple->Field()->FieldName();
    if (!IsValidIdent(base))
        base = QStringLiteral("Param");
    // The first of base, base1, base2, ... that no parameter has. One pass
    // marks the numbers taken (0 for the bare base): probing name by name
    // made loading a query with many parameters cubic.
    std::vector<bool> taken(FParams.size() + 1, false);
    for (const auto &param : FParams) {
        const QString &name = param->ParamName();
        if (!name.startsWith(base, Qt::CaseInsensitive))
            continue;
        const QStringView suffix = QStringView(name).mid(base.size());
        bool ok = false;
        const qsizetype n = suffix.isEmpty() ? 0 : suffix.toInt(&ok);
        if ((suffix.isEmpty() || (ok && n > 0 && suffix == QString::number(n)))
            && n < qsizetype(taken.size()))
            taken[std::size_t(n)] = true;
    }
    std::size_t free = 0;
    while (taken[free])
        ++free;
    return free == 0 ? base : base + QString::number(free);
}

void TQueryResult::ParametersListChanged()
{
    if (FQuery)
        FQuery->ParametersListChanged();
}

} // namespace vm20
