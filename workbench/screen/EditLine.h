#pragma once

#include <cstddef>
#include <string>

#include "Key.h"

namespace workbench {

// A line of text that a person edits: characters, Backspace, Delete, Left, Right, Home, End and Ctrl-U. At
// most 4096 octets of UTF-8.
class EditLine {
public:
    // False for a key that is not one of these.
    bool Handle(Key const& key);
    // With the cursor at the end.
    void Set(std::string newText);

    std::string const& Text() const { return text; }
    // The octets before the cursor.
    std::size_t Cursor() const { return cursor; }

private:
    std::size_t Before(std::size_t position) const;
    std::size_t After(std::size_t position) const;
    void Erase(std::size_t begin, std::size_t end);
    void Insert(std::string const& character);

    std::string text;
    std::size_t cursor = 0;
};

}  // namespace workbench
