// The statement as text: the SELECT list and FROM clause, then WHERE, GROUP BY, HAVING and ORDER
// BY, each clause carrying its own keyword and final line break.
#include "ZvSelectParser.h"

#include "ZvCriteria.h"
#include "ZvTableDefs.h"

namespace zv {

std::string TZvSelectParser::GetExpression() {
    const std::string Tables = GetTableDefs().GetScript();
    if (Tables.empty())
        return {};
    std::string Text = ProcessKeyword("SELECT") + " ";
    if (GetDistinct())
        Text += ProcessKeyword("DISTINCT") + " ";
    Text += Tables;
    Text += GetWhereItems().GetScript();
    // GROUP BY before HAVING: regrouping may fill the list that HAVING needs to be written at all.
    Text += GroupByItems.GetScript();
    Text += GetHavingItems().GetScript();
    Text += OrderByItems.GetScript();
    return Text;
}

} // namespace zv
