#include "NameTable.h"

#include <algorithm>
#include <cctype>
#include <iterator>

namespace workbench {

namespace {

constexpr NameRow ObjectTypeRows[] = {
    {0, 23, "accumulator"},
    {1, 0, "analog-input"},
    {2, 1, "analog-output"},
    {3, 2, "analog-value"},
    {4, 3, "binary-input"},
    {5, 4, "binary-output"},
    {6, 5, "binary-value"},
    {7, 45, "integer-value"},
    {8, 46, "large-analog-value"},
    {9, 48, "positive-integer-value"},
    {10, 18, "averaging"},
    {11, 39, "bitstring-value"},
    {12, 42, "date-value"},
    {13, 44, "datetime-value"},
    {14, 50, "time-value"},
    {15, 54, "lighting-output"},
    {16, 12, "loop"},
    {17, 13, "multi-state-input"},
    {18, 19, "multi-state-value"},
    {19, 14, "multi-state-output"},
    {20, 47, "octetstring-value"},
    {21, 24, "pulse-converter"},
    {22, 17, "schedule"},
};

constexpr NameRow PropertyRows[] = {
    {0, 85, "present-value"},
    {1, 108, "setpoint"},
    {2, 40, "feedback-value"},
    {3, 59, "low-limit"},
    {4, 45, "high-limit"},
    {5, 136, "minimum-value"},
    {6, 150, "minimum-value-timestamp"},
    {7, 135, "maximum-value"},
    {8, 149, "maximum-value-timestamp"},
    {9, 93, "proportional-constant"},
    {10, 49, "integral-constant"},
    {11, 26, "derivative-constant"},
    {12, 125, "average-value"},
    {13, 14, "bias"},
    {14, 373, "blink-warn-enable"},
    {15, 25, "deadband"},
    {16, 111, "status-flags"},
    {17, 81, "out-of-service"},
    {18, 103, "reliability"},
    {19, 379, "instantaneous-power"},
    {20, 384, "power"},
    {21, 106, "resolution"},
    {22, 164, "tracking-value"},
    {23, 151, "variance-value"},
    {24, 147, "window-interval"},
    {25, 148, "window-samples"},
    {26, 344, "is-utc"},
    {27, 117, "units"},
    {28, 28, "description"},
    {29, 36, "event-state"},
    {30, 123, "weekly-schedule"},
    {31, 38, "exception-schedule"},
    {32, 84, "polarity"},
    {33, 187, "scale"},
    {34, 188, "scale-factor"},
    {35, 176, "adjust-value"},
    {36, 179, "count-change-time"},
    {37, 178, "count-before-change"},
};

std::string Normalised(std::string_view name) {
    std::string letters;
    for (unsigned char const c : name) {
        if (c != ' ' && c != '_' && c != '-') {
            letters += static_cast<char>(std::tolower(c));
        }
    }
    return letters;
}

}  // namespace

NameRow const* NameTable::FindName(std::string_view name) const {
    std::string const normalised = Normalised(name);
    auto const row =
        std::find_if(begin(), end(), [&](NameRow const& r) { return Normalised(r.name) == normalised; });
    return row == end() ? nullptr : row;
}

NameRow const* NameTable::FindCode(long long code) const {
    auto const row = std::find_if(begin(), end(), [&](NameRow const& r) { return r.code == code; });
    return row == end() ? nullptr : row;
}

std::vector<std::string> NameTable::Names() const {
    std::vector<std::string> names;
    for (NameRow const& row : *this) {
        names.emplace_back(row.name);
    }
    return names;
}

NameTable const& ObjectTypes() {
    static constexpr NameTable table(ObjectTypeRows, std::size(ObjectTypeRows));
    return table;
}

NameTable const& Properties() {
    static constexpr NameTable table(PropertyRows, std::size(PropertyRows));
    return table;
}

}  // namespace workbench
