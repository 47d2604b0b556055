#pragma once

#include <chrono>
#include <mutex>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "ChangeFilter.h"
#include "CsvFormat.h"
#include "EventList.h"
#include "JsonFormat.h"
#include "LineFormat.h"
#include "LogBuffer.h"
#include "OutletList.h"
#include "SetAnswer.h"
#include "Snapshot.h"

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
    // Waits for work on the main thread: for keys, or for cycles to be shown. Returns how long the caller may
    // wait for other things before it calls Lines and Refresh.
    virtual std::chrono::milliseconds Wait() { return std::chrono::milliseconds(100); }
    // The lines that a person has entered since the last call: values to be set, and commands.
    virtual std::vector<std::string> Lines() { return {}; }
    // Called on the main thread several times a second and once at the end.
    virtual void Refresh() {}
    // True when the output cannot be written any more.
    virtual bool Failed() const = 0;
};

// Writes each cycle as text, by a function such as FormatLines.
class TextDisplay : public Display {
public:
    using Format = std::string (*)(BlockSnapshot const& block, ChosenVariables const& variables);

    // With a filter only what it finds changed is written.
    TextDisplay(std::ostream& outputStream, Format cycleFormat, std::optional<ChangeFilter> changesOnly = {})
        : stream(outputStream), format(cycleFormat), filter(std::move(changesOnly)) {}

    void Cycle(SharedSnapshot const& block) override;
    bool Failed() const override;

protected:
    void Write(std::string const& text);

private:
    BlockChange ChangeOf(BlockSnapshot const& block);

    mutable std::mutex mutex;
    std::ostream& stream;
    Format format;
    std::optional<ChangeFilter> filter;
};

// Lines of plain text or CSV, after their header. Answers go to the log.
class LinesDisplay : public TextDisplay {
public:
    LinesDisplay(std::ostream& outputStream, LogBuffer& answerLog, Format lineFormat,
                 std::optional<ChangeFilter> changesOnly = {})
        : TextDisplay(outputStream, lineFormat, std::move(changesOnly)), log(answerLog) {}

    void Answer(SetAnswer const& answer) override;

private:
    LogBuffer& log;
};

// Shows no cycles. Answers go to the log, and so do the events of the blocks and their variables, since
// nothing else says them.
class NoDisplay : public Display {
public:
    // Both must outlive the display.
    NoDisplay(LogBuffer& runLog, EventList const& runEvents) : log(runLog), events(runEvents) {}

    void Cycle(SharedSnapshot const& block) override;
    void Answer(SetAnswer const& answer) override;
    void Refresh() override;
    bool Failed() const override { return false; }

private:
    LogBuffer& log;
    EventList const& events;
    unsigned long long logged = 0;  // the id of the latest event that is in the log
};

// JSON objects, one a line. Answers, and outlets whose state has changed, are separate objects between those
// of the cycles.
class JsonDisplay : public TextDisplay {
public:
    // The outlets must outlive the display.
    JsonDisplay(std::ostream& outputStream, OutletList const& runOutlets,
                std::optional<ChangeFilter> changesOnly = {})
        : TextDisplay(outputStream, FormatJson, std::move(changesOnly)), outlets(runOutlets) {}

    void Answer(SetAnswer const& answer) override;
    void Standby(bool isOn) override;
    void Refresh() override;

private:
    OutletList const& outlets;
    std::vector<OutletState> shown;  // as they were written last
};

}  // namespace workbench
