#pragma once
// A condition panel on a shown host over the shop model, with the tree
// City, [Discount Weight], Code at hand, for the keyboard and robustness tests.
#include "ui/querypanel.h"
#include "uitest.h"

#include "query/shopmodel.h"

#include <QMenu>

#include <functional>
#include <utility>
#include <vector>

namespace vm20 {

using Keys = std::vector<std::pair<Qt::Key, Qt::KeyboardModifiers>>;
constexpr Qt::KeyboardModifiers Plain = Qt::NoModifier;
constexpr Qt::KeyboardModifiers Ctrl = Qt::ControlModifier;

// The tree as words: a condition by its field ("?" without one), a bracket
// in square brackets, a predefined condition as "x", "-" before a disabled
// row.
inline QString Shape(const TFilterBracket *bracket)
{
    QStringList words;
    for (const auto &row : bracket->Rows()) {
        const QString off = row->Enabled() ? QString() : QStringLiteral("-");
        if (row->IsBracket()) {
            words << off + QLatin1Char('[') + Shape(static_cast<const TFilterBracket *>(row.get())) + QLatin1Char(']');
            continue;
        }
        const auto *cond = dynamic_cast<const TSimpleCond *>(row.get());
        // A field the model lost stands in under ID 0.
        const TDSField *field = cond && cond->Field() && cond->Field()->ID() != 0 ? cond->Field() : nullptr;
        words << off + (!cond ? QStringLiteral("x") : field ? field->DisplayName() : QStringLiteral("?"));
    }
    return words.join(QLatin1Char(' '));
}

// One row as Shape writes it, "root" for the root.
inline QString Name(const TFilterRow *row)
{
    if (!row)
        return QStringLiteral("none");
    if (!row->Parent())
        return QStringLiteral("root");
    if (row->IsBracket())
        return QStringLiteral("[") + Shape(static_cast<const TFilterBracket *>(row)) + QLatin1Char(']');
    const TDSField *field = static_cast<const TSimpleCond *>(row)->Field();
    return field ? field->DisplayName() : QStringLiteral("?");
}

class QueryPanelFixture : public HostTest
{
protected:
    void SetUp() override
    {
        HostTest::SetUp();
        panel = new TNQueryPanel(host.get());
        panel->resize(400, 300);
        TQPAppearance &look = panel->Appearance();
        look.SetLogOpStyle(losAfterCond);
        // A new row would open its field menu, a modal loop.
        look.SetOptions(look.Options() - TQPAppearance::TQPAppearanceOptions{TQPAppearance::aoFieldsMenuOnAdd});
        panel->SetDBStruct(shop.model.get());
        panel->Loaded();
        panel->show();
        panel->setFocus();
        q = panel->Query();
        q->OnChange = [this](TNQuery *) { ++changes; };
        panel->MenuHook = [this](QMenu *, QPoint) {
            if (duringMenu)
                duringMenu();
            return answer;
        };
    }

    void BuildTree()
    {
        q->ClearAll();
        city = q->AddCondition(q->Filter(), shop.custCity);
        bracket = q->Filter()->AddNewBracket();
        discount = q->AddCondition(bracket, shop.orderDiscount);
        weight = q->AddCondition(bracket, shop.productWeight);
        code = q->AddCondition(q->Filter(), shop.productCode);
        QCoreApplication::processEvents();
        changes = 0;
    }

    void Press(const Keys &keys)
    {
        for (const auto &[key, mods] : keys)
            QTest::keyClick(panel, key, mods);
        QCoreApplication::processEvents();
    }
    // A key where a user's would go: to the focused widget.
    void Key(Qt::Key key, Qt::KeyboardModifiers mods = Plain)
    {
        QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : panel, key, mods);
        QCoreApplication::processEvents();
    }

    shop::ShopModel shop = shop::MakeShopModel();
    TNQueryPanel *panel = nullptr;
    TNQuery *q = nullptr;
    int changes = 0;
    int answer = 0;
    std::function<void()> duringMenu;
    TSimpleCond *city = nullptr, *discount = nullptr, *weight = nullptr, *code = nullptr;
    TFilterBracket *bracket = nullptr;
};

} // namespace vm20
