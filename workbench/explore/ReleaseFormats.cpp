#include "AddressArgument.h"
#include "JsonFields.h"
#include "ObjectNames.h"
#include "Printable.h"
#include "PriorityRelease.h"
#include "ValueWords.h"

namespace workbench {

namespace {

std::string LevelsText(ObjectRecord const& object) {
    std::vector<std::string> const lines = PriorityLines(object, false);
    std::string text;
    for (std::string const& line : lines) {
        text += "    " + tools::Printable(line, 200) + "\n";
    }
    return lines.empty() ? "    nothing is commanded\n" : text;
}

std::string OutcomeText(ReleaseResult const& result, unsigned priority) {
    std::string const level = "priority " + std::to_string(priority);
    switch (result.outcome) {
        case ReleaseOutcome::Commanded:
            return level + " is commanded";
        case ReleaseOutcome::NotCommanded:
            return level + " is not commanded: there is nothing to release";
        case ReleaseOutcome::NotReadable:
            return "nothing was written";
        case ReleaseOutcome::Released:
            return level + " is released";
        case ReleaseOutcome::Refused:
            return "the device does not release " + level;
        case ReleaseOutcome::Confirmed:
            return "the device has confirmed the release of " + level +
                   ", and its priority array cannot be read";
        case ReleaseOutcome::NotConfirmed:
            return "the device has not confirmed the release of " + level;
        case ReleaseOutcome::StillCommanded:
            return "the device has confirmed the release, and " + level + " is still commanded";
        case ReleaseOutcome::Skipped:
            break;
    }
    return level + " is not released";
}

void WriteLevels(JsonWriter& writer, char const* name, ObjectRecord const& object) {
    writer.Key(name);
    if (!object.Values(standard::PropertyId::Priority_Array)) {
        writer.Null();
        return;
    }
    writer.StartArray();
    for (std::string const& level : PriorityValues(object)) {
        if (level.empty()) {
            writer.Null();
        } else {
            WriteText(writer, level);
        }
    }
    writer.EndArray();
}

}  // namespace

std::string BeforeText(ReleaseResult const& result, TextStyle const& style) {
    std::string const name = result.target.name.empty() ? NameOf(result.before) : result.target.name;
    std::string text = Coloured(AddressText(result.target.peer), colour::Bold, style) + "  " +
                       standard::ObjectText(result.target.object) + "  " + tools::Printable(name, 200) + "\n";
    return result.outcome == ReleaseOutcome::NotReadable ? text
                                                         : text + "  before:\n" + LevelsText(result.before);
}

std::string AfterText(ReleaseResult const& result, unsigned priority, TextStyle const& style) {
    bool const isGood =
        result.outcome == ReleaseOutcome::Released || result.outcome == ReleaseOutcome::NotCommanded;
    bool const isShown = result.after.Values(standard::PropertyId::Priority_Array) != nullptr;
    std::string const reason = result.reason.empty() ? "" : ": " + result.reason;
    return (isShown ? "  after:\n" + LevelsText(result.after) : std::string()) + "  " +
           Coloured(tools::Printable(OutcomeText(result, priority) + reason, 500),
                    isGood ? colour::Green : colour::Red, style) +
           "\n";
}

std::string ReleaseJson(ReleaseResult const& result, unsigned priority) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    WriteField(writer, "kind", "release");
    WriteField(writer, "address", AddressText(result.target.peer));
    WriteField(writer, "object", standard::ObjectText(result.target.object));
    WriteOptional(writer, "name", NameOf(result.before));
    WriteOptional(writer, "variable", result.target.name);
    writer.Key("priority");
    writer.Uint(priority);
    WriteField(writer, "outcome", NameOf(result.outcome));
    WriteOptional(writer, "reason", result.reason);
    WriteLevels(writer, "before", result.before);
    WriteLevels(writer, "after", result.after);
    writer.EndObject();
    return JsonLine(buffer);
}

}  // namespace workbench
