#include "sqlparse/sqlparser.h"

#include "support/exception.h"
#include "support/nstrings.h"

namespace vm20 {

TNSQLParser::TNSQLParser()
    : FScanner(std::make_unique<TNScanner>())
    , FParserResult(std::make_unique<TNParserResult>())
{
    FScanner->SetSourceStyle(sstSQL);
    FScanner->KeyWords() << QStringLiteral("select") << QStringLiteral("from") << QStringLiteral("join")
                         << QStringLiteral("where") << QStringLiteral("order") << QStringLiteral("group")
                         << QStringLiteral("by");
}

TNSQLParser::~TNSQLParser() = default;

void TNSQLParser::Error(const QString &msg) const
{
    throw ESQLParserError(msg + QStringLiteral("\r\nLine:") + QString::number(FScanner->GetTokLine()));
}

void TNSQLParser::Parse()
{
    FParserResult->Clear();
    FNesting = 0;
    FScanner->SetSource(FSQL);
    FScanner->FirstToken();
    // Text swallowed by an open quote would silently drop what follows it.
    const TNToken last = FScanner->GetToken(FScanner->TokenCount() - 1);
    if (last.TokType == tokString && !IsOneLiteral(last.RealText)) {
        for (int i = 1; i < FScanner->TokenCount(); ++i)   // the error names its line
            FScanner->NextToken();
        Error(SUnterminatedLiteral);
    }
    ProcessSelect();
    ProcessFrom();
    if (!FScanner->EOS() && Is(u"where"))
        ProcessWhere();
    if (!FScanner->EOS() && Is(u"group"))
        ProcessGroupBy();
    if (!FScanner->EOS() && Is(u"order"))
        ProcessOrderBy();
}

void TNSQLParser::ProcessSelect()
{
    if (!Is(u"select"))
        Error(SWrongSQLStatement);
    FScanner->NextToken();
    if (Is(u"distinct")) {
        FParserResult->SetDistinct(true);
        FScanner->NextToken();
    }
    if (Is(u'*')) {
        FParserResult->ResultFields().SetJustSorting(true);
        FParserResult->SetAllRFields(true);
        FScanner->NextToken();
        return;
    }
    ProcessResultField();
    while (Is(u',')) {
        FScanner->NextToken();
        ProcessResultField();
    }
}

void TNSQLParser::ProcessResultField()
{
    QString expr;
    QString alias;
    ProcessSQLExpr(expr);
    if (Is(u"as")) {
        FScanner->NextToken();
        ProcessAlias(alias);
    }
    AddResultField(expr, alias);
}

TSQLResultField *TNSQLParser::AddResultField(const QString &expr, const QString &alias)
{
    auto field = std::make_unique<TSQLResultField>();
    field->SetSQLExpr(expr);
    field->SetAlias(alias);
    return FParserResult->ResultFields().Add(std::move(field));
}

void TNSQLParser::ProcessSQLExpr(QString &expr)
{
    const TNScannerBookmark start = FScanner->GetBookmark();
    int depth = 0;
    for (;;) {
        if (FScanner->EOS()) {
            // Only an unclosed bracket lets an expression run into the end.
            if (depth > 0)
                Error(SWrongSQLStatement);
            break;
        }
        if (depth <= 0 && (FScanner->GetTokType() == tokKeyword || Is(u',') || Is(u"as")))
            break;
        if (Is(u'('))
            ++depth;
        else if (Is(u')'))
            --depth;
        FScanner->NextToken();
    }
    expr = FScanner->ExtractPiece(start, FScanner->GetBookmark(), false);
}

void TNSQLParser::ProcessAlias(QString &alias)
{
    alias = ProcessIdentifier(true);
}

QString TNSQLParser::ProcessIdentifier(bool stripQuotes)
{
    QString identifier;
    if (Is(u'"')) {
        FScanner->NextToken();
        const TNScannerBookmark start = FScanner->GetBookmark();
        while (!FScanner->EOS() && !Is(u'"'))
            FScanner->NextToken();
        if (FScanner->EOS())
            Error(SWrongSQLStatement);
        identifier = FScanner->ExtractPiece(start, FScanner->GetBookmark(), false);
        if (!stripQuotes)
            identifier = QLatin1Char('"') + identifier + QLatin1Char('"');
    } else {
        identifier = FScanner->GetRealStr();
    }
    FScanner->NextToken();
    return identifier;
}

void TNSQLParser::SkipTokens(QStringView token)
{
    while (!FScanner->EOS() && Is(token))
        FScanner->NextToken();
}

void TNSQLParser::ProcessFrom()
{
    if (!Is(u"from"))
        Error(SWrongSQLStatement);
    FScanner->NextToken();
    ProcessTable();
    while (Is(u',')) {
        FScanner->NextToken();
        ProcessTable();
    }
}

bool TNSQLParser::AtJoinWord() const
{
    return Is(u"join") || Is(u"inner") || Is(u"left") || Is(u"right") || Is(u"full");
}

// name { "." name }, quotes removed: dbo.Orders, "My Schema"."Order Lines".
QString TNSQLParser::ProcessDottedName()
{
    QString name = ProcessIdentifier(true);
    while (Is(u'.')) {
        FScanner->NextToken();
        name += QLatin1Char('.') + ProcessIdentifier(true);
    }
    return name;
}

void TNSQLParser::ProcessTable()
{
    auto owned = std::make_unique<TSQLTable>();
    SkipTokens(u"(");
    owned->SetTableName(ProcessDottedName());
    SkipTokens(u")");
    TSQLTable *table = FParserResult->Tables().Add(std::move(owned));
    for (int pass = 0; pass < 2 && !FScanner->EOS(); ++pass) {
        if (Is(u',') || Is(u"where") || Is(u"group") || Is(u"order"))
            return;
        if (AtJoinWord()) {
            ProcessTableJoins(table);
            return;
        }
        if (pass == 0)
            table->SetAliasName(ProcessIdentifier(true));
    }
}

// Joined tables are listed after the table they follow; neither the join
// kind nor the join condition is kept.
void TNSQLParser::ProcessTableJoins(TSQLTable *)
{
    while (AtJoinWord()) {
        if (Is(u"left") || Is(u"right") || Is(u"full")) {
            FScanner->NextToken();
            if (Is(u"outer"))
                FScanner->NextToken();
            if (!Is(u"join"))
                Error(SWrongSQLStatement);
        } else if (Is(u"inner")) {
            FScanner->NextToken();
            if (!Is(u"join"))
                Error(SWrongSQLStatement);
        }
        FScanner->NextToken();
        auto joined = std::make_unique<TSQLTable>();
        joined->SetTableName(ProcessDottedName());
        if (!Is(u"on"))
            joined->SetAliasName(ProcessIdentifier(true));
        if (!Is(u"on"))
            Error(SWrongSQLStatement);
        FScanner->NextToken();
        ProcessBoolExpr();
        FParserResult->Tables().Add(std::move(joined));
        SkipTokens(u")");
    }
}

void TNSQLParser::ProcessGroupBy()
{
    if (!Is(u"group"))
        Error(SWrongSQLStatement);
    FScanner->NextToken();
    if (!Is(u"by"))
        Error(SWrongSQLStatement);
    FScanner->NextToken();
    QString discarded;
    ProcessSQLExpr(discarded);
    while (Is(u',')) {
        FScanner->NextToken();
        ProcessSQLExpr(discarded);
    }
}

// A direction word follows a column unless the list goes on or ends; only
// "desc" changes anything.
void TNSQLParser::SetSortDirection(TSQLResultField *field)
{
    if (FScanner->EOS() || Is(u','))
        return;
    if (Is(u"desc"))
        field->SetSorting(2);
    FScanner->NextToken();
}

void TNSQLParser::ProcessOrderBy()
{
    if (!Is(u"order"))
        Error(SWrongSQLStatement);
    FScanner->NextToken();
    if (!Is(u"by"))
        Error(SWrongSQLStatement);
    FScanner->NextToken();

    TSQLResultFieldList &fields = FParserResult->ResultFields();
    const bool byPosition = FScanner->GetTokType() == tokNumber;
    for (int counter = 1;; ++counter) {
        TSQLResultField *field = nullptr;
        if (byPosition) {
            if (FScanner->GetTokType() != tokNumber)
                Error(SWrongSQLStatement);
            field = fields.Items(StrToInt(FScanner->GetTokStr()) - 1);
            FScanner->NextToken();
        } else {
            QString column = ProcessIdentifier(false);
            if (Is(u'.')) {
                FScanner->NextToken();
                if (FScanner->EOS())
                    Error(SWrongSQLStatement);
                column += QLatin1Char('.') + ProcessIdentifier(false);
            }
            if (fields.JustSorting()) {
                field = AddResultField(column, QString());
            } else {
                int index = fields.IndexByAlias(column);
                if (index < 0)
                    index = fields.IndexByExpr(column);
                if (index < 0)
                    Error(SWrongSQLStatement);
                field = fields.Items(index);
            }
        }
        field->SetSorting(1);
        field->SetSortOrder(counter);
        SetSortDirection(field);
        if (!Is(u','))
            break;
        FScanner->NextToken();
    }
}

} // namespace vm20
