// Gallery states of the result column panel over the sample shop model.
#include "shots.h"

#include "model/dbstructure.h"
#include "query/query.h"
#include "query/resultfield.h"
#include "ui/resultfieldspanel.h"

namespace {

struct PanelSetup
{
    bool groupNames = false;
    Qt::LayoutDirection direction = Qt::LeftToRight;
    bool roundButtons = true;
};

GalleryShot ResultPanel(const PanelSetup &setup)
{
    GalleryShot shot;
    auto model = std::make_shared<vm20::TNDBStructure>();
    model->LoadFromFile(QStringLiteral(VM20_EXAMPLES_DIR "/shop.model"));
    auto query = std::make_shared<vm20::TNQuery>();
    query->SetDBStruct(model.get());
    vm20::TRFieldList &columns = query->RFields();
    auto field = [&](const char *name) { return model->FieldByName(1, QString::fromUtf8(name)); };
    columns.Add(QString(), {field("Customer")}, QStringLiteral("@1"))->SetSorting(vm20::stAscending);
    columns.Add(QStringLiteral("Total list price"), {field("List price")}, QStringLiteral("sum(@1)"))
        ->SetSorting(vm20::stDescending);
    columns.Add(QStringLiteral("Products"), {field("Product")}, QStringLiteral("count(distinct @1)"));
    columns.Add(QString(), {field("Region")}, QStringLiteral("@1"));

    auto panel = std::make_unique<vm20::TNResultFieldsPanel>();
    panel->setLayoutDirection(setup.direction);
    panel->Appearance().SetOption(vm20::TRFPAppearance::aoShowGroupName, setup.groupNames);
    panel->Appearance().SetOption(vm20::TRFPAppearance::aoRoundButtons, setup.roundButtons);
    panel->resize(460, 130);
    panel->SetQuery(query.get());
    shot.widget = std::move(panel);
    shot.keep = {model, query};
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
    };
}
