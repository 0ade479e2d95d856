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
    const bool rootFirst = model.RootFieldsFirst();
    for (int pass = 0; pass < 2; ++pass) {
        const bool roots = (pass == 0) == rootFirst;
        for (int i = 0; i < model.GetFieldCount(); ++i) {
            const TDSField *field = model.GetField(i);
            if (field->OperatCount() == 0 || (field->Group() == nullptr) != roots)
                continue;
            const QString group = field->Group() ? field->Group()->GroupName() : QString();
            const QString text = showGroupName && !group.isEmpty() ? group + separator + field->DisplayName()
                                                                   : field->DisplayName();
            label.AddItem(group, QString::number(field->ID()), text);
        }
    }
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
