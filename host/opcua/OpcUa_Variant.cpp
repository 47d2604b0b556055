#include "opcua/OpcUa_Variant.h"

#include <cstring>
#include <memory>
#include <utility>

#include "Octets.h"

namespace {

bool HasOctets(OpcUa_Variant const& variant) {
    return variant.Datatype == OpcUaType_String || variant.Datatype == OpcUaType_ByteString;
}

// Makes target, which owns nothing, a deep copy of source.
void CopyTo(OpcUa_Variant& target, OpcUa_Variant const& source) {
    OpcUa_Variant copy = source;
    if (HasOctets(source)) {
        OpcUa_Octets const& octets = source.Value.Octets;
        copy.Value.Octets.Length = octets.Data && octets.Length > 0 ? octets.Length : 0;
        copy.Value.Octets.Data = CopyOctets(octets.Data, copy.Value.Octets.Length);
    } else if (source.Datatype == OpcUaType_DataValue) {
        auto inner = std::make_unique<OpcUa_DataValue>(*source.Value.DataValue);
        CopyTo(inner->Value, source.Value.DataValue->Value);
        copy.Value.DataValue = inner.release();
    }
    target = copy;
}

bool SameFloating(double left, double right) {
    return left == right || (left != left && right != right);
}

bool SameDataValue(OpcUa_DataValue const& left, OpcUa_DataValue const& right) {
    return left.StatusCode == right.StatusCode && left.SourceTimestamp == right.SourceTimestamp &&
           left.Value == right.Value;
}

bool SameOctets(OpcUa_Octets const& left, OpcUa_Octets const& right) {
    return left.Length == right.Length &&
           std::memcmp(left.Data, right.Data, static_cast<std::size_t>(left.Length)) == 0;
}

}  // namespace

void OpcUa_Variant_Initialize(OpcUa_Variant* variant) {
    *variant = OpcUa_Variant{};
}

void OpcUa_Variant_Clear(OpcUa_Variant* variant) {
    if (HasOctets(*variant)) {
        delete[] variant->Value.Octets.Data;
    } else if (variant->Datatype == OpcUaType_DataValue) {
        OpcUa_Variant_Clear(&variant->Value.DataValue->Value);
        delete variant->Value.DataValue;
    }
    OpcUa_Variant_Initialize(variant);
}

bool operator==(OpcUa_Variant const& left, OpcUa_Variant const& right) {
    if (left.Datatype != right.Datatype) {
        return false;
    }
    switch (left.Datatype) {
        case OpcUaType_Null:
            return true;
        case OpcUaType_Boolean:
            return left.Value.Boolean == right.Value.Boolean;
        case OpcUaType_SByte:
        case OpcUaType_Byte:
            return left.Value.Byte == right.Value.Byte;
        case OpcUaType_Int16:
        case OpcUaType_UInt16:
            return left.Value.UInt16 == right.Value.UInt16;
        case OpcUaType_Int32:
        case OpcUaType_UInt32:
        case OpcUaType_StatusCode:
            return left.Value.UInt32 == right.Value.UInt32;
        case OpcUaType_Float:
            return SameFloating(left.Value.Float, right.Value.Float);
        case OpcUaType_Double:
            return SameFloating(left.Value.Double, right.Value.Double);
        case OpcUaType_String:
        case OpcUaType_ByteString:
            return SameOctets(left.Value.Octets, right.Value.Octets);
        case OpcUaType_DataValue:
            return SameDataValue(*left.Value.DataValue, *right.Value.DataValue);
        default:  // the integers and times of 64 bits
            return left.Value.UInt64 == right.Value.UInt64;
    }
}

OpcUa_VariantHlp::OpcUa_VariantHlp() : OpcUa_Variant{} {}

OpcUa_VariantHlp::OpcUa_VariantHlp(OpcUa_VariantHlp const& other) : OpcUa_Variant{} {
    CopyTo(*this, other);
}

OpcUa_VariantHlp::OpcUa_VariantHlp(OpcUa_VariantHlp&& other) noexcept : OpcUa_Variant(other) {
    OpcUa_Variant_Initialize(&other);
}

OpcUa_VariantHlp& OpcUa_VariantHlp::operator=(OpcUa_VariantHlp const& other) {
    CopyVariants(this, &other);
    return *this;
}

OpcUa_VariantHlp& OpcUa_VariantHlp::operator=(OpcUa_VariantHlp&& other) noexcept {
    OpcUa_VariantHlp taken(std::move(other));
    std::swap<OpcUa_Variant>(*this, taken);
    return *this;
}

OpcUa_VariantHlp::~OpcUa_VariantHlp() {
    OpcUa_Variant_Clear(this);
}

void OpcUa_VariantHlp::CopyVariants(OpcUa_Variant* target, OpcUa_Variant const* source) {
    OpcUa_Variant copy;
    CopyTo(copy, *source);  // before the target is freed: the source may be the target or part of it
    OpcUa_Variant_Clear(target);
    *target = copy;
}

void OpcUa_VariantHlp::Normalize(unsigned int* status, _OpcUa_DateTime* time) {
    if (GetType() != OpcUaType_DataValue) {
        return;
    }
    OpcUa_DataValue* const outer = Value.DataValue;
    if (status) {
        *status = outer->StatusCode;
    }
    if (time) {
        auto const ticks = static_cast<unsigned long long>(outer->SourceTimestamp);
        time->dwLowDateTime = static_cast<unsigned int>(ticks);
        time->dwHighDateTime = static_cast<unsigned int>(ticks >> 32);
    }
    static_cast<OpcUa_Variant&>(*this) = outer->Value;
    delete outer;
}
