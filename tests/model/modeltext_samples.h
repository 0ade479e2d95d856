#pragma once
// A small model and its text, written out by hand: the reference the text
// format tests compare against and mutate.
#include "richmodel.h"

#include <QStringList>

namespace vm20::testing {

// The model's text as SaveToStrings writes it.
inline QStringList Saved(const TNCustomDBStructure &model)
{
    QStringList lines;
    model.SaveToStrings(lines);
    return lines;
}

// The names of the model's operators, in model order.
inline QStringList OperatorNames(const TNCustomDBStructure &model)
{
    QStringList names;
    model.GetOperatorNames(names);
    return names;
}

inline void BuildSmallModel(TNCustomDBStructure &model)
{
    model.ClearOperators();
    model.AddOperator("Equal", "is equal to", "@f = '@1'", "", {ftInteger, ftString});
    TDSOperator *inList = model.GetOperator(model.AddOperator("InList", "is in list", "@f in (@1)", "", {}));
    inList->SetValueKind(vkList);
    inList->SetCaseInsensative(true);
    inList->SetExprType(ftInteger);

    TDSTable *authors = AddTable(model, "Authors", "Authors");
    authors->SetTableAlias("A");
    TDSTable *books = AddTable(model, "Books", "All books");
    books->SetDesignPositions("1,2,3,4");
    model.AddLinkByExpr("Books-Authors:AuthorID=ID")->SetLinkType(ltOuterLeft);

    TDSField *name = AddDataField(model, authors, "Name", "Author", ftString, 40);
    name->SetGroup(model.FieldGroups().AddGroup("People"));
    TDSField *title = AddDataField(model, books, "Title", "Title", ftString, 100);
    title->SetEditType(etSQL);
    static_cast<TDSSQLEditor *>(title->ValueEditor())->SetSQLText("SELECT Title\n\nFROM Books");
    AddVirtualField(model, "COUNT(Books.ID)", "Books written", ftInteger);

    model.AddCondition("Written after @", "Books.Year > 2000");
    model.SetDefaultMainTable(books);
}

inline QStringList SmallModelText()
{
    return {
        "[Main]", "Version=3.6", "OperatCount=2", "TableCount=2", "FieldCount=3", "CondCount=1",
        "FieldGroups=1", "DefaultMainTable=Books", "RootFieldsFirst=0",
        " ", "[Operator:1]", "Name=Equal", "DisplayName=is equal to", "SQLName=@f = '@1'", "ValFormat=",
        "ExprType=SameAsField", "AppliedTypes=ftString,ftInteger,", "ValueKind=vkScalar", "CaseInsens=0",
        " ", "[Operator:2]", "Name=InList", "DisplayName=is in list", "SQLName=@f in (@1)", "ValFormat=",
        "ExprType=ftInteger", "AppliedTypes=", "ValueKind=vkList", "CaseInsens=1",
        " ", "[Table:1]", "DBName=", "Name=Authors", "DisplayName=Authors", "Alias=A", "Quoted=0", "Hints=",
        "DsgnPos=0,0,0,0", "Links=",
        " ", "[Table:2]", "DBName=", "Name=Books", "DisplayName=All books", "Alias=Books", "Quoted=0",
        "Hints=", "DsgnPos=1,2,3,4", "Links=A",
        " ", "[Link:Books-A]", "FldName1=AuthorID", "FldName2=ID", "Operators==", "QuoteFields=0",
        "LinkType=Left",
        " ", "[Field:1]", "ID=1", "Kind=nfkData", "FieldExpr=Name", "DisplayName=Author", "TableAlias=A",
        "EditType=0", "FieldType=1", "FieldSize=40", "Quoted=0", "UIR=1", "UIC=1", "Aggr=0", "Operators=Equal",
        " ", "[Field:2]", "ID=2", "Kind=nfkData", "FieldExpr=Title", "DisplayName=Title", "TableAlias=Books",
        "EditType=4", "FieldType=1", "FieldSize=100", "Quoted=0", "UIR=1", "UIC=1", "Aggr=0",
        "Operators=Equal",
        "", "[Field:2.SQL]", "SELECT Title", "", "FROM Books",
        " ", "[Field:3]", "ID=3", "Kind=nfkVirtual", "FieldExpr=COUNT(Books.ID)", "DisplayName=Books written",
        "EditType=0", "FieldType=3", "FieldSize=100", "Quoted=0", "UIR=1", "UIC=1", "Aggr=1",
        "Operators=Equal",
        " ", "[FieldGroup1]", "GroupName=People", "Fields=1",
        " ", "[RootGroup]", "Fields=2,3",
        " ", "[Cond:1]", "ID=1", "DF=Written after @", "SQLExpr=Books.Year > 2000", "Values=ftString:vkScalar",
    };
}

} // namespace vm20::testing
