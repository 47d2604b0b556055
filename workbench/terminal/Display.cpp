#include "Display.h"

#include "OutletFormat.h"
#include "dorvelshare/HostEnvironment.h"
#include "dorvelshare/Trace.h"

namespace workbench {

namespace {

// The answer to a value that is set is in the log, and the standby of the host.
bool IsLoggedElsewhere(EventKind kind) {
    return kind == EventKind::Set || kind == EventKind::Standby || kind == EventKind::StandbyEnd;
}

LogLine LineOf(Event const& event) {
    LogLine line{event.time,
                 event.localDiff,
                 event.block->name,
                 {},
                 {},
                 std::string(EventName(event.kind)) + ": " + event.text};
    if (event.variable) {
        line.object = ObjectText(*event.variable);
        line.variable = event.variable->name;
    }
    return line;
}

}  // namespace

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

void NoDisplay::Refresh() {
    for (Event const& event : events.Since(logged)) {
        logged = event.id;
        if (!IsLoggedElsewhere(event.kind)) {
            log.Add(LineOf(event));
        }
    }
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
