#pragma once

#include <string>

#include "JsonFields.h"

namespace workbench {

// An object in one line of JSON, {"kind":"device",...}; body(JsonWriter&) writes the other members.
template <class Body>
std::string KindLine(char const* kind, Body const& body) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    WriteField(writer, "kind", kind);
    body(writer);
    writer.EndObject();
    return JsonLine(buffer);
}

}  // namespace workbench
