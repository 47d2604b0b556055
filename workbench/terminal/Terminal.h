#pragma once

#include <termios.h>

#include <chrono>
#include <string>
#include <vector>

#include "Screen.h"
#include "ScreenFrame.h"
#include "TerminalOutput.h"

namespace workbench {

// Makes the text that replaces one frame by the next on a screen, with ECMA-48 sequences: the lines that
// differ, and the cursor.
class FramePainter {
public:
    std::string Paint(ScreenFrame const& frame);
    // Begins the next frame on an empty screen, since a terminal that changes its size may move lines.
    void Clear() { isClear = false; }

private:
    std::vector<std::string> shown;
    bool isClear = false;
};

// True when the process may read from the terminal and change its mode: the system stops a background job
// that tries. Also true when the handle is not a terminal.
bool IsForeground(int handle);

// Reads at most 4096 octets from the handle without waiting. ended is set to true at the end of the input.
std::string ReadAvailable(int handle, bool& ended);

// A terminal that shows frames on its alternate screen. From Begin to End it has no echo, delivers each key
// at once and reports the wheel and the buttons of the mouse. A terminal that takes no output, because a
// person has stopped it or a connection hangs, loses frames; nobody waits for it.
class Terminal {
public:
    Terminal(int outputHandle, int inputHandle)
        : output(outputHandle), input(inputHandle), writer(outputHandle) {}
    Terminal(Terminal const&) = delete;
    Terminal& operator=(Terminal const&) = delete;
    ~Terminal() { End(); }

    // Does nothing if it has begun, and while the process is in the background: then the terminal is
    // another's.
    void Begin();
    // Restores the screen and the mode from before Begin, and leaves the last frame on the screen.
    // False if the terminal takes no output: whoever writes to it would wait.
    bool End();
    // The same without the frame, for a program that is suspended.
    void Suspend();
    // The same for a signal handler, for the terminal that began last.
    static void EndAtOnce();

    // Shows nothing outside Begin and End.
    void Show(ScreenFrame const& frame);
    // Reads the keys that have been pressed; does not wait. Empty outside Begin and End.
    std::string Keys();
    // Waits until a key is pressed, or the other handle can be read, or the time is over.
    void Wait(int otherHandle, std::chrono::milliseconds timeout) const;
    // True if a key can be read.
    bool HasKeys() const;
    // The next frame is drawn as a whole.
    void Redraw() { painter.Clear(); }

    // The terminal's size, or 80 by 24 when it is unknown. Colours unless NO_COLOR is set or TERM is "dumb".
    Screen Size() const;
    // True if the terminal is too plain or too small for a table.
    bool IsForLines() const;

private:
    // The handle on which keys come, -1 while none can come.
    int KeyHandle() const;

    int output;
    int input;
    TerminalOutput writer;
    bool begun = false;
    bool hasMode = false;
    bool hasInput = true;
    termios mode{};
    FramePainter painter;
    ScreenFrame last;
};

}  // namespace workbench
