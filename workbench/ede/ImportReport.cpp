#include "ImportReport.h"

#include <algorithm>

#include "JsonFields.h"
#include "Printable.h"

namespace workbench {

namespace {

using Effect = ImportLine::Effect;

struct EffectRow {
    Effect effect;
    char const* text;  // after the reason
    char const* name;  // in JSON
};

constexpr EffectRow Effects[] = {{Effect::RowNotUsed, ": row not used", "row-not-used"},
                                 {Effect::ValueNotUsed, ": value not used", "value-not-used"},
                                 {Effect::DeviceNotUsed, "", "device-not-used"},
                                 {Effect::Note, "", "note"}};

EffectRow const& RowOf(Effect effect) {
    return Effects[static_cast<std::size_t>(effect)];
}

void WriteNumber(JsonWriter& writer, char const* name, std::size_t number) {
    writer.Key(name);
    writer.Uint64(number);
}

void WriteKnownNumber(JsonWriter& writer, char const* name, std::size_t number) {
    writer.Key(name);
    number > 0 ? writer.Uint64(number) : writer.Null();
}

std::string LineJson(ImportLine const& line) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    WriteField(writer, "effect", RowOf(line.effect).name);
    WriteField(writer, "file", line.file);
    WriteKnownNumber(writer, "line", line.line);
    WriteKnownNumber(writer, "column", line.column);
    WriteOptional(writer, "heading", line.heading);
    WriteField(writer, "reason", line.reason);
    writer.EndObject();
    return JsonLine(buffer);
}

std::string CountsJson(ImportReport const& report) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    WriteNumber(writer, "rows", report.rows);
    WriteNumber(writer, "devices", report.devices);
    WriteNumber(writer, "points", report.points);
    WriteNumber(writer, "rows_not_used", report.RowsNotUsed());
    WriteNumber(writer, "values_not_used", report.ValuesNotUsed());
    WriteNumber(writer, "devices_not_used", report.DevicesNotUsed());
    writer.EndObject();
    return JsonLine(buffer);
}

}  // namespace

std::size_t ImportReport::Count(Effect effect) const {
    return static_cast<std::size_t>(std::count_if(
        lines.begin(), lines.end(), [effect](ImportLine const& line) { return line.effect == effect; }));
}

std::string ImportLineText(ImportLine const& line) {
    std::string text = tools::Printable(line.file);
    if (line.line > 0) {
        text += ":" + std::to_string(line.line);
    }
    text += ": ";
    if (line.column > 0) {
        text += "column " + std::to_string(line.column);
        text += line.heading.empty() ? ": " : " (" + tools::Printable(line.heading) + "): ";
    }
    return text + line.reason + RowOf(line.effect).text;
}

std::string ImportReportText(ImportReport const& report) {
    std::string text;
    for (ImportLine const& line : report.lines) {
        text += ImportLineText(line) + "\n";
    }
    return text + "rows: " + std::to_string(report.rows) + ", devices: " + std::to_string(report.devices) +
           ", points: " + std::to_string(report.points) +
           ", rows not used: " + std::to_string(report.RowsNotUsed()) +
           ", values not used: " + std::to_string(report.ValuesNotUsed()) +
           ", devices not used: " + std::to_string(report.DevicesNotUsed()) + "\n";
}

std::string ImportReportJson(ImportReport const& report) {
    std::string text;
    for (ImportLine const& line : report.lines) {
        text += LineJson(line);
    }
    return text + CountsJson(report);
}

}  // namespace workbench
