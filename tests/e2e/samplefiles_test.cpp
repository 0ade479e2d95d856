// The committed sample queries are what their program makes today, so that
// they never drift from the model and the query text; the two model files
// describe one model.
#include "clirunner.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

namespace e2e {
namespace {

TEST(SampleFiles, QueriesAreWhatTheQueryMakerWritesToday)
{
    QTemporaryDir out;
    ASSERT_TRUE(out.isValid());
    const TRun run = RunProgram(QStringLiteral(VM20_MAKEQUERIES_EXE), {Examples(QStringLiteral("shop.model")), out.path()});
    ASSERT_EQ(run.ExitCode, 0) << run.Err.toStdString();
    const QStringList made = QDir(out.path()).entryList({QStringLiteral("*.vmq")}, QDir::Files, QDir::Name);
    const QStringList committed =
        QDir(Examples(QStringLiteral("queries"))).entryList({QStringLiteral("*.vmq")}, QDir::Files, QDir::Name);
    EXPECT_EQ(made, committed);
    EXPECT_GE(made.size(), 12);
    for (const QString &name : made)
        EXPECT_EQ(ReadFile(out.filePath(name)), ReadFile(Examples(QStringLiteral("queries/")) + name))
            << name.toStdString() << ": run vm20_makequeries examples/shop.model examples/queries";
}

// Both model files describe one model, and what the XML form carries
// survives reading and writing it again unchanged.
TEST(SampleFiles, XmlModelIsTheModelTextConvertedAndReadsBack)
{
    for (const char *from : {"shop.model", "shop.xml"}) {
        const TRun run = RunVm20({QStringLiteral("convert"), QStringLiteral("--model"),
                                  Examples(QLatin1String(from)), QStringLiteral("--to"), QStringLiteral("xml")});
        ASSERT_EQ(run.ExitCode, 0) << run.Err.toStdString();
        EXPECT_EQ(run.Out, ReadFile(Examples(QStringLiteral("shop.xml"))))
            << from << ": run vm20 convert --model examples/shop.model --to xml > examples/shop.xml";
    }
}

} // namespace
} // namespace e2e
