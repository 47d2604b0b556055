#include "PagePlant.h"

#include <utility>

#include "BlockTask.h"
#include "ScheduleVariable.h"
#include "ShownValue.h"
#include "TimeText.h"
#include "TypeName.h"
#include "Units.h"
#include "dorvelshare/HostEnvironment.h"

namespace workbench {

namespace {

void WriteStates(JsonWriter& writer, VariableConfig const& variable) {
    writer.Key("states");
    if (variable.stateTexts.empty()) {
        writer.Null();
        return;
    }
    writer.StartArray();
    for (std::string const& text : variable.stateTexts) {
        WriteText(writer, text);
    }
    writer.EndArray();
}

// That of the block's writes; null if they have none.
void WritePriority(JsonWriter& writer, BlockConfig const& block) {
    writer.Key("priority");
    for (auto const& [name, value] : block.fields) {
        long long const* const number = std::get_if<long long>(&value);
        if (name == "Priority" && number && *number >= 1 && *number <= 16) {
            writer.Int64(*number);
            return;
        }
    }
    writer.Null();
}

void WriteBlock(JsonWriter& writer, BlockConfig const& block, std::size_t id,
                std::vector<TaskConfig> const& tasks) {
    TaskConfig const* const task = TaskOf(block, tasks);
    writer.Key("id");
    writer.Uint64(id);
    WriteField(writer, "name", block.name);
    WriteField(writer, "address", block.address);
    WriteOptional(writer, "task", task ? task->name : block.task);
    writer.Key("period_ms");
    if (task) {
        writer.Int(task->period);
    } else {
        writer.Null();
    }
    WritePriority(writer, block);
}

}  // namespace

PagePlant::PagePlant(Parts runParts) : PagePlant(std::move(runParts), std::make_unique<ObjectInspector>()) {}

PagePlant::PagePlant(Parts runParts, std::unique_ptr<ObjectInspector> objectInspector)
    : parts(std::move(runParts)),
      started(dorvel::Environment().Now()),
      stream(parts.memory.board, parts.memory.events, parts.outlets),
      inspector(std::move(objectInspector)) {
    for (BlockConfig const& block : parts.blocks) {
        for (std::size_t i = 0; i < block.variables.size(); ++i) {
            variables.push_back({variables.size(), &block, &block.variables[i], i});
        }
    }
}

PageVariable const* PagePlant::Find(std::size_t id) const {
    return id < variables.size() ? &variables[id] : nullptr;
}

char const* KindOf(VariableConfig const& variable) {
    if (ScheduleKind const schedule = ScheduleKindOf(variable); schedule != ScheduleKind::None) {
        return schedule == ScheduleKind::Weekly ? "weekly" : "exception";
    }
    _OpcUa_BuiltInType const type = ValueType(variable);
    if (type == OpcUaType_Boolean) {
        return "boolean";
    }
    if (IsNumeric(type)) {
        return StatesOf(variable) == States::None ? "number" : "state";
    }
    return type == OpcUaType_DateTime ? "time" : "text";
}

void WriteVariableFields(JsonWriter& writer, PageVariable const& variable) {
    VariableConfig const& config = *variable.config;
    writer.Key("id");
    writer.Uint64(variable.id);
    WriteField(writer, "name", config.name);
    WriteField(writer, "object", ObjectText(config));
    WriteField(writer, "property", config.property->name);
    WriteField(writer, "type", TypeName(config.type));
    WriteOptional(writer, "unit", HasUnit(config) ? UnitText(config.unit) : std::string());
    WriteStates(writer, config);
    WriteOptional(writer, "description", config.description);
    writer.Key("writable");
    writer.Bool(config.write);
    WriteField(writer, "kind", KindOf(config));
}

std::string PlantJson(PagePlant const& plant) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    WriteField(writer, "project", plant.Run().project);
    WriteField(writer, "started", IsoTime(plant.Started(), dorvel::Environment().LocalTimeDiff()));
    writer.Key("writes");
    writer.Bool(plant.Run().hasWrites);
    writer.Key("blocks");
    writer.StartArray();
    auto variable = plant.Variables().begin();
    std::size_t id = 0;
    for (BlockConfig const& block : plant.Run().blocks) {
        writer.StartObject();
        WriteBlock(writer, block, id++, plant.Run().tasks);
        writer.Key("variables");
        writer.StartArray();
        for (; variable != plant.Variables().end() && variable->block == &block; ++variable) {
            writer.StartObject();
            WriteVariableFields(writer, *variable);
            writer.EndObject();
        }
        writer.EndArray();
        writer.EndObject();
    }
    writer.EndArray();
    writer.EndObject();
    return JsonLine(buffer);
}

}  // namespace workbench
