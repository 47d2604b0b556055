#include "Display.h"

#include "OutletFormat.h"
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

void NoDisplay::Cycle(SharedSnapshot const&) {}

void NoDisplay::Answer(SetAnswer const& answer) {
    log.Add(AnswerText(answer, dorvel::Environment().LocalTimeDiff()));
}

void JsonDisplay::Answer(SetAnswer const& answer) {
    Write(FormatJson(answer, dorvel::Environment().LocalTimeDiff()));
}

void JsonDisplay::Standby(bool isOn) {
    Write(FormatStandby(isOn));
}

void JsonDisplay::Refresh() {
    std::vector<OutletState> states = outlets.States();
    shown.resize(states.size());
    for (std::size_t i = 0; i < states.size(); ++i) {
        if (states[i].since != shown[i].since || states[i].health != shown[i].health ||
            states[i].text != shown[i].text) {
            Write(OutletJson(states[i], dorvel::Environment().LocalTimeDiff()) + "\n");
        }
    }
    shown = std::move(states);
}

}  // namespace workbench
