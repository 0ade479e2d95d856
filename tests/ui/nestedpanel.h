#pragma once
// A condition panel over the shop model with a small nested tree at hand.
#include "ui/querypanel.h"
#include "uitest.h"

#include "query/shopmodel.h"

#include <memory>

namespace vm20 {

class NestedPanelTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        panel = std::make_unique<TNQueryPanel>();
        panel->resize(500, 400);
        panel->SetDBStruct(shop.model.get());
        panel->Loaded();
    }

    // Root: a condition, a bracket holding a condition and a bracket holding
    // a condition (rows 1., 2., 2.1., 2.2., 2.2.1.).
    void BuildNested()
    {
        TNQuery *q = panel->Query();
        first = q->AddCondition(q->Filter(), shop.custName);
        outer = q->AddBracket(q->Filter());
        q->AddCondition(outer, shop.custCity);
        inner = q->AddBracket(outer);
        deep = q->AddCondition(inner, shop.orderTotal);
    }

    shop::ShopModel shop = shop::MakeShopModel();
    std::unique_ptr<TNQueryPanel> panel;
    TSimpleCond *first = nullptr;
    TSimpleCond *deep = nullptr;
    TFilterBracket *outer = nullptr;
    TFilterBracket *inner = nullptr;
};

} // namespace vm20
