#include "FieldValue.h"

#include <charconv>
#include <cmath>
#include <system_error>
#include <utility>

#include "EdeColumns.h"
#include "Enumerations.h"

namespace workbench {

using standard::Datatype;
using standard::Datum;
using standard::DatumKind;

namespace {

// The number of the application tag (clause 20.2.1.4).
std::uint8_t TagOf(DatumKind kind) {
    switch (kind) {
        case DatumKind::Boolean:
            return 1;
        case DatumKind::Unsigned:
            return 2;
        case DatumKind::Signed:
            return 3;
        case DatumKind::Real:
            return 4;
        case DatumKind::Double:
            return 5;
        case DatumKind::CharacterString:
            return 7;
        default:
            return 9;  // Enumerated
    }
}

Datum Make(DatumKind kind) {
    Datum datum;
    datum.kind = kind;
    datum.tag = TagOf(kind);
    return datum;
}

Datum WithNumber(DatumKind kind, std::uint64_t number) {
    Datum datum = Make(kind);
    datum.number = number;
    return datum;
}

std::optional<Datum> RealOf(std::string_view text, DatumKind kind) {
    std::optional<double> const value = DecimalOf(text);
    if (!value || (kind == DatumKind::Real && !std::isfinite(static_cast<float>(*value)))) {
        return std::nullopt;
    }
    Datum datum = Make(kind);
    datum.real = kind == DatumKind::Real ? static_cast<double>(static_cast<float>(*value)) : *value;
    return datum;
}

std::optional<Datum> SignedOf(std::string_view text) {
    std::optional<double> const value = DecimalOf(text);
    if (!value || *value != std::floor(*value) || std::fabs(*value) > 2147483648.0 ||
        *value == 2147483648.0) {
        return std::nullopt;
    }
    return WithNumber(DatumKind::Signed, static_cast<std::uint64_t>(static_cast<std::int64_t>(*value)));
}

std::optional<Datum> EnumeratedOf(std::string_view text, Datatype datatype) {
    if (auto const number = WholeNumberOf(text, 65535)) {
        return standard::IsEnumerated(datatype, *number) ? std::optional(EnumeratedDatum(*number))
                                                         : std::nullopt;
    }
    std::string name(text);
    for (char& c : name) {
        c = c == ' ' || c == '_' ? '-' : c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    auto const number = standard::EnumeratedOfName(datatype, name);
    return number ? std::optional(EnumeratedDatum(*number)) : std::nullopt;
}

}  // namespace

std::optional<double> DecimalOf(std::string_view text) {
    std::string number(text);
    std::size_t const comma = number.find(',');
    if (comma != std::string::npos) {
        number[comma] = '.';
    }
    if (number.empty() || number.find_first_not_of("0123456789+-.eE") != std::string::npos) {
        return std::nullopt;
    }
    double value = 0;
    char const* const first = number.data() + (number[0] == '+' ? 1 : 0);
    char const* const last = number.data() + number.size();
    auto const [end, error] = std::from_chars(first, last, value);
    bool const isNumber = error == std::errc() && end == last;
    return isNumber && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<std::uint32_t> WholeNumberOf(std::string_view text, std::uint32_t last) {
    bool const isDigits =
        !text.empty() && text.size() <= 9 && text.find_first_not_of("0123456789") == std::string_view::npos;
    if (isDigits) {
        std::uint32_t number = 0;
        for (char const digit : text) {
            number = number * 10 + static_cast<std::uint32_t>(digit - '0');
        }
        return number <= last ? std::optional(number) : std::nullopt;
    }
    std::optional<double> const value = DecimalOf(text);
    bool const isWhole = value && *value >= 0 && *value <= last && *value == std::floor(*value);
    return isWhole ? std::optional(static_cast<std::uint32_t>(*value)) : std::nullopt;
}

std::optional<bool> AnswerOf(std::string_view text) {
    std::string const letters = LettersOf(text);
    for (char const* const word : {"y", "yes", "j", "ja", "1", "x", "true", "t", "o", "oui", "s", "si"}) {
        if (letters == word) {
            return true;
        }
    }
    for (char const* const word : {"n", "no", "nein", "non", "0", "false", "f"}) {
        if (letters == word) {
            return false;
        }
    }
    return text == "-" ? std::optional(false) : std::nullopt;
}

Datum TextDatum(std::string text) {
    Datum datum = Make(DatumKind::CharacterString);
    datum.text = std::move(text);
    return datum;
}

Datum UnsignedDatum(std::uint32_t number) {
    return WithNumber(DatumKind::Unsigned, number);
}

Datum EnumeratedDatum(std::uint32_t number) {
    return WithNumber(DatumKind::Enumerated, number);
}

Datum BooleanDatum(bool value) {
    return WithNumber(DatumKind::Boolean, value ? 1 : 0);
}

std::optional<Datum> DatumOf(std::string_view text, Datatype datatype) {
    switch (datatype) {
        case Datatype::Boolean: {
            auto const answer = AnswerOf(text);
            return answer ? std::optional(BooleanDatum(*answer)) : std::nullopt;
        }
        case Datatype::Unsigned: {
            auto const number = WholeNumberOf(text, UINT32_MAX);
            return number ? std::optional(UnsignedDatum(*number)) : std::nullopt;
        }
        case Datatype::Signed:
            return SignedOf(text);
        case Datatype::Real:
            return RealOf(text, DatumKind::Real);
        case Datatype::Double:
            return RealOf(text, DatumKind::Double);
        case Datatype::CharacterString:
            return TextDatum(std::string(text));
        default:
            return standard::IsEnumeration(datatype) ? EnumeratedOf(text, datatype) : std::nullopt;
    }
}

char const* NameOf(Datatype datatype) {
    switch (datatype) {
        case Datatype::Boolean:
            return "a Boolean";
        case Datatype::Unsigned:
            return "an Unsigned";
        case Datatype::Signed:
            return "a Signed";
        case Datatype::Real:
            return "a Real";
        case Datatype::Double:
            return "a Double";
        case Datatype::BinaryPv:
            return "0 (inactive) or 1 (active)";
        default:
            return "a value of the property's datatype";
    }
}

}  // namespace workbench
