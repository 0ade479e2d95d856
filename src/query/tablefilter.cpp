#include "query/tablefilter.h"

#include "model/dstable.h"
#include "support/exception.h"
#include "support/nstrings.h"

namespace vm20 {

TNTableFilter *TNTableFilterList::Items(int index) const
{
    if (index < 0 || index >= Count())
        throw EListError::IndexOutOfBounds(index);
    return FItems[std::size_t(index)].get();
}

TNTableFilter *TNTableFilterList::Add(TDSTable *table)
{
    FItems.push_back(std::make_unique<TNTableFilter>(table));
    return FItems.back().get();
}

TNTableFilter *TNTableFilterList::FindByTable(const TDSTable *table) const
{
    for (const auto &item : FItems)
        if (item->Table() == table)
            return item.get();
    return nullptr;
}

void TNTableFilterList::RemoveTable(const TDSTable *table)
{
    std::erase_if(FItems, [table](const auto &item) { return !table || item->Table() == table; });
}

TNTableFilter *TNTableFilterList::FindByTableName(const QString &name) const
{
    for (const auto &item : FItems)
        if (item->Table() && SameText(item->Table()->TableName(), name))
            return item.get();
    return nullptr;
}

} // namespace vm20
