// Turning a typed or parsed column expression into a formula over model
// fields: every name that denotes a model field becomes "@n".
#include "query/resultfield.h"

#include "model/dbstructure.h"
#include "support/exception.h"

namespace vm20 {

namespace {

bool IsNameChar(QChar c)
{
    return c.isLetterOrNumber() || c == QLatin1Char('_') || c == QLatin1Char('$')
           || c == QLatin1Char('#');
}

bool IsNameStart(QChar c)
{
    return c.isLetter() || c == QLatin1Char('_') || c == QLatin1Char('"') || c == QLatin1Char('[');
}

// Reads a possibly qualified, possibly quoted name ("o"."Order Date",
// [Order Lines].Qty, Orders.Amount) starting at `i`; returns its end.
qsizetype ReadName(const QString &text, qsizetype i)
{
    const qsizetype n = text.size();
    while (i < n) {
        const QChar c = text[i];
        if (c == QLatin1Char('"') || c == QLatin1Char('[')) {
            const QChar close = c == QLatin1Char('"') ? QLatin1Char('"') : QLatin1Char(']');
            const qsizetype end = text.indexOf(close, i + 1);
            i = end < 0 ? n : end + 1;
        } else if (IsNameChar(c)) {
            while (i < n && IsNameChar(text[i]))
                ++i;
        } else {
            break;
        }
        if (i < n && text[i] == QLatin1Char('.') && i + 1 < n
            && (IsNameStart(text[i + 1]) || text[i + 1].isDigit()))
            ++i;
        else
            break;
    }
    return i;
}

class TExpressionResolver
{
public:
    TExpressionResolver(const TNCustomDBStructure *model, bool sqlFirst)
        : FModel(model), FSqlFirst(sqlFirst)
    {
    }

    TDSField *Lookup(const QString &name) const
    {
        if (!FModel || name.isEmpty())
            return nullptr;
        TDSField *field = FModel->FieldByName(FSqlFirst ? 3 : 2, name);
        if (!field)
            field = FModel->FieldByName(FSqlFirst ? 2 : 3, name);
        return field;
    }

    // Fills `formula` and `fields` from `expression`.
    void Resolve(const QString &expression, QString &formula, std::vector<TDSField *> &fields)
    {
        const QString expr = expression.trimmed();
        if (TDSField *whole = Lookup(expr)) {
            formula = QStringLiteral("@1");
            fields = {whole};
            return;
        }
        const qsizetype n = expr.size();
        qsizetype i = 0;
        while (i < n) {
            const QChar c = expr[i];
            if (c == QLatin1Char('\'')) {
                // A string literal is copied as it stands ('' inside it included).
                qsizetype end = i + 1;
                while (end < n) {
                    if (expr[end] == QLatin1Char('\'')) {
                        if (end + 1 < n && expr[end + 1] == QLatin1Char('\'')) {
                            end += 2;
                            continue;
                        }
                        break;
                    }
                    ++end;
                }
                end = qMin(end + 1, n);
                formula += expr.mid(i, end - i);
                i = end;
            } else if (c.isDigit()) {
                qsizetype end = i;
                while (end < n && (expr[end].isDigit() || expr[end] == QLatin1Char('.')))
                    ++end;
                formula += expr.mid(i, end - i);
                i = end;
            } else if (IsNameStart(c)) {
                const qsizetype end = ReadName(expr, i);
                const QString name = expr.mid(i, end - i);
                qsizetype next = end;
                while (next < n && expr[next].isSpace())
                    ++next;
                const bool isFunction = next < n && expr[next] == QLatin1Char('(');
                TDSField *field = isFunction ? nullptr : Lookup(name);
                if (!field && !isFunction && FModel && !name.contains(QLatin1Char('.')))
                    field = FModel->FieldByName(0, name);
                formula += field ? Placeholder(field, fields) : name;
                i = end;
            } else {
                formula += c;
                ++i;
            }
        }
    }

private:
    static QString Placeholder(TDSField *field, std::vector<TDSField *> &fields)
    {
        for (std::size_t k = 0; k < fields.size(); ++k)
            if (fields[k] == field)
                return QLatin1Char('@') + QString::number(k + 1);
        fields.push_back(field);
        return QLatin1Char('@') + QString::number(fields.size());
    }

    const TNCustomDBStructure *FModel;
    bool FSqlFirst;
};

} // namespace

TResultField *TRFieldList::InsertExpression(int index, const QString &caption,
                                            const QString &expression, TSortingType sorting,
                                            int sortOrder, bool sqlFirst)
{
    if (index < 0 || index > Count())
        throw EListError::IndexOutOfBounds(index);
    QString formula;
    std::vector<TDSField *> fields;
    TExpressionResolver(FDBStruct, sqlFirst).Resolve(expression, formula, fields);
    QString text = caption;
    if (text.isEmpty())
        text = fields.size() == 1 && formula == QLatin1String("@1") ? fields.front()->DisplayName()
                                                                    : expression.trimmed();
    auto field = MakeField(text, fields, formula);
    field->SetSorting(sorting);
    field->SetSortOrder(sortOrder);
    return InsertMade(index, std::move(field));
}

} // namespace vm20
