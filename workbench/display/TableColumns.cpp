#include "TableColumns.h"

#include <algorithm>
#include <string_view>

#include "Printable.h"
#include "QualityText.h"
#include "ShownValue.h"
#include "TimeText.h"
#include "TypeName.h"

namespace workbench {

namespace {

constexpr std::size_t WidestColumn = 40;

// The order in which columns shrink on a screen that is too narrow, and to what width.
struct Concession {
    Column where;
    std::size_t width;
};

constexpr Concession Concessions[] = {{Type, 0},      {Time, 0},     {Value, 14},  {Property, 8},
                                      {Variable, 14}, {Quality, 6},  {Object, 10}, {Suspect, 14},
                                      {Property, 4},  {Value, 6},    {Write, 12},  {Variable, 10},
                                      {Suspect, 8},   {Variable, 6}, {Quality, 2}, {Object, 5}};

std::size_t Total(Widths const& widths) {
    std::size_t total = Indent;
    for (std::size_t const width : widths) {
        total += width > 0 ? width + Gap : 0;
    }
    return total - Gap;
}

std::string WriteCell(VariableSnapshot const& variable, long long localDiff) {
    bool const isSet = variable.write.stage != WriteStage::None;
    return isSet                    ? WriteText(*variable.config, variable.write, localDiff, false)
           : variable.config->write ? "-"
                                    : "";
}

// The error alone: the column says what it is.
std::string SuspectCell(std::string const& suspect) {
    constexpr std::string_view origin = "device: ";
    bool const isLong = suspect.compare(0, origin.size(), origin) == 0;
    return tools::Printable(isLong ? suspect.substr(origin.size()) : suspect);
}

// The column Write is shown only when a variable can be written, and Suspect when one is.
bool IsLeftOut(std::size_t column, std::vector<Row> const& rows) {
    return (column == Write || column == Suspect) &&
           std::all_of(rows.begin(), rows.end(), [=](Row const& row) { return row[column].empty(); });
}

std::string ObjectCell(std::string const& text, std::size_t width) {
    std::size_t const blank = text.rfind(' ');
    if (text.size() <= width || blank == std::string::npos || text.size() - blank >= width) {
        return tools::FitTo(text, width);
    }
    std::string const number = text.substr(blank);
    return tools::FitTo(text.substr(0, blank), width - number.size()) + number;
}

}  // namespace

Row HeaderRow() {
    return {"Variable", "Object", "Property", "Value", "Type", "Quality", "Suspect", "Time", "Age", "Write"};
}

Row VariableRow(VariableSnapshot const& variable, BlockSnapshot const& block, long long now) {
    VariableConfig const& config = *variable.config;
    VariableState const& state = variable.state;
    bool const timed = state.Time != 0;
    return {tools::Printable(config.name),
            ObjectText(config),
            config.property->name,
            ShownValue(config, state.Value, block.localDiff),
            TypeName(config.type),
            QualityText(state.Status),
            SuspectCell(variable.suspect),
            timed ? ClockTime(state.Time, block.localDiff) : "-",
            timed ? AgeText(state.Time, now) : "-",
            WriteCell(variable, block.localDiff)};
}

Widths FitColumns(std::vector<Row> const& rows, std::size_t screenWidth) {
    Widths widths{};
    Row const header = HeaderRow();
    for (std::size_t column = 0; column < ColumnCount; ++column) {
        widths[column] = IsLeftOut(column, rows) ? 0 : tools::DisplayWidth(header[column]);
        for (Row const& row : rows) {
            widths[column] =
                std::max(widths[column], std::min(tools::DisplayWidth(row[column]), WidestColumn));
        }
    }
    for (Concession const& concession : Concessions) {
        std::size_t const total = Total(widths);
        std::size_t const excess = total > screenWidth ? total - screenWidth : 0;
        std::size_t& width = widths[concession.where];
        std::size_t const spare = width > concession.width ? width - concession.width : 0;
        width -= concession.width == 0 && excess > 0 ? width : std::min(excess, spare);
    }
    return widths;
}

std::string Cell(std::string const& text, std::size_t column, std::size_t width) {
    switch (column) {
        case Object:
            return ObjectCell(text, width);
        case Value:
        case Age:
            return tools::FitToRight(text, width);
        default:
            return tools::FitTo(text, width);
    }
}

}  // namespace workbench
