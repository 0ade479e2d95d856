#include "ui/dropdowndatetimeedit.h"

#include "ui/ddlabelerror.h"
#include "support/dattime.h"
#include "support/exception.h"

#include <QLineEdit>
#include <QLocale>

namespace vm20 {

TDropDownDateTimeEdit::TDropDownDateTimeEdit(QWidget *parent)
    : TDropDownCustomEdit(parent)
{
}

TDropDownDateTimeEdit::~TDropDownDateTimeEdit()
{
    // The editor is the parent's child: it goes with the label, silently.
    if (FEdit)
        FEdit->removeEventFilter(this);
    delete FEdit.data();
}

void TDropDownDateTimeEdit::SetKind(int value)
{
    if (value != ekTime && value != ekDate)
        throw EDDLabelError(QStringLiteral("Invalid date-time kind: %1").arg(value));
    if (FKind == value)
        return;
    FKind = TDateTimeEditKind(value);
    ApplyKind();
    ValueChanged();
}

QDateTime TDropDownDateTimeEdit::ParseValue(const QString &value, TDateTimeEditKind kind)
{
    TDateTime stamp = 0;
    try {
        stamp = VmStrToDateTime(value);
    } catch (const EConvertError &) {
        stamp = kind == ekDate ? StrToDate(value) : StrToTime(value);
    }
    QDate date;
    QTime time;
    if (!DecodeDateTime(stamp, date, time))
        throw EConvertError(QStringLiteral("'%1' is not a valid date and time").arg(value));
    return QDateTime(date.isValid() ? date : QDate(1899, 12, 30), time.isValid() ? time : QTime(0, 0));
}

void TDropDownDateTimeEdit::ApplyKind()
{
    if (!FEdit)
        return;
    const QLocale locale;
    FEdit->setDisplayFormat(FKind == ekDate ? locale.dateFormat(QLocale::ShortFormat)
                                            : locale.timeFormat(QLocale::ShortFormat));
    FEdit->setCalendarPopup(FKind == ekDate);
}

void TDropDownDateTimeEdit::CreateControl()
{
    if (FEdit)
        return;
    FEdit = new QDateTimeEdit(parentWidget());
    FEdit->setDateRange(QDate(100, 1, 1), QDate(9999, 12, 31));
    ApplyKind();
    WireEditor(FEdit);
}

void TDropDownDateTimeEdit::ShowEditControl()
{
    if (Value().isEmpty())
        FEdit->setDateTime(QDateTime::currentDateTime());
    else
        FEdit->setDateTime(ParseValue(Value(), FKind));
    FEdit->show();
}

void TDropDownDateTimeEdit::AcceptInput()
{
    if (!FEdit || !FEdit->isVisibleTo(FEdit->parentWidget()))
        return;
    const QDateTime picked = FEdit->dateTime();
    const TDateTime stamp = FKind == ekDate ? ComposeDateTime(picked.date(), QTime())
                                             : ComposeDateTime(QDate(1899, 12, 30), picked.time());
    SetValue(VmDateTimeToStr(stamp));
}

void TDropDownDateTimeEdit::ValueChanged()
{
    if (Value().isEmpty()) {
        SetCaption(QString());
        return;
    }
    // A value that does not read as a date shows as written.
    try {
        const TDateTime stamp = QDateTimeToDateTime(ParseValue(Value(), FKind));
        SetCaption(FKind == ekDate ? DateToStr(stamp) : TimeToStr(stamp));
    } catch (const Exception &) {
        SetCaption(Value());
    }
}

void TDropDownDateTimeEdit::AdjustSizes()
{
    // The picker takes the room its own format needs, never less than the label.
    const QSize hint = FEdit->sizeHint();
    FEdit->resize(std::max(hint.width(), width()), hint.height());
}

QString TDropDownDateTimeEdit::GetEditText() const
{
    return FEdit ? FEdit->text() : QString();
}

void TDropDownDateTimeEdit::SetEditText(const QString &text)
{
    if (FEdit)
        FEdit->setDateTime(ParseValue(text, FKind));
}

} // namespace vm20
