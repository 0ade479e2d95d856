#pragma once
// The names the model XML document uses for types, join kinds and value
// editors, shared by its writer and its reader.
#include "model/fieldtype.h"
#include "model/vmglobal.h"

#include <QString>

namespace vm20 {

// The entity that holds the fields of no group (the root group has no name).
inline const QString XmlRootEntityName = QStringLiteral("Root entity");

// "String", "Int", ...; "Unknown" for a type without a name of its own.
QString XmlTypeName(TFieldType type);
// Whether the type has a name of its own (ftUnknown has: "Unknown").
bool XmlTypeHasName(TFieldType type);
// The one type a name is read as, ignoring letter case; TFieldType(-1) for a
// name that is not in the table.
TFieldType XmlNameToType(const QString &name);

// "Inner", "Left", "Right", "Full"; the reader takes any other text as inner.
QString XmlLinkTypeName(TDSLinkType type);
TDSLinkType XmlNameToLinkType(const QString &name);

// "EDIT", "LIST", "SQLLIST", "CUSTOM"; empty for etAuto (no editor).
QString XmlEditorName(TDSEditType type);
// TDSEditType(-1) for a name that is not an editor kind.
TDSEditType XmlNameToEditor(const QString &name);

} // namespace vm20
