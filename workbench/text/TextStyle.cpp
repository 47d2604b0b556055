#include "TextStyle.h"

namespace workbench {

std::string Coloured(std::string const& text, char const* parameter, TextStyle const& style) {
    return style.isColoured && !text.empty() ? std::string("\x1B[") + parameter + "m" + text + "\x1B[0m"
                                             : text;
}

}  // namespace workbench
