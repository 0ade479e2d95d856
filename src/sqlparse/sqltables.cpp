#include "sqlparse/sqltables.h"

#include "support/exception.h"

namespace vm20 {

TSQLTable *TSQLTableList::Items(int index) const
{
    if (index < 0 || index >= Count())
        throw EListError::IndexOutOfBounds(index);
    return FItems[size_t(index)].get();
}

TSQLTable *TSQLTableList::Add(std::unique_ptr<TSQLTable> table)
{
    FItems.push_back(std::move(table));
    return FItems.back().get();
}

} // namespace vm20
