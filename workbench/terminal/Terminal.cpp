#include "Terminal.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace workbench {

namespace {

// The alternate screen, no cursor, and mouse events in the form SGR, by the control sequences of xterm.
constexpr std::string_view BeginScreen = "\x1B[?1049h\x1B[?25l\x1B[?1000h\x1B[?1006h";
constexpr std::string_view EndScreen = "\x1B[?1006l\x1B[?1000l\x1B[?25h\x1B[0m\x1B[?1049l";
constexpr std::string_view HideCursor = "\x1B[?25l";
constexpr std::string_view ShowCursor = "\x1B[?25h";
constexpr std::string_view ClearScreen = "\x1B[2J";
constexpr std::string_view ClearLine = "\x1B[K";

std::string MoveTo(std::size_t line, std::size_t column) {
    return "\x1B[" + std::to_string(line + 1) + ";" + std::to_string(column + 1) + "H";
}

bool IsDumb() {
    char const* const kind = std::getenv("TERM");
    return kind && std::strcmp(kind, "dumb") == 0;
}

// The data of EndAtOnce, outside the object so that a signal handler always finds it complete.
struct Restoration {
    std::atomic<bool> valid{false};
    int output = -1;
    int input = -1;
    bool hasMode = false;
    termios mode{};
};

Restoration restoration;

// How long the end of the screen waits for a terminal that takes nothing.
constexpr std::chrono::milliseconds LongestEnd{500};

}  // namespace

bool IsForeground(int handle) {
    pid_t const foreground = tcgetpgrp(handle);
    return foreground == -1 || foreground == getpgrp();
}

std::string ReadAvailable(int handle, bool& ended) {
    pollfd ready{handle, POLLIN, 0};
    ended = false;
    if (!IsForeground(handle) || poll(&ready, 1, 0) <= 0) {
        return {};
    }
    char octets[4096];
    ssize_t const length = read(handle, octets, sizeof octets);
    ended = length == 0 || (length < 0 && errno != EINTR && errno != EAGAIN);
    return length > 0 ? std::string(octets, static_cast<std::size_t>(length)) : std::string();
}

std::string FramePainter::Paint(ScreenFrame const& frame) {
    std::string text;
    if (!isClear) {
        text += ClearScreen;
        shown.clear();
    }
    std::size_t const count = std::max(shown.size(), frame.lines.size());
    for (std::size_t i = 0; i < count; ++i) {
        std::string const line = i < frame.lines.size() ? frame.lines[i] : "";
        // Cleared first: after a line that fills the screen the cursor is on its last character.
        text += i < shown.size() ? (line == shown[i] ? "" : MoveTo(i, 0) + std::string(ClearLine) + line)
                                 : MoveTo(i, 0) + line;
    }
    text += frame.cursor ? MoveTo(frame.cursor->line, frame.cursor->column) + std::string(ShowCursor)
                         : std::string(HideCursor);
    shown = frame.lines;
    isClear = true;
    return text;
}

void Terminal::Begin() {
    if (begun || !IsForeground(input) || !IsForeground(output)) {
        return;
    }
    begun = true;
    hasMode = tcgetattr(input, &mode) == 0;
    restoration.output = writer.Handle();
    restoration.input = input;
    restoration.hasMode = hasMode;
    restoration.mode = mode;
    restoration.valid = true;
    if (hasMode) {
        termios silent = mode;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO | ICANON);
        silent.c_cc[VMIN] = 1;
        silent.c_cc[VTIME] = 0;
        tcsetattr(input, TCSANOW, &silent);
    }
    writer.Write(BeginScreen);
    painter.Clear();
}

bool Terminal::End() {
    if (!begun) {
        return true;
    }
    Suspend();
    for (std::string const& line : last.lines) {
        writer.Write(line.empty() ? line : line + "\r\n");
    }
    last = {};
    return writer.Finish(LongestEnd);
}

void Terminal::Suspend() {
    if (begun) {
        begun = false;
        writer.Finish(LongestEnd);
        writer.Discard();
        EndAtOnce();
    }
}

void Terminal::EndAtOnce() {
    if (!restoration.valid.exchange(false)) {
        return;
    }
    WriteNow(restoration.output, EndScreen);
    if (restoration.hasMode) {
        tcsetattr(restoration.input, TCSANOW, &restoration.mode);
    }
}

void Terminal::Show(ScreenFrame const& frame) {
    if (!begun) {
        return;
    }
    if (writer.Continue()) {
        writer.Write(painter.Paint(frame));
    }
    last = frame;
}

std::string Terminal::Keys() {
    if (KeyHandle() < 0) {
        return {};
    }
    bool ended = false;
    std::string const keys = ReadAvailable(input, ended);
    hasInput = !ended;
    return keys;
}

int Terminal::KeyHandle() const {
    return begun && hasMode && hasInput && IsForeground(input) ? input : -1;
}

void Terminal::Wait(int otherHandle, std::chrono::milliseconds timeout) const {
    pollfd handles[] = {{KeyHandle(), POLLIN, 0}, {otherHandle, POLLIN, 0}};
    poll(handles, 2, static_cast<int>(timeout.count()));
}

bool Terminal::HasKeys() const {
    pollfd keys{KeyHandle(), POLLIN, 0};
    return poll(&keys, 1, 0) > 0;
}

Screen Terminal::Size() const {
    Screen screen;
    winsize size{};
    if (ioctl(output, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 && size.ws_row > 0) {
        screen.width = size.ws_col;
        screen.height = size.ws_row;
    }
    char const* const noColour = std::getenv("NO_COLOR");
    screen.colour = !(noColour && *noColour) && !IsDumb();
    return screen;
}

bool Terminal::IsForLines() const {
    Screen const size = Size();
    return IsDumb() || size.width < LeastWidth || size.height < LeastHeight;
}

}  // namespace workbench
