#include "Printable.h"

#include <cwchar>

#include "Utf8.h"

namespace tools {

namespace {

constexpr std::string_view Replacement = "\xEF\xBF\xBD";
constexpr std::size_t LongestQuoted = 60;
constexpr std::string_view Ellipsis = "\xE2\x80\xA6";

// The control characters C0 and C1, and the marks that separate lines or change their direction.
bool IsControl(long codePoint) {
    return codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0) || codePoint == 0x2028 ||
           codePoint == 0x2029 || (codePoint >= 0x202A && codePoint <= 0x202E) ||
           (codePoint >= 0x2066 && codePoint <= 0x2069);
}

std::string Escape(long codePoint) {
    static constexpr char digits[] = "0123456789ABCDEF";
    switch (codePoint) {
        case '\n':
            return "\\n";
        case '\r':
            return "\\r";
        case '\t':
            return "\\t";
        default:
            break;
    }
    if (codePoint > 0xFF) {
        return std::string(Replacement);
    }
    return {'\\', 'x', digits[codePoint / 16], digits[codePoint % 16]};
}

// wcwidth knows no width for a character outside the locale; a terminal shows at least one column.
std::size_t Columns(long codePoint) {
    int const columns = wcwidth(static_cast<wchar_t>(codePoint));
    return columns < 0 ? 1 : static_cast<std::size_t>(columns);
}

// The longest beginning of the text that takes at most width columns.
std::string_view Beginning(std::string_view text, std::size_t width) {
    std::size_t place = 0;
    for (std::size_t columns = 0; place < text.size();) {
        Character const character = CharacterAt(text, place);
        columns += Columns(character.codePoint);
        if (columns > width) {
            break;
        }
        place += character.length;
    }
    return text.substr(0, place);
}

std::string Cut(std::string_view text, std::size_t width) {
    if (DisplayWidth(text) <= width) {
        return std::string(text);
    }
    return width == 0 ? std::string() : std::string(Beginning(text, width - 1)).append(Ellipsis);
}

std::string Blanks(std::string const& text, std::size_t width) {
    std::size_t const taken = DisplayWidth(text);
    return std::string(taken < width ? width - taken : 0, ' ');
}

}  // namespace

std::string ValidUtf8(std::string_view text) {
    std::string result;
    std::size_t begin = 0;  // of what is valid and not yet in the result
    for (std::size_t place = 0; place < text.size();) {
        Character const character = CharacterAt(text, place);
        if (character.codePoint < 0) {
            result.append(text.substr(begin, place - begin)).append(Replacement);
            begin = place + character.length;
        }
        place += character.length;
    }
    return result.append(text.substr(begin));
}

std::string Printable(std::string_view text) {
    return Printable(text, std::string::npos);
}

std::string Printable(std::string_view text, std::size_t longest) {
    std::string const valid = ValidUtf8(text);
    std::string result;
    for (std::size_t place = 0; place < valid.size();) {
        Character const character = CharacterAt(valid, place);
        std::string const shown = IsControl(character.codePoint) ? Escape(character.codePoint)
                                                                 : valid.substr(place, character.length);
        if (shown.size() > longest - result.size()) {
            return result + "...";
        }
        result.append(shown);
        place += character.length;
    }
    return result;
}

std::string Quoted(std::string_view text) {
    return '"' + Printable(text, LongestQuoted) + '"';
}

std::size_t DisplayWidth(std::string_view text) {
    std::size_t width = 0;
    for (std::size_t place = 0; place < text.size();) {
        Character const character = CharacterAt(text, place);
        width += Columns(character.codePoint);
        place += character.length;
    }
    return width;
}

std::string FitTo(std::string_view text, std::size_t width) {
    std::string const cut = Cut(text, width);
    return cut + Blanks(cut, width);
}

std::string FitToRight(std::string_view text, std::size_t width) {
    std::string const cut = Cut(text, width);
    return Blanks(cut, width) + cut;
}

}  // namespace tools
