// Opening a value that is already set and accepting it unchanged must leave
// the query as it was: the label opens on the condition's value.
#include "ui/querypanel.h"

#include "model/dbstructure.h"
#include "ui/dropdownlabel.h"
#include "uitest.h"

namespace vm20 {
namespace {

TEST_F(HostTest, AcceptingAnUnchangedValueKeepsIt)
{
    TNDBStructure model;
    model.LoadFromFile(QStringLiteral(VM20_SOURCE_DIR "/examples/shop.model"));
    auto *panel = new TNQueryPanel(host.get());
    panel->resize(380, 280);
    panel->SetDBStruct(&model);
    TNQuery *q = panel->Query();
    const struct
    {
        int line;
        int fieldID;
        const char *op;
        const char *value;
        const char *why;
    } rows[] = {
        {__LINE__, 38, "InList", "shipped,cancelled", "a check list opens with the items checked"},
        {__LINE__, 14, "GreaterThan", "20", "an edit opens on the number"},
        {__LINE__, 35, "GreaterThan", "45292", "a date label opens on the day"},
    };
    std::vector<TSimpleCond *> conds;
    for (const auto &row : rows) {
        TSimpleCond *cond = q->AddCondition(q->Filter(), model.FieldByID(row.fieldID));
        cond->SetOperator(model.OperatorByName(QString::fromLatin1(row.op)));
        cond->SetValue(1, QString::fromLatin1(row.value));
        conds.push_back(cond);
    }
    panel->Loaded();
    panel->show();
    QCoreApplication::processEvents();
    QStringList before;
    q->SaveToStrings(before);
    for (std::size_t i = 0; i < conds.size(); ++i) {
        SCOPED_TRACE(testing::Message() << "line " << rows[i].line << ": " << rows[i].why);
        TDropDownLabel *label = panel->RowView(conds[i])->Slot(2);
        ASSERT_NE(label, nullptr);
        EXPECT_EQ(label->Value(), QString::fromLatin1(rows[i].value));
        label->SetEditMode(true);
        QCoreApplication::processEvents();
        label->DropUp(true);
        QCoreApplication::processEvents();
        EXPECT_EQ(conds[i]->GetValue(1), QString::fromLatin1(rows[i].value));
    }
    QStringList after;
    q->SaveToStrings(after);
    EXPECT_EQ(after, before);
}

} // namespace
} // namespace vm20
