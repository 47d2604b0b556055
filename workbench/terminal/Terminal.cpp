#include "Terminal.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace workbench {

namespace {

constexpr std::string_view HideCursor = "\x1B[?25l";
constexpr std::string_view ShowCursor = "\x1B[?25h\x1B[0m";
constexpr std::string_view ClearScreen = "\x1B[2J\x1B[H";
constexpr std::string_view ClearLine = "\x1B[K";
constexpr std::string_view ClearBelow = "\x1B[J";

// The data of EndAtOnce, outside the object so that a signal handler always finds it complete.
struct Restoration {
    std::atomic<bool> valid{false};
    int output = -1;
    int input = -1;
    bool hasMode = false;
    termios mode{};
};

Restoration restoration;

// Safe in a signal handler.
void WriteAll(int handle, std::string_view text) {
    while (!text.empty()) {
        ssize_t const written = write(handle, text.data(), text.size());
        if (written <= 0) {
            return;
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

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

std::string FramePainter::Paint(std::vector<std::string> const& lines) {
    std::string text;
    if (clear) {
        text += ClearScreen;
    } else if (height > 0) {
        text += "\r\x1B[" + std::to_string(height) + "A";
    }
    for (std::string const& line : lines) {
        text += line;
        text += ClearLine;
        text += "\r\n";
    }
    text += ClearBelow;
    height = lines.size();
    clear = false;
    return text;
}

void Terminal::Begin() {
    if (begun) {
        return;
    }
    begun = true;
    hasMode = IsForeground(input) && tcgetattr(input, &mode) == 0;
    restoration.output = output;
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
    WriteAll(output, HideCursor);
    painter.Forget();
}

void Terminal::End() {
    if (begun) {
        begun = false;
        EndAtOnce();
    }
}

void Terminal::EndAtOnce() {
    if (!restoration.valid.exchange(false)) {
        return;
    }
    WriteAll(restoration.output, ShowCursor);
    if (restoration.hasMode) {
        tcsetattr(restoration.input, TCSANOW, &restoration.mode);
    }
}

void Terminal::Show(std::vector<std::string> const& lines) {
    WriteAll(output, painter.Paint(lines));
}

std::string Terminal::Keys() {
    bool ended = false;
    return begun && hasMode ? ReadAvailable(input, ended) : std::string();
}

Screen Terminal::Size() const {
    Screen screen;
    winsize size{};
    if (ioctl(output, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 && size.ws_row > 0) {
        screen.width = size.ws_col;
        screen.height = size.ws_row;
    }
    char const* const noColour = std::getenv("NO_COLOR");
    char const* const kind = std::getenv("TERM");
    screen.colour = !(noColour && *noColour) && !(kind && std::strcmp(kind, "dumb") == 0);
    return screen;
}

}  // namespace workbench
