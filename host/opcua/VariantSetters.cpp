// The setters of variants.

#include <algorithm>
#include <climits>
#include <cstring>
#include <memory>

#include "Octets.h"
#include "opcua/OpcUa_Variant.h"

namespace {

using ValueOf = decltype(OpcUa_Variant::Value);

template <class T>
void Set(OpcUa_Variant& variant, _OpcUa_BuiltInType type, T ValueOf::*member, T const& value) {
    T const kept = value;  // it may be part of the variant
    OpcUa_Variant_Clear(&variant);
    variant.Datatype = static_cast<unsigned char>(type);
    variant.Value.*member = kept;
}

int LengthOf(char const* text) {
    std::size_t const length = text ? std::strlen(text) : 0;
    return length < INT_MAX ? static_cast<int>(length) : INT_MAX - 1;
}

// Empty without data or with a length below 0.
OpcUa_Octets OctetsOf(char const* data, int length) {
    int const size = data ? std::max(length, 0) : 0;
    return {CopyOctets(data, size), size};
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
    Set(*this, OpcUaType_String, &ValueOf::Octets, OctetsOf(text, length));
}

void OpcUa_VariantHlp::SetByteString(char const* octets, int length) {
    Set(*this, OpcUaType_ByteString, &ValueOf::Octets, OctetsOf(octets, length));
}

void OpcUa_VariantHlp::SetDataValue(OpcUa_VariantHlp& value, long long fileTime, OpcUa_StatusCode status) {
    auto record = std::make_unique<OpcUa_DataValue>(OpcUa_DataValue{{}, status, fileTime});
    value.Normalize(nullptr, nullptr);
    record->Value = value;
    OpcUa_Variant_Initialize(&value);
    Set(*this, OpcUaType_DataValue, &ValueOf::DataValue, record.release());
}
