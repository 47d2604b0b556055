#include "JsonFormat.h"

#include "JsonFields.h"
#include "JsonValue.h"
#include "Printable.h"
#include "QualityText.h"
#include "ShownValue.h"
#include "TimeText.h"
#include "TypeName.h"

namespace workbench {

namespace {

// The value, and what the project says of it, beside it.
void WriteShown(JsonWriter& writer, VariableConfig const* variable, OpcUa_Variant const& value,
                long long localDiff) {
    writer.Key("value");
    WriteValue(writer, value, localDiff);
    if (!variable) {
        return;
    }
    if (HasUnit(*variable)) {
        WriteField(writer, "unit", variable->unit);
    }
    if (auto const text = TextOfState(*variable, value)) {
        WriteField(writer, "stateText", *text);
    }
}

void WriteProgress(JsonWriter& writer, VariableConfig const& variable, WriteState const& write,
                   long long localDiff) {
    writer.StartObject();
    WriteField(writer, "state", StageName(write.stage));
    WriteShown(writer, &variable, write.value, localDiff);
    if (!write.reason.empty()) {
        WriteField(writer, "reason", write.reason);
    }
    if (!write.device.empty()) {
        WriteField(writer, "device", write.device);
    }
    writer.EndObject();
}

void WriteVariable(JsonWriter& writer, VariableSnapshot const& variable, long long localDiff) {
    VariableState const& state = variable.state;
    writer.StartObject();
    WriteField(writer, "name", variable.config->name);
    WriteField(writer, "object", ObjectText(*variable.config));
    WriteField(writer, "property", variable.config->property->name);
    WriteField(writer, "type", TypeName(variable.config->type));
    WriteShown(writer, variable.config, state.Value, localDiff);
    if (!variable.config->description.empty()) {
        WriteField(writer, "description", variable.config->description);
    }
    WriteField(writer, "quality", QualityText(state.Status));
    WriteField(writer, "status", StatusText(state.Status));
    writer.Key("time");
    if (state.Time) {
        WriteText(writer, IsoTime(state.Time, localDiff));
    } else {
        writer.Null();
    }
    if (variable.write.stage != WriteStage::None) {
        writer.Key("write");
        WriteProgress(writer, *variable.config, variable.write, localDiff);
    }
    if (!variable.suspect.empty()) {
        WriteField(writer, "suspect", variable.suspect);
    }
    writer.EndObject();
}

void WriteMilliseconds(JsonWriter& writer, char const* name, long long duration) {
    writer.Key(name);
    WriteNumber(writer, static_cast<double>(duration) / 1e4);
}

void WriteTimes(JsonWriter& writer, CycleFigures const& times) {
    writer.Key("cycle_ms");
    writer.StartObject();
    WriteMilliseconds(writer, "last", times.last);
    WriteMilliseconds(writer, "median", times.median);
    WriteMilliseconds(writer, "maximum", times.maximum);
    writer.EndObject();
    writer.Key("overruns");
    writer.Uint64(times.overruns);
}

void WriteCauses(JsonWriter& writer, BlockSnapshot const& block) {
    writer.Key("causes");
    writer.StartArray();
    for (Cause const& cause : block.causes) {
        writer.StartObject();
        WriteField(writer, "cause", CauseName(cause.kind));
        WriteOptional(writer, "object", cause.object);
        WriteField(writer, "text", cause.text);
        writer.Key("count");
        writer.Uint64(cause.count);
        WriteField(writer, "since", IsoTime(cause.since, block.localDiff));
        writer.EndObject();
    }
    writer.EndArray();
}

}  // namespace

std::string FormatJson(BlockSnapshot const& block, ChosenVariables const& chosen) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    WriteField(writer, "time", IsoTime(block.time, block.localDiff));
    WriteField(writer, "block", block.config->name);
    writer.Key("cycle");
    writer.Uint64(block.cycle);
    writer.Key("fault");
    writer.Bool(IsFault(block));
    WriteField(writer, "error", FaultText(block));
    writer.Key("variables");
    writer.StartArray();
    for (std::size_t const index : chosen) {
        WriteVariable(writer, block.variables[index], block.localDiff);
    }
    writer.EndArray();
    writer.Key("standby");
    writer.Bool(block.isStandby);
    WriteTimes(writer, block.times);
    WriteCauses(writer, block);
    writer.EndObject();
    return JsonLine(buffer);
}

std::string FormatJson(BlockSnapshot const& block) {
    return FormatJson(block, AllVariables(block));
}

std::string VariableJson(VariableSnapshot const& variable, long long localDiff) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    WriteVariable(writer, variable, localDiff);
    return JsonText(buffer);
}

std::string FormatStandby(bool isOn) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    writer.Key("standby");
    writer.Bool(isOn);
    writer.EndObject();
    return JsonLine(buffer);
}

std::string FormatJson(SetAnswer const& answer, long long localDiff) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    WriteField(writer, "set", answer.target);
    if (answer.mistake.empty()) {
        WriteField(writer, "state", StageName(WriteStage::Pending));
        WriteShown(writer, answer.variable, answer.value, localDiff);
    } else {
        WriteField(writer, "state", "invalid");
        WriteField(writer, "reason", answer.mistake);
    }
    writer.EndObject();
    return JsonLine(buffer);
}

}  // namespace workbench
