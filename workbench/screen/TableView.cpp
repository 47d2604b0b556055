#include "TableView.h"

#include <algorithm>

#include "Printable.h"
#include "StateColours.h"
#include "TableLine.h"
#include "TimeText.h"

namespace workbench {

namespace {

constexpr char Unfolded[] = "\xE2\x96\xBE ";  // a triangle that points down
constexpr char Folded[] = "\xE2\x96\xB8 ";    // and one that points to the right

char const* SelectionMark(bool isSelected) {
    return isSelected ? ">" : " ";
}

std::string RowLine(Row const& row, Widths const& widths, Screen const& screen, bool isSelected) {
    TableLine line(screen.width, screen.colour, isSelected);
    line.Add(SelectionMark(isSelected));
    line.Add(std::string(" ") + row.mark + " ", row.mark == '?' ? Colour::Yellow : Colour::Red);
    for (std::size_t column = 0; column < ColumnCount; ++column) {
        if (widths[column] > 0) {
            line.Add(column == 0 ? "" : std::string(Gap, ' '));
            line.Add(Cell(row, column, widths[column]), row.colours[column]);
        }
    }
    if (isSelected && screen.colour) {
        line.FillTo();
    }
    return line.Text();
}

std::string CycleWords(BlockSnapshot const& block, std::size_t left) {
    CycleFigures const& times = block.times;
    std::string const cycle = "  cycle " + std::to_string(block.cycle);
    if (times.count == 0) {
        return cycle;
    }
    std::string const last = cycle + "  " + DurationText(times.last);
    std::string const all =
        last + " (median " + DurationText(times.median) + ", max " + DurationText(times.maximum) + ")";
    return tools::DisplayWidth(all) <= left ? all : last;
}

// "  12 variables", with a choice "  3 of 12 variables".
std::string CountWords(PlantRows const& rows, std::size_t block) {
    std::size_t const all = rows.Plant().blocks[block]->variables.size();
    std::string const shown = rows.Choice().IsAll() ? "" : std::to_string(rows.ShownOf(block)) + " of ";
    return "  " + shown + std::to_string(all) + (all == 1 ? " variable" : " variables");
}

// A long name is cut before the state.
std::string Headline(PlantRows const& rows, std::size_t index, Screen const& screen, bool isSelected) {
    BlockSnapshot const& block = *rows.Plant().blocks[index];
    TableLine line(screen.width, screen.colour, isSelected);
    line.Add(SelectionMark(isSelected));
    line.Add(rows.IsFolded(index) ? Folded : Unfolded, Colour::Dim);
    std::string const state = "  " + StateText(block);
    std::string const name = tools::Printable(block.config->name);
    std::size_t const room = line.Left() - std::min(line.Left() / 2, tools::DisplayWidth(state));
    line.Add(tools::DisplayWidth(name) > room ? tools::FitTo(name, room) : name, Colour::Bold);
    line.Add(state, BlockColour(block));
    line.Add(rows.IsFolded(index) || !rows.Choice().IsAll() ? CountWords(rows, index) : "");
    line.Add("  " + block.config->address);
    if (block.times.overruns > 0) {
        line.Add("  overruns " + std::to_string(block.times.overruns), Colour::Yellow);
    }
    line.Add(CycleWords(block, line.Left()));
    if (isSelected && screen.colour) {
        line.FillTo();
    }
    return line.Text();
}

// Why the block is in its state.
std::string CauseLine(BlockSnapshot const& block, std::size_t cause, Screen const& screen) {
    constexpr std::size_t shownBeforeRest = 2;
    TableLine line(screen.width, screen.colour);
    bool const isRest = cause >= block.causes.size();
    line.Add(
        "    > " + (isRest ? "and " + std::to_string(block.causes.size() - shownBeforeRest) + " more causes"
                           : tools::Printable(block.causes[cause].text)),
        IsFault(block) ? Colour::Red : Colour::Yellow);
    return line.Text();
}

}  // namespace

std::vector<std::string> TableView::Draw(PlantRows const& rows, Screen const& screen, std::size_t height,
                                         ValuesForPeople& values, long long now) {
    page = height > 2 ? height - 2 : 1;  // without the names and the headline that stays
    Scroll(rows);
    auto const& all = rows.Rows();
    bool const hasHeadline = !all.empty() && all[top].kind != PlantRow::Headline;
    std::size_t const end = std::min(all.size(), top + page + (hasHeadline ? 0 : 1));
    std::vector<Row> const cells = Cells(rows, end, values, now);
    Widths const widths = ColumnsFor(cells, screen.width);

    std::vector<std::string> lines = {RowLine(HeaderRow(), widths, screen, false)};
    shown.assign(1, all.size());
    if (hasHeadline) {
        lines.push_back(Headline(rows, all[top].block, screen, false));
        shown.push_back(all.size());
    }
    for (std::size_t i = top; i < end; ++i) {
        PlantRow const& row = all[i];
        bool const isSelected = rows.Selected() == i;
        lines.push_back(
            row.kind == PlantRow::Headline ? Headline(rows, row.block, screen, isSelected)
            : row.kind == PlantRow::CauseLine
                ? CauseLine(*rows.Plant().blocks[row.block], row.item, screen)
                : RowLine(cells[i - top], FitRow(cells[i - top], widths, screen.width), screen, isSelected));
        shown.push_back(i);
    }
    lines.resize(std::min(lines.size(), height));
    return lines;
}

std::optional<std::size_t> TableView::RowAt(std::size_t line) const {
    bool const isRow = line < shown.size() && line > 0 && shown[line] != shown.front();
    return isRow ? std::optional(shown[line]) : std::nullopt;
}

void TableView::Scroll(PlantRows const& rows) {
    std::size_t const count = rows.Rows().size();
    std::size_t const selected = rows.Selected().value_or(0);
    top = std::min(top, count > page + 1 ? count - page : 0);
    top = std::min(top, selected);
    top = std::max(top, selected >= page ? selected - page + 1 : 0);
    // One line of another block on top would be its headline twice.
    top = top == 1 && page > 1 && selected < page ? 0 : top;
}

// Of the visible lines; empty for those that are not variables.
std::vector<Row> TableView::Cells(PlantRows const& rows, std::size_t end, ValuesForPeople& values,
                                  long long now) const {
    std::vector<Row> cells;
    for (std::size_t i = top; i < end; ++i) {
        PlantRow const& row = rows.Rows()[i];
        BlockSnapshot const& block = *rows.Plant().blocks[row.block];
        bool const isVariable = row.kind == PlantRow::VariableLine;
        cells.push_back(isVariable ? VariableRow(block.variables[row.item], block,
                                                 rows.Plant().WriteOf(block.variables[row.item]), values, now)
                                   : Row{});
    }
    return cells;
}

Widths TableView::ColumnsFor(std::vector<Row> const& cells, std::size_t screenWidth) {
    if (widestOfWidth != screenWidth) {
        widest = {};
        widestOfWidth = screenWidth;
    }
    for (Row const& row : cells) {
        widest = Wider(widest, WidthsOf(row, screenWidth));
    }
    Widths wanted = Wider(widest, WidthsOf(HeaderRow(), screenWidth));
    for (std::size_t const column : {Suspect, Write, Description}) {
        wanted[column] = widest[column] > 0 ? wanted[column] : 0;  // left out while all are empty
    }
    return FitColumns(wanted, screenWidth);
}

}  // namespace workbench
