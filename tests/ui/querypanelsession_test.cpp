// A user builds a whole query on the condition panel with the keyboard alone.
#include "ui/querypanel.h"

#include "model/dbinfo.h"
#include "model/dbstructure.h"
#include "ui/dropdowncustomedit.h"
#include "ui/dropdowncustomlistbox.h"
#include "uitest.h"

#include <QListWidget>
#include <QTimer>
#include <QUndoStack>

#include <functional>

namespace vm20 {
namespace {

class KeyboardSession : public HostTest
{
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        host->resize(900, 400);
        model.LoadFromFile(QStringLiteral(VM20_SOURCE_DIR "/examples/shop.model"));
        // The countries come from the database; here from the host's handler.
        info.OnGetSQLValues = [](TNDBInfo *, const QString &, QStringList &values, QStringList &captions) {
            values = captions = {QStringLiteral("Denmark"), QStringLiteral("France"), QStringLiteral("Germany"),
                                 QStringLiteral("Spain"), QStringLiteral("Switzerland")};
        };
        model.SetDatabaseInfo(&info);
        panel = new TNQueryPanel(host.get());
        panel->resize(880, 380);
        TQPAppearance &look = panel->Appearance();
        look.SetOptions(look.Options() - TQPAppearance::TQPAppearanceOptions{TQPAppearance::aoFieldsMenuOnAdd});
        panel->SetDBStruct(&model);
        panel->Loaded();
        panel->show();
        panel->setFocus();
        q = panel->Query();
        q->OnChange = [this](TNQuery *) { ++changes; };
    }

    void Key(Qt::Key key, Qt::KeyboardModifiers mods = Qt::NoModifier)
    {
        QTest::keyClick(panel, key, mods);
        QCoreApplication::processEvents();
    }

    // Enter on the current label, then `typed` and `keys` in whatever it
    // opened: a menu (inside its modal loop) or an editor with the focus.
    // In `typed`, ">" is the Right arrow (into a sub-menu), "^" is Delete.
    void Pick(const QString &typed, std::vector<Qt::Key> keys)
    {
        QTimer::singleShot(0, panel, [this, typed, keys] {
            // A menu runs its own loop; a list or editor has the focus (a
            // list that shows beside the panel may not get it offscreen).
            auto target = [this]() -> QWidget * {
                if (QWidget *popup = QApplication::activePopupWidget())
                    return popup;
                QWidget *control = panel->RowView(panel->CurrentRow())->CurrentControl();
                if (auto *list = qobject_cast<TDropDownCustomListBox *>(control))
                    return list->ListBox();
                if (auto *edit = qobject_cast<TDropDownCustomEdit *>(control))
                    return edit->EditControl();
                return QApplication::focusWidget();
            };
            for (QChar c : typed) {
                if (c == QLatin1Char('>'))
                    QTest::keyClick(target(), Qt::Key_Right);
                else if (c == QLatin1Char('^'))
                    QTest::keyClick(target(), Qt::Key_Delete);
                else
                    QTest::keyClicks(target(), QString(c));
            }
            for (Qt::Key key : keys)
                QTest::keyClick(target(), key);
        });
        Key(Qt::Key_Return);
        QCoreApplication::processEvents();
    }

    // Customers in three countries ordered after 2024-01-01, any of two
    // statuses: every step a key, typed text or a pick in a list.
    void BuildSampleQuery()
    {
        Key(Qt::Key_Insert);
        Pick(QStringLiteral("Cu>Country"), {Qt::Key_Return});
        Key(Qt::Key_Right);
        Pick(QStringLiteral("is in"), {Qt::Key_Return});
        Key(Qt::Key_Right);
        Pick(QString(), {Qt::Key_Down, Qt::Key_Down, Qt::Key_Space, Qt::Key_Down, Qt::Key_Space, Qt::Key_Down,
                         Qt::Key_Space, Qt::Key_Return});
        // The list's own window closed: a window manager would activate the
        // host again.
        QApplication::setActiveWindow(host.get());
        ASSERT_TRUE(panel->hasFocus()) << "the keyboard is back on the panel";
        Key(Qt::Key_Insert);
        Pick(QStringLiteral("Or>Order date"), {Qt::Key_Return});
        Key(Qt::Key_Right);
        Pick(QStringLiteral("is greater than"), {Qt::Key_Return});
        Key(Qt::Key_Right);
        Pick(QStringLiteral("^^1/1/24"), {Qt::Key_Return});
        Key(Qt::Key_Insert);
        Key(Qt::Key_Right, Qt::ControlModifier);
        Pick(QStringLiteral("Or>Status"), {Qt::Key_Return});
        Key(Qt::Key_Right);
        Key(Qt::Key_Right);
        Pick(QStringLiteral("Paid"), {Qt::Key_Return});
        Key(Qt::Key_Insert);
        Pick(QStringLiteral("Or>Status"), {Qt::Key_Return});
        Key(Qt::Key_Right);
        Key(Qt::Key_Right);
        Pick(QStringLiteral("Shipped"), {Qt::Key_Return});
        Key(Qt::Key_Up);
        Key(Qt::Key_Up);
        Pick(QStringLiteral("any"), {Qt::Key_Return});
        Key(Qt::Key_Up);
        Key(Qt::Key_Up);
        Key(Qt::Key_Up);
        Pick(QStringLiteral("all"), {Qt::Key_Return});
    }

    QString Sql()
    {
        q->BuildQuery();
        // The FROM clause is one line of the list with its own line breaks.
        return q->GetSQL().join(QLatin1Char('\n')).replace(QLatin1String("\r\n"), QLatin1String("\n"));
    }

    TNDBStructure model;
    TNDBInfo info;
    TNQueryPanel *panel = nullptr;
    TNQuery *q = nullptr;
    int changes = 0;
};

const char *const SampleSql = "SELECT *\n"
                              "FROM \n"
                              "     orders INNER JOIN  customers ON (orders.customer_id=customers.customer_id)\n"
                              "     \n"
                              "WHERE\n"
                              "(\n"
                              "customers.country in ('France','Germany','Spain') AND\n"
                              "orders.order_date >'2024-01-01 00:00:00' AND\n"
                              "(\n"
                              "orders.status = 'paid' OR\n"
                              "orders.status = 'shipped'\n"
                              ")\n"
                              ")";

TEST_F(KeyboardSession, BuildsTheSampleQueryWithTheKeyboardAlone)
{
    BuildSampleQuery();
    EXPECT_EQ(Sql(), QLatin1String(SampleSql));
    EXPECT_EQ(changes, 16) << "one change per action that changed the query (the new bracket is \"any\" already)";
}

TEST_F(KeyboardSession, UndoesBackToTheEmptyQueryAndRedoesToTheSameStatement)
{
    BuildSampleQuery();
    const QString built = Sql();
    QUndoStack *stack = panel->UndoStack();
    ASSERT_NE(stack, nullptr);
    int steps = 0;
    while (stack->canUndo() && steps++ < 100)
        Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(q->Filter()->GetRowCount(), 0);
    while (stack->canRedo() && steps-- > 0)
        Key(steps % 2 ? Qt::Key_Y : Qt::Key_Z, steps % 2 ? Qt::ControlModifier : Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Sql(), built);
}

} // namespace
} // namespace vm20
