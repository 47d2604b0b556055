#include "JsonPayloads.h"

#include "JsonFields.h"
#include "JsonValue.h"
#include "PublishedQuality.h"
#include "ShownValue.h"
#include "TimeText.h"

namespace workbench {

namespace {

// An object in one line; fields are written by the function.
template <typename Fields>
std::string Object(Fields const& fields) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    fields(writer);
    writer.EndObject();
    return JsonText(buffer);
}

// 0 for none.
void WriteTime(JsonWriter& writer, long long time, long long localDiff) {
    WriteOptional(writer, "time", time == 0 ? std::string() : IsoTime(time, localDiff));
}

char const* StateOf(BlockSnapshot const& block) {
    if (block.cycle == 0) {
        return "waiting";
    }
    if (block.isStandby) {
        return "standby";
    }
    return IsFault(block) ? "fault" : "ok";
}

void WriteCauses(JsonWriter& writer, BlockSnapshot const& block) {
    if (block.causes.empty()) {
        return;
    }
    writer.Key("causes");
    writer.StartArray();
    for (Cause const& cause : block.causes) {
        std::string const object = cause.object.empty() ? std::string() : ": " + cause.object;
        WriteText(writer, CauseName(cause.kind) + object);
    }
    writer.EndArray();
}

void WriteQuality(JsonWriter& writer, BlockSnapshot const& block, VariableSnapshot const& variable) {
    QualityKind const quality = PublishedQuality(block, variable);
    WriteField(writer, "quality", QualityName(quality));
    if (quality == QualityKind::Good) {
        return;
    }
    if (KindOf(variable.state.Status) == quality) {
        WriteField(writer, "qualityText", QualityText(variable.state.Status));
    } else {
        // Not the reason of the fault: it can change without a message of the variable.
        WriteField(writer, "qualityText",
                   block.isStandby ? "the block is on standby" : "the block is in fault");
    }
}

}  // namespace

std::string OnlineJson(ProcessFacts const& facts, long long now, long long localDiff) {
    return Object([&](JsonWriter& writer) {
        writer.Key("online");
        writer.Bool(true);
        WriteField(writer, "version", facts.version);
        WriteField(writer, "project", facts.project.substr(facts.project.find_last_of('/') + 1));
        WriteTime(writer, now, localDiff);
    });
}

std::string OfflineJson(long long now, long long localDiff) {
    return Object([&](JsonWriter& writer) {
        writer.Key("online");
        writer.Bool(false);
        WriteTime(writer, now, localDiff);
    });
}

std::string BlockJson(BlockSnapshot const& block, std::size_t suspects) {
    return Object([&](JsonWriter& writer) {
        WriteField(writer, "state", StateOf(block));
        WriteOptional(writer, "reason", FaultText(block));
        WriteCauses(writer, block);
        if (suspects > 0) {
            writer.Key("suspect");
            writer.Uint64(suspects);
        }
        WriteTime(writer, block.time, block.localDiff);
    });
}

std::string BlockOfflineJson(long long now, long long localDiff) {
    return Object([&](JsonWriter& writer) {
        WriteField(writer, "state", "offline");
        WriteField(writer, "reason", "the run has ended");
        WriteTime(writer, now, localDiff);
    });
}

std::string ValueJson(BlockSnapshot const& block, VariableSnapshot const& variable) {
    VariableConfig const& config = *variable.config;
    return Object([&](JsonWriter& writer) {
        writer.Key("value");
        WriteValue(writer, variable.state.Value, block.localDiff);
        WriteOptional(writer, "unit", HasUnit(config) ? config.unit : std::string());
        if (auto const text = TextOfState(config, variable.state.Value)) {
            WriteField(writer, "stateText", *text);
        }
        WriteQuality(writer, block, variable);
        WriteOptional(writer, "suspect", variable.suspect);
        WriteTime(writer, variable.state.Time, block.localDiff);
        WriteField(writer, "object", ObjectText(config));
        WriteField(writer, "property", config.property->name);
    });
}

std::string AnswerJson(CommandAnswer const& answer, long long now, long long localDiff) {
    return Object([&](JsonWriter& writer) {
        writer.Key("id");
        std::string const id = answer.tag.empty() ? "null" : answer.tag;
        writer.RawValue(id.data(), id.size(), rapidjson::kStringType);
        WriteField(writer, "state", StateName(answer.state));
        writer.Key("value");
        WriteValue(writer, answer.value, localDiff);
        WriteOptional(writer, "reason", answer.reason);
        WriteTime(writer, now, localDiff);
    });
}

}  // namespace workbench
