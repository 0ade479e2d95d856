#pragma once
// A query over the shop model with the helpers the query tests share.
#include "common/printers.h"
#include "query/query.h"
#include "shopmodel.h"

#include <gtest/gtest.h>

namespace shop {

class ShopQueryFixture : public ::testing::Test
{
protected:
    ShopQueryFixture() { query.SetDBStruct(s.model.get()); }

    TSimpleCond *AddCond(TFilterBracket *bracket, TDSField *field, const char *op,
                         const QString &value1 = QString(), const QString &value2 = QString())
    {
        TSimpleCond *cond = query.AddCondition(bracket, field);
        cond->SetOperator(s.Op(op));
        if (!value1.isNull())
            cond->SetValue(1, value1);
        if (!value2.isNull())
            cond->SetValue(2, value2);
        return cond;
    }
    TSimpleCond *AddCond(TDSField *field, const char *op, const QString &value1 = QString(),
                         const QString &value2 = QString())
    {
        return AddCond(query.Filter(), field, op, value1, value2);
    }
    TResultField *AddColumn(TDSField *field, const QString &caption = QString())
    {
        return query.RFields().Add(caption, {field}, QString());
    }
    // The whole statement, items separated by "\n" (FROM items hold "\r\n").
    QString Sql()
    {
        query.BuildQuery();
        return query.GetSQL().join(QLatin1Char('\n'));
    }

    ShopModel s = MakeShopModel();
    TNQuery query;
};

// The statement pieces joined as Sql() joins them.
inline const QString J = QStringLiteral("\r\n     ");

} // namespace shop
