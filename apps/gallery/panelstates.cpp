// The condition panel in its characteristic looks: a rich query on the
// sample shop model (brackets of every link type, disabled rows, values of
// every label kind, parameters, a custom condition, a field the model lacks)
// under several appearances, and a query read from SQL.
#include "shots.h"

#include "model/dbstructure.h"
#include "query/filtercond.h"
#include "ui/dropdownlabel.h"
#include "ui/dropdownlistbox.h"
#include "ui/querypanel.h"
#include "ui/rndbtn.h"

#include <QCoreApplication>
#include <QFile>
#include <QMenu>
#include <QScrollBar>

using namespace vm20;

namespace {

QStringList ReadLines(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
}

TSimpleCond *Add(TNQuery &q, TFilterBracket *bracket, TNDBStructure &m, int fieldId, const char *op,
                 const QString &v1 = {}, const QString &v2 = {})
{
    TSimpleCond *c = q.AddCondition(bracket, m.FieldByID(fieldId));
    c->SetOperator(m.OperatorByName(QString::fromLatin1(op)));
    if (!v1.isEmpty())
        c->SetValue(1, v1);
    if (!v2.isEmpty())
        c->SetValue(2, v2);
    return c;
}


GalleryShot Panel(const std::function<void(TNQueryPanel &)> &look, const std::function<void(TNQuery &, TNDBStructure &)> &fill = RichQuery,
                  QSize size = QSize(620, 440))
{
    GalleryShot shot;
    auto model = SampleModel();
    auto panel = std::make_unique<TNQueryPanel>();
    panel->resize(size);
    panel->SetDBStruct(model.get());
    fill(*panel->Query(), *model);
    look(*panel);
    panel->Loaded();
    // Laid out as on screen, so that the scroll bars know the viewport.
    panel->setAttribute(Qt::WA_DontShowOnScreen);
    panel->show();
    panel->SetCurrentRow(panel->Filter()->RowByID(QStringLiteral("4.1.")));
    shot.keep.push_back(model);
    shot.widget = std::move(panel);
    return shot;
}

enum TMenuKind { mkMain, mkRow, mkValue };

// The panel with one of its menus open under the control it belongs to: the
// main menu at the root button, the row menu at a nested bracket's button
// (which offers the "inside" entries), the value menu at a first value.
GalleryShot MenuOpen(TMenuKind kind)
{
    GalleryShot shot = Panel([](TNQueryPanel &) {});
    auto *panel = static_cast<TNQueryPanel *>(shot.widget.get());
    TFilterRow *row = panel->Filter();
    for (TFilterRow *candidate : panel->DisplayRows()) {
        const bool nestedBracket = candidate->IsBracket() && candidate->Parent();
        if ((kind == mkRow && nestedBracket) || (kind == mkValue && candidate == panel->CurrentRow())) {
            row = candidate;
            break;
        }
    }
    panel->SetCurrentRow(row);
    TQueryRowView *view = panel->RowView(row);
    const QWidget *control = view->Button();
    QMenu *menu = panel->MainPopup();
    if (kind == mkRow) {
        panel->RowMenuPopup();
        menu = panel->RowPopup();
    } else if (kind == mkValue) {
        const std::vector<TDropDownLabel *> controls = view->Controls();
        const auto value = std::find(controls.begin(), controls.end(), view->Slot(rsFirstValue));
        view->SetCurrentControlIndex(int(value - controls.begin()));
        control = view->Slot(rsFirstValue);
        panel->ValueMenuPopup();
        menu = panel->ValuePopup();
    }
    menu->ensurePolished();
    menu->adjustSize();
    shot.overlays.emplace_back(menu, control->mapTo(panel, QPoint(0, control->height())));
    return shot;
}

void Options(TNQueryPanel &panel, TQPAppearance::TQPAppearanceOption option, bool on)
{
    auto options = panel.Appearance().Options();
    on ? options.include(option) : options.exclude(option);
    panel.Appearance().SetOptions(options);
}

} // namespace

std::shared_ptr<TNDBStructure> SampleModel()
{
    auto model = std::make_shared<TNDBStructure>();
    model->LoadFromFile(QStringLiteral(VM20_EXAMPLES_DIR "/shop.model"));
    return model;
}

// The brackets sample, then one row of each other kind.
void RichQuery(vm20::TNQuery &q, vm20::TNDBStructure &m)
{
    q.LoadFromStrings(ReadLines(QStringLiteral(VM20_EXAMPLES_DIR "/queries/brackets.vmq")));
    TFilterBracket *root = q.Filter();
    TFilterBracket *dates = q.AddBracket(root);
    dates->SetLinkType(fltAll);
    dates->ClearRows();
    Add(q, dates, m, 35, "Between", QStringLiteral("45658"), QStringLiteral("45747"));
    Add(q, dates, m, 38, "InList", QStringLiteral("shipped,cancelled"));
    TFilterBracket *deeper = q.AddBracket(dates);
    deeper->ClearRows();
    Add(q, deeper, m, 16, "Equal", QStringLiteral("True"));
    Add(q, deeper, m, 14, "GreaterThan")->SetValueIsParam(1, true);
    Add(q, root, m, 19, "StartsWith", QStringLiteral("Jo"))->SetEnabled(false);
    q.AddCustomCondition(root, m.ConditionByID(2))->SetValue(1, QStringLiteral("2024"));
    q.AddCustomCondition(root, m.ConditionByID(1));
    // A field the model no longer has, as a query saved long ago would name.
    QStringList text;
    q.SaveToStrings(text);
    text.replaceInStrings(QStringLiteral("FieldID=46"), QStringLiteral("FieldID=4600"));
    q.LoadFromStrings(text);
    q.SetModified(false);
}

std::vector<GalleryState> PanelStates()
{
    return {
        {QStringLiteral("panel-default"), [] { return Panel([](TNQueryPanel &) {}); }, true},
        {QStringLiteral("panel-logop-before"),
         [] { return Panel([](TNQueryPanel &p) { p.Appearance().SetLogOpStyle(losBeforeCond); }); }},
        {QStringLiteral("panel-logop-after"),
         [] { return Panel([](TNQueryPanel &p) { p.Appearance().SetLogOpStyle(losAfterCond); }); }},
        {QStringLiteral("panel-hidden-root"),
         [] { return Panel([](TNQueryPanel &p) { Options(p, TQPAppearance::aoHideRootRow, true); }); }},
        {QStringLiteral("panel-hidden-buttons"),
         [] {
             return Panel([](TNQueryPanel &p) {
                 Options(p, TQPAppearance::aoHideRowButtons, true);
                 Options(p, TQPAppearance::aoShowCheckBoxes, false);
             });
         }},
        {QStringLiteral("panel-rtl"),
         [] { return Panel([](TNQueryPanel &p) { p.setLayoutDirection(Qt::RightToLeft); }); }},
        {QStringLiteral("panel-scrolled"), [] {
             GalleryShot shot = Panel([](TNQueryPanel &) {}, RichQuery, QSize(360, 200));
             auto *panel = static_cast<TNQueryPanel *>(shot.widget.get());
             panel->verticalScrollBar()->setValue(60);
             panel->horizontalScrollBar()->setValue(40);
             // The scroll bars appear through posted layout requests.
             QCoreApplication::sendPostedEvents();
             return shot;
         }},
        {QStringLiteral("panel-main-menu"), [] { return MenuOpen(mkMain); }},
        {QStringLiteral("panel-row-menu"), [] { return MenuOpen(mkRow); }},
        {QStringLiteral("panel-value-menu"), [] { return MenuOpen(mkValue); }},
        {QStringLiteral("panel-dark"), [] {
             GalleryShot shot = Darkened(Panel([](TNQueryPanel &) {}));
             // The first value list of the panel open: its row made current.
             auto *panel = static_cast<TNQueryPanel *>(shot.widget.get());
             for (TFilterRow *row : panel->DisplayRows()) {
                 TQueryRowView *view = panel->RowView(row);
                 if (auto *list = dynamic_cast<TDropDownListBox *>(view ? view->Slot(rsFirstValue) : nullptr)) {
                     panel->SetCurrentRow(row);
                     list->DropDown();
                     break;
                 }
             }
             return shot;
         }},
        {QStringLiteral("panel-dark-rtl"), [] {
             return Darkened(Panel([](TNQueryPanel &p) { p.setLayoutDirection(Qt::RightToLeft); }));
         }},
        {QStringLiteral("panel-dark-value-menu"), [] { return Darkened(MenuOpen(mkValue)); }},
        {QStringLiteral("panel-parsed-sql"), [] {
             return Panel([](TNQueryPanel &) {}, [](TNQuery &q, TNDBStructure &) {
                 q.ParseSQL({QStringLiteral("SELECT customers.company_name FROM customers"),
                             QStringLiteral("WHERE customers.country IN ('France', 'Spain') AND (customers.city LIKE 'Par%'"),
                             QStringLiteral("  OR customers.credit_limit BETWEEN 1000 AND 5000) AND NOT (customers.phone IS NULL)")});
             });
         }},
    };
}
