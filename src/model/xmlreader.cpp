// Reading the model XML document: parsing, the sections in their fixed order,
// and the model left cleared when anything fails.
#include "model/dbstructure.h"
#include "model/dmxmlformat.h"
#include "model/errors.h"
#include "model/messages.h"
#include "model/xmldom.h"
#include "model/xmlnames.h"
#include "model/xmlreader.h"
#include "support/nstrings.h"

#include <QDomDocument>
#include <QXmlStreamReader>

namespace vm20 {

namespace {

// Deeper documents are refused before a DOM is built for them: building one
// takes time that grows with the square of the nesting (seconds at a few
// ten thousand levels). A model needs eight levels, one more per nested entity.
constexpr int MaxDepth = 256;

void CheckDepth(const QString &text)
{
    QXmlStreamReader reader(text);
    int depth = 0;
    while (!reader.atEnd()) {
        const auto token = reader.readNext();
        if (token == QXmlStreamReader::StartElement && ++depth > MaxDepth)
            XmlFail(QStringLiteral("XML elements nested deeper than %d levels at line %d"),
                    {MaxDepth, int(reader.lineNumber())});
        if (token == QXmlStreamReader::EndElement)
            --depth;
    }
}

QDomDocument Parse(const QStringList &lines)
{
    const QString text = lines.join(QLatin1Char('\n'));
    CheckDepth(text);
    QDomDocument document;
    QString message;
    int line = 0;
    int column = 0;
    if (!document.setContent(text, false, &message, &line, &column))
        XmlFail(QStringLiteral("XML error at line %d, column %d: %s"), {line, column, message});
    return document;
}

QStringList TextLines(const QDomElement &element)
{
    const QString text = element.text();
    return text.isEmpty() ? QStringList() : text.split(QLatin1Char('\n'));
}

class TXmlModelReader
{
public:
    explicit TXmlModelReader(TNCustomDBStructure &model)
        : M(model)
    {
    }

    void Read(const QDomElement &root)
    {
        if (const QDomElement options = XmlChild(root, QStringLiteral("OPTIONS")); !options.isNull())
            ReadOptions(options);
        if (const QDomElement params = XmlChild(root, QStringLiteral("DBPARAMS")); !params.isNull())
            ReadDBParams(params);
        if (const QDomElement description = XmlChild(root, QStringLiteral("DESCRIPTION")); !description.isNull())
            M.SetDescription(TextLines(description));
        if (const QDomElement info = XmlChild(root, QStringLiteral("CUSTOMINFO")); !info.isNull())
            M.SetCustomInfo(TextLines(info));
        if (const QDomElement operators = XmlChild(root, QStringLiteral("OPERATORS")); !operators.isNull())
            ReadOperators(operators);
        if (const QDomElement tables = XmlChild(root, QStringLiteral("TABLES")); !tables.isNull())
            ReadTables(tables);
        if (const QDomElement links = XmlChild(root, QStringLiteral("LINKS")); !links.isNull())
            ReadLinks(links);
        if (const QDomElement entities = XmlChild(root, QStringLiteral("ENTITIES")); !entities.isNull())
            XmlReadEntities(M, entities);
    }

private:
    // Only the provider's description is taken from the options: one
    // name=value line per text element, with environment references expanded
    // so that a document can point at the machine it is opened on.
    void ReadOptions(const QDomElement &options)
    {
        const QDomElement info = XmlChild(options, QStringLiteral("DBINFO"));
        if (info.isNull())
            return;
        QStringList lines;
        for (QDomElement item = info.firstChildElement(); !item.isNull(); item = item.nextSiblingElement())
            if (!XmlHasChildElements(item))
                lines.append(XmlLocalName(item) + QLatin1Char('=') + ExpandEnvironmentReferences(item.text()));
        M.SetDBSpecInfo(lines);
        M.UpdateDatabaseInfo();
    }

    void ReadDBParams(const QDomElement &params)
    {
        for (const char *name : {"DSN", "UserName", "Password"}) {
            const QDomElement value = XmlChild(params, QLatin1String(name));
            if (!value.isNull())
                SetValueOf(M.DBParams(), QLatin1String(name), value.text());
        }
    }

    void ReadOperators(const QDomElement &operators)
    {
        for (const QDomElement &element : XmlChildren(operators, QStringLiteral("OPERATOR"))) {
            const QString name = XmlRequiredAttr(element, QStringLiteral("id"));
            const QString kindName = XmlAttr(element, QStringLiteral("kind"), ValueKindToStr(vkScalar));
            const TValueKind kind = StrToValueKind(kindName);
            if (int(kind) < 0)
                XmlFail(QStringLiteral("Unknown value kind \"%s\" of operator \"%s\""), {kindName, name});
            TFieldTypes types;
            for (const QDomElement &type : XmlChildren(XmlChild(element, QStringLiteral("TYPES")),
                                                       QStringLiteral("TYPE")))
                types.include(ReadType(type.text().trimmed(), type));
            const int index = M.AddOperator(name, XmlAttr(element, QStringLiteral("caption")),
                                            XmlAttr(element, QStringLiteral("expr")),
                                            XmlAttr(element, QStringLiteral("format")), types);
            M.GetOperator(index)->SetValueKind(kind);
        }
        // The placeholder for fields a query names but the model lacks takes
        // every operator.
        TDSField *placeholder = M.UnrecognizedField();
        placeholder->ClearOperators();
        for (int i = 0; i < M.GetOperatorCount(); ++i)
            placeholder->AddOperator(M.GetOperator(i));
    }

    static TFieldType ReadType(const QString &name, const QDomElement &element)
    {
        const TFieldType type = XmlNameToType(name);
        if (int(type) < 0)
            XmlFail(QStringLiteral("Unknown data type \"%s\" at line %d"), {name, element.lineNumber()});
        return type;
    }

    void ReadTables(const QDomElement &tables)
    {
        for (const QDomElement &element : XmlChildren(tables, QStringLiteral("TABLE"))) {
            const QString name = XmlRequiredAttr(element, QStringLiteral("name"));
            // The document has no caption for a table; its name stands in.
            TDSTable *table = M.GetTable(M.AddTable(name, name));
            const QString alias = XmlAttr(element, QStringLiteral("alias"));
            if (!alias.isEmpty())
                table->SetTableAlias(alias);
            table->SetDatabaseName(XmlAttr(element, QStringLiteral("db")));
            table->SetTableHints(XmlAttr(element, QStringLiteral("hints")));
            // Nor a quoting flag: a name with a blank cannot go into SQL unquoted.
            table->SetQuoted(name.contains(QLatin1Char(' ')));
        }
    }

    void ReadLinks(const QDomElement &links)
    {
        for (const QDomElement &element : XmlChildren(links, QStringLiteral("LINK"))) {
            auto link = std::make_unique<TDSLink>(&M);
            link->SetTable1(LinkTable(element, QStringLiteral("table1")));
            link->SetTable2(LinkTable(element, QStringLiteral("table2")));
            link->SetLinkType(XmlNameToLinkType(XmlAttr(element, QStringLiteral("type"))));
            link->SetQuoteFields(XmlBoolAttr(element, QStringLiteral("QF"), false));
            for (const QDomElement &condition : XmlChildren(element, QStringLiteral("CONDITION")))
                ReadCondition(condition, *link);
            M.AddLinkByRef(std::move(link));
        }
    }

    TDSTable *LinkTable(const QDomElement &element, const QString &attribute) const
    {
        const QString name = XmlRequiredAttr(element, attribute);
        TDSTable *table = XmlFindTable(M, name);
        if (!table)
            throw ENDBStructError(dbseNoTable, SDBSENoTable, {name});
        return table;
    }

    // A column goes into the link as its plain name, a constant with "val:".
    static void ReadCondition(const QDomElement &condition, TDSLink &link)
    {
        const QString type = XmlAttr(condition, QStringLiteral("type"), QStringLiteral("FF")).trimmed().toUpper();
        if (type.size() != 2 || !QStringLiteral("FC").contains(type[0]) || !QStringLiteral("FC").contains(type[1]))
            XmlFail(QStringLiteral("Join condition type \"%s\" at line %d is not two of the letters F and C"),
                    {type, condition.lineNumber()});
        const auto operand = [&](QChar letter, const QString &attribute) {
            const QString expr = XmlRequiredAttr(condition, attribute);
            return letter == QLatin1Char('C') ? QStringLiteral("val:") + expr : expr;
        };
        link.Fields1().append(operand(type[0], QStringLiteral("expr1")));
        link.Fields2().append(operand(type[1], QStringLiteral("expr2")));
        link.Operators().append(XmlAttr(condition, QStringLiteral("op"), QStringLiteral("=")));
    }

    TNCustomDBStructure &M;
};

void ClearModel(TNCustomDBStructure &model)
{
    model.ClearStructure();
    model.ClearOperators();
}

} // namespace

TDSTable *XmlFindTable(const TNCustomDBStructure &model, const QString &name)
{
    if (TDSTable *table = model.TableByName(1, name))
        return table;
    return model.TableByName(0, name);
}

void LoadDMFromXml(TNCustomDBStructure &model, const QStringList &lines)
{
    const bool updating = model.Updating();
    model.BeginUpdate();
    try {
        ClearModel(model);
        const QDomDocument document = Parse(lines);
        TXmlModelReader(model).Read(document.documentElement());
    } catch (...) {
        ClearModel(model);
        if (!updating)
            model.EndUpdate();
        model.Changed();
        throw;
    }
    if (!updating)
        model.EndUpdate();
    model.Changed();
}

} // namespace vm20
