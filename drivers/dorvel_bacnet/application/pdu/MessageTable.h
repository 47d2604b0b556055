#pragma once

#include <cstddef>
#include <string>

// One line of a table from the numbers of the wire to the texts of the log.
struct MessageRow {
    int number;
    char const* text;
};

// The number of a table's last line, which stands for all numbers that have no line of their own.
constexpr int AnyOther = -1;

// The text of the number. A number outside the table gives the table's last line.
template <std::size_t Size>
std::string FindMessage(MessageRow const (&table)[Size], int number) {
    for (MessageRow const& row : table) {
        if (row.number == number) {
            return row.text;
        }
    }
    return table[Size - 1].text;
}
