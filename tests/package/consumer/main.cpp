#include <support/nstrings.h>
#include <ui/geometry.h>

#include <cstdio>

int main()
{
    // Anything from the core proves headers and library were found.
    const QString text = vm20::XFloatToStr(3.6);
    std::printf("%s\n", qPrintable(text));
    // And one pure function of the widgets library proves its package too.
    const std::vector<int> breaks = vm20::FitToScreenBreaks(25, 10, vm20::pstFillFirst);
    return text == QStringLiteral("3.6") && breaks == std::vector<int>{10, 20} ? 0 : 1;
}
