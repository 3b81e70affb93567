// The FROM list: table references (qualified names, aliases, stored procedures with their
// parameters, CROSS JOIN) and joins with their ON conditions, placed on the table that holds them.
#include "ZvSelectParser.h"

#include <optional>
#include <utility>

#include "ZvErrors.h"
#include "ZvJoinDefs.h"
#include "ZvTableDefs.h"
#include "ZvUtils.h"

namespace zv {

namespace {

// The comparison that says the same with its operands swapped: "B.X < A.Y" is "A.Y > B.X".
std::string MirroredComparison(const std::string& Operator) {
    static const std::pair<std::string_view, std::string_view> Mirrors[] = {
        {"<", ">"}, {">", "<"}, {"<=", ">="}, {">=", "<="}, {"!<", "!>"}, {"!>", "!<"}};
    for (const auto& [From, To] : Mirrors) {
        if (Operator == From)
            return std::string(To);
    }
    return Operator;
}

// Whether a join operand writes any text. A column of a table of the statement is written as its
// name, which quoting never empties when it begins with a letter, digit or underscore (no quote
// character is one); only other operands are written to find out.
bool WritesOperand(const TZvFunctionDef& Operand, const TZvTableDef* Table) {
    const std::string& Name = Operand.GetName();
    const char First = Name.empty() ? '\0' : Name.front();
    const bool Plain = (First >= 'A' && First <= 'Z') || (First >= 'a' && First <= 'z') ||
                       (First >= '0' && First <= '9') || First == '_';
    if (Table != nullptr && Plain)
        return true;
    return !Operand.GetScript().empty();
}

// Whether a join of the statement aims at a table named A or B, compared without regard to case
// (a superset of what either case rule matches). Walked only for a few tables: the answer lets a
// FROM entry skip reference updates that it would find nothing to update with.
constexpr int FewTables = 16;
bool AnyJoinAimsAt(const TZvTableDefs& Tables, std::string_view A, std::string_view B) {
    for (int T = 0; T < Tables.Count(); ++T) {
        const TZvJoinDefs* Joins = Tables.Items(T)->FindJoinDefs();
        for (int J = 0; Joins != nullptr && J < Joins->Count(); ++J) {
            const std::string& Target = Joins->Items(J)->GetTableAlias();
            if (SameText(Target, A) || SameText(Target, B))
                return true;
        }
    }
    return false;
}

} // namespace

bool TZvSelectParser::IsJoinDef(std::string_view Token) {
    // Each word that starts a join has an initial of its own, so a token is compared with the one
    // word its initial names, if any.
    static constexpr std::string_view Words[] = {"INNER", "LEFT", "RIGHT", "FULL", "JOIN"};
    if (Token.empty())
        return false;
    const char Initial = UpCase(Token.front());
    for (const std::string_view Word : Words) {
        if (Word.front() == Initial)
            return SameText(Token, Word);
    }
    return false;
}

void TZvSelectParser::DoParseTableDefs() {
    TZvTableDefs& Tables = GetTableDefs();
    while (State == ssTableDefs) {
        if (AtEnd()) {
            State = ssEnd;
        } else if (TokenHas(tkKeyword) && !GetScanner().InQuote) {
            if (IsJoinDef(GetScanner().Token)) {
                DoParseJoinDef();
                while (State != ssError && TokenIs("AND"))
                    DoParseJoinDef();
                if (State != ssError && IsConstInJoin())
                    Tables.UpdateJoinsWithConsts();
                if (State != ssError && TokenIs(","))
                    NextToken();
            } else if (TokenIs("WHERE")) {
                State = ssWhere;
            } else if (TokenIs("GROUP") && NextTokenIs("BY")) {
                NextToken();
                State = ssGroupBy;
            } else if (TokenIs("HAVING")) {
                State = ssHaving;
            } else if (TokenIs("ORDER") && NextTokenIs("BY")) {
                NextToken();
                State = ssOrderBy;
            } else {
                State = ssAppendix;
            }
        } else if (IsIntersected(GetScanner().TokenKinds, {tkIdent, tkString})) {
            DoParseTableDef();
            if (State != ssError && TokenIs(","))
                NextToken();
        } else {
            // Only a name can be a table reference.
            Fail();
        }
    }
    if (State == ssError)
        Tables.Clear();
    else if (IsConstInJoin())
        Tables.UpdateJoinsWithConsts();
}

// A part of a table's name read in quotes of any kind is one part: see QuotedPart.
std::string TZvSelectParser::QuotedTableName() {
    return GetScanner().InQuote ? QuotedPart(TokenName()) : TokenName();
}

void TZvSelectParser::DoParseTableDef() {
    // An empty quoted name ("" or '') names no table, and an empty name is written as no text.
    if (GetScanner().Token.empty()) {
        Fail();
        return;
    }
    // owner.table and longer qualified names are one name.
    std::string Name = QuotedTableName();
    NextToken();
    while (TokenIs(".")) {
        NextToken();
        if (!TokenHas(tkIdent)) {
            Fail();
            return;
        }
        Name += '.';
        Name += QuotedTableName();
        NextToken();
    }
    if (!(TokenIs(",") || TokenIs("(") || AtEnd() || TokenHas(tkKeyword) || TokenHas(tkIdent))) {
        Fail();
        return;
    }
    // A stored procedure's parameters are read into a table of its own, merged like its fields.
    std::optional<TZvTableDef> Procedure;
    if (TokenIs("(")) {
        if (!GetEnableStoredProc()) {
            Fail();
            return;
        }
        NextToken();
        Procedure.emplace();
        Procedure->SetParser(this);
        Procedure->SetName(Name);
        Procedure->SetTableType(qttStoredProc);
        DoParseProcParams(*Procedure);
        if (State == ssError)
            return;
        NextToken();
    }
    if (TokenIs("AS"))
        NextToken();
    // Without an alias, the entry is named by its name.
    const bool Aliased = TokenHas(tkIdent) && !IsCrossJoinAhead();
    if (Aliased && GetScanner().Token.empty()) {
        Fail();
        return;
    }
    const std::string Alias = Aliased ? TokenAlias() : Name;
    if (Aliased) {
        NextToken();
        if (Procedure)
            Procedure->SetAlias(Alias);
    }
    MergeTableDef(Name, Alias, Procedure ? &*Procedure : nullptr);
    // A cross join is one more entry of the FROM list, like a comma, with no join.
    if (IsCrossJoinAhead()) {
        NextToken();
        NextToken();
    }
}

bool TZvSelectParser::IsCrossJoinAhead() {
    return TokenIs("CROSS") && NextTokenIs("JOIN");
}

// An entry named earlier by a qualified column of the field list is completed; otherwise the
// entry is added. Either way it becomes the current left-hand table of the join reader. Procedure
// holds a stored procedure's name, alias and parameters; null for a table.
void TZvSelectParser::MergeTableDef(const std::string& Name, const std::string& Alias,
                                    const TZvTableDef* Procedure) {
    TZvTableDefs& Tables = GetTableDefs();
    TZvTableDef* Table = Alias.empty() ? Tables.FindByName(Name) : FindTableByReference(Alias);
    if (Table != nullptr) {
        if (Procedure != nullptr) {
            TZvFieldDefs& Fields = Table->GetFieldDefs();
            const TZvFieldDefs& NewFields = Procedure->GetFieldDefs();
            for (int I = 0; I < NewFields.Count(); ++I)
                Fields.Add()->Assign(*NewFields.Items(I));
        }
        const TZvTableDefType Type = Procedure != nullptr ? qttStoredProc : qttTable;
        if (RenamesNoReference(*Table, Name)) {
            Table->Define(Alias, Name, Type);
        } else {
            Table->SetTableType(Type);
            Table->SetName(Name);
            Table->SetAlias(Alias);
        }
    } else if (Procedure != nullptr) {
        Table = Tables.Add();
        Table->Assign(*Procedure);
    } else {
        Table = Tables.Add();
        Table->Define(Alias, Name, qttTable);
    }
    LeftHandTable = Table->GetPrefix();
    JoinedTable = Table;
}

// Whether naming Table Name and then giving it an alias leaves every other part of the statement
// as it is: no join aims at its present alias or at Name (the two aliases it passes through), and
// no ORDER BY entry has been read yet. A table first named by a qualified column of the field list
// is completed so, and then takes its name and alias without the reference updates.
bool TZvSelectParser::RenamesNoReference(const TZvTableDef& Table, std::string_view Name) {
    const TZvTableDefs& Tables = GetTableDefs();
    return Tables.Count() <= FewTables && GetOrderByItems().Count() == 0 &&
           !AnyJoinAimsAt(Tables, Table.GetAlias(), Name);
}

// Parameters are literals (kept as values of their type), ":name" references (bound by name,
// value unassigned) or NULL; each becomes an input field of the procedure's table.
void TZvSelectParser::DoParseProcParams(TZvTableDef& Table) {
    TZvFieldDefs& Params = Table.GetFieldDefs();
    int Number = 0;
    while (!TokenIs(")")) {
        if (AtEnd()) {
            Fail();
            return;
        }
        TZvFieldDef* Param = Params.Add();
        Param->SetUsage(3);
        ++Number;
        if (TokenIs(":")) {
            NextToken();
            Param->SetName(TokenName());
        } else {
            Param->SetName("PARAM" + std::to_string(Number));
            if (TokenIs("NULL")) {
                Param->SetValue(TZvValue::Null());
            } else if (TokenHas(tkInteger)) {
                Param->SetDataType(ftInteger);
                Param->SetValue(TZvValue(GetScanner().Token));
            } else if (TokenHas(tkFloat)) {
                Param->SetDataType(ftFloat);
                Param->SetValue(TZvValue(GetScanner().Token));
            } else if (TokenHas(tkString)) {
                Param->SetDataType(ftString);
                Param->SetValue(TZvValue(TokenName()));
            } else {
                Fail();
                return;
            }
        }
        NextToken();
        if (TokenIs(","))
            NextToken();
        else if (!TokenIs(")")) {
            Fail();
            return;
        }
    }
}

void TZvSelectParser::DoParseJoinDef() {
    const bool Continuation = TokenIs("AND");
    if (!Continuation && !ReadJoinKeywords())
        return;
    TZvTableDefs& Tables = GetTableDefs();
    if (!Continuation) {
        std::string Before = LeftHandTable;
        if (Tables.FindByAlias(Before) == nullptr || !IsIntersected(GetScanner().TokenKinds, {tkIdent, tkString})) {
            Fail();
            return;
        }
        DoParseTableDef();
        if (State == ssError)
            return;
        LeftHandTable = std::move(Before);
        if (!TokenIs("ON")) {
            Fail();
            return;
        }
    }
    NextToken();
    while (TokenIs("("))
        NextToken();
    TZvFunctionDef Left, Right;
    const std::string LeftTable = ReadJoinOperand(Left);
    if (State == ssError)
        return;
    if (!TokenHas(tkComparison)) {
        Fail();
        return;
    }
    const std::string Operator = GetScanner().Token;
    NextToken();
    const std::string RightTable = ReadJoinOperand(Right);
    if (State == ssError)
        return;
    while (TokenIs(")"))
        NextToken();
    PlaceJoin(Left, LeftTable, Right, RightTable, Operator);
}

// The join's keywords up to and including "JOIN"; false (with the state ssError) when they are
// not a join.
bool TZvSelectParser::ReadJoinKeywords() {
    LastJoinKind = TokenIs("LEFT")    ? zvjLOuterJoin
                   : TokenIs("RIGHT") ? zvjROuterJoin
                   : TokenIs("FULL")  ? zvjFOuterJoin
                                      : zvjInnerJoin;
    if (LastJoinKind != zvjInnerJoin) {
        NextToken();
        if (TokenIs("OUTER"))
            NextToken();
    } else if (TokenIs("INNER")) {
        NextToken();
    }
    if (!TokenIs("JOIN")) {
        Fail();
        return false;
    }
    NextToken();
    return true;
}

// One side of a join condition, stopping at a keyword, a comparison or a special token. Returns
// the table reference of a column operand (empty for a constant or an unqualified name).
std::string TZvSelectParser::ReadJoinOperand(TZvFunctionDef& Operand) {
    if (AtEnd() || (TokenHas(tkKeyword) && !TokenHas(tkFunction)) || TokenHas(tkComparison)) {
        Fail();
        return {};
    }
    Operand.SetParser(this);
    return DoParseExpression(Operand, 0);
}

// Finds the table of a join operand: a qualified column of a table of the statement.
TZvTableDef* TZvSelectParser::FindJoinTable(const TZvFunctionDef& Operand, const std::string& TableRef) {
    if (TableRef.empty() || Operand.GetKind() != fkIdentifier || Operand.GetName().empty())
        return nullptr;
    TZvTableDef* Table = FindTableByReference(TableRef);
    return Table != nullptr ? Table : GetTableDefs().FindByName(TableRef);
}

// Stores the condition as a join of one of its two tables (see inside for which), after the
// validity check: both operands must name columns of tables of the statement, or, where the
// dialect writes constants into join conditions, at least one; and two columns must belong to
// two tables. A join links a table to another one: a comparison of two columns of one table has
// no place in the join chains (written as a join of the table to itself, it would name the table
// twice in FROM), so it is refused like any other condition that is no join.
void TZvSelectParser::PlaceJoin(const TZvFunctionDef& Left, const std::string& LeftRef,
                                const TZvFunctionDef& Right, const std::string& RightRef,
                                const std::string& Operator) {
    TZvTableDef* LeftTable = FindJoinTable(Left, LeftRef);
    TZvTableDef* RightTable = FindJoinTable(Right, RightRef);
    const bool Admissible = IsConstInJoin() ? (LeftTable != nullptr || RightTable != nullptr)
                                       : (LeftTable != nullptr && RightTable != nullptr);
    if (LeftTable != nullptr && LeftTable == RightTable) {
        Fail(zvpeInadmissibleJoin);
        return;
    }
    if (!Admissible || !WritesOperand(Left, LeftTable) || !WritesOperand(Right, RightTable)) {
        Fail(zvpeInadmissibleJoin);
        return;
    }
    if (LeftTable == nullptr || RightTable == nullptr) {
        // Against a constant: the column's table holds the join, the constant is its far side,
        // and Swapped writes the operands back in the order they were written.
        const bool ConstFirst = LeftTable == nullptr;
        AddJoin(ConstFirst ? *RightTable : *LeftTable, ConstFirst ? Right : Left, ConstFirst ? Left : Right,
                nullptr, Operator, ConstFirst);
        return;
    }
    TZvTableDef* Current = GetTableDefs().FindByAlias(LeftHandTable);
    bool Swap;
    if (LeftTable == Current) {
        Swap = false;
    } else if (RightTable == Current) {
        Swap = true;
    } else {
        // Neither operand names the current left-hand table. The join goes to the operand's
        // table that was in the FROM list before this join, not to the table the join has just
        // read: each joined table is then written once, in the chain of the table that joins it,
        // and the table an outer join keeps still stands before the JOIN keyword. Only when both
        // or neither operand belong to the table just read does the left operand's table (when
        // it has a name) receive it. The receiving table becomes the current left-hand table.
        if ((LeftTable == JoinedTable) != (RightTable == JoinedTable))
            Swap = LeftTable == JoinedTable;
        else
            Swap = LeftTable->GetName().empty();
        LeftHandTable = (Swap ? RightTable : LeftTable)->GetPrefix();
    }
    // Held by the table it names, the join would close a circle of joins: each table of a circle
    // is joined by another, so none of them starts a chain in FROM and all would vanish from the
    // statement. The other table holds it instead, the condition read the other way round.
    if (GetTableDefs().JoinsLeadTo(Swap ? *LeftTable : *RightTable, Swap ? *RightTable : *LeftTable))
        Swap = !Swap;
    if (Swap)
        AddJoin(*RightTable, Right, Left, LeftTable, MirroredComparison(Operator), false);
    else
        AddJoin(*LeftTable, Left, Right, RightTable, Operator, false);
}

// Target is null for a join against a constant, whose far side is then the constant's text and
// whose target is settled when the constant joins are distributed.
void TZvSelectParser::AddJoin(TZvTableDef& Owner, const TZvFunctionDef& Near, const TZvFunctionDef& Far,
                              const TZvTableDef* Target, const std::string& Operator, bool Swapped) {
    TZvJoinDef* Join = Owner.GetJoinDefs().Add();
    Join->SetLeftField(Near.GetName());
    if (Target != nullptr) {
        Join->SetTableAlias(Target->GetPrefix());
        Join->SetRightField(Far.GetName());
    } else {
        Join->SetRightField(Far.GetScript());
        Join->SetRightConst(true);
    }
    // A new join compares with "=" already, which most joins keep.
    if (Join->GetOperator() != Operator)
        Join->SetOperator(Operator);
    Join->SetSwapped(Swapped);
    Join->SetPending(true);
    Join->SetKind(LastJoinKind);
}

} // namespace zv
