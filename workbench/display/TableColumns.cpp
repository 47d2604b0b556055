#include "TableColumns.h"

#include <algorithm>
#include <string_view>

#include "Printable.h"
#include "QualityText.h"
#include "StateColours.h"
#include "TimeText.h"

namespace workbench {

namespace {

// The order in which columns give way on a screen that is too narrow, and to what width.
struct Concession {
    Column where;
    std::size_t width;
};

constexpr Concession Concessions[] = {{Description, 16}, {Description, 0}, {Age, 0},       {Object, 0},
                                      {Property, 0},     {Quality, 0},     {Suspect, 10},  {Write, 11},
                                      {Value, 12},       {Suspect, 0},     {Variable, 12}, {Value, 6},
                                      {Variable, 0}};

std::size_t Total(Widths const& widths) {
    std::size_t total = Indent;
    for (std::size_t const width : widths) {
        total += width > 0 ? width + Gap : 0;
    }
    return total - Gap;
}

// A column that goes to 0 goes at once; another shrinks as far as is needed.
void Concede(Widths& widths, Concession const& concession, std::size_t screenWidth) {
    std::size_t const total = Total(widths);
    std::size_t& width = widths[concession.where];
    if (total <= screenWidth || width <= concession.width) {
        return;
    }
    bool const goes = concession.width == 0 && concession.where != Variable;
    width -= goes ? width : std::min(total - screenWidth, width - concession.width);
}

std::string WriteCell(VariableConfig const& variable, BlockSnapshot const& block, WriteState const& write,
                      ValuesForPeople& values) {
    if (write.stage == WriteStage::None) {
        return variable.write ? "-" : "";
    }
    return WriteText(values.Short(*block.config, variable, write.value, block.localDiff), write, false);
}

// The error alone: the column says what it is.
std::string SuspectCell(std::string const& suspect) {
    constexpr std::string_view origin = "device: ";
    bool const isLong = suspect.compare(0, origin.size(), origin) == 0;
    return tools::Printable(isLong ? suspect.substr(origin.size()) : suspect);
}

char MarkOf(VariableSnapshot const& variable) {
    if (!variable.suspect.empty()) {
        return '~';
    }
    switch (KindOf(variable.state.Status)) {
        case QualityKind::Good:
            return ' ';
        case QualityKind::Uncertain:
            return '?';
        default:
            return '!';
    }
}

std::array<Colour, ColumnCount> ColoursOf(VariableSnapshot const& variable, WriteState const& write) {
    std::array<Colour, ColumnCount> colours{};
    colours[Quality] = QualityColour(variable.state.Status);
    colours[Write] = WriteColour(write.stage);
    colours[Age] = colours[Object] = colours[Property] = colours[Description] = Colour::Dim;
    if (!variable.suspect.empty()) {
        colours[Value] = colours[Suspect] = Colour::Red;
    }
    return colours;
}

}  // namespace

Row HeaderRow() {
    Row row;
    row.cells = {"Variable", "Value",  "Quality",  "Suspect",    "Write",
                 "Age",      "Object", "Property", "Description"};
    row.colours.fill(Colour::Bold);
    return row;
}

Row VariableRow(VariableSnapshot const& variable, BlockSnapshot const& block, WriteState const& write,
                ValuesForPeople& values, long long now) {
    VariableConfig const& config = *variable.config;
    VariableState const& state = variable.state;
    Row row;
    row.cells = {tools::Printable(config.name),
                 values.Short(*block.config, config, state.Value, block.localDiff),
                 QualityText(state.Status),
                 SuspectCell(variable.suspect),
                 WriteCell(config, block, write, values),
                 state.Time != 0 ? AgeText(state.Time, now) : "-",
                 ObjectText(config),
                 config.property->name,
                 tools::Printable(config.description)};
    row.colours = ColoursOf(variable, write);
    row.stage = write.stage == WriteStage::None ? row.cells[Write] : StageName(write.stage);
    row.mark = MarkOf(variable);
    return row;
}

Widths WidthsOf(Row const& row, std::size_t screenWidth) {
    Widths widths{};
    for (std::size_t column = 0; column < ColumnCount; ++column) {
        widths[column] = tools::DisplayWidth(row.cells[column]);
    }
    widths[Variable] = std::min(widths[Variable], std::max<std::size_t>(40, screenWidth / 3));
    widths[Value] = std::min(widths[Value], std::max<std::size_t>(24, screenWidth / 5));
    widths[Write] = std::min(widths[Write], std::max<std::size_t>(24, screenWidth / 5));
    return widths;
}

Widths Wider(Widths const& left, Widths const& right) {
    Widths widths{};
    std::transform(left.begin(), left.end(), right.begin(), widths.begin(),
                   [](std::size_t one, std::size_t other) { return std::max(one, other); });
    return widths;
}

Widths FitColumns(Widths wanted, std::size_t screenWidth) {
    for (Concession const& concession : Concessions) {
        Concede(wanted, concession, screenWidth);
    }
    return wanted;
}

Widths FitRow(Row const& row, Widths const& columns, std::size_t screenWidth) {
    Widths wanted = columns;
    for (std::size_t const column : {Variable, Value}) {
        wanted[column] = std::max(wanted[column], tools::DisplayWidth(row.cells[column]));
    }
    return FitColumns(wanted, screenWidth);
}

std::string Cell(Row const& row, std::size_t column, std::size_t width) {
    std::string const& text = row.cells[column];
    if (column == Value || column == Age) {
        return tools::FitToRight(text, width);
    }
    bool const isCut = column == Write && tools::DisplayWidth(text) > width;
    return tools::FitTo(isCut ? row.stage : text, width);
}

}  // namespace workbench
