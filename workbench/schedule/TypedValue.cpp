#include "TypedValue.h"

#include <strings.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <optional>

#include "Enumerations.h"
#include "HexText.h"
#include "Printable.h"
#include "ScheduleNames.h"
#include "ScheduleValues.h"
#include "Suggestion.h"
#include "UnitSymbols.h"

namespace workbench {

namespace {

constexpr char Reserved[] = ",;\"()";

bool IsSame(std::string_view left, std::string_view right) {
    return left.size() == right.size() && strncasecmp(left.data(), right.data(), left.size()) == 0;
}

ScheduleValueType NumberType(ValueNames const& names) {
    return names.type && IsNumber(*names.type) ? *names.type : ScheduleValueType::Real;
}

bool HasUnit(ScheduleValueType type) {
    return IsNumber(type) && type != ScheduleValueType::Enumerated;
}

// Texts

// '"', '\' and control characters as "\x22".
std::string QuotedText(std::string const& text) {
    std::string quoted = "\"";
    for (char const c : text) {
        auto const octet = static_cast<unsigned char>(c);
        bool const isPlain = octet >= 0x20 && octet != 0x7F && c != '"' && c != '\\';
        quoted += isPlain ? std::string(1, c)
                          : "\\x" + tools::HexText(std::string_view(&c, 1), tools::HexDigits::Lower);
    }
    return quoted + "\"";
}

std::optional<char> OctetOf(std::string_view digits) {
    auto const usual = UsualText(ScheduleValueType::OctetString, digits);
    if (!usual || usual->size() != 2) {
        return std::nullopt;
    }
    return static_cast<char>(std::stoul(*usual, nullptr, 16));
}

// The text between the quotation marks.
std::string Unquoted(std::string_view text) {
    std::string plain;
    for (std::size_t i = 1; i + 1 < text.size(); ++i) {
        if (text[i] != '\\') {
            plain += text[i];
            continue;
        }
        auto const octet = text.substr(i + 1, 1) == "x" ? OctetOf(text.substr(i + 2, 2)) : std::nullopt;
        if (!octet) {
            throw TypingMistake(tools::Quoted(text) +
                                " has a \"\\\" that is not one of an octet, such as \\x22");
        }
        plain += *octet;
        i += 3;
    }
    return plain;
}

bool IsQuoted(std::string_view text) {
    return text.size() >= 2 && text.front() == '"' && text.back() == '"' &&
           text.find('"', 1) == text.size() - 1;
}

// States

// The value of a state text; none if no state or several have it.
std::optional<ScheduleValue> StateOf(std::string_view word, ValueNames const& names) {
    std::vector<std::size_t> places;
    for (bool const isExact : {true, false}) {
        for (std::size_t i = 0; i < names.stateTexts.size(); ++i) {
            std::string_view const text = WithoutBlanks(names.stateTexts[i]);
            if (!text.empty() && (isExact ? text == word : IsSame(text, word))) {
                places.push_back(i);
            }
        }
        if (!places.empty()) {
            break;
        }
    }
    if (places.size() != 1) {
        return std::nullopt;
    }
    // The present value of binary objects is Enumerated.
    constexpr std::size_t binary = 2;
    ScheduleValueType const type =
        names.type && (IsNumber(*names.type) || *names.type == ScheduleValueType::Boolean) ? *names.type
        : names.stateTexts.size() <= binary ? ScheduleValueType::Enumerated
                                            : ScheduleValueType::Unsigned;
    if (type == ScheduleValueType::Boolean) {
        bool const isState = places.front() < binary;
        return isState ? std::optional(ScheduleValue{type, places.front() == 0 ? "false" : "true"})
                       : std::nullopt;
    }
    std::size_t const first = type == ScheduleValueType::Enumerated ? 0 : 1;
    return ScheduleValue{type, std::to_string(places.front() + first)};
}

std::string AllowedStates(ValueNames const& names) {
    constexpr std::size_t most = 8;
    std::string list;
    for (std::size_t i = 0; i < std::min(names.stateTexts.size(), most); ++i) {
        list += (list.empty() ? "" : ", ") + tools::Quoted(names.stateTexts[i]);
    }
    return list + (names.stateTexts.size() > most ? ", ..." : "");
}

// Numbers

std::optional<std::uint32_t> UnitNumber(std::string_view unit) {
    std::string name(unit);
    std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) {
        return c == ' ' || c == '_' ? '-' : static_cast<char>(std::tolower(c));
    });
    auto const number = standard::EnumeratedOfName(standard::Datatype::Units, name);
    return number ? number : standard::UnitOfSymbol(unit);
}

bool IsUnit(std::string_view text, std::string const& unit) {
    auto const number = UnitNumber(text);
    return text == unit || (number && number == UnitNumber(unit));
}

// What comes after a number: the unit, or the state text in brackets.
void CheckSuffix(ScheduleValue const& value, std::string_view suffix, ValueNames const& names) {
    if (suffix.empty()) {
        return;
    }
    if (suffix.front() == '(' && suffix.back() == ')') {
        auto const state = StateText(value, names);
        if (state && IsSame(WithoutBlanks(suffix.substr(1, suffix.size() - 2)), WithoutBlanks(*state))) {
            return;
        }
        throw TypingMistake(tools::Quoted(suffix) + " is not the state of " + value.text +
                            (state ? ", which is " + tools::Quoted(*state) : "") +
                            "; the number alone will do");
    }
    if (names.unit.empty() || !HasUnit(value.type)) {
        throw TypingMistake(
            tools::Quoted(suffix) +
            " after the number is not allowed: the project has no unit for it; type the number alone");
    }
    if (!IsUnit(suffix, names.unit)) {
        throw TypingMistake(tools::Quoted(suffix) + " is not the unit; allowed is " +
                            tools::Quoted(names.unit) + ", or the number alone");
    }
}

struct NumberText {
    std::string_view number;
    std::string_view suffix;
};

// "21.5 °C" and "21.5°C".
NumberText Divided(std::string_view text) {
    std::size_t end = text.find(' ');
    if (end == std::string_view::npos) {
        end = text.find_first_not_of("+-.0123456789");
    }
    end = std::min(end, text.size());
    return {text.substr(0, end), WithoutBlanks(text.substr(end))};
}

// None if the text does not begin with a number of the type.
std::optional<ScheduleValue> NumberIn(ScheduleValueType type, std::string_view text,
                                      ValueNames const& names) {
    NumberText const parts = UsualText(type, text) ? NumberText{text, {}} : Divided(text);
    auto usual = UsualText(type, parts.number);
    if (!usual) {
        return std::nullopt;
    }
    ScheduleValue value{type, std::move(*usual)};
    CheckSuffix(value, parts.suffix, names);
    return value;
}

ScheduleValue ValueOfType(ScheduleValueType type, std::string_view text, ValueNames const& names) {
    ValueNames typed = names;
    typed.type = type;
    auto const number = IsNumber(type) ? NumberIn(type, text, names) : std::nullopt;
    if (number) {
        return *number;
    }
    std::string const plain = IsQuoted(text) ? Unquoted(text) : std::string(text);
    if (auto const state = StateOf(plain, typed);
        state && (IsNumber(type) || type == ScheduleValueType::Boolean)) {
        return *state;
    }
    if (type == ScheduleValueType::CharacterString && !IsQuoted(text)) {
        throw TypingMistake(tools::Quoted(text) + " is not a text; write it in quotation marks");
    }
    if (type == ScheduleValueType::Boolean) {
        NumberText const parts{text.substr(0, text.find(' ')), {}};
        if (auto const usual = UsualText(type, parts.number)) {
            CheckSuffix({type, *usual}, WithoutBlanks(text.substr(parts.number.size())), names);
            return {type, *usual};
        }
    }
    auto usual = UsualText(type, plain);
    if (!usual) {
        throw TypingMistake(tools::Quoted(text) + " is not a value of type " + TypeWord(type) +
                            "; expected " + FormOf(type));
    }
    return {type, std::move(*usual)};
}

[[noreturn]] void Refuse(std::string_view text, ValueNames const& names) {
    ScheduleValueType const type = names.type.value_or(ScheduleValueType::Real);
    std::vector<std::string> words = names.stateTexts;
    words.insert(words.end(), {"null", "true", "false"});
    throw TypingMistake(tools::Quoted(text) + " is not a value; expected " + FormOf(type) +
                        (names.stateTexts.empty() ? "" : ", a state (" + AllowedStates(names) + ")") +
                        ", null, or the name of a type and a value, such as unsigned 2" +
                        tools::DidYouMean(text, words));
}

bool NeedsType(ScheduleValue const& value, ValueNames const& names) {
    switch (value.type) {
        case ScheduleValueType::Null:
        case ScheduleValueType::Boolean:
            return false;
        case ScheduleValueType::CharacterString:
            return !names.stateTexts.empty();
        default:
            return value.text.empty() || value.type != names.type.value_or(ScheduleValueType::Real);
    }
}

// The unit or the state text after a value, if it can be typed.
std::string SuffixOf(ScheduleValue const& value, ValueNames const& names) {
    std::string const words = ValueWords(value, names);
    std::string const suffix = words.substr(std::min(value.text.size(), words.size()));
    bool const isState = StateText(value, names).has_value();
    std::string const inner = isState && suffix.size() > 3 ? suffix.substr(2, suffix.size() - 3) : suffix;
    bool const isTypeable =
        inner.find_first_of(Reserved) == std::string::npos && tools::Printable(inner) == inner;
    return isTypeable ? suffix : "";
}

}  // namespace

std::string_view WithoutBlanks(std::string_view text) {
    constexpr char blanks[] = " \t\r\n";
    std::size_t const first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::vector<std::string_view> SplitOutsideQuotes(std::string_view text, char delimiter) {
    std::vector<std::string_view> parts;
    bool isQuoted = false;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        isQuoted = isQuoted != (text[i] == '"');
        if (text[i] == delimiter && !isQuoted) {
            parts.push_back(text.substr(begin, i - begin));
            begin = i + 1;
        }
    }
    parts.push_back(text.substr(begin));
    return parts;
}

std::string TypedText(ScheduleValue const& value, ValueNames const& names) {
    if (value.type == ScheduleValueType::Null) {
        return "null";
    }
    std::string const type = NeedsType(value, names) ? TypeWord(value.type) + " " : "";
    if (value.type == ScheduleValueType::CharacterString) {
        return type + QuotedText(value.text);
    }
    bool const hasSuffix = IsNumber(value.type) || value.type == ScheduleValueType::Boolean;
    return type + value.text + (hasSuffix ? SuffixOf(value, names) : "");
}

ScheduleValue TypedValueOf(std::string_view text, ValueNames const& names) {
    std::size_t const blank = std::min(text.find(' '), text.size());
    if (auto const type = TypeOfWord(text.substr(0, blank))) {
        std::string_view const rest = WithoutBlanks(text.substr(blank));
        if (*type != ScheduleValueType::Null || rest.empty()) {
            return ValueOfType(*type, rest, names);
        }
    }
    if (auto const state = StateOf(IsQuoted(text) ? Unquoted(text) : std::string(text), names)) {
        // A number is that number, also if a state has it as its text.
        if (IsQuoted(text) || !UsualText(NumberType(names), text)) {
            return *state;
        }
    }
    if (IsQuoted(text)) {
        return {ScheduleValueType::CharacterString, Unquoted(text)};
    }
    std::string_view const word = text.substr(0, blank);
    if (word == "true" || word == "false") {
        return ValueOfType(ScheduleValueType::Boolean, text, names);
    }
    bool const isOtherType = names.type && !IsNumber(*names.type) &&
                             *names.type != ScheduleValueType::CharacterString && !text.empty();
    auto usual = isOtherType ? UsualText(*names.type, text) : std::nullopt;
    if (usual) {
        return {*names.type, std::move(*usual)};
    }
    if (auto const number = NumberIn(NumberType(names), text, names)) {
        return *number;
    }
    Refuse(text, names);
}

}  // namespace workbench
