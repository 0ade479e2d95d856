#pragma once
// The data model as an XML document: the second persistent form of a model
// beside its sectioned text, for exchange with other tools.
//
// Layout (element names as written; the reader ignores their letter case, and
// that of attribute names):
//
//   <?xml version="1.0"?>
//   <DataModel formatVersion="3">
//     <DBParams><DSN/><UserName/><Password/></DBParams>   element text
//     <Description/>  <CustomInfo/>                         lines of element text
//     <Operators>
//       <Operator id caption expr format kind>
//         <Types><Type>String</Type>...</Types>               one name per type
//     <Tables><Table name alias db hints/>
//     <Links>
//       <Link table1 table2 type QF>                          tables by alias
//         <Condition type="FC" expr1 expr2 op/>               F column, C constant
//     <Entities>
//       <Entity name="Root entity">                           the fields of no group
//         <Attr id kind expr caption type size UIC UIR userData tables>
//           <Operators><Operator>Equal</Operator>...</Operators>
//           <Editors><Default type="LIST|EDIT|SQLLIST|CUSTOM">
//             <SQL>text</SQL>                                 SQLLIST
//             <Values><Value id text/></Values>               LIST (id the value,
//                                                             text the item); CUSTOM
//                                                             (text the data line)
//         <Entity name="group">...</Entity>                   one per field group
//
// Booleans are "1"/"0" (the reader also takes true/false), numbers decimal,
// `tables` the comma text of the field's table aliases.
//
// Type names: several types share one name ("Word", "DateTime", "Memo"); the
// reader gives each name one type: "Word" ftSmallint, "DateTime" ftDateTime,
// "Memo" ftMemo (the types the metadata providers report for such columns).
// Types without a name of their own are written "Unknown" for a field and
// left out of an operator's Types.
//
// What the document cannot carry, so a model read back from it differs:
//  - a table's DisplayName (read back as its name), Quoted (read back on for
//    a name with a blank) and design box;
//  - a field's Quoted (read back on for a column name with a blank) and
//    IsAggregate (derived from the expression), a text editor's settings and
//    an SQL list's parameters;
//  - an operator's ExprType and CaseInsensative;
//  - the types that share or lack a name (see above);
//  - the "fld:" mark on a link column (read back as the plain column);
//  - predefined conditions, the default main table, RootFieldsFirst and the
//    metadata provider's cached description.
// The reader keeps the fields' ids and adds the fields in id order, so that
// queries saved against the model still find them and a model built in id
// order keeps its field order; group membership follows document order.
#include <QString>
#include <QStringList>

namespace vm20 {

class TNCustomDBStructure;

// Writes the whole model as a document, one line per list entry.
void SaveDMToXml(const TNCustomDBStructure &model, QStringList &lines);

// Clears the model's structure and operators and rebuilds it from the
// document. A document the reader cannot take raises ENDBStructError (a parse
// error with its line and column, a missing attribute, an unknown type, kind
// or editor, an unknown table or operator) and leaves the model cleared.
// The text elements of <Options><DBInfo> become name=value lines (values
// with %NAME% references expanded) handed to the metadata provider.
void LoadDMFromXml(TNCustomDBStructure &model, const QStringList &lines);

// Replaces every %NAME% whose NAME is set in the process environment by its
// value; a reference to an unset name stays as written.
QString ExpandEnvironmentReferences(const QString &text);

} // namespace vm20
