// The GROUP BY and ORDER BY clauses as text, and the regrouping that keeps GROUP BY in line with a
// SELECT list that mixes aggregates with plain columns.
#include "ZvStringList.h"

#include "ZvScanner.h"
#include "ZvSelectParser.h"
#include "ZvTableDefs.h"
#include "ZvUtils.h"

#include <optional>
#include <vector>

namespace zv {

namespace {

// "KEYWORD BY" and the entries, each on an indented line of its own; empty without entries.
std::string ClauseScript(const TZvSelectParser* Parser, std::string_view Keyword,
                         const std::vector<std::string>& Entries) {
    if (Entries.empty())
        return {};
    std::string Text = Parser ? Parser->ProcessKeyword(Keyword) + " " + Parser->ProcessKeyword("BY")
                              : std::string(Keyword) + " BY";
    Text += "\r\n  ";
    for (std::size_t I = 0; I < Entries.size(); ++I) {
        Text += Entries[I];
        Text += I + 1 < Entries.size() ? ",\r\n  " : "\r\n";
    }
    return Text;
}

// Entry written as a column of a table of the statement: the table part through ProcessName and
// the column part through QuoteName. Nothing when the entry is not qualified by the alias of such
// a table (an output alias, an expression, a stale qualifier): the caller then writes it whole.
std::optional<std::string> TableColumnScript(TZvSelectParser* Parser, std::string_view Entry) {
    if (!Parser)
        return std::nullopt;
    TZvSQLScanner& Scanner = Parser->GetScanner();
    const char Open = Scanner.GetIdentQuote();
    const char Close = Scanner.GetQuotePair(Open);
    const std::string Table = ExtractTableName(Entry, Open, Close);
    const std::string Column = ExtractFieldName(Entry, Open, Close);
    if (Table.empty() || Column.empty() || !Parser->GetTableDefs().FindByAlias(Table))
        return std::nullopt;
    return QualifiedColumn(Scanner.ProcessName(Table), Scanner.QuoteName(Column));
}

bool IsAggregate(TZvSelectParser& Parser, const TZvFieldDef& Field) {
    return Parser.GetAggregates().Contains(Field.GetName());
}

// When the SELECT list holds both an aggregate call and any other field, the list becomes the
// plain columns of the SELECT list in their order; otherwise it stays as the user set it.
void Regroup(TZvGroupByItems& List, TZvSelectParser& Parser) {
    const TZvTableDefs& Tables = Parser.GetTableDefs();
    bool HasAggregate = false;
    bool HasOther = false;
    for (int I = 0; I < Tables.GetFieldCount(); ++I) {
        const TZvFieldDef* Field = Tables.GetFieldDefs(I);
        // Every field counts, selected or not, as the rule has always read.
        if (Field->GetKind() == fkFunction && IsAggregate(Parser, *Field))
            HasAggregate = true;
        else
            HasOther = true;
    }
    if (!HasAggregate || !HasOther)
        return;
    List.BeginUpdate();
    List.Clear();
    for (int I = 0; I < Tables.GetFieldCount(); ++I) {
        const TZvFieldDef* Field = Tables.GetFieldDefs(I);
        if (Field->GetKind() != fkIdentifier || IsAggregate(Parser, *Field))
            continue;
        // The holder of unqualified columns has neither alias nor name: its columns stand alone.
        const TZvTableDef* Table = Field->GetTableDef();
        const std::string Prefix = Table ? Table->GetPrefix() : std::string();
        List.Add(QualifiedColumn(List.ProcessName(Prefix), List.ProcessName(Field->GetName())));
    }
    List.EndUpdate();
}

} // namespace

std::string TZvGroupByItems::GetScript() {
    TZvSelectParser* Owner = GetParser();
    if (Owner)
        Regroup(*this, *Owner);
    std::vector<std::string> Texts;
    for (int I = 0; I < Count(); ++I) {
        std::optional<std::string> Entry = TableColumnScript(Owner, Get(I));
        Texts.push_back(Entry ? std::move(*Entry) : ProcessName(Get(I)));
    }
    return ClauseScript(Owner, "GROUP", Texts);
}

std::string TZvOrderByItems::GetScript() const {
    TZvSelectParser* Owner = GetParser();
    std::vector<std::string> Texts;
    for (int I = 0; I < Count(); ++I) {
        std::optional<std::string> Entry = TableColumnScript(Owner, Get(I));
        // Output aliases of computed columns pass here, quoted only where aliases are.
        std::string Text = Entry ? std::move(*Entry) : ProcessAlias(Get(I));
        if (GetOrders(I) == okDesc)
            Text += " DESC";
        Texts.push_back(std::move(Text));
    }
    return ClauseScript(Owner, "ORDER", Texts);
}

} // namespace zv
