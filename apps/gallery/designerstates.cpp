// The model designer's states: the sample model's diagram arranged, with an
// active table, an active link, a link being drawn, with hints, and with
// lines routed around tables.
#include "shots.h"

#include "designer/designarea.h"
#include "designer/structdesignpanel.h"
#include "model/dbstructure.h"

#include <QVBoxLayout>

using namespace vm20;

namespace {

enum TDesignerState { dsArranged, dsActiveTable, dsActiveLink, dsAddLink, dsHints, dsRouted };

TTableRep *Rep(TNStructDesignPanel *panel, const char *name)
{
    return panel->TableRep(panel->Struct()->TableByName(0, QString::fromLatin1(name)));
}

GalleryShot Designer(TDesignerState state)
{
    auto host = std::make_unique<QWidget>();
    auto *model = new TNDBStructure(host.get());
    model->LoadFromFile(QStringLiteral(VM20_EXAMPLES_DIR "/shop.model"));
    auto *layout = new QVBoxLayout(host.get());
    layout->setContentsMargins(0, 0, 0, 0);
    auto *panel = new TNStructDesignPanel(host.get());
    layout->addWidget(panel);
    panel->SetLinkRouting(state == dsRouted ? lrAroundTables : lrStraight);
    panel->SetActionHints(state == dsHints || state == dsAddLink);
    host->resize(1180, 600);
    panel->SetStruct(model);
    host->show();   // lays the panel out; the platform is offscreen for shots
    switch (state) {
    case dsActiveTable:
        panel->SetActiveTable(Rep(panel, "orders"));
        break;
    case dsActiveLink:
        panel->SetActiveLink(panel->LinkRep(model->FindLink(QStringLiteral("orders"),
                                                            QStringLiteral("customers"))));
        break;
    case dsAddLink: {
        panel->StartAddLink();
        TTableRep *payments = Rep(panel, "payments");
        panel->LinkField1Selected(payments, QStringLiteral("method"));
        TTableRep *returns = Rep(panel, "returns");
        panel->NewLink()->MoveNode2ToMouseCursor(returns->geometry().topLeft() + QPoint(40, 60));
        break;
    }
    default:
        break;
    }
    GalleryShot shot;
    shot.widget = std::move(host);
    return shot;
}

} // namespace

std::vector<GalleryState> DesignerStates()
{
    return {
        {QStringLiteral("designer-arranged"), [] { return Designer(dsArranged); }, true},
        {QStringLiteral("designer-active-table"), [] { return Designer(dsActiveTable); }},
        {QStringLiteral("designer-active-link"), [] { return Designer(dsActiveLink); }},
        {QStringLiteral("designer-add-link-stage2"), [] { return Designer(dsAddLink); }},
        {QStringLiteral("designer-dark-active-link"), [] { return Darkened(Designer(dsActiveLink)); }},
        {QStringLiteral("designer-dark-hints"), [] { return Darkened(Designer(dsAddLink)); }},
        {QStringLiteral("designer-hints"), [] { return Designer(dsHints); }},
        {QStringLiteral("designer-routed"), [] { return Designer(dsRouted); }},
    };
}
