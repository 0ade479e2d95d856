// Writes the sample queries (examples/queries/*.vmq) from the curated shop
// model. The queries are built in code through the query's own operations, so
// that they always name fields and operators the model has; a test compares
// the committed files with what this program writes today.
//
// Usage: vm20_makequeries MODEL_FILE OUTPUT_FOLDER
#include "model/dbstructure.h"
#include "query/query.h"
#include "support/dattime.h"
#include "support/exception.h"

#include <QCoreApplication>
#include <QDate>
#include <QDir>

#include <cstdio>
#include <functional>

using namespace vm20;

namespace {

class TQueryMaker
{
public:
    TQueryMaker(TNQuery &query, TNCustomDBStructure &model) : FQuery(query), FModel(model) {}

    TDSField *Field(const char *caption) const
    {
        TDSField *field = FModel.FieldByName(1, QString::fromUtf8(caption));
        if (!field)
            throw Exception(QStringLiteral("The model has no field \"%1\"").arg(QString::fromUtf8(caption)));
        return field;
    }

    TFilterBracket *Root() const { return FQuery.Filter(); }

    TFilterBracket *Bracket(TFilterBracket *parent, TFilterLinkType linkType) const
    {
        TFilterBracket *bracket = parent->AddNewBracket();
        bracket->SetLinkType(linkType);
        return bracket;
    }

    TSimpleCond *Cond(TFilterBracket *bracket, const char *caption, const char *op,
                      const QString &value1 = QString(), const QString &value2 = QString()) const
    {
        TSimpleCond *cond = FQuery.AddCondition(bracket, Field(caption));
        TDSOperator *oper = FModel.OperatorByName(QString::fromLatin1(op));
        if (!oper)
            throw Exception(QStringLiteral("The model has no operator \"%1\"").arg(QLatin1String(op)));
        cond->SetOperator(oper);
        if (!value1.isNull())
            cond->SetValue(1, value1);
        if (!value2.isNull())
            cond->SetValue(2, value2);
        return cond;
    }

    TCustomCond *Custom(TFilterBracket *bracket, const char *caption, const QString &value = QString()) const
    {
        for (int i = 0; i < FModel.Conditions().Count(); ++i) {
            TDSCondition *condition = FModel.Conditions().Items(i);
            if (condition->DisplayFormat().startsWith(QString::fromUtf8(caption))) {
                TCustomCond *cond = FQuery.AddCustomCondition(bracket, condition);
                if (!value.isNull())
                    cond->SetValue(1, value);
                return cond;
            }
        }
        throw Exception(QStringLiteral("The model has no condition \"%1\"").arg(QString::fromUtf8(caption)));
    }

    // A column over one or more fields; an empty formula shows the field as is.
    TResultField *Column(std::initializer_list<const char *> captions, const char *caption = "",
                         const char *formula = "", TSortingType sorting = stNoSort, int sortOrder = 0) const
    {
        std::vector<TDSField *> fields;
        for (const char *name : captions)
            fields.push_back(Field(name));
        TResultField *column =
            FQuery.RFields().Add(QString::fromUtf8(caption), fields, QString::fromUtf8(formula));
        column->SetSorting(sorting);
        column->SetSortOrder(sortOrder);
        return column;
    }

    TNQuery &Query() const { return FQuery; }

private:
    TNQuery &FQuery;
    TNCustomDBStructure &FModel;
};

// A date value is stored as a day count; its caption is what a date editor
// would show (ISO here, so that the files do not depend on the locale).
void SetDate(TFilterCond *cond, int index, int year, int month, int day, bool endOfDay = false)
{
    const TDateTime value = EncodeDate(year, month, day) + (endOfDay ? EncodeTime(23, 59, 59) : 0.0);
    cond->SetValue(index, VmDateTimeToStr(value));
    cond->SetValueCaption(index, QDate(year, month, day).toString(Qt::ISODate));
}

struct TSampleQuery
{
    const char *File;
    const char *Description;
    int Options;   // the integer form of the SQL options
    std::function<void(const TQueryMaker &)> Build;
};

const TSampleQuery SampleQueries[] = {
    {"customers_by_country", "Customers in three countries, by country and name", 2,
     [](const TQueryMaker &m) {
         m.Column({"Customer"}, "", "", stAscending, 2);
         m.Column({"City"});
         m.Column({"Country"}, "", "", stAscending, 1);
         m.Cond(m.Root(), "Country", "InList", QStringLiteral("Germany,Switzerland,Denmark"));
     }},
    {"big_orders_not_shipped", "Open orders worth more than 1,000", 0,
     [](const TQueryMaker &m) {
         m.Column({"Order number"});
         m.Column({"Order date"});
         m.Column({"Customer"});
         m.Column({"Order total"}, "", "", stDescending, 1);
         m.Root()->SetLinkType(fltAll);
         m.Custom(m.Root(), "Order is not yet shipped");
         m.Cond(m.Root(), "Order total", "GreaterThan", QStringLiteral("1000"));
     }},
    {"top_customers", "Customers by turnover, cancelled orders left out", 0,
     [](const TQueryMaker &m) {
         m.Column({"Customer"});
         m.Column({"Country"});
         m.Column({"Number of orders"});
         m.Column({"Order total"}, "Turnover", "ROUND(@1, 2)", stDescending, 1);
         m.Cond(m.Root(), "Status", "NotEqual", QStringLiteral("cancelled"));
     }},
    {"orders_by_status", "Orders of 2023 by status", 0,
     [](const TQueryMaker &m) {
         m.Column({"Status"}, "", "", stAscending, 1);
         m.Column({"Number of orders"});
         m.Column({"Order total"}, "Total", "ROUND(@1, 2)");
         TSimpleCond *year = m.Cond(m.Root(), "Order date", "Between");
         SetDate(year, 1, 2023, 1, 1);
         SetDate(year, 2, 2023, 12, 31, true);
     }},
    {"low_stock", "Products running short that are still sold", 2,
     [](const TQueryMaker &m) {
         m.Column({"Product"});
         m.Column({"Category"});
         m.Column({"Supplier"});
         m.Column({"Units in stock"}, "", "", stAscending, 1);
         m.Root()->SetLinkType(fltAll);
         m.Cond(m.Root(), "Units in stock", "LessThan", QStringLiteral("10"));
         m.Cond(m.Root(), "Discontinued", "Equal", QStringLiteral("False"));
     }},
    {"brackets", "Order lines picked by brackets of every kind", 0,
     [](const TQueryMaker &m) {
         m.Column({"Order number"}, "", "", stAscending, 1);
         m.Column({"Customer"});
         m.Column({"Country"});
         m.Column({"Product"});
         m.Column({"Quantity", "Price"}, "Gross amount", "@1 * @2");
         m.Root()->SetLinkType(fltAll);
         TFilterBracket *any = m.Bracket(m.Root(), fltAny);
         m.Cond(any, "Country", "Equal", QStringLiteral("France"));
         m.Cond(any, "Country", "Equal", QStringLiteral("Denmark"));
         TFilterBracket *none = m.Bracket(m.Root(), fltNone);
         m.Cond(none, "Status", "Equal", QStringLiteral("cancelled"));
         m.Cond(none, "Category", "Equal", QStringLiteral("Beverages"));
         TFilterBracket *notAll = m.Bracket(m.Root(), fltNotAll);
         m.Cond(notAll, "Discount", "Equal", QStringLiteral("0"));
         m.Cond(notAll, "Quantity", "LessThan", QStringLiteral("20"));
     }},
    {"orders_in_period", "Orders placed in a period, for customers whose name contains a text", 0,
     [](const TQueryMaker &m) {
         m.Column({"Order number"});
         m.Column({"Order date"}, "", "", stAscending, 1);
         m.Column({"Customer"});
         m.Column({"Sales person"});
         m.Root()->SetLinkType(fltAll);
         TSimpleCond *period = m.Cond(m.Root(), "Order date", "Between");
         period->SetValueIsParam(1, true);
         period->SetValueIsParam(2, true);
         period->GetParam(1)->SetValue(VmDateTimeToStr(EncodeDate(2023, 3, 1)));
         period->GetParam(2)->SetValue(VmDateTimeToStr(EncodeDate(2023, 3, 31) + EncodeTime(23, 59, 59)));
         TSimpleCond *name = m.Cond(m.Root(), "Customer", "Contains", QStringLiteral("Müller"));
         name->SetValueIsParam(1, true);
         name->GetParam(1)->SetValue(QStringLiteral("Müller"));
     }},
    {"names_with_accents", "Customers whose names hold apostrophes and accents", 2,
     [](const TQueryMaker &m) {
         m.Column({"Customer"}, "", "", stAscending, 1);
         m.Column({"Contact person"});
         m.Column({"City"});
         TFilterBracket *any = m.Root();
         any->SetLinkType(fltAny);
         m.Cond(any, "Customer", "StartsWith", QStringLiteral("O'Brien"));
         m.Cond(any, "Contact person", "Contains", QStringLiteral("Zoë"));
         m.Cond(any, "City", "InList", QStringLiteral("Zürich,Montréal"));
     }},
    {"sales_by_employee", "Sales people with a turnover above 150,000", 0,
     [](const TQueryMaker &m) {
         m.Column({"Sales person"});
         m.Column({"Job title"});
         m.Column({"Number of orders"});
         m.Column({"Order total"}, "Turnover", "ROUND(@1, 2)", stDescending, 1);
         m.Cond(m.Root(), "Order total", "GreaterThan", QStringLiteral("150000"));
     }},
    {"returns_by_reason", "Returned items by reason since 2023", 0,
     [](const TQueryMaker &m) {
         m.Column({"Return reason"}, "", "", stAscending, 1);
         m.Column({"Returned quantity"}, "Items returned", "SUM(@1)");
         m.Column({"Order number"}, "Orders", "COUNT(DISTINCT @1)");
         SetDate(m.Cond(m.Root(), "Returned on", "GreaterOrEqual"), 1, 2023, 1, 1);
     }},
    {"payments_by_method", "Payments of the first half of 2024 by method", 0,
     [](const TQueryMaker &m) {
         m.Column({"Payment method"});
         m.Column({"Amount paid"}, "Payments", "COUNT(@1)");
         m.Column({"Amount paid"}, "Total paid", "ROUND(SUM(@1), 2)", stDescending, 1);
         TSimpleCond *half = m.Cond(m.Root(), "Paid at", "Between");
         SetDate(half, 1, 2024, 1, 1);
         SetDate(half, 2, 2024, 6, 30, true);
     }},
    {"freight_by_shipper", "Average freight per shipper and country for the orders of 2023", 0,
     [](const TQueryMaker &m) {
         m.Column({"Shipper"}, "", "", stAscending, 1);
         m.Column({"Ship to country"}, "", "", stAscending, 2);
         m.Column({"Freight"}, "Average freight", "ROUND(AVG(@1), 2)");
         m.Root()->SetLinkType(fltAll);
         m.Custom(m.Root(), "Ordered in the year", QStringLiteral("2023"));
         m.Cond(m.Root(), "Shipper", "IsNull")->SetEnabled(false);
         m.Cond(m.Root(), "Freight", "GreaterThan", QStringLiteral("20"));
     }},
};

void WriteQuery(TNCustomDBStructure &model, const TSampleQuery &sample, const QDir &folder)
{
    TNQuery query;
    query.SetDBStruct(&model);
    query.SetSaveTitles(false);
    query.SetSaveSQLOptions(true);
    query.SetQueryName(QString::fromLatin1(sample.File));
    query.Description() = QStringList{QString::fromUtf8(sample.Description)};
    query.SetSQLOptions(IntToSQLOptions(sample.Options));
    sample.Build(TQueryMaker(query, model));
    // A build settles the parameters' value formats, which the text keeps.
    query.BuildQuery();
    query.SaveToFile(folder.filePath(QString::fromLatin1(sample.File) + QStringLiteral(".vmq")));
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    if (args.size() != 3) {
        std::fprintf(stderr, "usage: vm20_makequeries MODEL_FILE OUTPUT_FOLDER\n");
        return 2;
    }
    try {
        TNDBStructure model;
        model.LoadFromFile(args[1]);
        const QDir folder(args[2]);
        if (!folder.exists() && !QDir().mkpath(args[2]))
            throw Exception(QStringLiteral("Can not create folder \"%1\"").arg(args[2]));
        for (const TSampleQuery &sample : SampleQueries)
            WriteQuery(model, sample, folder);
    } catch (const Exception &e) {
        std::fprintf(stderr, "vm20_makequeries: %s\n", e.what());
        return 1;
    }
    return 0;
}
