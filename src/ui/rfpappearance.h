#pragma once
// How the result column panel looks. Writing a property only stores it; the
// panel reads the values whenever it places its rows.
#include "ui/rfrowgeometry.h"

#include <QColor>
#include <QString>

namespace vm20 {

class TRFPAppearance
{
public:
    // In bit order: option o is bit (1 << o) of Options().
    enum TRFPAppearanceOption { aoFlatButtons, aoRoundButtons, aoPopupField, aoShowGroupName };
    using TRFPAppearanceOptions = unsigned;
    static constexpr TRFPAppearanceOptions Bit(TRFPAppearanceOption option) { return 1u << option; }

    int LeftMargin() const { return FLeftMargin; }
    void SetLeftMargin(int value) { FLeftMargin = value; }
    int TopMargin() const { return FTopMargin; }
    void SetTopMargin(int value) { FTopMargin = value; }
    int RowSpace() const { return FRowSpace; }
    void SetRowSpace(int value) { FRowSpace = value; }
    int ElemSpace() const { return FElemSpace; }
    void SetElemSpace(int value) { FElemSpace = value; }
    QColor SortColor() const { return FSortColor; }
    void SetSortColor(const QColor &value) { FSortColor = value; }
    QColor FieldColor() const { return FFieldColor; }
    void SetFieldColor(const QColor &value) { FFieldColor = value; }
    TRFPAppearanceOptions Options() const { return FOptions; }
    void SetOptions(TRFPAppearanceOptions value) { FOptions = value; }
    bool Has(TRFPAppearanceOption option) const { return (FOptions & Bit(option)) != 0; }
    void SetOption(TRFPAppearanceOption option, bool on)
    {
        FOptions = on ? (FOptions | Bit(option)) : (FOptions & ~Bit(option));
    }
    QString NameSeparator() const { return FNameSeparator; }
    void SetNameSeparator(const QString &value) { FNameSeparator = value; }

    TRFRowSpacing Spacing() const { return {FLeftMargin, FTopMargin, FRowSpace, FElemSpace}; }

private:
    int FLeftMargin = 5;
    int FTopMargin = 5;
    int FRowSpace = 3;
    int FElemSpace = 5;
    QColor FSortColor = QColor(0, 128, 0);
    QColor FFieldColor = QColor(0, 0, 255);
    TRFPAppearanceOptions FOptions = Bit(aoFlatButtons) | Bit(aoRoundButtons) | Bit(aoPopupField);
    QString FNameSeparator = QStringLiteral(".");
};

} // namespace vm20
