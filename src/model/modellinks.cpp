// The model's links and their one-line text form "T1-T2:a=b,c<>val:1", which
// is also what a metadata provider answers for the links it knows.
#include "model/dbstructure.h"
#include "model/quietscope.h"

#include "model/errors.h"
#include "model/joingraph.h"
#include "model/messages.h"
#include "support/nstrings.h"

namespace vm20 {

namespace {

const QString InvalidLinkText = QStringLiteral("Invalid link text \"%s\"");

struct TLinkItem
{
    QString Left;
    QString Operator;
    QString Right;
};

// Longer operators first, so that "<=" is not read as "<" followed by "=x".
bool SplitItem(const QString &item, TLinkItem &result)
{
    for (const char *op : {"!=", "<>", "<=", ">=", "=", "<", ">"}) {
        const QLatin1String text(op);
        const int at = item.indexOf(text);
        if (at < 0)
            continue;
        result.Left = item.left(at).trimmed();
        result.Right = item.mid(at + text.size()).trimmed();
        result.Operator = text == QLatin1String("!=") ? QStringLiteral("<>") : QString(text);
        return !result.Left.isEmpty() && !result.Right.isEmpty();
    }
    return false;
}

} // namespace

void TNCustomDBStructure::LinksChanged()
{
    FJoinGraph->Invalidate();
}

void TNCustomDBStructure::DetachLink(TDSLink *link)
{
    if (TDSTable *table = link->Table1())
        table->RemoveLinkRef(link);
    if (TDSTable *table = link->Table2())
        table->RemoveLinkRef(link);
    // A reference added by hand to a table at neither end must not outlive
    // the link either.
    for (const auto &table : FTables)
        table->RemoveLinkRef(link);
}

int TNCustomDBStructure::AddLinkByRef(std::unique_ptr<TDSLink> link)
{
    if (!link)
        return -1;
    link->SetDBStruct(this);
    if (TDSTable *table = link->Table1())
        table->AddLinkRef(link.get());
    if (TDSTable *table = link->Table2())
        table->AddLinkRef(link.get());
    if (link->Operators().isEmpty())
        link->ApplyDefOperator();
    const TDSLink *added = link.get();
    FLinks.push_back(std::move(link));
    LinksChanged();
    Changed(mckLinks, added);
    return GetLinkCount() - 1;
}

TDSLink *TNCustomDBStructure::AddLinkByExpr(const QString &text)
{
    const int colon = text.indexOf(QLatin1Char(':'));
    if (colon < 0)
        throw ENDBStructError(dbseInvalidLinkText, InvalidLinkText, {text});
    const QString head = text.left(colon);

    // Table names may hold "-" themselves: take the first split at which both
    // sides name tables, else the first "-" (and report the missing table).
    QString name1 = head.trimmed();
    QString name2;
    const int first = head.indexOf(QLatin1Char('-'));
    if (first >= 0) {
        name1 = head.left(first).trimmed();
        name2 = head.mid(first + 1).trimmed();
    }
    for (int at = first; at >= 0; at = head.indexOf(QLatin1Char('-'), at + 1)) {
        const QString left = head.left(at).trimmed();
        const QString right = head.mid(at + 1).trimmed();
        if (TableByName(0, left) && TableByName(0, right)) {
            name1 = left;
            name2 = right;
            break;
        }
    }
    TDSTable *table1 = TableByName(0, name1);
    if (!table1)
        throw ENDBStructError(dbseNoTable, SDBSENoTable, {name1});
    TDSTable *table2 = TableByName(0, name2);
    if (!table2)
        throw ENDBStructError(dbseNoTable, SDBSENoTable, {name2});

    auto link = std::make_unique<TDSLink>(this);
    TQuietScope quiet(*this);
    link->SetTable1(table1);
    link->SetTable2(table2);
    for (const QString &item : text.mid(colon + 1).split(QLatin1Char(','))) {
        TLinkItem parts;
        if (!SplitItem(item.trimmed(), parts))
            throw ENDBStructError(dbseInvalidLinkText, InvalidLinkText, {text});
        link->Fields1().append(parts.Left);
        link->Operators().append(parts.Operator);
        link->Fields2().append(parts.Right);
    }
    TDSLink *added = link.get();
    quiet.Release();
    AddLinkByRef(std::move(link));
    return added;
}

void TNCustomDBStructure::SaveLinksToStrings(QStringList &lines) const
{
    lines.clear();
    for (const auto &link : FLinks) {
        QStringList items;
        for (int k = 0; k < link->Fields1().size(); ++k)
            items.append(link->Fields1()[k] + link->Operators().value(k, QStringLiteral("="))
                         + link->Fields2().value(k));
        const QString name1 = link->Table1() ? link->Table1()->TableName() : QString();
        const QString name2 = link->Table2() ? link->Table2()->TableName() : QString();
        lines.append(Format(QStringLiteral("%s-%s:"), {name1, name2}) + items.join(QLatin1Char(',')));
    }
}

void TNCustomDBStructure::LoadLinksFromStrings(const QStringList &lines)
{
    for (const QString &line : lines)
        if (!line.trimmed().isEmpty())
            AddLinkByExpr(line.trimmed());
}

TDSLink *TNCustomDBStructure::FindLink(const QString &name1, const QString &name2) const
{
    for (const auto &link : FLinks) {
        const QString a = link->Table1() ? link->Table1()->TableName() : QString();
        const QString b = link->Table2() ? link->Table2()->TableName() : QString();
        if ((a == name1 && b == name2) || (a == name2 && b == name1))
            return link.get();
    }
    return nullptr;
}

void TNCustomDBStructure::DelLink(int index)
{
    TDSLink *link = GetLink(index);
    EntityDeleting(mckLinks, link);
    DetachLink(link);
    FLinks.erase(FLinks.begin() + index);
    LinksChanged();
    Changed(mckLinks, link);
}

TDSLink *TNCustomDBStructure::GetLink(int index) const
{
    if (index < 0 || index >= GetLinkCount())
        throw ENDBStructError(dbseInvalidLinkIndex, SDBSEInvalidLinkIndex, {index});
    return FLinks[index].get();
}

int TNCustomDBStructure::IndexOfLink(const TDSLink *link) const
{
    for (int i = 0; i < GetLinkCount(); ++i)
        if (FLinks[i].get() == link)
            return i;
    return -1;
}

} // namespace vm20
