#include "Display.h"

#include "dorvelshare/HostEnvironment.h"

namespace workbench {

void TextDisplay::Cycle(BlockSnapshot const& block) {
    std::string const text = format(block);
    std::lock_guard<std::mutex> const lock(mutex);
    stream << text << std::flush;
}

bool TextDisplay::Failed() const {
    std::lock_guard<std::mutex> const lock(mutex);
    return !stream.good();
}

TableDisplay::TableDisplay(Terminal& tableTerminal, LogBuffer const& tableLog,
                           std::vector<BlockSnapshot> first)
    : terminal(tableTerminal), log(tableLog), blocks(std::move(first)) {}

void TableDisplay::Cycle(BlockSnapshot const& block) {
    std::lock_guard<std::mutex> const lock(mutex);
    for (BlockSnapshot& shown : blocks) {
        if (shown.Config == block.Config) {
            shown = block;
        }
    }
}

void TableDisplay::Refresh() {
    std::vector<BlockSnapshot> now;
    {
        std::lock_guard<std::mutex> const lock(mutex);
        now = blocks;
    }
    terminal.Show(FormatTable(now, log.Lines(), terminal.Size(), dorvel::Environment().Now()));
}

}  // namespace workbench
