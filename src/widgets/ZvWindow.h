// The host component: TCustomZevrin owns the SELECT parser with its query model, the palette and
// styles, the page control and the diagram surface, and keeps model and diagram in step through
// its handlers; TSQLZevrin is the generic concrete component. TZvTableList and TZvLinkList are the
// thin facades over the work area's tables and links.
#pragma once

#include "ZvFloatPanel.h"
#include "ZvFloatTable.h"
#include "ZvLinks.h"
#include "ZvProc.h"
#include "ZvWindowStyles.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <string>

class QSplitter;
class QTabWidget;

namespace zv {

class TZvSelectParser;
class TZvTableDef;

enum TZvAction : std::uint8_t { zvaAdd, zvaRemove };

class TCustomZevrin;

using TAddRemoveTableEvent =
    std::function<void(TCustomZevrin& Sender, TZvTable& Table, TZvAction Action, bool& Accept)>;
using TAddRemoveLinkEvent =
    std::function<void(TCustomZevrin& Sender, TZvLink& Link, TZvAction Action, bool& Accept)>;
using TEnterProcParameter =
    std::function<void(TCustomZevrin& Sender, TZvTable& SProcedure, TZvListItem& ListItem)>;

// The tables of the diagram, front to back. Holds only the work area; owns nothing.
class TZvTableList {
public:
    explicit TZvTableList(TZvWorkArea* AWorkArea) : WorkArea(AWorkArea) {}
    int Count() const;
    TZvTable* Tables(int Index) const;
    TZvTable* AddTable(const std::string& Name, const std::string& Alias, const TZvDataSet* DataSet);
    TZvTable* AddTableAt(const std::string& Name, const std::string& Alias, const TZvDataSet* DataSet,
                         QPoint Point);
    TZvTable* AddProc(const std::string& Name, const std::string& Alias, const TZvDataSet* DataSet,
                      const TZvParams* Params);
    // Sends CMCloseTable, so that the removal takes the path of closing the table on the diagram
    // (and the host may veto it). An exception raised there reaches the caller.
    void DeleteTable(TZvTable* Table);
    // The first table whose name (alias) matches through the work area's identifier comparison;
    // null when none.
    TZvTable* FindByName(const std::string& Name) const;
    TZvTable* FindByAlias(const std::string& Alias) const;

private:
    TZvWorkArea* WorkArea;
};

// The links of the diagram. Holds only the work area; owns nothing.
class TZvLinkList {
public:
    explicit TZvLinkList(TZvWorkArea* AWorkArea) : WorkArea(AWorkArea) {}
    int Count() const;
    TZvLink* Links(int Index) const;
    TZvLink* AddLink(TZvTable* Table1, TZvTable* Table2, TZvListItem* Item1, TZvListItem* Item2);
    TZvLink* FindLink(const TZvTable* Table1, const TZvTable* Table2, const TZvListItem* Item1,
                      const TZvListItem* Item2) const;
    // The link with that identifier; null when the work area knows none.
    TZvLink* FindLinkByID(const std::string& ID) const;
    // Sends CMDeleteLink (the host may veto it).
    void DeleteLink(TZvLink* Link);

private:
    TZvWorkArea* WorkArea;
};

class TCustomZevrin : public QWidget {
    Q_OBJECT
public:
    enum TZvOption {
        zvoRowSelect = 0x1,
        zvoDragFieldName = 0x2,
        zvoHideSelection = 0x4,
        zvoShowFieldTypes = 0x8
    };
    Q_DECLARE_FLAGS(TZvOptions, TZvOption)
    Q_FLAG(TZvOptions)

private:
    Q_PROPERTY(zv::TZvPalette* Palette READ GetPalette)
    Q_PROPERTY(zv::TZvStyle* Style READ GetStyle)
    Q_PROPERTY(TZvOptions Options READ GetOptions WRITE SetOptions)
    Q_PROPERTY(int TabHeight READ GetTabHeight WRITE SetTabHeight)
    Q_PROPERTY(bool CheckLinkFieldsType READ GetCheckLinkFieldsType WRITE SetCheckLinkFieldsType)
    Q_PROPERTY(QString _Version READ GetVersion STORED false)

public:
    static constexpr int DefaultTabHeight = 170;

    explicit TCustomZevrin(QWidget* Parent = nullptr);
    ~TCustomZevrin() override;

    // The parser, made by CreateParser on first use (a constructor cannot reach a dialect's
    // override).
    TZvSelectParser* GetParser();
    TZvWorkArea* GetWorkArea() const { return WorkArea; }
    TZvTableList& GetTables() { return Tables; }
    TZvLinkList& GetLinks() { return Links; }
    QTabWidget* GetPageControl() const { return PageCtrl; }

    TZvPalette* GetPalette() const { return Palette; }
    // Copy the values of Value (Assign); the component keeps its own objects.
    void SetPalette(const TZvPalette* Value);
    TZvStyle* GetStyle() const { return Style; }
    void SetStyle(const TZvStyle* Value);
    TZvOptions GetOptions() const { return Options; }
    void SetOptions(TZvOptions Value);
    Q_INVOKABLE bool IsOptionsStored() const { return Options != TZvOptions(zvoRowSelect); }
    // The height of the page control; the user may change it with the splitter.
    int GetTabHeight() const { return TabHeight; }
    void SetTabHeight(int Value);
    Q_INVOKABLE bool IsTabHeightStored() const { return GetTabHeight() != DefaultTabHeight; }
    bool GetCheckLinkFieldsType() const;
    void SetCheckLinkFieldsType(bool Value);
    Q_INVOKABLE bool IsCheckLinkFieldsTypeStored() const { return !GetCheckLinkFieldsType(); }
    QString GetVersion() const { return QStringLiteral("2.94"); }
    // The automatic-alias flag: a field checked on the diagram gets the alias the model generates
    // for its name. Not published by TSQLZevrin; off by default.
    bool GetAutoAlias() const { return AutoAlias; }
    void SetAutoAlias(bool Value) { AutoAlias = Value; }

    // Loading from a form stream: between BeginLoading and Loaded, changes of the look are stored
    // without repainting. Design mode likewise.
    void BeginLoading() { Loading = true; }
    virtual void Loaded() { Loading = false; }
    bool IsLoading() const { return Loading; }
    void SetDesigning(bool Value) { Designing = Value; }
    bool IsDesigning() const { return Designing; }

    void BeginUpdate();
    void EndUpdate();
    bool IsUpdating() const { return Updating; }

    // Repaint what shows the diagram colours and object styles (the work area with its objects),
    // or the condition colours and button style (the editor pages).
    virtual void RepaintDiagram();
    virtual void RepaintPages();

    // The parser's quoting of a possibly dotted name.
    std::string ProcessName(const std::string& Name);

    // True unless OnAddRemoveTable (OnAddRemoveLink) is set and sets Accept to false.
    bool DoAddRemoveTable(TZvTable& Table, TZvAction Action);
    bool DoAddRemoveLink(TZvLink& Link, TZvAction Action);
    void DoEnterParameter(TZvTable& Table, TZvListItem& Item);

    // The handlers that keep the model in step with the diagram; the work area's hooks are bound
    // to them.
    void HandleAddTable(TZvWorkArea& Sender, TZvTable& Table);
    void HandleRemoveTable(TZvWorkArea& Sender, TZvTable& Table);
    void HandleChangeAlias(TZvTable& Sender, const std::string& OldAlias);
    void HandleCheckField(TZvTable& Table, TZvListItem& Item);
    void HandleAddRemoveField(TZvTable& Table, TZvListItem& Item);

    TAddRemoveTableEvent OnAddRemoveTable;
    TAddRemoveLinkEvent OnAddRemoveLink;
    TEnterProcParameter OnEnterProcParameter;

signals:
    // A field that the model holds was added to or removed from a table object: pages that list
    // fields refresh their lists.
    void FieldListsChanged();

protected:
    virtual std::unique_ptr<TZvSelectParser> CreateParser();
    void resizeEvent(QResizeEvent* Event) override;

private:
    TZvTableDef* FindModelTable(const TZvTable& Table);
    void ReplaceProcParameters(TZvTableDef& Model, const TZvTable& Table);
    void ClearNumberedAliasOfLastTwin(const std::string& Name);
    void ApplyTabHeight();

    // Declared first so that it is destroyed last: the work area's objects refer to it.
    std::unique_ptr<TZvSelectParser> Parser;
    TZvPalette* Palette;
    TZvStyle* Style;
    QSplitter* Splitter;
    QTabWidget* PageCtrl;
    TZvWorkArea* WorkArea;
    TZvTableList Tables;
    TZvLinkList Links;
    TZvOptions Options = zvoRowSelect;
    int TabHeight = DefaultTabHeight;
    bool AutoAlias = false;
    bool Loading = false;
    bool Designing = false;
    bool Updating = false;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(TCustomZevrin::TZvOptions)
using TZvOption = TCustomZevrin::TZvOption;
using TZvOptions = TCustomZevrin::TZvOptions;
using enum TCustomZevrin::TZvOption;

// The generic SQL component.
class TSQLZevrin : public TCustomZevrin {
    Q_OBJECT
public:
    explicit TSQLZevrin(QWidget* Parent = nullptr);
};

} // namespace zv
