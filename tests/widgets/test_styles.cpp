// The palette and styles: values after construction, which values are written to the form stream,
// copying with Assign, the system colour table, and repainting only outside loading and design mode.
#include "ZvErrors.h"
#include "ZvWindow.h"

#include <QApplication>
#include <QMetaProperty>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zv {
namespace {

// A component that counts its repaints instead of (as well as) doing them.
class TCountingZevrin : public TSQLZevrin {
public:
    void RepaintDiagram() override {
        ++DiagramRepaints;
        TSQLZevrin::RepaintDiagram();
    }
    void RepaintPages() override {
        ++PageRepaints;
        TSQLZevrin::RepaintPages();
    }
    int DiagramRepaints = 0;
    int PageRepaints = 0;
};

std::vector<std::string> PropertyNames(const QObject& Object) {
    std::vector<std::string> Names;
    const QMetaObject* Meta = Object.metaObject();
    for (int I = Meta->propertyOffset(); I < Meta->propertyCount(); ++I)
        Names.emplace_back(Meta->property(I).name());
    return Names;
}

std::vector<std::string> StoredProperties(const QObject& Object) {
    std::vector<std::string> Names;
    for (const std::string& Name : PropertyNames(Object))
        if (ZvIsStored(Object, Name.c_str()))
            Names.push_back(Name);
    return Names;
}

TEST(ZvPalette, ConstructorSetsTheDesignedColours) {
    const TZvPalette Palette;
    EXPECT_EQ(Palette.GetActiveCondition(), 0xFFFFFFu);
    EXPECT_EQ(Palette.GetProcClient(), 0x80000018u);
    EXPECT_EQ(Palette.GetTableClient(), 0xFFFFFFu);
    EXPECT_EQ(Palette.GetConditionItemText(), 0x800000u);
    EXPECT_EQ(Palette.GetConditionText(), 0x000000u);
    EXPECT_EQ(Palette.GetConditionErrorText(), 0x0000FFu);
    EXPECT_EQ(Palette.GetItemText(), 0x000000u);
    EXPECT_EQ(Palette.GetSelectedItemText(), 0xFFFFFFu);
    EXPECT_EQ(Palette.GetInactiveCaption(), 0x8000000Fu);
    EXPECT_EQ(Palette.GetActiveCaption(), 0xC0C0C0u);
    EXPECT_EQ(Palette.GetWorkSpace(), 0x8000000Fu);
    EXPECT_EQ(Palette.GetInactiveCaptionText(), 0x000000u);
    EXPECT_EQ(Palette.GetActiveCaptionText(), 0x000000u);
}

TEST(ZvPalette, PublishedPropertiesComeInStreamingOrder) {
    const TZvPalette Palette;
    EXPECT_EQ(PropertyNames(Palette),
              (std::vector<std::string>{"ActiveCondition", "ConditionText", "ConditionItemText", "ProcClient",
                                        "TableClient", "ItemText", "SelectedItemText", "ActiveCaption",
                                        "InactiveCaption", "ActiveCaptionText", "InactiveCaptionText",
                                        "WorkSpace"}));
}

TEST(ZvPalette, NewPaletteStoresTheBlackCaptionTextsAndTheWorkSpace) {
    const TZvPalette Palette;
    EXPECT_EQ(StoredProperties(Palette),
              (std::vector<std::string>{"ActiveCaptionText", "InactiveCaptionText", "WorkSpace"}));
}

TEST(ZvPalette, CaptionTextsEqualToTheSystemCaptionColoursAreNotStored) {
    TZvPalette Palette;
    Palette.SetActiveCaptionText(0x80000009u);
    Palette.SetInactiveCaptionText(0x80000013u);
    EXPECT_FALSE(ZvIsStored(Palette, "ActiveCaptionText"));
    EXPECT_FALSE(ZvIsStored(Palette, "InactiveCaptionText"));
    EXPECT_TRUE(ZvIsStored(Palette, "WorkSpace"));
}

TEST(ZvPalette, WorkSpaceIsStoredEvenAtItsConstructedValue) {
    TZvPalette Palette;
    ASSERT_EQ(Palette.GetWorkSpace(), 0x8000000Fu);
    EXPECT_TRUE(ZvIsStored(Palette, "WorkSpace"));
}

TEST(ZvPalette, AChangedColourIsStoredAndBackAtItsDefaultItIsNot) {
    TZvPalette Palette;
    Palette.SetTableClient(0x00FF00u);
    EXPECT_TRUE(ZvIsStored(Palette, "TableClient"));
    EXPECT_EQ(Palette.property("TableClient").toUInt(), 0x00FF00u);
    Palette.setProperty("TableClient", 0xFFFFFFu);
    EXPECT_FALSE(ZvIsStored(Palette, "TableClient"));
}

TEST(ZvPalette, ConditionErrorTextIsNoPropertyAndChangesInCodeOrThroughAssign) {
    TZvPalette Palette;
    EXPECT_LT(Palette.metaObject()->indexOfProperty("ConditionErrorText"), 0);
    EXPECT_FALSE(ZvIsStored(Palette, "ConditionErrorText"));
    EXPECT_EQ(Palette.GetConditionErrorText(), 0x0000FFu);
    TZvPalette Source;
    Source.SetConditionErrorText(0x123456u);
    Palette.Assign(&Source);
    EXPECT_EQ(Palette.GetConditionErrorText(), 0x123456u);
}

TEST(ZvPalette, AssignCopiesEveryColourButTheCaptionTexts) {
    TZvPalette Source;
    Source.SetActiveCondition(1);
    Source.SetConditionText(2);
    Source.SetConditionErrorText(3);
    Source.SetConditionItemText(4);
    Source.SetTableClient(5);
    Source.SetItemText(6);
    Source.SetSelectedItemText(7);
    Source.SetProcClient(8);
    Source.SetActiveCaption(9);
    Source.SetInactiveCaption(10);
    Source.SetWorkSpace(11);
    Source.SetActiveCaptionText(12);
    Source.SetInactiveCaptionText(13);
    TZvPalette Target;
    Target.SetActiveCaptionText(0x80000009u);
    Target.Assign(&Source);
    EXPECT_EQ(Target.GetActiveCondition(), 1u);
    EXPECT_EQ(Target.GetConditionText(), 2u);
    EXPECT_EQ(Target.GetConditionErrorText(), 3u);
    EXPECT_EQ(Target.GetConditionItemText(), 4u);
    EXPECT_EQ(Target.GetTableClient(), 5u);
    EXPECT_EQ(Target.GetItemText(), 6u);
    EXPECT_EQ(Target.GetSelectedItemText(), 7u);
    EXPECT_EQ(Target.GetProcClient(), 8u);
    EXPECT_EQ(Target.GetActiveCaption(), 9u);
    EXPECT_EQ(Target.GetInactiveCaption(), 10u);
    EXPECT_EQ(Target.GetWorkSpace(), 11u);
    EXPECT_EQ(Target.GetActiveCaptionText(), 0x80000009u);
    EXPECT_EQ(Target.GetInactiveCaptionText(), 0x000000u);
}

TEST(ZvPalette, AssigningAnotherClassRaisesTheAssignmentError) {
    TZvPalette Palette;
    TZvStyle Style;
    try {
        Palette.Assign(&Style);
        FAIL() << "no error";
    } catch (const EZvError& Error) {
        EXPECT_STREQ(Error.what(), "Cannot assign a TZvStyle to a TZvPalette.");
    }
    EXPECT_THROW(Palette.Assign(nullptr), EZvError);
}

TEST(ZvPalette, WithoutAHostOwnerNothingIsRepainted) {
    QObject Owner;
    TZvPalette Palette(&Owner);
    EXPECT_FALSE(Palette.CanInvalidate());
    Palette.SetWorkSpace(0x112233u);
    EXPECT_EQ(Palette.GetWorkSpace(), 0x112233u);
}

TEST(ZvPalette, ChangesRepaintTheDiagramOrThePagesThatShowThem) {
    TCountingZevrin Host;
    TZvPalette& Palette = *Host.GetPalette();
    EXPECT_TRUE(Palette.CanInvalidate());
    Palette.SetWorkSpace(0x112233u);
    Palette.SetTableClient(0x445566u);
    EXPECT_EQ(Host.DiagramRepaints, 2);
    EXPECT_EQ(Host.PageRepaints, 0);
    Palette.SetConditionText(0x0000AAu);
    Palette.SetActiveCondition(0x00AA00u);
    EXPECT_EQ(Host.PageRepaints, 2);
    EXPECT_EQ(Host.DiagramRepaints, 2);
}

TEST(ZvPalette, SettingTheSameValueRepaintsNothing) {
    TCountingZevrin Host;
    Host.GetPalette()->SetWorkSpace(Host.GetPalette()->GetWorkSpace());
    Host.GetPalette()->SetConditionText(Host.GetPalette()->GetConditionText());
    EXPECT_EQ(Host.DiagramRepaints, 0);
    EXPECT_EQ(Host.PageRepaints, 0);
}

TEST(ZvPalette, WhileLoadingAChangeIsStoredWithoutRepaint) {
    TCountingZevrin Host;
    Host.BeginLoading();
    EXPECT_FALSE(Host.GetPalette()->CanInvalidate());
    Host.GetPalette()->SetWorkSpace(0x010203u);
    Host.GetPalette()->SetConditionText(0x040506u);
    Host.GetStyle()->GetObjectStyle()->SetFlat(false);
    Host.GetStyle()->SetButtonStyle(zvsRaise);
    EXPECT_EQ(Host.GetPalette()->GetWorkSpace(), 0x010203u);
    EXPECT_EQ(Host.GetPalette()->GetConditionText(), 0x040506u);
    EXPECT_FALSE(Host.GetStyle()->GetObjectStyle()->GetFlat());
    EXPECT_EQ(Host.GetStyle()->GetButtonStyle(), zvsRaise);
    EXPECT_EQ(Host.DiagramRepaints, 0);
    EXPECT_EQ(Host.PageRepaints, 0);
    Host.Loaded();
    Host.GetPalette()->SetWorkSpace(0x070809u);
    EXPECT_EQ(Host.DiagramRepaints, 1);
}

TEST(ZvPalette, InDesignModeAChangeIsStoredWithoutRepaint) {
    TCountingZevrin Host;
    Host.SetDesigning(true);
    Host.GetPalette()->SetActiveCaption(0x0A0B0Cu);
    Host.GetStyle()->GetObjectStyle()->SetBorderKind(zvkBump);
    EXPECT_EQ(Host.GetPalette()->GetActiveCaption(), 0x0A0B0Cu);
    EXPECT_EQ(Host.GetStyle()->GetObjectStyle()->GetBorderKind(), zvkBump);
    EXPECT_EQ(Host.DiagramRepaints, 0);
}

TEST(ZvPalette, HostPaletteSetterCopiesIntoItsOwnObject) {
    TCountingZevrin Host;
    TZvPalette* Own = Host.GetPalette();
    TZvPalette Other;
    Other.SetWorkSpace(0x00AB00u);
    Other.SetActiveCaptionText(0x80000009u);
    Host.SetPalette(&Other);
    EXPECT_EQ(Host.GetPalette(), Own);
    EXPECT_EQ(Own->GetWorkSpace(), 0x00AB00u);
    EXPECT_EQ(Own->GetActiveCaptionText(), 0x000000u);
    EXPECT_EQ(Own->parent(), &Host);
}

TEST(ZvColors, RgbValuesAreBlueGreenRedFromTheTopByte) {
    EXPECT_EQ(ZvColorToQColor(0x0000FFu), QColor(255, 0, 0));
    EXPECT_EQ(ZvColorToQColor(0x800000u), QColor(0, 0, 128));
    EXPECT_EQ(ZvColorToQColor(0x123456u), QColor(0x56, 0x34, 0x12));
}

TEST(ZvColors, SystemColoursResolveThroughTheApplicationPalette) {
    const QPalette System = QApplication::palette();
    EXPECT_EQ(ZvColorToQColor(clBtnFace), System.color(QPalette::Active, QPalette::Button));
    EXPECT_EQ(ZvColorToQColor(clInfoBk), System.color(QPalette::Active, QPalette::ToolTipBase));
    EXPECT_EQ(ZvColorToQColor(clCaptionText), System.color(QPalette::Active, QPalette::WindowText));
    EXPECT_EQ(ZvColorToQColor(clInactiveCaptionText), System.color(QPalette::Inactive, QPalette::WindowText));
    // An index the table does not know paints in the window colour.
    EXPECT_EQ(ZvColorToQColor(clSystemColor | 0x7Fu), System.color(QPalette::Active, QPalette::Window));
}

TEST(ZvColors, TheTableNamesEachIndexItUses) {
    QPalette::ColorRole Role{};
    QPalette::ColorGroup Group{};
    ASSERT_TRUE(ZvSystemColorRole(0x0F, Role, Group));
    EXPECT_EQ(Role, QPalette::Button);
    ASSERT_TRUE(ZvSystemColorRole(0x18, Role, Group));
    EXPECT_EQ(Role, QPalette::ToolTipBase);
    ASSERT_TRUE(ZvSystemColorRole(0x13, Role, Group));
    EXPECT_EQ(Group, QPalette::Inactive);
    EXPECT_FALSE(ZvSystemColorRole(0x40, Role, Group));
}

TEST(ZvObjectStyle, DefaultsAreFlatWithRaisedBordersAndNothingIsStored) {
    TZvStyle Style;
    const TZvObjectStyle& Object = *Style.GetObjectStyle();
    EXPECT_TRUE(Object.GetFlat());
    EXPECT_TRUE(Object.GetFlatButtons());
    EXPECT_EQ(Object.GetBorderKind(), zvkRaised);
    EXPECT_TRUE(StoredProperties(Object).empty());
    EXPECT_EQ(PropertyNames(Object), (std::vector<std::string>{"Flat", "FlatButtons", "BorderKind"}));
}

TEST(ZvObjectStyle, ChangedValuesAreStored) {
    TZvStyle Style;
    TZvObjectStyle& Object = *Style.GetObjectStyle();
    Object.SetFlat(false);
    Object.setProperty("BorderKind", QVariant::fromValue(zvkSunken));
    EXPECT_EQ(Object.GetBorderKind(), zvkSunken);
    EXPECT_EQ(StoredProperties(Object), (std::vector<std::string>{"Flat", "BorderKind"}));
}

TEST(ZvObjectStyle, AssignCopiesAllThreeValues) {
    TZvStyle A;
    TZvStyle B;
    B.GetObjectStyle()->SetFlat(false);
    B.GetObjectStyle()->SetFlatButtons(false);
    B.GetObjectStyle()->SetBorderKind(zvkEtched);
    A.GetObjectStyle()->Assign(B.GetObjectStyle());
    EXPECT_FALSE(A.GetObjectStyle()->GetFlat());
    EXPECT_FALSE(A.GetObjectStyle()->GetFlatButtons());
    EXPECT_EQ(A.GetObjectStyle()->GetBorderKind(), zvkEtched);
    TZvPalette Palette;
    EXPECT_THROW(A.GetObjectStyle()->Assign(&Palette), EZvError);
}

TEST(ZvObjectStyle, ChangesRepaintTheDiagramOfItsHost) {
    TCountingZevrin Host;
    TZvObjectStyle& Object = *Host.GetStyle()->GetObjectStyle();
    EXPECT_EQ(Object.GetOwner(), &Host);
    Object.SetFlat(false);
    Object.SetFlatButtons(false);
    Object.SetBorderKind(zvkSunken);
    Object.SetBorderKind(zvkSunken);
    EXPECT_EQ(Host.DiagramRepaints, 3);
}

TEST(ZvStyle, OwnsItsObjectStyleAndCopiesOnlyTheButtonStyle) {
    TZvStyle A;
    TZvStyle B;
    EXPECT_EQ(A.GetButtonStyle(), zvsFlat);
    EXPECT_EQ(A.GetObjectStyle()->parent(), &A);
    EXPECT_EQ(A.property("ObjectStyle").value<TZvObjectStyle*>(), A.GetObjectStyle());
    B.SetButtonStyle(zvs3DLook);
    B.GetObjectStyle()->SetFlat(false);
    A.Assign(&B);
    EXPECT_EQ(A.GetButtonStyle(), zvs3DLook);
    EXPECT_TRUE(A.GetObjectStyle()->GetFlat());
    EXPECT_TRUE(ZvIsStored(A, "ButtonStyle"));
    EXPECT_THROW(A.Assign(A.GetObjectStyle()), EZvError);
}

TEST(ZvStyle, ButtonStyleRepaintsThePages) {
    TCountingZevrin Host;
    Host.GetStyle()->SetButtonStyle(zvsRaise);
    EXPECT_EQ(Host.PageRepaints, 1);
    EXPECT_EQ(Host.DiagramRepaints, 0);
    TZvStyle Other;
    Host.SetStyle(&Other);
    EXPECT_EQ(Host.GetStyle()->GetButtonStyle(), zvsFlat);
    EXPECT_EQ(Host.PageRepaints, 2);
}

} // namespace
} // namespace zv
