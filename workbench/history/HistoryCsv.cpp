#include "HistoryCsv.h"

#include <cmath>

#include "CsvCells.h"
#include "NumberText.h"
#include "ShownValue.h"
#include "TimeText.h"

namespace workbench {

namespace {

char const* QualityName(QualityKind quality) {
    return quality == QualityKind::Good ? "good" : quality == QualityKind::Uncertain ? "uncertain" : "bad";
}

std::string StateCell(VariableConfig const& variable, double value) {
    if (std::isnan(value)) {
        return {};
    }
    OpcUa_VariantHlp state;
    if (ValueType(variable) == OpcUaType_Boolean) {
        state.SetBool(value != 0);
    } else {
        state.SetDouble(value);
    }
    return CsvSafeText(TextOfState(variable, state).value_or(""));
}

}  // namespace

std::string TrendHeader() {
    return CsvLine({"time", "block", "variable", "value", "unit", "state_text", "quality"});
}

std::string TrendRows(BlockConfig const& block, VariableConfig const& variable,
                      std::vector<Sample> const& samples, long long localDiff) {
    std::string const blockCell = CsvSafeText(block.name);
    std::string const variableCell = CsvSafeText(variable.name);
    std::string const unit = HasUnit(variable) ? CsvSafeText(variable.unit) : "";
    std::string rows;
    for (Sample const& sample : samples) {
        rows += CsvLine({IsoTime(sample.time, localDiff), blockCell, variableCell,
                         std::isnan(sample.value) ? "" : tools::NumberText(sample.value), unit,
                         StateCell(variable, sample.value), QualityName(sample.quality)});
    }
    return rows;
}

std::string EventsCsv(std::vector<Event> const& events) {
    std::string text = CsvLine({"id", "time", "event", "block", "variable", "text"});
    for (Event const& event : events) {
        text += CsvLine({std::to_string(event.id), IsoTime(event.time, event.localDiff),
                         EventName(event.kind), CsvSafeText(event.block->name),
                         CsvSafeText(event.variable ? event.variable->name : ""), CsvSafeText(event.text)});
    }
    return text;
}

}  // namespace workbench
