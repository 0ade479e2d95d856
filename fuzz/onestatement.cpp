// Feeds arbitrary text to the guard that stands before every database driver:
// it either lets the text through or refuses it with the library's own
// error, and what it lets through names SELECT and holds no NUL that would
// cut it short in a driver.
#include "providers/onestatement.h"
#include "support/exception.h"

#include <QString>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    try {
        vm20::CheckOneSelect(text);
    } catch (const vm20::Exception &) {
        return 0;
    }
    if (!text.contains(QLatin1String("select"), Qt::CaseInsensitive) || text.contains(QChar(0)))
        __builtin_trap();
    return 0;
}
