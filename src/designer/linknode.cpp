#include "designer/linknode.h"

#include "support/exception.h"

namespace vm20 {

TLinkNode *TLinkNodes::GetLinkNode(int index) const
{
    if (index < 0 || index >= Count())
        throw EListError::IndexOutOfBounds(index);
    return FNodes[size_t(index)].get();
}

int TLinkNodes::IndexByFieldName(const QString &name) const
{
    for (int i = 0; i < Count(); ++i)
        if (FNodes[size_t(i)]->FieldName.compare(name, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

TLinkNode *TLinkNodes::Add(const QString &fieldName)
{
    auto node = std::make_unique<TLinkNode>();
    node->FieldName = fieldName;
    FNodes.push_back(std::move(node));
    return FNodes.back().get();
}

std::vector<TNodePoint> TLinkNodes::Points() const
{
    std::vector<TNodePoint> points;
    points.reserve(FNodes.size());
    for (const auto &node : FNodes)
        points.push_back(*node);
    return points;
}

} // namespace vm20
