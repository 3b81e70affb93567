// The InterBase/Firebird dialect: the scanner's word lists and name rules, the options texts, and
// the parser's reading and placing of FIRST/SKIP and ROWS according to the server kind.
#include "ZvIBDialect.h"


#include "ZvOperators.h"
#include "ZvUtils.h"

namespace zv {

// ---------------------------------------------------------------------------------------------
// TZvIBScanner

namespace {

// The server's reserved and non-reserved words. "OPTIONOR" is one entry and stays so; FIRST,
// SKIP, ROWS, PERCENT and TIES being keywords is what lets the parser find its clauses.
constexpr std::string_view kIBKeywords =
    "ACTION,ACTIVE,ADD,ADMIN,AFTER,ALL,ALTER,AND,OR,ANY,AS,ASC,ASCENDING,AT,AUTO,AUTODDL,BASED,BASENAME,"
    "BASE_NAME,BEFORE,BEGIN,BETWEEN,BLOB,BLOBEDIT,BREAK,BUFFER,BY,CACHE,CASCADE,CHAR,CHARACTER,"
    "CHARACTER_LENGTH,CHAR_LENGTH,CHECK,CHECK_POINT_LEN,CHECK_POINT_LENGTH,COLLATE,COLLATION,COLUMN,"
    "COMMIT,COMMITTED,COMPILETIME,COMPUTED,CLOSE,CONDITIONAL,CONNECT,CONSTRAINT,CONTAINING,CONTINUE,"
    "CREATE,CSTRING,CURRENT,CURRENT_DATE,CURRENT_ROLE,CURRENT_TIME,CURRENT_TIMESTAMP,CURRENT_USER,"
    "CURSOR,DATABASE,DATE,DAY,DB_KEY,DEBUG,DEC,DECIMAL,DECLARE,DEFAULT,DELETE,DESC,DESCENDING,DESCRIBE,"
    "DESCRIPTOR,DISCONNECT,DISPLAY,DISTINCT,DO,DOMAIN,DOUBLE,DROP,ECHO,EDIT,ELSE,END,ENTRY_POINT,"
    "ESCAPE,EVENT,EXCEPTION,EXECUTE,EXISTS,EXIT,EXTERN,EXTERNAL,EXTRACT,FETCH,FILE,FILTER,FIRST,FLOAT,"
    "FOR,FOREIGN,FOUND,FREE_IT,FROM,FULL,FUNCTION,GDSCODE,GENERATOR,GLOBAL,GOTO,GRANT,GROUP,"
    "GROUP_COMMIT_WAIT,GROUP_COMMIT_WAIT_TIME,HAVING,HELP,HOUR,IF,IMMEDIATE,IN,INACTIVE,INDEX,"
    "INDICATOR,INIT,INNER,INPUT,INPUT_TYPE,INSERT,INT,INTEGER,INTO,IS,ISOLATION,ISQL,JOIN,KEY,"
    "LC_MESSAGES,LC_TYPE,LEFT,LENGTH,LEV,LEVEL,LIKE,LOGFILE,LOG_BUFFER_SIZE,LOG_BUF_SIZE,LONG,MANUAL,"
    "MAXIMUM,MAXIMUM_SEGMENT,MAX_SEGMENT,MERGE,MESSAGE,MINIMUM,MINUTE,MODULE_NAME,MONTH,NAMES,NATIONAL,"
    "NATURAL,NCHAR,NO,NOAUTO,NOT,NULL,NUMERIC,NUM_LOG_BUFS,NUM_LOG_BUFFERS,OCTET_LENGTH,OF,ON,ONLY,"
    "OPEN,OPTIONOR,ORDER,OUTER,OUTPUT,OUTPUT_TYPE,OVERFLOW,PAGE,PAGELENGTH,PAGES,PAGE_SIZE,PARAMETER,"
    "PASSWORD,PLAN,POSITION,POST_EVENT,PRECISION,PREPARE,PROCEDURE,PROTECTED,PRIMARY,PRIVILEGES,"
    "PUBLIC,QUIT,RAW_PARTITIONS,RDB$DB_KEY,READ,REAL,RECORD_VERSION,RECREATE,REFERENCES,RELEASE,"
    "RESERV,RESERVING,RESTRICT,RETAIN,RETURN,RETURNING_VALUES,RETURNS,REVOKE,RIGHT,ROLE,ROLLBACK,"
    "RUNTIME,SCHEMA,SECOND,SEGMENT,SELECT,SET,SHADOW,SHARED,SHELL,SHOW,SINGULAR,SIZE,SKIP,SMALLINT,"
    "SNAPSHOT,SOME,SORT,SQLCODE,SQLERROR,SQLWARNING,STABILITY,STARTING,STARTS,STATEMENT,STATIC,"
    "STATISTICS,SUBSTRING,SUB_TYPE,SUSPEND,TABLE,TERMINATOR,THEN,TIME,TIMESTAMP,TO,TRANSACTION,"
    "TRANSLATE,TRANSLATION,TRIGGER,TRIM,TYPE,UNCOMMITTED,UNION,UNIQUE,UPDATE,USER,USING,VALUE,VALUES,"
    "VARCHAR,VARIABLE,VARYING,VERSION,VIEW,WAIT,WEEKDAY,WHEN,WHENEVER,WHERE,WHILE,WITH,WORK,WRITE,"
    "YEAR,YEARDAY,ROWS,PERCENT,TIES";
constexpr std::string_view kIBFunctions = "AVG,CAST,COUNT,GEN_ID,MAX,MIN,SUM,UPPER";
constexpr std::string_view kIBOperations = "+,-,*,/,||";

} // namespace

void TZvIBScanner::SetSQLDialect(TZvSQLDialect Value) {
    if (Value == SQLDialect)
        return;
    SQLDialect = Value;
    InvalidateCharClasses();
}

bool TZvIBScanner::IsAlpha(char C) {
    return C >= 'A' && C <= 'Z';
}

// Dialect 1 reads both quotes as string quotes; dialect 3 only the apostrophe.
bool TZvIBScanner::IsQuote(char C) {
    return C == '\'' || (C == '"' && SQLDialect == qibDialect1);
}

bool TZvIBScanner::IsIdentQuote(char C) {
    return C == '"' && SQLDialect == qibDialect3;
}

bool TZvIBScanner::IsLegalSymbol(char C) {
    return TZvSQLScanner::IsLegalSymbol(C) || C == '$';
}

// Without this a dialect-1 literal in double quotes would be wrapped in apostrophes and become a
// different text.
std::string TZvIBScanner::QuoteStr(std::string_view S) {
    if (S.size() >= 2 && S.front() == S.back() && IsQuote(S.front()))
        return std::string(S);
    return TZvSQLScanner::QuoteStr(S);
}

char TZvIBScanner::GetIdentQuote() {
    return '"';
}

bool TZvIBScanner::GetQuoteIdentifiers() {
    return SQLDialect == qibDialect3 && TZvSQLScanner::GetQuoteIdentifiers();
}

bool TZvIBScanner::GetProcessAliases() {
    return true;
}

std::string TZvIBScanner::GetCommaKeywords() {
    return std::string(kIBKeywords);
}

std::string TZvIBScanner::GetCommaFunctions() {
    return std::string(kIBFunctions);
}

std::string TZvIBScanner::GetCommaOperations() {
    return std::string(kIBOperations);
}

// Deliberately no unquoting: the upper-cased text, quotes included, is what the classification
// of a word asks about.
std::string TZvIBScanner::ProcessIdent(std::string_view S) {
    return UpperCase(S);
}

void TZvIBScanner::DefineBooleans() {
    SetBooleans(false, "");
    SetBooleans(true, "");
}

std::string TZvIBScanner::GetFormatTokenIdent(std::string_view S, bool Quoted) {
    if (!Quoted)
        return UpperCase(S);
    return TZvSQLScanner::GetFormatTokenIdent(S, Quoted);
}

bool TZvIBScanner::NeedQuotes(std::string_view S) {
    if (S.size() > 1 && IsIdentQuote(S.front()) && IsIdentQuote(S.back()))
        return false;
    if (IsKeyword(S) || IsFunction(S))
        return true;
    return TZvSQLScanner::NeedQuotes(S) && !IsIdentifier(S);
}

std::string TZvIBScanner::ProcessName(std::string_view S) {
    if (SQLDialect == qibDialect3)
        return TZvSQLScanner::ProcessName(S);
    std::string Name = UpperCase(S);
    for (char& C : Name) {
        if (C == ' ')
            C = '_';
    }
    return Name;
}

std::string TZvIBScanner::QuoteName(std::string_view S) {
    if (SQLDialect == qibDialect3)
        return TZvSQLScanner::QuoteName(S);
    return ProcessName(S);
}

// ---------------------------------------------------------------------------------------------
// Options

std::string TZvIBOptions::GetScript() const {
    if (RowsFrom < 1 && RowsTo < 1 && RowsBy < 1)
        return {};
    // RowsFrom is written even when it is 0 and only TO or BY is set: the clause needs a number.
    std::string Text = "ROWS " + std::to_string(RowsFrom);
    if (RowsTo > 0)
        Text += " TO " + std::to_string(RowsTo);
    if (RowsBy > 0)
        Text += " BY " + std::to_string(RowsBy);
    if (Percent)
        Text += " PERCENT";
    if (WithTies)
        Text += " WITH TIES";
    return Text;
}

std::string TZvFBOptions::GetScript() const {
    std::string Text;
    if (First > 0)
        Text = "FIRST " + std::to_string(First);
    if (Skip > 0)
        Text += (Text.empty() ? "" : " ") + std::string("SKIP ") + std::to_string(Skip);
    if (!Text.empty())
        Text += ' ';
    return Text;
}

// ---------------------------------------------------------------------------------------------
// TZvIBSelectParser

void TZvIBSelectParser::Assign(TZvSelectParser& Source) {
    TZvSelectParser::Assign(Source);
    auto* Other = dynamic_cast<TZvIBSelectParser*>(&Source);
    if (Other == nullptr || Other == this)
        return;
    SQLServer = Other->SQLServer;
    IBOptions.Assign(Other->IBOptions);
    FBOptions.Assign(Other->FBOptions);
    SetSQLDialect(Other->GetSQLDialect());
}

void TZvIBSelectParser::Clear() {
    TZvSelectParser::Clear();
    IBOptions.Clear();
    FBOptions.Clear();
}

// The scanner is this dialect's unless a caller replaced CreateScanner further down.
TZvIBScanner* TZvIBSelectParser::GetIBScanner() {
    return dynamic_cast<TZvIBScanner*>(&GetScanner());
}

TZvSQLDialect TZvIBSelectParser::GetSQLDialect() {
    TZvIBScanner* IB = GetIBScanner();
    return IB ? IB->GetSQLDialect() : qibDialect1;
}

void TZvIBSelectParser::SetSQLDialect(TZvSQLDialect Value) {
    if (TZvIBScanner* IB = GetIBScanner())
        IB->SetSQLDialect(Value);
}

bool TZvIBSelectParser::GetCaseSensitiveIdentifiers() {
    TZvIBScanner* IB = GetIBScanner();
    return !(IB && IB->GetSQLDialect() == qibDialect1);
}

bool TZvIBSelectParser::IsProcEmptyInputParamsBracket() {
    return false;
}

std::unique_ptr<TZvSQLScanner> TZvIBSelectParser::CreateScanner() {
    return std::make_unique<TZvIBScanner>();
}

void TZvIBSelectParser::DefineOperators() {
    TZvSelectParser::DefineOperators();
    GetOperators().AddOperator("CONTAINING", "CONTAINING");
    GetOperators().AddOperator("STARTING WITH", "STARTING WITH");
}

void TZvIBSelectParser::DoParseSelectClause() {
    if (ReadsFirstSkip()) {
        std::int32_t Number = 0;
        if (TokenIs("FIRST")) {
            if (!ReadClauseNumber(Number))
                return;
            FBOptions.SetFirst(Number);
        }
        if (TokenIs("SKIP")) {
            if (!ReadClauseNumber(Number))
                return;
            FBOptions.SetSkip(Number);
        }
    }
    TZvSelectParser::DoParseSelectClause();
}

void TZvIBSelectParser::DoParseAppendix() {
    if (!ReadsRows() || !TokenIs("ROWS")) {
        TZvSelectParser::DoParseAppendix();
        return;
    }
    std::int32_t Number = 0;
    if (!ReadClauseNumber(Number))
        return;
    IBOptions.SetRowsFrom(Number);
    if (TokenIs("TO")) {
        if (!ReadClauseNumber(Number))
            return;
        IBOptions.SetRowsTo(Number);
    }
    if (TokenIs("BY")) {
        if (!ReadClauseNumber(Number))
            return;
        IBOptions.SetRowsBy(Number);
    }
    if (TokenIs("PERCENT")) {
        IBOptions.SetPercent(true);
        NextToken();
    }
    if (TokenIs("WITH")) {
        NextToken();
        if (!TokenIs("TIES")) {
            Fail();
            return;
        }
        IBOptions.SetWithTies(true);
        NextToken();
    }
    // ROWS is the statement's last clause.
    if (AtEnd())
        State = ssEnd;
    else
        Fail();
}

// FIRST/SKIP stands right after "SELECT ", before DISTINCT, as the server reads it.
std::string TZvIBSelectParser::GetSelectClauseScript() {
    const std::string First = ReadsFirstSkip() ? ProcessKeyword(FBOptions.GetScript()) : std::string();
    return First + TZvSelectParser::GetSelectClauseScript();
}

std::string TZvIBSelectParser::GetAppendixScript() {
    const std::string Rows = ReadsRows() ? IBOptions.GetScript() : std::string();
    return Rows.empty() ? Rows : ProcessKeyword(Rows) + "\r\n";
}

} // namespace zv
