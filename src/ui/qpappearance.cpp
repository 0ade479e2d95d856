#include "ui/qpappearance.h"

#include "ui/querypanel.h"

namespace vm20 {

TQPAppearance::TQPAppearance(TNQueryPanel *panel) : FQueryPanel(panel) {}

template <typename T>
void TQPAppearance::Set(T &field, const T &value)
{
    if (field == value)
        return;
    field = value;
    if (!FUpdating)
        RefreshPanel();
}

void TQPAppearance::SetActiveRowColor(const QColor &value) { Set(FActiveRowColor, value); }
void TQPAppearance::SetControlBorderColor(const QColor &value) { Set(FControlBorderColor, value); }
void TQPAppearance::SetButtonColor(const QColor &value) { Set(FButtonColor, value); }
void TQPAppearance::SetAddRowColor(const QColor &value) { Set(FAddRowColor, value); }
void TQPAppearance::SetFieldColor(const QColor &value) { Set(FFieldColor, value); }
void TQPAppearance::SetOperatorColor(const QColor &value) { Set(FOperatorColor, value); }
void TQPAppearance::SetValueColor(const QColor &value) { Set(FValueColor, value); }
void TQPAppearance::SetBoolOpColor(const QColor &value) { Set(FBoolOpColor, value); }
void TQPAppearance::SetOptions(TQPAppearanceOptions value) { Set(FOptions, value); }
void TQPAppearance::SetLinkTypes(TFilterLinkTypes value) { Set(FLinkTypes, value); }
void TQPAppearance::SetMainBtnCaption(const QString &value) { Set(FMainBtnCaption, value); }
void TQPAppearance::SetNameSeparator(const QString &value) { Set(FNameSeparator, value); }
void TQPAppearance::SetLogOpStyle(TLogicalOperatorStyle value) { Set(FLogOpStyle, value); }

void TQPAppearance::SetStyle(TQPStyle value)
{
    if (value == psGroups)
        SetLogOpStyle(losHidden);
    else if (FLogOpStyle == losHidden)
        SetLogOpStyle(losAfterCond);
}

void TQPAppearance::EndUpdate()
{
    FUpdating = false;
    RefreshPanel();
}

void TQPAppearance::AssignTo(TQPAppearance &target) const
{
    target.BeginUpdate();
    target.SetActiveRowColor(FActiveRowColor);
    target.SetControlBorderColor(FControlBorderColor);
    target.SetFieldColor(FFieldColor);
    target.SetOperatorColor(FOperatorColor);
    target.SetValueColor(FValueColor);
    target.SetBoolOpColor(FBoolOpColor);
    target.SetOptions(FOptions);
    target.SetLogOpStyle(FLogOpStyle);
    target.EndUpdate();
}

void TQPAppearance::RefreshPanel()
{
    if (FQueryPanel)
        FQueryPanel->RefreshPanel();
}

} // namespace vm20
