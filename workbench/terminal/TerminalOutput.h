#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace workbench {

// Writes to a terminal without waiting for it, since a person may stop its output, and a connection may hang.
// The terminal is opened once more for that: the mode of the given handle, which other programs share, stays
// as it is. What cannot be opened is written to through the given handle, and may be waited for.
class TerminalOutput {
public:
    // The handle is owned by the caller.
    explicit TerminalOutput(int givenHandle);
    TerminalOutput(TerminalOutput const&) = delete;
    TerminalOutput& operator=(TerminalOutput const&) = delete;
    ~TerminalOutput();

    int Handle() const { return own >= 0 ? own : given; }

    // Writes what the terminal takes now and keeps the rest for Continue.
    void Write(std::string_view text);
    // True if nothing is left.
    bool Continue();
    // The same, and waits while the terminal takes something within that time.
    bool Finish(std::chrono::milliseconds longest);
    // Forgets the rest.
    void Discard() { rest.clear(); }

private:
    int given;
    int own;  // -1 without
    std::string rest;
};

// Writes as much as the terminal takes and returns how much that is. Safe in a signal handler.
std::size_t WriteNow(int handle, std::string_view text);

}  // namespace workbench
