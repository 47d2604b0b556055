// The setters and getters of variants.

#include <climits>
#include <memory>

#include "Conversion.h"
#include "Octets.h"

namespace {

using ValueOf = decltype(OpcUa_Variant::Value);

template <class T>
void Set(OpcUa_Variant& variant, _OpcUa_BuiltInType type, T ValueOf::*member, T const& value) {
    T const kept = value;  // it may stand in the variant itself
    OpcUa_Variant_Clear(&variant);
    variant.Datatype = static_cast<unsigned char>(type);
    variant.Value.*member = kept;
}

OpcUa_Variant const& Inner(OpcUa_Variant const& variant) {
    return variant.Datatype == OpcUaType_DataValue ? variant.Value.DataValue->Value : variant;
}

template <class T>
OpcUa_StatusCode Get(OpcUa_Variant const& variant, _OpcUa_BuiltInType type, T ValueOf::*member, T& value) {
    OpcUa_VariantHlp converted;
    OpcUa_StatusCode const status = ConvertVariant(Inner(variant), type, converted);
    if (status == OpcUa_Good) {
        value = converted.Value.*member;
    }
    return status;
}

int LengthOf(char const* text) {
    std::size_t const length = text ? std::strlen(text) : 0;
    return length < INT_MAX ? static_cast<int>(length) : INT_MAX - 1;
}

}  // namespace

void OpcUa_VariantHlp::SetBool(bool value) {
    Set(*this, OpcUaType_Boolean, &ValueOf::Boolean, value);
}
void OpcUa_VariantHlp::SetInt(int value) {
    Set(*this, OpcUaType_Int32, &ValueOf::Int32, value);
}
void OpcUa_VariantHlp::SetUInt(unsigned int value) {
    Set(*this, OpcUaType_UInt32, &ValueOf::UInt32, value);
}
void OpcUa_VariantHlp::SetInt64(long long value) {
    Set(*this, OpcUaType_Int64, &ValueOf::Int64, value);
}
void OpcUa_VariantHlp::SetUInt64(unsigned long long value) {
    Set(*this, OpcUaType_UInt64, &ValueOf::UInt64, value);
}
void OpcUa_VariantHlp::SetFloat(float value) {
    Set(*this, OpcUaType_Float, &ValueOf::Float, value);
}
void OpcUa_VariantHlp::SetDouble(double value) {
    Set(*this, OpcUaType_Double, &ValueOf::Double, value);
}

void OpcUa_VariantHlp::SetTime(long long const& fileTime) {
    Set(*this, OpcUaType_DateTime, &ValueOf::DateTime, fileTime);
}

void OpcUa_VariantHlp::SetStatusCode(OpcUa_StatusCode status) {
    Set(*this, OpcUaType_StatusCode, &ValueOf::StatusCode, status);
}

void OpcUa_VariantHlp::SetUTF8String(char const* text) {
    SetString(text, LengthOf(text));
}
void OpcUa_VariantHlp::SetUTF8String(char const* text, int length) {
    SetString(text, length);
}

void OpcUa_VariantHlp::SetString(char const* text, int length) {
    Set(*this, OpcUaType_String, &ValueOf::Octets, MakeOctets(text, length));
}

void OpcUa_VariantHlp::SetByteString(char const* octets, int length) {
    Set(*this, OpcUaType_ByteString, &ValueOf::Octets, MakeOctets(octets, length));
}

void OpcUa_VariantHlp::SetDataValue(OpcUa_VariantHlp& value, long long fileTime, OpcUa_StatusCode status) {
    auto record = std::make_unique<OpcUa_DataValue>(OpcUa_DataValue{{}, status, fileTime});
    value.Normalize(nullptr, nullptr);
    record->Value = value;
    OpcUa_Variant_Initialize(&value);
    Set(*this, OpcUaType_DataValue, &ValueOf::DataValue, record.release());
}

OpcUa_StatusCode OpcUa_VariantHlp::GetBool(bool& value) const {
    return Get(*this, OpcUaType_Boolean, &ValueOf::Boolean, value);
}

OpcUa_StatusCode OpcUa_VariantHlp::GetInt(int& value) const {
    return Get(*this, OpcUaType_Int32, &ValueOf::Int32, value);
}

OpcUa_StatusCode OpcUa_VariantHlp::GetUInt(unsigned int& value) const {
    return Get(*this, OpcUaType_UInt32, &ValueOf::UInt32, value);
}

OpcUa_StatusCode OpcUa_VariantHlp::GetInt64(long long& value) const {
    return Get(*this, OpcUaType_Int64, &ValueOf::Int64, value);
}

OpcUa_StatusCode OpcUa_VariantHlp::GetUInt64(unsigned long long& value) const {
    return Get(*this, OpcUaType_UInt64, &ValueOf::UInt64, value);
}

OpcUa_StatusCode OpcUa_VariantHlp::GetDouble(double& value) const {
    return Get(*this, OpcUaType_Double, &ValueOf::Double, value);
}

OpcUa_StatusCode OpcUa_VariantHlp::GetString(std::string& value) const {
    OpcUa_VariantHlp converted;
    OpcUa_StatusCode const status = ConvertVariant(Inner(*this), OpcUaType_String, converted);
    if (status == OpcUa_Good) {
        OpcUa_Octets const& octets = converted.Value.Octets;
        value.assign(octets.Data, static_cast<std::size_t>(octets.Length));
    }
    return status;
}

OpcUa_StatusCode OpcUa_VariantHlp::GetTime(long long& fileTime, int kind) const {
    constexpr int utc = 1;
    return kind == utc ? Get(*this, OpcUaType_DateTime, &ValueOf::DateTime, fileTime) : OpcUa_BadTypeMismatch;
}
