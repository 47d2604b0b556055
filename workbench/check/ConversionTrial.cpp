#include "ConversionTrial.h"

#include <map>
#include <memory>
#include <tuple>
#include <utility>
#include <vector>

#include "BinaryValue.h"
#include "BitStringValue.h"
#include "BooleanValue.h"
#include "CharacterStringValue.h"
#include "DateTimeValue.h"
#include "DateValue.h"
#include "DoubleValue.h"
#include "EnumValue.h"
#include "IntValue.h"
#include "OctetStringValue.h"
#include "RealValue.h"
#include "StoreValue.h"
#include "TimeValue.h"
#include "UintValue.h"

namespace workbench {

namespace {

using Value = std::unique_ptr<CPropertyValue>;
using Values = std::vector<Value>;

constexpr long long WholeNumbers[] = {0,     1,     2,     5,          100,        127,
                                      128,   200,   255,   256,        1000,       32767,
                                      32768, 65535, 65536, 2147483647, 2147483648, 4294967295};
constexpr double Fractions[] = {0, 1, -1, 21.5, -40.25, 300, -300, 40000, 70000};
constexpr double WideFractions[] = {0, 1, -1, 21.5, -40.25, 300, 70000, 123456789.25, 5e9};
constexpr char const* Texts[] = {"Supply air", "21.5", "1", "true", "2026-11-21T09:30:00Z", ""};

template <class T, class... Arguments>
Values Of(Arguments... arguments) {
    Values values;
    (values.push_back(std::make_unique<T>(arguments)), ...);
    return values;
}

template <class T, class Number>
Values Whole(long long largest) {
    Values values;
    for (long long const number : WholeNumbers) {
        if (number <= largest) {
            values.push_back(std::make_unique<T>(static_cast<Number>(number)));
        }
    }
    return values;
}

Values Signed() {
    Values values = Whole<IntValue, long long>(2147483647);
    for (long long const number : {-1LL, -5LL, -1000LL, -70000LL}) {
        values.push_back(std::make_unique<IntValue>(number));
    }
    return values;
}

template <class T, class Number, class Samples>
Values Floating(Samples const& samples) {
    Values values;
    for (double const number : samples) {
        values.push_back(std::make_unique<T>(static_cast<Number>(number)));
    }
    return values;
}

Values TextValues() {
    Values values;
    for (char const* const text : Texts) {
        values.push_back(std::make_unique<CharacterStringValue>(text, EncodingTypeEnum::Utf8));
    }
    return values;
}

Values ScheduleTexts() {
    Values values;
    for (char const* const text : {";;;;;;;", "08000000,4,9,20.000000;;;;;;;", ""}) {
        values.push_back(std::make_unique<CharacterStringValue>(text, EncodingTypeEnum::Utf8));
    }
    return values;
}

Values StatusFlags() {
    return Of<EnumValue>(0x400U, 0x410U, 0x480U, 0x4F0U);
}

Values Times() {
    return Of<TimeValue>(Time(0, 0, 0, 0), Time(6, 30, 15, 5), Time(23, 59, 59, 99));
}

Values SamplesOf(PropertyTypeEnum type, long long largest) {
    switch (type) {
        case PropertyTypeEnum::Boolean:
            return Of<BooleanValue>(false, true);
        case PropertyTypeEnum::Binary_PV:
            return Of<BinaryValue>(BACnetBinaryPV::Inactive, BACnetBinaryPV::Active);
        case PropertyTypeEnum::Unsigned:
            return Whole<UintValue, unsigned long long>(largest);
        case PropertyTypeEnum::Signed:
            return Signed();
        case PropertyTypeEnum::Real:
            return Floating<RealValue, float>(Fractions);
        case PropertyTypeEnum::Double:
            return Floating<DoubleValue, double>(WideFractions);
        case PropertyTypeEnum::Octet_String:
            return Of<OctetStringValue>(std::vector<char>{10, 20, 30}, std::vector<char>{1, 2},
                                        std::vector<char>{});
        case PropertyTypeEnum::Character_String:
            return TextValues();
        case PropertyTypeEnum::Bit_String:
            return Of<BitStringValue>(std::vector<bool>{false, true, true}, std::vector<bool>(40, true));
        case PropertyTypeEnum::Time:
            return Times();
        case PropertyTypeEnum::Date:
            return Of<DateValue>(Date(126, 11, 21, 6), Date(99, 1, 1, 255));
        case PropertyTypeEnum::Date_Time:
            return Of<DateTimeValue>(DateTime(Date(126, 11, 21, 6), Time(6, 30, 15, 5)));
        case PropertyTypeEnum::Status_Flags:
            return StatusFlags();
        case PropertyTypeEnum::Exception_Schedule:
        case PropertyTypeEnum::Weekly_Schedule:
            return ScheduleTexts();
        default:
            return Whole<EnumValue, unsigned int>(largest);
    }
}

std::string TextOf(OpcUa_VariantHlp value) {
    std::string text;
    bool const isText = value.GetType() == OpcUaType_String;
    value.GetString(text);
    return isText ? "\"" + text + "\"" : text;
}

// Counts what becomes of the samples.
struct Tally {
    int values = 0;
    int lost = 0;
    std::string lostExample;
    std::string changedExample;
    std::string changedTo;

    void Add(OpcUa_VariantHlp const& stored, _OpcUa_BuiltInType target) {
        ++values;
        OpcUa_VariantHlp converted = stored;
        if (converted.ChangeType(target) != OpcUa_Good) {
            lostExample = lost++ == 0 ? TextOf(stored) : lostExample;
            return;
        }
        OpcUa_VariantHlp back = converted;
        bool const isSame = back.ChangeType(stored.GetType()) == OpcUa_Good && back == stored;
        if (!isSame && changedExample.empty()) {
            changedExample = TextOf(stored);
            changedTo = TextOf(converted);
        }
    }

    ConversionTrial Result() const {
        using Result = ConversionTrial::Result;
        if (lost > 0) {
            return {lost == values ? Result::Never : Result::Sometimes, lostExample, {}};
        }
        return changedExample.empty() ? ConversionTrial()
                                      : ConversionTrial{Result::Changes, changedExample, changedTo};
    }
};

ConversionTrial Try(PropertyTypeEnum type, long long largest, _OpcUa_BuiltInType target) {
    Tally tally;
    for (Value const& sample : SamplesOf(type, largest)) {
        OpcUa_VariantHlp stored;
        dorvel::BACnet::StoreValue(type, *sample, 0, stored);
        tally.Add(stored, target);
    }
    return tally.Result();
}

}  // namespace

ConversionTrial const& TryConversion(PropertyTypeEnum type, long long largest, _OpcUa_BuiltInType target) {
    using Key = std::tuple<PropertyTypeEnum, long long, _OpcUa_BuiltInType>;
    thread_local std::map<Key, ConversionTrial> known;
    Key const key(type, largest, target);
    auto const found = known.find(key);
    return found != known.end() ? found->second
                                : known.emplace(key, Try(type, largest, target)).first->second;
}

bool IsCutTo32Bits(PropertyTypeEnum type) {
    constexpr long long wide = (1LL << 32) + 5;
    Value sample;
    if (type == PropertyTypeEnum::Unsigned) {
        sample = std::make_unique<UintValue>(static_cast<unsigned long long>(wide));
    } else if (type == PropertyTypeEnum::Signed) {
        sample = std::make_unique<IntValue>(wide);
    } else {
        return false;
    }
    OpcUa_VariantHlp stored;
    long long number = 0;
    return dorvel::BACnet::StoreValue(type, *sample, 0, stored) && stored.GetInt64(number) == OpcUa_Good &&
           number != wide;
}

}  // namespace workbench
