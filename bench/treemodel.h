// Building blocks of the benchmark models: tables linked as a tree and typed
// data fields with their default operators.
#pragma once

#include "model/dbstructure.h"

#include <memory>

namespace vm20::bench {

inline TDSField *AddField(TNDBStructure &model, TDSTable *table, const QString &column, TFieldType type)
{
    auto field = std::make_unique<TDSField>(&model);
    field->SetFieldName(column);
    field->SetDisplayName(table->TableName() + QLatin1Char(' ') + column);
    field->Tables().Add(table);
    field->SetFieldType(type);
    TDSField *raw = field.get();
    model.AddFieldRef(std::move(field));
    raw->AddAppliedOperators();
    return raw;
}

// Table `index` of a tree: it hangs from the table at half its index, linked
// by ID = ParentID.
inline TDSTable *AddTreeTable(TNDBStructure &model, int index, const QString &alias)
{
    TDSTable *table = model.GetTable(model.AddTable(QStringLiteral("Table%1").arg(index), QString()));
    table->SetTableAlias(alias);
    if (index > 0) {
        auto link = std::make_unique<TDSLink>(&model);
        link->SetTable1(model.GetTable((index - 1) / 2));
        link->SetTable2(table);
        link->SetFields1({QStringLiteral("ID")});
        link->SetFields2({QStringLiteral("ParentID")});
        model.AddLinkByRef(std::move(link));
    }
    return table;
}

} // namespace vm20::bench
