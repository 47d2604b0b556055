#pragma once

#include <string>
#include <vector>

namespace workbench {

// Reads lines that a program or a person sends during a run, without waiting.
class LineInput {
public:
    // A file descriptor, owned by the caller; -1 for no input.
    explicit LineInput(int inputHandle) : handle(inputHandle) {}

    // Returns the complete lines, without their line ends; at the end of the input also a last line without
    // one. A line of more than 64 KiB is split.
    std::vector<std::string> Take();

private:
    void Split(std::vector<std::string>& lines);

    int handle;
    std::string rest;
};

}  // namespace workbench
