#pragma once
// The library's own default colours (blue and green labels, the navy focus
// frame, black borders and lines, the red of an unresolved name) were picked
// for a light background. On a dark palette they are drawn lighter, keeping
// their hue, so that they stay readable; any other colour is the host's
// choice and is drawn as set.
#include <QColor>

namespace vm20 {

// The contrast ratio of two colours, from 1 (same luminance) to 21.
double ContrastRatio(const QColor &a, const QColor &b);

// Of two shades, the one that stands out more from the background: a frame
// in the palette's dark shade vanishes on a dark background.
QColor MoreContrasting(const QColor &background, const QColor &first, const QColor &second);

// The colour to draw `color` with over `background`.
QColor ReadableOn(const QColor &color, const QColor &background);

} // namespace vm20
