// The parser as owner of the model: lazy creation of the dialect's scanner and table list, the
// case formatting of generated keywords and function names, and the model's settings.
#include "ZvSelectParser.h"

#include "ZvCriteria.h"
#include "ZvOperators.h"
#include "ZvTableDefs.h"

namespace zv {

TZvSelectParser::TZvSelectParser() : OrderByItems(this), GroupByItems(this) {}

TZvSelectParser::~TZvSelectParser() {
    // Explicit, whatever order members are added in later: a table's clean-up reads the lists.
    TableDefs.reset();
}

void TZvSelectParser::Assign(TZvSelectParser& Source) {
    if (&Source == this)
        return;
    GetTableDefs().Assign(Source.GetTableDefs());
    OrderByItems.Assign(Source.OrderByItems);
    GroupByItems.Assign(Source.GroupByItems);
    GetWhereItems().Assign(Source.GetWhereItems());
    GetHavingItems().Assign(Source.GetHavingItems());
    Distinct = Source.Distinct;
    CaseSensitiveIdentifiers = Source.CaseSensitiveIdentifiers;
    ScriptFormat.Assign(Source.ScriptFormat);
    SetAggregates(Source.GetAggregates());
}

void TZvSelectParser::Clear() {
    GetTableDefs().Clear();
    OrderByItems.Clear();
    GroupByItems.Clear();
    // A cleared tree starts again as "all of": the filter was the old statement's connective.
    GetWhereItems().Clear();
    GetWhereItems().SetFilter(cfAll);
    GetHavingItems().Clear();
    GetHavingItems().SetFilter(cfAll);
    Distinct = false;
}

void TZvSelectParser::MakeScanner() {
    Scanner = CreateScanner();
}

TZvTableDefs& TZvSelectParser::GetTableDefs() {
    if (!TableDefs) {
        TableDefs = CreateTableDefs();
        TableDefs->SetParser(this);
    }
    return *TableDefs;
}

TZvWhereItems& TZvSelectParser::GetWhereItems() {
    if (!WhereItems) {
        WhereItems = CreateWhereItems();
        WhereItems->SetParser(this);
    }
    return *WhereItems;
}

TZvHavingItems& TZvSelectParser::GetHavingItems() {
    if (!HavingItems) {
        HavingItems = CreateHavingItems();
        HavingItems->SetParser(this);
    }
    return *HavingItems;
}

TZvOperators& TZvSelectParser::GetOperators() {
    if (!Operators) {
        // Stored before it is filled, so that a dialect's DefineOperators may reach the list
        // through GetOperators.
        Operators = std::make_unique<TZvOperators>(this);
        DefineOperators();
    }
    return *Operators;
}

void TZvSelectParser::SetOperators(const TZvOperators& Value) {
    TZvOperators& Own = GetOperators();
    if (&Value != &Own)
        Own.Assign(Value);
}

const TZvWordList& TZvSelectParser::GetAggregates() {
    if (!AggregatesDefined) {
        AggregatesDefined = true;
        DefineAggregates();
    }
    return Aggregates;
}

void TZvSelectParser::SetAggregates(const TZvWordList& Value) {
    AggregatesDefined = true;
    if (&Value != &Aggregates)
        Aggregates.Assign(Value);
}

std::string TZvSelectParser::ProcessKeyword(std::string_view S) const {
    return FormatCase(S, ScriptFormat.GetKeywordsFormat());
}

std::string TZvSelectParser::ProcessFunction(std::string_view S) const {
    return FormatCase(S, ScriptFormat.GetFunctionsFormat());
}

std::unique_ptr<TZvSQLScanner> TZvSelectParser::CreateScanner() {
    return std::make_unique<TZvSQLScanner>();
}

std::unique_ptr<TZvTableDefs> TZvSelectParser::CreateTableDefs() {
    return std::make_unique<TZvTableDefs>(this);
}

std::unique_ptr<TZvWhereItems> TZvSelectParser::CreateWhereItems() {
    return std::make_unique<TZvWhereItems>(this);
}

std::unique_ptr<TZvHavingItems> TZvSelectParser::CreateHavingItems() {
    return std::make_unique<TZvHavingItems>(this);
}

void TZvSelectParser::DefineOperators() {
    GetOperators().AddStandardOperators();
}

void TZvSelectParser::DefineAggregates() {
    Aggregates.SetCommaText(GetCommaAggregates());
}

} // namespace zv
