#include "PointNames.h"

#include <algorithm>
#include <cctype>
#include <numeric>

#include "ObjectNames.h"
#include "Printable.h"

namespace workbench {

namespace {

constexpr std::size_t LongestName = 80;       // octets
constexpr std::size_t LongestParameter = 32;  // octets

constexpr std::string_view Keywords[] = {
    "and", "break", "do",  "else", "elseif", "end",    "false",  "for",  "function", "goto",  "if",
    "in",  "local", "nil", "not",  "or",     "repeat", "return", "then", "true",     "until", "while"};

// Blanks and control characters in a row become one blank, those at the ends nothing.
std::string OneLine(std::string_view raw) {
    std::string text;
    for (char const c : raw) {
        bool const isBlank = (static_cast<unsigned char>(c) <= 0x20) || c == 0x7F;
        if (!isBlank) {
            text += c == '=' ? '-' : c;
        } else if (!text.empty() && text.back() != ' ') {
            text += ' ';
        }
    }
    return !text.empty() && text.back() == ' ' ? text.substr(0, text.size() - 1) : text;
}

std::string Key(std::string const& name) {
    std::string key;
    for (unsigned char const c : name) {
        if (std::isspace(c) == 0) {
            key += static_cast<char>(std::tolower(c));
        }
    }
    return key;
}

std::string WithoutDots(std::string name) {
    std::replace(name.begin(), name.end(), '.', '_');
    return name;
}

std::string InstanceText(DeviceRecord const& device) {
    return std::to_string(device.Instance());
}

// "ahu_1"; empty for a name without letters and digits of ASCII.
std::string Identifier(std::string_view name) {
    std::string text;
    for (unsigned char const c : name) {
        if (c < 0x80 && std::isalnum(c) != 0) {
            text += static_cast<char>(std::tolower(c));
        } else if (!text.empty() && text.back() != '_') {
            text += '_';
        }
    }
    text = text.substr(0, LongestParameter);
    return !text.empty() && text.back() == '_' ? text.substr(0, text.size() - 1) : text;
}

std::string ParameterOf(DeviceRecord const& device) {
    std::string const name = Identifier(NameOf(device.device));
    bool const isUsable = !name.empty() && std::isdigit(static_cast<unsigned char>(name[0])) == 0 &&
                          std::find(std::begin(Keywords), std::end(Keywords), name) == std::end(Keywords);
    return isUsable ? name : "device_" + (name.empty() ? InstanceText(device) : name);
}

}  // namespace

std::string ReadableName(std::string_view raw) {
    return tools::Printable(OneLine(raw.substr(0, 4 * LongestName)), LongestName);
}

bool UniqueNames::Add(std::string const& name) {
    return keys.insert(Key(name)).second;
}

std::string UniqueNames::Take(std::string const& wanted, std::string const& distinction) {
    if (Add(wanted)) {
        return wanted;
    }
    std::string const distinct = wanted + " (" + distinction + ')';
    std::string name = distinct;
    for (int number = 2; !Add(name); ++number) {
        name = distinct + ' ' + std::to_string(number);
    }
    return name;
}

std::vector<std::string> VariableNames(std::vector<ObjectRecord> const& objects) {
    std::vector<std::size_t> order(objects.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return objects[a].id < objects[b].id; });
    std::vector<std::string> names(objects.size());
    UniqueNames unique;
    for (std::size_t const i : order) {
        std::string const name = ReadableName(NameOf(objects[i]));
        std::string const id = standard::ObjectText(objects[i].id);
        names[i] = unique.Take(name.empty() ? id : name, id);
    }
    return names;
}

std::vector<std::string> BlockNames(Inventory const& inventory) {
    std::vector<std::string> names;
    UniqueNames unique;
    for (DeviceRecord const& device : inventory.devices) {
        std::string const name = WithoutDots(ReadableName(NameOf(device.device)));
        names.push_back(
            unique.Take(name.empty() ? "Device " + InstanceText(device) : name, InstanceText(device)));
    }
    return names;
}

std::vector<std::string> ParameterNames(Inventory const& inventory) {
    std::vector<std::string> names;
    std::set<std::string> taken;
    for (DeviceRecord const& device : inventory.devices) {
        std::string const first = ParameterOf(device);
        std::string name = first;
        for (int number = 2; !taken.insert(name).second; ++number) {
            name = first + '_' +
                   (number == 2 ? InstanceText(device) : InstanceText(device) + '_' + std::to_string(number));
        }
        names.push_back(name);
    }
    return names;
}

}  // namespace workbench
