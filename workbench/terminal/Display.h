#pragma once

#include <memory>
#include <mutex>
#include <ostream>
#include <string>
#include <vector>

#include "JsonFormat.h"
#include "LineFormat.h"
#include "LogBuffer.h"
#include "PromptLine.h"
#include "SetAnswer.h"
#include "Snapshot.h"
#include "Terminal.h"
#include "ValueSetter.h"

namespace workbench {

// Where the blocks' cycles are shown.
class Display {
public:
    virtual ~Display() = default;
    // A block has had a cycle. Called by the threads of the tasks.
    virtual void Cycle(BlockSnapshot const& block) = 0;
    // What became of a value that the user asked for. Called by the main thread.
    virtual void Answer(SetAnswer const& answer) = 0;
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

protected:
    void Write(std::string const& text);

private:
    mutable std::mutex mutex;
    std::ostream& stream;
    Format format;
};

// Answers go to the log.
class LinesDisplay : public TextDisplay {
public:
    LinesDisplay(std::ostream& outputStream, LogBuffer& answerLog)
        : TextDisplay(outputStream, FormatLines), log(answerLog) {}

    void Answer(SetAnswer const& answer) override;

private:
    LogBuffer& log;
};

// Answers are objects of their own between those of the cycles.
class JsonDisplay : public TextDisplay {
public:
    explicit JsonDisplay(std::ostream& outputStream) : TextDisplay(outputStream, FormatJson) {}

    void Answer(SetAnswer const& answer) override;
};

// Keeps the newest cycle of each block in a table on a terminal, with the log and the line for setting
// values below.
class TableDisplay : public Display {
public:
    // The blocks in the order of the table, before their first cycle. What is given has to outlive the
    // display.
    TableDisplay(Terminal& tableTerminal, LogBuffer const& tableLog, ValueSetter const& tableSetter,
                 PromptLine const& tablePrompt, std::vector<BlockSnapshot> first);

    void Cycle(BlockSnapshot const& block) override;
    void Answer(SetAnswer const& answer) override;
    void Refresh() override;
    bool Failed() const override { return false; }

private:
    std::string Footer(std::vector<BlockSnapshot> const& now, Screen const& screen) const;
    // The state of the variable that was set last, which may stand below the screen's end.
    std::string Progress(std::vector<BlockSnapshot> const& now) const;

    Terminal& terminal;
    LogBuffer const& log;
    ValueSetter const& setter;
    PromptLine const& prompt;
    SetAnswer latest;
    std::mutex mutex;
    std::vector<BlockSnapshot> blocks;
};

}  // namespace workbench
