// Random queries on the curated shop model: whatever a user composes, the
// statement built under SQL-92 syntax must run on the sample database, with
// and without each of the options that change its spelling, on SQLite and on
// PostgreSQL, and both must return the same rows where their data agree.
#include "sampledb.h"

#include "query/query.h"
#include "support/dattime.h"
#include "support/exception.h"
#include "support/nstrings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace e2e {
namespace {

using namespace vm20;

constexpr unsigned Seed = 20261121;
constexpr int QueryCount = 1200;

// Texts a user may type: quotes, comment and statement markers, wildcards,
// letters beyond ASCII.
const char *const StringValues[] = {
    "O'Brien", "Müller", "José's", "Zürich", "Øster", "--", "'; DROP TABLE orders; --", "/* x */",
    "a%b_c", "", "''", "\"q\"", "Montréal", "Yılmaz", "cancelled", "Germany",
};
// A column's alias is its caption with blanks as "_", written as it is unless
// aliases are quoted. A user who leaves aliases unquoted must keep captions
// that make identifiers; these do, letters beyond ASCII included.
const char *const PlainCaptions[] = {"Total", "Größe", "Año 2", "sum of all", "x", "Umsatz_€"};
// Captions that only work as quoted aliases.
const char *const QuotedCaptions[] = {"Weight (kg)", "E-mail", "Customer's name", "Größe / Ümsatz", "1st"};
// Aggregates a user would apply to a field of any type, and those that only
// suit numbers (strict engines have no SUM of texts, no MAX of Booleans).
const char *const AnyTypeAggregates[] = {"COUNT(@1)", "COUNT(DISTINCT @1)"};
const char *const OrderedAggregates[] = {"MAX(@1)", "MIN(@1)"};
const char *const NumberAggregates[] = {"SUM(@1)", "AVG(@1)"};
const TSQLOption VaryingOptions[] = {soBracketJoins, soBracketConditions, soSelectDistinct, soQuoteAliases};

bool IsNumber(TFieldType type)
{
    switch (type) {
    case ftSmallint: case ftInteger: case ftWord: case ftLargeint: case ftAutoInc:
    case ftFloat: case ftCurrency: case ftBCD: case ftFMTBcd:
        return true;
    default:
        return false;
    }
}

class TRandomQuery
{
public:
    TRandomQuery(std::mt19937 &rng, TNCustomDBStructure &model, TNQuery &query)
        : FRng(rng), FModel(model), FQuery(query)
    {
        for (int i = 0; i < model.GetFieldCount(); ++i) {
            TDSField *field = model.GetField(i);
            if (field->UseInConditions() && field->OperatCount() > 0)
                FConditionFields.push_back(field);
            if (field->UseInResult())
                FResultFields.push_back(field);
        }
    }

    void Build(bool quotedAliases)
    {
        const int columns = Pick(1, 4);
        for (int i = 0; i < columns; ++i)
            AddColumn(quotedAliases);
        FQuery.Filter()->SetLinkType(TFilterLinkType(Pick(0, FilterLinkTypeCount - 1)));
        FillBracket(FQuery.Filter(), 0);
        // A condition on an aggregate goes to HAVING, and the statement groups
        // only when a column aggregates: a query without one would be no
        // aggregate query at all, which databases refuse.
        if (FHaving && !HasAggregateColumn())
            AddColumn(quotedAliases, true);
    }

private:
    int Pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(FRng); }
    bool Chance(int percent) { return Pick(1, 100) <= percent; }
    template <typename T, std::size_t N> T Any(const T (&items)[N]) { return items[Pick(0, int(N) - 1)]; }
    template <typename T> T Any(const std::vector<T> &items) { return items[std::size_t(Pick(0, int(items.size()) - 1))]; }

    const char *AggregateFor(TFieldType type)
    {
        const int pick = Pick(0, 2);
        if (pick == 2 && IsNumber(type))
            return Any(NumberAggregates);
        if (pick >= 1 && type != ftBoolean && type != ftBlob && type != ftMemo)
            return Any(OrderedAggregates);
        return Any(AnyTypeAggregates);
    }

    bool HasAggregateColumn() const
    {
        for (const auto &column : FQuery.RFields().Items())
            if (column->GetAgregate())
                return true;
        return false;
    }

    QString Caption(TDSField *field, bool quotedAliases)
    {
        QString caption = field->DisplayName();
        if (Chance(50))
            caption = QString::fromUtf8(quotedAliases && Chance(50) ? Any(QuotedCaptions) : Any(PlainCaptions));
        if (!quotedAliases && !IsValidIdent(QString(caption).replace(QLatin1Char(' '), QLatin1Char('_'))))
            caption = QString::fromUtf8(Any(PlainCaptions));
        return caption;
    }

    void AddColumn(bool quotedAliases, bool aggregate = false)
    {
        TDSField *field = Any(FResultFields);
        while (aggregate && field->IsAggregate())
            field = Any(FResultFields);
        std::vector<TDSField *> fields{field};
        QString formula;
        const int kind = aggregate ? 1 : Pick(0, 3);
        if (kind == 1 && !field->IsAggregate()) {
            formula = QString::fromLatin1(AggregateFor(field->FieldType()));
        } else if (kind == 2) {
            // Whether a column aggregates is told by its first field alone: an
            // aggregate second field would land in GROUP BY, a plain one
            // beside an aggregate in no GROUP BY at all.
            TDSField *second = Any(FResultFields);
            while (second->IsAggregate() != field->IsAggregate())
                second = Any(FResultFields);
            fields.push_back(second);
            formula = QStringLiteral("@1 || ' / ' || @2");
        } else if (kind == 3) {
            formula = QStringLiteral("(@1)");
        }
        TResultField *column = FQuery.RFields().Add(Caption(field, quotedAliases), fields, formula);
        column->SetSorting(TSortingType(Pick(0, 2)));
        column->SetSortOrder(Pick(0, 3));
    }

    void FillBracket(TFilterBracket *bracket, int depth)
    {
        const int rows = Pick(1, 3);
        for (int i = 0; i < rows; ++i) {
            TFilterRow *row = nullptr;
            if (depth < 3 && Chance(30)) {
                TFilterBracket *inner = bracket->AddNewBracket();
                inner->SetLinkType(TFilterLinkType(Pick(0, FilterLinkTypeCount - 1)));
                FillBracket(inner, depth + 1);
                row = inner;
            } else if (Chance(15) && FModel.Conditions().Count() > 0) {
                row = AddCustom(bracket);
            } else {
                row = AddSimple(bracket);
            }
            if (Chance(10))
                row->SetEnabled(false);
        }
    }

    TFilterRow *AddSimple(TFilterBracket *bracket)
    {
        TDSField *field = Any(FConditionFields);
        FHaving = FHaving || field->IsAggregate();
        TSimpleCond *cond = FQuery.AddCondition(bracket, field);
        std::vector<TDSOperator *> operators;
        for (TDSOperator *op : field->Operators())
            if (op->ValueKind() != vkSubQuery)
                operators.push_back(op);
        if (!operators.empty())
            cond->SetOperator(Any(operators));
        FillValues(cond);
        return cond;
    }

    TFilterRow *AddCustom(TFilterBracket *bracket)
    {
        TDSCondition *condition = FModel.Conditions().Items(Pick(0, FModel.Conditions().Count() - 1));
        TCustomCond *cond = FQuery.AddCustomCondition(bracket, condition);
        FillValues(cond);
        return cond;
    }

    void FillValues(TFilterCond *cond)
    {
        for (int i = 1; i <= std::min(cond->GetValueCount(), 2); ++i) {
            const TFieldType type = cond->GetValueType(i);
            if (cond->GetValueKind(i) == vkList) {
                QStringList items;
                for (int n = Pick(1, 3); n > 0; --n)
                    items << Value(type);
                cond->SetValue(i, ListToCommaText(items));
            } else {
                cond->SetValue(i, Value(type));
            }
        }
    }

    QString Value(TFieldType type)
    {
        switch (type) {
        case ftSmallint:
        case ftInteger:
        case ftWord:
        case ftLargeint:
        case ftAutoInc:
            return QString::number(Pick(-100, 5000));
        case ftFloat:
        case ftCurrency:
        case ftBCD:
        case ftFMTBcd:
            return XFloatToStr(Pick(-1000, 100000) / 8.0);
        case ftBoolean:
            return Chance(50) ? QStringLiteral("True") : QStringLiteral("False");
        case ftDate:
        case ftTime:
        case ftDateTime:
        case ftTimeStamp:
            return VmDateTimeToStr(EncodeDate(Pick(2021, 2025), Pick(1, 12), Pick(1, 28))
                                   + (type == ftDate ? 0.0 : EncodeTime(Pick(0, 23), Pick(0, 59), 0)));
        default:
            return QString::fromUtf8(Any(StringValues));
        }
    }

    std::mt19937 &FRng;
    TNCustomDBStructure &FModel;
    TNQuery &FQuery;
    std::vector<TDSField *> FConditionFields;
    std::vector<TDSField *> FResultFields;
    bool FHaving = false;
};

// The statement of random query `i` for `model`, or the library's message.
QString RandomStatement(TNCustomDBStructure &model, int i, QString &error)
{
    // One generator per query, so that a failing query can be made again alone.
    std::mt19937 rng(Seed + unsigned(i));
    TSQLOptions options;
    for (int bit = 0; bit < 4; ++bit)
        if (i & (1 << bit))
            options.include(VaryingOptions[bit]);
    TNQuery query;
    query.SetDBStruct(&model);
    query.SetSQLSyntax(ssSQL2);
    query.SetSQLOptions(options);
    try {
        TRandomQuery(rng, model, query).Build(options.contains(soQuoteAliases));
        query.BuildQuery();
        return query.GetSQL().join(QLatin1Char('\n'));
    } catch (const Exception &e) {
        error = QStringLiteral("the library raised: ") + e.Message();
        return {};
    }
}

// Where the engines' data differ in form, their rows cannot agree: a number
// or date turned into text, and LIKE, which ignores case on SQLite alone.
bool DataAgree(const QString &sql)
{
    return !sql.contains(QLatin1String("||")) && !sql.contains(QLatin1String(" like "), Qt::CaseInsensitive);
}

// The first line of two row lists where they part, for the message.
QString FirstDifference(const QStringList &actual, const QStringList &expected)
{
    const auto at = std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end());
    return (at.first == actual.end() ? QString() : *at.first) + QStringLiteral(" / ")
           + (at.second == expected.end() ? QString() : *at.second);
}

TEST(SqlExecutionProperty, RandomQueriesRunOnBothEnginesWithTheSameRows)
{
    auto sqliteModel = LoadShopModel(TEngine::SQLite);
    auto postgresModel = LoadShopModel(TEngine::PostgreSQL);
    E2E_OPEN_SAMPLE_DB(sqlite, TEngine::SQLite);
    E2E_OPEN_SAMPLE_DB(postgres, TEngine::PostgreSQL);
    int failures = 0;
    int compared = 0;
    for (int i = 0; i < QueryCount && failures < 10; ++i) {
        QString error;
        const QString sql = RandomStatement(*postgresModel, i, error);
        const QString sqliteSql = RandomStatement(*sqliteModel, i, error);
        if (error.isEmpty())
            error = ExecutionError(sqlite.Get(), sqliteSql);
        if (error.isEmpty())
            error = ExecutionError(postgres.Get(), sql, 1000000);
        if (error.isEmpty() && DataAgree(sql)) {
            ++compared;
            QStringList expected = ComparableRows(sqlite.Get(), sqliteSql);
            QStringList actual = ComparableRows(postgres.Get(), sql);
            // Sums of floating-point numbers that differ in their last bits
            // are two groups to SQLite and one to exact numerics.
            if (sql.contains(QLatin1String("DISTINCT")) || sql.contains(QLatin1String("GROUP BY"))) {
                expected.removeDuplicates();
                actual.removeDuplicates();
            }
            if (actual != expected)
                error = QStringLiteral("%1 rows on PostgreSQL, %2 on SQLite; first differing: %3")
                            .arg(actual.size()).arg(expected.size()).arg(FirstDifference(actual, expected));
        }
        if (!error.isEmpty()) {
            ++failures;
            ADD_FAILURE() << "seed " << Seed + unsigned(i) << " (query " << i << "): " << error.toStdString()
                          << "\n" << sql.toStdString();
        }
    }
    // Enough queries must be compared, or the test would prove little.
    EXPECT_GT(compared, QueryCount / 3);
}

} // namespace
} // namespace e2e
