// Data types shared by the model and the host: database field types, parameter kinds, the variant
// value of a stored-procedure parameter, and the two data-access interfaces (a data set's field
// definitions, a parameter list) through which the host describes its tables.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace zv {

// Database field types, numbered as data-access layers number them (0 ... 37).
enum TFieldType : std::uint8_t {
    ftUnknown,
    ftString,
    ftSmallint,
    ftInteger,
    ftWord,
    ftBoolean,
    ftFloat,
    ftCurrency,
    ftBCD,
    ftDate,
    ftTime,
    ftDateTime,
    ftBytes,
    ftVarBytes,
    ftAutoInc,
    ftBlob,
    ftMemo,
    ftGraphic,
    ftFmtMemo,
    ftParadoxOle,
    ftDBaseOle,
    ftTypedBinary,
    ftCursor,
    ftFixedChar,
    ftWideString,
    ftLargeint,
    ftADT,
    ftArray,
    ftReference,
    ftDataSet,
    ftOraBlob,
    ftOraClob,
    ftVariant,
    ftInterface,
    ftIDispatch,
    ftGuid,
    ftTimeStamp,
    ftFMTBcd,
};

enum TParamType : std::uint8_t { ptUnknown, ptInput, ptOutput, ptInputOutput, ptResult };

// The SQL NULL held by a value (as opposed to a value that was never assigned).
struct TZvNull {
    friend bool operator==(TZvNull, TZvNull) = default;
};

// A calendar date with a time of day. Serial numbers count days from 1899-12-30 with the time of
// day as the fraction, which is how numeric values convert to dates in data-access layers.
struct TZvDateTime {
    std::int32_t Year = 1899;
    std::int32_t Month = 12;
    std::int32_t Day = 30;
    std::int32_t Hour = 0;
    std::int32_t Minute = 0;
    std::int32_t Second = 0;
    std::int32_t Millisecond = 0;

    static TZvDateTime FromSerial(double Serial);
    double ToSerial() const;
    bool HasTime() const { return Hour != 0 || Minute != 0 || Second != 0 || Millisecond != 0; }
    // True for the serial day 0 (1899-12-30): a value that holds only a time of day.
    bool IsTimeOnly() const { return Year == 1899 && Month == 12 && Day == 30; }

    // ISO 8601 extended forms: "YYYY-MM-DD", "HH:MM:SS" and "YYYY-MM-DDTHH:MM:SS"; ".mmm" is
    // added to the time when there are milliseconds. One fixed form, independent of any locale,
    // so that generated statements read the same on every machine.
    std::string DateText() const;
    std::string TimeText() const;
    std::string DateTimeText() const;

    friend bool operator==(const TZvDateTime&, const TZvDateTime&) = default;
};

// A variant value: unassigned, null, Boolean, integer, float, text or date/time.
class TZvValue {
public:
    using TStorage =
        std::variant<std::monostate, TZvNull, bool, std::int64_t, double, std::string, TZvDateTime>;

    TZvValue() = default;
    TZvValue(TZvNull V) : Storage(V) {}
    TZvValue(bool V) : Storage(V) {}
    TZvValue(int V) : Storage(std::int64_t{V}) {}
    TZvValue(std::int64_t V) : Storage(V) {}
    TZvValue(double V) : Storage(V) {}
    TZvValue(const char* V) : Storage(std::string(V)) {}
    TZvValue(std::string V) : Storage(std::move(V)) {}
    TZvValue(const TZvDateTime& V) : Storage(V) {}

    static TZvValue Null() { return TZvValue(TZvNull{}); }

    bool IsUnassigned() const { return std::holds_alternative<std::monostate>(Storage); }
    bool IsNull() const { return std::holds_alternative<TZvNull>(Storage); }
    bool IsString() const { return std::holds_alternative<std::string>(Storage); }
    const TStorage& GetStorage() const { return Storage; }

    // The value as text: empty for unassigned and null, "True"/"False", decimal numbers in the
    // shortest form that reads back the same, dates as DateTimeText (DateText without a time of
    // day, TimeText for a time-only value).
    std::string ToString() const;
    // Boolean, numbers (non-zero is true), and the texts "true"/"false" (any case) or a number.
    std::optional<bool> ToBoolean() const;
    // Date/time values as they are, numbers as serial days; text and the rest do not convert.
    std::optional<TZvDateTime> ToDateTime() const;

    friend bool operator==(const TZvValue&, const TZvValue&) = default;

private:
    TStorage Storage;
};

// One field definition of a data set.
struct TZvDataField {
    std::string Name;
    TFieldType DataType = ftUnknown;
};

// The field definitions of a table as the host's data access knows them. This base is a plain
// field list whose Open and Close do nothing; the widgets library derives one that reads a live
// database table.
class TZvDataSet {
public:
    TZvDataSet() = default;
    explicit TZvDataSet(std::vector<TZvDataField> Fields) : FieldDefs(std::move(Fields)) {}
    virtual ~TZvDataSet() = default;

    virtual bool GetActive() const { return Active; }
    virtual void Open() { Active = true; }
    virtual void Close() { Active = false; }

    const std::vector<TZvDataField>& GetFieldDefs() const { return FieldDefs; }
    void AddFieldDef(std::string Name, TFieldType DataType) {
        FieldDefs.push_back({std::move(Name), DataType});
    }
    // The field of that name, compared without regard to case as databases compare column names;
    // null when there is none.
    const TZvDataField* FindField(std::string_view Name) const;

protected:
    std::vector<TZvDataField> FieldDefs;
    bool Active = false;
};

// One parameter of a stored procedure.
struct TZvParam {
    std::string Name;
    TParamType ParamType = ptUnknown;
    TFieldType DataType = ftUnknown;
    TZvValue Value;
};

// The parameter list of a stored procedure, in declaration order.
class TZvParams {
public:
    TZvParam& Add(TZvParam Param) { return Items.emplace_back(std::move(Param)); }
    void Clear() { Items.clear(); }
    int Count() const { return static_cast<int>(Items.size()); }
    TZvParam& operator[](int Index) { return Items.at(static_cast<std::size_t>(Index)); }
    const TZvParam& operator[](int Index) const { return Items.at(static_cast<std::size_t>(Index)); }
    // The parameter of that name (without regard to case); null when there is none.
    const TZvParam* FindParam(std::string_view Name) const;

private:
    std::vector<TZvParam> Items;
};

} // namespace zv
