#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace workbench {

// One token of a Lua source (Lua 5.4 manual, 3.1).
struct LuaToken {
    enum class Kind { End, Name, Text, Number, Symbol };

    Kind kind = Kind::End;
    std::string_view source;  // as written
    std::size_t position = 0;
    int line = 0;

    bool Is(std::string_view symbol) const { return kind != Kind::Text && source == symbol; }
};

// Reads the tokens of a source one after the other. It takes any text: what is not Lua becomes symbols of one
// octet. The source must outlive the reader and its tokens.
class LuaTokens {
public:
    explicit LuaTokens(std::string_view sourceText) : text(sourceText) {}

    LuaToken Next();

private:
    void SkipBlanks();
    bool SkipComment();
    // The octets up to the end of a long bracket that begins here; 0 if none does.
    std::size_t LongBracket(std::size_t start) const;
    std::size_t QuotedEnd(std::size_t start) const;
    LuaToken Take(LuaToken::Kind kind, std::size_t end);

    std::string_view text;
    std::size_t position = 0;
    int line = 1;
};

// The value of a text token. Escapes of code points (\u{...}) stay as they are.
std::string ValueOf(LuaToken const& text);

}  // namespace workbench
