#include "model/dbstructure.h"
#include "model/errors.h"
#include "model/modeltext.h"

// Before tables and fields had numbered sections, a model text listed them:
//
//   [Tables]                      [Fields]
//   Customers=Our customers       Customers.Name=Customer name
//   Orders                        Orders.Order Date=Ordered on
//
// A table line is "TableName=DisplayName" (the name doubles as caption when
// there is no "="); its alias is its name. A field line is a data field,
// "Table.Column=DisplayName", the table found by name or else by alias (the
// part before the last "."; without one the field has no table). Such fields
// get IDs in list order and, as a data field added without a connected
// provider, the type ftString and size 30, with the operators of that type.

namespace vm20 {

using namespace Qt::Literals::StringLiterals;

void TModelTextReader::ReadTableList()
{
    for (const QString &line : FIndex.Values(u"Tables"_s)) {
        const QString name = NameOfLine(line).trimmed();
        const bool hasCaption = line.contains(QLatin1Char('='));
        FModel.AddTable(name, hasCaption ? ValueOfLine(line) : name);
    }
}

void TModelTextReader::ReadFieldList()
{
    for (const QString &line : FIndex.Values(u"Fields"_s)) {
        const QString name = NameOfLine(line).trimmed();
        const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
        const QString column = name.mid(dot + 1);
        auto field = std::make_unique<TDSField>(&FModel);
        field->SetFieldExpr(column);
        field->SetDisplayName(line.contains(QLatin1Char('=')) ? ValueOfLine(line) : column);
        if (dot >= 0) {
            const QString tableName = name.left(dot);
            TDSTable *table = FModel.TableByName(0, tableName);
            if (!table)
                table = FModel.TableByName(1, tableName);
            if (!table)
                modeltext::RaiseNoTableForField(tableName, column);
            field->Tables().Add(table);
        }
        field->SetQuoted(column.contains(QLatin1Char(' ')));
        field->SetFieldType(ftString);
        field->SetFieldSize(30);
        field->AddAppliedOperators();
        field->SetUseInConditions(field->OperatCount() > 0);
        FModel.AddFieldRef(std::move(field));
    }
}

} // namespace vm20
