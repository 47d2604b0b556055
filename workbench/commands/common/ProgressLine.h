#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>

namespace workbench {

// The columns of the terminal at this handle less one; 79 if it is not a terminal.
std::size_t TerminalWidth(int handle);

// One line on a terminal that is written again and again, and removed at the end.
class ProgressLine {
public:
    // The stream must outlive the line. Nothing is written if it is not shown.
    ProgressLine(std::ostream& lineStream, bool isShownOnTerminal)
        : stream(lineStream), isShown(isShownOnTerminal) {}
    ProgressLine(ProgressLine const&) = delete;
    ProgressLine& operator=(ProgressLine const&) = delete;
    ~ProgressLine() { Clear(); }

    // Cuts the text to the width of the terminal. A text that is there already is not written again.
    void Show(std::string const& text);
    void Clear();

private:
    std::ostream& stream;
    bool isShown;
    std::string shown;
};

}  // namespace workbench
