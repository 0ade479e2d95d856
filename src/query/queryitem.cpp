#include "query/queryitem.h"

#include "model/errors.h"
#include "query/querybase.h"

namespace vm20 {

TNQueryItem::TNQueryItem(const QString &queryName)
    : FQueryName(queryName)
{
}

TNQueryItem::~TNQueryItem() = default;

void TNQueryItem::SetQueryName(const QString &value)
{
    if (FQueryName == value)
        return;
    FQueryName = value;
    Changed();
}

void TNQueryItem::SetDescription(const QStringList &value)
{
    if (FDescription == value)
        return;
    FDescription = value;
    Changed();
}

void TNQueryItem::CheckQueryBase() const
{
    if (!FQueryBase)
        throw ENQueryBaseError(qbeNoQueryBase, QStringLiteral("Query base is not specified"));
}

void TNQueryItem::Load()
{
    CheckQueryBase();
    QStringList lines;
    LoadContent(lines);
    GiveContent(lines);
}

void TNQueryItem::Save()
{
    CheckQueryBase();
    QStringList lines;
    if (TakeContent(lines))
        SaveContent(lines);
}

void TNQueryItem::Changed()
{
    if (!FQueryBase)
        return;
    const int index = FQueryBase->IndexByName(FQueryName);
    if (index >= 0)
        FQueryBase->QueryChanged(index);
}

bool TNQueryItem::TakeContent(QStringList &lines)
{
    CheckQueryBase();
    return FQueryBase->NeedContent(lines);
}

void TNQueryItem::GiveContent(const QStringList &lines)
{
    CheckQueryBase();
    FQueryBase->GiveContent(lines);
}

} // namespace vm20
