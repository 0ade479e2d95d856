// The vm20 command. For now it knows one sub-command, `tour`: it builds a
// small shop model in code, saves it as model text, loads that text into a
// second model and prints what the second model writes.
#include "model/dbstructure.h"

#include <QCoreApplication>
#include <QTextStream>

#include <memory>

using namespace vm20;

namespace {

TDSField *AddColumn(TNCustomDBStructure &model, TDSTable *table, const QString &column,
                    const QString &caption, TFieldType type, int size)
{
    auto field = std::make_unique<TDSField>(&model);
    field->SetFieldKind(nfkData);
    field->SetFieldExpr(column);
    field->SetDisplayName(caption);
    field->Tables().Add(table);
    field->SetFieldType(type);
    field->SetFieldSize(size);
    TDSField *added = field.get();
    model.AddFieldRef(std::move(field));
    added->AddAppliedOperators();
    return added;
}

void BuildShop(TNCustomDBStructure &model)
{
    TDSTable *customers = model.GetTable(model.AddTable("customers", "Customers"));
    TDSTable *orders = model.GetTable(model.AddTable("orders", "Orders"));
    model.AddLinkByExpr("orders-customers:customer_id=id");
    AddColumn(model, customers, "name", "Customer name", ftString, 60);
    AddColumn(model, customers, "city", "City", ftString, 40);
    AddColumn(model, orders, "order_date", "Order date", ftDate, 0);
    AddColumn(model, orders, "amount", "Amount", ftCurrency, 0);
    model.SetDefaultMainTable(orders);
}

int Tour(QTextStream &out)
{
    TNCustomDBStructure built;
    BuildShop(built);
    QStringList text;
    built.SaveToStrings(text);

    TNCustomDBStructure loaded;
    loaded.LoadFromStrings(text);
    QStringList again;
    loaded.SaveToStrings(again);

    out << "A shop model built in code, saved as model text, loaded back and saved again:\n\n";
    for (const QString &line : again)
        out << line << '\n';
    out << "\nThe two texts are " << (text == again ? "identical" : "DIFFERENT") << ".\n";
    return text == again ? 0 : 1;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    const QStringList args = app.arguments();
    if (args.size() == 2 && args[1] == QLatin1String("tour")) {
        try {
            return Tour(out);
        } catch (const std::exception &e) {
            err << e.what() << '\n';
            return 1;
        }
    }
    err << "usage: vm20 tour\n";
    return 2;
}
