// Widget tests need one application object; they run with the DejaVu font
// and an English locale so that metrics and separators do not depend on the
// machine.
#include <QApplication>
#include <QFont>
#include <QLocale>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
