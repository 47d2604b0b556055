#include "DeviceReading.h"

#include <algorithm>
#include <filesystem>
#include <ostream>

#include "AddressArgument.h"
#include "BrowseFormats.h"
#include "EdeColumns.h"
#include "Printable.h"
#include "ProjectError.h"

namespace workbench {

void AddTarget(std::vector<BrowseTarget>& targets, BrowseTarget const& target) {
    bool const isKnown = std::any_of(targets.begin(), targets.end(),
                                     [&](BrowseTarget const& known) { return known.peer == target.peer; });
    if (!isKnown) {
        targets.push_back(target);
    }
}

std::vector<BrowseTarget> TargetsOf(std::vector<std::string> const& addresses) {
    std::vector<BrowseTarget> targets;
    for (std::string const& address : addresses) {
        AddTarget(targets, {ParseAddress(address), std::nullopt});
    }
    return targets;
}

DevicesRead ReadDevices(NetworkCommand& network, std::vector<BrowseTarget> const& targets,
                        std::ostream& err) {
    DevicesRead read;
    read.inventory = InventoryOf(BrowsePlant(targets, network.Settings(), network.StopFunction(),
                                             [&network](std::string const& text) { network.Show(text); }));
    network.Clear();
    read.isWhole = !network.IsStopped();
    for (DeviceRecord const& device : read.inventory.devices) {
        read.isWhole = read.isWhole && device.isComplete;
        for (std::string const& note : NotesOf(device)) {
            err << tools::Printable(note) << "\n";
        }
    }
    return read;
}

bool IsPointListFile(std::string const& source) {
    std::string const ending = LettersOf(std::filesystem::path(source).extension().string());
    return ending == "csv" || ending == "txt";
}

void ExpectWhole(ImportReport const& report, std::string const& path) {
    if (!report.IsWhole()) {
        throw ProjectError(tools::Printable(path) +
                           ": not everything in it can be used, and --strict makes that a mistake");
    }
}

}  // namespace workbench
