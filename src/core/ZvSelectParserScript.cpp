// The statement as text: the SELECT list and FROM clause, then WHERE, GROUP BY, HAVING and ORDER
// BY, each clause carrying its own keyword and final line break, with the dialect's select options
// and trailing clauses placed through GetSelectClauseScript and GetAppendixScript.
#include "ZvSelectParser.h"

#include "ZvCriteria.h"
#include "ZvTableDefs.h"

namespace zv {

std::string TZvSelectParser::GetExpression() {
    const std::string Tables = GetTableDefs().GetScript();
    if (Tables.empty())
        return {};
    std::string Text = ProcessKeyword("SELECT") + " " + GetSelectClauseScript();
    Text += Tables;
    Text += GetWhereItems().GetScript();
    // GROUP BY before HAVING: regrouping may fill the list that HAVING needs to be written at all.
    Text += GroupByItems.GetScript();
    Text += GetHavingItems().GetScript();
    Text += OrderByItems.GetScript();
    Text += GetAppendixScript();
    return Text;
}

std::string TZvSelectParser::GetSelectClauseScript() {
    return GetDistinct() ? ProcessKeyword("DISTINCT") + " " : std::string();
}

std::string TZvSelectParser::GetAppendixScript() {
    return {};
}

} // namespace zv
