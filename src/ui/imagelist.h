#pragma once
// The images a label's menu shows, by index; the label does not own them.
#include <QIcon>
#include <QList>

namespace vm20 {

using TImageList = QList<QIcon>;

// The image at index, or a null icon for -1 or an index outside the list.
inline QIcon ImageAt(const TImageList *images, int index)
{
    if (!images || index < 0 || index >= images->size())
        return QIcon();
    return images->at(index);
}

} // namespace vm20
