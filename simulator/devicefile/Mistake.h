#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace simulator {

// What is wrong with a device file, in one line.
class Mistake : public std::runtime_error {
public:
    // `fileLine` is the fileLine of the file, 0 if it is not known.
    explicit Mistake(std::string const& text, int fileLine = 0) : std::runtime_error(text), line(fileLine) {}

    int Line() const { return line; }
    // The same mistake with what it is in put in front: "present_value: ...".
    Mistake In(std::string const& place) const { return Mistake(place + ": " + what(), line); }
    // The same mistake on a line, if none is known yet.
    Mistake At(int otherLine) const { return Mistake(what(), line != 0 ? line : otherLine); }

private:
    int line;
};

// In octets; what a message quotes of a file or a command can have any length.
constexpr std::size_t LongestMessage = 500;

}  // namespace simulator
