#include "query/query.h"

#include "model/dbstructure.h"

namespace vm20 {

namespace {

QString KindText(TUnresolvedItem::TKind kind)
{
    switch (kind) {
    case TUnresolvedItem::ukField: return QStringLiteral("unknown field");
    case TUnresolvedItem::ukOperator: return QStringLiteral("unknown operator");
    case TUnresolvedItem::ukCondition: return QStringLiteral("unknown predefined condition");
    case TUnresolvedItem::ukTable: return QStringLiteral("unknown table");
    case TUnresolvedItem::ukQueryText: return QStringLiteral("incomplete query text");
    }
    return QString();
}

// A reference the model cannot resolve: none, or the placeholder a load put
// in its place.
bool Missing(const void *object, const void *placeholder)
{
    return !object || object == placeholder;
}

} // namespace

QString TUnresolvedItem::Text() const
{
    QString where;
    if (Row)
        where = QStringLiteral("row %1").arg(RowNum);
    else if (Column >= 0)
        where = QStringLiteral("result column %1").arg(Column + 1);
    else
        where = QStringLiteral("query");
    QString text = where + QStringLiteral(": ") + KindText(Kind);
    if (!Source.isEmpty())
        text += QStringLiteral(" (") + Source + QLatin1Char(')');
    return text;
}

void TNQuery::SetRowSource(const TFilterRow *row, const QString &source)
{
    FRowSources.insert(row, source);
}

void TNQuery::AddLoadProblem(TUnresolvedItem::TKind kind, const QString &source)
{
    FLoadProblems.emplace_back(kind, source);
}

std::vector<TUnresolvedItem> TNQuery::UnresolvedItems() const
{
    std::vector<TUnresolvedItem> items;
    const TNCustomDBStructure *model = FDBStruct;
    const auto add = [&](TUnresolvedItem::TKind kind, TFilterRow *row, int column, const QString &source) {
        TUnresolvedItem item;
        item.Kind = kind;
        item.Row = row;
        item.RowNum = row ? row->RowNum() : -1;
        item.Column = column;
        item.Enabled = !row || row->IsEffectivelyEnabled();
        item.Source = source;
        items.push_back(item);
    };

    // Pre-order, disabled rows included: a view marks every row it shows.
    std::vector<TFilterRow *> pending{FFilter.get()};
    while (!pending.empty()) {
        TFilterRow *row = pending.back();
        pending.pop_back();
        if (row->IsBracket()) {
            const auto &rows = static_cast<TFilterBracket *>(row)->Rows();
            for (auto it = rows.rbegin(); it != rows.rend(); ++it)
                pending.push_back(it->get());
            continue;
        }
        const QString source = FRowSources.value(row);
        if (const auto *simple = dynamic_cast<const TSimpleCond *>(row)) {
            if (Missing(simple->Field(), model ? model->UnrecognizedField() : nullptr))
                add(TUnresolvedItem::ukField, row, -1, source);
            if (Missing(simple->Operator(), model ? model->UnrecognizedOperator() : nullptr))
                add(TUnresolvedItem::ukOperator, row, -1, source);
        } else if (const auto *custom = dynamic_cast<const TCustomCond *>(row)) {
            if (Missing(custom->Condition(), model ? model->UnrecognizedCondition() : nullptr))
                add(TUnresolvedItem::ukCondition, row, -1, source);
        }
    }

    // A column names its fields by "@1", "@2", ... in its formula: each needs
    // its field, or the placeholder stays in the statement.
    const TRFieldList &columns = RFields();
    for (int i = 0; i < columns.Count(); ++i) {
        const TResultField &column = *columns.Items()[std::size_t(i)];
        const TDSFieldList &fields = column.DSFields();
        bool missing = false;
        for (int f = 0; f < fields.Count() && !missing; ++f)
            missing = !fields.Items(f);
        missing = missing
                  || column.Formula().contains(QLatin1Char('@') + QString::number(fields.Count() + 1));
        if (missing)
            add(TUnresolvedItem::ukField, nullptr, i, column.Caption());
    }

    for (const auto &[kind, source] : FLoadProblems)
        add(kind, nullptr, -1, source);
    return items;
}

} // namespace vm20
