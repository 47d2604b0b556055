#include "ClientId.h"

#include <cctype>
#include <cstddef>

#include "TopicLevel.h"

namespace workbench {

namespace {

constexpr std::size_t LongestId = 64;
constexpr char Begin[] = "dorvel-";

bool IsPlain(char c) {
    auto const octet = static_cast<unsigned char>(c);
    return octet < 0x80 && (std::isalnum(octet) || c == '-' || c == '.' || c == '_');
}

}  // namespace

std::string ClientIdOf(std::string const& node) {
    std::string id = Begin;
    for (char const c : node) {
        id += IsPlain(c) ? c : '-';
    }
    if (id == Begin + node && id.size() <= LongestId) {
        return id;
    }
    std::string const hash = "-" + NameHash(node).substr(0, 8);
    return id.substr(0, LongestId - hash.size()) + hash;
}

}  // namespace workbench
