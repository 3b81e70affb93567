// The host component's shell: its parts, the veto events, and the handlers that apply every
// change made on the diagram to the query model.
#include "ZvWindow.h"

#include "ZvSelectParser.h"
#include "ZvTableDefs.h"
#include "ZvUtils.h"

#include <QSplitter>
#include <QTabWidget>
#include <QVBoxLayout>

namespace zv {

// ---------------------------------------------------------------------------------------------
// TZvTableList, TZvLinkList

int TZvTableList::Count() const {
    return WorkArea->TableCount();
}

TZvTable* TZvTableList::Tables(int Index) const {
    return WorkArea->TableAt(Index);
}

TZvTable* TZvTableList::AddTable(const std::string& Name, const std::string& Alias,
                                 const TZvDataSet* DataSet) {
    return WorkArea->AddPanel(Name, Alias, DataSet);
}

TZvTable* TZvTableList::AddTableAt(const std::string& Name, const std::string& Alias,
                                   const TZvDataSet* DataSet, QPoint Point) {
    return WorkArea->AddPanelAt(Name, Alias, DataSet, Point);
}

TZvTable* TZvTableList::AddProc(const std::string& Name, const std::string& Alias, const TZvDataSet* DataSet,
                                const TZvParams* Params) {
    return WorkArea->AddProc(Name, Alias, DataSet, Params);
}

void TZvTableList::DeleteTable(TZvTable* Table) {
    ZvSendMessage(WorkArea, CMCloseTable, Table);
}

TZvTable* TZvTableList::FindByName(const std::string& Name) const {
    for (int I = 0; I < Count(); ++I)
        if (WorkArea->SameIdentifier(Tables(I)->GetName(), Name))
            return Tables(I);
    return nullptr;
}

TZvTable* TZvTableList::FindByAlias(const std::string& Alias) const {
    for (int I = 0; I < Count(); ++I)
        if (WorkArea->SameIdentifier(Tables(I)->GetAlias(), Alias))
            return Tables(I);
    return nullptr;
}

int TZvLinkList::Count() const {
    return WorkArea ? WorkArea->LinkCount() : 0;
}

TZvLink* TZvLinkList::Links(int Index) const {
    return WorkArea->LinkAt(Index);
}

TZvLink* TZvLinkList::AddLink(TZvTable* Table1, TZvTable* Table2, TZvListItem* Item1, TZvListItem* Item2) {
    return WorkArea ? WorkArea->AddLink(Table1, Table2, Item1, Item2) : nullptr;
}

TZvLink* TZvLinkList::FindLink(const TZvTable* Table1, const TZvTable* Table2, const TZvListItem* Item1,
                               const TZvListItem* Item2) const {
    return WorkArea ? WorkArea->FindLink(Table1, Table2, Item1, Item2) : nullptr;
}

TZvLink* TZvLinkList::FindLinkByID(const std::string& ID) const {
    const int Index = WorkArea ? WorkArea->FindLinkByID(ID) : -1;
    return Index >= 0 ? WorkArea->LinkAt(Index) : nullptr;
}

void TZvLinkList::DeleteLink(TZvLink* Link) {
    ZvSendMessage(WorkArea, CMDeleteLink, Link);
}

// ---------------------------------------------------------------------------------------------
// TCustomZevrin: construction and settings

TCustomZevrin::TCustomZevrin(QWidget* Parent)
    : QWidget(Parent), Palette(new TZvPalette(this)), Style(new TZvStyle(this)),
      Splitter(new QSplitter(Qt::Vertical, this)), PageCtrl(new QTabWidget(Splitter)),
      WorkArea(new TZvWorkArea(this)), Tables(WorkArea), Links(WorkArea) {
    resize(300, 340);
    PageCtrl->setObjectName(QStringLiteral("PageCtrl"));
    Splitter->setObjectName(QStringLiteral("Splitter"));
    Splitter->setHandleWidth(5);
    Splitter->setChildrenCollapsible(false);
    Splitter->addWidget(PageCtrl);
    Splitter->addWidget(WorkArea);
    Splitter->setStretchFactor(1, 1);
    connect(Splitter, &QSplitter::splitterMoved, this, [this](int Position) { TabHeight = Position; });
    SetTabHeight(DefaultTabHeight);
    auto* Layout = new QVBoxLayout(this);
    Layout->setContentsMargins(0, 0, 0, 0);
    Layout->addWidget(Splitter);

    WorkArea->OnAddTable = [this](TZvWorkArea& Sender, TZvTable& Table) { HandleAddTable(Sender, Table); };
    WorkArea->OnRemoveTable = [this](TZvWorkArea& Sender, TZvTable& Table) {
        HandleRemoveTable(Sender, Table);
    };
    WorkArea->OnChangeAlias = [this](TZvTable& Sender, const std::string& Old) {
        HandleChangeAlias(Sender, Old);
    };
    WorkArea->OnCheckField = [this](TZvTable& Table, TZvListItem& Item) { HandleCheckField(Table, Item); };
    WorkArea->OnAddRemoveField = [this](TZvTable& Table, TZvListItem& Item) {
        HandleAddRemoveField(Table, Item);
    };
    WorkArea->OnEnterParameter = [this](TZvTable& Table, TZvListItem& Item) {
        DoEnterParameter(Table, Item);
    };
}

// The work area goes first: its objects refer to the parser and the palette.
TCustomZevrin::~TCustomZevrin() {
    delete WorkArea;
    WorkArea = nullptr;
}

std::unique_ptr<TZvSelectParser> TCustomZevrin::CreateParser() {
    return std::make_unique<TZvSelectParser>();
}

TZvSelectParser* TCustomZevrin::GetParser() {
    if (!Parser)
        Parser = CreateParser();
    return Parser.get();
}

void TCustomZevrin::SetPalette(const TZvPalette* Value) {
    Palette->Assign(Value);
}

void TCustomZevrin::SetStyle(const TZvStyle* Value) {
    Style->Assign(Value);
}

void TCustomZevrin::SetOptions(TZvOptions Value) {
    if (Value == Options)
        return;
    Options = Value;
    RepaintDiagram();
}

void TCustomZevrin::SetTabHeight(int Value) {
    TabHeight = std::max(0, Value);
    ApplyTabHeight();
}

// The page control keeps its height when the component is resized; the work area takes the rest.
void TCustomZevrin::ApplyTabHeight() {
    const int Total = std::max(Splitter->height(), TabHeight + 1);
    Splitter->setSizes({TabHeight, Total - TabHeight});
}

void TCustomZevrin::resizeEvent(QResizeEvent* Event) {
    QWidget::resizeEvent(Event);
    ApplyTabHeight();
}

bool TCustomZevrin::GetCheckLinkFieldsType() const {
    return WorkArea->GetCheckLinkFieldsType();
}

void TCustomZevrin::SetCheckLinkFieldsType(bool Value) {
    WorkArea->SetCheckLinkFieldsType(Value);
}

void TCustomZevrin::BeginUpdate() {
    Updating = true;
    WorkArea->BeginUpdate();
}

void TCustomZevrin::EndUpdate() {
    Updating = false;
    WorkArea->EndUpdate();
}

void TCustomZevrin::RepaintDiagram() {
    WorkArea->viewport()->update();
}

void TCustomZevrin::RepaintPages() {
    PageCtrl->update();
}

std::string TCustomZevrin::ProcessName(const std::string& Name) {
    return GetParser()->GetScanner().ProcessName(Name);
}

// ---------------------------------------------------------------------------------------------
// Events

bool TCustomZevrin::DoAddRemoveTable(TZvTable& Table, TZvAction Action) {
    bool Accept = true;
    if (OnAddRemoveTable)
        OnAddRemoveTable(*this, Table, Action, Accept);
    return Accept;
}

bool TCustomZevrin::DoAddRemoveLink(TZvLink& Link, TZvAction Action) {
    bool Accept = true;
    if (OnAddRemoveLink)
        OnAddRemoveLink(*this, Link, Action, Accept);
    return Accept;
}

void TCustomZevrin::DoEnterParameter(TZvTable& Table, TZvListItem& Item) {
    if (OnEnterProcParameter)
        OnEnterProcParameter(*this, Table, Item);
}

// ---------------------------------------------------------------------------------------------
// Diagram to model

// By alias, or by name for an object without an alias of its own.
TZvTableDef* TCustomZevrin::FindModelTable(const TZvTable& Table) {
    TZvTableDefs& Defs = GetParser()->GetTableDefs();
    if (Trim(Table.GetRawAlias()).empty())
        return Defs.FindByName(Table.GetName());
    return Defs.FindByAlias(Table.GetRawAlias());
}

void TCustomZevrin::HandleAddTable(TZvWorkArea& /*Sender*/, TZvTable& Table) {
    TZvTableDef* Model = FindModelTable(Table);
    if (!Model) {
        Model = GetParser()->GetTableDefs().Add();
        Model->SetName(Table.GetName());
        Model->SetAlias(Table.GetAlias());
    }
    Model->SetName(Table.GetName());
    if (dynamic_cast<const TZvStoredProc*>(&Table)) {
        Model->SetTableType(qttStoredProc);
        ReplaceProcParameters(*Model, Table);
    } else {
        Model->SetTableType(qttTable);
    }
}

// The procedure's input values in the model become the object's parameter rows.
void TCustomZevrin::ReplaceProcParameters(TZvTableDef& Model, const TZvTable& Table) {
    TZvFieldDefs& Fields = Model.GetFieldDefs();
    for (int I = Fields.Count() - 1; I >= 0; --I)
        if (!Fields.Items(I)->IsSelected())
            Fields.Delete(I);
    for (int I = 0; I < Table.ItemCount(); ++I) {
        const TZvListItem* Row = Table.GetItem(I);
        if (!Row->IsParameterRow())
            continue;
        TZvFieldDef* Param = Fields.Add();
        Param->SetName(Row->GetName());
        Param->SetUsage(3);
        Param->SetDataType(Row->GetFieldType());
        Param->SetValue(Row->GetValue());
    }
}

void TCustomZevrin::HandleRemoveTable(TZvWorkArea& /*Sender*/, TZvTable& Table) {
    TZvTableDefs& Defs = GetParser()->GetTableDefs();
    if (TZvTableDef* Model = Defs.FindByAlias(Table.GetAlias()))
        Defs.Remove(Model);
}

void TCustomZevrin::HandleChangeAlias(TZvTable& Sender, const std::string& OldAlias) {
    TZvTableDefs& Defs = GetParser()->GetTableDefs();
    TZvTableDef* Model =
        OldAlias == Sender.GetName() ? Defs.FindByName(OldAlias) : Defs.FindByAlias(OldAlias);
    if (Model)
        Model->SetAlias(Sender.GetAlias());
}

void TCustomZevrin::HandleCheckField(TZvTable& Table, TZvListItem& Item) {
    if (Item.GetNoFeedback())
        return;
    TZvTableDef* Model = GetParser()->GetTableDefs().FindByAlias(Table.GetAlias());
    if (!Model)
        return;
    TZvFieldDefs& Fields = Model->GetFieldDefs();
    TZvFieldDef* Field = Fields.FindByName(Item.GetName());
    if (!Item.GetCheck()) {
        if (Field) {
            Fields.Remove(Field);
            ClearNumberedAliasOfLastTwin(Item.GetName());
        }
        return;
    }
    if (Field)
        return;
    Field = Fields.Add();
    Field->SetName(Item.GetName());
    Field->SetKind(fkIdentifier);
    // The row's data type and value travel with the field (a parameter's value, the type the
    // selection page shows).
    Field->SetDataType(Item.GetFieldType());
    Field->SetValue(Item.GetValue());
    if (AutoAlias)
        Field->SetAlias(Field->GenerateAlias(Item.GetName(), false));
}

// After the output field Name was removed: when exactly one field of that name is left in the
// whole statement and its alias is Name followed by digits only (an automatic number), the alias
// is cleared, so that the field shows under its plain name again.
void TCustomZevrin::ClearNumberedAliasOfLastTwin(const std::string& Name) {
    TZvTableDefs& Defs = GetParser()->GetTableDefs();
    TZvFieldDef* Survivor = nullptr;
    for (int T = 0; T < Defs.Count(); ++T) {
        const TZvFieldDefs& Fields = Defs.Items(T)->GetFieldDefs();
        for (int F = 0; F < Fields.Count(); ++F) {
            if (Fields.Items(F)->GetName() != Name)
                continue;
            if (Survivor)
                return; // a second one: the numbering still tells them apart
            Survivor = Fields.Items(F);
        }
    }
    if (!Survivor)
        return;
    const std::string& Alias = Survivor->GetAlias();
    if (Alias.size() > Name.size() && Alias.compare(0, Name.size(), Name) == 0 &&
        std::all_of(Alias.begin() + static_cast<std::ptrdiff_t>(Name.size()), Alias.end(),
                    [](char C) { return C >= '0' && C <= '9'; }))
        Survivor->SetAlias("");
}

void TCustomZevrin::HandleAddRemoveField(TZvTable& Table, TZvListItem& Item) {
    TZvTableDef* Model = GetParser()->GetTableDefs().FindByAlias(Table.GetAlias());
    if (Model && Model->GetFieldDefs().FindByName(Item.GetName()))
        emit FieldListsChanged();
}

// ---------------------------------------------------------------------------------------------
// TSQLZevrin

TSQLZevrin::TSQLZevrin(QWidget* Parent) : TCustomZevrin(Parent) {}

} // namespace zv
