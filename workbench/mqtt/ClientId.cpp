#include "ClientId.h"

#include <cctype>
#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace workbench {

namespace {

constexpr std::size_t LongestId = 64;
constexpr char Begin[] = "dorvel-";

bool IsPlain(char c) {
    auto const octet = static_cast<unsigned char>(c);
    return octet < 0x80 && (std::isalnum(octet) || c == '-' || c == '.' || c == '_');
}

// FNV-1a with 32 bits.
std::string HashOf(std::string const& text) {
    std::uint32_t hash = 2166136261U;
    for (char const c : text) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    }
    char digits[16];
    std::snprintf(digits, sizeof digits, "-%08x", static_cast<unsigned>(hash));
    return digits;
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
    std::string const hash = HashOf(node);
    return id.substr(0, LongestId - hash.size()) + hash;
}

}  // namespace workbench
