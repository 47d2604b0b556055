#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace simulator {

// A mistake in a device file, as one line.
class Mistake : public std::runtime_error {
public:
    // `fileLine` is the line in the file, 0 if it is unknown.
    explicit Mistake(std::string const& text, int fileLine = 0) : std::runtime_error(text), line(fileLine) {}

    int Line() const { return line; }
    // The same mistake with its place at the beginning of the text: "present_value: ...".
    Mistake In(std::string const& place) const { return Mistake(place + ": " + what(), line); }
    // The same mistake on that line, unless it has a line already.
    Mistake At(int otherLine) const { return Mistake(what(), line != 0 ? line : otherLine); }

private:
    int line;
};

// In octets. A message can quote a text of any length.
constexpr std::size_t LongestMessage = 500;

}  // namespace simulator
