#pragma once
// The label that drops down a date or time picker. Its value is the day
// count text of the stored date format; its caption the locale's date or time.
#include "ui/dropdowncustomedit.h"

#include <QDateTimeEdit>
#include <QPointer>

namespace vm20 {

enum TDateTimeEditKind : int { ekTime, ekDate };

class TDropDownDateTimeEdit : public TDropDownCustomEdit
{
    Q_OBJECT
    Q_PROPERTY(int Kind READ Kind WRITE SetKind)

public:
    explicit TDropDownDateTimeEdit(QWidget *parent = nullptr);
    ~TDropDownDateTimeEdit() override;

    TDateTimeEditKind Kind() const { return FKind; }
    void SetKind(int value);

    QWidget *EditControl() const override { return FEdit.data(); }

    // The value's date and time: from the day count text or the locale's
    // date or time text. Raises EConvertError for anything else.
    static QDateTime ParseValue(const QString &value, TDateTimeEditKind kind);

protected:
    void CreateControl() override;
    void ShowEditControl() override;
    void AcceptInput() override;
    void ValueChanged() override;
    void AdjustSizes() override;
    QString GetEditText() const override;
    void SetEditText(const QString &text) override;
    bool FiltersKeys() const override { return false; }

private:
    void ApplyKind();

    QPointer<QDateTimeEdit> FEdit;
    TDateTimeEditKind FKind = ekDate;
};

} // namespace vm20
