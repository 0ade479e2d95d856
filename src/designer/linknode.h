#pragma once
// The end points of a drawn link on one side: one node per linked field.
#include "designer/diagramgeometry.h"

#include <QString>

#include <memory>
#include <vector>

namespace vm20 {

struct TLinkNode : TNodePoint
{
    QString FieldName;
};

class TLinkNodes
{
public:
    int Count() const { return int(FNodes.size()); }
    TLinkNode *GetLinkNode(int index) const;   // EListError outside the list
    // Case-insensitive; -1 when absent.
    int IndexByFieldName(const QString &name) const;
    TLinkNode *Add(const QString &fieldName);
    void Clear() { FNodes.clear(); }
    std::vector<TNodePoint> Points() const;

private:
    std::vector<std::unique_ptr<TLinkNode>> FNodes;
};

} // namespace vm20
