#include "VerifyText.h"

#include <algorithm>
#include <array>
#include <vector>

#include "Printable.h"

namespace workbench {

namespace {

enum Column : std::size_t { Name, Object, DeviceName, Description, Driver, Device, Result, ColumnCount };

using Row = std::array<std::string, ColumnCount>;
using Widths = std::array<std::size_t, ColumnCount>;

// The most columns of the terminal that each may take.
constexpr Widths Longest = {30, 34, 24, 28, 24, 34, 60};
// What a narrow terminal leaves out, in this order.
constexpr Column Dispensable[] = {Description, DeviceName};

using namespace colour;

constexpr std::size_t Gap = 2;
constexpr std::size_t Indent = 2;

std::string WithUnits(PointResult const& point) {
    std::string text = point.deviceValue;
    text += point.units.empty() ? "" : " " + point.units;
    text += point.stateText.empty() ? "" : " (" + point.stateText + ")";
    return text;
}

std::string ResultText(PointResult const& point) {
    std::string text = RowOf(point.judgement.verdict).name;
    for (Remark const remark : point.remarks) {
        text += std::string(", ") + RowOf(remark).name;
    }
    return text;
}

std::string DriverText(PointResult const& point) {
    return point.quality.empty() || point.quality == "Good" ? point.driverValue
                                                            : point.driverValue + " " + point.quality;
}

Row RowOfPoint(PointResult const& point) {
    Row row = {point.variable->name, PointText(*point.variable), point.objectName, point.description,
               DriverText(point),    WithUnits(point),           ResultText(point)};
    for (std::string& cell : row) {
        cell = tools::Printable(cell);
    }
    return row;
}

Row const Header = {"Variable", "Object", "In the device", "Description", "Driver", "Device", "Verdict"};

std::size_t Total(Widths const& widths) {
    std::size_t total = Indent;
    for (std::size_t const width : widths) {
        total += width == 0 ? 0 : width + Gap;
    }
    return total - Gap;
}

Widths Fit(std::vector<Row> const& rows, std::size_t screen) {
    Widths widths{};
    for (std::size_t column = 0; column < ColumnCount; ++column) {
        for (Row const& row : rows) {
            std::size_t const width = tools::DisplayWidth(row[column]);
            widths[column] = std::max(widths[column], std::min(width, Longest[column]));
        }
    }
    for (Column const column : Dispensable) {
        widths[column] = screen != 0 && Total(widths) > screen ? 0 : widths[column];
    }
    return widths;
}

char const* ColourOf(PointResult const& point) {
    return IsFinding(point) ? Red : point.remarks.empty() ? Green : Yellow;
}

std::string Trimmed(std::string text) {
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

std::string Line(Row const& row, Widths const& widths, char const* resultColour, TextStyle const& style) {
    std::string line(Indent, ' ');
    for (std::size_t column = 0; column < Result; ++column) {
        line += widths[column] == 0 ? "" : tools::FitTo(row[column], widths[column]) + std::string(Gap, ' ');
    }
    return line + Coloured(Trimmed(tools::FitTo(row[Result], widths[Result])), resultColour, style) + "\n";
}

std::string Explanation(PointResult const& point, TextStyle const& style) {
    bool const isWorth = IsFinding(point) && !ExplanationText(point).empty();
    return isWorth ? std::string(Indent + 2, ' ') +
                         Coloured(tools::Printable(ExplanationText(point)), Dim, style) + "\n"
                   : std::string();
}

std::string BlockText(BlockResult const& block, std::vector<Row> const& rows, Widths const& widths,
                      TextStyle const& style) {
    std::string text = Coloured(tools::Printable(block.block->name), Bold, style) + "  " + block.reachedAt +
                       "  " + tools::Printable(IdentityText(block.device)) + "\n";
    for (BlockNote const& note : block.notes) {
        text += "  " + Coloured(tools::Printable(note.text), note.isFinding ? Red : Yellow, style) + "\n";
    }
    for (std::size_t i = 0; i < block.points.size(); ++i) {
        text += Line(rows[i], widths, ColourOf(block.points[i]), style) + Explanation(block.points[i], style);
    }
    return text;
}

}  // namespace

std::string VerifyText(VerifyReport const& report, TextStyle const& style) {
    std::vector<std::vector<Row>> blocks;
    std::vector<Row> all = {Header};
    for (BlockResult const& block : report.blocks) {
        std::vector<Row>& rows = blocks.emplace_back();
        for (PointResult const& point : block.points) {
            rows.push_back(RowOfPoint(point));
        }
        all.insert(all.end(), rows.begin(), rows.end());
    }
    Widths const widths = Fit(all, style.width);
    std::string text = Coloured(Trimmed(Line(Header, widths, Dim, {})), Dim, style);
    for (std::size_t i = 0; i < report.blocks.size(); ++i) {
        text += BlockText(report.blocks[i], blocks[i], widths, style);
    }
    bool const isGood = FiguresOf(report).findings == 0;
    return text + (report.isInterrupted ? "Interrupted: what was done so far.\n" : "") +
           Coloured(SummaryText(report), isGood ? Green : Red, style) + "\n";
}

}  // namespace workbench
