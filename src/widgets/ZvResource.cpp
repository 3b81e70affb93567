// The English source texts of TZvRes, in enum order, each marked for the translation tools under
// the context "ZvResource", and the type names shown after field names.
#include "ZvResource.h"

#include <QCoreApplication>

#include <array>

namespace zv {
namespace {

constexpr const char* Context = "ZvResource";

struct TEntry {
    TZvRes Id;
    const char* Name;
    const char* Source;
};

// The Id column only lets the compiler check that the rows are in enum order.
constexpr std::array<TEntry, static_cast<std::size_t>(TZvRes::Count)> Entries{{
    {TZvRes::PageCriteria, "PageCriteria", QT_TRANSLATE_NOOP("ZvResource", "Criteria")},
    {TZvRes::PageSelection, "PageSelection", QT_TRANSLATE_NOOP("ZvResource", "Selection")},
    {TZvRes::PageGroupingCriteria, "PageGroupingCriteria",
     QT_TRANSLATE_NOOP("ZvResource", "Grouping criteria")},
    {TZvRes::PageSorting, "PageSorting", QT_TRANSLATE_NOOP("ZvResource", "Sorting")},
    {TZvRes::PageOptions, "PageOptions", QT_TRANSLATE_NOOP("ZvResource", "Options")},
    {TZvRes::FilterIniFiles, "FilterIniFiles", QT_TRANSLATE_NOOP("ZvResource", "Ini-files")},
    {TZvRes::FilterAllFiles, "FilterAllFiles", QT_TRANSLATE_NOOP("ZvResource", "All files")},
    {TZvRes::WorkAreaInvalidParent, "WorkAreaInvalidParent",
     QT_TRANSLATE_NOOP("ZvResource", "Given parent is not valid for work area!")},
    {TZvRes::AliasExistsPrefix, "AliasExistsPrefix", QT_TRANSLATE_NOOP("ZvResource", "Table with alias")},
    {TZvRes::AliasExistsSuffix, "AliasExistsSuffix", QT_TRANSLATE_NOOP("ZvResource", "already exists")},
    {TZvRes::TableInvalidParent, "TableInvalidParent",
     QT_TRANSLATE_NOOP("ZvResource", "Invalid parent for table object!")},
    {TZvRes::HintCollapseExpandTable, "HintCollapseExpandTable",
     QT_TRANSLATE_NOOP("ZvResource", "Collapse/Expand table")},
    {TZvRes::HintUnlinkTable, "HintUnlinkTable", QT_TRANSLATE_NOOP("ZvResource", "Unlink table")},
    {TZvRes::HintCloseTable, "HintCloseTable", QT_TRANSLATE_NOOP("ZvResource", "Close table")},
    {TZvRes::HintSelectAllFields, "HintSelectAllFields",
     QT_TRANSLATE_NOOP("ZvResource", "Select all fields")},
    {TZvRes::HintUnselectAllFields, "HintUnselectAllFields",
     QT_TRANSLATE_NOOP("ZvResource", "Unselect all fields")},
    {TZvRes::HintEditAlias, "HintEditAlias", QT_TRANSLATE_NOOP("ZvResource", "Double click to edit alias")},
    {TZvRes::MenuDeleteTable, "MenuDeleteTable", QT_TRANSLATE_NOOP("ZvResource", "Delete table")},
    {TZvRes::MenuRenameTable, "MenuRenameTable", QT_TRANSLATE_NOOP("ZvResource", "Rename table")},
    {TZvRes::TypeFloat, "TypeFloat", QT_TRANSLATE_NOOP("ZvResource", "Float")},
    {TZvRes::TypeInteger, "TypeInteger", QT_TRANSLATE_NOOP("ZvResource", "Integer")},
    {TZvRes::TypeString, "TypeString", QT_TRANSLATE_NOOP("ZvResource", "String")},
    {TZvRes::TypeBoolean, "TypeBoolean", QT_TRANSLATE_NOOP("ZvResource", "Boolean")},
    {TZvRes::TypeBCD, "TypeBCD", QT_TRANSLATE_NOOP("ZvResource", "BCD")},
    {TZvRes::TypeDate, "TypeDate", QT_TRANSLATE_NOOP("ZvResource", "Date")},
    {TZvRes::TypeTime, "TypeTime", QT_TRANSLATE_NOOP("ZvResource", "Time")},
    {TZvRes::TypeDateTime, "TypeDateTime", QT_TRANSLATE_NOOP("ZvResource", "DateTime")},
    {TZvRes::TypeBytes, "TypeBytes", QT_TRANSLATE_NOOP("ZvResource", "Bytes")},
    {TZvRes::TypeVarBytes, "TypeVarBytes", QT_TRANSLATE_NOOP("ZvResource", "VarBytes")},
    {TZvRes::TypeBlob, "TypeBlob", QT_TRANSLATE_NOOP("ZvResource", "Blob")},
    {TZvRes::TypeGraphic, "TypeGraphic", QT_TRANSLATE_NOOP("ZvResource", "Graphic")},
    {TZvRes::TypeParadoxOle, "TypeParadoxOle", QT_TRANSLATE_NOOP("ZvResource", "ParadoxOle")},
    {TZvRes::TypeDBaseOle, "TypeDBaseOle", QT_TRANSLATE_NOOP("ZvResource", "DBaseOle")},
    {TZvRes::TypeTypedBinary, "TypeTypedBinary", QT_TRANSLATE_NOOP("ZvResource", "Typed binary")},
    {TZvRes::TypeCursor, "TypeCursor", QT_TRANSLATE_NOOP("ZvResource", "Cursor")},
    {TZvRes::TypeADT, "TypeADT", QT_TRANSLATE_NOOP("ZvResource", "ADT")},
    {TZvRes::TypeArray, "TypeArray", QT_TRANSLATE_NOOP("ZvResource", "Array")},
    {TZvRes::TypeReference, "TypeReference", QT_TRANSLATE_NOOP("ZvResource", "Reference")},
    {TZvRes::TypeDataSet, "TypeDataSet", QT_TRANSLATE_NOOP("ZvResource", "Data set")},
    {TZvRes::TypeOraBlob, "TypeOraBlob", QT_TRANSLATE_NOOP("ZvResource", "Ora blob")},
    {TZvRes::TypeOraClob, "TypeOraClob", QT_TRANSLATE_NOOP("ZvResource", "Ora clob")},
    {TZvRes::TypeVariant, "TypeVariant", QT_TRANSLATE_NOOP("ZvResource", "Variant")},
    {TZvRes::TypeInterface, "TypeInterface", QT_TRANSLATE_NOOP("ZvResource", "Interface")},
    {TZvRes::TypeIDispatch, "TypeIDispatch", QT_TRANSLATE_NOOP("ZvResource", "IDispatch")},
    {TZvRes::TypeGuid, "TypeGuid", QT_TRANSLATE_NOOP("ZvResource", "Guid")},
    {TZvRes::LinkInvalidTable, "LinkInvalidTable",
     QT_TRANSLATE_NOOP("ZvResource", "Invalid table %s in Link control")},
    {TZvRes::LinkInvalidIndex, "LinkInvalidIndex", QT_TRANSLATE_NOOP("ZvResource", "Invalid index = %d ")},
    {TZvRes::MenuInsertPoint, "MenuInsertPoint", QT_TRANSLATE_NOOP("ZvResource", "Insert point")},
    {TZvRes::MenuDeletePoint, "MenuDeletePoint", QT_TRANSLATE_NOOP("ZvResource", "Delete point")},
    {TZvRes::MenuDeleteLink, "MenuDeleteLink", QT_TRANSLATE_NOOP("ZvResource", "Delete link")},
    {TZvRes::MenuLinkProperty, "MenuLinkProperty", QT_TRANSLATE_NOOP("ZvResource", "Property")},
    {TZvRes::CaptionAttention, "CaptionAttention", QT_TRANSLATE_NOOP("ZvResource", "Attention!")},
    {TZvRes::AskDeleteLink, "AskDeleteLink",
     QT_TRANSLATE_NOOP("ZvResource", "Do you really want to delete the link between ")},
    {TZvRes::WordAnd, "WordAnd", QT_TRANSLATE_NOOP("ZvResource", "and")},
    {TZvRes::LinkPropCaption, "LinkPropCaption", QT_TRANSLATE_NOOP("ZvResource", "Link properties")},
    {TZvRes::LinkPropJoinTables, "LinkPropJoinTables", QT_TRANSLATE_NOOP("ZvResource", "join tables: ")},
    {TZvRes::LinkPropIncludeAllFrom, "LinkPropIncludeAllFrom",
     QT_TRANSLATE_NOOP("ZvResource", "Include all from")},
    {TZvRes::LinkPropInvalidLink, "LinkPropInvalidLink", QT_TRANSLATE_NOOP("ZvResource", "Invalid link")},
    {TZvRes::ButtonOK, "ButtonOK", QT_TRANSLATE_NOOP("ZvResource", "OK")},
    {TZvRes::ButtonCancel, "ButtonCancel", QT_TRANSLATE_NOOP("ZvResource", "Cancel")},
    {TZvRes::MenuInsertField, "MenuInsertField", QT_TRANSLATE_NOOP("ZvResource", "Insert field")},
    {TZvRes::MenuAddCondition, "MenuAddCondition", QT_TRANSLATE_NOOP("ZvResource", "Add condition")},
    {TZvRes::MenuMakeComposeCondition, "MenuMakeComposeCondition",
     QT_TRANSLATE_NOOP("ZvResource", "Make compose condition")},
    {TZvRes::MenuDeleteCondition, "MenuDeleteCondition", QT_TRANSLATE_NOOP("ZvResource", "Delete condition")},
    {TZvRes::MenuExpandCondition, "MenuExpandCondition", QT_TRANSLATE_NOOP("ZvResource", "Expand condition")},
    {TZvRes::MenuCollapseCondition, "MenuCollapseCondition",
     QT_TRANSLATE_NOOP("ZvResource", "Collapse condition")},
    {TZvRes::HintInsertField, "HintInsertField",
     QT_TRANSLATE_NOOP("ZvResource", "Press Shift+Enter to insert field")},
    {TZvRes::GroupConditionSuffix, "GroupConditionSuffix",
     QT_TRANSLATE_NOOP("ZvResource", " of following are met")},
    {TZvRes::NoActiveButton, "NoActiveButton", QT_TRANSLATE_NOOP("ZvResource", "There is no active button")},
    {TZvRes::ConditionAlreadyComposed, "ConditionAlreadyComposed",
     QT_TRANSLATE_NOOP("ZvResource", "Selected condition is already composed")},
    {TZvRes::CantDeleteFirstRow, "CantDeleteFirstRow",
     QT_TRANSLATE_NOOP("ZvResource", "Can't delete first row")},
    {TZvRes::CantExpandSimpleCondition, "CantExpandSimpleCondition",
     QT_TRANSLATE_NOOP("ZvResource", "Can't expand/collapse simple condition")},
    {TZvRes::CantCollapseFirstCondition, "CantCollapseFirstCondition",
     QT_TRANSLATE_NOOP("ZvResource", "Can't collapse first condition")},
    {TZvRes::ConditionsInvalidParent, "ConditionsInvalidParent",
     QT_TRANSLATE_NOOP("ZvResource", "Invalid parent for conditions panel")},
    {TZvRes::AskDeleteConditions, "AskDeleteConditions",
     QT_TRANSLATE_NOOP("ZvResource", "Are you sure you want to delete current condition(s)?")},
    {TZvRes::CaptionConfirmation, "CaptionConfirmation", QT_TRANSLATE_NOOP("ZvResource", "Confirmation")},
    {TZvRes::ValueTypeMismatch, "ValueTypeMismatch",
     QT_TRANSLATE_NOOP("ZvResource", "Type mismatch in expression")},
    {TZvRes::ValueError, "ValueError", QT_TRANSLATE_NOOP("ZvResource", "Error!")},
    {TZvRes::SelectDistinct, "SelectDistinct", QT_TRANSLATE_NOOP("ZvResource", "Select only unique records")},
    {TZvRes::GridOutputName, "GridOutputName", QT_TRANSLATE_NOOP("ZvResource", "Name of output field")},
    {TZvRes::GridAggregate, "GridAggregate", QT_TRANSLATE_NOOP("ZvResource", "Aggregate")},
    {TZvRes::GridSourceField, "GridSourceField", QT_TRANSLATE_NOOP("ZvResource", "Source field name")},
    {TZvRes::MenuDeleteCurrentRow, "MenuDeleteCurrentRow",
     QT_TRANSLATE_NOOP("ZvResource", "Delete current row")},
    {TZvRes::AskDeleteRow, "AskDeleteRow",
     QT_TRANSLATE_NOOP("ZvResource", "Are you sure you want to delete current row?")},
    {TZvRes::CantDeleteLastRow, "CantDeleteLastRow",
     QT_TRANSLATE_NOOP("ZvResource", "Can't delete last row!")},
    {TZvRes::GridInvalidParent, "GridInvalidParent",
     QT_TRANSLATE_NOOP("ZvResource", "Invalid parent for selection grid")},
    {TZvRes::OrderPanelInvalidParent, "OrderPanelInvalidParent",
     QT_TRANSLATE_NOOP("ZvResource", "Invalid parent for OrderPanel")},
    {TZvRes::OrderOutputFields, "OrderOutputFields", QT_TRANSLATE_NOOP("ZvResource", "Output fields")},
    {TZvRes::OrderSortedFields, "OrderSortedFields", QT_TRANSLATE_NOOP("ZvResource", "Sorted fields")},
    {TZvRes::OrderSortOrder, "OrderSortOrder", QT_TRANSLATE_NOOP("ZvResource", "Sort order")},
    {TZvRes::OrderAscending, "OrderAscending", QT_TRANSLATE_NOOP("ZvResource", "Ascending")},
    {TZvRes::OrderDescending, "OrderDescending", QT_TRANSLATE_NOOP("ZvResource", "Descending")},
    {TZvRes::OrderAToZ, "OrderAToZ", QT_TRANSLATE_NOOP("ZvResource", "A..Z")},
    {TZvRes::OrderZToA, "OrderZToA", QT_TRANSLATE_NOOP("ZvResource", "Z..A")},
    {TZvRes::OrderUp, "OrderUp", QT_TRANSLATE_NOOP("ZvResource", "Up")},
    {TZvRes::OrderDown, "OrderDown", QT_TRANSLATE_NOOP("ZvResource", "Down")},
    {TZvRes::UnknownError, "UnknownError", QT_TRANSLATE_NOOP("ZvResource", "Unknown error")},
}};

constexpr bool EntriesInEnumOrder() {
    for (std::size_t I = 0; I < Entries.size(); ++I) {
        if (static_cast<std::size_t>(Entries[I].Id) != I) {
            return false;
        }
    }
    return true;
}
static_assert(EntriesInEnumOrder(), "ZvResource rows must follow the order of TZvRes");

const TEntry& EntryOf(TZvRes Id) {
    return Entries.at(static_cast<std::size_t>(Id));
}

} // namespace

QString ZvText(TZvRes Id) {
    return QCoreApplication::translate(Context, EntryOf(Id).Source);
}

QString ZvText(TZvRes Id, const QString& Arg) {
    QString Text = ZvText(Id);
    for (const QLatin1StringView Placeholder : {QLatin1StringView("%s"), QLatin1StringView("%d")}) {
        const qsizetype At = Text.indexOf(Placeholder);
        if (At >= 0) {
            return Text.replace(At, Placeholder.size(), Arg);
        }
    }
    return Text;
}

std::string_view ZvSourceText(TZvRes Id) {
    return EntryOf(Id).Source;
}

std::string_view ZvTextName(TZvRes Id) {
    return EntryOf(Id).Name;
}

TZvRes ZvFindText(std::string_view Name) {
    for (const TEntry& Entry : Entries) {
        if (Name == Entry.Name) {
            return Entry.Id;
        }
    }
    return TZvRes::Count;
}

TZvFieldTypeClass ZvFieldTypeClass(TFieldType Type) {
    switch (Type) {
    case ftFloat:
    case ftCurrency:
        return TZvFieldTypeClass::Float;
    case ftSmallint:
    case ftInteger:
    case ftWord:
    case ftAutoInc:
    case ftLargeint:
        return TZvFieldTypeClass::Numeric;
    case ftString:
    case ftMemo:
    case ftFmtMemo:
    case ftFixedChar:
    case ftWideString:
        return TZvFieldTypeClass::String;
    case ftDate:
    case ftTime:
    case ftDateTime:
        return TZvFieldTypeClass::DateTime;
    default:
        return TZvFieldTypeClass::Other;
    }
}

QString ZvFieldTypeText(TFieldType Type) {
    switch (ZvFieldTypeClass(Type)) {
    case TZvFieldTypeClass::Float:
        return ZvText(TZvRes::TypeFloat);
    case TZvFieldTypeClass::Numeric:
        return ZvText(TZvRes::TypeInteger);
    case TZvFieldTypeClass::String:
        return ZvText(TZvRes::TypeString);
    default:
        break;
    }
    switch (Type) {
    case ftBoolean:
        return ZvText(TZvRes::TypeBoolean);
    case ftBCD:
        return ZvText(TZvRes::TypeBCD);
    case ftDate:
        return ZvText(TZvRes::TypeDate);
    case ftTime:
        return ZvText(TZvRes::TypeTime);
    case ftDateTime:
        return ZvText(TZvRes::TypeDateTime);
    case ftBytes:
        return ZvText(TZvRes::TypeBytes);
    case ftVarBytes:
        return ZvText(TZvRes::TypeVarBytes);
    case ftBlob:
        return ZvText(TZvRes::TypeBlob);
    case ftGraphic:
        return ZvText(TZvRes::TypeGraphic);
    case ftParadoxOle:
        return ZvText(TZvRes::TypeParadoxOle);
    case ftDBaseOle:
        return ZvText(TZvRes::TypeDBaseOle);
    case ftTypedBinary:
        return ZvText(TZvRes::TypeTypedBinary);
    case ftCursor:
        return ZvText(TZvRes::TypeCursor);
    case ftADT:
        return ZvText(TZvRes::TypeADT);
    case ftArray:
        return ZvText(TZvRes::TypeArray);
    case ftReference:
        return ZvText(TZvRes::TypeReference);
    case ftDataSet:
        return ZvText(TZvRes::TypeDataSet);
    case ftOraBlob:
        return ZvText(TZvRes::TypeOraBlob);
    case ftOraClob:
        return ZvText(TZvRes::TypeOraClob);
    case ftVariant:
        return ZvText(TZvRes::TypeVariant);
    case ftInterface:
        return ZvText(TZvRes::TypeInterface);
    case ftIDispatch:
        return ZvText(TZvRes::TypeIDispatch);
    case ftGuid:
        return ZvText(TZvRes::TypeGuid);
    default: // the unknown type, time stamps and FMT BCD have no name
        break;
    }
    return {};
}

} // namespace zv
