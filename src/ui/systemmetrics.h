#pragma once
// The process-wide holder of the menu font that pop-up menus measure with.
#include <QFont>

namespace vm20 {

class TNSystemMetrics
{
public:
    // The one instance; created on first use, after the application object.
    static TNSystemMetrics &Instance();

    const QFont &MenuFont() const { return FMenuFont; }
    // Row height of one menu item: the menu font's height of "I" plus 4.
    int MenuItemHeight() const;

private:
    TNSystemMetrics();
    QFont FMenuFont;
};

} // namespace vm20
