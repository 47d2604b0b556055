#include "StoreValue.h"

#include <algorithm>
#include <iterator>
#include <string>

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
#include "TimeValue.h"
#include "UintValue.h"
#include "UserTrace.h"
#include "dorvelshare/RTime.h"

namespace dorvel::BACnet {

namespace {

template <class Value>
auto const& ValueOf(CPropertyValue& value) {
    return dynamic_cast<Value&>(value).View();
}

void StoreBoolean(CPropertyValue& value, long long, OpcUa_VariantHlp& variant) {
    bool const state = ValueOf<BooleanValue>(value);
    Trace("value : %s\n", state ? "true" : "false");
    variant.SetBool(state);
}

void StoreBinary(CPropertyValue& value, long long, OpcUa_VariantHlp& variant) {
    bool const active = ValueOf<BinaryValue>(value) != BACnetBinaryPV::Inactive;
    Trace("value : %d\n", active ? 1 : 0);
    variant.SetBool(active);
}

void StoreUnsigned(CPropertyValue& value, long long, OpcUa_VariantHlp& variant) {
    auto const number = static_cast<unsigned int>(ValueOf<UintValue>(value));
    Trace("value : %u\n", number);
    variant.SetUInt(number);
}

void StoreSigned(CPropertyValue& value, long long, OpcUa_VariantHlp& variant) {
    auto const number = static_cast<int>(ValueOf<IntValue>(value));
    Trace("value : %d \n", number);
    variant.SetInt(number);
}

void StoreReal(CPropertyValue& value, long long, OpcUa_VariantHlp& variant) {
    float const number = ValueOf<RealValue>(value);
    Trace("value : %f\n", static_cast<double>(number));
    variant.SetFloat(number);
}

void StoreDouble(CPropertyValue& value, long long, OpcUa_VariantHlp& variant) {
    double const number = ValueOf<DoubleValue>(value);
    Trace("value : %f\n", number);
    variant.SetDouble(number);
}

char HexDigit(int nibble) {
    char buffer[34];
    return *itoa(nibble, buffer, 16);
}

void StoreOctetString(CPropertyValue& value, long long, OpcUa_VariantHlp& variant) {
    std::string text;
    for (unsigned char const octet : ValueOf<OctetStringValue>(value)) {
        text += HexDigit(octet >> 4);
        text += HexDigit(octet & 0x0F);
    }
    Trace("value : %s\n\r", text.c_str());
    variant.SetUTF8String(text.c_str());
}

void StoreBitString(CPropertyValue& value, long long, OpcUa_VariantHlp& variant) {
    auto const& bits = ValueOf<BitStringValue>(value);
    std::string text;
    std::transform(bits.begin(), bits.end(), std::back_inserter(text),
                   [](bool bit) { return bit ? '1' : '0'; });
    Trace("value : %s\n\r", text.c_str());
    variant.SetString(text.c_str(), static_cast<int>(text.size()));
}

void StoreText(CPropertyValue& value, long long, OpcUa_VariantHlp& variant) {
    std::string const& text = ValueOf<CharacterStringValue>(value);
    variant.SetUTF8String(text.c_str(), static_cast<int>(text.size()));
}

void StoreTime(CPropertyValue& value, long long, OpcUa_VariantHlp& variant) {
    Time const& time = ValueOf<TimeValue>(value);
    variant.SetUInt(time.hour * 3'600'000u + time.minute * 60'000u + time.second * 1'000u +
                    time.hundredths * 100u);
}

void StoreDate(CPropertyValue& value, long long localTimeDiff, OpcUa_VariantHlp& variant) {
    variant.SetTime(static_cast<long long>(ValueOf<DateValue>(value).ToFileTime()) - localTimeDiff);
}

void StoreDateTime(CPropertyValue& value, long long, OpcUa_VariantHlp& variant) {
    variant.SetTime(static_cast<long long>(ValueOf<DateTimeValue>(value).ToFileTime()));
}

void StoreEnumeration(CPropertyValue& value, long long, OpcUa_VariantHlp& variant) {
    unsigned int const number = ValueOf<EnumValue>(value);
    Trace("value : %u\n", number);
    variant.SetUInt(number);
}

// The flags are bits 4 to 7, as the support table reads the bit string as a number.
void StoreStatusFlags(CPropertyValue& value, long long, OpcUa_VariantHlp& variant) {
    unsigned int const flags = ValueOf<EnumValue>(value) >> 4 & 0x0F;
    Trace("value : %u\n", flags);
    variant.SetUInt64(flags);
}

struct DeliveryRow {
    PropertyTypeEnum type;
    void (*store)(CPropertyValue& value, long long localTimeDiff, OpcUa_VariantHlp& variant);
};

constexpr DeliveryRow DeliveryRows[] = {
    {PropertyTypeEnum::Boolean, StoreBoolean},
    {PropertyTypeEnum::Unsigned, StoreUnsigned},
    {PropertyTypeEnum::Signed, StoreSigned},
    {PropertyTypeEnum::Real, StoreReal},
    {PropertyTypeEnum::Double, StoreDouble},
    {PropertyTypeEnum::Octet_String, StoreOctetString},
    {PropertyTypeEnum::Character_String, StoreText},
    {PropertyTypeEnum::Bit_String, StoreBitString},
    {PropertyTypeEnum::Time, StoreTime},
    {PropertyTypeEnum::Date, StoreDate},
    {PropertyTypeEnum::Date_Time, StoreDateTime},
    {PropertyTypeEnum::Object_Type, StoreEnumeration},
    {PropertyTypeEnum::Binary_PV, StoreBinary},
    {PropertyTypeEnum::Life_Safety_State, StoreEnumeration},
    {PropertyTypeEnum::Life_Safety_Mode, StoreEnumeration},
    {PropertyTypeEnum::Silenced_State, StoreEnumeration},
    {PropertyTypeEnum::Life_Safety_Operation, StoreEnumeration},
    {PropertyTypeEnum::Reliability, StoreEnumeration},
    {PropertyTypeEnum::Status_Flags, StoreStatusFlags},
    {PropertyTypeEnum::Event_State, StoreEnumeration},
    {PropertyTypeEnum::Engineering_Units, StoreEnumeration},
    {PropertyTypeEnum::Device_Status, StoreEnumeration},
    {PropertyTypeEnum::Segmentation, StoreEnumeration},
    {PropertyTypeEnum::Restart_Reason, StoreEnumeration},
    {PropertyTypeEnum::Polarity, StoreEnumeration},
    {PropertyTypeEnum::Exception_Schedule, StoreText},
    {PropertyTypeEnum::Weekly_Schedule, StoreText},
};

}  // namespace

bool StoreValue(PropertyTypeEnum type, CPropertyValue& value, long long localTimeDiff,
                OpcUa_VariantHlp& variant) {
    auto const row = std::find_if(std::begin(DeliveryRows), std::end(DeliveryRows),
                                  [type](DeliveryRow const& candidate) { return candidate.type == type; });
    if (row == std::end(DeliveryRows)) {
        return false;
    }
    row->store(value, localTimeDiff, variant);
    return true;
}

}  // namespace dorvel::BACnet
