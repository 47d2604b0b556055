#include "WrappedText.h"

#include "Printable.h"

namespace workbench {

namespace {

std::size_t AfterCharacter(std::string_view text, std::size_t position) {
    do {
        ++position;
    } while (position < text.size() && (static_cast<unsigned char>(text[position]) & 0xC0) == 0x80);
    return position;
}

// Where the first line ends.
std::size_t LineEnd(std::string_view text, std::size_t width) {
    std::size_t blank = 0;
    std::size_t columns = 0;
    for (std::size_t begin = 0; begin < text.size();) {
        std::size_t const end = AfterCharacter(text, begin);
        columns += tools::DisplayWidth(text.substr(begin, end - begin));
        if (columns > width && text[begin] != ' ') {
            return blank > 0 ? blank : begin > 0 ? begin : end;
        }
        blank = text[begin] == ' ' ? end : blank;
        begin = end;
    }
    return text.size();
}

std::string WithoutBlanksAtEnd(std::string_view text) {
    return std::string(text.substr(0, text.find_last_not_of(' ') + 1));
}

}  // namespace

std::vector<std::string> Wrapped(std::string_view text, std::size_t width) {
    std::vector<std::string> lines;
    do {
        std::size_t const end = LineEnd(text, width);
        lines.push_back(WithoutBlanksAtEnd(text.substr(0, end)));
        text.remove_prefix(end);
    } while (!text.empty());
    return lines;
}

}  // namespace workbench
