// Loads arbitrary bytes as an SQL statement into a query over a small shop
// model, then builds the loaded query. An error of the library is an answer
// (and must leave the query empty); any other exception, a crash, a hang or
// a query left half loaded is a bug.
#include "model/dbstructure.h"
#include "query/query.h"
#include "support/exception.h"

#include <QString>
#include <QStringList>

#include <cstddef>
#include <cstdint>
#include <memory>

using namespace vm20;

namespace {

void Check(bool ok)
{
    if (!ok)
        __builtin_trap();
}

TDSTable *AddTable(TNDBStructure &model, const char *name, const char *alias)
{
    TDSTable *table = model.GetTable(model.AddTable(QString::fromUtf8(name), QString::fromUtf8(name)));
    if (*alias)
        table->SetTableAlias(QString::fromUtf8(alias));
    return table;
}

void AddField(TNDBStructure &model, TDSTable *table, const char *column, TFieldType type)
{
    auto field = std::make_unique<TDSField>(&model);
    field->SetFieldName(QString::fromUtf8(column));
    field->SetDisplayName(table->TableName() + QLatin1Char(' ') + QString::fromUtf8(column));
    field->Tables().Add(table);
    field->SetFieldType(type);
    field->SetQuoted(field->FieldName().contains(QLatin1Char(' ')));
    TDSField *raw = field.get();
    model.AddFieldRef(std::move(field));
    raw->AddAppliedOperators();
}

void AddLink(TNDBStructure &model, TDSTable *t1, const char *c1, TDSTable *t2, const char *c2)
{
    auto link = std::make_unique<TDSLink>(&model);
    link->SetTable1(t1);
    link->SetTable2(t2);
    link->SetFields1({QString::fromUtf8(c1)});
    link->SetFields2({QString::fromUtf8(c2)});
    model.AddLinkByRef(std::move(link));
}

// Customers, orders and order lines (a name with a blank), fields of every
// kind of value, an aggregate, two predefined conditions and an operator
// that takes a sub-query.
std::unique_ptr<TNDBStructure> MakeShopModel()
{
    auto model = std::make_unique<TNDBStructure>();
    TNDBStructure &m = *model;
    TDSTable *customers = AddTable(m, "Customers", "c");
    TDSTable *orders = AddTable(m, "Orders", "o");
    TDSTable *lines = AddTable(m, "Order Lines", "");
    lines->SetQuoted(true);
    AddLink(m, customers, "ID", orders, "CustomerID");
    AddLink(m, orders, "ID", lines, "OrderID");
    m.AddOperator(QStringLiteral("InQuery"), QStringLiteral("is in query"), QStringLiteral("@f in (@1)"),
                  QString(), TDSOperator::DefaultAppliedTypes());
    m.OperatorByName(QStringLiteral("InQuery"))->SetValueKind(vkSubQuery);
    AddField(m, customers, "ID", ftInteger);
    AddField(m, customers, "Name", ftString);
    AddField(m, customers, "Vip", ftBoolean);
    AddField(m, customers, "Since", ftDate);
    AddField(m, orders, "ID", ftAutoInc);
    AddField(m, orders, "OrderDate", ftDateTime);
    AddField(m, orders, "Total", ftCurrency);
    AddField(m, orders, "ShipTime", ftTime);
    AddField(m, orders, "Discount", ftFloat);
    AddField(m, lines, "Qty", ftSmallint);
    AddField(m, lines, "Unit Price", ftCurrency);
    AddField(m, lines, "Created", ftTimeStamp);
    auto total = std::make_unique<TDSField>(&m);
    total->SetFieldKind(nfkVirtual);
    total->SetDisplayName(QStringLiteral("Total sales"));
    TDSField *raw = total.get();
    m.AddFieldRef(std::move(total));
    raw->SetSQLExpr(QStringLiteral("SUM(o.Total)"));
    raw->SetFieldType(ftCurrency);
    raw->SetIsAggregate(true);
    raw->AddAppliedOperators();
    m.AddCondition(QStringLiteral("VIP customers only"), QStringLiteral("c.Vip = 'true'"));
    m.AddCondition(QStringLiteral("Bigger than @"), QStringLiteral("o.Total > @1"));
    return model;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const std::unique_ptr<TNDBStructure> model = MakeShopModel();
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    TNQuery query;
    query.SetDBStruct(model.get());
    try {
        query.ParseSQL(text.split(QLatin1Char('\n')));
    } catch (const Exception &) {
        Check(query.Filter()->GetRowCount() == 0 && query.RFields().Count() == 0);
        Check(query.Active() && !query.Loading());
        return 0;
    }
    Check(query.Active() && !query.Loading());
    try {
        query.BuildQuery();
        query.GetSQL();
    } catch (const Exception &) {
    }
    return 0;
}
