#include "model/dbstructure.h"
#include "model/errors.h"
#include "model/messages.h"
#include "model/modeltext.h"
#include "support/exception.h"

// The field sections of a model text: keys, table, operators and value editor.

namespace vm20 {

using namespace modeltext;

using namespace Qt::Literals::StringLiterals;

void TModelTextReader::ReadFields()
{
    if (!FMain.Has("FieldCount"_L1) && FIndex.Contains(u"Fields"_s)) {
        ReadFieldList();
        return;
    }
    const int count = Count(FMain, "FieldCount"_L1);
    for (int n = 1; n <= count; ++n)
        ReadField(n);
}

void TModelTextReader::ReadField(int n)
{
    const TSectionKeys keys(Section(u"Field:"_s + QString::number(n)));
    auto field = std::make_unique<TDSField>(&FModel);
    field->SetID(StrictInt(keys, {"ID"_L1}, 0));
    if (const auto kind = keys.View("Kind"_L1))
        field->SetFieldKind(TNFieldKind(StrictEnum(*kind, int(nfkVirtual) + 1,
                                                   [](const QString &s) { return int(StrToFldKind(s)); },
                                                   "field kind")));
    field->SetFieldExpr(keys.Find({"FieldExpr"_L1, "FieldName"_L1}).value_or(QString()));
    field->SetDisplayName(keys.Value("DisplayName"_L1));
    if (field->FieldKind() == nfkData) {
        TDSTable *table = nullptr;
        if (const auto alias = keys.Find("TableAlias"_L1); alias && !alias->isEmpty()) {
            // The fields of one table come one after another.
            if (*alias != FLastAlias) {
                FLastAlias = *alias;
                FLastTable = FModel.TableByName(1, *alias);
            }
            table = FLastTable;
            if (!table)
                modeltext::RaiseNoTableForField(*alias, field->FieldExpr());
        } else if (const auto name = keys.Find("TableName"_L1); name && !name->isEmpty()) {
            table = FModel.TableByName(0, *name);
            if (!table)
                modeltext::RaiseNoTableForField(*name, field->FieldExpr());
        }
        if (table)
            field->Tables().Add(table);
    }
    if (const auto editType = keys.View("EditType"_L1))
        field->SetEditType(TDSEditType(StrictEnum(*editType, int(etSQL) + 1, nullptr, "edit type")));
    if (const auto type = keys.View("FieldType"_L1))
        field->SetFieldType(StrictFieldType(*type));
    field->SetFieldSize(StrictInt(keys, {"FieldSize"_L1}, 0));
    field->SetQuoted(LenientBool(keys, {"Quoted"_L1}, false));
    field->SetUseInResult(LenientBool(keys, {"UIR"_L1}, true));
    const bool useInConditions = LenientBool(keys, {"UIC"_L1, "CondField"_L1}, true);
    const auto aggregate = keys.Find("Aggr"_L1);
    ReadFieldOperators(*field, keys);
    // Operators first: switching conditions on for a field without operators
    // would fill them by type.
    field->SetUseInConditions(field->OperatCount() > 0 && useInConditions);
    ReadEditor(*field, keys, n);
    if (field->FieldKind() == nfkVirtual) {
        FModel.ExcludeTablesBySQLExpr(field->FieldExpr(), field->Tables(), field->DBFields());
        field->SetIsAggregate(aggregate ? XStrToBool(*aggregate)
                                        : TNCustomDBStructure::CheckIfAggregate(field->FieldExpr()));
    }
    FModel.AddFieldRef(std::move(field));
}

// Names joined by commas; a name the model lacks raises ENDBStructError 6.
// Fields of one type share one list, so each distinct text is resolved once.
void TModelTextReader::ReadFieldOperators(TDSField &field, const TSectionKeys &keys)
{
    const QString names = keys.Find({"Operators"_L1, "Operats"_L1}).value_or(QString());
    auto known = FOperatorLists.constFind(names);
    if (known == FOperatorLists.constEnd()) {
        std::vector<TDSOperator *> operators;
        for (const QString &name : names.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
            if (name.trimmed().isEmpty())
                continue;
            TDSOperator *op = OperatorByName(name);
            if (!op)
                throw ENDBStructError(dbseOperatorNotFound, SDBSEOperatorNotFound, {name.trimmed()});
            operators.push_back(op);
        }
        known = FOperatorLists.insert(names, operators);
    }
    for (TDSOperator *op : *known)
        field.AddOperator(op);
}

void TModelTextReader::ReadEditor(TDSField &field, const TSectionKeys &keys, int n)
{
    TDSValueEditor *editor = field.ValueEditor();
    if (auto *text = dynamic_cast<TDSTextEditor *>(editor)) {
        text->SetDefaultValue(keys.Find({"DefValue"_L1, "DefaultValue"_L1}).value_or(QString()));
        if (const auto kind = keys.View("EditKind"_L1))
            text->SetKind(TTextEditorKind(StrictEnum(*kind, int(tekTime) + 1, nullptr, "editor kind")));
        if (const auto type = keys.View("ValType"_L1))
            text->SetValueType(StrictFieldType(*type));
        text->SetEditMask(keys.Value("EditMask"_L1));
        text->SetUseFormattedValue(LenientBool(keys, {"FmtVal"_L1}, false));
        text->SetOptions(StrictInt(keys, {"Options"_L1}, 0));
    } else if (auto *sql = dynamic_cast<TDSSQLEditor *>(editor)) {
        const QString section = u"Field:"_s + QString::number(n) + u".SQL"_s;
        if (!FIndex.Contains(section))
            throw ENDBStructError(dbseCantFindSection, SDBSECantFindSection, {section});
        sql->SetSQLText(WithoutTrailingBlankLines(FIndex.Lines(section)).join(QLatin1Char('\n')));
    } else if (auto *list = dynamic_cast<TDSListEditor *>(editor)) {
        list->Items() = ComposeCommaText(keys.Value("Items"_L1));
        list->Values() = ComposeCommaText(keys.Value("Values"_L1));
    } else if (auto *custom = dynamic_cast<TDSCustomEditor *>(editor)) {
        custom->Data() = ComposeCommaText(keys.Value("CustomData"_L1));
    }
}

} // namespace vm20
