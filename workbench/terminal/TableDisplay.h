#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "Display.h"
#include "KeyDecoder.h"
#include "LogBuffer.h"
#include "ObjectInspector.h"
#include "OutletList.h"
#include "PlantMemory.h"
#include "PlantScreen.h"
#include "Terminal.h"
#include "ValueSetter.h"
#include "WakeEvent.h"

namespace workbench {

// What the table shows and where it takes it from. All must outlive the display.
struct TableSources {
    PlantMemory const& memory;
    ValueSetter const& setter;
    LogBuffer const& log;
    OutletList const& outlets;
};

// The screen of a run on a terminal (PlantScreen.h). A key is shown at once, a cycle at most 40 ms after it
// has ended.
class TableDisplay : public Display {
public:
    // Nothing is shown before the terminal has begun. completions are what may be typed in the line for
    // values.
    TableDisplay(Terminal& tableTerminal, TableSources const& tableSources,
                 std::vector<std::string> completions);

    void Cycle(SharedSnapshot const& block) override;
    void Answer(SetAnswer const& answer) override;
    std::chrono::milliseconds Wait() override;
    std::vector<std::string> Lines() override;
    void Refresh() override;
    bool Failed() const override { return false; }

private:
    std::vector<Key> Pressed();
    void Update();
    VariableFacts FactsOf(BlockConfig const& block, VariableConfig const& variable);

    Terminal& terminal;
    TableSources sources;
    PlantScreen screen;
    KeyDecoder decoder;
    std::chrono::steady_clock::time_point keysAt{};  // when the newest keys came
    std::vector<std::string> log;
    unsigned long long logCount = 0;  // of the lines that are in it
    WakeEvent cycles;
    std::unique_ptr<ObjectInspector> inspector;  // from the first details on
    std::chrono::steady_clock::time_point shownAt{};
};

}  // namespace workbench
