#include "ui/dropdownedit.h"

#include "ui/ddlabelerror.h"

#include <QKeyEvent>
#include <QLocale>
#include <QValidator>

namespace vm20 {
namespace {

// Pasted text loses the characters the label's value type refuses, as typed
// keys do.
class TValueTypeValidator : public QValidator
{
public:
    explicit TValueTypeValidator(TDropDownCustomEdit *label)
        : QValidator(label)
        , FLabel(label)
    {
    }

    State validate(QString &input, int &pos) const override
    {
        const QString kept = FilterText(FLabel->ValueType(), input, QLocale().decimalPoint().at(0));
        if (kept.size() != input.size()) {
            pos = std::max<int>(0, pos - int(input.size() - kept.size()));
            input = kept;
        }
        return Acceptable;
    }

private:
    TDropDownCustomEdit *FLabel;
};

} // namespace

void TSilentEdit::keyPressEvent(QKeyEvent *event)
{
    QLineEdit::keyPressEvent(event);
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        event->accept();
}

TDropDownEdit::TDropDownEdit(QWidget *parent)
    : TDropDownCustomEdit(parent)
{
}

TDropDownEdit::~TDropDownEdit()
{
    // The editor is the parent's child: it goes with the label, silently.
    if (FEdit)
        FEdit->removeEventFilter(this);
    delete FEdit.data();
}

void TDropDownEdit::SetMaxLength(int value)
{
    if (value < 0)
        throw EDDLabelError(QStringLiteral("Invalid maximum length: %1").arg(value));
    if (FMaxLength == value)
        return;
    FMaxLength = value;
    ApplyMaxLength();
}

void TDropDownEdit::ApplyMaxLength()
{
    if (FEdit)
        FEdit->setMaxLength(FMaxLength > 0 ? FMaxLength : 32767);
}

void TDropDownEdit::CreateControl()
{
    if (FEdit)
        return;
    FEdit = new TSilentEdit(parentWidget());
    FEdit->setFrame(true);
    FEdit->setValidator(new TValueTypeValidator(this));
    FEdit->setAccessibleName(accessibleName());
    ApplyMaxLength();
    WireEditor(FEdit);
    connect(FEdit, &QLineEdit::textChanged, this, [this] { AdjustPlacement(); });
}

void TDropDownEdit::ShowEditControl()
{
    FEdit->setText(Value());
    FEdit->selectAll();
    FEdit->show();
}

void TDropDownEdit::AcceptInput()
{
    if (FEdit && FEdit->isVisibleTo(FEdit->parentWidget()))
        SetValue(FEdit->text());
}

QString TDropDownEdit::GetEditText() const
{
    return FEdit ? FEdit->text() : QString();
}

void TDropDownEdit::SetEditText(const QString &text)
{
    if (FEdit)
        FEdit->setText(text);
}

} // namespace vm20
