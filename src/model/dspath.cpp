#include "model/dspath.h"

#include "support/exception.h"

#include <algorithm>

namespace vm20 {

TDSTable *TDSPath::GetTable(int index) const
{
    if (index < 0 || index >= TableCount())
        throw EListError::IndexOutOfBounds(index);
    return FTables[index];
}

bool TDSPath::Contains(const TDSTable *table) const
{
    return std::find(FTables.begin(), FTables.end(), table) != FTables.end();
}

void TDSPath::DelTable(int index)
{
    if (index < 0 || index >= TableCount())
        throw EListError::IndexOutOfBounds(index);
    FTables.erase(FTables.begin() + index);
}

} // namespace vm20
