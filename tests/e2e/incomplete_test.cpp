// A query the model cannot resolve in full is refused, not built without the
// missing part: sql, run, text and parse exit with 1 and list each part on
// standard error, unless --allow-incomplete.
#include "clirunner.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

namespace e2e {
namespace {

// Sample query "big orders not shipped": four columns, a predefined
// condition (CondID=1) and "Order total > 1000" (FieldID=53).
QString Sample()
{
    return ReadFile(Examples(QStringLiteral("queries/big_orders_not_shipped.vmq")));
}

struct TIncompleteRow
{
    int Line;
    const char *Reason;
    const char *Command;
    QString Input;   // a query file, or the statement for parse
    const char *Message;
};

TEST(Vm20Incomplete, RefusesWhatTheModelCannotResolveUnlessAllowed)
{
    const QString sample = Sample();
    ASSERT_TRUE(sample.contains("FieldID=53") && sample.contains("Operator=GreaterThan")
                && sample.contains("CondID=1") && sample.contains("Fields=34"));
    const QString select = QStringLiteral("SELECT orders.order_id FROM orders WHERE ");
    const TIncompleteRow rows[] = {
        {__LINE__, "a field the model lacks", "sql", QString(sample).replace("FieldID=53", "FieldID=999"),
         "row 2: unknown field (FieldID=999)"},
        {__LINE__, "an operator the model lacks", "run", QString(sample).replace("Operator=GreaterThan", "Operator=Nope"),
         "row 2: unknown operator (Operator=Nope)"},
        {__LINE__, "a predefined condition the model lacks", "text", QString(sample).replace("CondID=1", "CondID=77"),
         "row 1: unknown predefined condition (CondID=77)"},
        {__LINE__, "a result column's field", "sql", QString(sample).replace("Fields=34", "Fields=999"),
         "result column 1: unknown field (Order number)"},
        {__LINE__, "a main table the model lacks", "sql", QString(sample).replace("Options=0", "Options=0\nMainTable=nowhere"),
         "query: unknown table (MainTable=nowhere)"},
        {__LINE__, "a file cut before its conditions", "run", sample.left(sample.indexOf("[Row]")),
         "query: incomplete query text (no [Row] section)"},
        {__LINE__, "a file cut among its columns", "sql", sample.left(sample.indexOf("[RField2]")),
         "query: incomplete query text (1 of 4 result columns)"},
        {__LINE__, "a file cut inside a condition", "sql", sample.left(sample.indexOf("Param1=0\nParam2=0\nOperator")),
         "row 2: unknown operator (Operator=)"},
        {__LINE__, "a statement naming an unknown field", "parse", select + "orders.nope = 1",
         "row 1: unknown field (orders.nope = 1)"},
        {__LINE__, "a LIKE no operator reads", "parse", select + "orders.status not like '%ed'",
         "row 1: unknown operator (orders.status not like '%ed')"},
    };
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString input = dir.filePath(QStringLiteral("input"));
    for (const TIncompleteRow &row : rows) {
        SCOPED_TRACE(testing::Message() << "line " << row.Line << ": " << row.Reason);
        WriteFile(input, row.Input);
        const QString command = QString::fromLatin1(row.Command);
        QStringList args{command, "--model", Examples("shop.model"), "--formats", Examples("sqlite.formats"),
                         command == "parse" ? "--sql" : "--query", input};
        if (command == "run")
            args << "--db" << SampleDbUrl();
        const TRun refused = RunVm20(args);
        EXPECT_EQ(refused.ExitCode, 1) << refused.Err.toStdString();
        EXPECT_TRUE(refused.Err.contains(QString::fromUtf8(row.Message))) << refused.Err.toStdString();
        EXPECT_TRUE(refused.Out.isEmpty()) << refused.Out.left(300).toStdString();

        const TRun allowed = RunVm20(args << "--allow-incomplete");
        EXPECT_EQ(allowed.ExitCode, 0) << allowed.Err.toStdString();
        EXPECT_TRUE(allowed.Err.contains(QString::fromUtf8(row.Message))) << "still told";
    }
}

TEST(Vm20Incomplete, RejectsAnEmptyQueryFileAndAnUnterminatedLiteral)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString empty = dir.filePath(QStringLiteral("empty.vmq"));
    WriteFile(empty, QStringLiteral("\n  \n"));
    const TRun run = RunVm20({"sql", "--model", Examples("shop.model"), "--query", empty, "--allow-incomplete"});
    EXPECT_EQ(run.ExitCode, 1);
    EXPECT_TRUE(run.Err.contains("holds no query text")) << run.Err.toStdString();

    const TRun open = RunVm20({"parse", "--model", Examples("shop.model")},
                              "SELECT orders.order_id FROM orders\nWHERE orders.status = 'new\nOR 1 = 1\n");
    EXPECT_EQ(open.ExitCode, 1);
    EXPECT_TRUE(open.Err.contains("Unterminated string literal Line:2")) << open.Err.toStdString();
    EXPECT_TRUE(open.Out.isEmpty());
}

} // namespace
} // namespace e2e
