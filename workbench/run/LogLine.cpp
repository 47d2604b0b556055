#include "LogLine.h"

#include <utility>

#include "JsonFields.h"
#include "Printable.h"
#include "Snapshot.h"
#include "TimeText.h"
#include "Whereabouts.h"
#include "dorvelshare/HostEnvironment.h"

namespace workbench {

namespace {

std::string About(LogLine const& line) {
    if (line.block.empty()) {
        return {};
    }
    std::string about = " [" + tools::Printable(line.block);
    for (std::string const* const part : {&line.object, &line.variable}) {
        about += part->empty() ? "" : ", " + tools::Printable(*part);
    }
    return about + "]";
}

}  // namespace

LogLine MakeLogLine(std::string text) {
    Whereabouts const& here = Here();
    LogLine line;
    line.time = dorvel::Environment().Now();
    line.localDiff = dorvel::Environment().LocalTimeDiff();
    line.block = here.block ? here.block->name : "";
    line.object = here.object ? ObjectText(*here.object) : "";
    line.variable = here.variable ? here.variable->name : "";
    line.text = std::move(text);
    return line;
}

std::string LogText(LogLine const& line) {
    return IsoTime(line.time, line.localDiff) + About(line) + " " + tools::Printable(line.text);
}

std::string ShortLogText(LogLine const& line) {
    return ClockTime(line.time, line.localDiff) + About(line) + " " + tools::Printable(line.text);
}

std::string LogJson(LogLine const& line) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    WriteField(writer, "time", IsoTime(line.time, line.localDiff));
    WriteOptional(writer, "block", line.block);
    WriteOptional(writer, "object", line.object);
    WriteOptional(writer, "variable", line.variable);
    WriteField(writer, "text", line.text);
    writer.EndObject();
    return JsonLine(buffer);
}

}  // namespace workbench
