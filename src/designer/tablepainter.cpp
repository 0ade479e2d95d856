#include "designer/tablepainter.h"

#include "ui/readablecolor.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace vm20 {

TTableMetrics TTableMetrics::For(const QFont &font)
{
    const QFontMetrics fm(font);
    TTableMetrics m;
    m.TitleHeight = fm.height() + 6;
    m.RowHeight = fm.height() + 2;
    return m;
}

QRect TTableMetrics::ListRect(const QRect &table) const
{
    return table.adjusted(Border, Border + TitleHeight, -Border, -Border);
}

QSize TTableMetrics::DefaultSize(const QFont &font, const QString &title, const QStringList &rows,
                                 int maxRows) const
{
    QFont bold = font;
    bold.setBold(true);
    int textWidth = QFontMetrics(bold).horizontalAdvance(title);
    const QFontMetrics fm(font);
    for (const QString &row : rows)
        textWidth = std::max(textWidth, fm.horizontalAdvance(row));
    // Room for a scroll bar when the rows do not all fit.
    const int scrollRoom = int(rows.size()) > maxRows ? 16 : 0;
    // Slack for devices whose resolution widens the text a little.
    const int width =
        std::clamp(textWidth + textWidth / 10 + 2 * TextPadding + 2 * Border + scrollRoom, 90, 260);
    const int shown = std::clamp(int(rows.size()), 1, maxRows);
    return {width, 2 * Border + TitleHeight + shown * RowHeight + 2};
}

void DrawTableFrame(QPainter *painter, const QRect &table, const QString &title, bool active,
                    const TTableMetrics &metrics, const QPalette &palette)
{
    painter->save();
    painter->setPen(Qt::NoPen);
    painter->setBrush(palette.color(QPalette::Base));
    painter->drawRect(table);
    const QRect titleRect(table.left() + metrics.Border, table.top() + metrics.Border,
                          table.width() - 2 * metrics.Border, metrics.TitleHeight);
    painter->setBrush(active ? palette.color(QPalette::Highlight) : palette.color(QPalette::Button));
    painter->drawRect(titleRect);
    QFont bold = painter->font();
    bold.setBold(true);
    painter->setFont(bold);
    painter->setPen(active ? palette.color(QPalette::HighlightedText)
                           : palette.color(QPalette::ButtonText));
    const QRect textRect = titleRect.adjusted(metrics.TextPadding, 0, -metrics.TextPadding, 0);
    const QString shown =
        painter->fontMetrics().elidedText(title, Qt::ElideRight, textRect.width());
    painter->drawText(textRect, Qt::AlignVCenter | Qt::AlignLeft, shown);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(active ? palette.color(QPalette::Highlight) : MoreContrasting(palette.color(QPalette::Base), palette.color(QPalette::Dark),
                                                                              palette.color(QPalette::Light)),
                         1));
    painter->drawRect(table.adjusted(0, 0, -1, -1));
    painter->restore();
}

void DrawFieldRows(QPainter *painter, const QRect &list, const QStringList &rows, int topIndex,
                   int current, const TTableMetrics &metrics, const QPalette &palette,
                   const QRect &dirty)
{
    painter->save();
    painter->setClipRect(list, Qt::IntersectClip);
    const QFontMetrics fm = painter->fontMetrics();
    int y = list.top();
    for (int i = std::max(0, topIndex); i < rows.size() && y < list.bottom(); ++i) {
        const QRect row(list.left(), y, list.width(), metrics.RowHeight);
        y += metrics.RowHeight;
        if (dirty.isValid() && !dirty.intersects(row))
            continue;
        if (i == current) {
            painter->fillRect(row, palette.color(QPalette::Highlight));
            painter->setPen(palette.color(QPalette::HighlightedText));
        } else {
            painter->setPen(palette.color(QPalette::Text));
        }
        const QRect textRect = row.adjusted(metrics.TextPadding, 0, -metrics.TextPadding, 0);
        painter->drawText(textRect, Qt::AlignVCenter | Qt::AlignLeft,
                          fm.elidedText(rows[i], Qt::ElideRight, textRect.width()));
    }
    painter->restore();
}

} // namespace vm20
