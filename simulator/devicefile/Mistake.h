#pragma once

#include <stdexcept>
#include <string>

namespace simulator {

// What is wrong with a device file, told in one line.
class Mistake : public std::runtime_error {
public:
    // `line` is the line of the file, 0 if it is not known.
    explicit Mistake(std::string const& text, int line = 0) : std::runtime_error(text), m_line(line) {}

    int line() const { return m_line; }
    // The same mistake with what it is in put in front: "present_value: ...".
    Mistake in(std::string const& place) const { return Mistake(place + ": " + what(), m_line); }
    // The same mistake on a line, unless a line is known already.
    Mistake at(int line) const { return Mistake(what(), m_line != 0 ? m_line : line); }

private:
    int m_line;
};

// For what a message quotes of files and commands: neither does it break the line nor steer the terminal.
// Control characters become blanks, and what is longer than 500 octets is cut.
std::string oneLine(std::string text);

}  // namespace simulator
