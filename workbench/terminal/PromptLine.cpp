#include "PromptLine.h"

#include <algorithm>
#include <cstddef>

namespace workbench {

namespace {

constexpr std::size_t LongestLine = 4096;
constexpr char Escape = '\x1B';
constexpr char Delete = '\x7F';
constexpr char ControlU = '\x15';

bool IsContinuation(char octet) {
    return (static_cast<unsigned char>(octet) & 0xC0) == 0x80;
}

// The length of the control sequence at the start of keys, by ECMA-48: "ESC [ 1 ; 5 C", "ESC O P". 1 for
// Escape alone.
std::size_t SequenceLength(std::string_view keys) {
    if (keys.size() < 2 || (keys[1] != '[' && keys[1] != 'O')) {
        return 1;
    }
    std::size_t end = 2;
    while (end < keys.size() && (keys[end] < '@' || keys[end] > '~')) {
        ++end;
    }
    return std::min(end + 1, keys.size());
}

}  // namespace

std::vector<std::string> PromptLine::Feed(std::string_view keys) {
    std::vector<std::string> lines;
    while (!keys.empty()) {
        char const key = keys.front();
        std::size_t const length = key == Escape ? SequenceLength(keys) : 1;
        keys.remove_prefix(length);
        if (!isOpen) {
            isOpen = key == 's' || key == ':';
        } else if (key == '\r' || key == '\n') {
            if (!text.empty()) {
                lines.push_back(text);
            }
            text.clear();
            isOpen = false;
        } else if (key == Escape) {
            isOpen = length > 1;
            text = isOpen ? text : std::string();
        } else {
            Type(key);
        }
    }
    return lines;
}

void PromptLine::Type(char key) {
    if (key == '\b' || key == Delete) {
        while (!text.empty() && IsContinuation(text.back())) {
            text.pop_back();
        }
        if (!text.empty()) {
            text.pop_back();
        }
    } else if (key == ControlU) {
        text.clear();
    } else if (key == '\t') {
        Complete();
    } else if (static_cast<unsigned char>(key) >= ' ' && text.size() < LongestLine) {
        text += key;
    }
}

void PromptLine::Complete() {
    std::string common;
    bool found = false;
    for (std::string const& name : names) {
        if (name.compare(0, text.size(), text) != 0) {
            continue;
        }
        auto const end = std::mismatch(common.begin(), common.end(), name.begin(), name.end()).first;
        common = found ? std::string(common.begin(), end) : name;
        found = true;
    }
    if (found) {
        text = common;
    }
}

}  // namespace workbench
