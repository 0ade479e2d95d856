#include "ui/readablecolor.h"

#include <QHash>

#include <algorithm>
#include <array>
#include <cmath>

namespace vm20 {

namespace {

// What text needs to stay readable (the usual figure for body text).
constexpr double MinContrast = 4.5;

double Linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor &color)
{
    return 0.2126 * Linear(color.redF()) + 0.7152 * Linear(color.greenF()) + 0.0722 * Linear(color.blueF());
}

bool IsDefault(const QColor &color)
{
    static const std::array<QColor, 5> defaults = {
        QColor(0, 0, 255), QColor(0, 128, 0), QColor(0, 0, 128), QColor(0, 0, 0), QColor(191, 3, 3)};
    const QRgb rgb = color.rgb();
    return color.alpha() == 255
           && std::any_of(defaults.begin(), defaults.end(), [rgb](const QColor &c) { return c.rgb() == rgb; });
}

} // namespace

double ContrastRatio(const QColor &a, const QColor &b)
{
    const double la = Luminance(a);
    const double lb = Luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

QColor MoreContrasting(const QColor &background, const QColor &first, const QColor &second)
{
    return ContrastRatio(second, background) > ContrastRatio(first, background) ? second : first;
}

namespace {

QColor Lightened(const QColor &color, const QColor &background)
{
    if (ContrastRatio(color, background) >= MinContrast)
        return color;
    // Raising the lightness alone keeps the hue and saturation: blue turns
    // light blue, green light green, black grey.
    const QColor hsl = color.toHsl();
    const bool grey = hsl.hslHueF() < 0;
    const float hue = grey ? 0.0f : hsl.hslHueF();
    const float saturation = grey ? 0.0f : hsl.hslSaturationF();
    for (int step = qRound(hsl.lightnessF() * 100) + 1; step <= 100; ++step) {
        const QColor lighter = QColor::fromHslF(hue, saturation, float(step) / 100.0f).toRgb();
        if (ContrastRatio(lighter, background) >= MinContrast)
            return lighter;
    }
    return QColor(Qt::white);
}

} // namespace

QColor ReadableOn(const QColor &color, const QColor &background)
{
    if (!color.isValid() || !background.isValid() || background.lightnessF() >= 0.5 || !IsDefault(color))
        return color;
    // Every label asks on every paint, and the search takes hundreds of
    // powers; the pairs asked about are few (five colours, a palette's
    // backgrounds), so each is worked out once.
    thread_local QHash<quint64, QColor> known;
    const quint64 key = (quint64(color.rgb()) << 32) | background.rgba();
    if (const auto found = known.constFind(key); found != known.cend())
        return *found == color ? color : *found;
    if (known.size() >= 256)
        known.clear();
    const QColor result = Lightened(color, background);
    known.insert(key, result);
    return result;
}

} // namespace vm20
