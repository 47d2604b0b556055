#include "JsonFields.h"

#include "Printable.h"

namespace workbench {

void WriteText(JsonWriter& writer, std::string const& text) {
    std::string const valid = tools::ValidUtf8(text);
    writer.String(valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
}

void WriteField(JsonWriter& writer, char const* name, std::string const& text) {
    writer.Key(name);
    WriteText(writer, text);
}

void WriteOptional(JsonWriter& writer, char const* name, std::string const& text) {
    writer.Key(name);
    if (text.empty()) {
        writer.Null();
    } else {
        WriteText(writer, text);
    }
}

std::string JsonLine(rapidjson::StringBuffer const& buffer) {
    return std::string(buffer.GetString(), buffer.GetSize()) + "\n";
}

}  // namespace workbench
