// The DB2 dialect: its scanner (word lists, names folded to upper case, the "!" comparisons, a
// single bar as an operation), its parser (FETCH FIRST, aliases after " AS ") and the options
// object that holds the FETCH FIRST count.
#pragma once

#include <memory>
#include <string>

#include "ZvDialectSupport.h"

namespace zv {

class TZvDb2SQLScanner : public TZvFoldingSQLScanner {
public:
    // Its word tests are the generic ones on the folded word.
    TZvDb2SQLScanner() : TZvFoldingSQLScanner(ncUpperCase) {
        DeclareWordRules(typeid(TZvDb2SQLScanner), TZvWordRules::FoldUpper);
    }

    std::string GetCommaKeywords() override;
    std::string GetCommaFunctions() override;
    std::string GetCommaOperations() override;
    std::string GetCommaCompareOperators() override;
    std::string GetCommaJoinOperators() override;
};

// The trailing "FETCH FIRST n ROWS ONLY" of a DB2 statement.
class TZvDb2SQLOptions : public TZvFetchFirstOptions {};

class TZvDb2SelectParser : public TZvFetchFirstSelectParser {
public:
    // Copies the model and settings; from another parser of this dialect also the options.
    void Assign(TZvSelectParser& Source) override;

    TZvDb2SQLOptions& GetDb2Options() { return Db2Options; }
    void SetDb2Options(const TZvDb2SQLOptions& Value) { Db2Options.Assign(Value); }

    std::string GetTableNameAndAliasDeilm() override { return " AS "; }
    // Names are folded on the way in, so what is left to compare is exact.
    bool GetCaseSensitiveIdentifiers() override { return true; }

protected:
    std::unique_ptr<TZvSQLScanner> CreateScanner() override;
    // The standard operators, then "!<", "!=" and "!>".
    void DefineOperators() override;
    TZvFetchFirstOptions& GetFetchFirstOptions() override { return Db2Options; }

private:
    TZvDb2SQLOptions Db2Options;
};

} // namespace zv
