#pragma once

#include <ostream>
#include <string>
#include <string_view>

#include "opcua/OpcUa_Variant.h"

namespace test {

template <class T>
OpcUa_VariantHlp Make(_OpcUa_BuiltInType type, T decltype(OpcUa_Variant::Value)::*member, T value) {
    OpcUa_VariantHlp variant;
    variant.Datatype = static_cast<unsigned char>(type);
    variant.Value.*member = value;
    return variant;
}

using VariantUnion = decltype(OpcUa_Variant::Value);

inline OpcUa_VariantHlp Bool(bool value) {
    return Make(OpcUaType_Boolean, &VariantUnion::Boolean, value);
}
inline OpcUa_VariantHlp SByte(signed char value) {
    return Make(OpcUaType_SByte, &VariantUnion::SByte, value);
}
inline OpcUa_VariantHlp Byte(unsigned char value) {
    return Make(OpcUaType_Byte, &VariantUnion::Byte, value);
}
inline OpcUa_VariantHlp Int16(short value) {
    return Make(OpcUaType_Int16, &VariantUnion::Int16, value);
}
inline OpcUa_VariantHlp UInt16(unsigned short value) {
    return Make(OpcUaType_UInt16, &VariantUnion::UInt16, value);
}
inline OpcUa_VariantHlp Int32(int value) {
    return Make(OpcUaType_Int32, &VariantUnion::Int32, value);
}
inline OpcUa_VariantHlp UInt32(unsigned int value) {
    return Make(OpcUaType_UInt32, &VariantUnion::UInt32, value);
}
inline OpcUa_VariantHlp Int64(long long value) {
    return Make(OpcUaType_Int64, &VariantUnion::Int64, value);
}
inline OpcUa_VariantHlp UInt64(unsigned long long value) {
    return Make(OpcUaType_UInt64, &VariantUnion::UInt64, value);
}
inline OpcUa_VariantHlp Float(float value) {
    return Make(OpcUaType_Float, &VariantUnion::Float, value);
}
inline OpcUa_VariantHlp Double(double value) {
    return Make(OpcUaType_Double, &VariantUnion::Double, value);
}
inline OpcUa_VariantHlp Time(long long value) {
    return Make(OpcUaType_DateTime, &VariantUnion::DateTime, value);
}
inline OpcUa_VariantHlp Status(OpcUa_StatusCode value) {
    return Make(OpcUaType_StatusCode, &VariantUnion::StatusCode, value);
}
inline OpcUa_VariantHlp Text(std::string_view value) {
    OpcUa_VariantHlp variant;
    variant.SetString(value.data(), static_cast<int>(value.size()));
    return variant;
}
inline OpcUa_VariantHlp Bytes(std::string_view value) {
    OpcUa_VariantHlp variant;
    variant.SetByteString(value.data(), static_cast<int>(value.size()));
    return variant;
}
inline OpcUa_VariantHlp DataValue(OpcUa_VariantHlp value, long long time, OpcUa_StatusCode status) {
    OpcUa_VariantHlp variant;
    variant.SetDataValue(value, time, status);
    return variant;
}
inline OpcUa_VariantHlp Null() {
    return OpcUa_VariantHlp();
}

// For the messages of failed tests: the number of the type, then the value as a text where it has one.
inline std::string Describe(OpcUa_Variant const& variant) {
    OpcUa_VariantHlp copy;
    OpcUa_VariantHlp::CopyVariants(&copy, &variant);
    std::string text;
    copy.GetString(text);
    return "type " + std::to_string(variant.Datatype) + " '" + text + "'";
}

}  // namespace test

inline void PrintTo(OpcUa_VariantHlp const& variant, std::ostream* out) {
    *out << test::Describe(variant);
}
