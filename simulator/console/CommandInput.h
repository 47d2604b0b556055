#pragma once

#include <string>
#include <vector>

namespace simulator {

// Lines from a handle, taken without waiting. Of a line that is longer than a command may be only so much is
// kept that its length can be seen: LongestCommand octets and one more.
class CommandInput {
public:
    // The handle stays the caller's.
    explicit CommandInput(int inputHandle) : handle(inputHandle) {}

    // -1 once the input is closed or cannot be read.
    int Handle() const { return isOpen ? handle : -1; }
    bool IsOpen() const { return isOpen; }
    // Reads once and gives the lines that are whole, without their ends. To be called when the handle is
    // readable; doesn't wait even if it is not.
    std::vector<std::string> Read();

private:
    int handle;
    bool isOpen = true;
    std::string line;
};

// Writes text if that needs no waiting; what can't be written is lost.
void WriteWithoutWaiting(int handle, std::string const& text);

}  // namespace simulator
