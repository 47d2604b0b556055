#include "Operator.h"

#include <sstream>
#include <string_view>

#include "Printable.h"
#include "ProjectError.h"
#include "SetRequest.h"
#include "dorvel/ScadaProtocol.h"

namespace workbench {

namespace {

constexpr std::string_view Blanks = " \t\r";

}  // namespace

Operator::Operator(LoadedProject& loadedProject, ValueSetter& valueSetter, Display& answerDisplay, int input)
    : project(loadedProject), setter(valueSetter), display(answerDisplay), lines(input) {}

void Operator::Serve() {
    for (std::string const& line : display.Lines()) {
        if (!PlaysStandby(line)) {
            Assign(line);
        }
    }
    ServeLines();
    project.CallDue();
    for (SetRequest const& request : project.TakeSets()) {
        setter.Set(request);
    }
}

void Operator::ServeLines() {
    for (std::string const& line : lines.Take()) {
        Command(line);
    }
}

void Operator::Assign(std::string const& assignment) {
    try {
        SetRequest const request = ReadAssignment(project.Blocks(), assignment);
        setter.Set(request);
        display.Answer({FullName(*request.block, *request.variable), request.value, {}, request.variable});
    } catch (ProjectError const& mistake) {
        display.Answer({assignment, {}, mistake.what()});
    }
}

bool Operator::PlaysStandby(std::string const& line) {
    std::istringstream words(line);
    std::string command;
    std::string state;
    std::string more;
    words >> command >> state;
    if (command != "standby" || (state != "on" && state != "off") || words >> more) {
        return false;
    }
    dorvel::SetStandby(state == "on");
    display.Standby(state == "on");
    return true;
}

void Operator::Command(std::string const& line) {
    std::size_t const begin = line.find_first_not_of(Blanks);
    if (begin == std::string::npos || line[begin] == '#') {
        return;
    }
    std::size_t const end = line.find_first_of(Blanks, begin);
    if (end != std::string::npos && line.compare(begin, end - begin, "set") == 0) {
        Assign(line.substr(end + 1));
        return;
    }
    if (!PlaysStandby(line)) {
        display.Answer(
            {line,
             {},
             tools::Quoted(line) +
                 " is not a command; expected set Block.Variable = value, standby on or standby off"});
    }
}

}  // namespace workbench
