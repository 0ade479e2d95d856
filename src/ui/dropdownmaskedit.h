#pragma once
// The label that drops down a text box with an edit mask.
#include "ui/dropdowncustomedit.h"
#include "ui/editmask.h"

#include <QLineEdit>
#include <QPointer>

namespace vm20 {

class TDropDownMaskEdit : public TDropDownCustomEdit
{
    Q_OBJECT
    Q_PROPERTY(QString EditMask READ EditMask WRITE SetEditMask)
    Q_PROPERTY(bool UseFormattedValue READ UseFormattedValue WRITE SetUseFormattedValue)

public:
    explicit TDropDownMaskEdit(QWidget *parent = nullptr);
    ~TDropDownMaskEdit() override;

    // Raises EDDLabelError for a mask that cannot be read; the old one stays.
    QString EditMask() const { return FEditMask; }
    void SetEditMask(const QString &value);
    // Whether the value keeps the mask's literals.
    bool UseFormattedValue() const { return FUseFormattedValue; }
    void SetUseFormattedValue(bool value) { FUseFormattedValue = value; }

    QWidget *EditControl() const override { return FEdit.data(); }

protected:
    void CreateControl() override;
    void ShowEditControl() override;
    // Raises EDDLabelError while the input does not fill the mask; the label
    // then stays dropped.
    void AcceptInput() override;
    QString GetEditText() const override;
    void SetEditText(const QString &text) override;

private:
    QPointer<QLineEdit> FEdit;
    QString FEditMask;
    TQtEditMask FMask;
    bool FUseFormattedValue = false;
};

} // namespace vm20
