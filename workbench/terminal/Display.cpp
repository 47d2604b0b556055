#include "Display.h"

#include "dorvelshare/HostEnvironment.h"
#include "dorvelshare/Trace.h"

namespace workbench {

void Display::Standby(bool isOn) {
    logMsgLn(isOn ? "standby on" : "standby off");
}

void TextDisplay::Cycle(SharedSnapshot const& block) {
    BlockChange const change = ChangeOf(*block);
    if (!change.IsEmpty()) {
        Write(format(*block, change.variables));
    }
}

BlockChange TextDisplay::ChangeOf(BlockSnapshot const& block) {
    if (!filter) {
        return {AllVariables(block), true};
    }
    std::lock_guard<std::mutex> const lock(mutex);
    return filter->Take(block);
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

}  // namespace workbench
