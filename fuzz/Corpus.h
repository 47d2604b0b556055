#pragma once

#include <cstdint>
#include <istream>
#include <string>
#include <vector>

namespace fuzz {

// One input of a corpus. The name is the path of its file, or BUNDLE:NAME, and can be given to ReadInputs.
struct CorpusInput {
    std::string name;
    std::vector<std::uint8_t> octets;
};

// Reads a bundle, which has an input on each line: its name, a colon, a space, and its octets in hexadecimal.
// The line of an empty input ends at the colon. A name consists of letters, digits, '.', '_' and '-', begins
// with a letter or digit, and is used once.
//
// The file is the bundle's name in the names of the inputs and in messages. Throws std::runtime_error
// with file and line if a line is malformed.
std::vector<CorpusInput> ReadBundle(std::istream& stream, std::string const& file);

// The inputs that an argument of a replay program names:
//
//   BUNDLE.txt        all inputs of the bundle
//   BUNDLE.txt:NAME   one of them
//   FILE              the file's content; its name does not end in .txt
//   FOLDER            all files and bundles below it, in the order of their paths
//
// Throws std::runtime_error if there is no such file, folder or input, or if a bundle is malformed.
std::vector<CorpusInput> ReadInputs(std::string const& argument);

}  // namespace fuzz
