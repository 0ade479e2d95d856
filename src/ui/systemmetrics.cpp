#include "ui/systemmetrics.h"

#include <QApplication>
#include <QFontMetrics>
#include <QMenu>

namespace vm20 {

TNSystemMetrics &TNSystemMetrics::Instance()
{
    static TNSystemMetrics metrics;
    return metrics;
}

// The platform's menu font when the platform names one, else the
// application's general font (the analogue of the stock system font).
TNSystemMetrics::TNSystemMetrics()
    : FMenuFont(QApplication::font("QMenu"))
{
}

int TNSystemMetrics::MenuItemHeight() const
{
    return QFontMetrics(FMenuFont).height() + 4;
}

} // namespace vm20
