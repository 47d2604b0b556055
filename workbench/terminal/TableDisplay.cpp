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
    auto const longest = steady_clock::now() + (decoder.IsWaiting() ? RestOfSequence : LongestWait);
    terminal.Wait(cycles.Handle(), Until(longest));
    if (cycles.Take() && !terminal.HasKeys()) {
        terminal.Wait(-1, Until(std::min(longest, shownAt + BetweenFrames)));
    }
    return milliseconds(0);
}

std::vector<std::string> TableDisplay::Lines() {
    std::string const octets = terminal.Keys();
    std::vector<std::string> lines;
    Update();
    for (Key const& key : octets.empty() ? decoder.Flush() : decoder.Feed(octets)) {
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
    if (VariableConfig const* const variable = screen.Detailed()) {
        screen.SetFacts(FactsOf(*variable));
    }
    terminal.Show(screen.Draw(terminal.Size()));
    shownAt = steady_clock::now();
}

void TableDisplay::Update() {
    screen.Update({sources.memory.board.All(), sources.setter.States()}, sources.log.Lines(),
                  dorvel::Environment().Now());
}

VariableFacts TableDisplay::FactsOf(VariableConfig const& variable) const {
    static_cast<void>(variable);
    return {};
}

}  // namespace workbench
