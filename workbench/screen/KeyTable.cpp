#include "KeyTable.h"

#include "Printable.h"
#include "TableLine.h"
#include "WrappedText.h"

namespace workbench {

namespace {

constexpr KeyHelp Marks[] = {{">", "The selected row"},
                             {"!", "The quality is bad"},
                             {"?", "The quality is uncertain"},
                             {"~", "Suspect: the value comes from an error of the device"}};

void AddKey(KeyHelp const& key, Screen const& screen, std::vector<std::string>& lines) {
    constexpr std::size_t keyWidth = 22;
    std::size_t const left = screen.width > keyWidth + 10 ? screen.width - keyWidth - 2 : 10;
    std::string keys = key.keys;
    for (std::string const& words : Wrapped(key.action, left)) {
        TableLine line(screen.width, screen.colour);
        line.Add("  " + tools::FitTo(keys, keyWidth - 2), Colour::Bold);
        line.Add("  " + words);
        lines.push_back(line.Text());
        keys.clear();
    }
}

void AddTitle(std::string const& title, Screen const& screen, std::vector<std::string>& lines) {
    TableLine line(screen.width, screen.colour);
    line.Add(title, Colour::Bold);
    lines.push_back(line.Text());
}

}  // namespace

std::vector<KeyHelp> const& KeyTable() {
    static std::vector<KeyHelp> const keys = {
        {"Up, Down, k, j", "Selects another row"},
        {"PgUp, PgDn, Space", "Goes a page up or down"},
        {"Home, End, g, G", "Goes to the first or the last row"},
        {"mouse",
         "The wheel scrolls, a click selects, a click on the selected row opens it. With Shift the "
         "mouse selects text, as without a program"},
        {"Enter", "Opens the details of a variable; folds or unfolds a block"},
        {"Left, Right", "Folds or unfolds the block"},
        {"f", "Folds or unfolds all blocks"},
        {"/",
         "Filters by words of name, object or value while they are typed; Enter keeps the filter, Esc "
         "clears it"},
        {"b", "Only what is not good: bad or uncertain quality, suspect values, failed writes, faults"},
        {"c", "Only what changed within the last 30 s"},
        {"w", "Only what can be set"},
        {"a, Esc", "All again: without filter, b, c and w"},
        {"s, :",
         "Sets a value; the selected variable is filled in. Tab completes and shows the candidates, Up "
         "and Down bring earlier lines, Esc discards the line"},
        {"l", "The log, from its newest line"},
        {"?", "These keys"},
        {"q, Esc", "Back to the table from details, log and keys"},
        {"Ctrl-L", "Draws the screen again"},
        {"Ctrl-C", "Ends the run"},
    };
    return keys;
}

std::vector<std::string> HelpLines(Screen const& screen) {
    std::vector<std::string> lines;
    AddTitle("Keys", screen, lines);
    for (KeyHelp const& key : KeyTable()) {
        AddKey(key, screen, lines);
    }
    lines.emplace_back();
    AddTitle("Marks in front of a row", screen, lines);
    for (KeyHelp const& mark : Marks) {
        AddKey(mark, screen, lines);
    }
    return lines;
}

}  // namespace workbench
