#include "shopmodel.h"

#include "support/exception.h"

#include <QSet>

#include <algorithm>

namespace vm20 {

namespace {

struct TableCaption
{
    const char *table;
    const char *caption;
};

// Tables keep their names and get captions; a table left out (the view of
// order totals, which a calculated field replaces) is dropped.
constexpr TableCaption Tables[] = {
    {"regions", "Regions"},     {"categories", "Categories"}, {"suppliers", "Suppliers"},
    {"shippers", "Shippers"},   {"products", "Products"},     {"customers", "Customers"},
    {"employees", "Employees"}, {"orders", "Orders"},         {"Order Lines", "Order lines"},
    {"payments", "Payments"},   {"returns", "Returns"},
};

// The fields people see, group by group, in menu order. A row without a
// table is a calculated field whose expression stands in the column slot;
// an empty group puts the field at the top level. Columns left out (keys
// that only serve the joins, the employee photo) are dropped.
struct FieldRow
{
    const char *group;
    const char *table;
    const char *column;
    const char *caption;
    TFieldType type = ftUnknown;   // calculated fields only
    bool aggregate = false;
};

const FieldRow Fields[] = {
    {"", nullptr, "SUM(Order_Lines.quantity * Order_Lines.unit_price * (1 - Order_Lines.discount))",
     "Order total", ftFloat, true},
    {"", nullptr, "COUNT(DISTINCT orders.order_id)", "Number of orders", ftInteger, true},
    {"Orders", "orders", "order_id", "Order number"},
    {"Orders", "orders", "order_date", "Order date"},
    {"Orders", "orders", "status", "Status"},
    {"Orders", "orders", "required_date", "Required by"},
    {"Orders", "orders", "shipped_date", "Shipped on"},
    {"Orders", "orders", "freight", "Freight"},
    {"Orders", "orders", "ship_city", "Ship to city"},
    {"Orders", "orders", "ship_country", "Ship to country"},
    {"Orders", "orders", "comment", "Order comment"},
    {"Order lines", "Order Lines", "line_no", "Line number"},
    {"Order lines", "Order Lines", "quantity", "Quantity"},
    {"Order lines", "Order Lines", "unit_price", "Price"},
    {"Order lines", "Order Lines", "discount", "Discount"},
    {"Order lines", nullptr, "Order_Lines.quantity * Order_Lines.unit_price * (1 - Order_Lines.discount)",
     "Line amount", ftFloat},
    {"Customers", "customers", "company_name", "Customer"},
    {"Customers", "customers", "contact_name", "Contact person"},
    {"Customers", "customers", "email", "E-mail"},
    {"Customers", "customers", "phone", "Phone"},
    {"Customers", "customers", "city", "City"},
    {"Customers", "customers", "country", "Country"},
    {"Customers", "customers", "country_code", "Country code"},
    {"Customers", "regions", "name", "Region"},
    {"Customers", "customers", "since", "Customer since"},
    {"Customers", "customers", "credit_limit", "Credit limit"},
    {"Products", "products", "name", "Product"},
    {"Products", "categories", "name", "Category"},
    {"Products", "categories", "description", "Category description"},
    {"Products", "products", "quantity_per_unit", "Packaging"},
    {"Products", "products", "unit_price", "List price"},
    {"Products", "products", "units_in_stock", "Units in stock"},
    {"Products", "products", "discontinued", "Discontinued"},
    {"Products", "products", "weight_kg", "Weight (kg)"},
    {"Products", "products", "added_on", "In range since"},
    {"Suppliers", "suppliers", "company_name", "Supplier"},
    {"Suppliers", "suppliers", "contact_name", "Supplier contact"},
    {"Suppliers", "suppliers", "city", "Supplier city"},
    {"Suppliers", "suppliers", "country", "Supplier country"},
    {"Suppliers", "suppliers", "phone", "Supplier phone"},
    {"Employees", nullptr, "employees.first_name || ' ' || employees.last_name", "Sales person", ftString},
    {"Employees", "employees", "first_name", "First name"},
    {"Employees", "employees", "last_name", "Last name"},
    {"Employees", "employees", "title", "Job title"},
    {"Employees", "employees", "birth_date", "Born on"},
    {"Employees", "employees", "hire_date", "Hired on"},
    {"Employees", "employees", "salary", "Salary"},
    {"Shipping", "shippers", "company_name", "Shipper"},
    {"Shipping", "shippers", "phone", "Shipper phone"},
    {"Shipping", "shippers", "pickup_time", "Pickup time"},
    {"Payments", "payments", "paid_at", "Paid at"},
    {"Payments", "payments", "amount", "Amount paid"},
    {"Payments", "payments", "method", "Payment method"},
    {"Returns", "returns", "quantity", "Returned quantity"},
    {"Returns", "returns", "reason", "Return reason"},
    {"Returns", "returns", "returned_on", "Returned on"},
};

QString Text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

TDSField *Placed(TNCustomDBStructure &model, const FieldRow &row)
{
    if (!row.table) {
        TDSField *field = model.GetField(model.AddField(nfkVirtual, Text(row.column), Text(row.caption), nullptr));
        field->SetFieldType(row.type);
        field->SetFieldSize(0);
        field->SetIsAggregate(row.aggregate);
        field->AddAppliedOperators();
        return field;
    }
    TDSField *field = model.FieldByName(2, Text(row.table) + QLatin1Char('.') + Text(row.column));
    if (!field)
        throw Exception(QStringLiteral("The shop database has no column %1.%2")
                            .arg(Text(row.table), Text(row.column)));
    field->SetDisplayName(Text(row.caption));
    return field;
}

TDSField *Field(TNCustomDBStructure &model, const char *caption)
{
    return model.FieldByName(1, Text(caption));
}

void SetList(TDSField *field, const QStringList &items, const QStringList &values)
{
    field->SetEditType(etList);
    auto *editor = static_cast<TDSListEditor *>(field->ValueEditor());
    editor->Items() = items;
    editor->Values() = values;
}

void SetSQL(TDSField *field, const QString &sql)
{
    field->SetEditType(etSQL);
    static_cast<TDSSQLEditor *>(field->ValueEditor())->SetSQLText(sql);
}

void AddValueEditors(TNCustomDBStructure &model)
{
    SetList(Field(model, "Status"), {"New", "Paid", "Shipped", "Delivered", "Cancelled"},
            {"new", "paid", "shipped", "delivered", "cancelled"});
    SetList(Field(model, "Payment method"), {"Card", "Invoice", "Cash"}, {"card", "invoice", "cash"});
    SetSQL(Field(model, "Category"), QStringLiteral("SELECT name FROM categories ORDER BY name"));
    SetSQL(Field(model, "Country"), QStringLiteral("SELECT DISTINCT country FROM customers ORDER BY country"));
    TDSField *code = Field(model, "Country code");
    code->SetEditType(etEdit);
    static_cast<TDSTextEditor *>(code->ValueEditor())->SetOption(TDSTextEditor::AutoUpperCase, true);
}

void AddConditions(TNCustomDBStructure &model)
{
    model.AddCondition(QStringLiteral("Order is not yet shipped"),
                       QStringLiteral("orders.shipped_date is null and orders.status <> 'cancelled'"));
    // The year is the first four characters of the date's text form, which
    // every engine writes as ISO text. A value is filled in once and its
    // quotes reach to the nearest quote of the template, so the template names
    // it once and holds no other quote.
    TDSCondition *year = model.AddCondition(
        QStringLiteral("Ordered in the year @"),
        QStringLiteral("CAST(substr(CAST(orders.order_date AS VARCHAR(19)), 1, 4) AS INTEGER) = @1"));
    year->Values().Items(0)->SetDataType(ftInteger);
    // The alias keeps the returns table out of the query's joins.
    model.AddCondition(QStringLiteral("Order has returns"),
                       QStringLiteral("exists (select 1 from returns r where r.order_id = orders.order_id)"));
}

} // namespace

void CurateShopModel(TNCustomDBStructure &model)
{
    model.BeginUpdate();
    for (const TableCaption &entry : Tables)
        if (TDSTable *table = model.TableByName(0, Text(entry.table)))
            table->SetDisplayName(Text(entry.caption));

    while (model.FieldGroups().Count() > 0)
        model.DeleteGroup(0);
    QSet<const TDSField *> kept;
    for (const FieldRow &row : Fields) {
        TDSField *field = Placed(model, row);
        TDSFieldGroup *group = nullptr;
        if (*row.group) {
            group = model.FieldGroups().FindByName(Text(row.group));
            if (!group)
                group = model.FieldGroups().AddGroup(Text(row.group));
        }
        field->SetGroup(group);
        kept.insert(field);
    }
    for (int i = model.GetFieldCount() - 1; i >= 0; --i)
        if (!kept.contains(model.GetField(i)))
            model.DelField(i);
    // Dropped columns leave gaps in the identifiers; nothing refers to them yet.
    for (int i = 0; i < model.GetFieldCount(); ++i)
        model.GetField(i)->SetID(i + 1);
    for (int i = model.GetTableCount() - 1; i >= 0; --i) {
        const QString name = model.GetTable(i)->TableName();
        if (std::none_of(std::begin(Tables), std::end(Tables),
                         [&](const TableCaption &entry) { return name == Text(entry.table); }))
            model.DelTable(i);
    }

    AddValueEditors(model);
    AddConditions(model);
    model.SetDefaultMainTable(model.TableByName(0, QStringLiteral("orders")));
    model.EndUpdate();
    model.Changed();
}

void BuildShopModel(TNCustomDBStructure &model, TNDBInfo &info)
{
    model.SetDatabaseInfo(&info);
    model.RetriveDataModelInfo();
    CurateShopModel(model);
}

} // namespace vm20
