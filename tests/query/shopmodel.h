#pragma once
// A small shop database described in code, shared by the query tests (and by
// anyone who needs a realistic model): customers place orders, orders have
// lines, lines name products, products belong to categories through an outer
// link. "Order Lines" is a quoted name with a blank (alias Order_Lines),
// "Total sales" a virtual aggregate field, and two predefined conditions (one
// with a value, one without). Audit is linked to nothing.
#include "model/dbstructure.h"
#include "../model/richmodel.h"

#include <QString>

#include <memory>

namespace shop {

using namespace vm20;

inline TDSTable *AddShopTable(TNDBStructure &model, const QString &name, const QString &alias,
                              const QString &caption)
{
    TDSTable *table = model.GetTable(model.AddTable(name, caption));
    if (!alias.isEmpty())
        table->SetTableAlias(alias);
    return table;
}

inline TDSField *AddDataField(TNDBStructure &model, TDSTable *table, const QString &column,
                              const QString &caption, TFieldType type)
{
    return vm20::testing::AddDataField(model, table, column, caption, type, 0);
}

inline TDSLink *AddShopLink(TNDBStructure &model, TDSTable *t1, const QString &column1,
                            TDSTable *t2, const QString &column2, TDSLinkType type = ltInner)
{
    auto link = std::make_unique<TDSLink>(&model);
    link->SetTable1(t1);
    link->SetTable2(t2);
    link->SetFields1({column1});
    link->SetFields2({column2});
    link->SetLinkType(type);
    TDSLink *raw = link.get();
    model.AddLinkByRef(std::move(link));
    return raw;
}

struct ShopModel
{
    std::unique_ptr<TNDBStructure> model = std::make_unique<TNDBStructure>();

    TDSTable *customers, *orders, *lines, *products, *categories, *audit;
    TDSLink *customerOrders, *orderLines, *lineProducts, *productCategories;

    TDSField *custId, *custName, *custCity, *custVip, *custSince;
    TDSField *orderId, *orderDate, *orderTotal, *orderShipTime, *orderDiscount;
    TDSField *lineQty, *linePrice;
    TDSField *productName, *productWeight, *productCreated, *productNotes, *productCode;
    TDSField *categoryName;
    TDSField *totalSales;
    TDSField *auditNote;

    TDSCondition *bigCustomers;   // one value
    TDSCondition *vipOnly;        // no value

    TDSOperator *Op(const char *name) const { return model->OperatorByName(QLatin1String(name)); }
};

inline ShopModel MakeShopModel()
{
    ShopModel s;
    TNDBStructure &m = *s.model;
    s.customers = AddShopTable(m, "Customers", "c", "Customers");
    s.orders = AddShopTable(m, "Orders", "o", "Orders");
    s.lines = AddShopTable(m, "Order Lines", QString(), "Order lines");
    s.lines->SetQuoted(true);
    s.products = AddShopTable(m, "Products", "p", "Products");
    s.categories = AddShopTable(m, "Categories", QString(), "Categories");
    s.audit = AddShopTable(m, "Audit", QString(), "Audit log");

    s.customerOrders = AddShopLink(m, s.customers, "ID", s.orders, "CustomerID");
    s.orderLines = AddShopLink(m, s.orders, "ID", s.lines, "OrderID");
    s.lineProducts = AddShopLink(m, s.lines, "ProductID", s.products, "ID");
    s.productCategories = AddShopLink(m, s.products, "CategoryID", s.categories, "ID", ltOuterLeft);

    s.custId = AddDataField(m, s.customers, "ID", "Customer ID", ftInteger);
    s.custName = AddDataField(m, s.customers, "Name", "Customer name", ftString);
    s.custCity = AddDataField(m, s.customers, "City", "City", ftString);
    s.custVip = AddDataField(m, s.customers, "Vip", "VIP", ftBoolean);
    s.custSince = AddDataField(m, s.customers, "Since", "Customer since", ftDate);
    s.orderId = AddDataField(m, s.orders, "ID", "Order number", ftAutoInc);
    s.orderDate = AddDataField(m, s.orders, "OrderDate", "Order date", ftDateTime);
    s.orderTotal = AddDataField(m, s.orders, "Total", "Order total", ftCurrency);
    s.orderShipTime = AddDataField(m, s.orders, "ShipTime", "Ship time", ftTime);
    s.orderDiscount = AddDataField(m, s.orders, "Discount", "Discount", ftFloat);
    s.lineQty = AddDataField(m, s.lines, "Qty", "Quantity", ftSmallint);
    s.linePrice = AddDataField(m, s.lines, "Unit Price", "Unit price", ftCurrency);
    s.productName = AddDataField(m, s.products, "Name", "Product", ftString);
    s.productWeight = AddDataField(m, s.products, "Weight", "Weight", ftFloat);
    s.productCreated = AddDataField(m, s.products, "Created", "Created", ftTimeStamp);
    s.productNotes = AddDataField(m, s.products, "Notes", "Notes", ftMemo);
    s.productCode = AddDataField(m, s.products, "Code", "Code", ftLargeint);
    s.categoryName = AddDataField(m, s.categories, "Name", "Category", ftString);
    s.totalSales = vm20::testing::AddVirtualField(m, "SUM(o.Total)", "Total sales", ftCurrency);
    s.auditNote = AddDataField(m, s.audit, "Note", "Audit note", ftString);

    s.bigCustomers = m.AddCondition("Customer has more than @ orders",
                                    "(select count(*) from Orders x where x.CustomerID = c.ID) > @1");
    s.vipOnly = m.AddCondition("VIP customers only", "c.Vip = 'true'");
    return s;
}

} // namespace shop
