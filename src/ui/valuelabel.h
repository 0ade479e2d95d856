#pragma once
// Which drop-down label shows a condition's value, decided from the field's
// editor and type alone, and the factory that makes it.
#include "model/fieldtype.h"
#include "model/valueeditors.h"
#include "model/vmglobal.h"

#include <memory>

class QWidget;

namespace vm20 {

class TDropDownLabel;
class TDSField;
class TFilterCond;

enum TValueLabelKind {
    vlkSubQuery,   // plain label whose drop-down opens the sub-query dialog
    vlkCheckList,  // list value over a list editor
    vlkListText,   // list value typed as comma text
    vlkPopup,      // one item of a list, from a pop-up menu
    vlkListBox,    // one item of a list, from a list box
    vlkString,
    vlkMask,
    vlkDate,
    vlkTime,
    vlkCustom,     // plain label raising the panel's custom-edit event
    vlkBoolean,    // pop-up of the true and false titles
    vlkInteger,
    vlkFloat
};

struct TValueLabelChoice
{
    TValueKind valueKind = vkScalar;
    TDSEditType editType = etAuto;
    TTextEditorKind textKind = tekSimple;
    TFieldType fieldType = ftString;
    bool popupValue = true;
};

TValueLabelKind ChooseValueLabel(const TValueLabelChoice &c);

// The choice for value `index` (1 or 2) of a condition.
TValueLabelChoice ValueLabelChoice(const TFilterCond &cond, int index, bool popupValue);

// An empty label of that kind, a child of `parent`.
TDropDownLabel *MakeValueLabel(TValueLabelKind kind, QWidget *parent);

} // namespace vm20
