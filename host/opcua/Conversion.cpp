#include "Conversion.h"

#include <cmath>
#include <cstddef>
#include <limits>
#include <type_traits>

#include "Text.h"

namespace {

// The index of each type in a row of the matrix, by type number; -1 for a type without one.
constexpr int Indices[] = {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, -1, 13, -1, -1, -1, 14};

// From (row) to (column): = the same type, I implicit, E explicit, . none.
constexpr char const* Rules[] = {
    //                 B S B I U I U I U F D S D B S
    //                 o b y 1 1 3 3 6 6 l o t a y t
    //                 o y t 6 6 2 2 4 4 o u r t t a
    /* Boolean    */ "=IIIIIIIIIIE...",
    /* SByte      */ "E=EIIIIIIIIE...",
    /* Byte       */ "EI=IIIIIIIIE...",
    /* Int16      */ "EEE=EIIIIIIE...",
    /* UInt16     */ "EEEI=IIIIIIE..I",
    /* Int32      */ "EEEEE=EIIIIE..E",
    /* UInt32     */ "EEEEEI=IIIIE..E",
    /* Int64      */ "EEEEEEE=EIIE..E",
    /* UInt64     */ "EEEEEEEI=IIE..E",
    /* Float      */ "EEEEEEEEE=IE...",
    /* Double     */ "EEEEEEEEEE=E...",
    /* String     */ "IIIIIIIIIII=EE.",
    /* DateTime   */ "...........E=..",
    /* ByteString */ "...........E.=.",
    /* StatusCode */ "....EEEEE.....=",
};

int IndexOf(int type) {
    return type >= 0 && type < static_cast<int>(std::size(Indices)) ? Indices[type] : -1;
}

bool HasRule(int from, int to) {
    int const row = IndexOf(from);
    int const column = IndexOf(to);
    return row >= 0 && column >= 0 && Rules[row][column] != '.';
}

// Calls visit with the member that holds a Boolean or a number of the type.
template <class Variant, class Visit>
OpcUa_StatusCode VisitNumber(Variant& variant, int type, Visit visit) {
    switch (type) {
        case OpcUaType_Boolean:
            return visit(variant.Value.Boolean);
        case OpcUaType_SByte:
            return visit(variant.Value.SByte);
        case OpcUaType_Byte:
            return visit(variant.Value.Byte);
        case OpcUaType_Int16:
            return visit(variant.Value.Int16);
        case OpcUaType_UInt16:
            return visit(variant.Value.UInt16);
        case OpcUaType_Int32:
            return visit(variant.Value.Int32);
        case OpcUaType_UInt32:
            return visit(variant.Value.UInt32);
        case OpcUaType_Int64:
            return visit(variant.Value.Int64);
        case OpcUaType_UInt64:
            return visit(variant.Value.UInt64);
        case OpcUaType_Float:
            return visit(variant.Value.Float);
        case OpcUaType_Double:
            return visit(variant.Value.Double);
        default:
            return OpcUa_BadTypeMismatch;
    }
}

template <class From, class To>
OpcUa_StatusCode CastInteger(From from, To& to) {
    using Limits = std::numeric_limits<To>;
    if constexpr (std::is_signed_v<From>) {
        if (from < 0 && (std::is_unsigned_v<To> || from < static_cast<long long>(Limits::min()))) {
            return OpcUa_BadOutOfRange;
        }
    }
    if (from > 0 && static_cast<unsigned long long>(from) > static_cast<unsigned long long>(Limits::max())) {
        return OpcUa_BadOutOfRange;
    }
    to = static_cast<To>(from);  // NOLINT(bugprone-signed-char-misuse): an SByte is a number
    return OpcUa_Good;
}

// Adds 0.5 and rounds down: 2.5 gives 3 and -2.5 gives -2. The range is checked after that.
template <class To>
OpcUa_StatusCode RoundFloating(double from, To& to) {
    // Both limits are powers of two, so a double holds them exactly.
    double const end = std::ldexp(1.0, std::numeric_limits<To>::digits);
    double const begin = std::is_signed_v<To> ? -end : 0.0;
    double rounded = std::floor(from);
    rounded += from - rounded >= 0.5 ? 1.0 : 0.0;
    if (!(rounded >= begin && rounded < end)) {  // also NaN and infinity
        return OpcUa_BadOutOfRange;
    }
    to = static_cast<To>(rounded);
    return OpcUa_Good;
}

OpcUa_StatusCode NarrowDouble(double from, float& to) {
    constexpr double most = std::numeric_limits<float>::max();
    double const magnitude = std::fabs(from);
    if (std::isfinite(from) && magnitude > most) {
        // From half a step above the largest float on, the nearest value is out of a float's range.
        double const limit = most + std::ldexp(1.0, std::numeric_limits<float>::max_exponent - 25);
        if (magnitude >= limit) {
            return OpcUa_BadOutOfRange;
        }
        from = std::copysign(most, from);
    }
    to = static_cast<float>(from);
    return OpcUa_Good;
}

template <class From, class To>
OpcUa_StatusCode Cast(From from, To& to) {
    if constexpr (std::is_same_v<To, bool>) {
        if (std::is_floating_point_v<From> && std::isnan(static_cast<double>(from))) {
            return OpcUa_BadOutOfRange;
        }
        to = from != From{};
        return OpcUa_Good;
    } else if constexpr (std::is_same_v<From, double> && std::is_same_v<To, float>) {
        return NarrowDouble(from, to);
    } else if constexpr (std::is_floating_point_v<To>) {
        to = static_cast<To>(from);
        return OpcUa_Good;
    } else if constexpr (std::is_floating_point_v<From>) {
        return RoundFloating(static_cast<double>(from), to);
    } else {
        return CastInteger(from, to);
    }
}

OpcUa_StatusCode CastNumber(OpcUa_Variant const& source, int type, OpcUa_Variant& target) {
    return VisitNumber(source, source.Datatype, [&](auto const& from) {
        return VisitNumber(target, type, [&](auto& to) { return Cast(from, to); });
    });
}

// A 16-bit integer holds the upper half of a status code; wider ones hold the code itself, Int32 bit by bit.
OpcUa_StatusCode FromStatusCode(OpcUa_StatusCode status, int type, OpcUa_Variant& target) {
    switch (type) {
        case OpcUaType_UInt16:
            target.Value.UInt16 = static_cast<unsigned short>(status >> 16);
            return OpcUa_Good;
        case OpcUaType_Int32:
            target.Value.Int32 = static_cast<int>(status);
            return OpcUa_Good;
        default:
            return VisitNumber(target, type, [&](auto& to) { return Cast(status, to); });
    }
}

OpcUa_StatusCode ToStatusCode(OpcUa_Variant const& source, OpcUa_StatusCode& status) {
    switch (source.Datatype) {
        case OpcUaType_UInt16:
            status = static_cast<OpcUa_StatusCode>(source.Value.UInt16) << 16;
            return OpcUa_Good;
        case OpcUaType_Int32:
            status = static_cast<OpcUa_StatusCode>(source.Value.Int32);
            return OpcUa_Good;
        default:
            return VisitNumber(source, source.Datatype, [&](auto const& from) { return Cast(from, status); });
    }
}

std::string_view OctetsOf(OpcUa_Variant const& source) {
    return {source.Value.Octets.Data, static_cast<std::size_t>(source.Value.Octets.Length)};
}

OpcUa_StatusCode FromText(std::string_view source, int type, OpcUa_VariantHlp& target) {
    if (type == OpcUaType_DateTime) {
        return text::ReadFileTime(source, target.Value.DateTime);
    }
    if (type == OpcUaType_ByteString) {
        std::string octets;
        OpcUa_StatusCode const status = text::ReadOctets(source, octets);
        if (status == OpcUa_Good) {
            target.SetByteString(octets.data(), static_cast<int>(octets.size()));
        }
        return status;
    }
    return VisitNumber(target, type, [&](auto& to) { return text::Read(source, to); });
}

OpcUa_StatusCode ToText(OpcUa_Variant const& source, std::string& result) {
    if (source.Datatype == OpcUaType_ByteString) {
        result = text::WriteOctets(OctetsOf(source));
        return OpcUa_Good;
    }
    if (source.Datatype == OpcUaType_DateTime) {
        if (source.Value.DateTime < 0) {
            return OpcUa_BadOutOfRange;
        }
        result = text::WriteFileTime(source.Value.DateTime);
        return OpcUa_Good;
    }
    return VisitNumber(source, source.Datatype, [&](auto const& from) {
        result = text::Write(from);
        return OpcUa_Good;
    });
}

OpcUa_StatusCode ConvertToText(OpcUa_Variant const& source, OpcUa_VariantHlp& target) {
    std::string result;
    OpcUa_StatusCode const status = ToText(source, result);
    if (status == OpcUa_Good) {
        target.SetString(result.data(), static_cast<int>(result.size()));
    }
    return status;
}

OpcUa_StatusCode ConvertByRule(OpcUa_Variant const& source, int type, OpcUa_VariantHlp& target) {
    if (type == OpcUaType_String) {
        return ConvertToText(source, target);
    }
    if (source.Datatype == OpcUaType_String) {
        return FromText(OctetsOf(source), type, target);
    }
    if (source.Datatype == OpcUaType_StatusCode) {
        return FromStatusCode(source.Value.StatusCode, type, target);
    }
    if (type == OpcUaType_StatusCode) {
        return ToStatusCode(source, target.Value.StatusCode);
    }
    return CastNumber(source, type, target);
}

}  // namespace

OpcUa_StatusCode ConvertVariant(OpcUa_Variant const& source, _OpcUa_BuiltInType type,
                                OpcUa_VariantHlp& target) {
    if (source.Datatype == OpcUaType_Null) {
        return OpcUa_BadNoData;
    }
    if (source.Datatype == type) {
        OpcUa_VariantHlp::CopyVariants(&target, &source);
        return OpcUa_Good;
    }
    if (!HasRule(source.Datatype, type)) {
        return OpcUa_BadTypeMismatch;
    }
    OpcUa_StatusCode const status = ConvertByRule(source, type, target);
    if (status == OpcUa_Good) {
        target.Datatype = static_cast<unsigned char>(type);
    }
    return status;
}
