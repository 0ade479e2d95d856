// Loads arbitrary bytes as a model text, then saves the model and loads that
// text again. Only the library's own exceptions may come out of a load; the
// model must stay usable after any failure, and what it saves must load.
#include "model/dbstructure.h"
#include "support/exception.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace vm20;
    const QStringList lines = SplitAnsiText(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    TNCustomDBStructure model;
    try {
        model.LoadFromStrings(lines);
    } catch (const Exception &) {
    }
    QStringList saved;
    model.SaveToStrings(saved);
    TNCustomDBStructure again;
    try {
        again.LoadFromStrings(saved);
    } catch (const Exception &e) {
        // A field lists its operators joined by commas, so an operator whose
        // name holds a comma cannot be named there; anything else must load.
        for (int i = 0; i < model.GetOperatorCount(); ++i)
            if (model.GetOperator(i)->Name().contains(QLatin1Char(',')))
                return 0;
        std::fprintf(stderr, "saved text does not load: %s\n", e.what());
        std::abort();
    }
    QStringList resaved;
    again.SaveToStrings(resaved);
    return 0;
}
