// TZvSelectParser as the owner of the query model: its scanner, the table list, the GROUP BY and
// ORDER BY lists, the aggregate names and the script format, and the settings through which a
// dialect tells the model how to compare, quote and place names. Reading SELECT text into the
// model is added to this class by the statement reader.
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "ZvCollection.h"
#include "ZvJoinDefs.h"
#include "ZvScanner.h"
#include "ZvScriptFormat.h"
#include "ZvStringList.h"
#include "ZvUtils.h"
#include "ZvWordList.h"

namespace zv {

class TZvTableDefs;
// The condition trees and comparison operators live in ZvCriteria.h.
class TZvOperators;
class TZvWhereItems;
class TZvHavingItems;

class TZvTableDef;
class TZvFunctionDef;
class TZvFunctionDefs;
class TZvFieldDef;
class TZvCriterion;
class TZvCriterions;
class TZvOperator;

// The states of the statement reader, one per clause.
enum TZvSelectState : std::uint8_t {
    ssBegin,
    ssError,
    ssEnd,
    ssSelect,
    ssFieldDefs,
    ssInto,
    ssFrom,
    ssTableDefs,
    ssWhere,
    ssGroupBy,
    ssHaving,
    ssOrderBy,
    ssAppendix,
};

// What DoParseExpression may do, as a set of bits.
enum TZvParserExprParam : std::uint8_t {
    pepCreateTableDef = 1 << 0,  // a table the expression names that is not yet known is created
    pepEnableAlias = 1 << 1,     // an alias may follow, with or without "AS"
    pepKeepQualifier = 1 << 2,   // a column keeps its table qualifier in its name (conditions)
};
using TZvParserExprParams = std::uint8_t;

// Called instead of raising a parse error: the parser, the message, the position (the column at
// which the offending token begins), the line and the token.
using TZvParserErrorEvent = std::function<void(TZvSelectParser& Parser, const std::string& Message,
                                               std::int32_t Position, std::int32_t Line, const std::string& Token)>;

class TZvSelectParser : public TZvPersistent {
public:
    TZvSelectParser();
    // Frees the tables first: their clean-up reaches into the lists below.
    ~TZvSelectParser() override;

    // Copies the statement model and settings of Source (the tables with their fields as the
    // collections copy; lists, Distinct, script format, case setting and aggregates as values).
    // The scanner stays this parser's own. Source is not const: its lazily made parts may be
    // made while it is read.
    virtual void Assign(TZvSelectParser& Source);
    // Empties the model: tables, WHERE and HAVING criteria, GROUP BY and ORDER BY lists, Distinct.
    virtual void Clear();

    // The scanner, made by CreateScanner on first use: a constructor cannot reach the override
    // of a derived dialect, so every part that needs the scanner asks for it here.
    // Inline: every token test goes through it.
    TZvSQLScanner& GetScanner() {
        if (!Scanner)
            MakeScanner();
        return *Scanner;
    }
    // The table list, made by CreateTableDefs on first use for the same reason.
    TZvTableDefs& GetTableDefs();
    TZvOrderByItems& GetOrderByItems() { return OrderByItems; }
    TZvGroupByItems& GetGroupByItems() { return GroupByItems; }
    TZvScriptFormat& GetScriptFormat() { return ScriptFormat; }
    void SetScriptFormat(const TZvScriptFormat& Value) { ScriptFormat.Assign(Value); }
    // The aggregate-function names, filled from GetCommaAggregates by DefineAggregates on first use.
    const TZvWordList& GetAggregates();
    void SetAggregates(const TZvWordList& Value);

    // The WHERE and HAVING criteria (ZvCriteria.h) and the comparison operators (ZvOperators.h),
    // each made on first use by CreateWhereItems, CreateHavingItems and DefineOperators (same
    // reason as the scanner). Clear empties both criteria lists; the operators stay.
    TZvWhereItems& GetWhereItems();
    TZvHavingItems& GetHavingItems();
    TZvOperators& GetOperators();
    void SetOperators(const TZvOperators& Value);

    // Keyword and function-name case under the script format; S may hold blanks.
    std::string ProcessKeyword(std::string_view S) const;
    std::string ProcessFunction(std::string_view S) const;

    virtual bool GetDistinct() { return Distinct; }
    virtual void SetDistinct(bool Value) { Distinct = Value; }
    // The text between a table name and its alias in a FROM entry.
    virtual std::string GetTableNameAndAliasDeilm() { return " "; }
    // Whether a FROM entry may be a stored procedure with parameters.
    virtual bool GetEnableStoredProc() { return true; }
    // True when joins are written in the WHERE clause instead of the FROM clause.
    virtual bool IsOracleJoins() { return false; }
    // Whether identifiers compare with regard to case. A setting, false by default since
    // unquoted SQL names are case-insensitive in practice; dialects that say otherwise override.
    virtual bool GetCaseSensitiveIdentifiers() { return CaseSensitiveIdentifiers; }
    virtual void SetCaseSensitiveIdentifiers(bool Value) { CaseSensitiveIdentifiers = Value; }
    // True when the dialect writes column-to-constant comparisons as join conditions.
    virtual bool IsConstInJoin() { return false; }
    virtual bool IsFullOuterJoinSupported() { return true; }
    // True when a stored procedure without input parameters is still written with "()".
    virtual bool IsProcEmptyInputParamsBracket() { return false; }
    // True when generated aliases are written in lower case.
    virtual bool IsLowerCaseAliases() { return false; }
    virtual std::string GetCommaAggregates() { return "SUM,MIN,MAX,AVG,COUNT"; }


    // --- reading SELECT text (ZvSelectParserParse.cpp, ZvSelectParserFrom.cpp,
    // ZvSelectParserExpr.cpp) ---

    // Clears the model and reads Text into it. A syntax error raises EZvParserError, or is
    // handed to OnParserError when that is set (then this returns normally with GetValid false).
    void SetExpression(std::string_view Text);
    // The statement generated from the model (never the text that was read).
    virtual std::string GetExpression();
    // What GetExpression returns, appended to Out: a caller writing many statements into one
    // buffer makes no string for each.
    void AppendExpression(std::string& Out);
    // True after a parse without error.
    bool GetValid() const { return Valid; }
    TZvSelectState GetState() const { return State; }
    // Reports an error of the given type at Column (the column after the token) and Line,
    // through ProcessError.
    void RaiseError(std::int32_t ErrorType, const std::string& Token, std::int32_t Column, std::int32_t Line);
    // Called instead of raising a parse error, when set.
    TZvParserErrorEvent OnParserError;
protected:
    virtual std::unique_ptr<TZvSQLScanner> CreateScanner();
    virtual std::unique_ptr<TZvTableDefs> CreateTableDefs();
    virtual std::unique_ptr<TZvWhereItems> CreateWhereItems();
    virtual std::unique_ptr<TZvHavingItems> CreateHavingItems();
    virtual void DefineAggregates();
    // Fills the fresh operator list with the standard operators; a dialect calls this and adds
    // its own, or fills the list itself.
    virtual void DefineOperators();
    // The text GetExpression puts between "SELECT " and the field list, ending in a blank when
    // not empty: "DISTINCT " here; a dialect adds its own select options around it.
    virtual std::string GetSelectClauseScript();
    // The text GetExpression puts after the statement's last clause: empty here; a dialect's
    // trailing clauses, each a line of its own ending in "\r\n".
    virtual std::string GetAppendixScript();


    // --- the statement reader: one handler per state, each overridable by a dialect ---
    // True for the keywords that start a join in the FROM list.
    virtual bool IsJoinDef(std::string_view Token);
    virtual void DoParse();
    virtual void DoParseBegin();
    virtual void DoParseSelectClause();
    virtual void DoParseIntoClause();
    // One output field at the current token, added to the table it names.
    virtual void DoParseFieldDef();
    virtual void DoParseFieldDefs();
    virtual void DoParseFromClause();
    // One entry of the FROM list at the current token, merged into the table list.
    virtual void DoParseTableDef();
    // The parameter list of a stored procedure, after its "(": input fields of Table.
    virtual void DoParseProcParams(TZvTableDef& Table);
    // A join at its keyword, or one more condition of it at "AND".
    virtual void DoParseJoinDef();
    virtual void DoParseTableDefs();
    virtual void DoParseWhereClause();
    virtual void DoParseGroupByClause();
    virtual void DoParseHavingClause();
    virtual void DoParseOrderByClause();
    // Trailing clauses the dialect knows; the generic reader knows none.
    virtual void DoParseAppendix();
    // A condition (WHERE or HAVING) into Target, by operator precedence.
    virtual void DoParseCriterions(TZvCriterions& Target);
    // Called after each side of a simple condition is read: the left operand (Right false, before
    // the operator) and the right operands (Right true). The generic reader reads nothing there; a
    // dialect that writes a mark after an operand (an outer-join mark) reads it here.
    virtual void DoParseCriterionSide(TZvCriterion& /*Criterion*/, bool /*Right*/) {}
    // One operand or expression at the current token into Target; returns the text by which it
    // names its table (alias or name as written), empty when it names none. See the reader's
    // file for the accepted forms.
    virtual std::string DoParseExpression(TZvFunctionDef& Target, TZvParserExprParams Params);
    // 1 for a token, 2 for the end of the text.
    virtual std::int32_t GetErrorTypeByToken(const std::string& Token);
    // Marks the parse invalid and raises the error, or hands it to OnParserError.
    virtual void ProcessError(std::int32_t ErrorType, const std::string& Token, std::int32_t Column,
                              std::int32_t Line);

    // The token helpers the handlers share.
    // True when the current token is Word (any case) and was not read inside quotes. Inline: the
    // reader tests nearly every token against several words.
    bool TokenIs(std::string_view Word) {
        const TZvSQLScanner& S = GetScanner();
        return !S.InQuote && SameText(S.Token, Word);
    }
    bool TokenHas(TTokenKind Kind) { return GetScanner().TokenKinds.Contains(Kind); }
    bool AtEnd() { return TokenHas(tkEnd); }
    void NextToken() {
        PrevTokenEnd = TokenSourceEnd();
        GetScanner().GetNextToken();
    }
    // The current token as it stands in the text (a quoted token with its quotes).
    std::string TokenSource();
    // Source text that ends at End (0-based, exclusive), with the one quote added that a quoted
    // text closed only by the end of the statement lacks ('it'' written last reads as it' and is
    // written 'it'''), so that it reads back the same wherever it stands.
    std::string CompleteEndQuote(std::string Source, std::size_t End);
    // One part of a dotted table reference as a table's name: quoted parts unquoted.
    std::string BarePart(std::string_view Part);
    // The current token as (one part of) the name of a table of the FROM list.
    std::string QuotedTableName();
    std::string QuotedPart(std::string Name);
    // A name token as the model keeps a name: quoted content with doubled quotes made single.
    std::string TokenName();
    // A name token as the model keeps an alias or table reference: as written when it needs its
    // quotes, else bare.
    std::string TokenAlias();
    // The same from the token's TokenName, when the caller needs both.
    std::string TokenAliasOf(std::string Name);
    // TokenAliasOf(Name) appended to Out, without a string of its own.
    void AppendTokenAliasOf(std::string& Out, const std::string& Name);
    // True when the token's name Name is kept in quotes as an alias or reference.
    bool NeedsQuotedAlias(std::string_view Name);
    // Sets the state to ssError with an explicit error type (0: chosen by the token).
    void Fail(std::int32_t Type = 0);
    // The end of the select clause shared by every dialect: ssFieldDefs when the current token can
    // begin the field list, else ssError. Dialects that read their own words instead of (or
    // around) DISTINCT call this rather than the generic DoParseSelectClause.
    void BeginFieldDefs();
    // At the keyword before a clause's number (LIMIT, TOP ...): reads the next token, which must
    // be an integer, and moves past it. Digits gets its text as written; Value the number, which
    // must fit 32 bits. Otherwise the statement fails at that token and false is returned.
    bool ReadClauseDigits(std::string& Digits);
    bool ReadClauseNumber(std::int32_t& Value);
    // The optional "PERCENT" and "WITH TIES" that close a clause limiting the rows, in this order.
    // False, with the statement failed at the token after WITH, when TIES does not follow it.
    bool ReadPercentAndTies(bool& Percent, bool& WithTies);
    // After a dialect's trailing clause, which is the statement's last: ssEnd at the end of the
    // text, else ssError at the token that follows.
    void EndAfterLastClause();

    TZvSelectState State = ssBegin;
    std::int32_t ErrorType = 0;
    bool Valid = false;
private:
    std::unique_ptr<TZvSQLScanner> Scanner;
    void MakeScanner();
    bool Distinct = false;
    bool CaseSensitiveIdentifiers = false;
    TZvOrderByItems OrderByItems;
    TZvGroupByItems GroupByItems;
    std::unique_ptr<TZvWhereItems> WhereItems;
    std::unique_ptr<TZvHavingItems> HavingItems;
    std::unique_ptr<TZvOperators> Operators;
    TZvWordList Aggregates;
    bool AggregatesDefined = false;
    TZvScriptFormat ScriptFormat;
    // Declared last so that it is destroyed first (the destructor also frees it explicitly):
    // the tables' clean-up touches the lists above.
    std::unique_ptr<TZvTableDefs> TableDefs;

    // --- reader internals ---
    void RunStateHandler();
    void DropLoneStar();
    bool NextTokenIs(std::string_view Word);
    std::string ReadListItem();
    bool IsCrossJoinAhead();
    void MergeTableDef(const std::string& Name, const std::string& Alias, const TZvTableDef* Procedure);
    bool RenamesNoReference(const TZvTableDef& Table, std::string_view Name);
    bool ReadJoinKeywords();
    std::string ReadJoinOperand(TZvFunctionDef& Operand);
    TZvTableDef* FindJoinTable(const TZvFunctionDef& Operand, const std::string& TableRef);
    void PlaceJoin(const TZvFunctionDef& Left, const std::string& LeftRef, const TZvFunctionDef& Right,
                   const std::string& RightRef, const std::string& Operator);
    void AddJoin(TZvTableDef& Owner, const TZvFunctionDef& Near, const TZvFunctionDef& Far,
                 const TZvTableDef* Target, const std::string& Operator, bool Swapped);
    // Where the current token's source text begins (1-based: at its opening quote). Inline, as
    // the two below: every operand asks them.
    std::int32_t TokenSourceStart() {
        const TZvSQLScanner& S = GetScanner();
        return S.InQuote ? S.TokenPos - 1 : S.TokenPos;
    }
    // Where the current token's source text ends (1-based, exclusive: after its closing quote).
    // Inline: every NextToken asks it.
    std::int32_t TokenSourceEnd() {
        const TZvSQLScanner& S = GetScanner();
        return S.InQuote ? std::min(S.Position + 1, S.Length + 1) : S.Position;
    }
    std::string SourceText(std::int32_t Start, std::int32_t End);
    bool SkipBracketed();
    bool SkipArgument();
    bool SkipCase();
    bool IsSignToken() { return TokenIs("-") || TokenIs("+"); }
    bool IsNameToken() {
        const TZvSQLScanner& S = GetScanner();
        return S.InQuote ? S.TokenKinds.Contains(tkIdent) : IsIntersected(S.TokenKinds, {tkIdent, tkFunction, tkKeyword});
    }
    bool IsCallAhead();
    // One operand into Target. TableRef, which must start empty, ends as the text naming the
    // operand's table (empty when it names none, or the operand keeps its qualifier).
    bool ReadOperand(TZvFunctionDef& Target, TZvParserExprParams Params, std::string& TableRef);
    bool ReadNameOrCall(TZvFunctionDef& Target, TZvParserExprParams Params, std::string& TableRef);
    bool ReadArguments(TZvFunctionDefs& Arguments);
    bool ArgumentsWriteAsSpecialToken(const TZvFunctionDefs& Arguments);
    bool ReadArgument(TZvFunctionDef& Argument);
    std::string PlaceCall(TZvFunctionDef& Call);
    void ReadAlias(TZvFunctionDef& Target);
    // DoParseExpression of an output field, with its alias, the field known to ReadAlias.
    std::string ReadFieldExpression(TZvFieldDef& Field);
    TZvTableDef* FindOrCreateTable(const std::string& Reference);
    // The table a qualifier names: by alias as written, or by the bare alias of a quoted one.
    TZvTableDef* FindTableByReference(const std::string& Reference);
    // The same, leaving the reference's BareReference in Bare when no table carries the alias as
    // written (the caller that goes on to look the table up by name needs it too).
    TZvTableDef* FindTableByReference(const std::string& Reference, std::string& Bare);
    bool TakeAsWritten(TZvFunctionDef& Target, std::int32_t Start, bool Passed);
    // A table reference as the FROM reader names a table: each dot-separated part unquoted
    // ("my table".x is the table my table.x).
    std::string BareReference(const std::string& Reference);
    bool StartsCondition();
    void ParseCriterion(TZvCriterion& Criterion);
    const TZvOperator* FirstSingleOperandOperator();
    // How Words stand to the operators' names: Begins when some name is Words or begins with them
    // (whole words, any case), GoesOn when some such name has more words after them.
    // Exact is the first operator named Words, null when none is.
    struct TOperatorReach {
        bool Begins = false;
        bool GoesOn = false;
        const TZvOperator* Exact = nullptr;
    };
    TOperatorReach OperatorReach(std::string_view Words);
    const TZvOperator* ReadCriterionOperator();
    TOperatorReach ReadLongerOperator(TOperatorReach Reach);
    void ReadRightOperands(TZvCriterion& Criterion, const TZvOperator& Operator);
    void ReadRightOperand(TZvFunctionDef& Operand, bool InBrackets);

    // The join reader's memory: the current left-hand table (alias or name), the kind of the last
    // join (an "AND" continues it) and the table the last FROM entry or join read.
    std::string LeftHandTable;
    TZvJoinKind LastJoinKind = zvjInnerJoin;
    TZvTableDef* JoinedTable = nullptr;
    bool ExpressionHadAlias = false;
    // The output field ReadFieldExpression is reading, null outside it.
    TZvFieldDef* FieldBeingRead = nullptr;
    // The table an expression read with pepCreateTableDef found or made for its qualifier, so
    // that the field reader does not look it up a second time; null when it named none.
    TZvTableDef* ExpressionTable = nullptr;
    // Where the token before the current one ended in the text (1-based, exclusive).
    std::int32_t PrevTokenEnd = 1;
    // Nested calls and condition brackets are read by recursion or grow a tree that is written
    // by recursion, so their depth is bounded well inside the stack; no real statement comes near.
    // The "(" that would open level MaxNesting + 1 is an invalid token.
    static constexpr std::int32_t MaxNesting = 1000;
    std::int32_t CallDepth = 0;
    // Set when the bound was passed: a call argument that fails then is not read again as text.
    bool NestingExceeded = false;
    // The condition reader's working lists (ZvSelectParserExpr.cpp), kept from one condition to
    // the next so that their room is made once rather than for every WHERE and HAVING clause.
    struct TCriterionScratch;
    struct TCriterionScratchDeleter {
        void operator()(TCriterionScratch* Scratch) const;
    };
    std::unique_ptr<TCriterionScratch, TCriterionScratchDeleter> CriterionScratch;
};

// Word appended to Out in the parser's case for keywords; as it stands without a parser. The
// writers' counterpart of ProcessKeyword. Inline: a statement writes some twenty keywords, and
// the common setting (as they stand) is one append and no casing pass.
inline void AppendKeyword(std::string& Out, TZvSelectParser* Parser, std::string_view Word) {
    const TZvFormatMode Mode = Parser ? Parser->GetScriptFormat().GetKeywordsFormat() : qfmAsIs;
    if (Mode == qfmAsIs)
        Out.append(Word);
    else
        AppendCase(Out, Word, Mode);
}

} // namespace zv
