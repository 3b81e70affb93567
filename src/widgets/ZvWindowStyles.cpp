// The palette and styles of the host component: defaults, copying and the repaint rule.
#include "ZvWindowStyles.h"

#include "ZvErrors.h"
#include "ZvWindow.h"

#include <QApplication>
#include <QMetaMethod>
#include <QMetaProperty>

#include <array>

namespace zv {

namespace {

struct TSystemColorEntry {
    int Index;
    QPalette::ColorRole Role;
    QPalette::ColorGroup Group;
};

// The table documented at ZvSystemColorRole.
constexpr std::array<TSystemColorEntry, 12> SystemColors{{
    {0x05, QPalette::Base, QPalette::Active},
    {0x08, QPalette::Text, QPalette::Active},
    {0x09, QPalette::WindowText, QPalette::Active},
    {0x0D, QPalette::Highlight, QPalette::Active},
    {0x0E, QPalette::HighlightedText, QPalette::Active},
    {0x0F, QPalette::Button, QPalette::Active},
    {0x10, QPalette::Dark, QPalette::Active},
    {0x12, QPalette::ButtonText, QPalette::Active},
    {0x13, QPalette::WindowText, QPalette::Inactive},
    {0x14, QPalette::Light, QPalette::Active},
    {0x17, QPalette::ToolTipText, QPalette::Active},
    {0x18, QPalette::ToolTipBase, QPalette::Active},
}};

// The class name without the namespace, as the error texts name classes.
QString ShortClassName(const QObject* Object) {
    if (!Object)
        return QStringLiteral("(none)");
    const QString Name = QString::fromLatin1(Object->metaObject()->className());
    return Name.mid(Name.lastIndexOf(QLatin1Char(':')) + 1);
}

// The assignment error of a persistent object given a source of another class.
[[noreturn]] void RaiseAssignError(const QObject* Source, const QObject* Target) {
    throw EZvError(QStringLiteral("Cannot assign a %1 to a %2.")
                       .arg(ShortClassName(Source), ShortClassName(Target))
                       .toStdString());
}

TCustomZevrin* HostOf(const QObject* Owner) {
    return qobject_cast<TCustomZevrin*>(const_cast<QObject*>(Owner));
}

void RepaintDiagramOf(const QObject* Owner) {
    if (ZvCanRepaintOwner(Owner))
        HostOf(Owner)->RepaintDiagram();
}

} // namespace

bool ZvSystemColorRole(int Index, QPalette::ColorRole& Role, QPalette::ColorGroup& Group) {
    for (const TSystemColorEntry& Entry : SystemColors) {
        if (Entry.Index == Index) {
            Role = Entry.Role;
            Group = Entry.Group;
            return true;
        }
    }
    return false;
}

QColor ZvColorToQColor(TColor Color) {
    if ((Color & clSystemColor) == 0)
        return QColor(static_cast<int>(Color & 0xFF), static_cast<int>((Color >> 8) & 0xFF),
                      static_cast<int>((Color >> 16) & 0xFF));
    QPalette::ColorRole Role = QPalette::Window;
    QPalette::ColorGroup Group = QPalette::Active;
    ZvSystemColorRole(static_cast<int>(Color & ~clSystemColor), Role, Group);
    return QApplication::palette().color(Group, Role);
}

bool ZvIsStored(const QObject& Object, const char* Property) {
    const QMetaObject* Meta = Object.metaObject();
    const int Index = Meta->indexOfProperty(Property);
    if (Index < 0 || !Meta->property(Index).isStored())
        return false;
    const QByteArray Rule = QByteArray("Is") + Property + "Stored()";
    const int Method = Meta->indexOfMethod(Rule.constData());
    if (Method < 0)
        return true;
    bool Stored = true;
    Meta->method(Method).invoke(const_cast<QObject*>(&Object), Qt::DirectConnection,
                                Q_RETURN_ARG(bool, Stored));
    return Stored;
}

bool ZvCanRepaintOwner(const QObject* Owner) {
    const TCustomZevrin* Host = HostOf(Owner);
    return Host && !Host->IsLoading() && !Host->IsDesigning();
}

// ---------------------------------------------------------------------------------------------
// TZvPalette

TZvPalette::TZvPalette(QObject* Owner) : QObject(Owner) {}

bool TZvPalette::CanInvalidate() const {
    return ZvCanRepaintOwner(parent());
}

void TZvPalette::Change(TColor& Field, TColor Value, TShownOn Where) {
    if (Field == Value)
        return;
    Field = Value;
    if (!CanInvalidate())
        return;
    if (Where == TShownOn::Pages)
        HostOf(parent())->RepaintPages();
    else
        HostOf(parent())->RepaintDiagram();
}

void TZvPalette::SetActiveCondition(TColor Value) {
    Change(ActiveCondition, Value, TShownOn::Pages);
}
void TZvPalette::SetConditionItemText(TColor Value) {
    Change(ConditionItemText, Value, TShownOn::Pages);
}
void TZvPalette::SetConditionText(TColor Value) {
    Change(ConditionText, Value, TShownOn::Pages);
}
void TZvPalette::SetConditionErrorText(TColor Value) {
    Change(ConditionErrorText, Value, TShownOn::Pages);
}
void TZvPalette::SetProcClient(TColor Value) {
    Change(ProcClient, Value, TShownOn::Diagram);
}
void TZvPalette::SetTableClient(TColor Value) {
    Change(TableClient, Value, TShownOn::Diagram);
}
void TZvPalette::SetItemText(TColor Value) {
    Change(ItemText, Value, TShownOn::Diagram);
}
void TZvPalette::SetSelectedItemText(TColor Value) {
    Change(SelectedItemText, Value, TShownOn::Diagram);
}
void TZvPalette::SetInactiveCaption(TColor Value) {
    Change(InactiveCaption, Value, TShownOn::Diagram);
}
void TZvPalette::SetActiveCaption(TColor Value) {
    Change(ActiveCaption, Value, TShownOn::Diagram);
}
void TZvPalette::SetWorkSpace(TColor Value) {
    Change(WorkSpace, Value, TShownOn::Diagram);
}
void TZvPalette::SetInactiveCaptionText(TColor Value) {
    Change(InactiveCaptionText, Value, TShownOn::Diagram);
}
void TZvPalette::SetActiveCaptionText(TColor Value) {
    Change(ActiveCaptionText, Value, TShownOn::Diagram);
}

void TZvPalette::Assign(const QObject* Source) {
    const auto* Other = qobject_cast<const TZvPalette*>(Source);
    if (!Other)
        RaiseAssignError(Source, this);
    // The order of the copies is the order in which repaints happen; the caption text colours
    // are left out on purpose.
    SetActiveCondition(Other->ActiveCondition);
    SetConditionText(Other->ConditionText);
    SetConditionErrorText(Other->ConditionErrorText);
    SetConditionItemText(Other->ConditionItemText);
    SetTableClient(Other->TableClient);
    SetItemText(Other->ItemText);
    SetSelectedItemText(Other->SelectedItemText);
    SetProcClient(Other->ProcClient);
    SetActiveCaption(Other->ActiveCaption);
    SetInactiveCaption(Other->InactiveCaption);
    SetWorkSpace(Other->WorkSpace);
}

// ---------------------------------------------------------------------------------------------
// TZvObjectStyle

TZvObjectStyle::TZvObjectStyle(QObject* AOwner, QObject* Parent) : QObject(Parent), Owner(AOwner) {}

template <class T>
void TZvObjectStyle::Change(T& Field, T Value) {
    if (Field == Value)
        return;
    Field = Value;
    RepaintDiagramOf(Owner);
}

void TZvObjectStyle::SetFlat(bool Value) {
    Change(Flat, Value);
}
void TZvObjectStyle::SetFlatButtons(bool Value) {
    Change(FlatButtons, Value);
}
void TZvObjectStyle::SetBorderKind(TZvBorderKind Value) {
    Change(BorderKind, Value);
}

void TZvObjectStyle::Assign(const QObject* Source) {
    const auto* Other = qobject_cast<const TZvObjectStyle*>(Source);
    if (!Other)
        RaiseAssignError(Source, this);
    SetBorderKind(Other->BorderKind);
    SetFlat(Other->Flat);
    SetFlatButtons(Other->FlatButtons);
}

// ---------------------------------------------------------------------------------------------
// TZvStyle

TZvStyle::TZvStyle(QObject* Owner) : QObject(Owner), ObjectStyle(new TZvObjectStyle(Owner, this)) {}

void TZvStyle::SetButtonStyle(TZvButtonStyle Value) {
    if (ButtonStyle == Value)
        return;
    ButtonStyle = Value;
    if (ZvCanRepaintOwner(parent()))
        HostOf(parent())->RepaintPages();
}

void TZvStyle::Assign(const QObject* Source) {
    const auto* Other = qobject_cast<const TZvStyle*>(Source);
    if (!Other)
        RaiseAssignError(Source, this);
    SetButtonStyle(Other->ButtonStyle);
}

} // namespace zv
