#include "ui/rfrowgeometry.h"

namespace vm20 {

QRect RFRowButtonRect(const TRFRowSpacing &spacing, int rowIndex, int textHeight, int buttonWidth,
                      QPoint scroll)
{
    const int height = RFRowHeight(textHeight);
    const int top = rowIndex * (spacing.RowSpace + height) + spacing.TopMargin - scroll.y();
    return QRect(spacing.LeftMargin - scroll.x(), top, buttonWidth, height);
}

QPoint RFAddRowLabelPos(const TRFRowSpacing &spacing, const QRect &lastButton, QPoint scroll)
{
    if (lastButton.isEmpty())
        return QPoint(spacing.LeftMargin - scroll.x(), spacing.TopMargin - scroll.y());
    return QPoint(lastButton.left(), lastButton.top() + lastButton.height() + spacing.RowSpace + 2);
}

int RFMirrorX(int x, int width, int areaWidth, bool rightToLeft)
{
    return rightToLeft ? areaWidth - x - width : x;
}

TRFExpressionParts SplitRFExpression(const QString &formula)
{
    const qsizetype at = formula.indexOf(QLatin1String("@1"));
    if (at < 0)
        return {formula, QString(), false};
    return {formula.left(at), formula.mid(at + 2), true};
}

} // namespace vm20
