#include "DriverDecoding.h"

#include <algorithm>
#include <cstring>

#include "Calendar.h"
#include "CharacterSets.h"
#include "NumberText.h"
#include "TypeName.h"
#include "ValueText.h"

namespace workbench {

namespace {

constexpr long long Second = 10'000'000;  // file time
constexpr long long Day = 86'400 * Second;

// Days from 1 January 1601 to the date, in the Gregorian calendar.
long long DaysTo(standard::CalendarDate const& date) {
    int const year = date[0] + 1900;
    long long const before = year - 1;
    long long days = before * 365 + before / 4 - before / 100 + before / 400 - 584388;
    for (int month = 1; month < date[1]; ++month) {
        days += standard::DaysInMonth(year, month);
    }
    return days + date[2] - 1;
}

long long DateFileTime(standard::CalendarDate const& date) {
    return DaysTo(date) * Day;
}

long long TimeFileTime(standard::TimeOfDay const& time) {
    return (time[0] * 3600LL + time[1] * 60LL + time[2]) * Second + time[3] * (Second / 100);
}

// Milliseconds since midnight, with the hundredths counted as tenths: the driver's unit of a Time.
unsigned Milliseconds(standard::TimeOfDay const& time) {
    return time[0] * 3'600'000u + time[1] * 60'000u + time[2] * 1'000u + time[3] * 100u;
}

void SetText(OpcUa_VariantHlp& variant, std::string const& text) {
    variant.SetString(text.data(), static_cast<int>(text.size()));
}

// The four flags as a number of four bits, as the driver delivers them.
unsigned FlagNumber(std::string const& bits) {
    unsigned number = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        number = number * 2 + (i < bits.size() && bits[i] == '1' ? 1 : 0);
    }
    return number;
}

// The device's value before the conversion to the declared type. Null if it has none.
OpcUa_VariantHlp Natural(DeviceValue const& value, PropertyTypeEnum type, long long localDiff) {
    OpcUa_VariantHlp result;
    if (HasUnspecified(value)) {
        return result;
    }
    switch (value.kind) {
        case DeviceKind::Boolean:
            result.SetBool(value.number != 0);
            break;
        case DeviceKind::Enumerated:
            if (type == PropertyTypeEnum::Binary_PV && value.number <= 1) {
                result.SetBool(value.number != 0);
                break;
            }
            [[fallthrough]];
        case DeviceKind::Unsigned:
            result.SetUInt64(value.number);
            break;
        case DeviceKind::Signed:
            result.SetInt64(value.integer);
            break;
        case DeviceKind::Real:
            result.SetFloat(static_cast<float>(value.real));
            break;
        case DeviceKind::Double:
            result.SetDouble(value.real);
            break;
        case DeviceKind::BitString:
            if (type == PropertyTypeEnum::Status_Flags) {
                result.SetUInt64(FlagNumber(value.text));
                break;
            }
            [[fallthrough]];
        case DeviceKind::OctetString:
        case DeviceKind::CharacterString:
        case DeviceKind::Schedule:
            SetText(result, value.text);
            break;
        case DeviceKind::Date:
            result.SetTime(DateFileTime(value.date) - localDiff);
            break;
        case DeviceKind::Time:
            result.SetUInt(Milliseconds(value.time));
            break;
        case DeviceKind::DateTime:
            result.SetTime(DateFileTime(value.date) + TimeFileTime(value.time));
            break;
        default:
            break;
    }
    return result;
}

std::string NoConversion(DeviceValue const& value, OpcUa_StatusCode status, _OpcUa_BuiltInType declared) {
    return status == OpcUa_BadOutOfRange ? value.shown + " does not fit " + TypeName(declared)
                                         : std::string("a value of type ") + KindName(value.kind) +
                                               " does not convert to " + TypeName(declared);
}

std::string ConversionLoss(_OpcUa_BuiltInType declared, std::string const& kept) {
    switch (declared) {
        case OpcUaType_Boolean:
            return "as Boolean every number other than 0 is true";
        case OpcUaType_Float:
        case OpcUaType_Double:
            return TypeName(declared) + " has fewer digits: " + kept;
        default:
            return "as " + TypeName(declared) + " it is " + kept;
    }
}

// The content octets of a primitive value as a number, most significant first; the driver's decoders of
// numbers take those of any datatype.
std::optional<std::uint64_t> Bits(DeviceValue const& value) {
    switch (value.kind) {
        case DeviceKind::Null:
        case DeviceKind::Boolean:
            return 0;  // an application Boolean has no content
        case DeviceKind::Unsigned:
        case DeviceKind::Enumerated:
            return value.number;
        case DeviceKind::Real: {
            float const real = static_cast<float>(value.real);
            std::uint32_t bits = 0;
            std::memcpy(&bits, &real, sizeof bits);
            return bits;
        }
        case DeviceKind::Double: {
            std::uint64_t bits = 0;
            std::memcpy(&bits, &value.real, sizeof bits);
            return bits;
        }
        default:
            return std::nullopt;
    }
}

// All numbers of octets in which the device can send the value. Without sign extension each gives another
// number.
std::vector<std::uint64_t> SignedBits(std::int64_t integer) {
    std::vector<std::uint64_t> results;
    for (int octets = 1; octets <= 8; ++octets) {
        std::int64_t const limit = octets == 8 ? INT64_MAX : (std::int64_t{1} << (octets * 8 - 1)) - 1;
        if (integer > limit || integer < -limit - 1) {
            continue;
        }
        std::uint64_t const mask = octets == 8 ? ~std::uint64_t{0} : (std::uint64_t{1} << octets * 8) - 1;
        results.push_back(static_cast<std::uint64_t>(integer) & mask);
    }
    return results;
}

std::vector<std::uint64_t> AllBits(DeviceValue const& value) {
    if (value.kind == DeviceKind::Signed) {
        return SignedBits(value.integer);
    }
    std::optional<std::uint64_t> const bits = Bits(value);
    return bits ? std::vector<std::uint64_t>{*bits} : std::vector<std::uint64_t>{};
}

// What the decoder of the type makes of the octets. Null for a decoder that does not take numbers.
OpcUa_VariantHlp DecodeNumber(std::uint64_t bits, PropertyTypeEnum type) {
    OpcUa_VariantHlp result;
    switch (type) {
        case PropertyTypeEnum::Boolean:
        case PropertyTypeEnum::Octet_String:
        case PropertyTypeEnum::Character_String:
        case PropertyTypeEnum::Bit_String:
        case PropertyTypeEnum::Time:
        case PropertyTypeEnum::Date:
        case PropertyTypeEnum::Date_Time:
        case PropertyTypeEnum::Exception_Schedule:
        case PropertyTypeEnum::Weekly_Schedule:
            break;
        case PropertyTypeEnum::Signed:
            result.SetInt(static_cast<int>(bits));
            break;
        case PropertyTypeEnum::Real: {
            auto const low = static_cast<std::uint32_t>(bits);
            float real = 0;
            std::memcpy(&real, &low, sizeof real);
            result.SetFloat(real);
            break;
        }
        case PropertyTypeEnum::Double: {
            double real = 0;
            std::memcpy(&real, &bits, sizeof real);
            result.SetDouble(real);
            break;
        }
        case PropertyTypeEnum::Binary_PV:
            result.SetBool(bits != 0);
            break;
        case PropertyTypeEnum::Status_Flags:
            result.SetUInt64(bits >> 4 & 0x0F);
            break;
        default:
            result.SetUInt(static_cast<unsigned>(bits));
            break;
    }
    return result;
}

// A Float has the value of a Double as a whole if both have the same shortest decimal text.
bool IsNarrowed(OpcUa_VariantHlp const& natural, _OpcUa_BuiltInType declared) {
    return natural.GetType() == OpcUaType_Double && declared == OpcUaType_Float;
}

}  // namespace

FaithfulValue Faithful(DeviceValue const& value, PropertyTypeEnum type, _OpcUa_BuiltInType declared,
                       long long localDiff) {
    OpcUa_VariantHlp const natural = Natural(value, type, localDiff);
    if (natural.GetType() == OpcUaType_Null) {
        return {std::nullopt, HasUnspecified(value)
                                  ? "unspecified parts of the device's value are lost"
                                  : std::string("a ") + KindName(value.kind) + " has no value in a variable"};
    }
    OpcUa_VariantHlp converted = natural;
    OpcUa_StatusCode const status = converted.ChangeType(declared);
    if (status != OpcUa_Good) {
        return {std::nullopt, NoConversion(value, status, declared)};
    }
    std::string const text = ValueText(converted, localDiff);
    OpcUa_VariantHlp back = converted;
    bool const isKept = (back.ChangeType(natural.GetType()) == OpcUa_Good && back == natural) ||
                        (IsNarrowed(natural, declared) && text == ValueText(natural, localDiff));
    return {converted, isKept ? value.lost : ConversionLoss(declared, text)};
}

std::vector<OpcUa_VariantHlp> Decoded(DeviceValue const& value, PropertyTypeEnum type,
                                      _OpcUa_BuiltInType declared) {
    std::vector<OpcUa_VariantHlp> results;
    for (std::uint64_t const bits : AllBits(value)) {
        OpcUa_VariantHlp decoded = DecodeNumber(bits, type);
        if (decoded.ChangeType(declared) == OpcUa_Good) {
            results.push_back(std::move(decoded));
        }
    }
    return results;
}

std::string DecodingLoss(DeviceValue const& value, PropertyTypeEnum type) {
    if (value.kind == DeviceKind::Signed && value.integer < 0) {
        return "the sign is lost: the driver reads the octets of a Signed without it";
    }
    bool const isWide = value.kind == DeviceKind::Unsigned || value.kind == DeviceKind::Signed;
    if (isWide && (type == PropertyTypeEnum::Unsigned || type == PropertyTypeEnum::Signed)) {
        return "the driver keeps the low 32 of 64 bits";
    }
    return std::string("the device holds ") + KindName(value.kind) + ", and the driver reads its octets as " +
           PropertyTypeName(type);
}

std::string CharacterSetLoss(DeviceValue const& value, OpcUa_Variant const& driver) {
    struct Set {
        char number;
        char const* name;
    };
    static constexpr Set Sets[] = {{3, "UCS-4"}, {4, "UCS-2"}, {5, "ISO 8859-1"}};
    if (value.kind != DeviceKind::CharacterString || driver.Datatype != OpcUaType_String) {
        return {};
    }
    std::string_view const octets = View(driver.Value.Octets);
    for (Set const& set : Sets) {
        standard::Octets content = {set.number};
        content.insert(content.end(), octets.begin(), octets.end());
        if (standard::TextOfCharacterString(content) == value.text) {
            return std::string("the device sends ") + set.name +
                   ", and the driver takes its octets for UTF-8";
        }
    }
    return {};
}

char const* PropertyTypeName(PropertyTypeEnum type) {
    switch (type) {
        case PropertyTypeEnum::Boolean:
            return "Boolean";
        case PropertyTypeEnum::Unsigned:
            return "Unsigned";
        case PropertyTypeEnum::Signed:
            return "Signed";
        case PropertyTypeEnum::Real:
            return "Real";
        case PropertyTypeEnum::Double:
            return "Double";
        case PropertyTypeEnum::Octet_String:
            return "Octet String";
        case PropertyTypeEnum::Character_String:
            return "Character String";
        case PropertyTypeEnum::Bit_String:
            return "Bit String";
        case PropertyTypeEnum::Time:
            return "Time";
        case PropertyTypeEnum::Date:
            return "Date";
        case PropertyTypeEnum::Date_Time:
            return "Date and Time";
        case PropertyTypeEnum::Exception_Schedule:
        case PropertyTypeEnum::Weekly_Schedule:
            return "schedule";
        default:
            return "Enumerated";
    }
}

}  // namespace workbench
