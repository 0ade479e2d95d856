#include "sqlparse/sqlresultfields.h"

#include "support/exception.h"

namespace vm20 {

void TSQLResultField::SetSQLExpr(const QString &value)
{
    if (FSQLExpr == value)
        return;
    FSQLExpr = value;
    const qsizetype bracket = value.indexOf(QLatin1Char('('));
    const qsizetype dot = value.indexOf(QLatin1Char('.'));
    if (bracket >= 0 && (dot < 0 || bracket <= dot))
        FCaption = value;
    else if (dot >= 0)
        FCaption = value.mid(dot + 1);
    else
        FCaption = value;
}

TSQLResultField *TSQLResultFieldList::Items(int index) const
{
    if (index < 0 || index >= Count())
        throw EListError::IndexOutOfBounds(index);
    return FItems[size_t(index)].get();
}

TSQLResultField *TSQLResultFieldList::Add(std::unique_ptr<TSQLResultField> field)
{
    FItems.push_back(std::move(field));
    return FItems.back().get();
}

int TSQLResultFieldList::IndexByAlias(const QString &alias) const
{
    for (int i = 0; i < Count(); ++i)
        if (FItems[size_t(i)]->Alias().compare(alias, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

int TSQLResultFieldList::IndexByExpr(const QString &expr) const
{
    for (int i = 0; i < Count(); ++i)
        if (FItems[size_t(i)]->SQLExpr().compare(expr, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

} // namespace vm20
