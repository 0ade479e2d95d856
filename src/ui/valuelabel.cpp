#include "ui/valuelabel.h"

#include "model/dsfield.h"
#include "model/fieldtype.h"
#include "query/filtercond.h"
#include "ui/dropdownchecklistbox.h"
#include "ui/dropdowndatetimeedit.h"
#include "ui/dropdownedit.h"
#include "ui/dropdownlistbox.h"
#include "ui/dropdownmaskedit.h"
#include "ui/dropdownpopup.h"

namespace vm20 {

namespace {

TValueLabelKind ByFieldType(TFieldType type)
{
    if (IsIntegerType(type))
        return vlkInteger;
    switch (type) {
    case ftBoolean:
        return vlkBoolean;
    case ftDate:
    case ftDateTime:
    case ftTimeStamp:
    case ftOraTimeStamp:
    case ftTimeStampOffset:
        return vlkDate;
    case ftTime:
        return vlkTime;
    case ftFloat:
    case ftCurrency:
    case ftBCD:
    case ftFMTBcd:
    case ftExtended:
    case ftSingle:
        return vlkFloat;
    default:
        return vlkString;
    }
}

} // namespace

TValueLabelKind ChooseValueLabel(const TValueLabelChoice &c)
{
    const bool listEditor = c.editType == etList || c.editType == etSQL;
    if (c.valueKind == vkSubQuery)
        return vlkSubQuery;
    if (c.valueKind == vkList)
        return listEditor ? vlkCheckList : vlkListText;
    switch (c.editType) {
    case etList:
    case etSQL:
        return c.popupValue ? vlkPopup : vlkListBox;
    case etEdit:
        switch (c.textKind) {
        case tekMask:
            return vlkMask;
        case tekDate:
            return vlkDate;
        case tekTime:
            return vlkTime;
        case tekSimple:
            break;
        }
        return vlkString;
    case etCustom:
        return vlkCustom;
    case etAuto:
        break;
    }
    return ByFieldType(c.fieldType);
}

TValueLabelChoice ValueLabelChoice(const TFilterCond &cond, int index, bool popupValue)
{
    TValueLabelChoice c;
    c.valueKind = cond.GetValueKind(index);
    c.fieldType = cond.GetValueType(index);
    c.popupValue = popupValue;
    if (cond.RowType() == frtSimpleCondition) {
        if (const TDSField *field = static_cast<const TSimpleCond &>(cond).Field()) {
            c.editType = field->EditType();
            if (const auto *text = dynamic_cast<const TDSTextEditor *>(field->ValueEditor()))
                c.textKind = text->Kind();
        }
    }
    return c;
}

TDropDownLabel *MakeValueLabel(TValueLabelKind kind, QWidget *parent)
{
    switch (kind) {
    case vlkCheckList:
        return new TDropDownCheckListBox(parent);
    case vlkPopup:
    case vlkBoolean:
        return new TDropDownPopup(parent);
    case vlkListBox:
        return new TDropDownListBox(parent);
    case vlkMask:
        return new TDropDownMaskEdit(parent);
    case vlkDate:
    case vlkTime: {
        auto *label = new TDropDownDateTimeEdit(parent);
        label->SetKind(kind == vlkDate ? ekDate : ekTime);
        return label;
    }
    case vlkInteger:
    case vlkFloat:
    case vlkString:
    case vlkListText: {
        auto *label = new TDropDownEdit(parent);
        label->SetValueType(kind == vlkInteger ? vtInteger : kind == vlkFloat ? vtFloat : vtString);
        return label;
    }
    case vlkSubQuery:
    case vlkCustom:
        break;
    }
    return new TDropDownLabel(parent);
}

} // namespace vm20
