#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace workbench {

// A line that is typed in a terminal without echo. The key s or : opens it, Enter ends it, Escape discards
// it; Backspace and Ctrl-U delete; Tab completes as far as the names agree. Other keys, such as arrows, are
// ignored.
class PromptLine {
public:
    explicit PromptLine(std::vector<std::string> completions) : names(std::move(completions)) {}

    // Takes keys as a terminal sends them. Returns the lines that Enter ended, without empty ones.
    std::vector<std::string> Feed(std::string_view keys);

    bool HasNames() const { return !names.empty(); }
    bool IsOpen() const { return isOpen; }
    std::string const& Text() const { return text; }

private:
    void Type(char key);
    void Complete();

    std::vector<std::string> names;
    std::string text;
    bool isOpen = false;
};

}  // namespace workbench
