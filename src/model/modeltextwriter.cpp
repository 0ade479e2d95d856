#include "model/dbstructure.h"
#include "model/modeltext.h"
#include "support/exception.h"

#include <QFile>
#include <QSet>

namespace vm20 {

namespace {

using namespace modeltext;

const QString Separator = QStringLiteral(" ");

QString Flag(bool value)
{
    return value ? QStringLiteral("1") : QStringLiteral("0");
}

QString Key(const char *key, const QString &value)
{
    return QLatin1String(key) + value;
}

QString Key(const char *key, int value)
{
    return QLatin1String(key) + QString::number(value);
}

class TModelTextWriter
{
public:
    TModelTextWriter(const TNCustomDBStructure &model, QStringList &lines)
        : FModel(model)
        , FLines(lines)
    {
    }

    void Write()
    {
        FLines.clear();
        WriteMain();
        for (int i = 0; i < FModel.GetOperatorCount(); ++i)
            WriteOperator(i + 1, *FModel.GetOperator(i));
        for (int i = 0; i < FModel.GetTableCount(); ++i)
            WriteTable(i + 1, *FModel.GetTable(i));
        for (int i = 0; i < FModel.GetFieldCount(); ++i)
            WriteField(i + 1, *FModel.GetField(i));
        const TDSFieldGroupList &groups = FModel.FieldGroups();
        for (int i = 0; i < groups.Count(); ++i) {
            const TDSFieldGroup &group = *groups.Items(i);
            Header(QStringLiteral("[FieldGroup%1]").arg(i + 1));
            FLines << Key("GroupName=", group.GroupName()) << Key("Fields=", IDList(group));
        }
        Header(QStringLiteral("[RootGroup]"));
        FLines << Key("Fields=", IDList(FModel.RootGroup()));
        const TDSConditionList &conditions = FModel.Conditions();
        for (int i = 0; i < conditions.Count(); ++i)
            WriteCondition(i + 1, *conditions.Items(i));
        WriteDBSpecInfo();
    }

private:
    void Header(const QString &header)
    {
        FLines << Separator << header;
    }

    void WriteMain()
    {
        const TDSTable *main = FModel.DefaultMainTable();
        FLines << QStringLiteral("[Main]") << Key("Version=", XFloatToStr(CurrentVersion))
               << Key("OperatCount=", FModel.GetOperatorCount())
               << Key("TableCount=", FModel.GetTableCount())
               << Key("FieldCount=", FModel.GetFieldCount())
               << Key("CondCount=", FModel.Conditions().Count())
               << Key("FieldGroups=", FModel.FieldGroups().Count())
               << Key("DefaultMainTable=", main ? main->TableName() : QString())
               << Key("RootFieldsFirst=", Flag(FModel.RootFieldsFirst()));
    }

    void WriteOperator(int n, const TDSOperator &op)
    {
        Header(QStringLiteral("[Operator:%1]").arg(n));
        FLines << Key("Name=", op.Name()) << Key("DisplayName=", op.DisplayName())
               << Key("SQLName=", op.SQLExpr()) << Key("ValFormat=", op.ValFormat())
               << Key("ExprType=", op.ExprType() == ftUnknown ? QStringLiteral("SameAsField")
                                                               : FldTypeToStr(op.ExprType()))
               << Key("AppliedTypes=", FModel.SaveAppliedTypes(op.AppliedTypes()))
               << Key("ValueKind=", ValueKindToStr(op.ValueKind()))
               << Key("CaseInsens=", XBoolToStr(op.CaseInsensative()));
    }

    void WriteTable(int n, const TDSTable &table)
    {
        // A link is written once, under the table at its first end; a link
        // from a table to itself is listed twice in that table's links.
        std::vector<const TDSLink *> own;
        QStringList targets;
        for (const TDSLink *link : table.Links()) {
            if (!link->Table1() || !link->Table2() || !SameText(link->Table1()->TableAlias(), table.TableAlias())
                || FWrittenLinks.contains(link))
                continue;
            FWrittenLinks.insert(link);
            own.push_back(link);
            targets << link->Table2()->TableAlias();
        }
        Header(QStringLiteral("[Table:%1]").arg(n));
        FLines << Key("DBName=", table.DatabaseName()) << Key("Name=", table.TableName())
               << Key("DisplayName=", table.DisplayName()) << Key("Alias=", table.TableAlias())
               << Key("Quoted=", Flag(table.Quoted())) << Key("Hints=", table.TableHints())
               << Key("DsgnPos=", table.DesignPositions()) << Key("Links=", ListToCommaText(targets));
        for (const TDSLink *link : own) {
            Header(QLatin1String("[Link:") + table.TableAlias() + QLatin1Char('-') + link->Table2()->TableAlias()
                   + QLatin1Char(']'));
            FLines << Key("FldName1=", ListToCommaText(link->Fields1()))
                   << Key("FldName2=", ListToCommaText(link->Fields2()))
                   << Key("Operators=", ListToCommaText(link->Operators()))
                   << Key("QuoteFields=", Flag(link->QuoteFields()))
                   << Key("LinkType=", LinkTypeToText(link->LinkType()));
        }
    }

    void WriteField(int n, const TDSField &field)
    {
        Header(QStringLiteral("[Field:%1]").arg(n));
        FLines << Key("ID=", field.ID()) << Key("Kind=", FldKindToStr(field.FieldKind()))
               << Key("FieldExpr=", field.FieldExpr()) << Key("DisplayName=", field.DisplayName());
        if (field.FieldKind() == nfkData)
            FLines << Key("TableAlias=", field.Table() ? field.Table()->TableAlias() : QString());
        QStringList operators;
        field.GetOperatorNames(operators);
        FLines << Key("EditType=", int(field.EditType())) << Key("FieldType=", int(field.FieldType()))
               << Key("FieldSize=", field.FieldSize()) << Key("Quoted=", Flag(field.Quoted()))
               << Key("UIR=", Flag(field.UseInResult())) << Key("UIC=", Flag(field.UseInConditions()))
               << Key("Aggr=", Flag(field.IsAggregate())) << Key("Operators=", operators.join(QLatin1Char(',')));
        WriteEditor(n, field);
    }

    void WriteEditor(int n, const TDSField &field)
    {
        const TDSValueEditor *editor = field.ValueEditor();
        switch (field.EditType()) {
        case etAuto:
            break;
        case etEdit:
            if (const auto *text = dynamic_cast<const TDSTextEditor *>(editor)) {
                FLines << Key("DefValue=", text->DefaultValue()) << Key("EditKind=", int(text->Kind()))
                       << Key("ValType=", int(text->ValueType()));
                if (!text->EditMask().trimmed().isEmpty())
                    FLines << Key("EditMask=", text->EditMask()) << Key("FmtVal=", Flag(text->UseFormattedValue()));
                FLines << Key("Options=", text->Options());
            }
            break;
        case etList:
            if (const auto *list = dynamic_cast<const TDSListEditor *>(editor))
                FLines << Key("Items=", ListToCommaText(list->Items()))
                       << Key("Values=", ListToCommaText(list->Values()));
            break;
        case etCustom:
            if (const auto *custom = dynamic_cast<const TDSCustomEditor *>(editor))
                FLines << Key("CustomData=", ListToCommaText(custom->Data()));
            break;
        case etSQL:
            FLines << QString() << QStringLiteral("[Field:%1.SQL]").arg(n);
            if (const auto *sql = dynamic_cast<const TDSSQLEditor *>(editor); sql && !sql->SQLText().isEmpty()) {
                const QStringList lines = sql->SQLText().split(QLatin1Char('\n'));
                for (QString line : lines) {
                    if (line.endsWith(QLatin1Char('\r')))
                        line.chop(1);
                    FLines << line;
                }
            }
            break;
        }
    }

    void WriteCondition(int n, const TDSCondition &condition)
    {
        QStringList values;
        for (int i = 0; i < condition.Values().Count(); ++i) {
            const TDSValue &value = *condition.Values().Items(i);
            values << FldTypeToStr(value.DataType()) + QLatin1Char(':') + ValueKindToStr(value.DataKind());
        }
        Header(QStringLiteral("[Cond:%1]").arg(n));
        FLines << Key("ID=", condition.ID()) << Key("DF=", condition.DisplayFormat())
               << Key("SQLExpr=", condition.SQLExpr()) << Key("Values=", ListToCommaText(values));
    }

    void WriteDBSpecInfo()
    {
        const TNDBInfo *info = FModel.DatabaseInfo();
        if (!info || !FModel.DMOptions().StoreDBInfo())
            return;
        QStringList lines;
        info->SaveInfo(lines);
        if (lines.isEmpty())
            return;
        FLines << QString() << QStringLiteral("[DBSpecInfo]") << lines;
    }

    static QString IDList(const TDSFieldList &fields)
    {
        QStringList ids;
        ids.reserve(fields.Count());
        for (const TDSField *field : fields.Fields())
            ids << QString::number(field->ID());
        return ListToCommaText(ids);
    }

    const TNCustomDBStructure &FModel;
    QStringList &FLines;
    QSet<const TDSLink *> FWrittenLinks;
};

} // namespace

void TNCustomDBStructure::SaveToStrings(QStringList &lines) const
{
    TModelTextWriter(*this, lines).Write();
}

QString TNCustomDBStructure::GetStructureAsText() const
{
    QStringList lines;
    SaveToStrings(lines);
    QString text;
    for (const QString &line : std::as_const(lines))
        text += line + QLatin1Char('\n');
    return text;
}

void TNCustomDBStructure::SaveToFile(const QString &fileName) const
{
    QStringList lines;
    SaveToStrings(lines);
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)
        || file.write(GetStringsAsAnsiChar(lines)) < 0 || !file.flush())
        throw Exception(Format(QStringLiteral("Cannot create file \"%s\". %s"), {fileName, file.errorString()}));
}

// Names in ordinal order, each followed by a comma: "ftString,ftMemo,".
QString TNCustomDBStructure::SaveAppliedTypes(TFieldTypes types) const
{
    QString text;
    for (int i = 0; i < FieldTypeCount; ++i)
        if (types.contains(TFieldType(i)))
            text += FldTypeToStr(TFieldType(i)) + QLatin1Char(',');
    return text;
}

} // namespace vm20
