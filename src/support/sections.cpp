#include "support/nstrings.h"

namespace vm20 {

namespace {

// The header test works on a view so that scanning thousands of lines for a
// section allocates nothing.
bool HeaderName(QStringView line, QStringView &name)
{
    line = line.trimmed();
    if (line.size() < 2 || line.front() != QLatin1Char('[') || line.back() != QLatin1Char(']'))
        return false;
    name = line.sliced(1, line.size() - 2).trimmed();
    return true;
}

bool IsBlankLine(const QString &line)
{
    for (QChar c : line)
        if (!IsSpace(c))
            return false;
    return true;
}

} // namespace

bool IsSectionHeader(const QString &line, QString *name)
{
    QStringView view;
    if (!HeaderName(line, view))
        return false;
    if (name)
        *name = view.toString();
    return true;
}

int XReadSLSectionValues(int start, const QStringList &lines, const QString &section, QStringList &values)
{
    values.clear();
    const int count = int(lines.size());
    int i = start < 0 ? 0 : start;
    QStringView name;
    for (; i < count; ++i)
        if (HeaderName(lines.at(i), name) && name.compare(section, Qt::CaseInsensitive) == 0)
            break;
    if (i >= count)
        return -1;
    for (++i; i < count; ++i) {
        const QString &line = lines.at(i);
        if (IsBlankLine(line))
            return i + 1;
        if (HeaderName(line, name))
            return i;
        values.append(line);
    }
    return count;
}

TSectionIndex::TSectionIndex(const QStringList &lines)
    : FLines(lines)
{
    QString key;
    QString shown;
    int first = -1;
    auto close = [&](int last) {
        if (first >= 0 && !FRanges.contains(key)) {
            FRanges.insert(key, Range{first, last});
            FOrder.append(shown);
        }
    };
    QStringView name;
    for (int i = 0; i < int(FLines.size()); ++i) {
        if (!HeaderName(FLines.at(i), name))
            continue;
        close(i);
        shown = name.toString();
        key = shown.toCaseFolded();
        first = i + 1;
    }
    close(int(FLines.size()));
}

bool TSectionIndex::Contains(const QString &section) const
{
    return FRanges.contains(section.trimmed().toCaseFolded());
}

QStringList TSectionIndex::Lines(const QString &section) const
{
    const auto it = FRanges.constFind(section.trimmed().toCaseFolded());
    if (it == FRanges.constEnd())
        return {};
    return FLines.mid(it->first, it->last - it->first);
}

QStringList TSectionIndex::Values(const QString &section) const
{
    const auto it = FRanges.constFind(section.trimmed().toCaseFolded());
    if (it == FRanges.constEnd())
        return {};
    QStringList values;
    for (int i = it->first; i < it->last; ++i)
        if (!IsBlankLine(FLines.at(i)))
            values.append(FLines.at(i));
    return values;
}

QStringList TSectionIndex::SectionNames() const
{
    return FOrder;
}

} // namespace vm20
