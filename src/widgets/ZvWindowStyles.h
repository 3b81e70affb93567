// The look of the diagram and the editor pages: the colours (TZvPalette), the style of the
// diagram objects (TZvObjectStyle) and the button style with the object style (TZvStyle). They are
// persistent sub-objects of the host component, copied with Assign, and repaint what shows them
// only when the host is neither loading nor in design mode.
#pragma once

#include <QColor>
#include <QObject>
#include <QPalette>

#include <cstdint>

namespace zv {

class TCustomZevrin;

// A colour as the component stores it: a 24-bit RGB value 0x00BBGGRR, or, with the top bit set,
// 0x80000000 plus the index of a system colour that the application's QPalette resolves.
using TColor = quint32;

inline constexpr TColor clSystemColor = 0x80000000u;
inline constexpr TColor clBlack = 0x000000u;
inline constexpr TColor clWhite = 0xFFFFFFu;
inline constexpr TColor clRed = 0x0000FFu;
inline constexpr TColor clNavy = 0x800000u;
inline constexpr TColor clSilver = 0xC0C0C0u;
// The system colours the component uses by default.
inline constexpr TColor clCaptionText = clSystemColor | 0x09u;
inline constexpr TColor clBtnFace = clSystemColor | 0x0Fu;
inline constexpr TColor clInactiveCaptionText = clSystemColor | 0x13u;
inline constexpr TColor clInfoBk = clSystemColor | 0x18u;

// The QPalette colour a system-colour index stands for; false for an index the table does not
// know. The table (index: meaning -> role, group):
//   0x05 window background      -> Base            0x0F button face         -> Button
//   0x08 window text            -> Text            0x10 button shadow       -> Dark
//   0x09 caption text           -> WindowText      0x12 button text         -> ButtonText
//   0x0D highlight              -> Highlight       0x13 inactive caption text -> WindowText, Inactive
//   0x0E highlighted text       -> HighlightedText 0x14 3D highlight        -> Light
//   0x17 tool-tip text          -> ToolTipText     0x18 tool-tip background -> ToolTipBase
bool ZvSystemColorRole(int Index, QPalette::ColorRole& Role, QPalette::ColorGroup& Group);
// The colour to paint with: an RGB value as it is, a system colour from the application's
// palette. An unknown system index paints in the palette's window colour, so that nothing is lost
// to an invisible colour.
QColor ZvColorToQColor(TColor Color);

// Whether a published property is written to the form stream. Qt 6 accepts only a constant for
// STORED, so a property whose rule depends on its value declares it as an invokable
// "Is<Property>Stored()" next to the property; this helper asks that function when there is one,
// else the constant (STORED false for _Version, true otherwise). False for an unknown property.
bool ZvIsStored(const QObject& Object, const char* Property);

// True when Owner is a host component that is neither loading from a form stream nor in design
// mode: the one condition under which a changed look is repainted.
bool ZvCanRepaintOwner(const QObject* Owner);

// The colours of the diagram and the editor pages. Its QObject parent is the host component.
class TZvPalette : public QObject {
    Q_OBJECT
    // The published order is the streaming order.
    Q_PROPERTY(quint32 ActiveCondition READ GetActiveCondition WRITE SetActiveCondition)
    Q_PROPERTY(quint32 ConditionText READ GetConditionText WRITE SetConditionText)
    Q_PROPERTY(quint32 ConditionItemText READ GetConditionItemText WRITE SetConditionItemText)
    Q_PROPERTY(quint32 ProcClient READ GetProcClient WRITE SetProcClient)
    Q_PROPERTY(quint32 TableClient READ GetTableClient WRITE SetTableClient)
    Q_PROPERTY(quint32 ItemText READ GetItemText WRITE SetItemText)
    Q_PROPERTY(quint32 SelectedItemText READ GetSelectedItemText WRITE SetSelectedItemText)
    Q_PROPERTY(quint32 ActiveCaption READ GetActiveCaption WRITE SetActiveCaption)
    Q_PROPERTY(quint32 InactiveCaption READ GetInactiveCaption WRITE SetInactiveCaption)
    Q_PROPERTY(quint32 ActiveCaptionText READ GetActiveCaptionText WRITE SetActiveCaptionText)
    Q_PROPERTY(quint32 InactiveCaptionText READ GetInactiveCaptionText WRITE SetInactiveCaptionText)
    Q_PROPERTY(quint32 WorkSpace READ GetWorkSpace WRITE SetWorkSpace STORED true)

public:
    // The declared stream defaults: a value equal to its default is not stored. The two caption
    // text colours start black although their defaults are the system caption text colours, so
    // an untouched palette stores them (as black); this is intended, as forms written that way
    // must keep reading back black captions.
    static constexpr TColor DefActiveCondition = clWhite;
    static constexpr TColor DefProcClient = clInfoBk;
    static constexpr TColor DefTableClient = clWhite;
    static constexpr TColor DefConditionItemText = clNavy;
    static constexpr TColor DefConditionText = clBlack;
    static constexpr TColor DefItemText = clBlack;
    static constexpr TColor DefSelectedItemText = clWhite;
    static constexpr TColor DefInactiveCaption = clBtnFace;
    static constexpr TColor DefActiveCaption = clSilver;
    static constexpr TColor DefInactiveCaptionText = clInactiveCaptionText;
    static constexpr TColor DefActiveCaptionText = clCaptionText;

    explicit TZvPalette(QObject* Owner = nullptr);

    // Copies another palette through the setters; the caption text colours are deliberately not
    // copied, so a target keeps its own. Any other source raises EZvError (an assignment error).
    void Assign(const QObject* Source);
    // True when the owner may be repainted now (see ZvCanRepaintOwner).
    bool CanInvalidate() const;

    TColor GetActiveCondition() const { return ActiveCondition; }
    TColor GetProcClient() const { return ProcClient; }
    TColor GetTableClient() const { return TableClient; }
    TColor GetConditionItemText() const { return ConditionItemText; }
    TColor GetConditionText() const { return ConditionText; }
    // Not a property: never streamed, changed only in code or through Assign.
    TColor GetConditionErrorText() const { return ConditionErrorText; }
    TColor GetItemText() const { return ItemText; }
    TColor GetSelectedItemText() const { return SelectedItemText; }
    TColor GetInactiveCaption() const { return InactiveCaption; }
    TColor GetActiveCaption() const { return ActiveCaption; }
    TColor GetWorkSpace() const { return WorkSpace; }
    TColor GetInactiveCaptionText() const { return InactiveCaptionText; }
    TColor GetActiveCaptionText() const { return ActiveCaptionText; }

    // Each setter stores a changed value and repaints what shows it when CanInvalidate holds:
    // the editor pages for the condition colours, the work area for the others.
    void SetActiveCondition(TColor Value);
    void SetProcClient(TColor Value);
    void SetTableClient(TColor Value);
    void SetConditionItemText(TColor Value);
    void SetConditionText(TColor Value);
    void SetConditionErrorText(TColor Value);
    void SetItemText(TColor Value);
    void SetSelectedItemText(TColor Value);
    void SetInactiveCaption(TColor Value);
    void SetActiveCaption(TColor Value);
    void SetWorkSpace(TColor Value);
    void SetInactiveCaptionText(TColor Value);
    void SetActiveCaptionText(TColor Value);

    Q_INVOKABLE bool IsActiveConditionStored() const { return ActiveCondition != DefActiveCondition; }
    Q_INVOKABLE bool IsProcClientStored() const { return ProcClient != DefProcClient; }
    Q_INVOKABLE bool IsTableClientStored() const { return TableClient != DefTableClient; }
    Q_INVOKABLE bool IsConditionItemTextStored() const { return ConditionItemText != DefConditionItemText; }
    Q_INVOKABLE bool IsConditionTextStored() const { return ConditionText != DefConditionText; }
    Q_INVOKABLE bool IsItemTextStored() const { return ItemText != DefItemText; }
    Q_INVOKABLE bool IsSelectedItemTextStored() const { return SelectedItemText != DefSelectedItemText; }
    Q_INVOKABLE bool IsInactiveCaptionStored() const { return InactiveCaption != DefInactiveCaption; }
    Q_INVOKABLE bool IsActiveCaptionStored() const { return ActiveCaption != DefActiveCaption; }
    Q_INVOKABLE bool IsInactiveCaptionTextStored() const {
        return InactiveCaptionText != DefInactiveCaptionText;
    }
    Q_INVOKABLE bool IsActiveCaptionTextStored() const { return ActiveCaptionText != DefActiveCaptionText; }

private:
    enum class TShownOn { Diagram, Pages };
    void Change(TColor& Field, TColor Value, TShownOn Where);

    TColor ActiveCondition = clWhite;
    TColor ProcClient = clInfoBk;
    TColor TableClient = clWhite;
    TColor ConditionItemText = clNavy;
    TColor ConditionText = clBlack;
    TColor ConditionErrorText = clRed;
    TColor ItemText = clBlack;
    TColor SelectedItemText = clWhite;
    TColor InactiveCaption = clBtnFace;
    TColor ActiveCaption = clSilver;
    TColor WorkSpace = clBtnFace;
    TColor InactiveCaptionText = clBlack;
    TColor ActiveCaptionText = clBlack;
};

// Border and flatness of the diagram objects. Its owner is the host component (reached through
// the style that creates it); a change repaints the work area.
class TZvObjectStyle : public QObject {
    Q_OBJECT
public:
    enum TZvBorderKind { zvkBump, zvkEtched, zvkRaised, zvkSunken };
    Q_ENUM(TZvBorderKind)

private:
    Q_PROPERTY(bool Flat READ GetFlat WRITE SetFlat)
    Q_PROPERTY(bool FlatButtons READ GetFlatButtons WRITE SetFlatButtons)
    Q_PROPERTY(TZvBorderKind BorderKind READ GetBorderKind WRITE SetBorderKind)

public:
    // Owner is the host component whose work area shows the style; Parent the QObject parent.
    TZvObjectStyle(QObject* Owner, QObject* Parent);

    // Copies BorderKind, Flat and FlatButtons from another object style; any other source raises
    // EZvError.
    void Assign(const QObject* Source);
    QObject* GetOwner() const { return Owner; }

    bool GetFlat() const { return Flat; }
    bool GetFlatButtons() const { return FlatButtons; }
    TZvBorderKind GetBorderKind() const { return BorderKind; }
    void SetFlat(bool Value);
    void SetFlatButtons(bool Value);
    void SetBorderKind(TZvBorderKind Value);

    Q_INVOKABLE bool IsFlatStored() const { return !Flat; }
    Q_INVOKABLE bool IsFlatButtonsStored() const { return !FlatButtons; }
    Q_INVOKABLE bool IsBorderKindStored() const { return BorderKind != zvkRaised; }

private:
    template <class T>
    void Change(T& Field, T Value);

    QObject* Owner;
    bool Flat = true;
    bool FlatButtons = true;
    TZvBorderKind BorderKind = zvkRaised;
};

using TZvBorderKind = TZvObjectStyle::TZvBorderKind;
using enum TZvObjectStyle::TZvBorderKind;

// The button style of the editor pages and the diagram object style, which it owns.
class TZvStyle : public QObject {
    Q_OBJECT
public:
    enum TZvButtonStyle { zvsFlat, zvs3DLook, zvsRaise };
    Q_ENUM(TZvButtonStyle)

private:
    Q_PROPERTY(TZvButtonStyle ButtonStyle READ GetButtonStyle WRITE SetButtonStyle)
    Q_PROPERTY(zv::TZvObjectStyle* ObjectStyle READ GetObjectStyle)

public:
    explicit TZvStyle(QObject* Owner = nullptr);

    // Copies ButtonStyle from another style (the object style is not copied, as designed); any
    // other source raises EZvError.
    void Assign(const QObject* Source);

    TZvButtonStyle GetButtonStyle() const { return ButtonStyle; }
    void SetButtonStyle(TZvButtonStyle Value);
    Q_INVOKABLE bool IsButtonStyleStored() const { return ButtonStyle != zvsFlat; }
    TZvObjectStyle* GetObjectStyle() const { return ObjectStyle; }

private:
    TZvButtonStyle ButtonStyle = zvsFlat;
    TZvObjectStyle* ObjectStyle; // a QObject child: freed with the style
};

using TZvButtonStyle = TZvStyle::TZvButtonStyle;
using enum TZvStyle::TZvButtonStyle;

} // namespace zv
