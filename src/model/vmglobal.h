#pragma once
// Enumerations shared by the model, the query and the views, with the text
// conversions the formats use (enumeration names as written in code).
#include "support/typeset.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace vm20 {

// Fixed underlying types: loaders hold the value -1 for an unknown name.
enum TNFieldKind : int { nfkData, nfkVirtual };
enum TDSEditType : int { etAuto, etEdit, etList, etCustom, etSQL };
enum TValueKind : int { vkScalar, vkList, vkSubQuery };
enum TExOperator : int { xoInList, xoBetween, xoStartsWith, xoContains };
using TExOperators = TSet<TExOperator>;
enum TDSLinkType : int { ltInner, ltOuterLeft, ltOuterRight, ltOuterFull };

inline constexpr TExOperators AllExOperators{xoInList, xoBetween, xoStartsWith, xoContains};

// Unknown names give the value -1 cast to the enumeration.
QString FldKindToStr(TNFieldKind kind);
TNFieldKind StrToFldKind(const QString &name);
QString ValueKindToStr(TValueKind kind);
TValueKind StrToValueKind(const QString &name);

// The lines of a list as one UTF-8 buffer, lines ended by "\n"; the
// counterpart splits at "\n" and drops a "\r" before it.
QByteArray GetStringsAsAnsiChar(const QStringList &lines);
QStringList SplitAnsiText(const QByteArray &text);

} // namespace vm20
