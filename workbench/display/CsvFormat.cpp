#include "CsvFormat.h"

#include <cstdio>
#include <vector>

#include "CsvCells.h"
#include "QualityText.h"
#include "ShownValue.h"
#include "TimeText.h"
#include "TypeName.h"
#include "ValueText.h"

namespace workbench {

namespace {

using Cells = std::vector<std::string>;

std::string ValueCell(OpcUa_Variant const& value, long long localDiff) {
    switch (value.Datatype) {
        case OpcUaType_Null:
            return {};
        case OpcUaType_String:
            return CsvSafeText(View(value.Value.Octets));
        case OpcUaType_DateTime:
            return IsoTime(value.Value.DateTime, localDiff);
        case OpcUaType_ByteString:
            return value.Value.Octets.Length > 0 ? ValueText(value, localDiff) : "";
        case OpcUaType_DataValue:
            return ValueCell(value.Value.DataValue->Value, localDiff);
        default:
            return ValueText(value, localDiff);
    }
}

char const* StateName(BlockSnapshot const& block) {
    return block.cycle == 0 ? "waiting" : block.isStandby ? "standby" : IsFault(block) ? "fault" : "ok";
}

void Append(Cells& cells, Cells more) {
    cells.insert(cells.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

// What all rows of a cycle have at their beginning and at their end.
Cells BeginOf(BlockSnapshot const& block) {
    return {IsoTime(block.time, block.localDiff), CsvSafeText(block.config->name),
            std::to_string(block.cycle), StateName(block), CsvSafeText(FaultText(block))};
}

Cells EndOf(BlockSnapshot const& block) {
    char milliseconds[40];
    std::snprintf(milliseconds, sizeof milliseconds, "%.3f", static_cast<double>(block.times.last) / 1e4);
    return {CsvSafeText(WhyText(block.causes)), milliseconds, std::to_string(block.times.overruns)};
}

Cells VariableCells(VariableSnapshot const& variable, long long localDiff) {
    VariableConfig const& config = *variable.config;
    VariableState const& state = variable.state;
    return {CsvSafeText(config.name),
            ObjectText(config),
            config.property->name,
            ValueCell(state.Value, localDiff),
            HasUnit(config) ? CsvSafeText(config.unit) : "",
            CsvSafeText(TextOfState(config, state.Value).value_or("")),
            TypeName(config.type),
            QualityText(state.Status),
            StatusText(state.Status),
            state.Time ? IsoTime(state.Time, localDiff) : "",
            StageName(variable.write.stage),
            ValueCell(variable.write.value, localDiff),
            CsvSafeText(variable.write.reason),
            CsvSafeText(variable.suspect)};
}

}  // namespace

std::string CsvHeader() {
    return CsvLine({"time",    "block",    "cycle",      "state",   "error",       "variable",
                    "object",  "property", "value",      "unit",    "state_text",  "type",
                    "quality", "status",   "value_time", "write",   "write_value", "write_reason",
                    "suspect", "why",      "cycle_ms",   "overruns"});
}

std::string FormatCsv(BlockSnapshot const& block, ChosenVariables const& variables) {
    Cells const begin = BeginOf(block);
    Cells const end = EndOf(block);
    std::string rows;
    for (std::size_t const index : variables) {
        Cells cells = begin;
        Append(cells, VariableCells(block.variables[index], block.localDiff));
        Append(cells, end);
        rows += CsvLine(cells);
    }
    return rows;
}

std::string FormatCsv(BlockSnapshot const& block) {
    return FormatCsv(block, AllVariables(block));
}

}  // namespace workbench
