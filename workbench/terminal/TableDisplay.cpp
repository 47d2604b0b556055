#include "TableDisplay.h"

#include <algorithm>
#include <utility>

#include "dorvelshare/HostEnvironment.h"

namespace workbench {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds LongestWait{100};
constexpr milliseconds BetweenFrames{40};
// How long the rest of a sequence may take after its Escape.
constexpr milliseconds RestOfSequence{25};

milliseconds Until(steady_clock::time_point time) {
    auto const left = std::chrono::ceil<milliseconds>(time - steady_clock::now());
    return std::max(left, milliseconds(0));
}

}  // namespace

TableDisplay::TableDisplay(Terminal& tableTerminal, TableSources const& tableSources,
                           std::vector<std::string> completions)
    : terminal(tableTerminal), sources(tableSources), screen(std::move(completions)) {}

void TableDisplay::Cycle(SharedSnapshot const&) {
    cycles.Notify();
}

void TableDisplay::Answer(SetAnswer const& answer) {
    screen.SetAnswerLine(answer);
}

// Many blocks end their cycles at about the same time: they share a frame.
milliseconds TableDisplay::Wait() {
    auto const longest = decoder.IsWaiting() ? keysAt + RestOfSequence : steady_clock::now() + LongestWait;
    terminal.Wait(cycles.Handle(), Until(longest));
    if (cycles.Take() && !terminal.HasKeys()) {
        terminal.Wait(-1, Until(std::min(longest, shownAt + BetweenFrames)));
    }
    return milliseconds(0);
}

// A cycle that ends meanwhile does not end a sequence.
std::vector<Key> TableDisplay::Pressed() {
    std::string const octets = terminal.Keys();
    if (!octets.empty()) {
        keysAt = steady_clock::now();
        return decoder.Feed(octets);
    }
    return steady_clock::now() >= keysAt + RestOfSequence ? decoder.Flush() : std::vector<Key>();
}

std::vector<std::string> TableDisplay::Lines() {
    std::vector<std::string> lines;
    Update();
    for (Key const& key : Pressed()) {
        if (key.kind == KeyKind::Redraw) {
            terminal.Redraw();
        }
        std::string line = screen.Handle(key);
        if (!line.empty()) {
            lines.push_back(std::move(line));
        }
    }
    return lines;
}

void TableDisplay::Refresh() {
    Update();
    if (auto const detailed = screen.Detailed()) {
        screen.SetFacts(FactsOf(*detailed->first, *detailed->second));
    }
    terminal.Show(screen.Draw(terminal.Size()));
    shownAt = steady_clock::now();
}

void TableDisplay::Update() {
    if (unsigned long long const count = sources.log.Count(); count != logCount || log.empty()) {
        logCount = count;
        log.clear();
        for (LogLine const& line : sources.log.Newest()) {
            log.push_back(ShortLogText(line));
        }
    }
    screen.Update({sources.memory.board.All(), sources.setter.States(), sources.outlets.States()}, log,
                  dorvel::Environment().Now());
}

VariableFacts TableDisplay::FactsOf(BlockConfig const& block, VariableConfig const& variable) {
    constexpr std::size_t mostLines = 10;
    constexpr std::size_t mostSamples = 1000;
    constexpr long long hour = 36000000000;
    if (!inspector) {
        inspector = std::make_unique<ObjectInspector>();
    }
    VariableFacts facts;
    MemoryHistory const& trends = sources.memory.trends;
    facts.trendTo = dorvel::Environment().Now();
    facts.trendFrom = std::max(trends.Oldest(variable), facts.trendTo - hour);
    facts.trend = trends.Samples(variable, facts.trendFrom, facts.trendTo, mostSamples);
    facts.events = sources.memory.events.Of(variable, mostLines);
    facts.log = sources.log.About(block.name, variable, mostLines);
    facts.inspection = inspector->Inspect(block, variable);
    return facts;
}

}  // namespace workbench
