#pragma once

#include <string>
#include <string_view>

namespace workbench {

// A text of 32 hexadecimal digits, 128 bits, from the random numbers of the system. std::runtime_error if it
// has none.
std::string RandomSecret();

// Compares in a time that does not depend on where the texts differ.
bool IsSameSecret(std::string_view one, std::string_view other);

struct SecretFile {
    std::string token;
    std::string warning;  // empty: only the owner can read the file
};

// The fewest characters of a token: 128 bits as base64.
constexpr std::size_t ShortestToken = 22;

// Reads a token: the first line of the file, letters, digits and - . _ ~, which a link has without escapes.
// std::runtime_error with the path, the mistake and what to do; the message does not have the token.
SecretFile ReadSecretFile(std::string const& path);

}  // namespace workbench
