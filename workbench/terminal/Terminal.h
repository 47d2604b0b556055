#pragma once

#include <termios.h>

#include <string>
#include <vector>

#include "TableFormat.h"

namespace workbench {

// The text that puts a frame in the place of the one before: ECMA-48 sequences, each line cleared behind its
// end and everything below the frame cleared too.
class FramePainter {
public:
    // The cursor is left at the start of the line below the frame.
    std::string Paint(std::vector<std::string> const& lines);
    // The next frame begins on an empty screen: the terminal has another size, and has wrapped lines its own
    // way.
    void Clear() { clear = true; }
    // The next frame begins where the cursor stands.
    void Forget() { height = 0; }

private:
    std::size_t height = 0;
    bool clear = false;
};

// Whether the process may read from the terminal, or change its mode, without being stopped by the system: it
// is no job in the background. True for what is no terminal.
bool IsForeground(int handle);

// What can be read from the handle without waiting, at most 4096 octets. Nothing at the end of the input,
// which ended then tells.
std::string ReadAvailable(int handle, bool& ended);

// A terminal that shows frames: without cursor and echo from Begin to End, each key handed over as it comes.
class Terminal {
public:
    Terminal(int outputHandle, int inputHandle) : output(outputHandle), input(inputHandle) {}
    Terminal(Terminal const&) = delete;
    Terminal& operator=(Terminal const&) = delete;
    ~Terminal() { End(); }

    void Begin();
    // Leaves the terminal as Begin found it, the last frame in view.
    void End();
    // End for a signal handler, of the terminal that began last.
    static void EndAtOnce();

    void Show(std::vector<std::string> const& lines);
    // The keys that have been pressed since Begin and were not read; does not wait.
    std::string Keys();
    void Resized() { painter.Clear(); }

    // As the terminal tells it, or 80 by 24. Colours unless NO_COLOR is set or TERM is "dumb".
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
