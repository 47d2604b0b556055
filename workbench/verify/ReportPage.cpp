#include "ReportPage.h"

#include "Printable.h"
#include "TimeText.h"
#include "TypeName.h"

namespace workbench {

namespace {

// Octets of a text of a device, and of a value, such as a schedule, in the column for it.
constexpr std::size_t LongestText = 400;
constexpr std::size_t LongestValue = 120;

// The classes of the style sheet.
char const* ClassOf(Verdict verdict) {
    return RowOf(verdict).isFinding ? "bad" : verdict == Verdict::Agrees ? "good" : "move";
}

char const* MarkOf(Verdict verdict) {
    return RowOf(verdict).isFinding ? "&#10007;" : verdict == Verdict::Agrees ? "&#10003;" : "&#8776;";
}

std::string Badge(Verdict verdict) {
    return std::string("<span class=\"badge ") + ClassOf(verdict) + "\">" + MarkOf(verdict) + " " +
           RowOf(verdict).name + "</span>";
}

std::string Badge(Remark remark) {
    return std::string("<span class=\"badge note\">") + RowOf(remark).name + "</span>";
}

// A cell with its label for narrow windows; html is safe already.
std::string Cell(char const* label, std::string const& html, char const* kind = "") {
    return std::string("<td class=\"") + kind + (html.empty() ? " empty" : "") + "\" data-label=\"" + label +
           "\"><span>" + html + "</span></td>";
}

std::string Small(std::string const& text) {
    return text.empty() ? std::string() : "<small>" + HtmlText(text) + "</small>";
}

// A column of a table: its title, and its share of the width in percent.
struct ReportColumn {
    char const* title;
    int share;
};

std::string Head(std::initializer_list<ReportColumn> columns) {
    std::string widths;
    std::string titles;
    for (ReportColumn const& column : columns) {
        widths += "<col style=\"width:" + std::to_string(column.share) + "%\">";
        titles += std::string("<th scope=\"col\">") + column.title + "</th>";
    }
    return "<table class=\"wide\"><colgroup>" + widths + "</colgroup><thead><tr>" + titles +
           "</tr></thead><tbody>\n";
}

constexpr char TableEnd[] = "</tbody></table>\n";

std::string VerdictCell(PointResult const& point) {
    std::string html = Badge(point.judgement.verdict);
    for (Remark const remark : point.remarks) {
        html += " " + Badge(remark);
    }
    if (!point.reliability.empty()) {
        html += Small("reliability " + point.reliability);
    }
    if (!ExplanationText(point).empty()) {
        html += "<span class=\"why\">" + HtmlText(ExplanationText(point)) + "</span>";
    }
    return html;
}

std::string ValueText(std::string const& value) {
    return HtmlText(tools::Printable(value, LongestValue));
}

std::string DeviceValueText(PointResult const& point) {
    std::string const units = point.units.empty() ? std::string() : " " + point.units;
    return ValueText(point.deviceValue + units) + Small(point.stateText);
}

std::string PointRow(PointResult const& point) {
    VariableConfig const& variable = *point.variable;
    std::string const quality = point.quality == "Good" ? std::string() : point.quality;
    return std::string("<tr") + (IsFinding(point) ? " class=\"bad\"" : "") + ">" +
           Cell("Variable", HtmlText(variable.name) + Small(TypeName(variable.type))) +
           Cell("Object", HtmlText(PointText(variable))) +
           Cell("In the device", HtmlText(point.objectName) + Small(point.description)) +
           Cell("Driver", ValueText(point.driverValue) + Small(quality), "value") +
           Cell("Device", DeviceValueText(point), "value") + Cell("Verdict", VerdictCell(point)) + "</tr>\n";
}

std::string PointTable(BlockResult const& block) {
    std::string html = Head({{"Variable", 17},
                             {"Object", 17},
                             {"In the device", 18},
                             {"Driver", 13},
                             {"Device", 15},
                             {"Verdict", 20}});
    for (bool const finding : {true, false}) {
        for (PointResult const& point : block.points) {
            html += IsFinding(point) == finding ? PointRow(point) : std::string();
        }
    }
    return html + TableEnd;
}

std::string Notes(BlockResult const& block) {
    if (block.notes.empty()) {
        return {};
    }
    std::string html = "<ul class=\"notes\">";
    for (BlockNote const& note : block.notes) {
        html += std::string("<li") + (note.isFinding ? " class=\"bad\"" : "") + ">" + HtmlText(note.text) +
                "</li>";
    }
    return html + "</ul>\n";
}

std::string BlockSection(BlockResult const& block) {
    return "<section class=\"block\"><h3>" + HtmlText(block.block->name) + "</h3>\n<p class=\"identity\">" +
           HtmlText(block.reachedAt) + " &middot; " + HtmlText(IdentityText(block.device)) + "</p>\n" +
           Notes(block) + PointTable(block) + "</section>\n";
}

std::string FindingRow(BlockResult const& block, PointResult const& point) {
    return "<tr class=\"bad\">" + Cell("Block", HtmlText(block.block->name)) +
           Cell("Variable", HtmlText(point.variable->name)) +
           Cell("Object", HtmlText(PointText(*point.variable)) + Small(point.objectName)) +
           Cell("Verdict", Badge(point.judgement.verdict)) +
           Cell("Explanation", HtmlText(ExplanationText(point))) + "</tr>\n";
}

std::string Findings(VerifyReport const& report) {
    std::string rows;
    for (BlockResult const& block : report.blocks) {
        for (BlockNote const& note : block.notes) {
            rows += note.isFinding ? "<tr class=\"bad\">" + Cell("Block", HtmlText(block.block->name)) +
                                         Cell("Variable", "") + Cell("Object", "") + Cell("Verdict", "") +
                                         Cell("Explanation", HtmlText(note.text)) + "</tr>\n"
                                   : std::string();
        }
        for (PointResult const& point : block.points) {
            rows += IsFinding(point) ? FindingRow(block, point) : std::string();
        }
    }
    return "<section><h2>Findings</h2>\n" +
           (rows.empty() ? std::string("<p class=\"fine\">&#10003; No findings.</p>\n")
                         : Head({{"Block", 12},
                                 {"Variable", 17},
                                 {"Object", 19},
                                 {"Verdict", 16},
                                 {"Explanation", 36}}) +
                               rows + TableEnd) +
           "</section>\n";
}

std::string DeviceRow(BlockResult const& block) {
    DeviceIdentity const& device = block.device;
    std::string const instance = device.isKnown ? std::to_string(device.instance) : "unknown";
    std::string const vendor = device.vendorId.empty() ? std::string() : "vendor " + device.vendorId;
    return "<tr>" + Cell("Block", HtmlText(block.block->name)) +
           Cell("Reached at", HtmlText(block.reachedAt)) + Cell("Device", instance + Small(device.name)) +
           Cell("Vendor", HtmlText(device.vendor) + Small(vendor)) + Cell("Model", HtmlText(device.model)) +
           Cell("Firmware", HtmlText(device.firmware)) + Cell("Software", HtmlText(device.software)) +
           Cell("Revision", HtmlText(device.protocolRevision)) + "</tr>\n";
}

std::string Devices(VerifyReport const& report) {
    std::string html = "<section><h2>Devices</h2>\n" + Head({{"Block", 12},
                                                             {"Reached at", 19},
                                                             {"Device", 14},
                                                             {"Vendor", 13},
                                                             {"Model", 14},
                                                             {"Firmware", 9},
                                                             {"Software", 9},
                                                             {"Revision", 10}});
    for (BlockResult const& block : report.blocks) {
        html += DeviceRow(block);
    }
    return html + TableEnd + "</section>\n";
}

std::string Term(char const* name, std::string const& text) {
    return std::string("<dt>") + name + "</dt><dd>" + HtmlText(text) + "</dd>";
}

std::string Top(VerifyReport const& report, VerifyFigures const& figures) {
    std::string const count =
        figures.findings == 1 ? "1 finding" : std::to_string(figures.findings) + " findings";
    std::string const result = figures.findings == 0 ? "No findings" : count;
    std::string const rounds =
        std::to_string(report.rounds) + " of " + std::to_string(report.roundsRequested);
    return "<div class=\"head\"><div><p class=\"kicker\">BACnet points, driver compared with device</p><h1>" +
           HtmlText(report.title) + "</h1></div><div class=\"result " +
           (figures.findings == 0 ? "good" : "bad") + "\" style=\"flex:0 0 auto\">" + result + "<small>" +
           std::to_string(figures.points) + " points in " + std::to_string(figures.blocks) +
           (figures.blocks == 1 ? " block" : " blocks") + "</small></div></div>\n<dl>" +
           Term("Project", report.project) + Term("Begun", IsoTime(report.begun, report.localDiff)) +
           Term("Ended", IsoTime(report.ended, report.localDiff) +
                             (report.isInterrupted ? ", interrupted before the end" : "")) +
           Term("Rounds", rounds) + Term("Program", "dorvel-workbench " + report.version) +
           Term("Driver", report.addIn) + "</dl>\n";
}

std::string Figure(char const* kind, std::size_t count, std::string const& name) {
    return std::string("<li class=\"") + kind + "\"><b>" + std::to_string(count) + "</b>" + name + "</li>";
}

std::string Figures(VerifyFigures const& figures) {
    std::string html = "<ul class=\"figures\">";
    for (auto const& [verdict, count] : figures.verdicts) {
        html += Figure(ClassOf(verdict), count, RowOf(verdict).name);
    }
    for (auto const& [remark, count] : figures.remarks) {
        html += Figure("note", count, RowOf(remark).name);
    }
    return html + "</ul>\n";
}

std::string Legend() {
    std::string html = "<section class=\"legend\"><h2>Verdicts and remarks</h2>\n<table><tbody>";
    for (VerdictRow const& row : Verdicts()) {
        html += "<tr><td>" + Badge(row.verdict) + "</td><td>" + HtmlText(row.meaning) + "</td></tr>\n";
    }
    for (RemarkRow const& row : Remarks()) {
        html += "<tr><td>" + Badge(row.remark) + "</td><td>" + HtmlText(row.meaning) + "</td></tr>\n";
    }
    return html + "</tbody></table></section>\n";
}

constexpr char Closing[] =
    "<section class=\"closing\"><h2>Acceptance</h2>\n<div class=\"sign\"><div>Integrator: name and "
    "signature</div><div>Client: name and signature</div><div>Place and date</div></div></section>\n";

}  // namespace

std::string HtmlText(std::string_view text) {
    std::string result;
    for (char const c : tools::Printable(text, LongestText)) {
        switch (c) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            case '"':
                result += "&quot;";
                break;
            case '\'':
                result += "&#39;";
                break;
            default:
                result += c;
        }
    }
    return result;
}

std::string ReportPage(VerifyReport const& report) {
    VerifyFigures const figures = FiguresOf(report);
    std::string html =
        "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n<title>" +
        HtmlText(report.title) + "</title>\n<style>" + ReportStyle() + "</style></head>\n<body><main>\n" +
        Top(report, figures) + Figures(figures) + Findings(report) + Devices(report) +
        "<h2 class=\"points\">Points</h2>\n";
    for (BlockResult const& block : report.blocks) {
        html += BlockSection(block);
    }
    return html + Legend() + Closing +
           "<footer>Each point was read from its device by the standard before and after the driver read it. "
           "Nothing was written.</footer>\n</main></body></html>\n";
}

}  // namespace workbench
