// The gallery's interactive page: the condition panel and the result columns
// on the sample model, with the SQL they build and the query's saved text
// beside them, rebuilt on every change of the query.
#include "shots.h"

#include "model/dbstructure.h"
#include "providers/sqldbinfo.h"
#include "query/filtercond.h"
#include "query/query.h"
#include "query/resultfield.h"
#include "support/exception.h"
#include "ui/querypanel.h"
#include "ui/resultfieldspanel.h"

#include <QFileInfo>
#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QSplitter>
#include <QVBoxLayout>

using namespace vm20;

namespace {

QPlainTextEdit *TextPane(QWidget *parent)
{
    auto *pane = new QPlainTextEdit(parent);
    pane->setReadOnly(true);
    // Read-only, yet reachable and selectable from the keyboard; Tab leaves.
    pane->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    pane->setTabChangesFocus(true);
    pane->setLineWrapMode(QPlainTextEdit::NoWrap);
    pane->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    return pane;
}

// A heading over a pane; its mnemonic moves the focus to the pane.
QWidget *Titled(const QString &title, QWidget *pane)
{
    auto *box = new QWidget;
    auto *layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    auto *label = new QLabel(title);
    label->setBuddy(pane);
    layout->addWidget(label);
    layout->addWidget(pane, 1);
    return box;
}

// The sample database, read-only, answers the list editors' queries (the
// customers' countries, ...); without it those lists report the missing
// provider when dropped.
std::shared_ptr<TNSqlDBInfo> SampleDatabase()
{
    const QString file = QStringLiteral(VM20_SAMPLE_DB);
    if (!QFileInfo::exists(file))
        return nullptr;
    const QString name = QStringLiteral("vm20-gallery-sample");
    QSqlDatabase db = QSqlDatabase::contains(name) ? QSqlDatabase::database(name, false)
                                                   : QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
    db.setDatabaseName(file);
    db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
    return std::make_shared<TNSqlDBInfo>(name);
}

QString BuiltSQL(TNQuery &query)
{
    try {
        query.BuildQuery();
        return query.GetSQL().join(QLatin1Char('\n'));
    } catch (const Exception &e) {
        return e.Message();
    }
}

QString QueryText(TNQuery &query)
{
    QStringList lines;
    query.SaveToStrings(lines);
    return lines.join(QLatin1Char('\n'));
}

} // namespace

GalleryShot InteractivePage(bool empty)
{
    std::shared_ptr<TNDBStructure> model = SampleModel();
    std::shared_ptr<TNSqlDBInfo> database = SampleDatabase();
    if (database)
        model->SetDatabaseInfo(database.get());
    auto page = std::make_unique<QWidget>();
    page->setWindowTitle(QStringLiteral("vm20 gallery: live query"));
    auto *layout = new QVBoxLayout(page.get());
    auto *beside = new QSplitter(Qt::Horizontal);
    auto *stack = new QSplitter(Qt::Vertical);
    layout->addWidget(beside);

    auto *panel = new TNQueryPanel;
    panel->SetDBStruct(model.get());
    TNQuery *query = panel->Query();
    if (!empty)
        RichQuery(*query, *model);
    auto *columns = new TNResultFieldsPanel;
    columns->SetQuery(query);
    auto *sql = TextPane(nullptr);
    auto *text = TextPane(nullptr);
    stack->addWidget(Titled(QStringLiteral("&Conditions"), panel));
    stack->addWidget(Titled(QStringLiteral("&Result columns"), columns));
    stack->addWidget(Titled(QStringLiteral("&SQL"), sql));
    stack->setSizes({360, 110, 170});
    beside->addWidget(stack);
    beside->addWidget(Titled(QStringLiteral("&Query text"), text));
    beside->setSizes({640, 360});

    auto refresh = [query, sql, text] {
        sql->setPlainText(BuiltSQL(*query));
        text->setPlainText(QueryText(*query));
    };
    // Whoever listened before keeps hearing of changes; building the SQL
    // must not start another round.
    auto rebuilding = std::make_shared<bool>(false);
    query->OnChange = [previous = query->OnChange, refresh, rebuilding](TNQuery *sender) {
        if (previous)
            previous(sender);
        if (*rebuilding)
            return;
        *rebuilding = true;
        refresh();
        *rebuilding = false;
    };
    // Column edits in the result panel are changes of the query too.
    columns->OnChange = [previous = columns->OnChange, refresh](QObject *sender) {
        if (previous)
            previous(sender);
        refresh();
    };
    refresh();
    panel->Loaded();

    QWidget::setTabOrder(panel, columns);
    QWidget::setTabOrder(columns, sql);
    QWidget::setTabOrder(sql, text);
    panel->setFocus();

    // The model goes only after every widget on it: the page's children are
    // deleted before its destroyed() signal is raised.
    QObject::connect(page.get(), &QObject::destroyed, [model, database] {});

    GalleryShot shot;
    shot.widget = std::move(page);
    return shot;
}

std::vector<GalleryState> InteractiveStates()
{
    auto shown = [](bool empty) {
        GalleryShot shot = InteractivePage(empty);
        shot.widget->resize(1000, 640);
        shot.widget->setAttribute(Qt::WA_DontShowOnScreen);
        shot.widget->show();
        return shot;
    };
    return {
        {QStringLiteral("interactive"), [shown] { return shown(false); }},
        {QStringLiteral("interactive-empty"), [shown] { return shown(true); }},
        // Changed after the page was built: the panes follow the query.
        {QStringLiteral("interactive-edited"), [shown] {
             GalleryShot shot = shown(true);
             TNQuery *query = shot.widget->findChild<TNQueryPanel *>()->Query();
             TNCustomDBStructure *model = query->DBStruct();
             TSimpleCond *country = query->AddCondition(query->Filter(), model->FieldByName(1, QStringLiteral("Country")));
             country->SetOperator(model->OperatorByName(QStringLiteral("InList")));
             country->SetValue(1, QStringLiteral("France,Spain,Italy"));
             query->RFields().Add(QString(), {model->FieldByName(1, QStringLiteral("Customer"))}, QStringLiteral("@1"));
             query->QueryChanged();   // what a host does after changing a query in code
             return shot;
         }},
    };
}
