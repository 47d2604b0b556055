#include "RunStatus.h"

#include <algorithm>
#include <iterator>

#include "Printable.h"

namespace workbench {

namespace {

std::string FaultsText(std::vector<SharedSnapshot> const& faults) {
    constexpr std::size_t most = 3;
    std::string text = std::to_string(faults.size()) + " in fault: ";
    for (std::size_t i = 0; i < std::min(most, faults.size()); ++i) {
        BlockSnapshot const& block = *faults[i];
        text += (i == 0 ? "" : ", ") + tools::Printable(block.config->name) + " (" +
                tools::Printable(FaultText(block)) + ")";
    }
    return faults.size() > most ? text + " and " + std::to_string(faults.size() - most) + " more" : text;
}

}  // namespace

std::string RunStatus(std::vector<SharedSnapshot> const& blocks, std::vector<OutletState> const& outlets) {
    std::vector<SharedSnapshot> faults;
    std::copy_if(blocks.begin(), blocks.end(), std::back_inserter(faults),
                 [](SharedSnapshot const& block) { return IsFault(*block); });
    auto const waiting = std::count_if(blocks.begin(), blocks.end(),
                                       [](SharedSnapshot const& block) { return block->cycle == 0; });
    std::string text = std::to_string(blocks.size()) + (blocks.size() == 1 ? " block" : " blocks");
    text += faults.empty() ? "" : ", " + FaultsText(faults);
    text += waiting == 0 ? "" : ", " + std::to_string(waiting) + " before the first cycle";
    for (OutletState const& outlet : outlets) {
        if (outlet.health != OutletHealth::Good) {
            text += "; " + outlet.name + " " + HealthName(outlet.health) + (outlet.text.empty() ? "" : ": ") +
                    tools::Printable(outlet.text);
        }
    }
    return text;
}

}  // namespace workbench
