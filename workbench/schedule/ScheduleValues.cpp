#include "ScheduleValues.h"

#include <algorithm>
#include <charconv>

#include "NumberText.h"
#include "ObjectNames.h"
#include "ScheduleParts.h"

namespace workbench {

namespace {

template <typename Number>
std::optional<Number> Parsed(std::string_view text) {
    Number number{};
    auto const result = std::from_chars(text.data(), text.data() + text.size(), number);
    bool const isWhole = result.ec == std::errc() && result.ptr == text.data() + text.size();
    return isWhole ? std::optional(number) : std::nullopt;
}

std::string_view WithoutPlus(std::string_view text) {
    bool const hasPlus = text.size() > 1 && text[0] == '+' && text[1] != '-';
    return hasPlus ? text.substr(1) : text;
}

template <typename Number>
std::optional<std::string> WholeText(std::string_view text) {
    auto const number = Parsed<Number>(WithoutPlus(text));
    return number ? std::optional(std::to_string(*number)) : std::nullopt;
}

template <typename Number>
std::optional<std::string> RealText(std::string_view text) {
    auto const number = Parsed<Number>(WithoutPlus(text));
    return number ? std::optional(tools::NumberText(*number)) : std::nullopt;
}

bool HasOnly(std::string_view text, char const* characters) {
    return text.find_first_not_of(characters) == std::string_view::npos;
}

std::optional<std::string> HexDigitsText(std::string_view text) {
    if (text.size() % 2 != 0 || !HasOnly(text, "0123456789abcdefABCDEF")) {
        return std::nullopt;
    }
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c; });
    return lower;
}

template <typename Part>
std::optional<std::string> TextOf(std::optional<Part> const& part) {
    return part ? std::optional(PartText(*part)) : std::nullopt;
}

}  // namespace

std::optional<std::string> UsualText(ScheduleValueType type, std::string_view text) {
    switch (type) {
        case ScheduleValueType::Null:
            return text.empty() ? std::optional(std::string()) : std::nullopt;
        case ScheduleValueType::Boolean:
            return text == "true" || text == "false" ? std::optional(std::string(text)) : std::nullopt;
        case ScheduleValueType::Unsigned:
        case ScheduleValueType::Enumerated:
            return WholeText<std::uint32_t>(text);
        case ScheduleValueType::Signed:
            return WholeText<std::int32_t>(text);
        case ScheduleValueType::Real:
            return RealText<float>(text);
        case ScheduleValueType::Double:
            return RealText<double>(text);
        case ScheduleValueType::OctetString:
            return HexDigitsText(text);
        case ScheduleValueType::CharacterString:
            return std::string(text);
        case ScheduleValueType::BitString:
            return HasOnly(text, "01") ? std::optional(std::string(text)) : std::nullopt;
        case ScheduleValueType::Date:
            return TextOf(DateIn(text));
        case ScheduleValueType::Time:
            return TextOf(TimeOfDayIn(text));
        case ScheduleValueType::ObjectIdentifier: {
            auto const object = ObjectIn(text);
            return object ? std::optional(standard::ObjectText(*object)) : std::nullopt;
        }
    }
    return std::nullopt;
}

std::string FormOf(ScheduleValueType type) {
    switch (type) {
        case ScheduleValueType::Null:
            return "nothing";
        case ScheduleValueType::Boolean:
            return "true or false";
        case ScheduleValueType::Unsigned:
        case ScheduleValueType::Enumerated:
            return "a whole number from 0 to 4294967295";
        case ScheduleValueType::Signed:
            return "a whole number from -2147483648 to 2147483647";
        case ScheduleValueType::Real:
        case ScheduleValueType::Double:
            return "a number such as 21.5";
        case ScheduleValueType::OctetString:
            return "two hexadecimal digits for each octet, such as 0aff";
        case ScheduleValueType::CharacterString:
            return "a text";
        case ScheduleValueType::BitString:
            return "0 or 1 for each bit, such as 0101";
        case ScheduleValueType::Date:
            return "a date such as 2026-12-25";
        case ScheduleValueType::Time:
            return "a time such as 06:30";
        case ScheduleValueType::ObjectIdentifier:
            return "an object such as analog-value 3";
    }
    return {};
}

double NumberOf(ScheduleValue const& value) {
    return value.type == ScheduleValueType::Boolean ? (value.text == "true" ? 1 : 0)
                                                    : Parsed<double>(value.text).value_or(0);
}

bool IsNumber(ScheduleValueType type) {
    return type == ScheduleValueType::Unsigned || type == ScheduleValueType::Signed ||
           type == ScheduleValueType::Real || type == ScheduleValueType::Double ||
           type == ScheduleValueType::Enumerated;
}

std::optional<standard::ObjectId> ObjectIn(std::string_view text) {
    std::size_t const blank = text.rfind(' ');
    auto const instance =
        blank == std::string_view::npos ? std::nullopt : Parsed<std::uint32_t>(text.substr(blank + 1));
    if (!instance || *instance > standard::ObjectId::LastInstance) {
        return std::nullopt;
    }
    constexpr std::uint16_t allTypes = 1024;
    std::string_view const name = text.substr(0, blank);
    for (std::uint16_t type = 0; type < allTypes; ++type) {
        if (standard::ObjectTypeText(type) == name) {
            return standard::ObjectId{type, *instance};
        }
    }
    return std::nullopt;
}

}  // namespace workbench
