#include "CommandGate.h"

#include <iterator>
#include <utility>

#include "ProjectError.h"
#include "SetAnswer.h"
#include "TimeText.h"
#include "dorvelshare/HostEnvironment.h"

namespace workbench {

namespace {

constexpr char Replaced[] = "another value has taken its place";

CommandState StateOf(WriteStage stage) {
    switch (stage) {
        case WriteStage::Written:
            return CommandState::Written;
        case WriteStage::Unconfirmed:
            return CommandState::Unconfirmed;
        case WriteStage::Differs:
            return CommandState::Differs;
        case WriteStage::Refused:
            return CommandState::Refused;
        default:
            return CommandState::Pending;
    }
}

}  // namespace

char const* StateName(CommandState state) {
    switch (state) {
        case CommandState::Pending:
            return "pending";
        case CommandState::Written:
            return "written";
        case CommandState::Unconfirmed:
            return "unconfirmed";
        case CommandState::Differs:
            return "differs";
        case CommandState::Refused:
            return "refused";
        case CommandState::Invalid:
            return "invalid";
        default:
            return "rejected";
    }
}

VariableConfig const& CommandGate::VariableOf(VariablePlace place) const {
    return BlockOf(place).variables[place.variable];
}

CommandAnswer CommandGate::Take(Command const& command, long long now) {
    std::string const reason = WhyRejected(command, now);
    return reason.empty() ? Accept(command) : Answer(command, CommandState::Rejected, reason);
}

CommandAnswer CommandGate::Refuse(Command const& command, std::string const& mistake, long long now) {
    std::string const reason = WhyRejected(command, now);
    return reason.empty() ? Answer(command, CommandState::Invalid, mistake)
                          : Answer(command, CommandState::Rejected, reason);
}

void CommandGate::CountStray() {
    parts.status.Count("commands");
    parts.status.Count("commands refused");
}

std::string CommandGate::WhyRejected(Command const& command, long long now) {
    if (!isOpen) {
        return "this workbench takes no commands; start dorvel-workbench run with --mqtt-writes";
    }
    if (command.isRetained) {
        return "the command is retained; send it without the retain flag";
    }
    if (command.time && *command.time < now - OldestCommand) {
        return "the command is " + AgeText(*command.time, now) + " old; allowed are 10 s";
    }
    if (command.time && *command.time > now + OldestCommand) {
        return "the command is from " + AgeText(now, *command.time) +
               " in the future; allowed are 10 s; compare the clocks";
    }
    return IsTooEarly(VariableOf(command.place), now)
               ? "a command for the variable came less than a second ago; send one a second"
               : "";
}

bool CommandGate::IsTooEarly(VariableConfig const& variable, long long now) {
    auto const [last, isNew] = latest.try_emplace(&variable, now);
    // A clock that was set back says nothing about the distance.
    if (!isNew && now >= last->second && now - last->second < LeastDistance) {
        return true;
    }
    last->second = now;
    return false;
}

CommandAnswer CommandGate::Accept(Command const& command) {
    BlockConfig const& block = BlockOf(command.place);
    VariableConfig const& variable = VariableOf(command.place);
    try {
        SetRequest const request = MakeSetRequest(block, variable, command.value);
        EndWatch(variable);
        parts.setter.Set(request);
        SetAnswer const line{FullName(block, variable), request.value, {}, &variable};
        parts.log.Add("mqtt: " + AnswerText(line, dorvel::Environment().LocalTimeDiff()));
        CommandAnswer answer = Answer(command, CommandState::Pending, "");
        answer.value = request.value;
        WriteState const state = parts.setter.StateOf(block, variable);
        answer.reason = state.stage == WriteStage::Pending ? state.reason : "";
        Watch& watch = watches[&variable];
        watch.last = answer;
        watch.cycle = 0;
        return answer;
    } catch (ProjectError const& mistake) {
        return Answer(command, CommandState::Invalid, mistake.what());
    }
}

// The command that is watched there gets its final state before another one replaces it.
void CommandGate::EndWatch(VariableConfig const& variable) {
    auto const found = watches.find(&variable);
    if (found == watches.end()) {
        return;
    }
    Watch& watch = found->second;
    bool const wasPending = watch.last.state == CommandState::Pending;
    if (!Follow(watch) && wasPending) {
        watch.last.state = CommandState::Refused;
        watch.last.reason = Replaced;
    }
    if (wasPending) {
        replaced.push_back(watch.last);
    }
    if (replaced.size() > MostReplaced) {
        replaced.pop_front();
        parts.status.Count("answers dropped");
    }
}

CommandAnswer CommandGate::Answer(Command const& command, CommandState state, std::string const& reason) {
    parts.status.Count("commands");
    if (state != CommandState::Pending) {
        parts.status.Count("commands refused");
    }
    return {command.place, state, {}, reason, command.tag};
}

// Whether the command has come to another state than the last one. Pending once more is none.
bool CommandGate::Follow(Watch& watch) const {
    CommandAnswer& last = watch.last;
    WriteState const now = parts.setter.StateOf(BlockOf(last.place), VariableOf(last.place));
    bool const isReplaced = !(static_cast<OpcUa_Variant const&>(now.value) == last.value);
    CommandState const state = isReplaced ? CommandState::Refused : StateOf(now.stage);
    watch.isOver = isReplaced || state == CommandState::Written;
    if (state == CommandState::Pending || state == last.state) {
        return false;
    }
    last.state = state;
    last.reason = isReplaced ? Replaced : now.reason;
    return true;
}

std::vector<CommandAnswer> CommandGate::Progress(std::vector<SharedSnapshot> const& blocks,
                                                 std::size_t most) {
    std::vector<CommandAnswer> answers;
    while (!replaced.empty() && answers.size() < most) {
        answers.push_back(std::move(replaced.front()));
        replaced.pop_front();
    }
    for (auto next = watches.begin(); next != watches.end() && answers.size() < most;) {
        Watch& watch = next->second;
        unsigned long long const cycle = blocks[watch.last.place.block]->cycle;
        bool const isNew = cycle != watch.cycle;
        watch.cycle = cycle;
        if (isNew && Follow(watch)) {
            answers.push_back(watch.last);
        }
        next = watch.isOver ? watches.erase(next) : std::next(next);
    }
    return answers;
}

std::vector<CommandAnswer> CommandGate::Finish() {
    std::vector<CommandAnswer> answers(replaced.begin(), replaced.end());
    replaced.clear();
    for (auto& [variable, watch] : watches) {
        bool const hasMoved = Follow(watch);
        if (!hasMoved && watch.last.state == CommandState::Pending) {
            watch.last.state = CommandState::Unconfirmed;
            watch.last.reason = "the run has ended before the value was read back";
        } else if (!hasMoved) {
            continue;
        }
        answers.push_back(watch.last);
    }
    watches.clear();
    return answers;
}

}  // namespace workbench
