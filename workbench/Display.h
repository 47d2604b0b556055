#pragma once

#include <memory>
#include <mutex>
#include <ostream>
#include <string>
#include <vector>

#include "LogBuffer.h"
#include "Snapshot.h"
#include "Terminal.h"

namespace workbench {

// Where the blocks' cycles are shown.
class Display {
public:
    virtual ~Display() = default;
    // A block has had a cycle. Called by the threads of the tasks.
    virtual void Cycle(BlockSnapshot const& block) = 0;
    // Called by the main thread several times a second and once at the end.
    virtual void Refresh() = 0;
    // The output takes nothing more.
    virtual bool Failed() const = 0;
};

// Writes each cycle as text, by a function such as FormatLines.
class TextDisplay : public Display {
public:
    using Format = std::string (*)(BlockSnapshot const& block);

    TextDisplay(std::ostream& outputStream, Format cycleFormat) : stream(outputStream), format(cycleFormat) {}

    void Cycle(BlockSnapshot const& block) override;
    void Refresh() override {}
    bool Failed() const override;

private:
    mutable std::mutex mutex;
    std::ostream& stream;
    Format format;
};

// Keeps the newest cycle of each block in a table on a terminal, with the log below.
class TableDisplay : public Display {
public:
    // The blocks in the order of the table, before their first cycle. What is given has to outlive the
    // display.
    TableDisplay(Terminal& tableTerminal, LogBuffer const& tableLog, std::vector<BlockSnapshot> first);

    void Cycle(BlockSnapshot const& block) override;
    void Refresh() override;
    bool Failed() const override { return false; }

private:
    Terminal& terminal;
    LogBuffer const& log;
    std::mutex mutex;
    std::vector<BlockSnapshot> blocks;
};

}  // namespace workbench
