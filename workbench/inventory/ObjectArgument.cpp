#include "ObjectArgument.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "ObjectNames.h"
#include "Printable.h"
#include "Suggestion.h"

namespace workbench {

namespace {

constexpr std::uint16_t LastType = 1023;
// From here on the types of vendors.
constexpr std::uint16_t NamedTypes = 128;

std::optional<std::uint32_t> Number(std::string const& text, std::uint32_t limit) {
    bool const isNumber =
        !text.empty() && text.size() < 9 && text.find_first_not_of("0123456789") == std::string::npos;
    return isNumber && std::stoul(text) <= limit ? std::optional(static_cast<std::uint32_t>(std::stoul(text)))
                                                 : std::nullopt;
}

std::vector<std::string> TypeNames() {
    std::vector<std::string> names;
    for (std::uint16_t type = 0; type < NamedTypes; ++type) {
        names.push_back(standard::ObjectTypeText(type));
    }
    return names;
}

std::string Normal(std::string_view text) {
    std::string normal;
    for (char const c : text) {
        normal += c == '_' ? '-' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return normal;
}

std::optional<std::uint16_t> TypeOf(std::string const& text) {
    std::vector<std::string> const names = TypeNames();
    auto const named = std::find(names.begin(), names.end(), text);
    if (named != names.end() && text.find(' ') == std::string::npos) {
        return static_cast<std::uint16_t>(named - names.begin());
    }
    auto const number = Number(text, LastType);
    return number ? std::optional(static_cast<std::uint16_t>(*number)) : std::nullopt;
}

}  // namespace

standard::ObjectId ParseObject(std::string_view text) {
    std::string const normal = Normal(text);
    std::size_t const end = normal.find_first_of(" ,:");
    std::string const typeText = normal.substr(0, end);
    auto const type = TypeOf(typeText);
    if (!type) {
        throw ObjectMistake(tools::Quoted(typeText) + " is not an object type" +
                            tools::DidYouMean(typeText, TypeNames()) +
                            "; allowed is a name such as analog-input, or a number from 0 to 1023");
    }
    std::size_t const from = normal.find_first_not_of(" ,:", std::min(end, normal.size()));
    std::string const instanceText = from == std::string::npos ? std::string() : normal.substr(from);
    auto const instance = Number(instanceText, standard::ObjectId::LastInstance - 1);
    if (!instance) {
        throw ObjectMistake(
            tools::Quoted(text) + " is not an object" +
            "; allowed is a type and an instance from 0 to 4194302, such as \"analog-input 1\" or "
            "analog-input,1");
    }
    return {*type, *instance};
}

}  // namespace workbench
