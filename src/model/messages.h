#pragma once
// The message table: every text the library shows or raises, under the
// identifier code refers to it by and the numeric id translators key on.
#include <QList>
#include <QString>

namespace vm20 {

inline const QString SDBListCaption = QStringLiteral("Databases"); // 65488
inline const QString SFieldsListCaption = QStringLiteral("Fields"); // 65489
inline const QString SDBNotConnected = QStringLiteral("Database not connected"); // 65490
inline const QString SWrongSQL = QStringLiteral("Wrong SQL statement"); // 65491
inline const QString SLostBracket = QStringLiteral("Lost bracket"); // 65492
inline const QString SQPENoEnoughInfo = QStringLiteral("Not enough information for building query"); // 65493
inline const QString SQPEWrongLink = QStringLiteral("Can't add result table: wrong link"); // 65494
inline const QString SQPENoDBStruct = QStringLiteral("DBStruct is not specified"); // 65495
inline const QString SQPEInvalidFltrTitle = QStringLiteral("Invalid filter title"); // 65496
inline const QString SQPEInvalidStrFmt = QStringLiteral("Invalid string format"); // 65497
inline const QString SQPEUnrecognizedField = QStringLiteral("Unrecognized field \"%s\""); // 65498
inline const QString SQPEUnrecognizedOperator = QStringLiteral("Unrecognized operator \"%s\""); // 65499
inline const QString SQPEQueryWasNotBuilt = QStringLiteral("Query was not built properly"); // 65500
inline const QString SDBStructureNotSpecified = QStringLiteral("DBStructure is not specified"); // 65501
inline const QString SStructureIsEmpty = QStringLiteral("Structure is empty"); // 65502
inline const QString SDBSEOperatorNotFound = QStringLiteral("Operator not found: %s"); // 65504
inline const QString SDBSEAssignVirtFldName = QStringLiteral("Can not assign field name to virtual field"); // 65505
inline const QString SDBSEAssignExpr = QStringLiteral("Can not assign expression to data field"); // 65506
inline const QString SDBSECantFindSection = QStringLiteral("Can not find section %s"); // 65507
inline const QString SDBSECantFindFieldInTbl = QStringLiteral("Can not find field \"%s\" in table \"%s\""); // 65508
inline const QString SDBSEDbInfoNotSpecified = QStringLiteral("DatabaseInfo is not specified"); // 65509
inline const QString SUnrecognizedField = QStringLiteral("Unrecognized field"); // 65510
inline const QString SUnrecognizedOperator = QStringLiteral("Unrecognized operator"); // 65511
inline const QString SUnrecognizedCondition = QStringLiteral("Unrecognized condition"); // 65512
inline const QString SStructureNotSpecified = QStringLiteral("Structure is not specified"); // 65513
inline const QString SDBInfoComponentNotSpecified = QStringLiteral("Database info component is not specified"); // 65514
inline const QString SNotConnected = QStringLiteral("<Not connected>"); // 65515
inline const QString STableNotFound = QStringLiteral("<Table not found>"); // 65516
inline const QString SFullScreenMode = QStringLiteral("Full screen mode"); // 65517
inline const QString SEditLink = QStringLiteral("Edit link"); // 65518
inline const QString STableViewListCaption = QStringLiteral("Tables/Views list"); // 65519
inline const QString SError = QStringLiteral("Error"); // 65520
inline const QString SDeleteTable = QStringLiteral("Delete table?"); // 65521
inline const QString SDeleteField = QStringLiteral("Delete field?"); // 65522
inline const QString SDeleteLink = QStringLiteral("Delete Link?"); // 65523
inline const QString SDeleteOperator = QStringLiteral("Delete operator?"); // 65524
inline const QString SDeleteCondition = QStringLiteral("Delete condition?"); // 65525
inline const QString SDeleteAllOperators = QStringLiteral("Delete all operators?"); // 65526
inline const QString SDeleteGroup = QStringLiteral("Delete group?"); // 65527
inline const QString SClearStructure = QStringLiteral("Clear Structure?"); // 65528
inline const QString SSEENoTable = QStringLiteral("Can't locate table"); // 65529
inline const QString SAndConj = QStringLiteral("and"); // 65530
inline const QString SDBSEInvalidTableIndex = QStringLiteral("Invalid table index %d"); // 65531
inline const QString SDBSEInvalidLinkIndex = QStringLiteral("Invalid link index %d"); // 65532
inline const QString SDBSEInvalidOperatorIndex = QStringLiteral("Invalid operator index %d"); // 65533
inline const QString SDBSENoTable = QStringLiteral("No such table %s"); // 65534
inline const QString SDBSENoPath = QStringLiteral("Can not find path between tables"); // 65535

constexpr int FirstMessageId = 65488;
constexpr int LastMessageId = 65535;

// The text of a message by id; empty for an id that is not in the table.
QString LoadMessage(int id);
// The identifier of a message by id ("SDBSENoTable"); empty when unknown.
QString MessageIdentifier(int id);
// Every id of the table in ascending order.
QList<int> MessageIds();

} // namespace vm20
