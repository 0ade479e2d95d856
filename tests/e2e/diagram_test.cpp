// `vm20 diagram` draws the sample model headless, as PNG at both scales and
// as SVG, with nothing on standard error.
#include "clirunner.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QTemporaryDir>

namespace e2e {
namespace {

TEST(Vm20Diagram, DrawsTheSampleModelAsPngAndSvg)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString model = Examples(QStringLiteral("shop.model"));
    QSize single;
    for (int scale : {1, 2}) {
        const QString png = dir.filePath(QStringLiteral("shop%1.png").arg(scale));
        const TRun run = RunVm20({"diagram", "--model", model, "--out", png, "--scale", QString::number(scale)});
        ASSERT_EQ(run.ExitCode, 0) << run.Err.toStdString();
        EXPECT_EQ(run.Err, QString());
        const QImage image(png);
        ASSERT_FALSE(image.isNull());
        if (scale == 1)
            single = image.size();
        else
            EXPECT_EQ(image.size(), single * 2);
    }
    EXPECT_GT(single.width(), 600) << "the tables stand side by side";

    const QString svg = dir.filePath(QStringLiteral("shop.svg"));
    const TRun run = RunVm20({"diagram", "--model", model, "--out", svg, "--routing", "around"});
    ASSERT_EQ(run.ExitCode, 0) << run.Err.toStdString();
    const QString text = ReadFile(svg);
    EXPECT_TRUE(text.contains(QStringLiteral("<svg"))) << text.left(200).toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral(">Customers<")));
    EXPECT_TRUE(text.contains(QStringLiteral(">region_id<"))) << "join columns are listed";
}

} // namespace
} // namespace e2e
