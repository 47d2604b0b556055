#pragma once

#include <termios.h>

#include <string>
#include <vector>

#include "TableFormat.h"

namespace workbench {

// Makes the text that replaces one frame by the next, with ECMA-48 sequences. It clears the rest of each line
// and everything below the frame.
class FramePainter {
public:
    // Leaves the cursor at the start of the line below the frame.
    std::string Paint(std::vector<std::string> const& lines);
    // Begins the next frame on an empty screen, since a terminal that changes its size may wrap lines.
    void Clear() { clear = true; }
    // Begins the next frame at the cursor.
    void Forget() { height = 0; }

private:
    std::size_t height = 0;
    bool clear = false;
};

// True when the process may read from the terminal and change its mode: the system stops a background job
// that tries. Also true when the handle is not a terminal.
bool IsForeground(int handle);

// Reads at most 4096 octets from the handle without waiting. ended is set to true at the end of the input.
std::string ReadAvailable(int handle, bool& ended);

// A terminal that shows frames. From Begin to End it has no cursor and no echo, and delivers each key at
// once.
class Terminal {
public:
    Terminal(int outputHandle, int inputHandle) : output(outputHandle), input(inputHandle) {}
    Terminal(Terminal const&) = delete;
    Terminal& operator=(Terminal const&) = delete;
    ~Terminal() { End(); }

    void Begin();
    // Restores the mode from before Begin; the last frame stays visible.
    void End();
    // End for a signal handler, for the terminal that began last.
    static void EndAtOnce();

    void Show(std::vector<std::string> const& lines);
    // Reads the keys that have been pressed; does not wait. Empty outside Begin and End.
    std::string Keys();
    void Resized() { painter.Clear(); }

    // The terminal's size, or 80 by 24 when it is unknown. Colours unless NO_COLOR is set or TERM is "dumb".
    Screen Size() const;

private:
    int output;
    int input;
    bool begun = false;
    bool hasMode = false;
    termios mode{};
    FramePainter painter;
};

}  // namespace workbench
