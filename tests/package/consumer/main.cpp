#include <support/nstrings.h>

#include <cstdio>

int main()
{
    // Anything from the core proves headers and library were found.
    const QString text = vm20::XFloatToStr(3.6);
    std::printf("%s\n", qPrintable(text));
    return text == QStringLiteral("3.6") ? 0 : 1;
}
