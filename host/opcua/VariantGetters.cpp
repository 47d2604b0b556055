// The getters of variants and ChangeType, which convert.

#include <utility>

#include "Conversion.h"

namespace {

using ValueOf = decltype(OpcUa_Variant::Value);

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

}  // namespace

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

OpcUa_StatusCode OpcUa_VariantHlp::ChangeType(_OpcUa_BuiltInType type) {
    if (type == OpcUaType_DataValue && GetType() != OpcUaType_Null) {
        if (GetType() != OpcUaType_DataValue) {
            SetDataValue(*this, 0, OpcUa_Good);
        }
        return OpcUa_Good;
    }
    Normalize(nullptr, nullptr);
    if (GetType() == type && type != OpcUaType_Null) {
        return OpcUa_Good;
    }
    OpcUa_VariantHlp result;
    OpcUa_StatusCode const status = ConvertVariant(*this, type, result);
    *this = std::move(result);
    return status;
}
