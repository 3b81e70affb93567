// The table of user-visible texts: every name and text as the component shows it, placeholder
// filling, translation through Qt's translators, and the type names shown after field names.
#include "ZvResource.h"

#include <QCoreApplication>
#include <QTranslator>

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace zv {
namespace {

struct TTextRow {
    TZvRes Id;
    const char* Text;
};

// Every text, exactly as shown to the user.
const TTextRow AllTexts[] = {
    {TZvRes::PageCriteria, "Criteria"},
    {TZvRes::PageSelection, "Selection"},
    {TZvRes::PageGroupingCriteria, "Grouping criteria"},
    {TZvRes::PageSorting, "Sorting"},
    {TZvRes::PageOptions, "Options"},
    {TZvRes::FilterIniFiles, "Ini-files"},
    {TZvRes::FilterAllFiles, "All files"},
    {TZvRes::WorkAreaInvalidParent, "Given parent is not valid for work area!"},
    {TZvRes::AliasExistsPrefix, "Table with alias"},
    {TZvRes::AliasExistsSuffix, "already exists"},
    {TZvRes::TableInvalidParent, "Invalid parent for table object!"},
    {TZvRes::HintCollapseExpandTable, "Collapse/Expand table"},
    {TZvRes::HintUnlinkTable, "Unlink table"},
    {TZvRes::HintCloseTable, "Close table"},
    {TZvRes::HintSelectAllFields, "Select all fields"},
    {TZvRes::HintUnselectAllFields, "Unselect all fields"},
    {TZvRes::HintEditAlias, "Double click to edit alias"},
    {TZvRes::MenuDeleteTable, "Delete table"},
    {TZvRes::MenuRenameTable, "Rename table"},
    {TZvRes::TypeFloat, "Float"},
    {TZvRes::TypeInteger, "Integer"},
    {TZvRes::TypeString, "String"},
    {TZvRes::TypeBoolean, "Boolean"},
    {TZvRes::TypeBCD, "BCD"},
    {TZvRes::TypeDate, "Date"},
    {TZvRes::TypeTime, "Time"},
    {TZvRes::TypeDateTime, "DateTime"},
    {TZvRes::TypeBytes, "Bytes"},
    {TZvRes::TypeVarBytes, "VarBytes"},
    {TZvRes::TypeBlob, "Blob"},
    {TZvRes::TypeGraphic, "Graphic"},
    {TZvRes::TypeParadoxOle, "ParadoxOle"},
    {TZvRes::TypeDBaseOle, "DBaseOle"},
    {TZvRes::TypeTypedBinary, "Typed binary"},
    {TZvRes::TypeCursor, "Cursor"},
    {TZvRes::TypeADT, "ADT"},
    {TZvRes::TypeArray, "Array"},
    {TZvRes::TypeReference, "Reference"},
    {TZvRes::TypeDataSet, "Data set"},
    {TZvRes::TypeOraBlob, "Ora blob"},
    {TZvRes::TypeOraClob, "Ora clob"},
    {TZvRes::TypeVariant, "Variant"},
    {TZvRes::TypeInterface, "Interface"},
    {TZvRes::TypeIDispatch, "IDispatch"},
    {TZvRes::TypeGuid, "Guid"},
    {TZvRes::LinkInvalidTable, "Invalid table %s in Link control"},
    {TZvRes::LinkInvalidIndex, "Invalid index = %d "},
    {TZvRes::MenuInsertPoint, "Insert point"},
    {TZvRes::MenuDeletePoint, "Delete point"},
    {TZvRes::MenuDeleteLink, "Delete link"},
    {TZvRes::MenuLinkProperty, "Property"},
    {TZvRes::CaptionAttention, "Attention!"},
    {TZvRes::AskDeleteLink, "Do you really want to delete the link between "},
    {TZvRes::WordAnd, "and"},
    {TZvRes::LinkPropCaption, "Link properties"},
    {TZvRes::LinkPropJoinTables, "join tables: "},
    {TZvRes::LinkPropIncludeAllFrom, "Include all from"},
    {TZvRes::LinkPropInvalidLink, "Invalid link"},
    {TZvRes::ButtonOK, "OK"},
    {TZvRes::ButtonCancel, "Cancel"},
    {TZvRes::MenuInsertField, "Insert field"},
    {TZvRes::MenuAddCondition, "Add condition"},
    {TZvRes::MenuMakeComposeCondition, "Make compose condition"},
    {TZvRes::MenuDeleteCondition, "Delete condition"},
    {TZvRes::MenuExpandCondition, "Expand condition"},
    {TZvRes::MenuCollapseCondition, "Collapse condition"},
    {TZvRes::HintInsertField, "Press Shift+Enter to insert field"},
    {TZvRes::GroupConditionSuffix, " of following are met"},
    {TZvRes::NoActiveButton, "There is no active button"},
    {TZvRes::ConditionAlreadyComposed, "Selected condition is already composed"},
    {TZvRes::CantDeleteFirstRow, "Can't delete first row"},
    {TZvRes::CantExpandSimpleCondition, "Can't expand/collapse simple condition"},
    {TZvRes::CantCollapseFirstCondition, "Can't collapse first condition"},
    {TZvRes::ConditionsInvalidParent, "Invalid parent for conditions panel"},
    {TZvRes::AskDeleteConditions, "Are you sure you want to delete current condition(s)?"},
    {TZvRes::CaptionConfirmation, "Confirmation"},
    {TZvRes::ValueTypeMismatch, "Type mismatch in expression"},
    {TZvRes::ValueError, "Error!"},
    {TZvRes::SelectDistinct, "Select only unique records"},
    {TZvRes::GridOutputName, "Name of output field"},
    {TZvRes::GridAggregate, "Aggregate"},
    {TZvRes::GridSourceField, "Source field name"},
    {TZvRes::MenuDeleteCurrentRow, "Delete current row"},
    {TZvRes::AskDeleteRow, "Are you sure you want to delete current row?"},
    {TZvRes::CantDeleteLastRow, "Can't delete last row!"},
    {TZvRes::GridInvalidParent, "Invalid parent for selection grid"},
    {TZvRes::OrderPanelInvalidParent, "Invalid parent for OrderPanel"},
    {TZvRes::OrderOutputFields, "Output fields"},
    {TZvRes::OrderSortedFields, "Sorted fields"},
    {TZvRes::OrderSortOrder, "Sort order"},
    {TZvRes::OrderAscending, "Ascending"},
    {TZvRes::OrderDescending, "Descending"},
    {TZvRes::OrderAToZ, "A..Z"},
    {TZvRes::OrderZToA, "Z..A"},
    {TZvRes::OrderUp, "Up"},
    {TZvRes::OrderDown, "Down"},
    {TZvRes::UnknownError, "Unknown error"},
};

TEST(ZvResource, EveryTextReadsExactlyAsTheComponentShowsIt) {
    ASSERT_EQ(std::size(AllTexts), static_cast<std::size_t>(TZvRes::Count));
    for (const TTextRow& Row : AllTexts) {
        EXPECT_EQ(ZvText(Row.Id).toStdString(), Row.Text) << ZvTextName(Row.Id);
        EXPECT_EQ(ZvSourceText(Row.Id), Row.Text);
    }
}

TEST(ZvResource, NamesAreUniqueAndFindTheirText) {
    std::set<std::string> Seen;
    for (int I = 0; I < static_cast<int>(TZvRes::Count); ++I) {
        const auto Id = static_cast<TZvRes>(I);
        const std::string Name(ZvTextName(Id));
        EXPECT_FALSE(Name.empty());
        EXPECT_TRUE(Seen.insert(Name).second) << "duplicate name " << Name;
        EXPECT_EQ(ZvFindText(Name), Id);
    }
    EXPECT_EQ(ZvTextName(TZvRes::CantDeleteLastRow), "CantDeleteLastRow");
}

TEST(ZvResource, AnUnknownNameFindsNoText) {
    EXPECT_EQ(ZvFindText("NoSuchText"), TZvRes::Count);
    EXPECT_EQ(ZvFindText(""), TZvRes::Count);
    EXPECT_EQ(ZvFindText("cantdeletelastrow"), TZvRes::Count); // names are exact
}

TEST(ZvResource, ArgumentFillsTheStringPlaceholder) {
    EXPECT_EQ(ZvText(TZvRes::LinkInvalidTable, QStringLiteral("orders")),
              QStringLiteral("Invalid table orders in Link control"));
}

TEST(ZvResource, ArgumentFillsTheNumberPlaceholderAndKeepsTheTrailingBlank) {
    EXPECT_EQ(ZvText(TZvRes::LinkInvalidIndex, QString::number(7)), QStringLiteral("Invalid index = 7 "));
}

TEST(ZvResource, ArgumentIsIgnoredByATextWithoutPlaceholder) {
    EXPECT_EQ(ZvText(TZvRes::CantDeleteLastRow, QStringLiteral("x")),
              QStringLiteral("Can't delete last row!"));
}

TEST(ZvResource, ArgumentHoldingAPlaceholderIsInsertedLiterally) {
    EXPECT_EQ(ZvText(TZvRes::LinkInvalidTable, QStringLiteral("%d")),
              QStringLiteral("Invalid table %d in Link control"));
}

// A translator for a made-up language that knows two of the texts.
class TTestTranslator : public QTranslator {
public:
    bool isEmpty() const override { return false; }
    QString translate(const char* Context, const char* Source, const char* Disambiguation,
                      int N) const override {
        (void)Disambiguation;
        (void)N;
        if (QByteArray(Context) != "ZvResource") {
            return {};
        }
        if (QByteArray(Source) == "Confirmation") {
            return QStringLiteral("Bestaetigung");
        }
        if (QByteArray(Source) == "Invalid table %s in Link control") {
            return QStringLiteral("Verknuepfung: Tabelle %s ungueltig");
        }
        return {};
    }
};

TEST(ZvResource, InstalledTranslatorReplacesTheTexts) {
    TTestTranslator Translator;
    ASSERT_TRUE(QCoreApplication::installTranslator(&Translator));
    EXPECT_EQ(ZvText(TZvRes::CaptionConfirmation), QStringLiteral("Bestaetigung"));
    EXPECT_EQ(ZvText(TZvRes::LinkInvalidTable, QStringLiteral("orders")),
              QStringLiteral("Verknuepfung: Tabelle orders ungueltig"));
    // A text the translation lacks stays English.
    EXPECT_EQ(ZvText(TZvRes::OrderUp), QStringLiteral("Up"));
    // The source text is never translated.
    EXPECT_EQ(ZvSourceText(TZvRes::CaptionConfirmation), "Confirmation");
    QCoreApplication::removeTranslator(&Translator);
    EXPECT_EQ(ZvText(TZvRes::CaptionConfirmation), QStringLiteral("Confirmation"));
}

struct TTypeRow {
    TFieldType Type;
    const char* Name;
};

// One row per field type, in the type's order.
const TTypeRow TypeNames[] = {
    {ftUnknown, ""},
    {ftString, "String"},
    {ftSmallint, "Integer"},
    {ftInteger, "Integer"},
    {ftWord, "Integer"},
    {ftBoolean, "Boolean"},
    {ftFloat, "Float"},
    {ftCurrency, "Float"},
    {ftBCD, "BCD"},
    {ftDate, "Date"},
    {ftTime, "Time"},
    {ftDateTime, "DateTime"},
    {ftBytes, "Bytes"},
    {ftVarBytes, "VarBytes"},
    {ftAutoInc, "Integer"},
    {ftBlob, "Blob"},
    {ftMemo, "String"},
    {ftGraphic, "Graphic"},
    {ftFmtMemo, "String"},
    {ftParadoxOle, "ParadoxOle"},
    {ftDBaseOle, "DBaseOle"},
    {ftTypedBinary, "Typed binary"},
    {ftCursor, "Cursor"},
    {ftFixedChar, "String"},
    {ftWideString, "String"},
    {ftLargeint, "Integer"},
    {ftADT, "ADT"},
    {ftArray, "Array"},
    {ftReference, "Reference"},
    {ftDataSet, "Data set"},
    {ftOraBlob, "Ora blob"},
    {ftOraClob, "Ora clob"},
    {ftVariant, "Variant"},
    {ftInterface, "Interface"},
    {ftIDispatch, "IDispatch"},
    {ftGuid, "Guid"},
    {ftTimeStamp, ""},
    {ftFMTBcd, ""},
};

TEST(ZvResource, FieldTypeNamesGroupNumbersFloatsAndStringsAndNameTheRest) {
    ASSERT_EQ(std::size(TypeNames), static_cast<std::size_t>(ftFMTBcd) + 1);
    for (std::size_t I = 0; I < std::size(TypeNames); ++I) {
        ASSERT_EQ(static_cast<std::size_t>(TypeNames[I].Type), I);
        EXPECT_EQ(ZvFieldTypeText(TypeNames[I].Type).toStdString(), TypeNames[I].Name) << "type " << I;
    }
}

} // namespace
} // namespace zv
