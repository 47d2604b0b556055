#pragma once

#include <string>
#include <vector>

namespace simulator {

// Lines from a handle, taken without waiting. Of a line that is longer than a command may be only so much is
// kept that one can tell it: kLongestCommand octets and one more.
class CommandInput {
public:
    // The handle stays the caller's.
    explicit CommandInput(int handle) : m_handle(handle) {}

    // -1 once the input is closed or cannot be read.
    int handle() const { return m_isOpen ? m_handle : -1; }
    bool isOpen() const { return m_isOpen; }
    // Reads once and gives the lines that are whole, without their ends. To be called when the handle is
    // readable; doesn't wait even if it is not.
    std::vector<std::string> read();

private:
    int m_handle;
    bool m_isOpen = true;
    std::string m_line;
};

// Writes text if that needs no waiting; what can't be written is lost.
void writeWithoutWaiting(int handle, std::string const& text);

}  // namespace simulator
