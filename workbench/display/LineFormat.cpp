#include "LineFormat.h"

#include "Printable.h"
#include "QualityText.h"
#include "TimeText.h"
#include "TypeName.h"
#include "ValueText.h"

namespace workbench {

namespace {

std::string VariableColumns(VariableSnapshot const& variable, long long localDiff) {
    VariableConfig const& config = *variable.Config;
    VariableState const& state = variable.State;
    std::string const time = state.Time ? IsoTime(state.Time, localDiff) : "-";
    bool const isSet = variable.Write.Stage != WriteStage::None;
    std::string const write = isSet ? WriteText(variable.Write, localDiff, true) : "-";
    return Printable(config.Name) + "\t" + ObjectText(config) + "\t" + config.Property->Name + "\t" +
           ValueText(state.Value, localDiff) + "\t" + TypeName(config.Type) + "\t" +
           QualityText(state.Status) + "\t" + StatusText(state.Status) + "\t" + time + "\t" + write;
}

}  // namespace

std::string FormatLines(BlockSnapshot const& block) {
    std::string const columns = IsoTime(block.Time, block.LocalDiff) + "\t" + Printable(block.Config->Name) +
                                "\t" + std::to_string(block.Cycle) + "\t" + StateText(block) + "\t";
    std::string lines;
    for (VariableSnapshot const& variable : block.Variables) {
        lines += columns + VariableColumns(variable, block.LocalDiff) + "\n";
    }
    return lines;
}

std::string LinesHeader() {
    return "#time\tblock\tcycle\tstate\tvariable\tobject\tproperty\tvalue\ttype\tquality\tstatus\tvalue "
           "time\twrite\n";
}

}  // namespace workbench
