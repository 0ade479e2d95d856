// Bad command lines and bad files end in a one-line message on standard
// error and exit code 2 (the command line) or 1 (everything else), never in a
// crash or in partial output.
#include "clirunner.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

namespace e2e {
namespace {

// Args: "@dir" stands for a scratch folder with the files below; Message: part of the message.
struct TBadInput { int Line; const char *Reason; QStringList Args; int ExitCode; const char *Message; };

class Vm20BadInput : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        WriteFile(dir.filePath(QStringLiteral("garbage.model")), QStringLiteral("just some words\n"));
        WriteFile(dir.filePath(QStringLiteral("broken.xml")),
                  QStringLiteral("<?xml version=\"1.0\"?>\n<DataModel><Tables><Table name=\"a\"\n"));
        WriteFile(dir.filePath(QStringLiteral("badtable.model")),
                  QStringLiteral("[Main]\nVersion=3.6\nTableCount=0\nFieldCount=1\n\n"
                                 "[Field:1]\nID=1\nKind=nfkData\nFieldExpr=x\nTableAlias=nowhere\n"));
        WriteFile(dir.filePath(QStringLiteral("broken.vmq")),
                  QStringLiteral("[Main]\nQueryName=x\nVersion=3.6\n\n[Row]\nEnabled=1\nRowType=1\n"
                                 "LinkType=0\nRowCount=1\n\n[Row1.]\nRowType=zero\n\n"));
        WriteFile(dir.filePath(QStringLiteral("bad.sql")), QStringLiteral("SELECT a FROM t WHERE (x = 1\n"));
        WriteFile(dir.filePath(QStringLiteral("bad.formats")), QStringLiteral("Date=yyyy\nColour=blue\n"));
        WriteFile(dir.filePath(QStringLiteral("notadb.sqlite")), QStringLiteral("this is not a database file\n"));
    }

    QStringList Expand(const QStringList &args) const
    {
        QStringList result;
        for (QString arg : args)
            result << arg.replace(QStringLiteral("@dir"), dir.path())
                          .replace(QStringLiteral("@examples"), Examples())
                          .replace(QStringLiteral("@db"), SampleDbUrl());
        return result;
    }

    QTemporaryDir dir;
};

const QString Model = QStringLiteral("@examples/shop.model");
const QString Query = QStringLiteral("@examples/queries/top_customers.vmq");

TEST_F(Vm20BadInput, EndsInOneLineAndTheRightExitCode)
{
    const TBadInput cases[] = {
        {__LINE__, "no command", {}, 2, "no command"},
        {__LINE__, "unknown command", {"frobnicate"}, 2, "unknown command 'frobnicate'"},
        {__LINE__, "unknown flag", {"sql", "--colour", "red"}, 2, "Unknown option 'colour'"},
        {__LINE__, "flag without its value", {"sql", "--model"}, 2, "Missing value after '--model'"},
        {__LINE__, "required flag missing", {"sql", "--query", Query}, 2, "Missing option '--model'"},
        {__LINE__, "stray argument", {"text", "--model", Model, "extra"}, 2, "Unexpected argument 'extra'"},
        {__LINE__, "unknown syntax", {"sql", "--model", Model, "--query", Query, "--syntax", "cobol"}, 2, "--syntax"},
        {__LINE__, "negative row count", {"run", "--model", Model, "--query", Query, "--db", "@db", "--max-rows", "-3"}, 2, "--max-rows"},
        {__LINE__, "parameter the query lacks", {"run", "--model", Model, "--query", Query, "--db", "@db", "--param", "nope=1"}, 2, "no parameter 'nope'"},
        {__LINE__, "model file missing", {"text", "--model", "@dir/none.model", "--query", Query}, 1, "none.model"},
        {__LINE__, "model file is a folder", {"convert", "--model", "@dir", "--to", "xml"}, 1, "Can not read file"},
        {__LINE__, "model text without sections", {"convert", "--model", "@dir/garbage.model", "--to", "xml"}, 1, "Can not find section"},
        {__LINE__, "model text naming an unknown table", {"convert", "--model", "@dir/badtable.model", "--to", "xml"}, 1, "nowhere"},
        {__LINE__, "malformed XML", {"convert", "--model", "@dir/broken.xml", "--to", "text"}, 1, ""},
        {__LINE__, "malformed query file", {"sql", "--model", Model, "--query", "@dir/broken.vmq"}, 1, "zero"},
        {__LINE__, "statement the parser rejects", {"parse", "--model", Model, "--sql", "@dir/bad.sql"}, 1, "Line:"},
        {__LINE__, "unknown key in a formats file", {"sql", "--model", Model, "--query", Query, "--formats", "@dir/bad.formats"}, 1, "line 2: unknown key \"Colour\""},
        {__LINE__, "file that is no database", {"import", "--db", "sqlite:@dir/notadb.sqlite"}, 1, ""},
        {__LINE__, "diagram into a folder", {"diagram", "--model", Model, "--out", "@dir"}, 1, "Can not write"},
        {__LINE__, "diagram scale out of range", {"diagram", "--model", Model, "--out", "@dir/x.png", "--scale", "9"}, 2, "--scale"},
        {__LINE__, "running on a database without the tables", {"run", "--model", Model, "--query", Query, "--db", "sqlite::memory:"}, 1, "no such table"},
    };
    for (const TBadInput &c : cases) {
        SCOPED_TRACE(testing::Message() << "line " << c.Line << ": " << c.Reason);
        const TRun run = RunVm20(Expand(c.Args));
        EXPECT_FALSE(run.Crashed);
        EXPECT_EQ(run.ExitCode, c.ExitCode) << run.Err.toStdString();
        EXPECT_TRUE(run.Err.startsWith(QStringLiteral("vm20"))) << run.Err.toStdString();
        EXPECT_EQ(run.Err.count(QLatin1Char('\n')), 1) << run.Err.toStdString();
        EXPECT_TRUE(run.Err.contains(QString::fromUtf8(c.Message))) << run.Err.toStdString();
        EXPECT_TRUE(run.Out.isEmpty()) << run.Out.left(300).toStdString();
    }
}

TEST(Vm20Help, ExplainsEveryCommandAndExitsZero)
{
    const TRun general = RunVm20({QStringLiteral("--help")});
    EXPECT_EQ(general.ExitCode, 0);
    for (const char *command : {"sql", "parse", "text", "import", "convert", "run", "tour", "diagram"}) {
        SCOPED_TRACE(command);
        EXPECT_TRUE(general.Out.contains(QStringLiteral("  %1 ").arg(QLatin1String(command))));
        const TRun run = RunVm20({QString::fromLatin1(command), QStringLiteral("--help")});
        EXPECT_EQ(run.ExitCode, 0);
        EXPECT_TRUE(run.Out.startsWith(QStringLiteral("Usage: vm20 %1 ").arg(QLatin1String(command))))
            << run.Out.toStdString();
        EXPECT_TRUE(run.Out.contains(QStringLiteral("--help"))) << run.Out.toStdString();
        EXPECT_EQ(run.Err, QString());
    }
}

} // namespace
} // namespace e2e
