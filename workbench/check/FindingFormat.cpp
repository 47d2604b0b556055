#include "FindingFormat.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cctype>

#include "Printable.h"

namespace workbench {

namespace {

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

constexpr char Red[] = "\x1B[31m";
constexpr char Yellow[] = "\x1B[33m";
constexpr char Bold[] = "\x1B[1m";
constexpr char Plain[] = "\x1B[0m";

bool IsError(Finding const& finding) {
    return RowOf(finding.code).severity == Severity::Error;
}

char const* SeverityName(Finding const& finding) {
    return IsError(finding) ? "error" : "warning";
}

std::string Counted(std::size_t count, char const* noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string CountsText(FindingCounts const& counts) {
    return Counted(counts.errors, "error") + ", " + Counted(counts.warnings, "warning");
}

void WriteText(Writer& writer, char const* name, std::string const& text) {
    std::string const valid = tools::ValidUtf8(text);
    writer.Key(name);
    writer.String(valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
}

void WriteName(Writer& writer, char const* name, std::string const& text) {
    if (!text.empty()) {
        WriteText(writer, name, text);
        return;
    }
    writer.Key(name);
    writer.Null();
}

}  // namespace

std::string FindingText(Finding const& finding, bool colours) {
    std::string place = tools::Printable(finding.where.file);
    place += finding.where.line > 0 ? ":" + std::to_string(finding.where.line) + ": " : ": ";
    std::string severity = SeverityName(finding);
    if (colours) {
        place = Bold + place + Plain;
        severity = (IsError(finding) ? Red : Yellow) + severity + Plain;
    }
    std::string text = place + severity + ": " + finding.Text() + " [" + RowOf(finding.code).name + "]\n";
    std::string effect = RowOf(finding.code).effect;
    if (!effect.empty()) {
        effect.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(effect.front())));
        text += "    " + effect + ".\n";
    }
    return text + "    " + finding.Advice() + "\n";
}

std::string FindingJson(Finding const& finding) {
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.StartObject();
    WriteText(writer, "severity", SeverityName(finding));
    WriteText(writer, "code", RowOf(finding.code).name);
    WriteText(writer, "file", finding.where.file);
    writer.Key("line");
    if (finding.where.line > 0) {
        writer.Int(finding.where.line);
    } else {
        writer.Null();
    }
    WriteName(writer, "block", finding.block);
    WriteName(writer, "variable", finding.variable);
    WriteName(writer, "field", finding.field);
    WriteText(writer, "message",
              (finding.subject.empty() ? "" : finding.subject + ": ") + finding.FullMessage());
    WriteText(writer, "advice", finding.Advice());
    writer.EndObject();
    return buffer.GetString();
}

FindingCounts CountsOf(Findings const& findings) {
    FindingCounts counts;
    for (Finding const& finding : findings) {
        ++(IsError(finding) ? counts.errors : counts.warnings);
    }
    return counts;
}

std::string CountsText(std::size_t projects, FindingCounts const& counts) {
    return Counted(projects, "project") + ": " + CountsText(counts) + "\n";
}

std::string SummaryText(ProjectReport const& report) {
    FindingCounts const counts = CountsOf(report.findings);
    std::string const what = counts.errors + counts.warnings == 0 ? "no mistake" : CountsText(counts);
    return tools::Printable(report.path) + ": " + what + " (blocks: " + std::to_string(report.blocks) +
           ", variables: " + std::to_string(report.variables) + ", tasks: " + std::to_string(report.tasks) +
           ")\n";
}

}  // namespace workbench
