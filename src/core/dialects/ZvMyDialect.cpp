// The MySQL dialect: the scanner's word lists, back-quoted names and backslash escapes, the
// options texts, and the parser's reading and placing of the select options and LIMIT.
#include "ZvMyDialect.h"

namespace zv {

// ---------------------------------------------------------------------------------------------
// TZvMySQLScanner

namespace {

// The server's reserved words and built-in functions, kept exactly as listed ("LOCATE" stands
// twice among the functions).
constexpr std::string_view kMyKeywords =
    "ACTION,ADD,AGGREGATE,ALL,ALTER,AFTER,AND,AS,ASC,AVG_ROW_LENGTH,AUTO_INCREMENT,BETWEEN,BIGINT,BIT,"
    "BINARY,BLOB,BOOL,BOTH,BY,CASCADE,CASE,CHAR,CHARACTER,CHANGE,CHECK,CHECKSUM,COLUMN,COLUMNS,COMMENT,"
    "CONSTRAINT,CREATE,CROSS,CURRENT_DATE,CURRENT_TIME,CURRENT_TIMESTAMP,DATA,DATABASE,DATABASES,DATE,"
    "DATETIME,DAY,DAY_HOUR,DAY_MINUTE,DAY_SECOND,DAYOFMONTH,DAYOFWEEK,DAYOFYEAR,DEC,DECIMAL,DEFAULT,"
    "DELAYED,DELAY_KEY_WRITE,DELETE,DESC,DESCRIBE,DISTINCT,DISTINCTROW,DOUBLE,DROP,END,ELSE,ESCAPE,"
    "ESCAPED,ENCLOSED,ENUM,EXPLAIN,EXISTS,FIELDS,FILE,FIRST,FLOAT,FLOAT4,FLOAT8,FLUSH,FOREIGN,FROM,FOR,"
    "FULL,FUNCTION,GLOBAL,GRANT,GRANTS,GROUP,HAVING,HEAP,HIGH_PRIORITY,HOUR,HOUR_MINUTE,HOUR_SECOND,HOSTS,"
    "IDENTIFIED,IGNORE,IN,INDEX,INFILE,INNER,INSERT,INSERT_ID,INT,INTEGER,INTERVAL,INT1,INT2,INT3,INT4,"
    "INT8,INTO,IS,ISAM,JOIN,KEY,KEYS,KILL,LAST_INSERT_ID,LEADING,LEFT,LENGTH,LIKE,LINES,LIMIT,LOAD,LOCAL,"
    "LOCK,LOGS,LONG,LONGBLOB,LONGTEXT,LOW_PRIORITY,MAX,MAX_ROWS,MATCH,MEDIUMBLOB,MEDIUMTEXT,MEDIUMINT,"
    "MIDDLEINT,MIN_ROWS,MINUTE,MINUTE_SECOND,MODIFY,MONTH,MONTHNAME,MYISAM,NATURAL,NUMERIC,NO,NOT,NULL,ON,"
    "OPTIMIZE,OPTION,OPTIONALLY,OR,ORDER,OUTER,OUTFILE,PACK_KEYS,PARTIAL,PRECISION,PRIMARY,PROCEDURE,"
    "PROCESS,PROCESSLIST,PRIVILEGES,READ,REAL,REFERENCES,RELOAD,REGEXP,RENAME,REPLACE,RESTRICT,RETURNS,"
    "REVOKE,RIGHT,RLIKE,ROW,ROWS,SECOND,SELECT,SET,SHOW,SHUTDOWN,SMALLINT,SONAME,SQL_BIG_TABLES,"
    "SQL_BIG_SELECTS,SQL_LOW_PRIORITY_UPDATES,SQL_LOG_OFF,SQL_LOG_UPDATE,SQL_SELECT_LIMIT,"
    "SQL_SMALL_RESULT,SQL_BIG_RESULT,SQL_WARNINGS,STRAIGHT_JOIN,STARTING,STATUS,STRING,TABLE,TABLES,"
    "TEMPORARY,TERMINATED,TEXT,THEN,TIME,TIMESTAMP,TINYBLOB,TINYTEXT,TINYINT,TRAILING,TO,TYPE,USE,USING,"
    "UNIQUE,UNLOCK,UNSIGNED,UPDATE,USAGE,VALUES,VARCHAR,VARIABLES,VARYING,VARBINARY,WITH,WRITE,WHEN,WHERE,"
    "YEAR_MONTH,ZEROFILL";
constexpr std::string_view kMyFunctions =
    "BIT_COUNT,IFNULL,NULLIF,IF,DAYOFWEEK,WEEKDAY,DAYOFMONTH,DAYOFYEAR,MONTH,DAYNAME,MONTHNAME,QUARTER,"
    "WEEK,YEAR,YEARWEEK,HOUR,MINUTE,SECOND,PERIOD_ADD,PERIOD_DIFF,DATE_ADD,DATE_SUB,ADDDATE,SUBDATE,"
    "TO_DAYS,FROM_DAYS,DATE_FORMAT,TIME_FORMAT,CURDATE,CURRENT_DATE,CURTIME,CURRENT_TIME,NOW,SYSDATE,"
    "CURRENT_TIMESTAMP,UNIX_TIMESTAMP,FROM_UNIXTIME,SEC_TO_TIME,TIME_TO_SEC,COUNT,AVG,MIN,MAX,SUM,STD,"
    "STDDEV,BIT_OR,BIT_AND,ABS,SIGN,MOD,FLOOR,CEILING,ROUND,EXP,LOG,LOG10,POW,POWER,SQRT,PI,COS,SIN,TAN,"
    "ACOS,ASIN,ATAN,ATAN2,COT,RAND,LEAST,GREATEST,DEGREES,RADIANS,TRUNCATE,DATABASE,USER,SYSTEM_USER,"
    "SESSION_USER,PASSWORD,ENCRYPT,ENCODE,DECODE,MD5,LAST_INSERT_ID,FORMAT,VERSION,CONNECTION_ID,GET_LOCK,"
    "RELEASE_LOCK,BENCHMARK,INET_NTOA,INET_ATON,MASTER_POS_WAIT,ASCII,ORD,CONV,BIN,OCT,HEX,CHAR,CONCAT,"
    "CONCAT_WS,LENGTH,OCTET_LENGTH,CHAR_LENGTH,CHARACTER_LENGTH,LOCATE,POSITION,LOCATE,INSTR,LPAD,RPAD,"
    "LEFT,RIGHT,SUBSTRING,MID,SUBSTRING_INDEX,LTRIM,RTRIM,TRIM,SOUNDEX,SPACE,REPLACE,REPEAT,REVERSE,ELT,"
    "FIELD,FIND_IN_SET,MAKE_SET,EXPORT_SET,LCASE,LOWER,UCASE,UPPER,LOAD_FILE,COALESCE,GROUP_CONCAT,"
    "VARIANCE";
constexpr std::string_view kMyAggregates =
    "COUNT,AVG,MIN,MAX,SUM,GROUP_CONCAT,VARIANCE,STD,STDDEV,BIT_OR,BIT_AND";

} // namespace

std::string TZvMySQLScanner::QuoteStr(std::string_view S) {
    return QuoteStrInAnyQuote(S);
}

std::string TZvMySQLScanner::GetCommaKeywords() {
    return std::string(kMyKeywords);
}

std::string TZvMySQLScanner::GetCommaFunctions() {
    return std::string(kMyFunctions);
}

char TZvMySQLScanner::GetIdentQuote() {
    return '`';
}

bool TZvMySQLScanner::IsIdentQuote(char C) {
    return C == '`';
}

namespace {

// True when the character before the end of Text is escaped: Text ends in an odd run of
// backslashes ("\\" is an escaped backslash, after which a quote is free again).
bool EndsEscaping(std::string_view Text) {
    std::size_t Backslashes = 0;
    while (Backslashes < Text.size() && Text[Text.size() - 1 - Backslashes] == '\\')
        ++Backslashes;
    return Backslashes % 2 == 1;
}

} // namespace

bool TZvMySQLScanner::IsTerminator(char C, std::string_view Text, char Next, char Quote) {
    if (EndsEscaping(Text))
        return false;
    // A backslash before the trailing run of quotes escapes its first quote, which the generic
    // count of that run must then leave out.
    std::size_t Run = 0;
    while (Run < Text.size() && Text[Text.size() - 1 - Run] == Quote)
        ++Run;
    if (Run > 0 && EndsEscaping(Text.substr(0, Text.size() - Run)))
        Text = Text.substr(Text.size() - Run + 1);
    return TZvSQLScanner::IsTerminator(C, Text, Next, Quote);
}

// ---------------------------------------------------------------------------------------------
// TZvMySQLOptions

namespace {

// Indexed by TZvMySQLFilter and TZvMySQLSelectOption.
constexpr std::string_view kFilterWords[] = {"", "DISTINCT", "DISTINCTROW", "ALL"};
constexpr std::string_view kOptionWords[] = {"STRAIGHT_JOIN", "SQL_SMALL_RESULT", "SQL_BIG_RESULT",
                                             "SQL_BUFFER_RESULT", "HIGH_PRIORITY"};
static_assert(std::size(kOptionWords) == TZvMySQLSelectOptions().size());

} // namespace

std::string_view MySQLFilterWord(TZvMySQLFilter Filter) {
    return kFilterWords[Filter];
}

std::string_view MySQLSelectOptionWord(TZvMySQLSelectOption Option) {
    return kOptionWords[Option];
}

std::string TZvMySQLOptions::GetFilterScript() const {
    return Filter == myfoNone ? std::string() : std::string(kFilterWords[Filter]) + " ";
}

std::string TZvMySQLOptions::GetOptionsScript() const {
    std::string Text;
    for (std::size_t I = 0; I < std::size(kOptionWords); ++I) {
        if (SelectOptions.test(I))
            Text += std::string(kOptionWords[I]) + " ";
    }
    return Text;
}

std::string TZvMySQLOptions::GetLimitScript() const {
    if (LimitFirst.empty())
        return {};
    std::string Text = "LIMIT " + LimitFirst;
    if (!LimitSecond.empty())
        Text += ", " + LimitSecond;
    return Text;
}

// ---------------------------------------------------------------------------------------------
// TZvMySelectParser

void TZvMySelectParser::Assign(TZvSelectParser& Source) {
    TZvSelectParser::Assign(Source);
    if (auto* Other = dynamic_cast<TZvMySelectParser*>(&Source); Other != nullptr && Other != this)
        Options.Assign(Other->Options);
}

void TZvMySelectParser::Clear() {
    TZvSelectParser::Clear();
    Options.Clear();
}

bool TZvMySelectParser::GetDistinct() {
    return Options.GetFilter() == myfoDistinct;
}

void TZvMySelectParser::SetDistinct(bool Value) {
    if (Value)
        Options.SetFilter(myfoDistinct);
    else if (Options.GetFilter() == myfoDistinct)
        Options.SetFilter(myfoNone);
}

bool TZvMySelectParser::GetCaseSensitiveIdentifiers() {
    return false;
}

std::string TZvMySelectParser::GetCommaAggregates() {
    return std::string(kMyAggregates);
}

std::unique_ptr<TZvSQLScanner> TZvMySelectParser::CreateScanner() {
    return std::make_unique<TZvMySQLScanner>();
}

void TZvMySelectParser::DoParseSelectClause() {
    for (const TZvMySQLFilter Filter : {myfoDistinct, myfoDistinctRow, myfoAll}) {
        if (TokenIs(kFilterWords[Filter])) {
            Options.SetFilter(Filter);
            NextToken();
            break;
        }
    }
    for (bool Found = true; Found;) {
        Found = false;
        for (std::size_t I = 0; I < std::size(kOptionWords) && !Found; ++I) {
            Found = TokenIs(kOptionWords[I]);
            if (Found) {
                Options.SetSelectOption(static_cast<TZvMySQLSelectOption>(I), true);
                NextToken();
            }
        }
    }
    BeginFieldDefs();
}

void TZvMySelectParser::DoParseAppendix() {
    if (!TokenIs("LIMIT")) {
        TZvSelectParser::DoParseAppendix();
        return;
    }
    std::string First, Second;
    if (!ReadClauseDigits(First))
        return;
    if (TokenIs(",") && !ReadClauseDigits(Second))
        return;
    Options.SetLimitFirst(First);
    Options.SetLimitSecond(Second);
    EndAfterLastClause();
}

std::string TZvMySelectParser::GetSelectClauseScript() {
    return ProcessKeyword(Options.GetFilterScript() + Options.GetOptionsScript());
}

std::string TZvMySelectParser::GetAppendixScript() {
    const std::string Limit = Options.GetLimitScript();
    return Limit.empty() ? Limit : ProcessKeyword(Limit) + "\r\n";
}

} // namespace zv
