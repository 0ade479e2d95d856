#pragma once
// Where the rows of the result column panel go: pure functions of numbers,
// so that the placement can be checked without widgets.
#include <QPoint>
#include <QRect>
#include <QString>

namespace vm20 {

struct TRFRowSpacing
{
    int LeftMargin = 5;
    int TopMargin = 5;
    int RowSpace = 3;
    int ElemSpace = 5;
};

// The row height for a font whose "1" is textHeight pixels high.
inline int RFRowHeight(int textHeight) { return textHeight + 1; }

// The number button of row `rowIndex`, in viewport pixels.
QRect RFRowButtonRect(const TRFRowSpacing &spacing, int rowIndex, int textHeight, int buttonWidth,
                      QPoint scroll);

// Top-left of the add-row label: under the last row's button, or at the
// margins when there are no rows (lastButton empty).
QPoint RFAddRowLabelPos(const TRFRowSpacing &spacing, const QRect &lastButton, QPoint scroll);

// A left edge laid out left to right, mirrored for a right-to-left panel.
int RFMirrorX(int x, int width, int areaWidth, bool rightToLeft);

// A column formula split at the first "@1": the texts around the field.
// Without "@1" the whole formula leads and there is no field.
struct TRFExpressionParts
{
    QString Leading;
    QString Trailing;
    bool HasField = false;
};
TRFExpressionParts SplitRFExpression(const QString &formula);

} // namespace vm20
