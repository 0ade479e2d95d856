// Feeds arbitrary edit masks and typed text to the mask translation and the
// key filters of the value editors: a mask is either translated or refused
// with the library's own error, and stripping a translated mask's literals
// never yields more characters than were shown.
#include "support/exception.h"
#include "ui/editmask.h"
#include "ui/keyfilter.h"

#include <QString>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString input = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    const qsizetype cut = input.indexOf(QLatin1Char('\n'));
    const QString mask = cut < 0 ? input : input.left(cut);
    const QString shown = cut < 0 ? QString() : input.mid(cut + 1);

    for (int type = 0; type < 3; ++type) {
        const QString filtered = vm20::FilterText(vm20::TValueType(type), shown, QLatin1Char(size % 2 ? ',' : '.'));
        if (filtered.size() > shown.size())
            __builtin_trap();
    }
    try {
        const vm20::TQtEditMask translated = vm20::TranslateEditMask(mask);
        if (vm20::StripMaskLiterals(translated, shown).size() > shown.size())
            __builtin_trap();
    } catch (const vm20::Exception &) {
    }
    return 0;
}
