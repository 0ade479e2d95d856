// Older query texts: fields by name before 2.0, positional titles, and the
// old panel options.
#include "query/legacyoptions.h"
#include "shopquery.h"

using namespace vm20;
using namespace shop;

namespace {

class TNQueryOldTextTest : public ShopQueryFixture
{
protected:
    // A text of one simple condition whose section holds `keys`.
    static QStringList OneCondition(const QString &version, const QStringList &keys)
    {
        QStringList lines{"[Main]", "Version=" + version, "",
                          "[Row]", "Enabled=1", "RowType=1", "LinkType=0", "RowCount=1", "",
                          "[Row1.]", "RowType=0", "Enabled=1", "Operator=Equal", "Value1=x"};
        return lines + keys;
    }
    TDSField *LoadedField(const QStringList &lines)
    {
        query.LoadFromStrings(lines);
        auto *cond = dynamic_cast<TSimpleCond *>(query.GetRowByNum(1));
        return cond ? cond->Field() : nullptr;
    }
};

TEST_F(TNQueryOldTextTest, FindsFieldsTheWayTheTextsVersionNamesThem)
{
    struct Row { int line; const char *version; QStringList keys; bool found; const char *reason; };
    const Row rows[] = {
        {__LINE__, "1.3", {"FldName=Customers.City"}, true, "below 1.4: table and column"},
        {__LINE__, "1.3", {"FldName=c.City"}, false, "below 1.4 the SQL expression does not name it"},
        {__LINE__, "1.9", {"FldName=c.City"}, true, "1.4 to 2.0: the SQL expression"},
        {__LINE__, "1.9", {"FldName=Customers.City"}, false, "1.4 to 2.0: not the full name"},
        {__LINE__, "1.9", {"FieldID=3"}, false, "no IDs before 2.0"},
        {__LINE__, "2.0", {"FieldID=3", "FldName=nothing"}, true, "from 2.0 by ID"},
        {__LINE__, "2.0", {"FldName=Customers.City"}, false, "from 2.0 names are ignored"},
        {__LINE__, "", {"FldName=Customers.City"}, true, "no version reads as 1.1"},
    };
    for (const Row &row : rows) {
        TDSField *field = LoadedField(OneCondition(row.version, row.keys));
        EXPECT_EQ(field, row.found ? s.custCity : nullptr) << "line " << row.line << ": " << row.reason;
    }
}

TEST_F(TNQueryOldTextTest, ReadsOldTitlesByPositionWhenItsVersionIsOld)
{
    query.SetSaveTitles(true);
    const QStringList text{"[Titles]", "Title0=Pick rows where @ apply", "Title2=  every  ", "Title3=",
                           "", "[Main]", "Version=1.5", ""};
    query.LoadFromStrings(text);
    EXPECT_EQ(query.GetTitle("ttlFilter"), "Choose records where @ of the following apply")
        << "a query of version 3.6 reads titles from in front of [Main], not [Titles]";
    EXPECT_EQ(query.Version(), 1.5);

    query.LoadFromStrings(text);   // now the query's version is below 2.2
    EXPECT_EQ(query.GetTitle("ttlFilter"), "Pick rows where @ apply");
    EXPECT_EQ(query.GetTitle("ttlAll"), "every");
    EXPECT_EQ(query.GetTitle("ttlAny"), "any") << "an empty value keeps the title";
}

TEST(ConvertOldOptions, SplitsOldOptionsIntoAppearanceSyntaxAndSQLOptions)
{
    struct Row { const char *name; unsigned appearance; TSQLSyntax syntax; TSQLOptions sqlOptions; };
    const Row rows[] = {
        {"poFlatButtons", 1u << 0, ssSQL1, {}},
        {"poNewJoinsStyle", 0, ssSQL2, {}},
        {"poOracleJoins", 0, ssOracle, {}},
        {"poAsciiRFields", 0, ssSQL1, {soASCIIRFields}},
        {"poBracketConditions", 0, ssSQL1, {soBracketConditions}},
    };
    EXPECT_EQ(OldPanelOptionNames().size(), 17);
    for (const Row &row : rows) {
        const TLegacyPanelOptions options = ConvertOldOptions({row.name});
        EXPECT_EQ(options.Appearance, row.appearance) << row.name;
        EXPECT_EQ(options.SQLSyntax, row.syntax) << row.name;
        EXPECT_EQ(options.SQLOptions, row.sqlOptions) << row.name;
    }
}

TEST(ConvertOldOptions, LetsOracleJoinsWinAndIgnoresUnknownNames)
{
    const TLegacyPanelOptions options =
        ConvertOldOptions({"poOracleJoins", "poNewJoinsStyle", "poNoSuchThing", "poflatbuttons"});
    EXPECT_EQ(options.SQLSyntax, ssOracle);
    EXPECT_EQ(options.Appearance, 1u);
}

TEST(ReadOldOptions, ReadsTheStoredSetAndRefusesAnythingElse)
{
    EXPECT_EQ(ReadOldOptions(" [poPopupField, poBracketJoins] ").Appearance, 1u << 3);
    EXPECT_EQ(ReadOldOptions("[]").SQLSyntax, ssSQL1);
    for (const char *bad : {"", "poPopupField", "17", "[poPopupField", "[a,,b]", "['x']"})
        EXPECT_THROW(ReadOldOptions(bad), EPropertyError) << bad;
}

} // namespace
