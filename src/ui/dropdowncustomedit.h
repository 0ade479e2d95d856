#pragma once
// Base of the labels that drop down a text box over themselves: the key
// filter, the box that grows with its text, focus loss accepting.
#include "ui/dropdownlabel.h"
#include "ui/keyfilter.h"

namespace vm20 {

class TDropDownCustomEdit : public TDropDownLabel
{
    Q_OBJECT
    Q_PROPERTY(bool AutoUpperCase READ AutoUpperCase WRITE SetAutoUpperCase)
    Q_PROPERTY(bool AutoLowerCase READ AutoLowerCase WRITE SetAutoLowerCase)
    Q_PROPERTY(int ValueType READ ValueType WRITE SetValueType)

public:
    using TChangeValueEvent = std::function<void(QObject *Sender, QString &Value)>;

    explicit TDropDownCustomEdit(QWidget *parent = nullptr);

    bool AutoUpperCase() const { return FOptions & 1; }
    void SetAutoUpperCase(bool value);
    bool AutoLowerCase() const { return FOptions & 2; }
    void SetAutoLowerCase(bool value);
    TValueType ValueType() const { return FValueType; }
    void SetValueType(int value);

    // The editor's rectangle while it shows, else the label's.
    QRect ClientRect() const;
    // The editor, once made (nullptr before the first drop-down).
    virtual QWidget *EditControl() const = 0;

    TChangeValueEvent OnEditDblClick;

protected:
    virtual void EditExit();
    virtual void EditDblClick();
    virtual void AdjustSizes();
    virtual void AdjustPosition();
    virtual void ShowEditControl() = 0;
    virtual QString GetEditText() const = 0;
    virtual void SetEditText(const QString &text) = 0;
    void AdjustPlacement();

    void ShowControl() override;
    void HideControl() override;
    bool IsEditMode() const override;
    void ValueChanged() override;
    void BiDiModeChanged() override;

    // Routes the editor's keys, focus loss and double-click to this label.
    void WireEditor(QWidget *editor);
    bool eventFilter(QObject *watched, QEvent *event) override;
    // Whether typing filters characters by ValueType (date pickers do not).
    virtual bool FiltersKeys() const { return true; }

private:
    TValueType FValueType = vtString;
    int FOptions = 0;
};

} // namespace vm20
