#include "TableFormat.h"

#include <algorithm>

#include "Printable.h"
#include "QualityText.h"
#include "TableColumns.h"
#include "TableLine.h"
#include "TimeText.h"

namespace workbench {

namespace {

Colour QualityColour(OpcUa_StatusCode status) {
    if (status == OpcUa_BadNoData) {
        return Colour::Dim;
    }
    switch (KindOf(status)) {
        case QualityKind::Good:
            return Colour::Green;
        case QualityKind::Uncertain:
            return Colour::Yellow;
        default:
            return Colour::Red;
    }
}

Colour WriteColour(WriteStage stage) {
    switch (stage) {
        case WriteStage::Written:
            return Colour::Green;
        case WriteStage::Refused:
        case WriteStage::Differs:
            return Colour::Red;
        case WriteStage::None:
            return Colour::None;
        default:
            return Colour::Yellow;
    }
}

using RowColours = std::array<Colour, ColumnCount>;

RowColours Plain(Colour colour) {
    RowColours colours;
    colours.fill(colour);
    return colours;
}

RowColours ColoursOf(VariableSnapshot const& variable) {
    RowColours colours = Plain(Colour::None);
    colours[Quality] = QualityColour(variable.state.Status);
    colours[Write] = WriteColour(variable.write.stage);
    if (!variable.suspect.empty()) {
        colours[Value] = colours[Suspect] = Colour::Red;
    }
    return colours;
}

std::string RowLine(Row const& row, Widths const& widths, Screen const& screen, RowColours const& colours) {
    TableLine line(screen.width, screen.colour);
    line.Add(std::string(Indent, ' '));
    for (std::size_t column = 0; column < ColumnCount; ++column) {
        if (widths[column] == 0) {
            continue;
        }
        line.Add(column == 0 ? "" : std::string(Gap, ' '));
        line.Add(Cell(row[column], column, widths[column]), colours[column]);
    }
    return line.Text();
}

std::string Headline(BlockSnapshot const& block, Screen const& screen) {
    bool const idle = block.cycle == 0 || block.isStandby;
    Colour const state = idle ? Colour::Dim : IsFault(block) ? Colour::Red : Colour::Green;
    TableLine line(screen.width, screen.colour);
    line.Add(tools::Printable(block.config->name), Colour::Bold);
    line.Add("  ");
    line.Add(StateText(block), state);
    line.Add("  " + block.config->address + "  cycle " + std::to_string(block.cycle));
    CycleFigures const& times = block.times;
    if (times.overruns > 0) {
        line.Add("  overruns " + std::to_string(times.overruns), Colour::Yellow);
    }
    if (times.count > 0) {
        std::string const last = "  " + DurationText(times.last);
        std::string const all =
            last + " (median " + DurationText(times.median) + ", max " + DurationText(times.maximum) + ")";
        line.Add(tools::DisplayWidth(all) <= line.Left() ? all : last);
    }
    return line.Text();
}

// Why the block is in this state, below its headline.
void AddCauses(BlockSnapshot const& block, Screen const& screen, std::vector<std::string>& lines) {
    constexpr std::size_t most = 3;
    Colour const colour = IsFault(block) ? Colour::Red : Colour::Yellow;
    std::size_t const shown = block.causes.size() > most ? most - 1 : block.causes.size();
    for (std::size_t i = 0; i < shown; ++i) {
        TableLine line(screen.width, screen.colour);
        line.Add("  > " + tools::Printable(block.causes[i].text), colour);
        lines.push_back(line.Text());
    }
    if (shown < block.causes.size()) {
        TableLine line(screen.width, screen.colour);
        line.Add("  > and " + std::to_string(block.causes.size() - shown) + " more causes", colour);
        lines.push_back(line.Text());
    }
}

// The log: a heading and the newest lines, at most a third of the screen.
std::vector<std::string> LogLines(std::vector<std::string> const& log, Screen const& screen) {
    constexpr std::size_t most = 6;
    std::size_t const count = std::min({log.size(), most, screen.height / 3});
    if (count == 0) {
        return {};
    }
    TableLine rule(screen.width, screen.colour);
    rule.Add("Log", Colour::Dim);
    std::vector<std::string> lines = {rule.Text()};
    for (auto text = log.end() - static_cast<std::ptrdiff_t>(count); text != log.end(); ++text) {
        TableLine line(screen.width, screen.colour);
        line.Add(tools::Printable(*text));
        lines.push_back(line.Text());
    }
    return lines;
}

void CutTo(std::vector<std::string>& lines, std::size_t height, std::size_t width) {
    if (lines.size() <= height) {
        return;
    }
    std::size_t const kept = height > 0 ? height - 1 : 0;
    std::string const more = "... " + std::to_string(lines.size() - kept) + " more";
    lines.resize(kept);
    if (height > 0) {
        TableLine line(width, false);
        line.Add(more);
        lines.push_back(line.Text());
    }
}

}  // namespace

std::vector<std::string> FormatTable(std::vector<BlockSnapshot> const& blocks,
                                     std::vector<std::string> const& log, Screen const& screen,
                                     long long now) {
    std::vector<Row> rows;
    for (BlockSnapshot const& block : blocks) {
        for (VariableSnapshot const& variable : block.variables) {
            rows.push_back(VariableRow(variable, block, now));
        }
    }
    Widths const widths = FitColumns(rows, screen.width);
    std::vector<std::string> lines = {RowLine(HeaderRow(), widths, screen, Plain(Colour::Bold))};
    auto row = rows.begin();
    for (BlockSnapshot const& block : blocks) {
        lines.push_back(Headline(block, screen));
        AddCauses(block, screen, lines);
        for (VariableSnapshot const& variable : block.variables) {
            lines.push_back(RowLine(*row++, widths, screen, ColoursOf(variable)));
        }
    }
    std::vector<std::string> const logLines = LogLines(log, screen);
    std::size_t const height = screen.height > 1 ? screen.height - 1 : 1;
    CutTo(lines, height > logLines.size() ? height - logLines.size() : 1, screen.width);
    lines.insert(lines.end(), logLines.begin(), logLines.end());
    if (lines.size() > height) {
        lines.resize(height);
    }
    return lines;
}

}  // namespace workbench
