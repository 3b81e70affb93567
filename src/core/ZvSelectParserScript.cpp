// The statement as text: the SELECT list and FROM clause, then WHERE, GROUP BY, HAVING and ORDER
// BY, each clause carrying its own keyword and final line break, with the dialect's select options
// and trailing clauses placed through GetSelectClauseScript and GetAppendixScript. Every clause
// writes into the one buffer of the statement.
#include "ZvSelectParser.h"

#include "ZvCriteria.h"
#include "ZvTableDefs.h"

namespace zv {

void AppendFunctionName(std::string& Out, TZvSelectParser* Parser, std::string_view Name) {
    if (Parser)
        AppendCase(Out, Name, Parser->GetScriptFormat().GetFunctionsFormat());
    else
        Out += Name;
}

std::string TZvSelectParser::GetExpression() {
    std::string Text;
    AppendExpression(Text);
    return Text;
}

void TZvSelectParser::AppendExpression(std::string& Out) {
    const std::size_t Start = Out.size();
    // The written statement is its text laid out, one line per item: a good deal longer than
    // what was read, and growing the buffer step by step would copy it each time.
    const std::size_t Read = GetScanner().GetExpression().size();
    Out.reserve(Start + Read * 2 + 256);
    AppendKeyword(Out, this, "SELECT");
    Out += ' ';
    Out += GetSelectClauseScript();
    const std::size_t TablesStart = Out.size();
    GetTableDefs().WriteScript(Out);
    if (Out.size() == TablesStart) {
        Out.resize(Start);
        return;
    }
    GetWhereItems().WriteScript(Out);
    // GROUP BY before HAVING: regrouping may fill the list that HAVING needs to be written at all.
    GroupByItems.WriteScript(Out);
    GetHavingItems().WriteScript(Out);
    OrderByItems.WriteScript(Out);
    Out += GetAppendixScript();
}

std::string TZvSelectParser::GetSelectClauseScript() {
    return GetDistinct() ? ProcessKeyword("DISTINCT") + " " : std::string();
}

std::string TZvSelectParser::GetAppendixScript() {
    return {};
}

} // namespace zv
