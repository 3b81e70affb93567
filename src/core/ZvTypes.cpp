// Conversions of variant values to text, Boolean and date/time, and the look-ups of the
// data-access interfaces.
#include "ZvTypes.h"

#include "ZvUtils.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace zv {

namespace {

// Days between 1970-01-01 and the civil date (proleptic Gregorian), after Howard Hinnant's
// days_from_civil algorithm.
std::int64_t DaysFromCivil(std::int64_t Y, std::int64_t M, std::int64_t D) {
    Y -= M <= 2 ? 1 : 0;
    const std::int64_t Era = (Y >= 0 ? Y : Y - 399) / 400;
    const std::int64_t YearOfEra = Y - Era * 400;
    const std::int64_t DayOfYear = (153 * (M + (M > 2 ? -3 : 9)) + 2) / 5 + D - 1;
    const std::int64_t DayOfEra = YearOfEra * 365 + YearOfEra / 4 - YearOfEra / 100 + DayOfYear;
    return Era * 146097 + DayOfEra - 719468;
}

void CivilFromDays(std::int64_t Z, std::int32_t& Y, std::int32_t& M, std::int32_t& D) {
    Z += 719468;
    const std::int64_t Era = (Z >= 0 ? Z : Z - 146096) / 146097;
    const std::int64_t DayOfEra = Z - Era * 146097;
    const std::int64_t YearOfEra = (DayOfEra - DayOfEra / 1460 + DayOfEra / 36524 - DayOfEra / 146096) / 365;
    const std::int64_t DayOfYear = DayOfEra - (365 * YearOfEra + YearOfEra / 4 - YearOfEra / 100);
    const std::int64_t MonthIndex = (5 * DayOfYear + 2) / 153;
    D = static_cast<std::int32_t>(DayOfYear - (153 * MonthIndex + 2) / 5 + 1);
    M = static_cast<std::int32_t>(MonthIndex < 10 ? MonthIndex + 3 : MonthIndex - 9);
    Y = static_cast<std::int32_t>(YearOfEra + Era * 400 + (M <= 2 ? 1 : 0));
}

const std::int64_t SerialEpoch = DaysFromCivil(1899, 12, 30);
constexpr double MillisecondsPerDay = 86400000.0;

std::string Format(const char* Pattern, std::int32_t A, std::int32_t B, std::int32_t C) {
    char Buffer[48];
    const int N = std::snprintf(Buffer, sizeof Buffer, Pattern, A, B, C);
    return std::string(Buffer, static_cast<std::size_t>(N > 0 ? N : 0));
}

std::string DoubleToText(double V) {
    char Buffer[64];
    const auto Result = std::to_chars(Buffer, Buffer + sizeof Buffer, V);
    return std::string(Buffer, Result.ptr);
}

std::optional<double> TextToDouble(std::string_view Text) {
    const std::string Trimmed = Trim(Text);
    double V = 0;
    const char* End = Trimmed.data() + Trimmed.size();
    const auto Result = std::from_chars(Trimmed.data(), End, V);
    if (Trimmed.empty() || Result.ec != std::errc() || Result.ptr != End)
        return std::nullopt;
    return V;
}

} // namespace

TZvDateTime TZvDateTime::FromSerial(double Serial) {
    TZvDateTime Result;
    // The whole part counts days and the fraction, whatever the sign, is the time of day.
    double Whole = std::trunc(Serial);
    auto Millis = static_cast<std::int64_t>(std::llround(std::fabs(Serial - Whole) * MillisecondsPerDay));
    if (Millis >= static_cast<std::int64_t>(MillisecondsPerDay)) {
        Millis = 0;
        Whole += Serial < 0 ? -1 : 1;
    }
    CivilFromDays(static_cast<std::int64_t>(Whole) + SerialEpoch, Result.Year, Result.Month, Result.Day);
    Result.Hour = static_cast<std::int32_t>(Millis / 3600000);
    Result.Minute = static_cast<std::int32_t>(Millis / 60000 % 60);
    Result.Second = static_cast<std::int32_t>(Millis / 1000 % 60);
    Result.Millisecond = static_cast<std::int32_t>(Millis % 1000);
    return Result;
}

double TZvDateTime::ToSerial() const {
    const auto Days = static_cast<double>(DaysFromCivil(Year, Month, Day) - SerialEpoch);
    const double Fraction =
        (((Hour * 60.0 + Minute) * 60.0 + Second) * 1000.0 + Millisecond) / MillisecondsPerDay;
    return Days < 0 ? Days - Fraction : Days + Fraction;
}

std::string TZvDateTime::DateText() const {
    return Format("%04d-%02d-%02d", Year, Month, Day);
}

std::string TZvDateTime::TimeText() const {
    std::string Result = Format("%02d:%02d:%02d", Hour, Minute, Second);
    if (Millisecond != 0)
        Result += Format(".%03d", Millisecond, 0, 0);
    return Result;
}

std::string TZvDateTime::DateTimeText() const {
    return DateText() + "T" + TimeText();
}

std::string TZvValue::ToString() const {
    struct TVisitor {
        std::string operator()(std::monostate) const { return {}; }
        std::string operator()(TZvNull) const { return {}; }
        std::string operator()(bool V) const { return V ? "True" : "False"; }
        std::string operator()(std::int64_t V) const { return std::to_string(V); }
        std::string operator()(double V) const { return DoubleToText(V); }
        std::string operator()(const std::string& V) const { return V; }
        std::string operator()(const TZvDateTime& V) const {
            if (V.IsTimeOnly())
                return V.TimeText();
            return V.HasTime() ? V.DateTimeText() : V.DateText();
        }
    };
    return std::visit(TVisitor{}, Storage);
}

std::optional<bool> TZvValue::ToBoolean() const {
    if (const bool* B = std::get_if<bool>(&Storage))
        return *B;
    if (const std::int64_t* I = std::get_if<std::int64_t>(&Storage))
        return *I != 0;
    if (const double* D = std::get_if<double>(&Storage))
        return *D != 0.0;
    if (const std::string* S = std::get_if<std::string>(&Storage)) {
        const std::string Trimmed = Trim(*S);
        if (SameText(Trimmed, "true"))
            return true;
        if (SameText(Trimmed, "false"))
            return false;
        if (const std::optional<double> Number = TextToDouble(Trimmed))
            return *Number != 0.0;
    }
    return std::nullopt;
}

std::optional<TZvDateTime> TZvValue::ToDateTime() const {
    if (const TZvDateTime* T = std::get_if<TZvDateTime>(&Storage))
        return *T;
    if (const std::int64_t* I = std::get_if<std::int64_t>(&Storage))
        return TZvDateTime::FromSerial(static_cast<double>(*I));
    if (const double* D = std::get_if<double>(&Storage))
        return TZvDateTime::FromSerial(*D);
    return std::nullopt;
}

const TZvDataField* TZvDataSet::FindField(std::string_view Name) const {
    for (const TZvDataField& Field : FieldDefs)
        if (SameText(Field.Name, Name))
            return &Field;
    return nullptr;
}

const TZvParam* TZvParams::FindParam(std::string_view Name) const {
    for (const TZvParam& Param : Items)
        if (SameText(Param.Name, Name))
            return &Param;
    return nullptr;
}

} // namespace zv
