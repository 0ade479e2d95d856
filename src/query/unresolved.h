#pragma once
// What a query asks for that its model cannot resolve: a condition whose
// field, operator or predefined condition the model lacks, a result column
// whose field is gone, a main table the model does not know, or a query text
// that ends before its parts. Building such a query would quietly leave the
// part out; hosts list these items instead and let the user decide.
#include <QString>

namespace vm20 {

class TFilterRow;

struct TUnresolvedItem
{
    enum TKind { ukField, ukOperator, ukCondition, ukTable, ukQueryText };

    TKind Kind = ukField;
    // The condition it concerns, with its display number; none (and -1) for
    // a result column or the query as a whole.
    TFilterRow *Row = nullptr;
    int RowNum = -1;
    // The result column's index (from 0); -1 when the item is no column.
    int Column = -1;
    // The row takes part in the statement (it and every bracket above it are
    // enabled); always true for columns and the query as a whole.
    bool Enabled = true;
    // What the item was read from, as far as known: the SQL condition, the
    // query text's key ("FieldID=99"), the result column's caption.
    QString Source;

    // One line for people: "row 2: unknown field (x.Foo = 1)".
    QString Text() const;
};

} // namespace vm20
