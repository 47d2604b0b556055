#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Key.h"

namespace workbench {

// Makes keys from what a terminal sends: UTF-8, control characters, and control sequences by ECMA-48 as xterm
// and the console of Linux send them, with the mouse in the form SGR (mode 1006). A sequence may be split
// between calls. Sequences that are not known, and octets that are not UTF-8, are dropped. At most 64 octets
// wait for their end.
class KeyDecoder {
public:
    std::vector<Key> Feed(std::string_view octets);

    // True while the beginning of a sequence waits for its end. Escape alone is such a beginning: only time
    // shows that nothing follows.
    bool IsWaiting() const { return !waiting.empty(); }
    // Nothing follows: returns the key Escape if that is what waits.
    std::vector<Key> Flush();

private:
    std::string waiting;
};

}  // namespace workbench
