#include "DeviceBirth.h"

namespace workbench {

namespace {

DeviceBirth Make(BlockSnapshot const& block, std::size_t index, SparkplugNames const& names,
                 bool takesCommands, SparkplugPayload& payload, BirthDetail detail) {
    DeviceBirth birth;
    payload.metrics.clear();
    for (std::size_t i = 0; i < block.variables.size(); ++i) {
        VariableSnapshot const& variable = block.variables[i];
        VariableView const view{block, variable, names.Alias({index, i})};
        bool const isSettable = takesCommands && variable.config->write;
        payload.metrics.push_back(BirthMetric(view, names.MetricNames(index)[i], isSettable, detail));
        if (IsLeftOut(variable, detail)) {
            birth.leftOut.push_back(i);
        }
    }
    birth.payload = EncodePayload(payload);
    return birth;
}

}  // namespace

DeviceBirth MakeDeviceBirth(BlockSnapshot const& block, std::size_t index, SparkplugNames const& names,
                            bool takesCommands, SparkplugPayload head) {
    DeviceBirth birth = Make(block, index, names, takesCommands, head, BirthDetail::Whole);
    for (BirthDetail const less : {BirthDetail::WithoutTexts, BirthDetail::WithoutLongValues}) {
        if (birth.payload.size() > DeviceBirth::LongestWhole) {
            birth = Make(block, index, names, takesCommands, head, less);
        }
    }
    return birth;
}

}  // namespace workbench
