#include "Display.h"

#include "Printable.h"
#include "TableLine.h"
#include "dorvelshare/HostEnvironment.h"
#include "dorvelshare/Trace.h"

namespace workbench {

void Display::Standby(bool isOn) {
    logMsgLn(isOn ? "standby on" : "standby off");
}

void TextDisplay::Cycle(SharedSnapshot const& block) {
    Write(format(*block));
}

void TextDisplay::Write(std::string const& text) {
    std::lock_guard<std::mutex> const lock(mutex);
    stream << text << std::flush;
}

bool TextDisplay::Failed() const {
    std::lock_guard<std::mutex> const lock(mutex);
    return !stream.good();
}

void LinesDisplay::Answer(SetAnswer const& answer) {
    log.Add(AnswerText(answer, dorvel::Environment().LocalTimeDiff()));
}

void JsonDisplay::Answer(SetAnswer const& answer) {
    Write(FormatJson(answer, dorvel::Environment().LocalTimeDiff()));
}

void JsonDisplay::Standby(bool isOn) {
    Write(FormatStandby(isOn));
}

TableDisplay::TableDisplay(Terminal& tableTerminal, LogBuffer const& tableLog, ValueSetter const& tableSetter,
                           PromptLine const& tablePrompt, PlantBoard const& tableBoard)
    : terminal(tableTerminal), log(tableLog), setter(tableSetter), prompt(tablePrompt), board(tableBoard) {}

void TableDisplay::Answer(SetAnswer const& answer) {
    latest = answer;
}

void TableDisplay::Refresh() {
    std::vector<BlockSnapshot> now;
    for (SharedSnapshot const& block : board.All()) {
        now.push_back(*block);
        setter.Show(now.back());
    }
    Screen screen = terminal.Size();
    std::string const footer = Footer(now, screen);
    screen.height -= footer.empty() || screen.height < 2 ? 0 : 1;
    std::vector<std::string> lines = FormatTable(now, log.Lines(), screen, dorvel::Environment().Now());
    if (!footer.empty()) {
        lines.push_back(footer);
    }
    terminal.Show(lines);
}

std::string TableDisplay::Footer(std::vector<BlockSnapshot> const& now, Screen const& screen) const {
    TableLine line(screen.width, screen.colour);
    if (prompt.IsOpen()) {
        line.Add("Block.Variable = value: ", Colour::Bold);
        line.Add(tools::Printable(prompt.Text()) + "_");
    } else if (!latest.mistake.empty()) {
        line.Add(tools::Printable(latest.mistake), Colour::Red);
    } else if (!latest.target.empty()) {
        line.Add(Progress(now), Colour::Dim);
    } else if (prompt.HasNames()) {
        line.Add("Press s to set a value", Colour::Dim);
    }
    return line.Text();
}

std::string TableDisplay::Progress(std::vector<BlockSnapshot> const& now) const {
    for (BlockSnapshot const& block : now) {
        for (VariableSnapshot const& variable : block.variables) {
            if (FullName(*block.config, *variable.config) == latest.target) {
                return tools::Printable(latest.target) + " = " +
                       WriteText(*variable.config, variable.write, block.localDiff, true);
            }
        }
    }
    return {};
}

}  // namespace workbench
