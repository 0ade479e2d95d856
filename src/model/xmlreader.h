#pragma once
// The parts of the model XML reader shared between its files.
#include <QDomElement>
#include <QString>

namespace vm20 {

class TDSTable;
class TNCustomDBStructure;

// A table named in the document: by alias first, then by table name.
TDSTable *XmlFindTable(const TNCustomDBStructure &model, const QString &name);

// Builds the field groups and the fields from the <Entities> tree; the
// operators and tables are read already.
void XmlReadEntities(TNCustomDBStructure &model, const QDomElement &entities);

} // namespace vm20
