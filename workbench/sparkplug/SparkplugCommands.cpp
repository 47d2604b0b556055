#include "SparkplugCommands.h"

#include <utility>

#include "JsonFields.h"
#include "JsonValue.h"
#include "Printable.h"
#include "ProjectError.h"
#include "ShownValue.h"
#include "SparkplugValues.h"
#include "TimeText.h"

namespace workbench {

namespace {

bool IsTrue(SparkplugMetric const& metric) {
    bool const* value = std::get_if<bool>(&metric.value);
    return value && *value && !metric.isNull;
}

// What a command calls a metric, for the answer that it does not exist.
std::string NameOf(SparkplugMetric const& metric) {
    std::string const name =
        metric.name.empty() && metric.alias ? std::to_string(*metric.alias) : metric.name;
    return tools::Printable(name, 200);
}

}  // namespace

bool SparkplugCommands::AsksForBirths(ReceivedMessage const& message) {
    auto const payload = message.isRetained ? std::nullopt : DecodePayload(message.payload);
    if (!payload) {
        CountStray();
        return false;
    }
    bool asks = false;
    for (SparkplugMetric const& metric : payload->metrics) {
        if (metric.name == SparkplugNames::Rebirth && IsTrue(metric)) {
            asks = true;
        } else {
            CountStray();
        }
    }
    return asks;
}

void SparkplugCommands::Take(std::size_t block, ReceivedMessage const& message, long long now) {
    auto const payload = DecodePayload(message.payload);
    if (!payload) {
        CountStray();
        return;
    }
    for (SparkplugMetric const& metric : payload->metrics) {
        Command command;
        command.isRetained = message.isRetained;
        if (auto const time = metric.timestamp ? metric.timestamp : payload->timestamp) {
            command.time = FileTimeOf(*time);
        }
        Take(block, metric, std::move(command), now);
    }
}

void SparkplugCommands::Take(std::size_t block, SparkplugMetric const& metric, Command command,
                             long long now) {
    if (auto const place = names.Find(block, metric.alias, metric.name)) {
        command.place = *place;
        Keep(AnswerOf(metric, command, now), now);
        return;
    }
    CountStray();
    CommandAnswer answer;
    answer.state = CommandState::Invalid;
    answer.reason = "the block has no such metric; use the names or aliases of its latest birth";
    Keep(parts.blocks[block].name, NameOf(metric), answer, now);
}

CommandAnswer SparkplugCommands::AnswerOf(SparkplugMetric const& metric, Command& command, long long now) {
    VariableConfig const& variable = parts.blocks[command.place.block].variables[command.place.variable];
    try {
        command.value = CommandValue(metric, SparkplugTypeOf(ValueType(variable)));
    } catch (ProjectError const& mistake) {
        return gate.Refuse(command, mistake.what(), now);
    }
    return gate.Take(command, now);
}

void SparkplugCommands::AddProgress(std::vector<SharedSnapshot> const& blocks, long long now) {
    if (!blocks.empty()) {
        localDiff = blocks.front()->localDiff;
    }
    for (CommandAnswer const& answer : gate.Progress(blocks, MostAnswers - answers.size())) {
        Keep(answer, now);
    }
}

void SparkplugCommands::Finish(long long now) {
    for (CommandAnswer const& answer : gate.Finish()) {
        Keep(answer, now);
    }
}

std::optional<std::string> SparkplugCommands::NextAnswer() {
    if (answers.empty()) {
        return std::nullopt;
    }
    std::string answer = std::move(answers.front());
    answers.pop_front();
    return answer;
}

void SparkplugCommands::Keep(CommandAnswer const& answer, long long now) {
    BlockConfig const& block = parts.blocks[answer.place.block];
    Keep(block.name, block.variables[answer.place.variable].name, answer, now);
}

void SparkplugCommands::Keep(std::string const& block, std::string const& variable,
                             CommandAnswer const& answer, long long now) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    WriteField(writer, "block", block);
    WriteField(writer, "variable", variable);
    WriteField(writer, "state", StateName(answer.state));
    writer.Key("value");
    WriteValue(writer, answer.value, localDiff);
    WriteOptional(writer, "reason", answer.reason);
    WriteField(writer, "time", IsoTime(now, localDiff));
    writer.EndObject();
    if (answers.size() == MostAnswers) {
        answers.pop_front();
        parts.status.Count("answers dropped");
    }
    answers.emplace_back(buffer.GetString(), buffer.GetSize());
}

}  // namespace workbench
