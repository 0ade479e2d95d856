// Writing the model XML document. The stream writer keeps the attributes in
// the order they are written, which the document layout fixes; a DOM tree
// would write them in hash order, different from run to run.
#include "model/dbstructure.h"
#include "model/dmxmlformat.h"
#include "model/xmlnames.h"
#include "support/nstrings.h"

#include <QSet>
#include <QXmlStreamWriter>

namespace vm20 {

namespace {

const QString FieldPrefix = QStringLiteral("fld:");
const QString ValuePrefix = QStringLiteral("val:");

class TXmlModelWriter
{
public:
    explicit TXmlModelWriter(QString *out)
        : W(out)
    {
        W.setAutoFormatting(true);
        W.setAutoFormattingIndent(2);
    }

    void Write(const TNCustomDBStructure &model)
    {
        W.writeStartElement(QStringLiteral("DataModel"));
        W.writeAttribute(QStringLiteral("formatVersion"), QStringLiteral("3"));
        WriteDBParams(model.DBParams());
        W.writeTextElement(QStringLiteral("Description"), model.Description().join(QLatin1Char('\n')));
        W.writeTextElement(QStringLiteral("CustomInfo"), model.CustomInfo().join(QLatin1Char('\n')));
        WriteOperators(model);
        WriteTables(model);
        WriteLinks(model);
        W.writeStartElement(QStringLiteral("Entities"));
        WriteEntity(model, QString(), model.RootGroup().Fields(), true);
        W.writeEndElement();
        W.writeEndElement();
    }

private:
    void WriteDBParams(const QStringList &params)
    {
        W.writeStartElement(QStringLiteral("DBParams"));
        for (const char *name : {"DSN", "UserName", "Password"})
            W.writeTextElement(QLatin1String(name), ValueOf(params, QLatin1String(name)));
        W.writeEndElement();
    }

    void WriteOperators(const TNCustomDBStructure &model)
    {
        W.writeStartElement(QStringLiteral("Operators"));
        for (int i = 0; i < model.GetOperatorCount(); ++i) {
            const TDSOperator *op = model.GetOperator(i);
            W.writeStartElement(QStringLiteral("Operator"));
            W.writeAttribute(QStringLiteral("id"), op->Name());
            W.writeAttribute(QStringLiteral("caption"), op->DisplayName());
            W.writeAttribute(QStringLiteral("expr"), op->SQLExpr());
            W.writeAttribute(QStringLiteral("format"), op->ValFormat());
            W.writeAttribute(QStringLiteral("kind"), ValueKindToStr(op->ValueKind()));
            WriteTypes(op->AppliedTypes());
            W.writeEndElement();
        }
        W.writeEndElement();
    }

    // Each name once, in the order of the first type that has it; every type
    // without a name of its own shares "Unknown", written last so that a
    // document read back and written again stays the same.
    void WriteTypes(TFieldTypes types)
    {
        W.writeStartElement(QStringLiteral("Types"));
        QSet<QString> written;
        bool unknown = false;
        for (int ordinal = 0; ordinal < FieldTypeCount; ++ordinal) {
            const auto type = TFieldType(ordinal);
            if (!types.contains(type))
                continue;
            if (type == ftUnknown || !XmlTypeHasName(type)) {
                unknown = true;
                continue;
            }
            const QString name = XmlTypeName(type);
            if (written.contains(name))
                continue;
            written.insert(name);
            W.writeTextElement(QStringLiteral("Type"), name);
        }
        if (unknown)
            W.writeTextElement(QStringLiteral("Type"), XmlTypeName(ftUnknown));
        W.writeEndElement();
    }

    void WriteTables(const TNCustomDBStructure &model)
    {
        W.writeStartElement(QStringLiteral("Tables"));
        for (int i = 0; i < model.GetTableCount(); ++i) {
            const TDSTable *table = model.GetTable(i);
            W.writeStartElement(QStringLiteral("Table"));
            W.writeAttribute(QStringLiteral("name"), table->TableName());
            W.writeAttribute(QStringLiteral("alias"), table->TableAlias());
            W.writeAttribute(QStringLiteral("db"), table->DatabaseName());
            W.writeAttribute(QStringLiteral("hints"), table->TableHints());
            W.writeEndElement();
        }
        W.writeEndElement();
    }

    void WriteLinks(const TNCustomDBStructure &model)
    {
        W.writeStartElement(QStringLiteral("Links"));
        for (int i = 0; i < model.GetLinkCount(); ++i) {
            const TDSLink *link = model.GetLink(i);
            W.writeStartElement(QStringLiteral("Link"));
            W.writeAttribute(QStringLiteral("table1"), link->Table1() ? link->Table1()->TableAlias() : QString());
            W.writeAttribute(QStringLiteral("table2"), link->Table2() ? link->Table2()->TableAlias() : QString());
            W.writeAttribute(QStringLiteral("type"), XmlLinkTypeName(link->LinkType()));
            W.writeAttribute(QStringLiteral("QF"), XBoolToStr(link->QuoteFields()));
            for (qsizetype k = 0; k < link->Fields1().size(); ++k)
                WriteCondition(link->Fields1()[k], link->Fields2().value(k),
                               link->Operators().value(k, QStringLiteral("=")));
            W.writeEndElement();
        }
        W.writeEndElement();
    }

    void WriteCondition(const QString &left, const QString &right, const QString &op)
    {
        QString type;
        const QString expr1 = Operand(left, type);
        const QString expr2 = Operand(right, type);
        W.writeStartElement(QStringLiteral("Condition"));
        W.writeAttribute(QStringLiteral("type"), type);
        W.writeAttribute(QStringLiteral("expr1"), expr1);
        W.writeAttribute(QStringLiteral("expr2"), expr2);
        W.writeAttribute(QStringLiteral("op"), op);
        W.writeEndElement();
    }

    // The operand without its prefix; appends its letter to `type`.
    static QString Operand(const QString &entry, QString &type)
    {
        if (entry.startsWith(ValuePrefix)) {
            type += QLatin1Char('C');
            return entry.mid(ValuePrefix.size());
        }
        type += QLatin1Char('F');
        return entry.startsWith(FieldPrefix) ? entry.mid(FieldPrefix.size()) : entry;
    }

    // The root group is the tree's top: its fields, then one nested entity
    // per field group.
    void WriteEntity(const TNCustomDBStructure &model, const QString &name,
                     const std::vector<TDSField *> &fields, bool isRoot)
    {
        W.writeStartElement(QStringLiteral("Entity"));
        W.writeAttribute(QStringLiteral("name"), name.isEmpty() ? XmlRootEntityName : name);
        for (const TDSField *field : fields)
            WriteField(*field);
        if (isRoot)
            for (int i = 0; i < model.FieldGroups().Count(); ++i) {
                const TDSFieldGroup *group = model.FieldGroups().Items(i);
                WriteEntity(model, group->GroupName(), group->Fields(), false);
            }
        W.writeEndElement();
    }

    void WriteField(const TDSField &field)
    {
        W.writeStartElement(QStringLiteral("Attr"));
        W.writeAttribute(QStringLiteral("id"), QString::number(field.ID()));
        W.writeAttribute(QStringLiteral("kind"), FldKindToStr(field.FieldKind()));
        W.writeAttribute(QStringLiteral("expr"), field.FieldExpr());
        W.writeAttribute(QStringLiteral("caption"), field.DisplayName());
        W.writeAttribute(QStringLiteral("type"), XmlTypeName(field.FieldType()));
        W.writeAttribute(QStringLiteral("size"), QString::number(field.FieldSize()));
        W.writeAttribute(QStringLiteral("UIC"), XBoolToStr(field.UseInConditions()));
        W.writeAttribute(QStringLiteral("UIR"), XBoolToStr(field.UseInResult()));
        if (field.UserData().isValid())
            W.writeAttribute(QStringLiteral("userData"), field.UserData().toString());
        if (field.Tables().Count() > 0) {
            QStringList aliases;
            for (const TDSTable *table : field.Tables().Tables())
                aliases.append(table->TableAlias());
            W.writeAttribute(QStringLiteral("tables"), ListToCommaText(aliases));
        }
        W.writeStartElement(QStringLiteral("Operators"));
        for (const TDSOperator *op : field.Operators())
            W.writeTextElement(QStringLiteral("Operator"), op->Name());
        W.writeEndElement();
        if (field.ValueEditor())
            WriteEditor(field);
        W.writeEndElement();
    }

    void WriteEditor(const TDSField &field)
    {
        W.writeStartElement(QStringLiteral("Editors"));
        W.writeStartElement(QStringLiteral("Default"));
        W.writeAttribute(QStringLiteral("type"), XmlEditorName(field.EditType()));
        if (const auto *sql = dynamic_cast<const TDSSQLEditor *>(field.ValueEditor())) {
            W.writeTextElement(QStringLiteral("SQL"), sql->SQLText());
        } else if (const auto *list = dynamic_cast<const TDSListEditor *>(field.ValueEditor())) {
            W.writeStartElement(QStringLiteral("Values"));
            for (qsizetype i = 0; i < list->Items().size(); ++i) {
                W.writeStartElement(QStringLiteral("Value"));
                W.writeAttribute(QStringLiteral("id"), list->Values().value(i));
                W.writeAttribute(QStringLiteral("text"), list->Items()[i]);
                W.writeEndElement();
            }
            W.writeEndElement();
        } else if (const auto *custom = dynamic_cast<const TDSCustomEditor *>(field.ValueEditor())) {
            W.writeStartElement(QStringLiteral("Values"));
            for (const QString &line : custom->Data()) {
                W.writeStartElement(QStringLiteral("Value"));
                W.writeAttribute(QStringLiteral("text"), line);
                W.writeEndElement();
            }
            W.writeEndElement();
        }
        W.writeEndElement();
        W.writeEndElement();
    }

    QXmlStreamWriter W;
};

} // namespace

void SaveDMToXml(const TNCustomDBStructure &model, QStringList &lines)
{
    // The declaration is written by hand: the stream writer's own adds an
    // encoding, and the document's text is handed on as lines, not bytes.
    QString text = QStringLiteral("<?xml version=\"1.0\"?>");
    TXmlModelWriter(&text).Write(model);
    lines = text.split(QLatin1Char('\n'));
}

} // namespace vm20
