// The one table of user-visible texts of the widgets layer: captions, menu entries, hints, questions
// and error messages, each under a name, so that a translation replaces them all in one place. The
// core keeps its own texts (parse errors, the group words of criteria) and needs no Qt.
#pragma once

#include "ZvTypes.h"

#include <QString>

#include <cstdint>
#include <string_view>

namespace zv {

// Names of the texts, grouped by where they appear. The English source text of each is in
// ZvResource.cpp; ZvText returns it translated.
enum class TZvRes : std::uint16_t {
    // Host component: page captions, and the caption a dialect gives its extra page.
    PageCriteria,
    PageSelection,
    PageGroupingCriteria,
    PageSorting,
    PageOptions,
    // Layout store: filter captions of file dialogs that offer ini files.
    FilterIniFiles,
    FilterAllFiles,
    // Work area.
    WorkAreaInvalidParent,
    AliasExistsPrefix, // "Table with alias" + " " + alias + " " + AliasExistsSuffix
    AliasExistsSuffix,
    // Table objects: misuse, hints, context menu.
    TableInvalidParent,
    HintCollapseExpandTable,
    HintUnlinkTable,
    HintCloseTable,
    HintSelectAllFields,
    HintUnselectAllFields,
    HintEditAlias,
    MenuDeleteTable,
    MenuRenameTable,
    // Table objects: the type names shown after a field name.
    TypeFloat,
    TypeInteger,
    TypeString,
    TypeBoolean,
    TypeBCD,
    TypeDate,
    TypeTime,
    TypeDateTime,
    TypeBytes,
    TypeVarBytes,
    TypeBlob,
    TypeGraphic,
    TypeParadoxOle,
    TypeDBaseOle,
    TypeTypedBinary,
    TypeCursor,
    TypeADT,
    TypeArray,
    TypeReference,
    TypeDataSet,
    TypeOraBlob,
    TypeOraClob,
    TypeVariant,
    TypeInterface,
    TypeIDispatch,
    TypeGuid,
    // Links: misuse, context menu, the delete question.
    LinkInvalidTable, // one %s: the table name
    LinkInvalidIndex, // one %d: the point index
    MenuInsertPoint,
    MenuDeletePoint,
    MenuDeleteLink,
    MenuLinkProperty,
    CaptionAttention,
    AskDeleteLink, // + CR LF + first table + " " + WordAnd + " " + second table
    WordAnd,
    // Link properties dialog.
    LinkPropCaption,
    LinkPropJoinTables,
    LinkPropIncludeAllFrom,
    LinkPropInvalidLink,
    ButtonOK,
    ButtonCancel,
    // Conditions panel.
    MenuInsertField,
    MenuAddCondition,
    MenuMakeComposeCondition,
    MenuDeleteCondition,
    MenuExpandCondition,
    MenuCollapseCondition,
    HintInsertField,
    GroupConditionSuffix,
    NoActiveButton,
    ConditionAlreadyComposed,
    CantDeleteFirstRow,
    CantExpandSimpleCondition,
    CantCollapseFirstCondition,
    ConditionsInvalidParent,
    AskDeleteConditions,
    CaptionConfirmation,
    ValueTypeMismatch,
    ValueError,
    // Selection page and grid.
    SelectDistinct,
    GridOutputName,
    GridAggregate,
    GridSourceField,
    MenuDeleteCurrentRow,
    AskDeleteRow,
    CantDeleteLastRow,
    GridInvalidParent,
    OrderPanelInvalidParent, // also raised by the selection page, whose owner check shares it
    // Sorting page.
    OrderOutputFields,
    OrderSortedFields,
    OrderSortOrder,
    OrderAscending,
    OrderDescending,
    OrderAToZ,
    OrderZToA,
    OrderUp,
    OrderDown,
    // Texts this implementation adds: the error display's text for a failure without a message.
    UnknownError,

    Count // not a text: the number of texts
};

// The text, translated through the installed translators (context "ZvResource").
QString ZvText(TZvRes Id);
// The text with its one "%s" or "%d" replaced by Arg. A translated text is never used as a printf
// format, so a translation that drops or reorders the placeholder cannot read stray arguments; a
// text without a placeholder is returned unchanged.
QString ZvText(TZvRes Id, const QString& Arg);
// The English source text, untranslated.
std::string_view ZvSourceText(TZvRes Id);
// The name of the text ("PageCriteria"), for tools and diagnostics.
std::string_view ZvTextName(TZvRes Id);
// The text for a name; Count when no text has that name.
TZvRes ZvFindText(std::string_view Name);

// The classes of field types that hold one kind of value: the integer types, the floating types,
// the character types, and dates and times; every other type is a class of its own (Other).
enum class TZvFieldTypeClass : std::uint8_t { Other, Numeric, Float, String, DateTime };
TZvFieldTypeClass ZvFieldTypeClass(TFieldType Type);

// The type name shown after a field of that type: "Float" for Float and Currency, "Integer" for
// the integer types, "String" for the character types, then one name per remaining type; empty
// for the unknown type, time stamps and FMT BCD, which have none.
QString ZvFieldTypeText(TFieldType Type);

} // namespace zv
