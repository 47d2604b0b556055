#include "Corpus.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace fuzz {

namespace {

namespace fs = std::filesystem;

constexpr char Digits[] = "0123456789abcdef";
constexpr char NameCharacters[] =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789"
    "._-";

// The beginning of a text, in quotes and printable.
std::string Quoted(std::string_view text) {
    constexpr std::size_t longest = 40;
    std::string quoted = "\"";
    for (unsigned char const c : text.substr(0, longest)) {
        char escape[8];
        std::snprintf(escape, sizeof escape, c >= 0x20 && c < 0x7F ? "%c" : "\\x%02X", c);
        quoted += escape;
    }
    return quoted + (text.size() > longest ? "...\"" : "\"");
}

void RequireName(std::string_view name) {
    bool const isName = !name.empty() && name.find_first_not_of(NameCharacters) == std::string_view::npos &&
                        name.find_first_of("._-") != 0;
    if (!isName) {
        throw std::runtime_error("the name " + Quoted(name) +
                                 " is not allowed; a name consists of letters, digits, '.', '_' and '-' and "
                                 "begins with a letter or digit");
    }
}

std::uint8_t ParseDigit(char digit) {
    std::size_t const value = std::string_view(Digits).find(digit);
    if (value == std::string_view::npos) {
        throw std::runtime_error(Quoted({&digit, 1}) +
                                 " is not a hexadecimal digit; allowed are 0 to 9 and a to f");
    }
    return static_cast<std::uint8_t>(value);
}

std::vector<std::uint8_t> ParseOctets(std::string_view digits) {
    if (digits.size() % 2 != 0) {
        throw std::runtime_error(Quoted(digits) + " has an odd number of hexadecimal digits, " +
                                 std::to_string(digits.size()) + "; an octet has two");
    }
    std::vector<std::uint8_t> octets;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        octets.push_back(static_cast<std::uint8_t>(ParseDigit(digits[i]) << 4 | ParseDigit(digits[i + 1])));
    }
    return octets;
}

// The name and the octets of a line.
CorpusInput ParseLine(std::string_view line) {
    std::size_t const colon = line.find(':');
    if (colon == std::string_view::npos) {
        throw std::runtime_error(Quoted(line) + " has no colon; a line is NAME: OCTETS, or NAME: alone");
    }
    RequireName(line.substr(0, colon));
    std::string_view const rest = line.substr(colon + 1);
    if (!rest.empty() && (rest.front() != ' ' || rest.size() == 1)) {
        throw std::runtime_error(Quoted(rest) +
                                 " after the colon is not an input; allowed is a space with octets in "
                                 "hexadecimal, or nothing");
    }
    return {std::string(line.substr(0, colon)), ParseOctets(rest.empty() ? rest : rest.substr(1))};
}

std::ifstream Open(fs::path const& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        throw std::runtime_error(file.string() + ": the file cannot be read");
    }
    return stream;
}

std::vector<CorpusInput> ReadFile(fs::path const& file) {
    std::ifstream stream = Open(file);
    if (file.extension() == ".txt") {
        return ReadBundle(stream, file.string());
    }
    std::vector<char> const content{std::istreambuf_iterator<char>(stream), {}};
    return {{file.string(), {content.begin(), content.end()}}};
}

std::vector<CorpusInput> ReadFolder(fs::path const& folder) {
    std::vector<fs::path> files;
    for (fs::directory_entry const& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    std::vector<CorpusInput> inputs;
    for (fs::path const& file : files) {
        std::vector<CorpusInput> read = ReadFile(file);
        std::move(read.begin(), read.end(), std::back_inserter(inputs));
    }
    return inputs;
}

CorpusInput ReadOne(fs::path const& bundle, std::string const& name) {
    std::string const sought = bundle.string() + ":" + name;
    for (CorpusInput& input : ReadFile(bundle)) {
        if (input.name == sought) {
            return std::move(input);
        }
    }
    throw std::runtime_error(bundle.string() + ": there is no input with the name " + Quoted(name));
}

}  // namespace

std::vector<CorpusInput> ReadBundle(std::istream& stream, std::string const& file) {
    std::vector<CorpusInput> inputs;
    std::map<std::string, std::size_t> lines;  // by name
    std::string line;
    for (std::size_t number = 1; std::getline(stream, line); ++number) {
        try {
            CorpusInput input = ParseLine(line);
            auto const [known, isNew] = lines.emplace(input.name, number);
            if (!isNew) {
                throw std::runtime_error("the name " + Quoted(input.name) + " is that of line " +
                                         std::to_string(known->second) + "; each name is used once");
            }
            input.name.insert(0, file + ":");
            inputs.push_back(std::move(input));
        } catch (std::runtime_error const& mistake) {
            throw std::runtime_error(file + ":" + std::to_string(number) + ": " + mistake.what());
        }
    }
    return inputs;
}

std::vector<CorpusInput> ReadInputs(std::string const& argument) {
    if (fs::exists(argument)) {
        return fs::is_directory(argument) ? ReadFolder(argument) : ReadFile(argument);
    }
    std::size_t const colon = argument.rfind(':');
    if (colon != std::string::npos) {
        fs::path const bundle = argument.substr(0, colon);
        if (bundle.extension() == ".txt" && fs::is_regular_file(bundle)) {
            return {ReadOne(bundle, argument.substr(colon + 1))};
        }
    }
    throw std::runtime_error(argument + ": no such file, folder or input of a bundle");
}

}  // namespace fuzz
