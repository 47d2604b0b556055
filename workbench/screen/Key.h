#pragma once

#include <cstddef>
#include <string>

namespace workbench {

enum class KeyKind {
    Text,  // a printable character
    Enter,
    Escape,
    Tab,
    Backspace,
    Delete,
    DeleteLine,  // Ctrl-U
    Redraw,      // Ctrl-L
    Up,
    Down,
    Left,
    Right,
    PageUp,
    PageDown,
    Home,
    End,
    WheelUp,
    WheelDown,
    Click
};

struct Key {
    KeyKind kind;
    std::string text = {};  // of Text: one character in UTF-8
    std::size_t line = 0;   // of Click: from 0, at the top of the screen
};

}  // namespace workbench
