#pragma once
// How a table window looks, shared by the live window and by the rendering
// of a whole diagram into an image or SVG file.
#include <QFont>
#include <QPalette>
#include <QRect>
#include <QString>
#include <QStringList>

class QPainter;

namespace vm20 {

struct TTableMetrics
{
    int Border = 1;
    int TitleHeight = 0;
    int RowHeight = 0;
    int TextPadding = 4;

    static TTableMetrics For(const QFont &font);
    // The part of a table window below its title bar where the fields are.
    QRect ListRect(const QRect &table) const;
    // A size that shows the title and up to `maxRows` fields without cutting
    // their names, within sane bounds.
    QSize DefaultSize(const QFont &font, const QString &title, const QStringList &rows,
                      int maxRows = 12) const;
};

void DrawTableFrame(QPainter *painter, const QRect &table, const QString &title, bool active,
                    const TTableMetrics &metrics, const QPalette &palette);
// Rows from `topIndex` on, clipped to `list`; `current` is highlighted.
// Rows outside `dirty` (when given) are skipped.
void DrawFieldRows(QPainter *painter, const QRect &list, const QStringList &rows, int topIndex,
                   int current, const TTableMetrics &metrics, const QPalette &palette,
                   const QRect &dirty = QRect());

} // namespace vm20
