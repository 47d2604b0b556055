#pragma once

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <string>

namespace workbench {

// JSON objects of one line.

using JsonWriter = rapidjson::Writer<rapidjson::StringBuffer>;

// Octets of a text that are not UTF-8 are replaced.
void WriteText(JsonWriter& writer, std::string const& text);
void WriteField(JsonWriter& writer, char const* name, std::string const& text);
// null for an empty text.
void WriteOptional(JsonWriter& writer, char const* name, std::string const& text);

// The finished object, without a control character; the line with a line end.
std::string JsonText(rapidjson::StringBuffer const& buffer);
std::string JsonLine(rapidjson::StringBuffer const& buffer);

}  // namespace workbench
