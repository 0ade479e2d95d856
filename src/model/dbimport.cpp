// The model's side of the metadata provider: attaching one, and building a
// whole model from what it reports.
#include "model/dbstructure.h"

#include "model/errors.h"
#include "model/messages.h"
#include "support/nstrings.h"

namespace vm20 {

void TNCustomDBStructure::SetDatabaseInfo(TNDBInfo *value)
{
    if (FDatabaseInfo == value)
        return;
    FDatabaseInfo = value;
    if (!value)
        return;
    UpdateDatabaseInfo();
    UpdateSQLFormats();
}

void TNCustomDBStructure::CheckDatabaseInfo() const
{
    if (!FDatabaseInfo)
        throw ENDBStructError(dbseDbInfoNotSpecified, SDBSEDbInfoNotSpecified);
}

void TNCustomDBStructure::UpdateDatabaseInfo()
{
    if (FDatabaseInfo && !FDBSpecInfo.isEmpty())
        FDatabaseInfo->LoadInfo(FDBSpecInfo);
}

void TNCustomDBStructure::UpdateSQLFormats()
{
    if (FDatabaseInfo && FSQLFormats.FullTableName().isEmpty())
        FSQLFormats.SetFullTableName(FDatabaseInfo->TableNameFormat());
}

void TNCustomDBStructure::RetriveDataModelInfo()
{
    CheckDatabaseInfo();
    TNDBInfo *info = DatabaseInfo();
    try {
        Batch([&] {
            ClearStructure();

            QStringList entries;
            info->GetTableNames(entries);
            for (const QString &entry : entries) {
                if (entry.trimmed().isEmpty())
                    continue;
                const bool named = entry.contains(QLatin1Char('='));
                const QString name = named ? NameOfLine(entry) : entry;
                const QString display = named ? ValueOfLine(entry) : entry;
                TDSTable *table = GetTable(AddTable(name, display));
                // A name like "Order Lines" only works in SQL when quoted.
                table->SetQuoted(info->NameNeedsQuotes(name));
            }

            QStringList links;
            info->GetLinkList(links);
            LoadLinksFromStrings(links);

            int nextID = 1;
            for (const auto &table : FTables) {
                TDSFieldGroup *group = FFieldGroups.AddGroup(table->TableName());
                TDBFieldList columns;
                info->GetFieldList(table->TableName()).CopyTo(columns);
                for (int i = 0; i < columns.Count(); ++i) {
                    const TDBFieldInfo &column = *columns.Items(i);
                    auto field = std::make_unique<TDSField>(this);
                    field->SetID(nextID++);
                    field->SetFieldKind(nfkData);
                    field->SetFieldExpr(column.FieldName());
                    field->SetDisplayName(column.FieldName());
                    field->Tables().Add(table.get());
                    field->SetQuoted(info->NameNeedsQuotes(column.FieldName()));
                    field->SetFieldType(column.FieldType());
                    field->SetFieldSize(column.FieldSize());
                    const TFieldType type = column.FieldType();
                    if (type == ftVarBytes || type == ftBlob || type == ftTypedBinary)
                        field->SetUseInResult(false);
                    TDSField *added = field.get();
                    AddFieldRef(std::move(field));
                    added->SetGroup(group);
                    added->AddAppliedOperators();
                    if (added->OperatCount() == 0)
                        added->SetUseInConditions(false);
                }
            }
            FDefaultMainTable = FTables.empty() ? nullptr : FTables.front().get();
        });
    } catch (...) {
        // Half an import is worse than none: leave a clean model behind.
        ClearStructure();
        throw;
    }
}

} // namespace vm20
