// The model edits the designer performs on every user action, on models of 10 to 10,000 fields
// over 10 joined tables: add and delete a table, rename a table's alias, add (and delete) a
// field, move a field to another position. Each iteration does an edit and its inverse, so the
// model is the same at every iteration; items/s counts single edits.
#include "ZvBenchSupport.h"

namespace zv {
namespace {

constexpr int kTables = 10;

struct TEditModel {
    std::unique_ptr<TZvSelectParser> Parser;
    TZvTableDefs* Tables = nullptr;
    int FieldCount = 0;
};

bool MakeModel(benchmark::State& State, const TZvBenchDialect* Dialect, TEditModel& Model) {
    Model.Parser = Dialect->Create();
    if (!ParseOrSkip(State, *Model.Parser, MakeWideStatement(static_cast<int>(State.range(0)), kTables)))
        return false;
    Model.Tables = &Model.Parser->GetTableDefs();
    Model.FieldCount = Model.Tables->GetFieldCount();
    return true;
}

// An edit and its inverse must leave the model as it was; a benchmark of a model that drifts
// measures something else with every iteration.
void Finish(benchmark::State& State, const TEditModel& Model, int EditsPerIteration) {
    if (Model.Tables->GetFieldCount() != Model.FieldCount || Model.Tables->Count() != kTables)
        State.SkipWithError("the edit and its inverse left the model changed");
    State.SetItemsProcessed(static_cast<std::int64_t>(State.iterations()) * EditsPerIteration);
    State.SetComplexityN(State.range(0));
}

// A table dropped on the diagram with one ticked field and a join to the first table, then
// deleted again, which removes its fields, positions and the joins that name it.
void AddDeleteTable(benchmark::State& State, const TZvBenchDialect* Dialect) {
    TEditModel Model;
    if (!MakeModel(State, Dialect, Model))
        return;
    for (auto _ : State) {
        TZvTableDef* Table = Model.Tables->Add();
        Table->SetName("extra");
        Table->SetAlias("x");
        TZvFieldDef* Field = Table->GetFieldDefs().Add();
        Field->SetName("id");
        Field->SetKind(fkIdentifier);
        TZvJoinDef* Join = Table->GetJoinDefs().Add();
        Join->SetLeftField("parent_id");
        Join->SetTableAlias("t0");
        Join->SetRightField("id");
        Model.Tables->Delete(Table->GetIndex());
    }
    Finish(State, Model, 2);
}

// Renaming the alias of a table in the middle of the join chain re-points the joins and ORDER BY
// entries that name it.
void RenameAlias(benchmark::State& State, const TZvBenchDialect* Dialect) {
    TEditModel Model;
    if (!MakeModel(State, Dialect, Model))
        return;
    TZvTableDef* Table = Model.Tables->Items(kTables / 2);
    const std::string Original = Table->GetAlias();
    for (auto _ : State) {
        Table->SetAlias("renamed");
        Table->SetAlias(Original);
    }
    Finish(State, Model, 2);
}

// Ticking a column that is already selected: the new field needs a unique alias ("c0" becomes
// "c01"), then it is unticked.
void AddDeleteField(benchmark::State& State, const TZvBenchDialect* Dialect) {
    TEditModel Model;
    if (!MakeModel(State, Dialect, Model))
        return;
    TZvFieldDefs& Fields = Model.Tables->Items(kTables / 2)->GetFieldDefs();
    for (auto _ : State) {
        TZvFieldDef* Field = Fields.Add();
        Field->SetName("c0");
        Field->SetKind(fkIdentifier);
        Field->SetAlias(Field->GenerateAlias("c0", false));
        Fields.Delete(Field->GetIndex());
    }
    Finish(State, Model, 2);
}

// Dragging the last field of the SELECT list to the front and back: every position in between
// shifts.
void MoveField(benchmark::State& State, const TZvBenchDialect* Dialect) {
    TEditModel Model;
    if (!MakeModel(State, Dialect, Model))
        return;
    const int Last = Model.FieldCount - 1;
    for (auto _ : State) {
        Model.Tables->GetFieldDefs(Last)->SetAbsIndex(0);
        Model.Tables->GetFieldDefs(0)->SetAbsIndex(Last);
    }
    Finish(State, Model, 2);
}

const bool Registered = [] {
    const auto Configure = [](benchmark::internal::Benchmark* B) {
        B->Unit(benchmark::kMicrosecond)->RangeMultiplier(10)->Range(10, 10000)->Complexity(benchmark::oAuto);
    };
    RegisterPerDialect("EditAddDeleteTable", AddDeleteTable, Configure);
    RegisterPerDialect("EditRenameAlias", RenameAlias, Configure);
    RegisterPerDialect("EditAddDeleteField", AddDeleteField, Configure);
    RegisterPerDialect("EditMoveField", MoveField, Configure);
    return true;
}();

} // namespace
} // namespace zv
