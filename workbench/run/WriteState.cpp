#include "WriteState.h"

#include "Printable.h"
#include "ShownValue.h"

namespace workbench {

char const* StageName(WriteStage stage) {
    switch (stage) {
        case WriteStage::Pending:
            return "pending";
        case WriteStage::Written:
            return "written";
        case WriteStage::Unconfirmed:
            return "unconfirmed";
        case WriteStage::Differs:
            return "differs";
        case WriteStage::Refused:
            return "refused";
        default:
            return "";
    }
}

std::string WriteText(VariableConfig const& variable, WriteState const& write, long long localDiff,
                      bool withReason) {
    return WriteText(ShownValue(variable, write.value, localDiff), write, withReason);
}

std::string WriteText(std::string const& value, WriteState const& write, bool withReason) {
    if (write.stage == WriteStage::None) {
        return {};
    }
    std::string const reason =
        withReason && !write.reason.empty() ? " (" + tools::Printable(write.reason) + ")" : std::string();
    bool const hasDevice = !withReason && write.stage == WriteStage::Differs && !write.device.empty();
    return value + " " + StageName(write.stage) + reason +
           (hasDevice ? " (" + tools::Printable(write.device) + ")" : "");
}

}  // namespace workbench
