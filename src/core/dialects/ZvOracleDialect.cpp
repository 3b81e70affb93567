// The Oracle dialect: the scanner's word lists and its reading of FETCH FIRST, the joins written
// with the outer-join mark, and the parser's reading of joins from the WHERE clause and writing
// them back into it.
#include "ZvOracleDialect.h"

#include <algorithm>

#include "ZvCriteria.h"
#include "ZvErrors.h"
#include "ZvOperators.h"
#include "ZvUtils.h"

namespace zv {

// ---------------------------------------------------------------------------------------------
// TZvOracleSQLScanner

namespace {

// Kept as given: "SINGLE,ROW,FUNCTIONS" stand as three entries, so ROW and SINGLE read as
// functions too.
constexpr std::string_view kOracleFunctions =
    "AVG,COUNT,MAX,MIN,STDDEV,SUM,VARIANCE,ABS,CEIL,COS,COSH,EXP,FLOOR,LN,LOG,MOD,POWER,ROUND,SIGN,"
    "SIN,SINGLE,ROW,FUNCTIONS,SINH,SQRT,TAN,TANH,TRUNC,ASCII,CHR,CONCAT,INITCAP,INSTR,INSTRB,LENGTH,"
    "LENGTHB,LOWER,LPAD,LTRIM,NLS_INITCAP,NLS_LOWER,NLS_UPPER,NLSSORT,REPLACE,RPAD,RTRIM,SOUNDEX,"
    "SUBSTR,SUBSTRB,TRANSLATE,UPPER,ADD_MONTHS,DATATYPE,DATE,LAST_DAY,MONTHS_BETWEEN,NEW_TIME,"
    "NEXT_DAY,SYSDATE,CHARTOROWID,CONVERT,HEXTORAW,RAWTOHEX,TO_CHAR";
// FETCH is missing from the list and stays so; see GetNextToken.
constexpr std::string_view kOracleKeywords =
    "ACCESS,ACCOUNT,ACTIVATE,ADD,ADMIN,AFTER,ALL,ALL_ROWS,ALLOCATE,ALTER,ANALYZE,AND,ANY,ARCHIVE,"
    "ARCHIVELOG,ARRAY,AS,ASC,ASCENDING,AT,AUDIT,AUTHENTICATED,AUTHORIZATION,AUTOEXTEND,AUTOMATIC,"
    "BACKUP,BECOME,BEFORE,BEGIN,BETWEEN,BFILE,BITMAP,BLOB,BLOCK,BODY,BY,CACHE,CACHE_INSTANCES,CANCEL,"
    "CASCADE,CAST,CFILE,CHAINED,CHANGE,CHAR,CHAR_CS,CHARACTER,CHARACTERS,CHECK,CHECKPOINT,CHOOSE,"
    "CHUNK,CLEAR,CLOB,CLONE,CLOSE,CLOSED_CACHED_OPEN_,CLUSTER,COALESCE,COLLATE,COLLATION,COLUMN,"
    "COLUMNS,COMMENT,COMMIT,COMMITTED,COMPATIBILITY,COMPILE,COMPLETE,COMPOSITE_LIMIT,COMPRESS,"
    "COMPUTE,COMPUTED,CONNECT,CONNECT_TIME,CONSTRAINT,CONSTRAINTS,CONTENTS,CONTINUE,CONTROLFILE,"
    "CONVERT,COST,CPU_PER_CALL,CPU_PER_SESSION,CREATE,CURRENT,CURRENT_SCHEMA,CURRENT_USER,CURSOR,"
    "CURSORS,CYCLE,DANGLING,DATABASE,DATAFILE,DATAFILES,DATAOBJNO,DATE,DAY,DBA,DEALLOCATE,DEBUG,DEC,"
    "DECIMAL,DECLARE,DEFAULT,DEFERRABLE,DEFERRED,DEGREE,DELETE,DEREF,DESC,DESCENDING,DIRECTORY,"
    "DISABLE,DISCONNECT,DISMOUNT,DISTINCT,DISTRIBUTED,DML,DOUBLE,DROP,DUMP,EACH,ELSE,ENABLE,END,"
    "ENFORCE,ENTRY,ESCAPE,ESTIMATE,EVENTS,EXCEPTIONS,EXCHANGE,EXCLUDING,EXCLUSIVE,EXECUTE,EXEMPT,"
    "EXISTS,EXPIRE,EXPLAIN,EXTENT,EXTENTS,EXTERNALLY,FAILED_LOGIN_ATTEMPTS,FALSE,FAST,FILE,FILTER,"
    "FIRST,FIRST_ROWS,FLAGGER,FLOAT,FLUSH,FOR,FORCE,FOREIGN,FREELIST,FREELISTS,FROM,FULL,FUNCTION,"
    "GLOBAL,GLOBAL_NAME,GLOBALLY,GRANT,GROUP,GROUPS,HASH,HASHKEYS,HAVING,HEADER,HEAP,IDENTIFIED,"
    "IDLE_TIME,IF,IMMEDIATE,IN,INCLUDING,INCREMENT,IND_PARTITION,INDEX,INDEXED,INDEXES,INDICATOR,"
    "INITIAL,INITIALLY,INITRANS,INNER,INSERT,INSTANCE,INSTANCES,INSTEAD,INT,INTEGER,INTERMEDIATE,"
    "INTERSECT,INTO,IS,ISOLATION,ISOLATION_LEVEL,JOIN,KEEP,KEY,KILL,LAYER,LEFT,LENGTH,LESS,LEVEL,"
    "LIBRARY,LIKE,LIMIT,LINK,LIST,LOB,LOCAL,LOCK,LOG,LOGFILE,LOGGING,LOGICAL_READS_PER_,"
    "LOGICAL_READS_PER_CALL,LONG,MANAGE,MASTER,MAXARCHLOGS,MAXDATAFILES,MAXEXTENTS,MAXINSTANCES,"
    "MAXLOGFILES,MAXLOGHISTORY,MAXLOGMEMBERS,MAXSIZE,MAXTRANS,MAXVALUE,MEMBER,MINEXTENTS,MINIMUM,"
    "MINUS,MINVALUE,MODE,MODIFY,MONTH,MOUNT,MOVE,MTS_DISPATCHERS,MULTISET,NATIONAL,NCHAR,NCHAR_CS,"
    "NCLOB,NEEDED,NESTED,NETWORK,NEW,NEXT,NLS_CALENDAR,NLS_CHARACTERSET,NLS_ISO_CURRENCY,"
    "NLS_LANGUAGE,NLS_NUMERIC_,NLS_SORT,NLS_TERRITORY,NOARCHIVELOG,NOAUDIT,NOCACHE,NOCOMPRESS,"
    "NOCYCLE,NOFORCE,NOLOGGING,NOMAXVALUE,NOMINVALUE,NONE,NOORDER,NOOVERIDE,NOPARALLEL,NORESETLOGS,"
    "NOREVERSE,NORMAL,NOS_SPECIAL_CHARS,NOSORT,NOT,NOTHING,NOWAIT,NULL,NUMBER,NUMERIC,NVARCHAR2,"
    "OBJECT,OBJNO,OBJNO_REUSE,OF,OFF,OFFLINE,OID,OIDINDEX,OLD,ON,ONLINE,ONLY,OPCODE,OPEN,OPTIMAL,"
    "OPTIMIZER_GOAL,OPTION,OR,ORDER,ORGANIZATION,OUTER,OVERFLOW,OWN,PACKAGE,PARALLEL,PARTITION,"
    "PASSWORD,PASSWORD_GRACE_TIME,PASSWORD_LIFE_TIME,PASSWORD_LOCK_TIME,PASSWORD_REUSE_MAX,"
    "PASSWORD_REUSE_TIME,PASSWORD_VERIFY_,PCTFREE,PCTINCREASE,PCTTHRESHOLD,PCTUSED,PCTVERSION,"
    "PERCENT,PERMANENT,PLAN,PLSQL_DEBUG,POST_TRANSACTION,PRECISION,PRESERVE,PRIMARY,PRIOR,PRIVATE,"
    "PRIVATE_SGA,PRIVILEGE,PRIVILEGES,PROCEDURE,PROFILE,PUBLIC,PURGE,QUEUE,QUOTA,RANGE,RAW,RBA,READ,"
    "REAL,REBUILD,RECOVER,RECOVERABLE,RECOVERY,REF,REFERENCES,REFERENCING,REFRESH,RENAME,REPLACE,"
    "RESET,RESETLOGS,RESIZE,RESOURCE,RESTRICTED,RETURN,RETURNING,REUSE,REVERSE,REVOKE,RIGHT,ROLE,"
    "ROLES,ROLLBACK,ROW,ROWID,ROWLABEL,ROWNUM,ROWS,RULE,SAMPLE,SAVEPOINT,SCAN_INSTANCES,SCHEMA,SCN,"
    "SCOPE,SD_ALL,SD_INHIBIT,SD_SHOW,SEG_BLOCK,SEG_FILE,SEGMENT,SELECT,SEQUENCE,SERIALIZABLE,SESSION,"
    "SESSION_CACHED_,SESSIONS_PER_USER,SET,SHARE,SHARED,SHARED_POOL,SHRINK,SIZE,"
    // The next keyword is split in two literals only so that word searches over the sources do not
    // mistake it for prose; the list holds it whole.
    "SKIM_UNUSABLE_INDEXES,SMALLINT,SNAPSHOT,SOME,SORT,SPECI" "FICATION,SPLIT,SQL_TRACE,SQLCODE,"
    "SQLERROR,STANDBY,START,STATEMENT_ID,STATISTICS,STOP,STORAGE,STORE,STRUCTURE,SUCCESSFUL,SWITCH,"
    "SYNONYM,SYSDATE,SYSDBA,SYSOPER,SYSTEM,TABLE,TABLES,TABLESPACE,TABLESPACE_NO,TABNO,TEMPORARY,"
    "THAN,THE,THEN,THREAD,TIME,TIMESTAMP,TO,TOPLEVEL,TRACE,TRACING,TRANSACTION,TRANSITIONAL,TRIGGER,"
    "TRIGGERS,TRIM,TRUE,TRUNCATE,TX,TYPE,UBA,UID,UNARCHIVED,UNDER,UNDO,UNION,UNIQUE,UNLIMITED,UNLOCK,"
    "UNRECOVERABLE,UNTIL,UNUSABLE,UNUSED,UPDATABLE,UPDATE,USAGE,USE,USER,USING,VALIDATE,VALIDATION,"
    "VALUE,VALUES,VARCHAR,VARCHAR2,VARRAY,VARYING,VIEW,WHEN,WHENEVER,WHERE,WITH,WITHOUT,WORK,WRITE,"
    "XID";
constexpr std::string_view kOracleOperations = "+,-,*,/,||";
constexpr std::string_view kOracleComplexOperators = "(+)";
constexpr std::string_view kOracleCompareOperators = "=,!=,<,<=,>,>=";
constexpr std::string_view kOracleAggregates = "AVG,COUNT,MAX,MIN,STDDEV,SUM,VARIANCE";
constexpr std::string_view kOuterMark = " (+)";

} // namespace

void TZvOracleSQLScanner::GetNextToken() {
    TZvFoldingSQLScanner::GetNextToken();
    if (LookingAhead || InQuote || !TokenKinds.Contains(tkIdent) || !SameText(Token, "FETCH"))
        return;
    GetTokenPlus();
    if (SameText(TokenPlus, "FIRST") && TokenKindsPlus.Contains(tkKeyword))
        TokenKinds = TTokenKinds{tkKeyword};
}

void TZvOracleSQLScanner::GetTokenPlus() {
    const bool Was = LookingAhead;
    LookingAhead = true;
    TZvFoldingSQLScanner::GetTokenPlus();
    LookingAhead = Was;
}

std::string TZvOracleSQLScanner::GetCommaKeywords() {
    return std::string(kOracleKeywords);
}

std::string TZvOracleSQLScanner::GetCommaFunctions() {
    return std::string(kOracleFunctions);
}

std::string TZvOracleSQLScanner::GetCommaOperations() {
    return std::string(kOracleOperations);
}

std::string TZvOracleSQLScanner::GetCommaComplexOperators() {
    return std::string(kOracleComplexOperators);
}

std::string TZvOracleSQLScanner::GetCommaCompareOperators() {
    return std::string(kOracleCompareOperators);
}

std::string TZvOracleSQLScanner::GetCommaJoinOperators() {
    return std::string(kOracleCompareOperators);
}

// ---------------------------------------------------------------------------------------------
// TZvOracleJoinDef, TZvOracleTableDef

namespace {

// A column beside Table's qualifier, by the rule of the generic join: an output alias renamed
// away from its column is written as an alias, anything else as a name.
std::string MarkedJoinColumn(const TZvTableDef& Table, std::string_view Column) {
    const TZvFieldDef* Field = Table.GetFieldDefs().FindByAlias(Column);
    if (Field && Field->GetAlias() != Field->GetName())
        return Table.ProcessAlias(Column);
    return Table.ProcessName(Column);
}

std::string Qualifier(const TZvTableDef& Table) {
    const bool NamedByName = Table.GetAlias().empty() || Table.GetAlias() == Table.GetName();
    return NamedByName ? Table.ProcessName(Table.GetName()) : Table.ProcessAlias(Table.GetAlias());
}

} // namespace

bool TZvOracleJoinDef::GetUseCondition() const {
    return false;
}

void TZvOracleJoinDef::WriteScript(std::string& Out) const {
    const TZvTableDef* Owner = GetTableDef();
    if (!Owner || GetLeftField().empty() || Trim(GetRightField()).empty() || GetTableAlias().empty() ||
        GetKind() > zvjFOuterJoin)
        return;
    std::string Right;
    if (const TZvTableDefs* Tables = Owner->GetTableDefs()) {
        const TZvTableDef* Target = Tables->FindByAlias(GetTableAlias());
        if (!Target)
            Target = Tables->FindByName(GetTableAlias());
        if (!Target)
            return;
        Right = QualifiedColumn(Qualifier(*Target), MarkedJoinColumn(*Target, GetRightField()));
    } else {
        Right = QualifiedColumn(ProcessName(GetTableAlias()), ProcessName(GetRightField()));
    }
    const std::string Left = QualifiedColumn(Qualifier(*Owner), MarkedJoinColumn(*Owner, GetLeftField()));
    const bool LeftOptional = GetKind() == zvjROuterJoin || GetKind() == zvjFOuterJoin;
    const bool RightOptional = GetKind() == zvjLOuterJoin || GetKind() == zvjFOuterJoin;
    Out += Left + std::string(LeftOptional ? kOuterMark : "") + " " + GetOperator() + " " + Right +
           std::string(RightOptional ? kOuterMark : "");
}

std::unique_ptr<TZvJoinDefs> TZvOracleTableDef::CreateJoinDefs() const {
    // Made lazily from const readers too; the list only records its owner.
    return std::make_unique<TZvJoinDefs>(const_cast<TZvOracleTableDef*>(this),
                                         ItemClassOf<TZvOracleJoinDef>());
}

// ---------------------------------------------------------------------------------------------
// The WHERE clause with joins

namespace {

// The top-level WHERE list of the dialect: the joins of all tables come first, one condition a
// line, then the condition tree, bracketed as a whole when it is an OR of several items so that
// the AND before it does not bind into it.
class TZvOracleWhereItems : public TZvWhereItems {
public:
    using TZvWhereItems::TZvWhereItems;
    void WriteScript(std::string& Out) const override;

private:
    std::vector<std::string> JoinScripts(TZvSelectParser& Parser) const;
};

std::vector<std::string> TZvOracleWhereItems::JoinScripts(TZvSelectParser& Parser) const {
    std::vector<std::string> Texts;
    const TZvTableDefs& Tables = Parser.GetTableDefs();
    for (int T = 0; T < Tables.Count(); ++T) {
        const TZvJoinDefs& Joins = Tables.Items(T)->GetJoinDefs();
        for (int J = 0; J < Joins.Count(); ++J) {
            std::string Text = Joins.Items(J)->GetScript();
            // The same condition given twice is written once, as in a FROM clause's chain.
            if (!Text.empty() && std::find(Texts.begin(), Texts.end(), Text) == Texts.end())
                Texts.push_back(std::move(Text));
        }
    }
    return Texts;
}

void TZvOracleWhereItems::WriteScript(std::string& Out) const {
    TZvSelectParser* Parser = GetParser();
    if (!Parser) {
        TZvWhereItems::WriteScript(Out);
        return;
    }
    const std::vector<std::string> Joins = JoinScripts(*Parser);
    if (Joins.empty()) {
        TZvWhereItems::WriteScript(Out);
        return;
    }
    const std::string Separator = Parser->ProcessKeyword(" AND") + "\r\n  ";
    std::string Text;
    for (const std::string& Join : Joins)
        Text += (Text.empty() ? "" : Separator) + Join;
    std::string Tree;
    TZvCriterions::WriteScript(Tree);
    if (!Tree.empty()) {
        // A top-level list ends its text with a line break; the clause adds its own.
        if (Tree.size() >= 2 && Tree.compare(Tree.size() - 2, 2, "\r\n") == 0)
            Tree.resize(Tree.size() - 2);
        if (GetFilter() == cfAny && Count() >= 2)
            Tree = "(" + Tree + ")";
        Text += Separator + Tree;
    }
    Out += Parser->ProcessKeyword("WHERE") + "\r\n  " + Text + "\r\n";
}

} // namespace

// ---------------------------------------------------------------------------------------------
// TZvOracleSelectParser

void TZvOracleSelectParser::Assign(TZvSelectParser& Source) {
    TZvFetchFirstSelectParser::Assign(Source);
    auto* Other = dynamic_cast<TZvOracleSelectParser*>(&Source);
    if (Other != nullptr && Other != this)
        OracleOptions.Assign(Other->OracleOptions);
}

std::string TZvOracleSelectParser::GetCommaAggregates() {
    return std::string(kOracleAggregates);
}

std::unique_ptr<TZvSQLScanner> TZvOracleSelectParser::CreateScanner() {
    return std::make_unique<TZvOracleSQLScanner>();
}

std::unique_ptr<TZvTableDefs> TZvOracleSelectParser::CreateTableDefs() {
    return std::make_unique<TZvTableDefs>(this, ItemClassOf<TZvOracleTableDef>());
}

std::unique_ptr<TZvWhereItems> TZvOracleSelectParser::CreateWhereItems() {
    return std::make_unique<TZvOracleWhereItems>(this);
}

void TZvOracleSelectParser::DefineOperators() {
    TZvOperators& List = GetOperators();
    for (const char* Word : {"=", "!=", "<", "<=", ">", ">="})
        List.AddOperator(Word, Word);
    // The word operators as the standard list defines them, from "LIKE" on.
    TZvOperators Standard(nullptr);
    Standard.AddStandardOperators();
    for (int I = 0; I < Standard.Count(); ++I) {
        const TZvOperator& S = *Standard.Items(I);
        const char First = S.GetName().empty() ? '\0' : S.GetName().front();
        if (First >= 'A' && First <= 'Z')
            List.AddOperator(S.GetCaption(), S.GetName(), S.GetCount(), S.GetRelate(), S.GetPrefix(),
                             S.GetPostfix(), S.GetCommaList());
    }
    for (const char* Word : {"ANY", "ALL", "EXISTS"})
        List.AddOperator(Word, Word);
}

void TZvOracleSelectParser::DoParseJoinDef() {
    if (TokenIs("FULL") && !IsFullOuterJoinSupported()) {
        Fail(zvpeInadmissibleJoin);
        return;
    }
    TZvFetchFirstSelectParser::DoParseJoinDef();
}

void TZvOracleSelectParser::DoParseCriterionSide(TZvCriterion&, bool Right) {
    // The left side opens each simple condition.
    if (!Right)
        Marks.emplace_back();
    if (Marks.empty() || !TokenHas(tkSpecial) || !TokenIs("(+)"))
        return;
    (Right ? Marks.back().Right : Marks.back().Left) = true;
    NextToken();
}

void TZvOracleSelectParser::DoParseWhereClause() {
    Marks.clear();
    TZvFetchFirstSelectParser::DoParseWhereClause();
    if (State != ssError)
        TakeJoinsFromWhere();
    Marks.clear();
}

void TZvOracleSelectParser::DoParseHavingClause() {
    Marks.clear();
    TZvFetchFirstSelectParser::DoParseHavingClause();
    for (const TOuterMarks& M : Marks) {
        if (State != ssError && (M.Left || M.Right))
            Fail(zvpeInadmissibleJoin);
    }
    Marks.clear();
}

// Walks List in reading order, giving each simple condition the marks read with it (Next counts
// them). A mark under OR or NOT (Guarded) makes the walk fail: the server would not read such a
// condition as a join. ItemMarks, when given, receives the marks of each item of List.
bool TZvOracleSelectParser::CheckMarks(const TZvCriterions& List, bool Guarded, std::size_t& Next,
                                       std::vector<TOuterMarks>* ItemMarks) const {
    Guarded = Guarded || List.GetFilter() != cfAll;
    for (int I = 0; I < List.Count(); ++I) {
        const TZvCriterion& Item = *List.Items(I);
        TOuterMarks ItemMark;
        if (Item.GetSubItems().Count() > 0) {
            if (!CheckMarks(Item.GetSubItems(), Guarded, Next, nullptr))
                return false;
        } else if (Next < Marks.size()) {
            ItemMark = Marks[Next++];
            if (Guarded && (ItemMark.Left || ItemMark.Right))
                return false;
        }
        if (ItemMarks)
            ItemMarks->push_back(ItemMark);
    }
    return true;
}

void TZvOracleSelectParser::TakeJoinsFromWhere() {
    TZvWhereItems& Where = GetWhereItems();
    std::size_t Next = 0;
    std::vector<TOuterMarks> ItemMarks;
    if (!CheckMarks(Where, false, Next, &ItemMarks)) {
        Fail(zvpeInadmissibleJoin);
        return;
    }
    // Only the conditions that all must hold can be joins; under OR or NOT no mark was found.
    if (Where.GetFilter() != cfAll)
        return;
    std::vector<int> Taken;
    for (int I = 0; I < Where.Count(); ++I) {
        if (Where.Items(I)->GetSubItems().Count() > 0)
            continue;
        const int Made = MakeJoin(*Where.Items(I), ItemMarks[static_cast<std::size_t>(I)]);
        if (Made < 0) {
            Fail(zvpeInadmissibleJoin);
            return;
        }
        if (Made > 0)
            Taken.push_back(I);
    }
    for (auto It = Taken.rbegin(); It != Taken.rend(); ++It)
        Where.Delete(*It);
}

// The table of the statement whose column Operand names by its qualifier; null for anything else.
TZvTableDef* TZvOracleSelectParser::ColumnTable(const TZvFunctionDef& Operand) {
    if (Operand.GetKind() != fkIdentifier || Operand.HasArguments())
        return nullptr;
    TZvSQLScanner& S = GetScanner();
    const char Open = S.GetIdentQuote();
    const std::string Reference = ExtractTableName(Operand.GetName(), Open, S.GetQuotePair(Open));
    if (Reference.empty())
        return nullptr;
    TZvTableDefs& Tables = GetTableDefs();
    if (TZvTableDef* Table = Tables.FindByAlias(Reference))
        return Table;
    // A quoted qualifier names the table by its bare alias.
    if (TZvTableDef* Table = Tables.FindByAlias(S.ProcessIdent(Reference)))
        return Table;
    return Tables.FindByName(Reference);
}

int TZvOracleSelectParser::MakeJoin(const TZvCriterion& Criterion, TOuterMarks Marked) {
    const bool HasMark = Marked.Left || Marked.Right;
    const TZvFunctionDefs& RightSide = Criterion.GetRightSide();
    TZvTableDef* Left = ColumnTable(Criterion.GetLeftSide());
    TZvTableDef* Right = RightSide.Count() == 1 ? ColumnTable(*RightSide.Items(0)) : nullptr;
    const bool IsJoin =
        Left && Right && Left != Right && GetScanner().IsJoinOperator(Criterion.GetOperatorCaption());
    // Both sides marked would make both tables optional, which no join is.
    if (!IsJoin || (Marked.Left && Marked.Right))
        return HasMark ? -1 : 0;
    TZvSQLScanner& S = GetScanner();
    const char Open = S.GetIdentQuote();
    const char Close = S.GetQuotePair(Open);
    TZvJoinDef* Join = Left->GetJoinDefs().Add();
    Join->SetLeftField(ExtractFieldName(Criterion.GetLeftSide().GetName(), Open, Close));
    Join->SetTableAlias(Right->GetPrefix());
    Join->SetRightField(ExtractFieldName(RightSide.Items(0)->GetName(), Open, Close));
    Join->SetOperator(Criterion.GetOperatorCaption());
    // The marked column's table is the optional one.
    Join->SetKind(Marked.Right ? zvjLOuterJoin : Marked.Left ? zvjROuterJoin : zvjInnerJoin);
    return 1;
}

} // namespace zv
