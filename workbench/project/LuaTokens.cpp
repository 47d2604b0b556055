#include "LuaTokens.h"

#include <algorithm>
#include <cctype>

namespace workbench {

namespace {

bool IsNameLetter(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

char Unescaped(char c) {
    constexpr std::string_view letters = "abfnrtv";
    constexpr std::string_view values = "\a\b\f\n\r\t\v";
    std::size_t const index = letters.find(c);
    return index == std::string_view::npos ? c : values[index];
}

int DigitValue(char c) {
    return IsDigit(c) ? c - '0' : std::tolower(static_cast<unsigned char>(c)) - 'a' + 10;
}

// Reads an escape after its backslash and returns how many octets it has.
std::size_t ReadEscape(std::string_view rest, std::string& value) {
    if (rest.front() == 'z') {
        std::size_t const next = rest.find_first_not_of(" \t\r\n\f\v", 1);
        return next == std::string_view::npos ? rest.size() : next;
    }
    bool const isHex = rest.front() == 'x';
    std::size_t digits = isHex ? 1 : 0;
    int number = 0;
    while (digits < rest.size() && digits < 3 &&
           std::isxdigit(static_cast<unsigned char>(rest[digits])) != 0 && (isHex || IsDigit(rest[digits]))) {
        number = number * (isHex ? 16 : 10) + DigitValue(rest[digits++]);
    }
    if (digits > (isHex ? 1U : 0U)) {
        value += static_cast<char>(number);
        return digits;
    }
    value += Unescaped(rest.front());
    return 1;
}

}  // namespace

std::size_t LuaTokens::LongBracket(std::size_t start) const {
    std::size_t level = start + 1;
    while (level < text.size() && text[level] == '=') {
        ++level;
    }
    if (start >= text.size() || text[start] != '[' || level >= text.size() || text[level] != '[') {
        return 0;
    }
    std::string const closing = "]" + std::string(level - start - 1, '=') + "]";
    std::size_t const end = text.find(closing, level + 1);
    return (end == std::string_view::npos ? text.size() : end + closing.size()) - start;
}

bool LuaTokens::SkipComment() {
    if (text.compare(position, 2, "--") != 0) {
        return false;
    }
    std::size_t const length = LongBracket(position + 2);
    std::size_t const end =
        length > 0 ? position + 2 + length : std::min(text.find('\n', position), text.size());
    line += static_cast<int>(std::count(text.begin() + static_cast<std::ptrdiff_t>(position),
                                        text.begin() + static_cast<std::ptrdiff_t>(end), '\n'));
    position = end;
    return true;
}

void LuaTokens::SkipBlanks() {
    while (position < text.size()) {
        if (std::isspace(static_cast<unsigned char>(text[position])) != 0) {
            line += text[position] == '\n' ? 1 : 0;
            ++position;
        } else if (!SkipComment()) {
            return;
        }
    }
}

std::size_t LuaTokens::QuotedEnd(std::size_t start) const {
    std::size_t end = start + 1;
    while (end < text.size() && text[end] != text[start] && text[end] != '\n') {
        bool const isEscape = text[end] == '\\';
        bool const skipsBlanks = text.compare(end, 2, "\\z") == 0;
        end += isEscape ? 2 : 1;
        while (skipsBlanks && end < text.size() && std::isspace(static_cast<unsigned char>(text[end])) != 0) {
            ++end;
        }
    }
    return std::min(end + 1, text.size());
}

LuaToken LuaTokens::Take(LuaToken::Kind kind, std::size_t end) {
    LuaToken const token{kind, text.substr(position, end - position), position, line};
    line += static_cast<int>(std::count(token.source.begin(), token.source.end(), '\n'));
    position = end;
    return token;
}

LuaToken LuaTokens::Next() {
    SkipBlanks();
    if (position >= text.size()) {
        return {LuaToken::Kind::End, {}, position, line};
    }
    char const first = text[position];
    if (first == '"' || first == '\'') {
        return Take(LuaToken::Kind::Text, QuotedEnd(position));
    }
    if (std::size_t const length = LongBracket(position)) {
        return Take(LuaToken::Kind::Text, position + length);
    }
    std::size_t end = position + 1;
    if (IsNameLetter(first)) {
        bool const isNumber = IsDigit(first);
        while (end < text.size() && (IsNameLetter(text[end]) || (isNumber && text[end] == '.'))) {
            ++end;
        }
        return Take(isNumber ? LuaToken::Kind::Number : LuaToken::Kind::Name, end);
    }
    if (text.compare(position, 2, "==") == 0) {
        ++end;
    }
    return Take(LuaToken::Kind::Symbol, end);
}

std::string ValueOf(LuaToken const& text) {
    std::string_view source = text.source;
    if (source.front() == '[') {
        std::size_t const bracket = source.find('[', 1) + 1;
        source = source.substr(bracket, source.size() - std::min(source.size(), 2 * bracket));
        return std::string(source.substr(source.substr(0, 1) == "\n" ? 1 : 0));
    }
    source = source.substr(1, source.size() - std::min<std::size_t>(source.size(), 2));
    std::string value;
    while (!source.empty()) {
        std::size_t const plain = std::min(source.find('\\'), source.size());
        value += source.substr(0, plain);
        source.remove_prefix(plain);
        if (source.size() > 1) {
            source.remove_prefix(1 + ReadEscape(source.substr(1), value));
        } else {
            source = {};
        }
    }
    return value;
}

}  // namespace workbench
