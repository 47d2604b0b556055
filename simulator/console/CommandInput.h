#pragma once

#include <string>
#include <vector>

namespace simulator {

// Reads lines from a handle without waiting. Of a longer line it keeps LongestCommand octets and one more,
// which shows that the line is too long.
class CommandInput {
public:
    // The caller keeps the ownership of the handle.
    explicit CommandInput(int inputHandle) : handle(inputHandle) {}

    // The handle, or -1 after the end of the input or a failed read.
    int Handle() const { return isOpen ? handle : -1; }
    bool IsOpen() const { return isOpen; }
    // Reads once and returns the complete lines, without their line ends. To be called when the handle is
    // readable; otherwise it returns nothing and does not wait.
    std::vector<std::string> Read();

private:
    int handle;
    bool isOpen = true;
    std::string line;
};

// Writes the text without waiting. The part that cannot be written at once is lost.
void WriteWithoutWaiting(int handle, std::string const& text);

}  // namespace simulator
