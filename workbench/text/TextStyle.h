#pragma once

#include <cstddef>
#include <string>

namespace workbench {

// How a result is shown to people.
struct TextStyle {
    std::size_t width = 0;  // of the terminal; 0: no limit
    bool isColoured = false;
};

// SGR parameters of ECMA-48.
namespace colour {
constexpr char Bold[] = "1";
constexpr char Dim[] = "2";
constexpr char Red[] = "31";
constexpr char Green[] = "32";
constexpr char Yellow[] = "33";
}  // namespace colour

// The text as it is without colours, or if it is empty.
std::string Coloured(std::string const& text, char const* parameter, TextStyle const& style);

}  // namespace workbench
