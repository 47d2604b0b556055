#include "SetValue.h"

#include <strings.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "Printable.h"
#include "ProjectError.h"
#include "ShownValue.h"
#include "Suggestion.h"
#include "TypeName.h"
#include "UnitSymbols.h"
#include "Units.h"

namespace workbench {

namespace {

// Describes the values of the type.
char const* Example(_OpcUa_BuiltInType type) {
    switch (type) {
        case OpcUaType_Boolean:
            return "true or false";
        case OpcUaType_SByte:
            return "a whole number from -128 to 127";
        case OpcUaType_Byte:
            return "a whole number from 0 to 255";
        case OpcUaType_Int16:
            return "a whole number from -32768 to 32767";
        case OpcUaType_UInt16:
            return "a whole number from 0 to 65535";
        case OpcUaType_Int32:
            return "a whole number from -2147483648 to 2147483647";
        case OpcUaType_UInt32:
            return "a whole number from 0 to 4294967295";
        case OpcUaType_Int64:
        case OpcUaType_UInt64:
            return "a whole number";
        case OpcUaType_Float:
        case OpcUaType_Double:
            return "a number such as 21.5";
        case OpcUaType_DateTime:
            return "a time such as 2024-03-15T12:00:00Z";
        default:
            return "a value of that type";
    }
}

bool IsOfType(std::string const& text, _OpcUa_BuiltInType type, OpcUa_VariantHlp& value) {
    value.SetUTF8String(text.data(), static_cast<int>(text.size()));
    return value.ChangeType(type) == OpcUa_Good;
}

// Suggests a value for a decimal comma, the wrong letter case or a misspelt word.
std::string ValueSuggestion(std::string text, _OpcUa_BuiltInType type) {
    if (type == OpcUaType_Boolean) {
        return tools::DidYouMean(text, {"true", "false"});
    }
    std::replace(text.begin(), text.end(), ',', '.');
    OpcUa_VariantHlp value;
    return IsOfType(text, type, value) ? tools::Suggest(text) : std::string();
}

// Texts of devices have blanks at their ends, which nobody types.
std::string_view Trimmed(std::string_view text) {
    std::size_t const first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// Letter case is that of ASCII.
bool IsSame(std::string_view left, std::string_view right) {
    return left.size() == right.size() && strncasecmp(left.data(), right.data(), left.size()) == 0;
}

// A state of the variable as the text of a number or a Boolean.
std::string StateValue(VariableConfig const& variable, std::size_t place) {
    if (ValueType(variable) == OpcUaType_Boolean) {
        return place == 0 ? "false" : "true";
    }
    return std::to_string(StatesOf(variable) == States::FromOne ? place + 1 : place);
}

// How many of the state texts can be set.
std::size_t StateCount(VariableConfig const& variable) {
    std::size_t const count = variable.stateTexts.size();
    switch (StatesOf(variable)) {
        case States::None:
            return 0;
        case States::FromZero:
            return IsNumeric(ValueType(variable)) || ValueType(variable) == OpcUaType_Boolean
                       ? std::min(count, std::size_t{2})
                       : 0;
        default:
            return IsNumeric(ValueType(variable)) ? count : 0;
    }
}

template <typename Same>
std::vector<std::size_t> PlacesOf(VariableConfig const& variable, Same same) {
    std::vector<std::size_t> places;
    for (std::size_t place = 0; place < StateCount(variable); ++place) {
        std::string const& text = variable.stateTexts[place];
        if (!text.empty() && same(text)) {
            places.push_back(place);
        }
    }
    return places;
}

std::vector<std::size_t> PlacesOf(VariableConfig const& variable, std::string const& word) {
    auto const exact = PlacesOf(variable, [&](std::string const& text) { return text == word; });
    return !exact.empty() ? exact : PlacesOf(variable, [&](std::string const& text) {
        return !Trimmed(text).empty() && IsSame(Trimmed(text), Trimmed(word));
    });
}

// "manual" (1), "automatic" (2) and 3 more.
std::string Allowed(VariableConfig const& variable, std::vector<std::size_t> const& places) {
    constexpr std::size_t most = 8;
    std::string list;
    for (std::size_t i = 0; i < std::min(places.size(), most); ++i) {
        list += (list.empty() ? "" : ", ") + tools::Quoted(variable.stateTexts[places[i]]) + " (" +
                StateValue(variable, places[i]) + ")";
    }
    return places.size() > most ? list + " and " + std::to_string(places.size() - most) + " more" : list;
}

[[noreturn]] void RefuseWord(VariableConfig const& variable, std::string const& word,
                             std::vector<std::size_t> const& places) {
    if (places.size() > 1) {
        throw ProjectError(tools::Quoted(word) + " can be several states: " + Allowed(variable, places) +
                           "; set the value in brackets");
    }
    auto const all = PlacesOf(variable, [](std::string const&) { return true; });
    throw ProjectError(tools::Quoted(word) + " is not a state; allowed are " + Allowed(variable, all) +
                       ", by text or value" + tools::DidYouMean(word, SettableWords(variable)));
}

std::optional<std::uint32_t> AnyUnit(std::string const& unit) {
    auto const number = UnitOfName(unit);
    return number ? number : standard::UnitOfSymbol(unit);
}

bool IsUnitOf(VariableConfig const& variable, std::string const& unit) {
    auto const number = AnyUnit(unit);
    // Letter case makes a "MW" of a "mW": what other letters may mean is known of names and symbols alone.
    return unit == UnitText(variable.unit) || unit == variable.unit ||
           (number && number == AnyUnit(variable.unit));
}

[[noreturn]] void RefuseUnit(VariableConfig const& variable, std::string const& unit) {
    std::string const symbol = UnitText(variable.unit);
    std::string const name = tools::Quoted(variable.unit);
    throw ProjectError(
        tools::Quoted(unit) + " is not the unit of the variable; allowed is " +
        (symbol.empty() || symbol == variable.unit ? name : tools::Quoted(symbol) + " or " + name) +
        ", or the number alone");
}

// Where the number at the start of the text ends, with an exponent if it has one: "21.5" of "21.5°C".
std::size_t EndOfNumber(std::string const& text) {
    constexpr char Digits[] = "0123456789";
    std::size_t const end = text.find_first_not_of("+-.,0123456789");
    if (end == std::string::npos || (text[end] != 'e' && text[end] != 'E')) {
        return end;
    }
    bool const hasSign = end + 1 < text.size() && (text[end + 1] == '+' || text[end + 1] == '-');
    std::size_t const exponent = end + (hasSign ? 2 : 1);
    bool const isNumber = text.find_first_of(Digits, exponent) == exponent;
    return isNumber ? text.find_first_not_of(Digits, exponent) : end;
}

// The number in a text such as "21.5 °C".
std::string NumberOf(VariableConfig const& variable, std::string const& text) {
    std::size_t const blank = text.find(' ');
    std::size_t const end = blank != std::string::npos ? blank : EndOfNumber(text);
    std::size_t const begin = end == std::string::npos ? end : text.find_first_not_of(' ', end);
    if (begin == std::string::npos) {
        return text;
    }
    std::string const number = text.substr(0, end);
    std::string const unit = text.substr(begin);
    if (IsUnitOf(variable, unit)) {
        return number;
    }
    OpcUa_VariantHlp value;
    if (IsOfType(number, ValueType(variable), value)) {
        RefuseUnit(variable, unit);
    }
    return text;
}

}  // namespace

std::vector<std::string> SettableWords(VariableConfig const& variable) {
    std::vector<std::string> words;
    for (std::size_t const place : PlacesOf(variable, [](std::string const&) { return true; })) {
        words.push_back(variable.stateTexts[place]);
    }
    return words;
}

OpcUa_VariantHlp SetValue(VariableConfig const& variable, std::string const& text) {
    OpcUa_VariantHlp value;
    _OpcUa_BuiltInType const type = ValueType(variable);
    if (IsOfType(text, type, value)) {
        return value;
    }
    if (!SettableWords(variable).empty()) {
        std::vector<std::size_t> const places = PlacesOf(variable, text);
        if (places.size() == 1 && IsOfType(StateValue(variable, places.front()), type, value)) {
            return value;
        }
        RefuseWord(variable, text, places);
    }
    std::string const number = HasUnit(variable) ? NumberOf(variable, text) : text;
    if (!IsOfType(number, type, value)) {
        throw ProjectError(tools::Quoted(text) + " is not of type " + TypeName(type) + "; expected " +
                           Example(type) + ValueSuggestion(number, type));
    }
    return value;
}

}  // namespace workbench
