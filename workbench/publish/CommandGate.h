#pragma once

#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "LogBuffer.h"
#include "OutletStatus.h"
#include "SetRequest.h"
#include "ValueChanges.h"
#include "ValueSetter.h"

namespace workbench {

// A value that somebody sends for a variable.
struct Command {
    VariablePlace place;            // must exist in the project
    std::string value;              // as MakeSetRequest takes it: "21.5", "true", "manual"
    std::optional<long long> time;  // when it was sent, a file time; not known without
    bool isRetained = false;        // the broker has kept it, nobody knows since when
    std::string tag;                // the sender's; returned with each answer
};

enum class CommandState {
    Pending,      // accepted; waits for the write phase, or for the cycle that reads it back
    Written,      // the variable has been read since and had the value
    Unconfirmed,  // no failure was reported, but the value read since is another one, or the run has ended
    Differs,      // the device holds another value than the one that was set, because that was sent to it
    Refused,      // by the driver or the device, or another value has taken its place
    Invalid,      // not a value of the variable, or the variable is read-only
    Rejected      // not looked at: commands are off, it is retained, old or too early
};

// "pending", "written", "unconfirmed", "differs", "refused", "invalid", "rejected".
char const* StateName(CommandState state);

struct CommandAnswer {
    VariablePlace place;
    CommandState state = CommandState::Rejected;
    OpcUa_VariantHlp value{};  // of the variable's type; null for Invalid and Rejected
    std::string reason{};      // empty for Written and mostly for Pending
    std::string tag{};
};

// Lets commands from a network through to the device, or says why not. A command is rejected when commands
// are off, when it is retained, when it is more than 10 s old or from more than 10 s in the future by its own
// time, and when another one for the variable came less than a second before, whether that was valid or not.
// What is accepted goes the way of a line at the prompt, and is a line of the log: "mqtt: AHU.T = 30:
// pending". Each command is counted in the status as one of the "commands"; if it is rejected or invalid also
// as one of the "commands refused". For one thread at a time.
class CommandGate {
public:
    static constexpr long long OldestCommand = 10 * 10000000LL;
    static constexpr long long LeastDistance = 10000000LL;
    static constexpr std::size_t MostReplaced = 256;

    struct Parts {
        std::deque<BlockConfig> const& blocks;
        ValueSetter& setter;
        LogBuffer& log;
        OutletStatus& status;
    };

    // All parts must outlive the gate.
    CommandGate(Parts const& gateParts, bool takesCommands) : parts(gateParts), isOpen(takesCommands) {}

    // The answer at once: Pending, Invalid or Rejected. Of a command that is accepted Progress has the rest.
    CommandAnswer Take(Command const& command, long long now);
    // The answer to a command that its carrier could not read; counted, with the same order of reasons.
    CommandAnswer Refuse(Command const& command, std::string const& mistake, long long now);
    // Counts a command that belongs to no variable.
    void CountStray();

    // The accepted commands that have come to another state since, at least one cycle after they were
    // accepted: each its final state, and once more if that changes later, such as from Unconfirmed to
    // Written. `blocks` as in Publisher.h. A state is returned once: call it when it can be sent. Of more
    // than `most` the rest is returned by the next call. Commands whose place another one has taken come
    // first; of more than MostReplaced the oldest are dropped and counted as "answers dropped".
    std::vector<CommandAnswer> Progress(std::vector<SharedSnapshot> const& blocks, std::size_t most);
    // The same at the end of the run: what is still pending is Unconfirmed.
    std::vector<CommandAnswer> Finish();

private:
    struct Watch {
        CommandAnswer last;
        unsigned long long cycle = 0;  // looked at last
        bool isOver = false;           // later states cannot come
    };

    BlockConfig const& BlockOf(VariablePlace place) const { return parts.blocks[place.block]; }
    VariableConfig const& VariableOf(VariablePlace place) const;
    std::string WhyRejected(Command const& command, long long now);
    bool IsTooEarly(VariableConfig const& variable, long long now);
    CommandAnswer Accept(Command const& command);
    void EndWatch(VariableConfig const& variable);
    CommandAnswer Answer(Command const& command, CommandState state, std::string const& reason);
    bool Follow(Watch& watch) const;

    Parts parts;
    bool isOpen;
    std::map<VariableConfig const*, long long> latest;  // the time of the last command that was looked at
    std::map<VariableConfig const*, Watch> watches;
    std::deque<CommandAnswer> replaced;  // the final states of commands that are watched no longer
};

}  // namespace workbench
