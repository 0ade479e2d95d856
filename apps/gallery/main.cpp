// vm20-gallery: every drop-down label and button in its characteristic
// states. Without arguments it shows them in one window; with --shots DIR it
// writes one PNG per state at device pixel ratios 1 and 2; --interactive
// opens a condition panel to play with, its SQL and query text live beside it.
#include "shots.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QGridLayout>
#include <QImage>
#include <QLabel>
#include <QScrollArea>
#include <QTimer>

#include "ui/dropdownchecklistbox.h"
#include "ui/dropdownpopup.h"

#include <cstdio>

namespace {

std::vector<GalleryState> AllStates()
{
    std::vector<GalleryState> states = GalleryStates();
    for (GalleryState &state : PanelStates())
        states.push_back(std::move(state));
    for (GalleryState &state : InteractiveStates())
        states.push_back(std::move(state));
    return states;
}

int WriteShots(const QString &dirName)
{
    QDir dir;
    if (!dir.mkpath(dirName)) {
        std::fprintf(stderr, "vm20-gallery: cannot create %s\n", qPrintable(dirName));
        return 1;
    }
    int written = 0;
    for (const GalleryState &state : AllStates()) {
        const GalleryShot shot = state.build();
        for (int scale : {1, 2}) {
            const QImage image = RenderShot(shot, scale);
            const QString file = QDir(dirName).filePath(QStringLiteral("%1@%2x.png").arg(state.name).arg(scale));
            if (!image.save(file)) {
                std::fprintf(stderr, "vm20-gallery: cannot write %s\n", qPrintable(file));
                return 1;
            }
            ++written;
        }
    }
    std::printf("%d pictures in %s\n", written, qPrintable(dirName));
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    // Pictures must not depend on the machine's screen: render offscreen.
    const bool shots = [&] {
        for (int i = 1; i < argc; ++i)
            if (QByteArray(argv[i]) == "--shots")
                return true;
        return false;
    }();
    if (shots && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");

    QApplication app(argc, argv);
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("The drop-down labels and buttons in their states."));
    parser.addHelpOption();
    parser.addOption({QStringLiteral("shots"), QStringLiteral("Write one PNG per state into <dir>."), QStringLiteral("dir")});
    parser.addOption({QStringLiteral("open"),
                      QStringLiteral("Drop down the first <kind> label once shown: menu, list or checklist."),
                      QStringLiteral("kind")});
    parser.addOption({QStringLiteral("interactive"),
                      QStringLiteral("Open the condition panel on the sample query with its live SQL and query text.")});
    parser.addOption({QStringLiteral("empty"), QStringLiteral("With --interactive: start from an empty query.")});
    parser.process(app);
    if (parser.isSet(QStringLiteral("shots")))
        return WriteShots(parser.value(QStringLiteral("shots")));
    if (parser.isSet(QStringLiteral("interactive"))) {
        GalleryShot live = InteractivePage(parser.isSet(QStringLiteral("empty")));
        live.widget->resize(1100, 720);
        live.widget->show();
        return app.exec();
    }

    QScrollArea area;
    auto *page = new QWidget;
    auto *grid = new QGridLayout(page);
    std::vector<GalleryShot> keep;
    int row = 0;
    for (const GalleryState &state : AllStates()) {
        if (!state.live)
            continue;
        grid->addWidget(new QLabel(state.name), row, 0, Qt::AlignTop);
        GalleryShot shot = state.build();
        grid->addWidget(shot.widget.release(), row, 1, Qt::AlignLeft | Qt::AlignTop);
        keep.push_back(std::move(shot));
        ++row;
    }
    area.setWidget(page);
    area.resize(900, 700);
    area.setWindowTitle(QStringLiteral("vm20 gallery"));
    area.show();
    const QString open = parser.value(QStringLiteral("open"));
    if (!open.isEmpty()) {
        QTimer::singleShot(500, &area, [page, open] {
            for (vm20::TDropDownLabel *label : page->findChildren<vm20::TDropDownLabel *>()) {
                const bool checklist = qobject_cast<vm20::TDropDownCheckListBox *>(label);
                const bool match = (open == QLatin1String("menu") && qobject_cast<vm20::TDropDownPopup *>(label))
                                   || (open == QLatin1String("checklist") && checklist)
                                   || (open == QLatin1String("list") && !checklist
                                       && qobject_cast<vm20::TDropDownListBox *>(label));
                if (match) {
                    label->DropDown();
                    return;
                }
            }
        });
    }
    return app.exec();
}
