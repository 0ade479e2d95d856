// Feeds arbitrary text to the query text reader on a small model. A text
// either loads or raises EConvertError (leaving the query cleared); a loaded
// query must save a text that loads back to the same text.
#include "../tests/query/shopmodel.h"
#include "query/query.h"
#include "support/exception.h"

#include <cstdint>
#include <cstdlib>

using namespace vm20;

namespace {

struct TTarget
{
    shop::ShopModel s = shop::MakeShopModel();
    TNQuery query;
    TNQuery copy;
    TTarget()
    {
        query.SetDBStruct(s.model.get());
        copy.SetDBStruct(s.model.get());
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static TTarget target;
    const QStringList lines =
        QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size)).split(QLatin1Char('\n'));
    // The titles path and the older-titles path both get their turn; every
    // input starts from the default titles.
    target.query.LoadDefTitles();
    target.copy.LoadDefTitles();
    target.query.SetSaveTitles(size % 2 == 1);
    target.query.SetVersion(size % 3 == 0 ? 1.0 : 3.6);
    try {
        target.query.LoadFromStrings(lines);
    } catch (const EConvertError &) {
        if (target.query.GetRowCount() != 1 || target.query.Loading() || !target.query.Active())
            std::abort();   // a failed load leaves a cleared, usable query
        return 0;
    }
    QStringList saved;
    target.query.SaveToStrings(saved);
    target.copy.SetSaveTitles(target.query.SaveTitles());
    target.copy.LoadFromStrings(saved);
    QStringList again;
    target.copy.SaveToStrings(again);
    if (again != saved)
        std::abort();
    return 0;
}
