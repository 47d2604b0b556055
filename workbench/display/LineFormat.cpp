#include "LineFormat.h"

#include <cstdio>

#include "Printable.h"
#include "QualityText.h"
#include "ShownValue.h"
#include "TimeText.h"
#include "TypeName.h"

namespace workbench {

namespace {

std::string OrDash(std::string const& text) {
    return text.empty() ? "-" : text;
}

std::string VariableColumns(VariableSnapshot const& variable, long long localDiff) {
    VariableConfig const& config = *variable.config;
    VariableState const& state = variable.state;
    std::string const time = state.Time ? IsoTime(state.Time, localDiff) : "-";
    bool const isSet = variable.write.stage != WriteStage::None;
    std::string const write = isSet ? WriteText(config, variable.write, localDiff, true) : "-";
    return tools::Printable(config.name) + "\t" + ObjectText(config) + "\t" + config.property->name + "\t" +
           ShownValue(config, state.Value, localDiff) + "\t" + TypeName(config.type) + "\t" +
           QualityText(state.Status) + "\t" + StatusText(state.Status) + "\t" + time + "\t" + write + "\t" +
           OrDash(tools::Printable(variable.suspect));
}

std::string BlockColumns(BlockSnapshot const& block) {
    char times[80];
    std::snprintf(times, sizeof times, "\t%.3f\t%llu", static_cast<double>(block.times.last) / 1e4,
                  block.times.overruns);
    return "\t" + OrDash(tools::Printable(WhyText(block.causes))) + times;
}

}  // namespace

std::string FormatLines(BlockSnapshot const& block) {
    return FormatLines(block, AllVariables(block));
}

std::string FormatLines(BlockSnapshot const& block, ChosenVariables const& variables) {
    std::string const columns = IsoTime(block.time, block.localDiff) + "\t" +
                                tools::Printable(block.config->name) + "\t" + std::to_string(block.cycle) +
                                "\t" + StateText(block) + "\t";
    std::string const more = BlockColumns(block);
    std::string lines;
    for (std::size_t const index : variables) {
        lines += columns + VariableColumns(block.variables[index], block.localDiff) + more + "\n";
    }
    return lines;
}

std::string LinesHeader() {
    return "#time\tblock\tcycle\tstate\tvariable\tobject\tproperty\tvalue\ttype\tquality\tstatus\tvalue "
           "time\twrite\tsuspect\twhy\tcycle ms\toverruns\n";
}

}  // namespace workbench
