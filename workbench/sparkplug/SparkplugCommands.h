#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "CommandGate.h"
#include "Publisher.h"
#include "SparkplugNames.h"
#include "SparkplugPayload.h"

namespace workbench {

// Commands of Sparkplug B, and the answers to them. The format has no answers; here each is the text of a
// metric of the node:
//
//   {"block":"AHU","variable":"Setpoint","state":"written","value":21.5,"reason":null,"time":"2024-03-15T..."}
//
// State and reason are as in CommandGate.h, the reason null without one; the value is null unless the command
// was accepted. For one thread at a time.
class SparkplugCommands {
public:
    // Answers that wait at most. Of more the oldest are dropped and counted as "answers dropped".
    static constexpr std::size_t MostAnswers = 256;

    // The names and what the parts refer to must outlive the commands.
    SparkplugCommands(SparkplugNames const& plantNames, CommandGate::Parts const& gateParts,
                      bool takesCommands)
        : names(plantNames), parts(gateParts), gate(gateParts, takesCommands) {}

    // Whether a command for the node asks for all births. What else it has is counted as refused.
    bool AsksForBirths(ReceivedMessage const& message);
    // A command for the device of the block.
    void Take(std::size_t block, ReceivedMessage const& message, long long now);
    // A message on another topic.
    void CountStray() { gate.CountStray(); }

    // Adds the answers to accepted commands that have come to another state (CommandGate.h).
    void AddProgress(std::vector<SharedSnapshot> const& blocks, long long now);
    // The same at the end of the run.
    void Finish(long long now);

    // The oldest answer.
    std::optional<std::string> NextAnswer();
    bool HasAnswers() const { return !answers.empty(); }

private:
    void Take(std::size_t block, SparkplugMetric const& metric, Command command, long long now);
    CommandAnswer AnswerOf(SparkplugMetric const& metric, Command& command, long long now);
    void Keep(CommandAnswer const& answer, long long now);
    void Keep(std::string const& block, std::string const& variable, CommandAnswer const& answer,
              long long now);

    SparkplugNames const& names;
    CommandGate::Parts parts;
    CommandGate gate;
    std::deque<std::string> answers;
    long long localDiff = 0;  // local time minus UTC, of the newest cycle
};

}  // namespace workbench
