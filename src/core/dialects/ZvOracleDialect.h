// The Oracle dialect: its scanner (word lists, names folded to upper case, the outer-join mark
// "(+)" read as one token, FETCH FIRST found although FETCH is no keyword), its parser (joins
// read from and written into the WHERE clause, FETCH FIRST, the ANY, ALL and EXISTS operators),
// the options object, and the join and table classes of joins written with the mark.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ZvDialectSupport.h"
#include "ZvTableDefs.h"

namespace zv {

class TZvOracleSQLScanner : public TZvFoldingSQLScanner {
public:
    // Its word tests are the generic ones on the folded word.
    TZvOracleSQLScanner() : TZvFoldingSQLScanner(ncUpperCase) {
        DeclareWordRules(typeid(TZvOracleSQLScanner), TZvWordRules::FoldUpper);
    }

    // The keyword list has no "FETCH", yet "FETCH FIRST" begins the trailing clause wherever a
    // clause may begin. So a "FETCH" read outside quotes with "FIRST" after it is handed out as
    // a keyword, which every clause reader takes as the end of its clause and never as an alias.
    void GetNextToken() override;
    void GetTokenPlus() override;
    std::string GetCommaKeywords() override;
    std::string GetCommaFunctions() override;
    std::string GetCommaOperations() override;
    // "(+)", the outer-join mark.
    std::string GetCommaComplexOperators() override;
    std::string GetCommaCompareOperators() override;
    std::string GetCommaJoinOperators() override;

private:
    // Set while a look-ahead reads: a "FETCH" met then is not looked past again, so that a run of
    // them costs one look-ahead each and no recursion.
    bool LookingAhead = false;
};

// The trailing "FETCH FIRST n ROWS ONLY" of an Oracle statement.
class TZvOracleSQLOptions : public TZvFetchFirstOptions {};

// A join written as a condition of the WHERE clause: "L.X = R.Y (+)", the mark after the column
// of the optional table. A left outer join (the owning table kept whole) marks the right-hand
// column, a right outer join the left-hand one, an inner join none. A full outer join cannot be
// written so; it is written with both marks, which the server refuses, rather than as a join of
// another meaning.
class TZvOracleJoinDef : public TZvJoinDef {
public:
    // False: the condition stands in the WHERE clause, not after ON.
    bool GetUseCondition() const override;
    // "%s.%s%s %s %s.%s%s" (qualifier, column, mark, operator, qualifier, column, mark) with the
    // mark " (+)"; empty in the cases the generic join writes nothing.
    void WriteScript(std::string& Out) const override;
};

// A table whose joins are TZvOracleJoinDef.
class TZvOracleTableDef : public TZvTableDef {
protected:
    std::unique_ptr<TZvJoinDefs> CreateJoinDefs() const override;
};

class TZvOracleSelectParser : public TZvFetchFirstSelectParser {
public:
    // Copies the model and settings; from another parser of this dialect also the options.
    void Assign(TZvSelectParser& Source) override;

    TZvOracleSQLOptions& GetOracleOptions() { return OracleOptions; }
    void SetOracleOptions(const TZvOracleSQLOptions& Value) { OracleOptions.Assign(Value); }

    bool IsOracleJoins() override { return true; }
    bool IsFullOuterJoinSupported() override { return false; }
    // Names are folded on the way in, so what is left to compare is exact.
    bool GetCaseSensitiveIdentifiers() override { return true; }
    std::string GetCommaAggregates() override;

protected:
    std::unique_ptr<TZvSQLScanner> CreateScanner() override;
    std::unique_ptr<TZvTableDefs> CreateTableDefs() override;
    // The WHERE list writes the joins first, then the conditions.
    std::unique_ptr<TZvWhereItems> CreateWhereItems() override;
    // "=", "!=", "<", "<=", ">", ">=", the standard word operators, then "ANY", "ALL", "EXISTS".
    void DefineOperators() override;
    TZvFetchFirstOptions& GetFetchFirstOptions() override { return OracleOptions; }
    // A FULL join is refused (error type 5): the mark cannot express it.
    void DoParseJoinDef() override;
    // Reads the mark "(+)" after either side of a condition.
    void DoParseCriterionSide(TZvCriterion& Criterion, bool Right) override;
    // The generic clause, then every top-level condition between columns of two tables becomes a
    // join: marked ones outer joins, unmarked ones inner joins.
    void DoParseWhereClause() override;
    // A mark in HAVING is refused (error type 5): HAVING holds no joins.
    void DoParseHavingClause() override;

private:
    struct TOuterMarks {
        bool Left = false;
        bool Right = false;
    };
    bool CheckMarks(const TZvCriterions& List, bool Guarded, std::size_t& Next,
                    std::vector<TOuterMarks>* ItemMarks) const;
    void TakeJoinsFromWhere();
    // 1 when Criterion became a join of its left-hand table, 0 when it is no join condition,
    // -1 when it cannot be one but carries a mark.
    int MakeJoin(const TZvCriterion& Criterion, TOuterMarks Marked);
    TZvTableDef* ColumnTable(const TZvFunctionDef& Operand);

    TZvOracleSQLOptions OracleOptions;
    // The marks of each simple condition of the clause being read, in reading order: the order in
    // which a depth-first walk of the finished condition tree meets them.
    std::vector<TOuterMarks> Marks;
};

} // namespace zv
