// The model XML reader on arbitrary text: it builds a model or raises the
// library's exception, and a model it builds writes a document that reads
// back without error and writes the same document again.
#include "model/dbstructure.h"
#include "model/dmxmlformat.h"
#include "support/exception.h"

#include <QString>
#include <QStringList>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    vm20::TNDBStructure model;
    try {
        vm20::LoadDMFromXml(model, text.split(QLatin1Char('\n')));
    } catch (const vm20::Exception &) {
        return 0;
    }
    QStringList saved;
    vm20::SaveDMToXml(model, saved);
    vm20::TNDBStructure again;
    vm20::LoadDMFromXml(again, saved);   // an exception here ends the run: a finding
    QStringList savedAgain;
    vm20::SaveDMToXml(again, savedAgain);
    if (savedAgain != saved)
        std::abort();
    return 0;
}
