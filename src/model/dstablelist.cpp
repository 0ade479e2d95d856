#include "model/dstablelist.h"

#include "model/dstable.h"
#include "support/exception.h"

#include <QStringList>

#include <algorithm>

namespace vm20 {

TDSTable *TSimpleDSTableList::Items(int index) const
{
    if (index < 0 || index >= Count())
        throw EListError::IndexOutOfBounds(index);
    return FItems[index];
}

void TSimpleDSTableList::Insert(int index, TDSTable *table)
{
    if (index < 0 || index > Count())
        throw EListError::IndexOutOfBounds(index);
    FItems.insert(FItems.begin() + index, table);
}

void TSimpleDSTableList::Erase(int index)
{
    if (index < 0 || index >= Count())
        throw EListError::IndexOutOfBounds(index);
    FItems.erase(FItems.begin() + index);
}

void TSimpleDSTableList::Remove(const TDSTable *table)
{
    FItems.erase(std::remove(FItems.begin(), FItems.end(), table), FItems.end());
}

int TSimpleDSTableList::IndexOf(const TDSTable *table) const
{
    const auto it = std::find(FItems.begin(), FItems.end(), table);
    return it == FItems.end() ? -1 : int(it - FItems.begin());
}

QString TSimpleDSTableList::CommaText() const
{
    QStringList names;
    for (const TDSTable *table : FItems)
        names.append(table->TableName());
    return names.join(QLatin1Char(','));
}

} // namespace vm20
