#pragma once
// A data model holding every kind of entity the model knows, each in its odd forms.
// Built without a metadata provider, so every field goes through AddFieldRef.
#include "model/dbstructure.h"

#include <memory>

namespace vm20::testing {

inline TDSField *AddDataField(TNCustomDBStructure &model, TDSTable *table, const QString &column,
                              const QString &caption, TFieldType type, int size)
{
    auto field = std::make_unique<TDSField>(&model);
    field->SetFieldKind(nfkData);
    field->SetFieldExpr(column);
    field->SetDisplayName(caption);
    field->Tables().Add(table);
    field->SetQuoted(column.contains(QLatin1Char(' ')));
    field->SetFieldType(type);
    field->SetFieldSize(size);
    TDSField *added = field.get();
    model.AddFieldRef(std::move(field));
    added->AddAppliedOperators();
    return added;
}

inline TDSField *AddVirtualField(TNCustomDBStructure &model, const QString &expr, const QString &caption,
                                 TFieldType type)
{
    auto field = std::make_unique<TDSField>(&model);
    field->SetFieldKind(nfkVirtual);
    field->SetDisplayName(caption);
    field->SetFieldType(type);
    field->SetFieldSize(100);
    TDSField *added = field.get();
    model.AddFieldRef(std::move(field));
    added->SetSQLExpr(expr);
    added->SetIsAggregate(TNCustomDBStructure::CheckIfAggregate(expr));
    added->AddAppliedOperators();
    return added;
}

inline TDSTable *AddTable(TNCustomDBStructure &model, const QString &name, const QString &caption)
{
    return model.GetTable(model.AddTable(name, caption));
}

inline void BuildRichModel(TNCustomDBStructure &model)
{
    model.BeginUpdate();
    TDSTable *customers = AddTable(model, "Customers", "Customers");
    customers->SetTableAlias("C");
    customers->SetDesignPositions("10,20,150,200");
    TDSTable *orders = AddTable(model, "Orders", "Orders");
    orders->SetTableAlias("O");
    orders->SetTableHints("NOLOCK");
    TDSTable *lines = AddTable(model, "Order Lines", "Order lines");   // alias Order_Lines
    lines->SetQuoted(true);
    TDSTable *products = AddTable(model, "Products", "Products, all");
    products->SetDatabaseName("Stock");
    TDSTable *categories = AddTable(model, "Categories", "Categories");
    TDSTable *employees = AddTable(model, "Employees", "Staff \"all\"");
    employees->SetTableAlias("E");

    model.AddLinkByExpr("Orders-Customers:CustomerID=ID");
    TDSLink *linesToOrders = model.AddLinkByExpr("Order Lines-Orders:OrderID=ID");
    linesToOrders->SetLinkType(ltOuterLeft);
    TDSLink *linesToProducts = model.AddLinkByExpr("Order Lines-Products:ProductID=ID,Kind<>val:0");
    linesToProducts->SetQuoteFields(true);
    TDSLink *productsToCategories = model.AddLinkByExpr("Products-Categories:CategoryID>=ID");
    productsToCategories->SetLinkType(ltOuterRight);
    TDSLink *managers = model.AddLinkByExpr("Employees-Employees:ManagerID=ID");
    managers->SetLinkType(ltOuterFull);
    model.AddLinkByExpr("Orders-Employees:fld:EmployeeID=ID");

    // A user operator after the built-in ones.
    const int like = model.AddOperator("Like", "is like", "@f like '@1'", "", {ftString, ftMemo});
    model.GetOperator(like)->SetCaseInsensative(true);
    model.GetOperator(like)->SetExprType(ftString);
    model.GetOperator(like)->SetValueKind(vkScalar);
    const int inSub = model.AddOperator("InQuery", "is in query", "@f in (@1)", "", {ftInteger});
    model.GetOperator(inSub)->SetValueKind(vkSubQuery);

    TDSFieldGroup *customerGroup = model.FieldGroups().AddGroup("Customer");
    TDSFieldGroup *orderGroup = model.FieldGroups().AddGroup("Order, placed");

    TDSField *name = AddDataField(model, customers, "Name", "Customer name", ftString, 60);
    name->SetGroup(customerGroup);
    TDSField *city = AddDataField(model, customers, "City", "City", ftWideString, 40);
    city->SetGroup(customerGroup);
    city->SetEditType(etList);
    auto *cities = static_cast<TDSListEditor *>(city->ValueEditor());
    cities->Items() << "Berlin" << "São Paulo" << "New York, NY";
    cities->Values() << "BER" << "SAO" << "NYC";

    TDSField *orderDate = AddDataField(model, orders, "OrderDate", "Order date", ftDate, 8);
    orderDate->SetGroup(orderGroup);
    orderDate->SetEditType(etEdit);
    auto *dateEditor = static_cast<TDSTextEditor *>(orderDate->ValueEditor());
    dateEditor->SetKind(tekDate);
    dateEditor->SetDefaultValue("45000");
    dateEditor->SetValueType(ftDate);
    dateEditor->SetEditMask("!99/99/0000;1;_");
    dateEditor->SetUseFormattedValue(true);
    dateEditor->SetOption(TDSTextEditor::AutoUpperCase, true);

    TDSField *status = AddDataField(model, orders, "Status", "Status", ftInteger, 4);
    status->SetGroup(orderGroup);
    status->SetEditType(etCustom);
    static_cast<TDSCustomEditor *>(status->ValueEditor())->Data() << "open=1" << "closed=2";

    TDSField *category = AddDataField(model, categories, "Name", "Category", ftString, 30);
    category->SetEditType(etSQL);
    auto *categoryList = static_cast<TDSSQLEditor *>(category->ValueEditor());
    categoryList->SetSQLText("SELECT ID, Name FROM Categories\nWHERE Kind = :kind\nORDER BY Name");
    categoryList->SQLParams() << "kind=1";

    TDSField *price = AddDataField(model, lines, "Unit Price", "Unit price", ftCurrency, 8);
    price->SetGroup(orderGroup);
    TDSField *quantity = AddDataField(model, lines, "Quantity", "Quantity", ftSmallint, 2);
    quantity->SetUseInConditions(false);
    AddDataField(model, products, "Discontinued", "Discontinued", ftBoolean, 1);
    AddDataField(model, products, "Picture", "Picture", ftBlob, 0)->SetUseInResult(false);
    AddDataField(model, employees, "Hired", "Hired", ftDateTime, 8);
    AddDataField(model, orders, "Freight", "Freight", ftFloat, 8);

    TDSField *total = AddVirtualField(model, "SUM(Order_Lines.\"Unit Price\" * Order_Lines.Quantity)",
                                      "Order total", ftCurrency);
    total->SetGroup(orderGroup);
    AddVirtualField(model, "C.City || ', ' || O.Status", "City and status", ftString);

    TDSCondition *big = model.AddCondition("Total above @ and below @ units",
                                           "O.Freight > 100 and C.City <> ''");
    big->Values().Items(0)->SetDataType(ftFloat);
    model.AddCondition("Orders without lines",
                       "NOT EXISTS (SELECT 1 FROM \"Order Lines\" L WHERE L.OrderID = O.ID)");

    model.SetDefaultMainTable(orders);
    model.SetRootFieldsFirst(true);
    model.EndUpdate();
}

} // namespace vm20::testing
