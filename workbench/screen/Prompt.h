#pragma once

#include <string>
#include <vector>

#include "EditLine.h"
#include "Key.h"

namespace workbench {

// The line in which a person types what is set. Enter ends it, Escape discards it, Up and Down bring the
// lines that were entered before, Tab completes as far as the names agree and lists the candidates.
class Prompt {
public:
    // What may be typed; any order.
    explicit Prompt(std::vector<std::string> completions);

    void Open(std::string const& beginning);
    // Takes a key while the prompt is open. Returns the line that Enter ended; empty otherwise.
    std::string Handle(Key const& key);

    bool HasNames() const { return !names.empty(); }
    bool IsOpen() const { return isOpen; }
    EditLine const& Line() const { return line; }
    // What Tab has found and the next key clears; empty if it is only one.
    std::vector<std::string> const& Candidates() const { return candidates; }

private:
    std::string Enter();
    void Recall(bool isOlder);
    void Complete();

    std::vector<std::string> names;
    EditLine line;
    std::vector<std::string> history;  // oldest first
    std::size_t recalled = 0;          // its index in the history, or the size of that for a new line
    std::string unfinished;            // what was typed before a line was recalled
    std::vector<std::string> candidates;
    bool isOpen = false;
};

}  // namespace workbench
