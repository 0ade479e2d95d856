#include "model/dbstructure.h"
#include "model/errors.h"
#include "model/messages.h"
#include "model/modeltext.h"
#include "support/exception.h"

#include <QFile>
#include <QSet>

// Older layouts the reader accepts besides today's:
//  - below version 2.0 an operator's "AppliedTypes" holds ordinals ("1,16,");
//  - operators in "[Operations]" ("Count=") and "[Operation:n]" sections, used
//    when "[Main]" has no "OperatCount"; a text with neither keeps the
//    built-in operators;
//  - "ValueIsList" (non-zero: vkList) where "ValueKind" is missing, and
//    "ValueType" for "ExprType";
//  - field keys "FieldName" (for "FieldExpr"), "TableName" (the table by its
//    name where "TableAlias" is missing), "DefaultValue" (for "DefValue"),
//    "Operats" (for "Operators") and "CondField" (for "UIC");
//  - "[Tables]" and "[Fields]" list sections where "[Main]" has no
//    "TableCount" or "FieldCount" (see modeltextlegacy.cpp);
//  - the operator name "EqualTo", read as "Equal".
// Numbers that identify or count things (counts, IDs, ordinals, sizes,
// options) are strict: a value that is present but not a number raises
// EConvertError. Flags are read leniently.

namespace vm20 {

using namespace modeltext;

using namespace Qt::Literals::StringLiterals;

TModelTextReader::TModelTextReader(TNCustomDBStructure &model, const QStringList &lines)
    : FModel(model)
    , FIndex(lines)
    , FMain(Section(u"Main"_s))
{
}

// All of the section's lines: blank ones answer for no key, and taking them
// as they are spares a filtered copy of every section.
QStringList TModelTextReader::Section(const QString &name) const
{
    QStringList values = FIndex.Lines(name);
    if (values.isEmpty() && !FIndex.Contains(name))
        throw ENDBStructError(dbseCantFindSection, SDBSECantFindSection, {name});
    return values;
}

// A negative count reads no section.
int TModelTextReader::Count(const TSectionKeys &keys, QLatin1StringView name) const
{
    return StrictInt(keys, {name}, 0);
}

void TModelTextReader::Read()
{
    FVersion = XStrToFloat(FMain.Value("Version"_L1), 0);
    ReadOperators();
    ReadTables();
    ReadFields();
    ReadGroups();
    ReadConditions();
    ReadMainTable();
    FModel.SetRootFieldsFirst(LenientBool(FMain, {"RootFieldsFirst"_L1}, false));
    FModel.SetLoadedVersion(FVersion);
    ReadDBSpecInfo();
}

// --- operators ------------------------------------------------------------------

void TModelTextReader::ReadOperators()
{
    QString prefix = u"Operator:"_s;
    int count = 0;
    if (FMain.Has("OperatCount"_L1)) {
        count = Count(FMain, "OperatCount"_L1);
    } else if (FIndex.Contains(u"Operations"_s)) {
        prefix = u"Operation:"_s;
        count = Count(TSectionKeys(Section(u"Operations"_s)), "Count"_L1);
    } else {
        IndexOperators();
        return;
    }
    FModel.ClearOperators();
    for (int n = 1; n <= count; ++n)
        ReadOperator(prefix + QString::number(n));
    IndexOperators();
}

void TModelTextReader::ReadOperator(const QString &section)
{
    const TSectionKeys keys(Section(section));
    // Blanks around a name would not survive a field's list of names.
    QString name = keys.Value("Name"_L1).trimmed();
    if (SameText(name, u"EqualTo"_s))
        name = u"Equal"_s;
    const QString caption = keys.Value("DisplayName"_L1);
    const QString sqlExpr = keys.Value("SQLName"_L1);
    const QString valFormat = keys.Value("ValFormat"_L1);
    const QString exprType = keys.Find({"ExprType"_L1, "ValueType"_L1}).value_or(QString()).trimmed();
    const TFieldTypes types = FModel.ReadAppliedTypes(keys.Value("AppliedTypes"_L1), FVersion);
    TValueKind kind = vkScalar;
    if (const auto text = keys.View("ValueKind"_L1))
        kind = TValueKind(StrictEnum(*text, int(vkSubQuery) + 1,
                                     [](const QString &s) { return int(StrToValueKind(s)); }, "value kind"));
    else if (const auto list = keys.Find("ValueIsList"_L1))
        kind = StrToInt(*list) != 0 ? vkList : vkScalar;
    const bool caseInsensitive = LenientBool(keys, {"CaseInsens"_L1}, false);

    TDSOperator *op = FModel.GetOperator(FModel.AddOperator(name, caption, sqlExpr, valFormat, types));
    if (!exprType.isEmpty() && exprType.compare("SameAsField"_L1, Qt::CaseInsensitive) != 0)
        op->SetExprType(StrictFieldType(exprType));
    op->SetValueKind(kind);
    op->SetCaseInsensative(caseInsensitive);
}

void TModelTextReader::IndexOperators()
{
    FOperatorsByName.clear();
    for (int i = 0; i < FModel.GetOperatorCount(); ++i) {
        TDSOperator *op = FModel.GetOperator(i);
        const QString key = op->Name().trimmed().toCaseFolded();
        if (!FOperatorsByName.contains(key))
            FOperatorsByName.insert(key, op);
    }
}

TDSOperator *TModelTextReader::OperatorByName(const QString &name) const
{
    const QString key = name.trimmed().toCaseFolded();
    return FOperatorsByName.value(key == "equalto"_L1 ? u"equal"_s : key, nullptr);
}

// --- tables and links ----------------------------------------------------------------

void TModelTextReader::ReadTables()
{
    if (!FMain.Has("TableCount"_L1) && FIndex.Contains(u"Tables"_s)) {
        ReadTableList();
        return;
    }
    const int count = Count(FMain, "TableCount"_L1);
    for (int n = 1; n <= count; ++n)
        ReadTable(n);
    // Links name tables that come later in the text, so they wait for all tables.
    for (int i = 0; i < FModel.GetTableCount(); ++i)
        ReadLinks(FModel.GetTable(i));
}

void TModelTextReader::ReadTable(int n)
{
    const TSectionKeys keys(Section(u"Table:"_s + QString::number(n)));
    auto table = std::make_unique<TDSTable>(&FModel);
    table->SetDatabaseName(keys.Value("DBName"_L1));
    const QString alias = keys.Value("Alias"_L1);
    if (!alias.isEmpty())
        table->SetTableAlias(alias);
    table->SetTableName(keys.Value("Name"_L1));
    table->SetDisplayName(keys.Value("DisplayName"_L1));
    table->SetQuoted(LenientBool(keys, {"Quoted"_L1}, false));
    table->SetTableHints(keys.Value("Hints"_L1));
    table->SetDesignPositions(keys.Value("DsgnPos"_L1));
    table->SetLinksStr(keys.Value("Links"_L1));
    FModel.AddTableRef(std::move(table));
}

TDSTable *TModelTextReader::TableByAlias(const QString &alias) const
{
    TDSTable *table = FModel.TableByName(1, alias);
    if (!table)
        throw ENDBStructError(dbseNoTable, SDBSENoTable, {alias});
    return table;
}

void TModelTextReader::ReadLinks(TDSTable *table)
{
    for (const QString &alias : ComposeCommaText(table->LinksStr())) {
        TDSTable *other = TableByAlias(alias);
        const TSectionKeys keys(Section(u"Link:"_s + table->TableAlias() + QLatin1Char('-') + alias));
        auto link = std::make_unique<TDSLink>(&FModel);
        link->SetTable1(table);
        link->SetTable2(other);
        link->SetFields1(ComposeCommaText(keys.Value("FldName1"_L1)));
        link->SetFields2(ComposeCommaText(keys.Value("FldName2"_L1)));
        link->SetOperators(ComposeCommaText(keys.Value("Operators"_L1)));
        link->SetQuoteFields(LenientBool(keys, {"QuoteFields"_L1}, false));
        link->SetLinkType(TextToLinkType(keys.Value("LinkType"_L1)));
        FModel.AddLinkByRef(std::move(link));
    }
}

// --- groups ---------------------------------------------------------------------

// Group members are listed by ID; an ID no field carries is skipped. A field
// that no list names (or an older text without a root group) ends up in the
// root group, in model order.
void TModelTextReader::ReadGroups()
{
    TDSFieldGroup &root = FModel.RootGroup();
    root.ClearMembers();
    const int count = Count(FMain, "FieldGroups"_L1);
    const auto fieldsOf = [this](const TSectionKeys &keys) {
        std::vector<TDSField *> fields;
        for (const QString &id : ComposeCommaText(keys.Value("Fields"_L1)))
            if (TDSField *field = FModel.FieldByID(StrToInt(id)))
                fields.push_back(field);
        return fields;
    };
    for (int n = 1; n <= count; ++n) {
        const TSectionKeys keys(Section(u"FieldGroup"_s + QString::number(n)));
        TDSFieldGroup *group = FModel.FieldGroups().AddGroup(keys.Value("GroupName"_L1));
        for (TDSField *field : fieldsOf(keys))
            field->SetGroup(group);
    }
    QSet<const TDSField *> inRoot;
    if (FIndex.Contains(u"RootGroup"_s)) {
        for (TDSField *field : fieldsOf(TSectionKeys(FIndex.Values(u"RootGroup"_s)))) {
            if (!field->Group() && !inRoot.contains(field)) {
                inRoot.insert(field);
                root.Add(field);
            }
        }
    }
    for (int i = 0; i < FModel.GetFieldCount(); ++i) {
        TDSField *field = FModel.GetField(i);
        if (!field->Group() && !inRoot.contains(field))
            root.Add(field);
    }
}

// --- conditions and the rest ---------------------------------------------------------

void TModelTextReader::ReadConditions()
{
    const int count = Count(FMain, "CondCount"_L1);
    for (int n = 1; n <= count; ++n)
        ReadCondition(n);
}

// "Values" holds "type:kind" per value; the values themselves come from the
// display format's "@" marks, so surplus items are ignored.
void TModelTextReader::ReadCondition(int n)
{
    const TSectionKeys keys(Section(u"Cond:"_s + QString::number(n)));
    auto condition = std::make_unique<TDSCondition>(&FModel);
    condition->SetID(StrictInt(keys, {"ID"_L1}, 0));
    condition->SetDisplayFormat(keys.Value("DF"_L1));
    condition->SetSQLExpr(keys.Value("SQLExpr"_L1));
    const QStringList items = ComposeCommaText(keys.Value("Values"_L1));
    TDSValueList &values = condition->Values();
    for (int i = 0; i < items.size() && i < values.Count(); ++i) {
        const qsizetype colon = items[i].indexOf(QLatin1Char(':'));
        TDSValue *value = values.Items(i);
        value->SetDataType(StrictFieldType(colon < 0 ? items[i] : items[i].left(colon)));
        if (colon >= 0)
            value->SetDataKind(TValueKind(StrictEnum(items[i].mid(colon + 1), int(vkSubQuery) + 1,
                                                     [](const QString &s) { return int(StrToValueKind(s)); },
                                                     "value kind")));
    }
    FModel.Conditions().Add(std::move(condition));
}

void TModelTextReader::ReadMainTable()
{
    const QString name = FMain.Value("DefaultMainTable"_L1);
    if (name.isEmpty())
        return;
    TDSTable *table = FModel.TableByName(0, name);
    if (!table)
        throw ENDBStructError(dbseNoTable, SDBSENoTable, {name});
    FModel.SetDefaultMainTable(table);
}

void TModelTextReader::ReadDBSpecInfo()
{
    const QString section = u"DBSpecInfo"_s;
    FModel.SetDBSpecInfo(FIndex.Contains(section) ? WithoutTrailingBlankLines(FIndex.Lines(section)) : QStringList());
    FModel.UpdateDatabaseInfo();
}

// --- the model's entry points ---------------------------------------------------------

// A text that fails to load leaves the model as a new one would be (its
// structure cleared, the built-in operators back), never half loaded; the
// error is then raised again.
void TNCustomDBStructure::LoadFromStrings(const QStringList &lines)
{
    const bool updating = Updating();
    BeginUpdate();
    try {
        ClearStructure();
        TModelTextReader(*this, lines).Read();
    } catch (...) {
        ClearStructure();
        FRootFieldsFirst = false;
        FLoadedVersion = 0;
        FDBSpecInfo.clear();
        FUpdating = updating;
        Changed();
        throw;
    }
    FUpdating = updating;
    Changed();
}

void TNCustomDBStructure::LoadFromFile(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        throw Exception(Format(u"Cannot open file \"%s\". %s"_s, {fileName, file.errorString()}));
    QByteArray data = file.readAll();
    if (data.startsWith("\xEF\xBB\xBF"))
        data.remove(0, 3);
    LoadFromStrings(SplitAnsiText(data));
}

void TNCustomDBStructure::SetStructureAsText(const QString &text)
{
    QStringList lines = text.split(QLatin1Char('\n'));
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    for (QString &line : lines)
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
    LoadFromStrings(lines);
}

// Below version 2.0 the items are ordinals, later type names; items are
// separated by commas and an empty one (the writer ends the list with a
// comma) is skipped. Ordinals outside the type table are ignored; a name that
// is no type, or an ordinal that is no number, raises EConvertError.
TFieldTypes TNCustomDBStructure::ReadAppliedTypes(const QString &text, double version) const
{
    TFieldTypes types;
    for (const QString &raw : text.split(QLatin1Char(','))) {
        const QString item = raw.trimmed();
        if (item.isEmpty())
            continue;
        if (version < TypeNamesVersion) {
            const int ordinal = StrToInt(item);
            if (IsValidFieldType(ordinal))
                types.include(TFieldType(ordinal));
        } else {
            // Kept as a number: an unknown name comes back as -1, no type.
            const int type = int(StrToFldType(item));
            if (!IsValidFieldType(type))
                RaiseNotValid(item, "field type");
            types.include(TFieldType(type));
        }
    }
    return types;
}

} // namespace vm20
