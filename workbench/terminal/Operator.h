#pragma once

#include <string>

#include "Display.h"
#include "LineInput.h"
#include "LoadedProject.h"
#include "ValueSetter.h"

namespace workbench {

// Accepts values to be set while the blocks run: from a person at the table, from a program that sends lines,
// and from the project's script. Runs on the main thread.
class Operator {
public:
    // All references must outlive the operator. input is the file descriptor of the lines, -1 for none.
    Operator(LoadedProject& loadedProject, ValueSetter& valueSetter, Display& answerDisplay, int input);

    // Handles what has come since the last call; does not wait.
    void Serve();
    // Handles the lines alone.
    void ServeLines();

    // "Block.Variable = value".
    void Assign(std::string const& assignment);
    // "set Block.Variable = value", "standby on", "standby off"; empty lines and lines that begin with "#"
    // are ignored.
    void Command(std::string const& line);

private:
    // True if the line is a standby command, which is then carried out.
    bool PlaysStandby(std::string const& line);

    LoadedProject& project;
    ValueSetter& setter;
    Display& display;
    LineInput lines;
};

}  // namespace workbench
