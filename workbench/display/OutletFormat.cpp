#include "OutletFormat.h"

#include "JsonFields.h"
#include "Printable.h"
#include "TimeText.h"

namespace workbench {

namespace {

void WriteOutlet(JsonWriter& writer, OutletState const& outlet, long long localDiff) {
    writer.StartObject();
    WriteField(writer, "outlet", outlet.name);
    WriteField(writer, "health", HealthName(outlet.health));
    WriteField(writer, "text", outlet.text);
    WriteField(writer, "since", IsoTime(outlet.since, localDiff));
    writer.Key("counts");
    writer.StartObject();
    for (auto const& [name, count] : outlet.counts) {
        WriteText(writer, name);
        writer.Uint64(count);
    }
    writer.EndObject();
    writer.EndObject();
}

std::string CountWords(OutletState const& outlet) {
    std::string words;
    for (auto const& [name, count] : outlet.counts) {
        words += (words.empty() ? "; " : ", ") + std::to_string(count) + " " + name;
    }
    return words;
}

}  // namespace

std::string OutletJson(OutletState const& outlet, long long localDiff) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    WriteOutlet(writer, outlet, localDiff);
    return JsonText(buffer);
}

std::string OutletsJson(std::vector<OutletState> const& outlets, long long localDiff) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    writer.Key("outlets");
    writer.StartArray();
    for (OutletState const& outlet : outlets) {
        WriteOutlet(writer, outlet, localDiff);
    }
    writer.EndArray();
    writer.EndObject();
    return JsonText(buffer);
}

std::string OutletLines(std::vector<OutletState> const& outlets) {
    std::string lines;
    for (OutletState const& outlet : outlets) {
        std::string const text = outlet.text.empty() ? "" : ", " + outlet.text;
        lines +=
            tools::Printable(outlet.name + ": " + HealthName(outlet.health) + text + CountWords(outlet)) +
            "\n";
    }
    return lines;
}

Colour HealthColour(OutletHealth health) {
    switch (health) {
        case OutletHealth::Good:
            return Colour::Green;
        case OutletHealth::Waiting:
            return Colour::Yellow;
        case OutletHealth::Failed:
            return Colour::Red;
        default:
            return Colour::Dim;
    }
}

}  // namespace workbench
