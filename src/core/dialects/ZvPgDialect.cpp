// The PostgreSQL dialect: the scanner's word lists and name rule, the options text, and the
// parser's reading and writing of DISTINCT ON, LIMIT and OFFSET.
#include "ZvPgDialect.h"

#include "ZvOperators.h"
#include "ZvUtils.h"

namespace zv {

// ---------------------------------------------------------------------------------------------
// TZvPgSQLScanner

namespace {

constexpr std::string_view kPgKeywords =
    "ABORT,ACCESS,ADD,AFTER,AGGREGATE,ALIGNMENT,ALL,ALTER,ANALYZE,AND,ANY,AS,ASC,BACKWARD,BASETYPE,"
    "BEFORE,BEGIN,BETWEEN,BINARY,BY,CACHE,CASCADE,CASE,CAST,CHARACTERISTICS,CHECK,CHECKPOINT,CLOSE,"
    "CLUSTER,COLLATE,COLUMN,COMMENT,COMMIT,COMMUTATOR,CONSTRAINT,CONSTRAINTS,COPY,CREATE,CREATEDB,"
    "CREATEUSER,CROSS,CURRENT_DATE,CURRENT_TIMESTAMP,CURSOR,CYCLE,DATABASE,DECLARE,DEFAULT,"
    "DEFERRABLE,DELETE,DELIMITER,DELIMITERS,DESC,DISTINCT,DO,DROP,EACH,ELEMENT,ELSE,ENCODING,END,"
    "ESCAPE,EXCEPT,EXCLUSIVE,EXECUTE,EXISTS,EXPLAIN,EXTERNALLENGTH,FALSE,FETCH,FOR,FORCE,FOREIGN,"
    "FORWARD,FREEZE,FROM,FULL,FUNCTION,GRANT,GROUP,HANDLER,HASHES,HAVING,ILIKE,IMMEDIATE,IN,"
    "INCREMENT,INDEX,INHERITS,INITCOND,INITIALLY,INNER,INPUT,INSENSITIVE,INSERT,INSTEAD,"
    "INTERNALLENGTH,INTERSECT,INTO,IS,ISOLATION,JOIN,KEY,LANCOMPILER,LANGUAGE,LEFT,LEFTARG,LEVEL,"
    "LIKE,LIMIT,LISTEN,LOAD,LOCAL,LOCATION,LOCK,MATCH,MAXVALUE,MINVALUE,MOVE,NATURAL,NEGATOR,NEW,"
    "NEXT,NOCREATEDB,NOCREATEUSER,NONE,NOT,NOTHING,NOTIFY,NULL,OF,OFF,OFFSET,OIDS,OLD,ON,ONLY,"
    "OPERATOR,OPTION,OR,ORDER,OUTER,OUTPUT,OWNER,PASSEDBYVALUE,PASSWORD,PRIMARY,PRIOR,PRIVILEGES,"
    "PROCEDURAL,PROCEDURE,RECEIVE,REFERENCES,REINDEX,RELATIVE,RENAME,REPLACE,RESET,RESTRICT,RETURNS,"
    "RIGHT,RIGHTARG,ROLLBACK,ROW,RULE,SCROLL,SELECT,SEND,SEQUENCE,SERIALIZABLE,SESSION_USER,SET,"
    "SFUNC,SHARE,SHOW,SOME,SORT1,SORT2,START,STATEMENT,STATISTICS,STDOUT,STORAGE,STYPE,SYSID,TABLE,"
    "TEMP,TEMPLATE,TEMPORARY,THEN,TO,TOAST,TRIGGER,TRUE,TRUNCATE,TRUSTED,TYPE,UNENCRYPTED,UNION,"
    "UNIQUE,UNKNOWN,UNLISTEN,UPDATE,USER,USING,VACUUM,VALID,VALUES,VARIABLE,VERBOSE,VIEW,WHERE,WITH,"
    "WITHOUT,ZONE,_ABSTIME,_ACLITEM,_BIT,_BOOL,_BOX,_BPCHAR,_BYTEA,_CHAR,_CID,_CIDR,_CIRCLE,_FLOAT4,"
    "_FLOAT8,_INET,_INT2,_INT2VECTOR,_INT4,_INT8,_INTERVAL,_LINE,_LSEG,_MONEY,_NAME,_NUMERIC,_OID,"
    "_OIDVECTOR,_PATH,_POINT,_POLYGON,_REGPROC,_RELTIME,_TID,_TIME,_TIMESTAMP,_TIMESTAMPTZ,_TIMETZ,"
    "_TINTERVAL,_VARBIT,_VARCHAR,_XID,ACLITEM,BIGINT,BIGSERIAL,BIT,BOOL,BOOLEAN,BOX,BPCHAR,BYTEA,"
    "CHAR,CID,CIDR,DATE,DOUBLE,FLOAT4,FLOAT8,INET,INT2,INT2VECTOR,INT4,INT8,INTEGER,INTERVAL,LSEG,"
    "MACADDR,MONEY,NUMERIC,OID,OIDVECTOR,OPAQUE,PATH,POINT,POLYGON,PRECISION,REFCURSOR,REGPROC,"
    "RELTIME,SERIAL,SMALLINT,SMGR,TEXT,TID,TIME,TIMESTAMP,TIMETZ,TINTERVAL,VARBIT,VARCHAR,VARYING,"
    "XID,HOUR,DAY,DECADE,CENTURY,DOW,DOY,EPOCH,MICROSECONDS,MILLENNIUM,MILLISECONDS,QUARTER,SECOND,"
    "WEEK,YEAR";
// Aggregates, then mathematical, trigonometric, string, date and time, and conditional functions.
constexpr std::string_view kPgFunctions =
    "AVG,COUNT,MAX,MIN,SUM,ARRAY_AGG,BIT_AND,BIT_OR,BOOL_AND,BOOL_OR,EVERY,JSON_AGG,STRING_AGG,"
    "STDDEV,STDDEV_POP,STDDEV_SAMP,VARIANCE,VAR_POP,VAR_SAMP,ABS,CBRT,CEIL,CEILING,DEGREES,DIV,EXP,"
    "FLOOR,LN,LOG,MOD,PI,POWER,RADIANS,RANDOM,ROUND,SIGN,SQRT,TRUNC,ACOS,ASIN,ATAN,ATAN2,COS,COT,SIN,"
    "TAN,ASCII,BTRIM,CHAR_LENGTH,CHARACTER_LENGTH,CHR,CONCAT,CONCAT_WS,INITCAP,LENGTH,LOWER,LPAD,"
    "LTRIM,MD5,OCTET_LENGTH,REGEXP_REPLACE,REPEAT,REPLACE,REVERSE,RPAD,RTRIM,SPLIT_PART,STRPOS,"
    "SUBSTR,TO_ASCII,TO_HEX,TRANSLATE,UPPER,AGE,CLOCK_TIMESTAMP,DATE_PART,DATE_TRUNC,ISFINITE,"
    "JUSTIFY_DAYS,JUSTIFY_HOURS,NOW,TIMEOFDAY,TO_CHAR,TO_DATE,TO_NUMBER,TO_TIMESTAMP,COALESCE,NULLIF,"
    "GREATEST,LEAST";
constexpr std::string_view kPgOperations = "+,-,*,/,||";
// The generic comparisons and the regular-expression matches (case-sensitive, insensitive, and
// their negations).
constexpr std::string_view kPgCompareOperators = "=,<>,<,<=,>,>=,~,~*,!~,!~*";

} // namespace

bool TZvPgSQLScanner::IsIdentifier(std::string_view S) {
    if (S.empty() || !(IsAlpha(S.front()) || S.front() == '_'))
        return false;
    for (char C : S.substr(1)) {
        if (!IsLegalSymbol(C))
            return false;
    }
    return true;
}

std::string TZvPgSQLScanner::GetCommaKeywords() {
    return std::string(kPgKeywords);
}

std::string TZvPgSQLScanner::GetCommaFunctions() {
    return std::string(kPgFunctions);
}

std::string TZvPgSQLScanner::GetCommaOperations() {
    return std::string(kPgOperations);
}

std::string TZvPgSQLScanner::GetCommaCompareOperators() {
    return std::string(kPgCompareOperators);
}

// ---------------------------------------------------------------------------------------------
// TZvPgSQLOptions

std::string TZvPgSQLOptions::GetScript() const {
    std::string Text;
    if (Limit > 0)
        Text += "LIMIT " + std::to_string(Limit) + "\r\n";
    if (Offset > 0)
        Text += "OFFSET " + std::to_string(Offset) + "\r\n";
    return Text;
}

// ---------------------------------------------------------------------------------------------
// TZvPgSelectParser

void TZvPgSelectParser::Assign(TZvSelectParser& Source) {
    TZvDialectSelectParser::Assign(Source);
    auto* Other = dynamic_cast<TZvPgSelectParser*>(&Source);
    if (Other != nullptr && Other != this)
        PgOptions.Assign(Other->PgOptions);
}

void TZvPgSelectParser::Clear() {
    TZvDialectSelectParser::Clear();
    PgOptions.Clear();
}

std::unique_ptr<TZvSQLScanner> TZvPgSelectParser::CreateScanner() {
    return std::make_unique<TZvPgSQLScanner>();
}

void TZvPgSelectParser::DefineOperators() {
    TZvDialectSelectParser::DefineOperators();
    TZvOperators& List = GetOperators();
    for (const char* Word : {"~", "~*", "!~", "!~*", "ILIKE", "NOT ILIKE"})
        List.AddOperator(Word, Word);
}

void TZvPgSelectParser::DoParseSelectClause() {
    TZvSQLScanner& S = GetScanner();
    if (TokenIs("DISTINCT")) {
        S.GetTokenPlus();
        if (SameText(S.TokenPlus, "ON") && S.TokenKindsPlus.Contains(tkKeyword)) {
            NextToken();
            DoParseDistinct();
            if (State == ssError)
                return;
            SetDistinct(true);
        }
    }
    TZvDialectSelectParser::DoParseSelectClause();
}

void TZvPgSelectParser::DoParseDistinct() {
    NextToken();
    if (!TokenIs("(")) {
        Fail();
        return;
    }
    std::vector<std::string> Names;
    do {
        NextToken();
        std::string Name;
        if (!ReadDistinctOnName(Name))
            return;
        Names.push_back(std::move(Name));
    } while (TokenIs(","));
    if (!TokenIs(")")) {
        Fail();
        return;
    }
    NextToken();
    PgOptions.SetDistinctOn(std::move(Names));
}

// One column reference of DISTINCT ON: name parts joined by "." as the model keeps names. Leaves
// the token after it current.
bool TZvPgSelectParser::ReadDistinctOnName(std::string& Name) {
    for (;;) {
        if (!TokenHas(tkIdent) || GetScanner().Token.empty()) {
            Fail();
            return false;
        }
        Name += TokenAlias();
        NextToken();
        if (!TokenIs("."))
            return true;
        Name += '.';
        NextToken();
    }
}

// An OFFSET of 0 skips nothing and is read as no clause; a LIMIT of 0 is refused, as the options
// keep 0 for "no limit" and the statement would come back returning every row.
void TZvPgSelectParser::DoParseAppendix() {
    bool LimitRead = false;
    bool OffsetRead = false;
    while (!AtEnd()) {
        std::int32_t Number = 0;
        if (TokenIs("LIMIT") && !LimitRead) {
            if (!ReadClauseNumber(Number, 1))
                return;
            PgOptions.SetLimit(Number);
            LimitRead = true;
        } else if (TokenIs("OFFSET") && !OffsetRead) {
            if (!ReadClauseNumber(Number, 0))
                return;
            PgOptions.SetOffset(Number);
            OffsetRead = true;
        } else {
            Fail();
            return;
        }
    }
    State = ssEnd;
}

std::string TZvPgSelectParser::GetSelectClauseScript() {
    const std::vector<std::string>& On = PgOptions.GetDistinctOn();
    if (!GetDistinct() || On.empty())
        return TZvDialectSelectParser::GetSelectClauseScript();
    TZvSQLScanner& S = GetScanner();
    std::string Names;
    for (const std::string& Name : On)
        Names += (Names.empty() ? "" : ", ") + S.ProcessName(Name);
    return ProcessKeyword("DISTINCT") + " " + ProcessKeyword("ON") + " (" + Names + ") ";
}

std::string TZvPgSelectParser::GetAppendixScript() {
    return ProcessKeyword(PgOptions.GetScript());
}

} // namespace zv
