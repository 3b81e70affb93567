// TZvSelectParser as the owner of the query model: its scanner, the table list, the GROUP BY and
// ORDER BY lists, the aggregate names and the script format, and the settings through which a
// dialect tells the model how to compare, quote and place names. Reading SELECT text into the
// model is added to this class by the statement reader.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "ZvCollection.h"
#include "ZvScanner.h"
#include "ZvScriptFormat.h"
#include "ZvStringList.h"
#include "ZvWordList.h"

namespace zv {

class TZvTableDefs;
// The condition trees and comparison operators live in ZvCriteria.h.
class TZvOperators;
class TZvWhereItems;
class TZvHavingItems;

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
    // Empties the model: tables, GROUP BY and ORDER BY lists, Distinct.
    virtual void Clear();

    // The scanner, made by CreateScanner on first use: a constructor cannot reach the override
    // of a derived dialect, so every part that needs the scanner asks for it here.
    TZvSQLScanner& GetScanner();
    // The table list, made by CreateTableDefs on first use for the same reason.
    TZvTableDefs& GetTableDefs();
    TZvOrderByItems& GetOrderByItems() { return OrderByItems; }
    TZvGroupByItems& GetGroupByItems() { return GroupByItems; }
    TZvScriptFormat& GetScriptFormat() { return ScriptFormat; }
    void SetScriptFormat(const TZvScriptFormat& Value) { ScriptFormat.Assign(Value); }
    // The aggregate-function names, filled from GetCommaAggregates by DefineAggregates on first use.
    const TZvWordList& GetAggregates();
    void SetAggregates(const TZvWordList& Value);

    // Criteria (ZvCriteria.h) add here:
    //   TZvWhereItems& GetWhereItems();  TZvHavingItems& GetHavingItems();
    //   TZvOperators& GetOperators();    void SetOperators(const TZvOperators&);
    // each made on first use by the protected virtual CreateWhereItems, CreateHavingItems and
    // DefineOperators (same reason as the scanner), and cleared in Clear.

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

protected:
    virtual std::unique_ptr<TZvSQLScanner> CreateScanner();
    virtual std::unique_ptr<TZvTableDefs> CreateTableDefs();
    virtual void DefineAggregates();

private:
    std::unique_ptr<TZvSQLScanner> Scanner;
    bool Distinct = false;
    bool CaseSensitiveIdentifiers = false;
    TZvOrderByItems OrderByItems;
    TZvGroupByItems GroupByItems;
    // Criteria (ZvCriteria.h) add their members here, before TableDefs:
    //   std::unique_ptr<TZvWhereItems> WhereItems;  std::unique_ptr<TZvHavingItems> HavingItems;
    //   std::unique_ptr<TZvOperators> Operators;
    TZvWordList Aggregates;
    bool AggregatesDefined = false;
    TZvScriptFormat ScriptFormat;
    // Declared last so that it is destroyed first (the destructor also frees it explicitly):
    // the tables' clean-up touches the lists above.
    std::unique_ptr<TZvTableDefs> TableDefs;
};

} // namespace zv
