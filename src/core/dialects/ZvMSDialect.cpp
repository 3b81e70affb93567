// The Microsoft SQL Server dialect: the scanner's word lists, brackets and quoted-identifier
// switch, the TOP text, and the parser's reading and placing of ALL, DISTINCT and TOP.
#include "ZvMSDialect.h"

#include "ZvOperators.h"

namespace zv {

// ---------------------------------------------------------------------------------------------
// TZvMSSQLScanner

namespace {

// The server's reserved words and built-in functions, kept exactly as listed: the keyword
// "NATIONAL " loses its blank to the comma-text rule, and several functions stand twice.
constexpr std::string_view kMSKeywords =
    "ADD,EXCEPT,PERCENT,ALL,EXEC,PLAN,ALTER,EXECUTE,PRECISION,AND,EXISTS,PRIMARY,ANY,EXIT,PRINT,AS,FETCH,"
    "PROC,ASC,FILE,PROCEDURE,AUTHORIZATION,FILLFACTOR,PUBLIC,BACKUP,FOR,RAISERROR,BEGIN,FOREIGN,READ,"
    "BETWEEN,FREETEXT,READTEXT,BREAK,FREETEXTTABLE,RECONFIGURE,BROWSE,FROM,REFERENCES,BULK,FULL,"
    "REPLICATION,BY,FUNCTION,RESTORE,CASCADE,GOTO,RESTRICT,CASE,GRANT,RETURN,CHECK,GROUP,REVOKE,"
    "CHECKPOINT,HAVING,RIGHT,CLOSE,HOLDLOCK,ROLLBACK,CLUSTERED,IDENTITY,ROWCOUNT,COALESCE,IDENTITY_INSERT,"
    "ROWGUIDCOL,COLLATE,IDENTITYCOL,RULE,COLUMN,IF,SAVE,COMMIT,IN,SCHEMA,COMPUTE,INDEX,SELECT,CONSTRAINT,"
    "INNER,SESSION_USER,CONTAINS,INSERT,SET,CONTAINSTABLE,INTERSECT,SETUSER,CONTINUE,INTO,SHUTDOWN,"
    "CONVERT,IS,SOME,CREATE,JOIN,STATISTICS,CROSS,KEY,SYSTEM_USER,CURRENT,KILL,TABLE,CURRENT_DATE,LEFT,"
    "TEXTSIZE,CURRENT_TIME,LIKE,THEN,CURRENT_TIMESTAMP,LINENO,TO,CURRENT_USER,LOAD,TOP,CURSOR,NATIONAL ,"
    "TRAN,DATABASE,NOCHECK,TRANSACTION,DBCC,NONCLUSTERED,TRIGGER,DEALLOCATE,NOT,TRUNCATE,DECLARE,NULL,"
    "TSEQUAL,DEFAULT,NULLIF,UNION,DELETE,OF,UNIQUE,DENY,OFF,UPDATE,DESC,OFFSETS,UPDATETEXT,DISK,ON,USE,"
    "DISTINCT,OPEN,USER,DISTRIBUTED,OPENDATASOURCE,VALUES,DOUBLE,OPENQUERY,VARYING,DROP,OPENROWSET,VIEW,"
    "DUMMY,OPENXML,WAITFOR,DUMP,OPTION,WHEN,ELSE,OR,WHERE,END,ORDER,WHILE,ERRLVL,OUTER,WITH,ESCAPE,OVER,"
    "WRITETEXT";
constexpr std::string_view kMSFunctions =
    "AVG,BINARY_CHECKSUM,CHECKSUM,CHECKSUM_AGG,COUNT,COUNT_BIG,GROUPING,STDEV,STDEVP,VAR,VARP,MAX,MIN,SUM,"
    "@@DATEFIRST,@@DBTS,@@LANGID,@@LANGUAGE,@@LOCK_TIMEOUT,@@MAX_CONNECTIONS,@@MAX_PRECISION,@@NESTLEVEL,"
    "@@OPTIONS,@@REMSERVER,@@SERVERNAME,@@SERVICENAME,@@SPID,@@TEXTSIZE,@@VERSION,@@CURSOR_ROWS,"
    "CURSOR_STATUS,@@FETCH_STATUS,DATEADD,DATEDIFF,DATENAME,DATEPART,DAY,GETDATE,GETUTCDATE,MONTH,YEAR,"
    "ABS,ACOS,ASIN,ATAN,ATN2,CEILING,COS,COT,DEGREES,EXP,FLOOR,LOG,LOG10,PI,POWER,RADIANS,RAND,ROUND,SIGN,"
    "SIN,SQUARE,SQRT,TAN,COL_LENGTH,COL_NAME,COLUMNPROPERTY,DATABASEPROPERTY,DATABASEPROPERTYEX,DB_ID,"
    "DB_NAME,FILE_ID,FILE_NAME,FILEGROUP_ID,FILEGROUP_NAME,FILEGROUPPROPERTY,FILEPROPERTY,"
    "fn_listextendedproperty,FULLTEXTCATALOGPROPERTY,FULLTEXTSERVICEPROPERTY,INDEX_COL,INDEXKEY_PROPERTY,"
    "INDEXPROPERTY,OBJECT_ID,OBJECT_NAME,OBJECTPROPERTY,@@PROCID,SQL_VARIANT_PROPERTY,TYPEPROPERTY,"
    "CONTAINSTABLE,FREETEXTTABLE,OPENDATASOURCE,OPENQUERY,OPENROWSET,OPENXML,fn_trace_geteventinfo,"
    "fn_trace_getfilterinfo,fn_trace_getinfo,fn_trace_gettable,HAS_DBACCESS,IS_MEMBER,IS_SRVROLEMEMBER,"
    "SUSER_SID,SUSER_SNAME,USER_ID,USER,ASCII,CHAR,CHARINDEX,DIFFERENCE,LEFT,LEN,LOWER,LTRIM,NCHAR,"
    "PATINDEX,REPLACE,QUOTENAME,REPLICATE,REVERSE,RIGHT,RTRIM,SOUNDEX,SPACE,STR,STUFF,SUBSTRING,UNICODE,"
    "UPPER,APP_NAME,CASE,CAST,CONVERT,COALESCE,COLLATIONPROPERTY,CURRENT_TIMESTAMP,CURRENT_USER,"
    "DATALENGTH,@@ERROR,fn_helpcollations,fn_servershareddrives,fn_virtualfilestats,FORMATMESSAGE,"
    "GETANSINULL,HOST_ID,HOST_NAME,IDENT_CURRENT,IDENT_INCR,IDENT_SEED,@@IDENTITY,IDENTITY,ISDATE,ISNULL,"
    "ISNUMERIC,NEWID,NULLIF,PARSENAME,PERMISSIONS,@@ROWCOUNT,ROWCOUNT_BIG,SCOPE_IDENTITY,SERVERPROPERTY,"
    "SESSIONPROPERTY,SESSION_USER,STATS_DATE,SYSTEM_USER,@@TRANCOUNT,USER_NAME,@@CONNECTIONS,@@CPU_BUSY,"
    "fn_virtualfilestats,@@IDLE,@@IO_BUSY,@@PACKET_ERRORS,@@PACK_RECEIVED,@@PACK_SENT,@@TIMETICKS,"
    "@@TOTAL_ERRORS,@@TOTAL_READ,@@TOTAL_WRITE,PATINDEX,TEXTPTR,TEXTVALID,GETANSINULL,GETDATE,GETUTCDATE,"
    "GROUPING,HAS_DBACCESS,HOST_ID,HOST_NAME,IDENT_CURRENT,IDENT_INCR,IDENT_SEED,INDEXKEY_PROPERTY,"
    "INDEXPROPERTY,INDEX_COL";
constexpr std::string_view kMSAggregates =
    "AVG,BINARY_CHECKSUM,CHECKSUM,CHECKSUM_AGG,COUNT,COUNT_BIG,GROUPING,MAX,MIN,SUM,STDEV,STDEVP,VAR,VARP";
constexpr std::string_view kMSOperations = "+,-,*,/,%,&,|,^,~,!";
// Comparisons and join operators are the same text.
constexpr std::string_view kMSComparisons = "=,<>,<,>,<=,>=,!<,!=,!>";

} // namespace

void TZvMSSQLScanner::SetQuotedIdentifier(bool Value) {
    if (Value == QuotedIdentifier)
        return;
    QuotedIdentifier = Value;
    InvalidateCharClasses();
}

bool TZvMSSQLScanner::IsAlpha(char C) {
    return TZvSQLScanner::IsAlpha(C) || C == '_' || C == '@' || C == '#';
}

bool TZvMSSQLScanner::IsDelim(char C) {
    return C != '[' && C != ']' && TZvSQLScanner::IsDelim(C);
}

bool TZvMSSQLScanner::IsQuote(char C) {
    return C == '\'' || (C == '"' && !QuotedIdentifier);
}

char TZvMSSQLScanner::GetQuotePair(char Q) {
    return Q == '[' ? ']' : Q == ']' ? '[' : Q;
}

char TZvMSSQLScanner::GetIdentQuote() {
    return '[';
}

bool TZvMSSQLScanner::IsIdentQuote(char C) {
    return C == '[' || C == ']' || (C == '"' && QuotedIdentifier);
}

std::string TZvMSSQLScanner::QuoteStr(std::string_view S) {
    return QuoteStrInAnyQuote(S);
}

std::string TZvMSSQLScanner::GetCommaKeywords() {
    return std::string(kMSKeywords);
}

std::string TZvMSSQLScanner::GetCommaFunctions() {
    return std::string(kMSFunctions);
}

std::string TZvMSSQLScanner::GetCommaOperations() {
    return std::string(kMSOperations);
}

std::string TZvMSSQLScanner::GetCommaCompareOperators() {
    return std::string(kMSComparisons);
}

std::string TZvMSSQLScanner::GetCommaJoinOperators() {
    return std::string(kMSComparisons);
}

std::string TZvMSSQLScanner::ProcessIdent(std::string_view S) {
    if (!S.empty() && S.front() == ']')
        return std::string(S);
    return TZvSQLScanner::ProcessIdent(S);
}

void TZvMSSQLScanner::DefineBooleans() {
    SetBooleans(false, "FALSE");
    SetBooleans(true, "TRUE");
}

// A name beginning with "@" is a variable or a system function (@@VERSION), which the server
// reads only bare: in brackets it would name a column. One that is no identifier (a blank in it)
// is no variable either, and is quoted like any other name.
bool TZvMSSQLScanner::NeedQuotes(std::string_view S) {
    if (!S.empty() && S.front() == '@' && IsIdentifier(S))
        return false;
    return NeedQuotesReserved(S);
}

// ---------------------------------------------------------------------------------------------
// TZvMSSQLOptions

std::string TZvMSSQLOptions::GetTopScript() const {
    if (Top < 1)
        return {};
    std::string Text = "TOP " + std::to_string(Top);
    if (Percent)
        Text += " PERCENT";
    if (WithTies)
        Text += " WITH TIES";
    return Text + " ";
}

// ---------------------------------------------------------------------------------------------
// TZvMSSelectParser

void TZvMSSelectParser::Assign(TZvSelectParser& Source) {
    TZvSelectParser::Assign(Source);
    auto* Other = dynamic_cast<TZvMSSelectParser*>(&Source);
    if (Other == nullptr || Other == this)
        return;
    Options.Assign(Other->Options);
    SetQuotedIdentifier(Other->GetQuotedIdentifier());
}

void TZvMSSelectParser::Clear() {
    TZvSelectParser::Clear();
    Options.Clear();
}

std::string TZvMSSelectParser::GetCommaAggregates() {
    return std::string(kMSAggregates);
}

// The scanner is this dialect's unless a caller replaced CreateScanner further down.
TZvMSSQLScanner* TZvMSSelectParser::GetMSScanner() {
    return dynamic_cast<TZvMSSQLScanner*>(&GetScanner());
}

bool TZvMSSelectParser::GetQuotedIdentifier() {
    TZvMSSQLScanner* MS = GetMSScanner();
    return MS == nullptr || MS->GetQuotedIdentifier();
}

void TZvMSSelectParser::SetQuotedIdentifier(bool Value) {
    if (TZvMSSQLScanner* MS = GetMSScanner())
        MS->SetQuotedIdentifier(Value);
}

std::unique_ptr<TZvSQLScanner> TZvMSSelectParser::CreateScanner() {
    return std::make_unique<TZvMSSQLScanner>();
}

void TZvMSSelectParser::DefineOperators() {
    TZvSelectParser::DefineOperators();
    for (const char* Operator : {"!<", "!=", "!>"})
        GetOperators().AddOperator(Operator, Operator);
}

void TZvMSSelectParser::DoParseSelectClause() {
    if (TokenIs("ALL")) {
        Options.SetAll(true);
        NextToken();
    } else if (TokenIs("DISTINCT")) {
        SetDistinct(true);
        NextToken();
    }
    if (TokenIs("TOP") && !ReadTopClause())
        return;
    BeginFieldDefs();
}

// At TOP: the number, then PERCENT and WITH TIES, each optional, in this order.
bool TZvMSSelectParser::ReadTopClause() {
    std::int32_t Top = 0;
    bool Percent = false, WithTies = false;
    if (!ReadClauseNumber(Top) || !ReadPercentAndTies(Percent, WithTies))
        return false;
    Options.SetTop(Top);
    Options.SetPercent(Percent);
    Options.SetWithTies(WithTies);
    return true;
}

std::string TZvMSSelectParser::GetSelectClauseScript() {
    const std::string Filter = Options.GetAll() && !GetDistinct() ? ProcessKeyword("ALL") + " "
                                                                  : TZvSelectParser::GetSelectClauseScript();
    return Filter + ProcessKeyword(Options.GetTopScript());
}

} // namespace zv
