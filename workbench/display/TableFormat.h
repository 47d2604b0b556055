#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Snapshot.h"

namespace workbench {

struct Screen {
    std::size_t width = 80;
    std::size_t height = 24;
    bool colour = false;
};

// The table of all blocks with the newest log lines below it, as lines that fit the screen. They are at least
// one fewer than the screen has, so that it does not scroll. A line "... n more" counts what does not fit.
// now is the time from which ages are computed.
std::vector<std::string> FormatTable(std::vector<BlockSnapshot> const& blocks,
                                     std::vector<std::string> const& log, Screen const& screen,
                                     long long now);

}  // namespace workbench
