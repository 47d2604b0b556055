#include "LineFormat.h"

#include "Printable.h"
#include "QualityText.h"
#include "TimeText.h"
#include "TypeName.h"
#include "ValueText.h"

namespace workbench {

namespace {

std::string VariableColumns(VariableSnapshot const& variable, long long localDiff) {
    VariableConfig const& config = *variable.config;
    VariableState const& state = variable.state;
    std::string const time = state.Time ? IsoTime(state.Time, localDiff) : "-";
    bool const isSet = variable.write.stage != WriteStage::None;
    std::string const write = isSet ? WriteText(variable.write, localDiff, true) : "-";
    return tools::Printable(config.name) + "\t" + ObjectText(config) + "\t" + config.property->name + "\t" +
           ValueText(state.Value, localDiff) + "\t" + TypeName(config.type) + "\t" +
           QualityText(state.Status) + "\t" + StatusText(state.Status) + "\t" + time + "\t" + write;
}

}  // namespace

std::string FormatLines(BlockSnapshot const& block) {
    std::string const columns = IsoTime(block.time, block.localDiff) + "\t" +
                                tools::Printable(block.config->name) + "\t" + std::to_string(block.cycle) +
                                "\t" + StateText(block) + "\t";
    std::string lines;
    for (VariableSnapshot const& variable : block.variables) {
        lines += columns + VariableColumns(variable, block.localDiff) + "\n";
    }
    return lines;
}

std::string LinesHeader() {
    return "#time\tblock\tcycle\tstate\tvariable\tobject\tproperty\tvalue\ttype\tquality\tstatus\tvalue "
           "time\twrite\n";
}

}  // namespace workbench
