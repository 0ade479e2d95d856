#pragma once
// How a condition panel looks: colours, options and the logical-operator
// style. Bound to a panel, every real change rebuilds the panel's rows
// (unless an update is in force); unbound, it only holds values (the
// appearance handed to sub-query panels).
#include "query/filterrow.h"
#include "support/typeset.h"

#include <QColor>
#include <QString>

namespace vm20 {

class TNQueryPanel;

enum TLogicalOperatorStyle { losHidden, losBeforeCond, losAfterCond };
enum TQPStyle { psGroups, psAndOr };
enum TSubQueryHint { sqhNone, sqhText, sqhSQL };

class TQPAppearance
{
public:
    enum TQPAppearanceOption {
        aoFlatButtons,
        aoRoundButtons,
        aoNonEmptyBrackets,
        aoPopupField,
        aoPopupValue,
        aoShowGroupName,
        aoAllowKeyboard,
        aoSortListData,
        aoShowAddRow,
        aoShowCheckBoxes,
        aoAllowParams,
        aoDisableRFieldExpr,
        aoHideRowButtons,
        aoShowGroupRows,
        aoHideRootRow,
        aoFieldsMenuOnAdd
    };
    using TQPAppearanceOptions = TSet<TQPAppearanceOption>;
    static constexpr std::uint64_t DefaultOptionsMask = 0x875F;

    explicit TQPAppearance(TNQueryPanel *panel = nullptr);
    TQPAppearance(const TQPAppearance &) = delete;
    TQPAppearance &operator=(const TQPAppearance &) = delete;

    TNQueryPanel *QueryPanel() const { return FQueryPanel; }

    // An invalid colour stands for the palette's light (button-highlight)
    // colour, read when painting.
    QColor ActiveRowColor() const { return FActiveRowColor; }
    void SetActiveRowColor(const QColor &value);
    QColor ControlBorderColor() const { return FControlBorderColor; }
    void SetControlBorderColor(const QColor &value);
    // An invalid colour leaves the buttons in the palette's button colour.
    QColor ButtonColor() const { return FButtonColor; }
    void SetButtonColor(const QColor &value);
    QColor AddRowColor() const { return FAddRowColor; }
    void SetAddRowColor(const QColor &value);
    QColor FieldColor() const { return FFieldColor; }
    void SetFieldColor(const QColor &value);
    QColor OperatorColor() const { return FOperatorColor; }
    void SetOperatorColor(const QColor &value);
    QColor ValueColor() const { return FValueColor; }
    void SetValueColor(const QColor &value);
    QColor BoolOpColor() const { return FBoolOpColor; }
    void SetBoolOpColor(const QColor &value);
    TQPAppearanceOptions Options() const { return FOptions; }
    void SetOptions(TQPAppearanceOptions value);
    bool Has(TQPAppearanceOption option) const { return FOptions.contains(option); }
    TFilterLinkTypes LinkTypes() const { return FLinkTypes; }
    void SetLinkTypes(TFilterLinkTypes value);
    QString MainBtnCaption() const { return FMainBtnCaption; }
    void SetMainBtnCaption(const QString &value);
    QString NameSeparator() const { return FNameSeparator; }
    void SetNameSeparator(const QString &value);
    TLogicalOperatorStyle LogOpStyle() const { return FLogOpStyle; }
    void SetLogOpStyle(TLogicalOperatorStyle value);
    // psGroups while the logical operators are hidden; psAndOr shows them
    // after the condition unless they already stand before it.
    TQPStyle Style() const { return FLogOpStyle == losHidden ? psGroups : psAndOr; }
    void SetStyle(TQPStyle value);

    void BeginUpdate() { FUpdating = true; }
    // Ends the update and always rebuilds the bound panel.
    void EndUpdate();
    // Copies the colours of rows and labels, the options and the
    // logical-operator style; the add-row and button colours, link types,
    // main button caption and name separator stay the target's own.
    void AssignTo(TQPAppearance &target) const;
    void RefreshPanel();

private:
    template <typename T>
    void Set(T &field, const T &value);

    TNQueryPanel *FQueryPanel;
    bool FUpdating = false;
    QColor FActiveRowColor;
    QColor FControlBorderColor = Qt::black;
    QColor FButtonColor;
    QColor FAddRowColor = QColor(0, 0, 255);
    QColor FFieldColor = QColor(0, 0, 255);
    QColor FOperatorColor = QColor(0, 0, 255);
    QColor FValueColor = QColor(0, 0, 255);
    QColor FBoolOpColor = QColor(0, 0, 255);
    TQPAppearanceOptions FOptions = TQPAppearanceOptions::fromMask(DefaultOptionsMask);
    TFilterLinkTypes FLinkTypes = {fltAll, fltAny, fltNone, fltNotAll};
    QString FMainBtnCaption;
    QString FNameSeparator = QStringLiteral(".");
    TLogicalOperatorStyle FLogOpStyle = losHidden;
};

} // namespace vm20
