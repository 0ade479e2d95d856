#pragma once
// The lists a condition row's labels drop: the model's fields, a field's
// operators and a list editor's items. Filled when first dropped, so that a
// panel of many rows does not build lists nobody opens.
class QString;

namespace vm20 {

class TDropDownList;
class TDSField;
class TDSListEditor;
class TNCustomDBStructure;

// Fields usable in conditions (those with at least one operator): value the
// field's ID, text its caption (prefixed by its group's with showGroupName);
// named groups become sub-menus, root fields before or after them as the
// model's RootFieldsFirst says.
void FillFieldList(TDropDownList &label, const TNCustomDBStructure &model, bool showGroupName,
                   const QString &separator);
// Value the operator's name, text its caption.
void FillOperatorList(TDropDownList &label, const TDSField &field);
void FillValueList(TDropDownList &label, const TDSListEditor &editor);

} // namespace vm20
