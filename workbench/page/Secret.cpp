#include "Secret.h"

#include <sys/random.h>

#include <array>
#include <cctype>
#include <stdexcept>

#include "FileText.h"
#include "HexText.h"

namespace workbench {

namespace {

constexpr std::size_t LongestToken = 256;

bool IsTokenCharacter(char c) {
    auto const octet = static_cast<unsigned char>(c);
    return octet < 0x80 && (std::isalnum(octet) || c == '-' || c == '.' || c == '_' || c == '~');
}

[[noreturn]] void Refuse(std::string const& path, std::string const& mistake) {
    throw std::runtime_error(path + ": the token " + mistake + "; expected is a line of " +
                             std::to_string(ShortestToken) + " to " + std::to_string(LongestToken) +
                             " letters, digits and - . _ ~, for example from: openssl rand -hex 16");
}

}  // namespace

std::string RandomSecret() {
    std::array<char, 16> octets{};
    if (getrandom(octets.data(), octets.size(), 0) != static_cast<ssize_t>(octets.size())) {
        throw std::runtime_error("the system has no random numbers for a token");
    }
    return tools::HexText({octets.data(), octets.size()}, tools::HexDigits::Lower);
}

bool IsSameSecret(std::string_view one, std::string_view other) {
    unsigned difference = one.size() == other.size() ? 0 : 1;
    for (std::size_t i = 0; i < one.size() && i < other.size(); ++i) {
        difference |= static_cast<unsigned char>(one[i]) ^ static_cast<unsigned char>(other[i]);
    }
    return difference == 0;
}

SecretFile ReadSecretFile(std::string const& path) {
    std::string const text = tools::FileText(path, 1);
    SecretFile file{text.substr(0, text.find_first_of("\r\n")), {}};
    for (char const c : file.token) {
        if (!IsTokenCharacter(c)) {
            Refuse(path, "has a character that is not allowed");
        }
    }
    if (file.token.size() < ShortestToken || file.token.size() > LongestToken) {
        Refuse(path, "has " + std::to_string(file.token.size()) + " characters");
    }
    if (tools::IsReadableByOthers(path)) {
        file.warning = path + ": other users can read the token of the page; chmod 600 makes it yours alone";
    }
    return file;
}

}  // namespace workbench
