#include "EventJson.h"

#include "TimeText.h"

namespace workbench {

void WriteEvent(JsonWriter& writer, Event const& event) {
    writer.StartObject();
    writer.Key("id");
    writer.Uint64(event.id);
    WriteField(writer, "time", IsoTime(event.time, event.localDiff));
    WriteField(writer, "kind", EventName(event.kind));
    WriteOptional(writer, "block", event.block ? event.block->name : "");
    WriteOptional(writer, "variable", event.variable ? event.variable->name : "");
    WriteField(writer, "text", event.text);
    writer.EndObject();
}

std::string EventJson(Event const& event) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    WriteEvent(writer, event);
    return JsonLine(buffer);
}

}  // namespace workbench
