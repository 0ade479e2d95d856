#include "ui/rowlists.h"

#include "model/dbstructure.h"
#include "model/dsfield.h"
#include "model/dsfieldgroup.h"
#include "model/dsoperator.h"
#include "model/valueeditors.h"
#include "ui/dropdownlist.h"

namespace vm20 {

void FillFieldList(TDropDownList &label, const TNCustomDBStructure &model, bool showGroupName,
                   const QString &separator)
{
    label.ClearAll();
    const auto add = [&](const TDSField *field, const QString &group) {
        if (!field->UseInConditions() || field->OperatCount() == 0)
            return;
        const QString text = showGroupName && !group.isEmpty() ? group + separator + field->DisplayName()
                                                               : field->DisplayName();
        label.AddItem(group, QString::number(field->ID()), text);
    };
    const auto addRoots = [&] {
        for (const TDSField *field : model.RootGroup().Fields())
            if (field && !field->Group())
                add(field, QString());
    };
    // Each group in the model's order of groups, its fields in its own order:
    // one sub-menu per group, however the fields were added.
    if (model.RootFieldsFirst())
        addRoots();
    const TDSFieldGroupList &groups = model.FieldGroups();
    for (int g = 0; g < groups.Count(); ++g) {
        const TDSFieldGroup *group = groups.Items(g);
        for (const TDSField *field : group->Fields())
            if (field && field->Group() == group)
                add(field, group->GroupName());
    }
    if (!model.RootFieldsFirst())
        addRoots();
}

void FillOperatorList(TDropDownList &label, const TDSField &field)
{
    label.ClearAll();
    for (const TDSOperator *op : field.Operators())
        label.AddItem(QString(), op->Name(), op->DisplayName());
}

void FillValueList(TDropDownList &label, const TDSListEditor &editor)
{
    label.ClearAll();
    label.AddItems(QString(), editor.Values(), editor.Items());
}

} // namespace vm20
