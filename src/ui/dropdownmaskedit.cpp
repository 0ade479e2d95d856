#include "ui/dropdownmaskedit.h"

#include "ui/ddlabelerror.h"

namespace vm20 {

TDropDownMaskEdit::TDropDownMaskEdit(QWidget *parent)
    : TDropDownCustomEdit(parent)
{
}

TDropDownMaskEdit::~TDropDownMaskEdit()
{
    // The editor is the parent's child: it goes with the label, silently.
    if (FEdit)
        FEdit->removeEventFilter(this);
    delete FEdit.data();
}

void TDropDownMaskEdit::SetEditMask(const QString &value)
{
    if (FEditMask == value)
        return;
    FMask = TranslateEditMask(value);
    FEditMask = value;
}

void TDropDownMaskEdit::CreateControl()
{
    if (FEdit)
        return;
    FEdit = new QLineEdit(parentWidget());
    WireEditor(FEdit);
}

void TDropDownMaskEdit::ShowEditControl()
{
    FEdit->setInputMask(FMask.inputMask);
    if (Caption() != QLatin1String(EmptyCaption)) {
        if (!FUseFormattedValue)
            FEdit->setText(Value());
        FEdit->setText(FUseFormattedValue ? Value() : Caption());
    } else {
        FEdit->clear();
    }
    FEdit->setCursorPosition(0);
    FEdit->show();
}

void TDropDownMaskEdit::AcceptInput()
{
    if (!FEdit || !FEdit->isVisibleTo(FEdit->parentWidget()))
        return;
    if (!FEdit->hasAcceptableInput())
        throw EDDLabelError(QStringLiteral("Invalid input value. Use the Escape key to abandon changes"));
    const QString shown = FEdit->displayText();
    QString formatted = shown;
    formatted.replace(FMask.blank, QLatin1Char(' '));
    formatted = formatted.trimmed();
    // The plain text keeps the literals only when the mask says so.
    const bool literals = FUseFormattedValue || FMask.saveLiterals;
    SetValue(literals ? formatted : StripMaskLiterals(FMask, shown));
    SetCaption(formatted);
}

QString TDropDownMaskEdit::GetEditText() const
{
    return FEdit ? FEdit->displayText() : QString();
}

void TDropDownMaskEdit::SetEditText(const QString &text)
{
    if (FEdit)
        FEdit->setText(text);
}

} // namespace vm20
