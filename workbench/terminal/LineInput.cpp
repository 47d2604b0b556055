#include "LineInput.h"

#include <utility>

#include "Terminal.h"

namespace workbench {

namespace {

constexpr std::size_t LongestLine = 65536;
constexpr int MostReads = 256;  // for one call, so that endless input does not stop the run

}  // namespace

std::vector<std::string> LineInput::Take() {
    std::vector<std::string> lines;
    for (int i = 0; i < MostReads && handle >= 0; ++i) {
        bool ended = false;
        std::string const text = ReadAvailable(handle, ended);
        if (ended) {
            handle = -1;
            rest += rest.empty() ? "" : "\n";
        }
        rest += text;
        Split(lines);
        if (text.empty()) {
            break;
        }
    }
    return lines;
}

void LineInput::Split(std::vector<std::string>& lines) {
    std::size_t begin = 0;
    for (std::size_t end = rest.find('\n'); end != std::string::npos; end = rest.find('\n', begin)) {
        lines.push_back(rest.substr(begin, end - begin));
        begin = end + 1;
    }
    rest.erase(0, begin);
    if (rest.size() >= LongestLine) {
        lines.push_back(std::exchange(rest, {}));
    }
}

}  // namespace workbench
