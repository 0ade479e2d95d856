#pragma once
// The label that drops down a plain text box.
#include "ui/dropdowncustomedit.h"

#include <QLineEdit>
#include <QPointer>

namespace vm20 {

// A text box that keeps Enter to itself (no default button fires, no beep).
class TSilentEdit : public QLineEdit
{
    Q_OBJECT
public:
    using QLineEdit::QLineEdit;

protected:
    void keyPressEvent(QKeyEvent *event) override;
};

class TDropDownEdit : public TDropDownCustomEdit
{
    Q_OBJECT
    Q_PROPERTY(int MaxLength READ MaxLength WRITE SetMaxLength)

public:
    explicit TDropDownEdit(QWidget *parent = nullptr);
    ~TDropDownEdit() override;

    // 0: unlimited.
    int MaxLength() const { return FMaxLength; }
    void SetMaxLength(int value);

    QWidget *EditControl() const override { return FEdit.data(); }

protected:
    void CreateControl() override;
    void ShowEditControl() override;
    void AcceptInput() override;
    QString GetEditText() const override;
    void SetEditText(const QString &text) override;

private:
    void ApplyMaxLength();

    QPointer<TSilentEdit> FEdit;
    int FMaxLength = 0;
};

} // namespace vm20
