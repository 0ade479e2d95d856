// Build then parse: the statement a query builds, loaded into a fresh query
// with the same options, builds the same statement again.
//
// What the round trip cannot preserve, and why (the random queries below
// avoid exactly these; the second half of the file shows each one):
//  - A negated bracket (fltNone, fltNotAll) that writes one condition: its
//    "NOT (" reads as a negated condition. "not(@f = '@1')" then becomes the
//    NotEqual operator, a negated IS NULL or comparison fits no template
//    (fallback operator), a negated like becomes its Not... operator.
//  - A nested bracket that writes one row: brackets around one condition are
//    no group to the parser, so the row moves up into the parent.
//  - A root that writes only a bracket: the two pairs of brackets read as one
//    group, which becomes the root.
//  - A lone negated template (NOT (... in ...), not(... like ...)) in
//    brackets of its own, as the root's only row or under soBracketConditions:
//    the factor around it overwrites the condition's NOT, so NotInList reads
//    as InList and NotStartsWith as StartsWith.
//  - Conditions on aggregate fields: they go to HAVING, which the parser
//    skips.
//  - A predefined condition with values: the loader compares whole texts, so
//    its filled-in text never matches it (it comes back as whatever operator
//    template fits, else as a fallback row); one that begins with a bracketed
//    sub-query does not even parse (the bracket reads as a group). And a
//    simple condition whose text equals a predefined condition's (letter
//    case and blanks aside, such as VIP = 'TRUE') becomes that condition,
//    written in its own spelling.
//  - String values with leading blanks (blanks after the template's quote
//    are skipped), with an unpaired double quote or an unclosed bracket (the
//    value then runs past the closing quote and no template fits), like values
//    holding the wildcard (it ends the value), values beginning with ":"
//    (read as parameters), list items holding a quote (the list form turns
//    every ' into ").
//  - Dates: a list of dates (the whole list is no date form: today), a
//    date-time value (a text that fits a date-time form is read by the time
//    reader and fails), time and time-stamp values (kept as literal text,
//    which the builder cannot read as a day count).
//  - Result columns of a just-sorting query ("SELECT *"): only the sorted
//    columns come back, so tables of the others drop out of FROM.
//  - soSortByNames with quoted aliases holding blanks, or with a column whose
//    alias is its field's name in another letter case (ORDER BY then names
//    an alias the select list leaves out): the parser refuses the ORDER BY;
//    and with one field in two columns (the sort goes to the first).
//  - soBracketJoins: the parser reads left-nested join brackets only.
//  - Tables without a join path (Audit): the first build already fails.
// Preserved in the statement though not in the tree: disabled rows and empty
// brackets (they write nothing), the link type of a root that writes one
// row, value texts (dates come back as day counts, lists in quoted form),
// and a like parameter (it reads back as StartsWith, which writes the same
// ":name"). Parameters keep the names the statement gives them.
#include "parsesql_dump.h"
#include "query/sqlparam.h"
#include "shopquery.h"
#include "sqlparse/sqlparsererror.h"
#include "support/dattime.h"
#include "support/exception.h"
#include "support/nstrings.h"

#include <functional>
#include <random>

using namespace vm20;
using namespace shop;

namespace {

// Random queries over the shop model under ssSQL2 with every option, built
// only of what the round trip preserves.
class TRoundTripGenerator
{
public:
    TRoundTripGenerator(const ShopModel &shop, TNQuery &query, unsigned seed)
        : s(shop), q(query), rng(seed)
    {
    }

    void Fill()
    {
        TSQLOptions options;
        for (TSQLOption option : {soSelectDistinct, soQuoteAliases,
                                  soBracketConditions, soSortByNames, soFilter})
            if (Chance(30))
                options.include(option);
        if (options.contains(soSortByNames))
            options.exclude(soQuoteAliases);
        q.SetSQLOptions(options);
        AddColumns();
        FillBracket(q.Filter(), 0);
    }

private:
    int Pick(int n) { return std::uniform_int_distribution<int>(0, n - 1)(rng); }
    bool Chance(int percent) { return Pick(100) < percent; }
    template <typename T>
    T PickOf(std::initializer_list<T> items) { return items.begin()[Pick(int(items.size()))]; }

    std::vector<TDSField *> ColumnFields() const
    {
        return {s.custId, s.custName, s.custCity, s.custVip, s.custSince, s.orderId,
                s.orderDate, s.orderTotal, s.lineQty, s.linePrice, s.productName,
                s.productWeight, s.productCode, s.categoryName, s.totalSales};
    }
    std::vector<TDSField *> ConditionFields() const
    {
        return {s.custId, s.custName, s.custCity, s.custVip, s.custSince, s.orderId,
                s.orderDate, s.orderTotal, s.orderShipTime, s.orderDiscount, s.lineQty,
                s.linePrice, s.productName, s.productWeight, s.productCreated, s.productNotes,
                s.productCode, s.categoryName};
    }

    void AddColumns()
    {
        std::vector<TDSField *> fields = ColumnFields();
        const bool byNames = q.SQLOptions().contains(soSortByNames);
        const int count = 1 + Pick(3);
        for (int i = 0; i < count; ++i) {
            const auto at = fields.begin() + Pick(int(fields.size()));
            TDSField *field = *at;
            // Sorted by names, ORDER BY finds a bare expression in the first
            // column that has it.
            if (byNames)
                fields.erase(at);
            QString caption = field->DisplayName();
            if (Chance(15))
                caption = QStringLiteral("Col %1 x%2").arg(i).arg(Pick(10));
            else if (Chance(15) && field->FieldKind() == nfkData)
                caption = Chance(50) ? field->FieldName() : field->FieldName().toUpper();
            TResultField *column =
                q.RFields().Add(q.RFields().GetUniqCaption(caption), {field}, QString());
            column->SetSorting(PickOf({stNoSort, stNoSort, stAscending, stDescending}));
            column->SetSortOrder(Pick(4));
            // Sorted by names, a column whose alias is its field's name in
            // another letter case is sorted by an alias the select list
            // leaves out.
            QString alias = column->Caption();
            alias.replace(QLatin1Char(' '), QLatin1Char('_'));
            if (byNames && SameText(alias, field->FieldName())
                && alias != field->FieldName())
                column->SetSorting(stNoSort);
        }
    }

    // Fills a bracket so that it writes either nothing or at least two rows
    // (the root may write one row when it is not negated and the row is a
    // condition); returns the number of rows it writes.
    int FillBracket(TFilterBracket *bracket, int depth)
    {
        bracket->SetLinkType(PickOf({fltAll, fltAny, fltNone, fltNotAll}));
        const int count = Pick(depth == 0 ? 6 : 5);
        int written = 0;
        for (int i = 0; i < count; ++i) {
            TFilterRow *row;
            int rowWrites = 1;
            if (depth < 3 && Chance(25)) {
                auto *inner = bracket->AddNewBracket();
                rowWrites = FillBracket(inner, depth + 1) > 0 ? 1 : 0;
                row = inner;
            } else {
                row = AddCondition(bracket);
            }
            if (Chance(15)) {
                row->SetEnabled(false);
                rowWrites = 0;
            }
            written += rowWrites;
        }
        const bool negated = bracket->LinkType() == fltNone || bracket->LinkType() == fltNotAll;
        if (written == 1 && (depth > 0 || negated || !OnlyWrittenRowIsPlain(bracket))) {
            AddCondition(bracket);
            ++written;
        }
        return written;
    }

    // The one row a bracket writes is a condition whose template is not
    // negated.
    static bool OnlyWrittenRowIsPlain(const TFilterBracket *bracket)
    {
        for (const auto &row : bracket->Rows()) {
            if (!row->Enabled() || (row->IsBracket() && !Writes(static_cast<TFilterBracket *>(row.get()))))
                continue;
            const auto *cond = dynamic_cast<const TFilterCond *>(row.get());
            return cond && !IsNegated(cond->GetSQLExpr());
        }
        return false;
    }
    static bool Writes(const TFilterBracket *bracket)
    {
        for (const auto &row : bracket->Rows())
            if (row->Enabled() && (!row->IsBracket() || Writes(static_cast<TFilterBracket *>(row.get()))))
                return true;
        return false;
    }
    static bool IsNegated(const QString &templ)
    {
        return templ.startsWith(QLatin1String("not"), Qt::CaseInsensitive);
    }

    TFilterRow *AddCondition(TFilterBracket *bracket)
    {
        if (Chance(4))
            return bracket->AddCustomCond(s.vipOnly);
        const std::vector<TDSField *> fields = ConditionFields();
        TDSField *field = fields[std::size_t(Pick(int(fields.size())))];
        TSimpleCond *cond = bracket->AddCond();
        cond->SetField(field);
        cond->SetOperator(PickOperator(field));
        for (int i = 1; i <= cond->GetValueCount(); ++i) {
            if (Chance(10)) {
                cond->SetValueIsParam(i, true);
                continue;
            }
            cond->SetValue(i, RandomValue(field->FieldType(), cond->Operator()));
            // "c.Vip = 'true'" in any letter case is the predefined condition.
            if (field == s.custVip && cond->Operator() == s.Op("Equal"))
                cond->SetValue(i, QStringLiteral("False"));
        }
        return cond;
    }

    TDSOperator *PickOperator(const TDSField *field)
    {
        const TFieldType type = field->FieldType();
        // Times and date-times read back as no value at all or fail: only
        // the operator without a value.
        if (type == ftTime || type == ftDateTime || type == ftTimeStamp)
            return s.Op("IsNull");
        const bool bracketed = q.SQLOptions().contains(soBracketConditions);
        for (;;) {
            TDSOperator *op = field->GetOperator(Pick(field->OperatCount()));
            if (op->ValueKind() == vkList && type == ftDate)
                continue;
            if (bracketed && IsNegated(op->SQLExpr()))
                continue;
            return op;
        }
    }

    QString RandomText(bool listItem)
    {
        static const char *const pieces[] = {"a", "B", "z", "7", " ", "Ä", "x", "'", "()", "\"\""};
        const int count = Pick(7);
        QString text;
        for (int i = 0; i < count; ++i) {
            const QString piece = QString::fromUtf8(pieces[Pick(listItem ? 7 : 10)]);
            if (text.isEmpty() && piece == QLatin1String(" "))
                continue;
            text += piece;
        }
        return text;
    }

    QString RandomValue(TFieldType type, const TDSOperator *op)
    {
        if (op->ValueKind() == vkList) {
            QStringList items;
            const int count = 1 + Pick(3);
            for (int i = 0; i < count; ++i)
                items << RandomScalar(type, true);
            return ListToCommaText(items);
        }
        return RandomScalar(type, false);
    }

    QString RandomScalar(TFieldType type, bool listItem)
    {
        if (Chance(5) && (!listItem || IsStringType(type)))
            return QString();
        switch (type) {
        case ftString:
        case ftMemo:
            return RandomText(listItem);
        case ftBoolean:
            return PickOf({QStringLiteral("True"), QStringLiteral("False"), QStringLiteral("true")});
        case ftFloat:
        case ftCurrency:
            return QStringLiteral("%1.%2").arg(Pick(20000) - 10000).arg(Pick(100));
        case ftDate:
            return VmDateTimeToStr(EncodeDate(1990 + Pick(40), 1 + Pick(12), 1 + Pick(28)));
        default:
            return QString::number(Pick(200000) - 1000);
        }
    }

    const ShopModel &s;
    TNQuery &q;
    std::mt19937 rng;
};

class TNQueryRoundTripTest : public ShopQueryFixture
{
protected:
    static QString Statement(TNQuery &query)
    {
        query.BuildQuery();
        return query.GetSQL().join(QLatin1Char('\n'));
    }
    // Loads the statement `query` builds into `copy`; returns what the copy
    // builds.
    QString Reparsed(TNQuery &query, TNQuery &copy)
    {
        copy.SetDBStruct(s.model.get());
        copy.SetSQLOptions(query.SQLOptions());
        copy.SetSQLSyntax(query.SQLSyntax());
        query.BuildQuery();
        copy.ParseSQL(query.GetSQL());
        return Statement(copy);
    }
};

TEST_F(TNQueryRoundTripTest, RebuildsTheSameStatementForAThousandRandomQueries)
{
    constexpr unsigned baseSeed = 20240611;
    constexpr int queries = 2000;
    int failures = 0;
    for (int i = 0; i < queries && failures < 5; ++i) {
        const unsigned seed = baseSeed + unsigned(i);
        TNQuery random;
        random.SetDBStruct(s.model.get());
        TRoundTripGenerator(s, random, seed).Fill();
        const QString original = Statement(random);
        QString again;
        try {
            TNQuery copy;
            again = Reparsed(random, copy);
        } catch (const vm20::Exception &e) {
            again = QStringLiteral("error: ") + e.Message();
        }
        if (again != original) {
            ++failures;
            ADD_FAILURE() << "seed " << seed << "\n--- built:\n" << original.toStdString()
                          << "\n--- after parsing:\n" << again.toStdString() << "\n--- tree: "
                          << DumpTree(random).toStdString();
        }
    }
}

struct ExcludedRow
{
    int line;
    std::function<void()> build;
    QString tree;      // the tree the statement loads into
    bool sqlChanges;   // false: only the tree loses something
    const char *reason;
};

TEST_F(TNQueryRoundTripTest, ChangesEachExcludedKindAsDescribed)
{
    TFilterBracket *root = query.Filter();
    const QString today = VmDateTimeToStr(Date());
    TDSCondition *spentMore = s.model->AddCondition("Spent more than @", "o.Total * 2 > @1");
    const ExcludedRow rows[] = {
        {__LINE__, [&] { root->SetLinkType(fltNone); AddCond(s.custId, "Equal", "5"); },
         "all(Customer ID NotEqual [5])", true, "a negated one-condition bracket"},
        {__LINE__, [&] { root->SetLinkType(fltNotAll); AddCond(s.custId, "IsNull"); },
         "all(Customer ID Unrecognized operator)", true, "IS NULL with NOT"},
        {__LINE__, [&] { root->SetLinkType(fltNone); AddCond(s.custName, "StartsWith", "Jo"); },
         "all(Customer name NotStartsWith [Jo])", true, "a negated like"},
        {__LINE__,
         [&] {
             root->SetLinkType(fltAll);
             TFilterBracket *inner = root->AddNewBracket();
             AddCond(inner, s.custId, "Equal", "1");
             AddCond(inner, s.custId, "Equal", "3")->SetEnabled(false);
             AddCond(s.custId, "Equal", "2");
         },
         "all(Customer ID Equal [1]; Customer ID Equal [2])", true,
         "a nested bracket that writes one row"},
        {__LINE__,
         [&] {
             root->SetLinkType(fltAll);
             TFilterBracket *inner = root->AddNewBracket();
             inner->SetLinkType(fltAny);
             AddCond(inner, s.custId, "Equal", "1");
             AddCond(inner, s.custId, "Equal", "2");
         },
         "any(Customer ID Equal [1]; Customer ID Equal [2])", true, "a root that writes only a bracket"},
        {__LINE__, [&] { root->SetLinkType(fltAll); AddCond(s.custId, "NotInList", "1,2"); },
         "all(Customer ID InList [1,2])", true, "a lone negated template"},
        {__LINE__,
         [&] {
             query.SetSQLOptions(TSQLOptions{soBracketConditions});
             root->SetLinkType(fltAll);
             AddCond(s.custName, "NotStartsWith", "Jo");
             AddCond(s.custId, "Equal", "1");
         },
         "all(Customer name StartsWith [Jo]; Customer ID Equal [1])", true,
         "a negated template in brackets of its own"},
        {__LINE__,
         [&] {
             root->SetLinkType(fltAll);
             AddCond(s.totalSales, "GreaterThan", "100");
             AddCond(s.custId, "Equal", "1");
         },
         "all(Customer ID Equal [1])", true, "HAVING is skipped"},
        {__LINE__, [&] { query.AddCustomCondition(root, spentMore)->SetValue(1, "100"); },
         "all(Unrecognized field Unrecognized operator)", true, "a predefined condition with a value"},
        {__LINE__, [&] { AddCond(s.custVip, "Equal", "TRUE"); }, "all(#VIP customers only)", true,
         "the text of a predefined condition"},
        {__LINE__, [&] { AddCond(s.custName, "Equal", " Bob"); }, "all(Customer name Equal [Bob])",
         true, "a leading blank"},
        {__LINE__, [&] { AddCond(s.custName, "Equal", "5\" screen"); },
         "all(Customer name Unrecognized operator)", true, "an unpaired double quote"},
        {__LINE__, [&] { AddCond(s.custName, "Equal", "a(b"); },
         "all(Customer name Unrecognized operator)", true, "an unclosed bracket"},
        {__LINE__, [&] { AddCond(s.custName, "StartsWith", "50%"); },
         "all(Customer name Contains ['50%%'])", true, "the wildcard in a like value"},
        {__LINE__, [&] { AddCond(s.custName, "Equal", ":x"); }, "all(Customer name Equal :x)", true,
         "a value beginning with a colon"},
        {__LINE__, [&] { AddCond(s.custName, "InList", "O'Brien"); },
         "all(Customer name InList [\"O\"\"Brien\"])", true, "a list item holding a quote"},
        {__LINE__, [&] { AddCond(s.custSince, "InList", VmDateTimeToStr(EncodeDate(2020, 3, 4))); },
         "all(Customer since InList [" + today + "])", true, "a list of dates"},
        {__LINE__,
         [&] {
             root->SetLinkType(fltAll);
             AddCond(s.custId, "Equal", "1");
             AddCond(s.custId, "Equal", "2")->SetEnabled(false);
             root->AddNewBracket();
         },
         "all(Customer ID Equal [1])", false, "disabled rows and empty brackets"},
        {__LINE__, [&] { root->SetLinkType(fltAny); AddCond(s.custId, "Equal", "1"); },
         "all(Customer ID Equal [1])", false, "the link type of a one-row root"},
        {__LINE__, [&] { AddCond(s.custName, "Contains")->SetValueIsParam(1, true); },
         "all(Customer name StartsWith :Name)", false, "a like parameter"},
    };
    for (const ExcludedRow &row : rows) {
        query.ClearAll();
        query.SetSQLOptions(TSQLOptions());
        AddColumn(s.custName);
        row.build();
        const QString original = Statement(query);
        TNQuery copy;
        QString again;
        try {
            again = Reparsed(query, copy);
        } catch (const vm20::Exception &e) {
            ADD_FAILURE() << "line " << row.line << ": " << e.what() << "\n" << original.toStdString();
            continue;
        }
        EXPECT_EQ(DumpTree(copy), row.tree) << "line " << row.line << ": " << row.reason;
        EXPECT_EQ(again != original, row.sqlChanges)
            << "line " << row.line << ": " << row.reason << "\n" << original.toStdString();
    }
}

TEST_F(TNQueryRoundTripTest, FailsOnTheExcludedValuesAndOptions)
{
    TNQuery copy;
    AddColumn(s.custName);
    AddCond(s.orderDate, "Equal", VmDateTimeToStr(EncodeDate(2020, 3, 4)));
    EXPECT_THROW(Reparsed(query, copy), EConvertError) << "a date-time read by the time reader";

    query.ClearAll();
    AddColumn(s.custName);
    AddCond(s.orderShipTime, "Equal", VmDateTimeToStr(EncodeTime(10, 20, 30)));
    AddCond(s.productCreated, "Equal", VmDateTimeToStr(EncodeDate(2020, 3, 4)));
    EXPECT_THROW(Reparsed(query, copy), EConvertError) << "times kept as text are no day count";

    query.ClearAll();
    AddColumn(s.custName);
    query.AddCustomCondition(query.Filter(), s.bigCustomers)->SetValue(1, "5");
    EXPECT_THROW(Reparsed(query, copy), ESQLParserError) << "a sub-query's bracket read as a group";

    query.ClearAll();
    query.SetSQLOptions(TSQLOptions{soBracketJoins});
    AddColumn(s.custName);
    AddColumn(s.linePrice);
    EXPECT_THROW(Reparsed(query, copy), ESQLParserError) << "right-nested join brackets";

    query.ClearAll();
    query.SetSQLOptions(TSQLOptions{soSortByNames, soQuoteAliases});
    AddColumn(s.custName)->SetSorting(stAscending);
    EXPECT_THROW(Reparsed(query, copy), ESQLParserError) << "an alias with a blank, unquoted";

    query.ClearAll();
    query.SetSQLOptions(TSQLOptions{soSortByNames});
    AddColumn(s.custVip)->SetSorting(stAscending);
    EXPECT_THROW(Reparsed(query, copy), ESQLParserError) << "VIP sorts by an alias left out";
}

TEST_F(TNQueryRoundTripTest, LosesColumnsOfJustSortingAndSortsTheFirstOfTwoEqualColumns)
{
    TNQuery copy;
    AddColumn(s.custCity)->SetSorting(stAscending);
    AddColumn(s.orderTotal);
    query.RFields().SetJustSorting(true);
    const QString original = Statement(query);
    ASSERT_TRUE(original.contains("Orders o"));
    EXPECT_EQ(Reparsed(query, copy), "SELECT *\nFROM " + J + "Customers c\nORDER BY c.City ASC");

    query.ClearAll();
    query.SetSQLOptions(TSQLOptions{soSortByNames});
    AddColumn(s.custCity, "Town");
    AddColumn(s.custCity)->SetSorting(stAscending);
    EXPECT_EQ(Statement(query).section('\n', -1), "ORDER BY c.City ASC");
    EXPECT_EQ(Reparsed(query, copy).section('\n', -1), "ORDER BY Town ASC");
}

} // namespace
