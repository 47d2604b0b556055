#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Key.h"
#include "Screen.h"

namespace workbench {

// Lines of which a part is visible, and the keys that scroll them: arrows, j, k, pages, Space, Home, End, g,
// G and the wheel.
class ScrolledText {
public:
    // With the first line on top, or with the last one below.
    void Open(bool atEnd);
    // False for a key that does not scroll.
    bool Handle(Key const& key);
    // The visible lines, at most `height`.
    std::vector<std::string> Draw(std::vector<std::string> const& lines, std::size_t height);

    // True while the last line is visible and those that come are followed.
    bool IsAtEnd() const { return follows; }
    // "lines 1 to 20 of 51", or "no lines".
    std::string Where() const;

private:
    std::size_t top = 0;
    std::size_t page = 1;
    std::size_t count = 0;
    bool follows = false;
    bool followsEnd = false;
};

// How far a key moves in a list with pages of that many lines; 0 for another key. Home and End move by more
// than any list has.
long long Movement(Key const& key, std::size_t page);

}  // namespace workbench
