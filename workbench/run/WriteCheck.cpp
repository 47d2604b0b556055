#include "WriteCheck.h"

#include <cmath>
#include <locale>
#include <sstream>
#include <string>

#include "DatumText.h"

namespace workbench {

using standard::Datum;
using standard::DatumKind;

namespace {

bool SameReal(double meant, double held) {
    return meant == held || (std::isnan(meant) && std::isnan(held));
}

std::optional<bool> HoldsInteger(OpcUa_VariantHlp meant, Datum const& held) {
    bool const isUnsigned = meant.GetType() == OpcUaType_UInt64;
    std::uint64_t const number = isUnsigned ? meant.Value.UInt64 : 0;
    long long integer = 0;
    if (!isUnsigned && meant.GetInt64(integer) != OpcUa_Good) {
        return std::nullopt;
    }
    bool const isNegative = !isUnsigned && integer < 0;
    std::uint64_t const magnitude = isUnsigned ? number : static_cast<std::uint64_t>(integer);
    switch (held.kind) {
        case DatumKind::Boolean:
        case DatumKind::Unsigned:
        case DatumKind::Enumerated:
            return !isNegative && magnitude == held.number;
        case DatumKind::Signed:
            return magnitude == held.number && isNegative == (held.Signed() < 0);
        case DatumKind::Real:
        case DatumKind::Double:
            return SameReal(isUnsigned ? static_cast<double>(number) : static_cast<double>(integer),
                            held.real);
        default:
            return std::nullopt;
    }
}

std::optional<bool> HoldsReal(double meant, Datum const& held) {
    switch (held.kind) {
        case DatumKind::Real:
            return SameReal(static_cast<float>(meant), held.real);
        case DatumKind::Double:
            return SameReal(meant, held.real);
        case DatumKind::Boolean:
        case DatumKind::Unsigned:
        case DatumKind::Enumerated:
            return SameReal(meant, static_cast<double>(held.number));
        case DatumKind::Signed:
            return SameReal(meant, static_cast<double>(held.Signed()));
        default:
            return std::nullopt;
    }
}

bool IsNumber(DatumKind kind) {
    return kind == DatumKind::Unsigned || kind == DatumKind::Signed || kind == DatumKind::Real ||
           kind == DatumKind::Double;
}

// A text may mean a number. "21,5" means none, so no number is it.
std::optional<bool> HoldsText(std::string const& meant, Datum const& held) {
    if (held.kind == DatumKind::CharacterString) {
        return meant == held.text;
    }
    if (!IsNumber(held.kind)) {
        return std::nullopt;
    }
    std::istringstream stream(meant);
    stream.imbue(std::locale::classic());
    double number = 0;
    bool const isNumber = stream >> number && (stream >> std::ws).eof();
    return isNumber ? HoldsReal(number, held) : false;
}

std::optional<bool> Holds(OpcUa_VariantHlp const& meant, Datum const& held) {
    std::string text;
    switch (meant.GetType()) {
        case OpcUaType_Float:
            return HoldsReal(static_cast<double>(meant.Value.Float), held);
        case OpcUaType_Double:
            return HoldsReal(meant.Value.Double, held);
        case OpcUaType_String:
            return meant.GetString(text) == OpcUa_Good ? HoldsText(text, held) : std::nullopt;
        case OpcUaType_Boolean:
        case OpcUaType_SByte:
        case OpcUaType_Byte:
        case OpcUaType_Int16:
        case OpcUaType_UInt16:
        case OpcUaType_Int32:
        case OpcUaType_UInt32:
        case OpcUaType_Int64:
        case OpcUaType_UInt64:
            return HoldsInteger(meant, held);
        default:
            return std::nullopt;
    }
}

}  // namespace

std::optional<WriteState> CheckWrite(OpcUa_VariantHlp const& meant, PointWrite const& write,
                                     PointState const& point) {
    if (!point.isFresh) {
        return std::nullopt;
    }
    if (!point.suspect.empty()) {
        return WriteState{WriteStage::Unconfirmed, meant, "cannot be read back: " + point.suspect, {}};
    }
    if (!point.values || point.values->size() != 1) {
        return std::nullopt;
    }
    std::optional<bool> const holds = Holds(meant, point.values->front());
    if (!holds) {
        return std::nullopt;
    }
    if (*holds) {
        return WriteState{WriteStage::Written, meant, {}, {}};
    }
    std::string const held = standard::DatumText(point.values->front());
    return write.values == *point.values
               ? WriteState{WriteStage::Differs, meant, "the driver sent " + held + ", the device holds it",
                            held}
               : WriteState{WriteStage::Unconfirmed, meant, "reads back " + held, held};
}

}  // namespace workbench
