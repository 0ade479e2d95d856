// Gallery states of the result column panel beside the condition panel, both
// over one query on the sample shop model.
#include "shots.h"

#include "model/dbstructure.h"
#include "query/query.h"
#include "query/resultfield.h"
#include "ui/querypanel.h"
#include "ui/resultfieldspanel.h"

#include <QFile>
#include <QHBoxLayout>

#include <algorithm>

namespace {

struct PanelSetup
{
    bool groupNames = false;
    Qt::LayoutDirection direction = Qt::LeftToRight;
    bool roundButtons = true;
    // A column over a field the model no longer has.
    bool missingField = false;
};

QStringList ReadLines(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
}

GalleryShot ResultPanel(const PanelSetup &setup)
{
    GalleryShot shot;
    auto model = std::make_shared<vm20::TNDBStructure>();
    model->LoadFromFile(QStringLiteral(VM20_EXAMPLES_DIR "/shop.model"));

    auto host = std::make_unique<QWidget>();
    host->setLayoutDirection(setup.direction);
    auto *layout = new QHBoxLayout(host.get());
    layout->setContentsMargins(4, 4, 4, 4);
    auto *conditions = new vm20::TNQueryPanel(host.get());
    conditions->SetDBStruct(model.get());
    vm20::TNQuery *query = conditions->Query();
    query->LoadFromStrings(ReadLines(QStringLiteral(VM20_EXAMPLES_DIR "/queries/top_customers.vmq")));

    vm20::TRFieldList &columns = query->RFields();
    columns.Clear();
    auto field = [&](const char *name) { return model->FieldByName(1, QString::fromUtf8(name)); };
    columns.Add(QString(), {field("Customer")}, QStringLiteral("@1"))->SetSorting(vm20::stAscending);
    columns.Add(QStringLiteral("Total list price"), {field("List price")}, QStringLiteral("sum(@1)"))
        ->SetSorting(vm20::stDescending);
    columns.Add(QStringLiteral("Products"), {field("Product")}, QStringLiteral("count(distinct @1)"));
    columns.Add(QString(), {field("Region")}, QStringLiteral("@1"));
    if (setup.missingField) {
        // As a query saved long ago would name it.
        QStringList text;
        query->SaveToStrings(text);
        const QString line = QStringLiteral("Fields=") + QString::number(field("Region")->ID());
        std::replace(text.begin(), text.end(), line, QStringLiteral("Fields=4600"));
        query->LoadFromStrings(text);
    }
    columns.RefreshSortOrder();
    query->SetModified(false);
    conditions->Loaded();

    auto *panel = new vm20::TNResultFieldsPanel(host.get());
    panel->Appearance().SetOption(vm20::TRFPAppearance::aoShowGroupName, setup.groupNames);
    panel->Appearance().SetOption(vm20::TRFPAppearance::aoRoundButtons, setup.roundButtons);
    panel->SetQuery(query);
    layout->addWidget(conditions, 5);
    layout->addWidget(panel, 4);
    host->resize(820, 150);
    // Laid out as on screen, so that the scroll bars know the viewport.
    host->setAttribute(Qt::WA_DontShowOnScreen);
    host->show();
    panel->SetCurrentRow(panel->Row(1));
    shot.widget = std::move(host);
    shot.keep = {model};
    return shot;
}

} // namespace

std::vector<GalleryState> ResultPanelStates()
{
    return {
        {QStringLiteral("result-panel"), [] { return ResultPanel({}); }, true},
        {QStringLiteral("result-panel-group-names"), [] { return ResultPanel({true}); }},
        {QStringLiteral("result-panel-square-buttons"), [] {
             return ResultPanel({false, Qt::LeftToRight, false});
         }},
        {QStringLiteral("result-panel-rtl"), [] { return ResultPanel({false, Qt::RightToLeft}); }},
        {QStringLiteral("result-panel-missing-field"), [] {
             return ResultPanel({false, Qt::LeftToRight, true, true});
         }},
        {QStringLiteral("result-panel-dark"), [] { return Darkened(ResultPanel({false, Qt::LeftToRight, true, true})); }},
    };
}
