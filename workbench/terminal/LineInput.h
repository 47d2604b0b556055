#pragma once

#include <string>
#include <vector>

namespace workbench {

// Lines that a program or a person sends while the run goes on; reading never waits.
class LineInput {
public:
    // A handle of the system, which stays the caller's; -1 for no input.
    explicit LineInput(int inputHandle) : handle(inputHandle) {}

    // The lines that are complete, without their ends; at the end of the input also one without an end. What
    // is longer than 64 KiB comes in pieces.
    std::vector<std::string> Take();

private:
    void Split(std::vector<std::string>& lines);

    int handle;
    std::string rest;
};

}  // namespace workbench
