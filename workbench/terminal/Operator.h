#pragma once

#include <string>

#include "Display.h"
#include "LineInput.h"
#include "LoadedProject.h"
#include "PromptLine.h"
#include "Terminal.h"
#include "ValueSetter.h"

namespace workbench {

// Serves whoever sets values while the blocks run: a person at the table, a program that sends lines, and the
// project's own script. All on the main thread.
class Operator {
public:
    // What is given has to outlive the operator. input is the handle that lines come from, -1 for none.
    Operator(LoadedProject& loadedProject, ValueSetter& valueSetter, Display& answerDisplay,
             PromptLine& tablePrompt, Terminal& tableTerminal, int input);

    // Takes what has come since the last time; does not wait.
    void Serve();
    // The lines alone.
    void ServeLines();

    // "Block.Variable = value".
    void Assign(std::string const& assignment);
    // "set Block.Variable = value"; empty lines and those that begin with "#" say nothing.
    void Command(std::string const& line);

private:
    LoadedProject& project;
    ValueSetter& setter;
    Display& display;
    PromptLine& prompt;
    Terminal& terminal;
    LineInput lines;
};

}  // namespace workbench
