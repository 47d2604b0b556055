#include "Suggestion.h"

#include <algorithm>
#include <cctype>
#include <cstddef>

#include "Printable.h"

namespace tools {

namespace {

// Longer texts are not compared: a comparison costs the product of both lengths.
constexpr std::size_t LongestName = 64;

std::string Lower(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return lower;
}

// Optimal string alignment: the Levenshtein distance, with a swap of two neighbours as one step.
std::size_t Distance(std::string const& left, std::string const& right) {
    std::vector<std::size_t> before(right.size() + 1), above(right.size() + 1), row(right.size() + 1);
    for (std::size_t j = 0; j <= right.size(); ++j) {
        above[j] = j;
    }
    for (std::size_t i = 1; i <= left.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= right.size(); ++j) {
            std::size_t const change = left[i - 1] == right[j - 1] ? 0 : 1;
            row[j] = std::min({above[j] + 1, row[j - 1] + 1, above[j - 1] + change});
            if (i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1]) {
                row[j] = std::min(row[j], before[j - 2] + 1);
            }
        }
        before.swap(above);
        above.swap(row);
    }
    return above[right.size()];
}

}  // namespace

std::string Nearest(std::string_view text, std::vector<std::string> const& candidates) {
    if (text.size() > LongestName) {
        return {};
    }
    std::string const lowered = Lower(text);
    std::string nearest;
    std::size_t best = std::max<std::size_t>(1, text.size() / 3) + 1;
    for (std::string const& candidate : candidates) {
        if (candidate.size() > LongestName) {
            continue;
        }
        std::size_t const distance = Distance(lowered, Lower(candidate));
        if (distance < best && distance < candidate.size()) {
            best = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

std::string DidYouMean(std::string_view text, std::vector<std::string> const& candidates) {
    std::string const nearest = Nearest(text, candidates);
    return nearest.empty() ? std::string() : Suggest(nearest);
}

std::string Suggest(std::string const& text) {
    return " (did you mean " + Quoted(text) + "?)";
}

}  // namespace tools
