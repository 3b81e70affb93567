// The GROUP BY and ORDER BY clauses as text, and the regrouping that keeps GROUP BY in line with a
// SELECT list that mixes aggregates with plain columns.
#include "ZvStringList.h"

#include "ZvScanner.h"
#include "ZvSelectParser.h"
#include "ZvTableDefs.h"
#include "ZvUtils.h"

#include <vector>

namespace zv {

namespace {

// "KEYWORD BY" with the line break and indent before the first entry. Keyword comes with its
// blank, and "BY" with the break: casing leaves both as they are.
void WriteClauseHead(std::string& Out, TZvSelectParser* Parser, std::string_view Keyword) {
    AppendKeyword(Out, Parser, Keyword);
    AppendKeyword(Out, Parser, "BY\r\n  ");
}

// What goes between entries, and after the last one.
void WriteEntryEnd(std::string& Out, bool Last) {
    Out += Last ? "\r\n" : ",\r\n  ";
}

// Entry written as a column of a table of the statement: the table part through ProcessName and
// the column part through QuoteName. False, and nothing written, when the entry is not qualified
// by the alias of such a table (an output alias, an expression, a stale qualifier): the caller
// then writes it whole.
bool WriteTableColumn(std::string& Out, TZvSelectParser* Parser, std::string_view Entry) {
    if (!Parser)
        return false;
    TZvSQLScanner& Scanner = Parser->GetScanner();
    const char Open = Scanner.GetIdentQuote();
    const char Close = Scanner.GetQuotePair(Open);
    const auto [Table, Column] = SplitQualifiedName(Entry, Open, Close);
    if (Table.empty())
        return false;
    if (Column.empty() || !Parser->GetTableDefs().FindByAlias(Table))
        return false;
    // The "." only behind a table part that comes out non-empty, as for any qualified column.
    const std::size_t Mark = Out.size();
    Scanner.AppendName(Out, Table);
    if (Out.size() != Mark)
        Out += '.';
    Scanner.AppendQuotedName(Out, Column);
    return true;
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
        std::string Entry;
        if (Table)
            List.AppendName(Entry, Table->GetPrefix());
        if (!Entry.empty())
            Entry += '.';
        List.AppendName(Entry, Field->GetName());
        List.Add(Entry);
    }
    List.EndUpdate();
}

} // namespace

std::string TZvGroupByItems::GetScript() {
    std::string Text;
    WriteScript(Text);
    return Text;
}

void TZvGroupByItems::WriteScript(std::string& Out) {
    TZvSelectParser* Owner = GetParser();
    if (Owner)
        Regroup(*this, *Owner);
    if (Count() == 0)
        return;
    WriteClauseHead(Out, Owner, "GROUP ");
    for (int I = 0; I < Count(); ++I) {
        if (!WriteTableColumn(Out, Owner, Get(I)))
            AppendName(Out, Get(I));
        WriteEntryEnd(Out, I + 1 == Count());
    }
}

std::string TZvOrderByItems::GetScript() const {
    std::string Text;
    WriteScript(Text);
    return Text;
}

void TZvOrderByItems::WriteScript(std::string& Out) const {
    if (Count() == 0)
        return;
    TZvSelectParser* Owner = GetParser();
    WriteClauseHead(Out, Owner, "ORDER ");
    for (int I = 0; I < Count(); ++I) {
        // Output aliases of computed columns pass here, quoted only where aliases are.
        if (!WriteTableColumn(Out, Owner, Get(I)))
            Out += ProcessAlias(Get(I));
        if (GetOrders(I) == okDesc)
            Out += " DESC";
        WriteEntryEnd(Out, I + 1 == Count());
    }
}

} // namespace zv
