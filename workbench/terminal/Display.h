#pragma once

#include <memory>
#include <mutex>
#include <ostream>
#include <string>
#include <vector>

#include "JsonFormat.h"
#include "LineFormat.h"
#include "LogBuffer.h"
#include "PlantBoard.h"
#include "PromptLine.h"
#include "SetAnswer.h"
#include "Snapshot.h"
#include "Terminal.h"
#include "ValueSetter.h"

namespace workbench {

// Shows the cycles of the blocks.
class Display {
public:
    virtual ~Display() = default;
    // Called after a cycle of a block, on the thread of its task.
    virtual void Cycle(SharedSnapshot const& block) = 0;
    // Called on the main thread with the answer to a value that the user sets.
    virtual void Answer(SetAnswer const& answer) = 0;
    // Called on the main thread when the host has become the standby of a redundant pair, or is no longer.
    virtual void Standby(bool isOn);
    // Called on the main thread several times a second and once at the end.
    virtual void Refresh() = 0;
    // True when the output cannot be written any more.
    virtual bool Failed() const = 0;
};

// Writes each cycle as text, by a function such as FormatLines.
class TextDisplay : public Display {
public:
    using Format = std::string (*)(BlockSnapshot const& block);

    TextDisplay(std::ostream& outputStream, Format cycleFormat) : stream(outputStream), format(cycleFormat) {}

    void Cycle(SharedSnapshot const& block) override;
    void Refresh() override {}
    bool Failed() const override;

protected:
    void Write(std::string const& text);

private:
    mutable std::mutex mutex;
    std::ostream& stream;
    Format format;
};

// Lines of plain text. Answers go to the log.
class LinesDisplay : public TextDisplay {
public:
    LinesDisplay(std::ostream& outputStream, LogBuffer& answerLog)
        : TextDisplay(outputStream, FormatLines), log(answerLog) {}

    void Answer(SetAnswer const& answer) override;

private:
    LogBuffer& log;
};

// JSON objects, one a line. Answers are separate objects between those of the cycles.
class JsonDisplay : public TextDisplay {
public:
    explicit JsonDisplay(std::ostream& outputStream) : TextDisplay(outputStream, FormatJson) {}

    void Answer(SetAnswer const& answer) override;
    void Standby(bool isOn) override;
};

// The newest cycle of each block as a table on a terminal, with the log and the line for setting values
// below.
class TableDisplay : public Display {
public:
    // The board has the blocks in the order of the table. All references must outlive the display.
    TableDisplay(Terminal& tableTerminal, LogBuffer const& tableLog, ValueSetter const& tableSetter,
                 PromptLine const& tablePrompt, PlantBoard const& tableBoard);

    void Cycle(SharedSnapshot const&) override {}
    void Answer(SetAnswer const& answer) override;
    void Refresh() override;
    bool Failed() const override { return false; }

private:
    std::string Footer(std::vector<BlockSnapshot> const& now, Screen const& screen) const;
    // The state of the variable that was set last, whose row may not fit the screen.
    std::string Progress(std::vector<BlockSnapshot> const& now) const;

    Terminal& terminal;
    LogBuffer const& log;
    ValueSetter const& setter;
    PromptLine const& prompt;
    PlantBoard const& board;
    SetAnswer latest;
};

}  // namespace workbench
