#include <string>

#include "EventJson.h"
#include "JsonFormat.h"
#include "LogLine.h"
#include "PageRoutes.h"

namespace workbench {

namespace {

constexpr std::size_t MostWrites = 50;
constexpr std::size_t MostLines = 100;

void WriteRaw(JsonWriter& writer, std::string const& json) {
    writer.RawValue(json.data(), json.size(), rapidjson::kObjectType);
}

void WriteNow(JsonWriter& writer, PageCall const& call) {
    SharedSnapshot const block = call.plant.Run().memory.board.Latest(*call.variable->block);
    writer.Key("now");
    if (block && call.variable->index < block->variables.size()) {
        WriteRaw(writer, VariableJson(block->variables[call.variable->index], block->localDiff));
    } else {
        writer.Null();
    }
}

bool IsOfWrite(EventKind kind) {
    return kind == EventKind::Set || kind == EventKind::Written || kind == EventKind::Unconfirmed ||
           kind == EventKind::Differs || kind == EventKind::Refused;
}

void WriteWrites(JsonWriter& writer, PageCall const& call) {
    writer.Key("writes");
    writer.StartArray();
    for (Event const& event : call.plant.Run().memory.events.Of(*call.variable->config, MostWrites)) {
        if (IsOfWrite(event.kind)) {
            WriteEvent(writer, event);
        }
    }
    writer.EndArray();
}

void WriteLog(JsonWriter& writer, PageCall const& call) {
    writer.Key("log");
    writer.StartArray();
    PageVariable const& variable = *call.variable;
    for (LogLine const& line :
         call.plant.Run().log.About(variable.block->name, *variable.config, MostLines)) {
        std::string json = LogJson(line);
        json.pop_back();
        WriteRaw(writer, json);
    }
    writer.EndArray();
}

}  // namespace

HttpResponse AnswerVariable(PageCall const& call) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    writer.Key("variable");
    writer.StartObject();
    WriteVariableFields(writer, *call.variable);
    WriteField(writer, "block", call.variable->block->name);
    writer.EndObject();
    WriteNow(writer, call);
    WriteWrites(writer, call);
    WriteLog(writer, call);
    writer.EndObject();
    HttpResponse response;
    response.body = JsonLine(buffer);
    return response;
}

}  // namespace workbench
