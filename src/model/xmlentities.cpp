// Reading the <Entities> tree of a model XML document: every entity becomes a
// field group (the root entity the model's root group), every Attr a field.
#include "model/dbstructure.h"
#include "model/errors.h"
#include "model/xmldom.h"
#include "model/xmlnames.h"
#include "model/xmlreader.h"
#include "support/nstrings.h"

#include <QSet>

#include <algorithm>
#include <climits>
#include <memory>
#include <vector>

namespace vm20 {

namespace {

// A field read from the document but not yet in the model.
struct TPendingField
{
    std::unique_ptr<TDSField> Field;
    TDSFieldGroup *Group;   // none for the root group
};

class TEntityReader
{
public:
    explicit TEntityReader(TNCustomDBStructure &model)
        : M(model)
    {
    }

    void Read(const QDomElement &entities)
    {
        // Pre-order walk with a stack of its own: group order is document
        // order, and no nesting depth can exhaust the call stack.
        std::vector<QDomElement> stack;
        PushEntities(entities, stack);
        while (!stack.empty()) {
            const QDomElement entity = stack.back();
            stack.pop_back();
            TDSFieldGroup *group = GroupOf(XmlAttr(entity, QStringLiteral("name")));
            for (const QDomElement &attr : XmlChildren(entity, QStringLiteral("ATTR")))
                FPending.push_back({ReadField(attr), group});
            PushEntities(entity, stack);
        }
        AddFields();
    }

private:
    // Pushed in reverse so that they come off the stack in document order.
    static void PushEntities(const QDomElement &parent, std::vector<QDomElement> &stack)
    {
        const std::size_t first = stack.size();
        for (QDomElement child = parent.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
            if (XmlIsNamed(child, QStringLiteral("ENTITY")) || XmlIsNamed(child, QStringLiteral("GROUP")))
                stack.push_back(child);
        std::reverse(stack.begin() + std::ptrdiff_t(first), stack.end());
    }

    // Entities of the same name share one group.
    TDSFieldGroup *GroupOf(const QString &name)
    {
        if (name.isEmpty() || SameText(name, XmlRootEntityName))
            return nullptr;
        if (TDSFieldGroup *group = M.FieldGroups().FindByName(name))
            return group;
        return M.FieldGroups().AddGroup(name);
    }

    std::unique_ptr<TDSField> ReadField(const QDomElement &attr)
    {
        auto field = std::make_unique<TDSField>(&M);
        ReadID(attr, *field);
        const QString kindName = XmlAttr(attr, QStringLiteral("kind"), FldKindToStr(nfkData));
        const TNFieldKind kind = StrToFldKind(kindName);
        if (int(kind) < 0)
            XmlFail(QStringLiteral("Unknown field kind \"%s\" at line %d"), {kindName, attr.lineNumber()});
        const QString expr = XmlRequiredAttr(attr, QStringLiteral("expr"));
        field->SetFieldKind(kind);
        field->SetDisplayName(XmlAttr(attr, QStringLiteral("caption"), expr));
        if (kind == nfkVirtual) {
            // Its tables follow from the expression, as when it was built.
            field->SetSQLExpr(expr);
            field->SetIsAggregate(TNCustomDBStructure::CheckIfAggregate(expr));
        } else {
            field->SetFieldExpr(expr);
            field->SetQuoted(expr.contains(QLatin1Char(' ')));
            if (TDSTable *table = DataFieldTable(attr, expr))
                field->Tables().Add(table);
        }
        const QString typeName = XmlAttr(attr, QStringLiteral("type"), XmlTypeName(ftUnknown));
        const TFieldType type = XmlNameToType(typeName);
        if (int(type) < 0)
            XmlFail(QStringLiteral("Unknown data type \"%s\" at line %d"), {typeName, attr.lineNumber()});
        field->SetFieldType(type);
        field->SetFieldSize(XmlIntAttr(attr, QStringLiteral("size"), 0));
        field->SetUseInResult(XmlBoolAttr(attr, QStringLiteral("UIR"), true));
        QString userData;
        if (XmlFindAttr(attr, QStringLiteral("userData"), userData))
            field->SetUserData(userData);
        ReadOperators(attr, *field);
        ReadEditor(attr, *field);
        return field;
    }

    // Ids are kept: saved queries name fields by them. A field without one
    // (or with 0) gets the next free id when it is added.
    void ReadID(const QDomElement &attr, TDSField &field)
    {
        const int id = XmlIntAttr(attr, QStringLiteral("id"), 0);
        if (id < 0)
            XmlFail(QStringLiteral("Invalid field id %d at line %d"), {id, attr.lineNumber()});
        if (id == 0)
            return;
        if (FIDs.contains(id))
            XmlFail(QStringLiteral("Duplicate field id %d at line %d"), {id, attr.lineNumber()});
        FIDs.insert(id);
        field.SetID(id);
    }

    // The first of the field's tables ("tables", or "table" in older documents).
    TDSTable *DataFieldTable(const QDomElement &attr, const QString &expr) const
    {
        QString tables;
        if (!XmlFindAttr(attr, QStringLiteral("tables"), tables))
            tables = XmlAttr(attr, QStringLiteral("table"));
        const QStringList names = ComposeCommaText(tables);
        if (names.isEmpty() || names.first().isEmpty())
            return nullptr;
        TDSTable *table = XmlFindTable(M, names.first());
        if (!table)
            throw ENDBStructError(dbseNoTable, QStringLiteral("Can not find table \"%s\" for field \"%s\""),
                                  {names.first(), expr});
        return table;
    }

    // Without an <Operators> element a field takes those that apply to its
    // type; with one, exactly those listed. A field left without operators
    // is not offered for conditions.
    static void ReadOperators(const QDomElement &attr, TDSField &field)
    {
        const bool useInConditions = XmlBoolAttr(attr, QStringLiteral("UIC"), true);
        const QDomElement operators = XmlChild(attr, QStringLiteral("OPERATORS"));
        if (operators.isNull()) {
            if (useInConditions)
                field.AddAppliedOperators();
        } else {
            for (const QDomElement &op : XmlChildren(operators, QStringLiteral("OPERATOR")))
                field.AddOperatorByName(op.text().trimmed());
        }
        field.SetUseInConditions(useInConditions && field.OperatCount() > 0);
    }

    static void ReadEditor(const QDomElement &attr, TDSField &field)
    {
        const QDomElement editor = XmlChild(XmlChild(attr, QStringLiteral("EDITORS")), QStringLiteral("DEFAULT"));
        if (editor.isNull())
            return;
        const QString typeName = XmlRequiredAttr(editor, QStringLiteral("type"));
        const TDSEditType type = XmlNameToEditor(typeName);
        if (int(type) < 0)
            XmlFail(QStringLiteral("Unknown editor type \"%s\" at line %d"), {typeName, editor.lineNumber()});
        field.SetEditType(type);
        const QList<QDomElement> values =
            XmlChildren(XmlChild(editor, QStringLiteral("VALUES")), QStringLiteral("VALUE"));
        if (auto *sql = dynamic_cast<TDSSQLEditor *>(field.ValueEditor())) {
            sql->SetSQLText(XmlChild(editor, QStringLiteral("SQL")).text());
        } else if (auto *list = dynamic_cast<TDSListEditor *>(field.ValueEditor())) {
            for (const QDomElement &value : values) {
                list->Items().append(XmlAttr(value, QStringLiteral("text")));
                list->Values().append(XmlAttr(value, QStringLiteral("id")));
            }
        } else if (auto *custom = dynamic_cast<TDSCustomEditor *>(field.ValueEditor())) {
            for (const QDomElement &value : values)
                custom->Data().append(XmlAttr(value, QStringLiteral("text")));
        }
    }

    // Fields go into the model in id order (those without an id last), so a
    // model built in id order comes back in its order; groups take their
    // members in document order.
    void AddFields()
    {
        std::vector<TDSField *> documentOrder;
        documentOrder.reserve(FPending.size());
        for (const TPendingField &pending : FPending)
            documentOrder.push_back(pending.Field.get());
        std::vector<TDSFieldGroup *> groups;
        groups.reserve(FPending.size());
        for (const TPendingField &pending : FPending)
            groups.push_back(pending.Group);

        std::stable_sort(FPending.begin(), FPending.end(), [](const TPendingField &a, const TPendingField &b) {
            const auto key = [](const TPendingField &p) { return p.Field->ID() == 0 ? INT_MAX : p.Field->ID(); };
            return key(a) < key(b);
        });
        for (TPendingField &pending : FPending)
            M.AddFieldRef(std::move(pending.Field));
        FPending.clear();

        // Named groups first, while the root group is empty and leaving it is
        // free, then the root group.
        M.RootGroup().Clear();
        for (std::size_t i = 0; i < documentOrder.size(); ++i)
            if (groups[i])
                documentOrder[i]->SetGroup(groups[i]);
        for (std::size_t i = 0; i < documentOrder.size(); ++i)
            if (!groups[i])
                M.RootGroup().Add(documentOrder[i]);
    }

    TNCustomDBStructure &M;
    std::vector<TPendingField> FPending;
    QSet<int> FIDs;
};

} // namespace

void XmlReadEntities(TNCustomDBStructure &model, const QDomElement &entities)
{
    TEntityReader(model).Read(entities);
}

} // namespace vm20
