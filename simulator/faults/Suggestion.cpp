#include "Suggestion.h"

#include <algorithm>
#include <cstddef>

namespace simulator {

namespace {

constexpr std::size_t MostChanges = 3;
constexpr std::size_t Longest = 64;

// How many letters have to be changed, added or left out to make the one of the other.
std::size_t Changes(std::string const& left, std::string const& right) {
    std::vector<std::size_t> row(right.size() + 1);
    for (std::size_t j = 0; j < row.size(); ++j) {
        row[j] = j;
    }
    for (std::size_t i = 1; i <= left.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j < row.size(); ++j) {
            std::size_t const changed = diagonal + (left[i - 1] == right[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({changed, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row.back();
}

}  // namespace

std::string Suggestion(std::string const& written, std::vector<std::string> const& names) {
    std::string best;
    std::size_t fewest = std::min(MostChanges, written.size() / 2) + 1;
    for (std::string const& name : names) {
        std::size_t const count = written.size() > Longest ? fewest : Changes(written, name);
        if (count < fewest) {
            fewest = count;
            best = name;
        }
    }
    return best.empty() ? "" : "; did you mean \"" + best + "\"?";
}

}  // namespace simulator
