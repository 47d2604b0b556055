#include "Prompt.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace workbench {

namespace {

constexpr std::size_t LongestHistory = 100;

bool IsContinuation(char octet) {
    return (static_cast<unsigned char>(octet) & 0xC0) == 0x80;
}

// How far all names agree, in whole characters. The names are in order, so the first and the last decide.
std::string CommonBeginning(std::vector<std::string> const& names) {
    std::string const& first = names.front();
    auto end = std::mismatch(first.begin(), first.end(), names.back().begin(), names.back().end()).first;
    while (end != first.end() && end != first.begin() && IsContinuation(*end)) {
        --end;
    }
    return {first.begin(), end};
}

}  // namespace

Prompt::Prompt(std::vector<std::string> completions) : names(std::move(completions)) {
    std::sort(names.begin(), names.end());
}

void Prompt::Open(std::string const& beginning) {
    isOpen = true;
    line.Set(beginning);
    recalled = history.size();
    candidates.clear();
}

std::string Prompt::Handle(Key const& key) {
    candidates.clear();
    switch (key.kind) {
        case KeyKind::Enter:
            return Enter();
        case KeyKind::Escape:
            isOpen = false;
            break;
        case KeyKind::Tab:
            Complete();
            break;
        case KeyKind::Up:
        case KeyKind::Down:
            Recall(key.kind == KeyKind::Up);
            break;
        default:
            line.Handle(key);
    }
    return {};
}

std::string Prompt::Enter() {
    isOpen = false;
    std::string const& text = line.Text();
    if (!text.empty() && (history.empty() || history.back() != text)) {
        history.push_back(text);
    }
    if (history.size() > LongestHistory) {
        history.erase(history.begin());
    }
    return text;
}

void Prompt::Recall(bool isOlder) {
    if (isOlder ? recalled == 0 : recalled == history.size()) {
        return;
    }
    if (recalled == history.size()) {
        unfinished = line.Text();
    }
    recalled = isOlder ? recalled - 1 : recalled + 1;
    line.Set(recalled == history.size() ? unfinished : history[recalled]);
}

void Prompt::Complete() {
    std::string const text = line.Text();
    auto const begin = std::lower_bound(names.begin(), names.end(), text);
    auto const end = std::find_if(
        begin, names.end(), [&](std::string const& name) { return name.compare(0, text.size(), text) != 0; });
    std::vector<std::string> found(begin, end);
    found.erase(std::unique(found.begin(), found.end()), found.end());
    if (!found.empty()) {
        line.Set(CommonBeginning(found));
    }
    if (found.size() > 1) {
        candidates = std::move(found);
    }
}

}  // namespace workbench
