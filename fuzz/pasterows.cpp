// Feeds arbitrary text to the reader that inserts rows into a bracket of a
// query that already has rows. A text either goes in or raises EConvertError
// leaving the query exactly as it was; rows that went in read back as the
// text of their own copy.
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
    QStringList base;
    TTarget()
    {
        query.SetDBStruct(s.model.get());
        query.AddCondition(nullptr, s.custName);
        query.AddCondition(query.AddBracket(nullptr), s.custCity);
        query.SaveToStrings(base);
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static TTarget target;
    const QStringList lines =
        QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size)).split(QLatin1Char('\n'));
    target.query.LoadFromStrings(target.base);
    auto *bracket = static_cast<TFilterBracket *>(target.query.GetRowByNum(2));
    std::vector<TFilterRow *> pasted;
    try {
        pasted = target.query.InsertRowsFromStrings(bracket, int(size % 2), lines);
    } catch (const EConvertError &) {
        QStringList after;
        target.query.SaveToStrings(after);
        if (after != target.base || target.query.Loading())
            std::abort();
        return 0;
    }
    for (TFilterRow *row : pasted) {
        QStringList copied;
        target.query.SaveRowToStrings(row, copied);
        const std::vector<TFilterRow *> again = target.query.InsertRowsFromStrings(nullptr, 0, copied);
        if (again.size() != 1)
            std::abort();
        QStringList recopied;
        target.query.SaveRowToStrings(again.front(), recopied);
        if (recopied != copied)
            std::abort();
    }
    return 0;
}
