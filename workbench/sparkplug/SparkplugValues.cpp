#include "SparkplugValues.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "HexText.h"
#include "NumberText.h"
#include "Printable.h"
#include "ProjectError.h"
#include "TimeText.h"
#include "ValueText.h"

namespace workbench {

namespace {

constexpr long long Millisecond = 10000;

struct TypeRow {
    SparkplugType type;
    char const* name;
};

constexpr TypeRow Types[] = {
    {SparkplugType::Int8, "Int8"},         {SparkplugType::Int16, "Int16"},
    {SparkplugType::Int32, "Int32"},       {SparkplugType::Int64, "Int64"},
    {SparkplugType::UInt8, "UInt8"},       {SparkplugType::UInt16, "UInt16"},
    {SparkplugType::UInt32, "UInt32"},     {SparkplugType::UInt64, "UInt64"},
    {SparkplugType::Float, "Float"},       {SparkplugType::Double, "Double"},
    {SparkplugType::Boolean, "Boolean"},   {SparkplugType::String, "String"},
    {SparkplugType::DateTime, "DateTime"}, {SparkplugType::Text, "Text"},
    {SparkplugType::Bytes, "Bytes"},
};

std::uint32_t Octets4(int value) {
    return static_cast<std::uint32_t>(value);
}

SparkplugValue ValueOf(OpcUa_Variant const& value) {
    switch (value.Datatype) {
        case OpcUaType_Boolean:
            return value.Value.Boolean;
        case OpcUaType_SByte:
            return Octets4(value.Value.SByte);
        case OpcUaType_Byte:
            return Octets4(value.Value.Byte);
        case OpcUaType_Int16:
            return Octets4(value.Value.Int16);
        case OpcUaType_UInt16:
            return Octets4(value.Value.UInt16);
        case OpcUaType_Int32:
            return Octets4(value.Value.Int32);
        case OpcUaType_UInt32:
            return std::uint64_t{value.Value.UInt32};
        case OpcUaType_StatusCode:
            return std::uint64_t{value.Value.StatusCode};
        case OpcUaType_Int64:
            return static_cast<std::uint64_t>(value.Value.Int64);
        case OpcUaType_UInt64:
            return static_cast<std::uint64_t>(value.Value.UInt64);
        case OpcUaType_Float:
            return value.Value.Float;
        case OpcUaType_Double:
            return value.Value.Double;
        case OpcUaType_String:
            return tools::ValidUtf8(View(value.Value.Octets));
        case OpcUaType_DateTime:
            return SparkplugTime(value.Value.DateTime);
        case OpcUaType_ByteString:
            return SparkplugBytes{std::string(View(value.Value.Octets))};
        default:
            return {};
    }
}

int BitsOf(SparkplugType type) {
    switch (type) {
        case SparkplugType::Int8:
            return 8;
        case SparkplugType::Int16:
            return 16;
        case SparkplugType::Int32:
            return 32;
        case SparkplugType::Int64:
            return 64;
        default:
            return 0;
    }
}

// Writers extend a negative number to the width of the field, or leave the other bits 0.
std::string SignedText(std::uint64_t field, bool isLong, SparkplugType type) {
    auto const extended = isLong ? static_cast<std::int64_t>(field)
                                 : std::int64_t{static_cast<std::int32_t>(static_cast<std::uint32_t>(field))};
    int const bits = BitsOf(type);
    if (bits == 64) {
        return std::to_string(isLong ? extended : static_cast<std::int64_t>(field));
    }
    std::int64_t const limit = std::int64_t{1} << (bits - 1);
    if (extended >= -limit && extended < limit) {
        return std::to_string(extended);
    }
    if (extended >= limit && extended < 2 * limit) {
        return std::to_string(extended - 2 * limit);
    }
    throw ProjectError(tools::Quoted(std::to_string(extended)) + " is not of type " +
                       SparkplugTypeName(type) + "; expected a number of " + std::to_string(bits) + " bits");
}

struct CommandText {
    SparkplugType type;

    std::string operator()(std::monostate) const {
        throw ProjectError("the command has no value; send one of the type of the birth");
    }
    std::string operator()(std::uint32_t value) const { return Whole(value, false); }
    std::string operator()(std::uint64_t value) const {
        return type == SparkplugType::DateTime ? IsoTime(FileTimeOf(value), 0) : Whole(value, true);
    }
    std::string operator()(float value) const { return tools::NumberText(value); }
    std::string operator()(double value) const { return tools::NumberText(value); }
    std::string operator()(bool value) const { return value ? "true" : "false"; }
    std::string operator()(std::string const& value) const {
        if (tools::ValidUtf8(value) != value) {
            throw ProjectError(tools::Quoted(value) + " is not a text in UTF-8");
        }
        return value;
    }
    std::string operator()(SparkplugBytes const& value) const {
        return tools::HexText(value.octets, tools::HexDigits::Lower);
    }

    std::string Whole(std::uint64_t value, bool isLong) const {
        return BitsOf(type) != 0 ? SignedText(value, isLong, type) : std::to_string(value);
    }
};

}  // namespace

SparkplugType SparkplugTypeOf(_OpcUa_BuiltInType type) {
    switch (type) {
        case OpcUaType_Boolean:
            return SparkplugType::Boolean;
        case OpcUaType_SByte:
            return SparkplugType::Int8;
        case OpcUaType_Byte:
            return SparkplugType::UInt8;
        case OpcUaType_Int16:
            return SparkplugType::Int16;
        case OpcUaType_UInt16:
            return SparkplugType::UInt16;
        case OpcUaType_Int32:
            return SparkplugType::Int32;
        case OpcUaType_UInt32:
        case OpcUaType_StatusCode:
            return SparkplugType::UInt32;
        case OpcUaType_Int64:
            return SparkplugType::Int64;
        case OpcUaType_UInt64:
            return SparkplugType::UInt64;
        case OpcUaType_Float:
            return SparkplugType::Float;
        case OpcUaType_Double:
            return SparkplugType::Double;
        case OpcUaType_String:
            return SparkplugType::String;
        case OpcUaType_DateTime:
            return SparkplugType::DateTime;
        case OpcUaType_ByteString:
            return SparkplugType::Bytes;
        default:
            return SparkplugType::Unknown;
    }
}

char const* SparkplugTypeName(SparkplugType type) {
    auto const* const row = std::find_if(std::begin(Types), std::end(Types),
                                         [&](TypeRow const& one) { return one.type == type; });
    return row == std::end(Types) ? "" : row->name;
}

SparkplugValue WireValue(OpcUa_VariantHlp const& value, _OpcUa_BuiltInType type) {
    if (value.GetType() == type) {
        return ValueOf(value);
    }
    OpcUa_VariantHlp converted = value;
    return converted.ChangeType(type) == OpcUa_Good ? ValueOf(converted) : SparkplugValue();
}

std::string CommandValue(SparkplugMetric const& metric, SparkplugType variableType) {
    SparkplugType const type = metric.type == SparkplugType::Unknown ? variableType : metric.type;
    return std::visit(CommandText{type}, metric.isNull ? SparkplugValue() : metric.value);
}

std::uint32_t QualityCode(QualityKind quality, bool isSuspect) {
    if (isSuspect || quality == QualityKind::Bad) {
        return QualityBad;
    }
    return quality == QualityKind::Good ? QualityGood : QualityStale;
}

std::uint64_t SparkplugTime(long long fileTime) {
    return static_cast<std::uint64_t>((fileTime - UnixEpoch) / Millisecond);
}

long long FileTimeOf(std::uint64_t milliseconds) {
    constexpr long long earliest = -UnixEpoch / Millisecond;
    constexpr long long latest = (9223372036854775807LL - UnixEpoch) / Millisecond;
    auto const since1970 = static_cast<std::int64_t>(milliseconds);
    return UnixEpoch + std::clamp<long long>(since1970, earliest, latest) * Millisecond;
}

}  // namespace workbench
