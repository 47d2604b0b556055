#pragma once

#include <cstddef>
#include <string>

// One row of a table from numbers on the wire to texts for the log.
struct MessageRow {
    int number;
    char const* text;
};

// The number of the last row, which has the text for every number without a row.
constexpr int AnyOther = -1;

// The text of a number, or that of the last row if no row has the number.
template <std::size_t Size>
std::string FindMessage(MessageRow const (&table)[Size], int number) {
    for (MessageRow const& row : table) {
        if (row.number == number) {
            return row.text;
        }
    }
    return table[Size - 1].text;
}
