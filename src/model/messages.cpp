#include "model/messages.h"

#include <QList>

namespace vm20 {

namespace {

struct TMessageEntry
{
    int Id;
    const char *Identifier;
    const QString *Text;
};

const TMessageEntry Messages[] = {
    {65488, "SDBListCaption", &SDBListCaption},
    {65489, "SFieldsListCaption", &SFieldsListCaption},
    {65490, "SDBNotConnected", &SDBNotConnected},
    {65491, "SWrongSQL", &SWrongSQL},
    {65492, "SLostBracket", &SLostBracket},
    {65493, "SQPENoEnoughInfo", &SQPENoEnoughInfo},
    {65494, "SQPEWrongLink", &SQPEWrongLink},
    {65495, "SQPENoDBStruct", &SQPENoDBStruct},
    {65496, "SQPEInvalidFltrTitle", &SQPEInvalidFltrTitle},
    {65497, "SQPEInvalidStrFmt", &SQPEInvalidStrFmt},
    {65498, "SQPEUnrecognizedField", &SQPEUnrecognizedField},
    {65499, "SQPEUnrecognizedOperator", &SQPEUnrecognizedOperator},
    {65500, "SQPEQueryWasNotBuilt", &SQPEQueryWasNotBuilt},
    {65501, "SDBStructureNotSpecified", &SDBStructureNotSpecified},
    {65502, "SStructureIsEmpty", &SStructureIsEmpty},
    {65504, "SDBSEOperatorNotFound", &SDBSEOperatorNotFound},
    {65505, "SDBSEAssignVirtFldName", &SDBSEAssignVirtFldName},
    {65506, "SDBSEAssignExpr", &SDBSEAssignExpr},
    {65507, "SDBSECantFindSection", &SDBSECantFindSection},
    {65508, "SDBSECantFindFieldInTbl", &SDBSECantFindFieldInTbl},
    {65509, "SDBSEDbInfoNotSpecified", &SDBSEDbInfoNotSpecified},
    {65510, "SUnrecognizedField", &SUnrecognizedField},
    {65511, "SUnrecognizedOperator", &SUnrecognizedOperator},
    {65512, "SUnrecognizedCondition", &SUnrecognizedCondition},
    {65513, "SStructureNotSpecified", &SStructureNotSpecified},
    {65514, "SDBInfoComponentNotSpecified", &SDBInfoComponentNotSpecified},
    {65515, "SNotConnected", &SNotConnected},
    {65516, "STableNotFound", &STableNotFound},
    {65517, "SFullScreenMode", &SFullScreenMode},
    {65518, "SEditLink", &SEditLink},
    {65519, "STableViewListCaption", &STableViewListCaption},
    {65520, "SError", &SError},
    {65521, "SDeleteTable", &SDeleteTable},
    {65522, "SDeleteField", &SDeleteField},
    {65523, "SDeleteLink", &SDeleteLink},
    {65524, "SDeleteOperator", &SDeleteOperator},
    {65525, "SDeleteCondition", &SDeleteCondition},
    {65526, "SDeleteAllOperators", &SDeleteAllOperators},
    {65527, "SDeleteGroup", &SDeleteGroup},
    {65528, "SClearStructure", &SClearStructure},
    {65529, "SSEENoTable", &SSEENoTable},
    {65530, "SAndConj", &SAndConj},
    {65531, "SDBSEInvalidTableIndex", &SDBSEInvalidTableIndex},
    {65532, "SDBSEInvalidLinkIndex", &SDBSEInvalidLinkIndex},
    {65533, "SDBSEInvalidOperatorIndex", &SDBSEInvalidOperatorIndex},
    {65534, "SDBSENoTable", &SDBSENoTable},
    {65535, "SDBSENoPath", &SDBSENoPath},
};

const TMessageEntry *FindMessage(int id)
{
    for (const TMessageEntry &entry : Messages)
        if (entry.Id == id)
            return &entry;
    return nullptr;
}

} // namespace

QString LoadMessage(int id)
{
    const TMessageEntry *entry = FindMessage(id);
    return entry ? *entry->Text : QString();
}

QString MessageIdentifier(int id)
{
    const TMessageEntry *entry = FindMessage(id);
    return entry ? QString::fromLatin1(entry->Identifier) : QString();
}

QList<int> MessageIds()
{
    QList<int> ids;
    for (const TMessageEntry &entry : Messages)
        ids.append(entry.Id);
    return ids;
}

} // namespace vm20
