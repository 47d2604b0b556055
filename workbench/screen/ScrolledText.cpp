#include "ScrolledText.h"

#include <algorithm>

namespace workbench {

namespace {

constexpr long long Everything = 1LL << 40;
constexpr long long WheelLines = 3;

long long MovementOfLetter(std::string const& letter, long long page) {
    return letter == "j"   ? 1
           : letter == "k" ? -1
           : letter == " " ? page
           : letter == "g" ? -Everything
           : letter == "G" ? Everything
                           : 0;
}

}  // namespace

long long Movement(Key const& key, std::size_t page) {
    auto const lines = static_cast<long long>(page);
    switch (key.kind) {
        case KeyKind::Up:
            return -1;
        case KeyKind::Down:
            return 1;
        case KeyKind::PageUp:
            return -lines;
        case KeyKind::PageDown:
            return lines;
        case KeyKind::Home:
            return -Everything;
        case KeyKind::End:
            return Everything;
        case KeyKind::WheelUp:
            return -WheelLines;
        case KeyKind::WheelDown:
            return WheelLines;
        case KeyKind::Text:
            return MovementOfLetter(key.text, lines);
        default:
            return 0;
    }
}

void ScrolledText::Open(bool atEnd) {
    top = 0;
    follows = followsEnd = atEnd;
}

bool ScrolledText::Handle(Key const& key) {
    long long const lines = Movement(key, page);
    if (lines == 0) {
        return false;
    }
    auto const last = static_cast<long long>(count > page ? count - page : 0);
    top = static_cast<std::size_t>(std::clamp(static_cast<long long>(top) + lines, 0LL, last));
    follows = followsEnd && top == static_cast<std::size_t>(last);
    return true;
}

std::vector<std::string> ScrolledText::Draw(std::vector<std::string> const& lines, std::size_t height) {
    count = lines.size();
    page = std::max<std::size_t>(height, 1);
    std::size_t const last = count > page ? count - page : 0;
    top = follows ? last : std::min(top, last);
    std::size_t const end = std::min(top + page, count);
    return {lines.begin() + static_cast<std::ptrdiff_t>(top),
            lines.begin() + static_cast<std::ptrdiff_t>(end)};
}

std::string ScrolledText::Where() const {
    if (count == 0) {
        return "no lines";
    }
    std::size_t const end = std::min(top + page, count);
    return "lines " + std::to_string(top + 1) + " to " + std::to_string(end) + " of " + std::to_string(count);
}

}  // namespace workbench
