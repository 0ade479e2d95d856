#pragma once
// Recursive-descent reader of one SQL SELECT statement. It keeps what the
// query loader needs (select list, tables, WHERE tree, ORDER BY marks) as the
// text the user wrote, and skips the rest.
#include "sqlparse/parserresult.h"
#include "sqlparse/scanner.h"
#include "sqlparse/sqlparsererror.h"

#include <QStringList>

#include <memory>

namespace vm20 {

class TNSQLParser
{
public:
    TNSQLParser();
    virtual ~TNSQLParser();
    TNSQLParser(const TNSQLParser &) = delete;
    TNSQLParser &operator=(const TNSQLParser &) = delete;

    QStringList &SQL() { return FSQL; }
    void SetSQL(const QStringList &lines) { FSQL = lines; }
    TNScanner &Scanner() { return *FScanner; }
    const TNParserResult &ParserResult() const { return *FParserResult; }
    TNParserResult &ParserResult() { return *FParserResult; }

    // Reads SQL() into ParserResult(); ESQLParserError on a syntax error, with
    // the partial result left in place.
    void Parse();

protected:
    // One per clause, so that a derived parser can read a clause its own way.
    virtual void ProcessSelect();
    virtual void ProcessFrom();
    virtual void ProcessWhere();
    virtual void ProcessOrderBy();
    virtual void ProcessGroupBy();

    QString ProcessIdentifier(bool stripQuotes);
    void ProcessResultField();
    TSQLResultField *AddResultField(const QString &expr, const QString &alias);
    void ProcessSQLExpr(QString &expr);
    void ProcessAlias(QString &alias);
    void SkipTokens(QStringView token);
    void ProcessTable();
    void ProcessTableJoins(TSQLTable *table);
    TSQLNodePtr ProcessBoolExpr();
    TSQLNodePtr ProcessBoolTerm();
    TSQLNodePtr ProcessBoolFactor();
    TSQLConditionPtr ProcessCondition();
    // The operand's text in the scanner's source, valid until the next Parse.
    QStringView ProcessConditionValue(bool &containsSubQuery);
    [[noreturn]] void Error(const QString &msg) const;

private:
    bool Is(QStringView lowerText) const
    {
        const QStringView token = FScanner->TokView();
        return token.size() == lowerText.size() && token == lowerText;
    }
    bool Is(char16_t symbol) const
    {
        const QStringView token = FScanner->TokView();
        return token.size() == 1 && token.front() == symbol;
    }
    bool AtJoinWord() const;
    QString ProcessDottedName();
    void SetSortDirection(TSQLResultField *field);
    void EnterBracket();

    QStringList FSQL;
    // Destroyed in this order: result, scanner, statement text.
    std::unique_ptr<TNScanner> FScanner;
    std::unique_ptr<TNParserResult> FParserResult;
    int FNesting = 0;  // open boolean groups and operand brackets
};

} // namespace vm20
