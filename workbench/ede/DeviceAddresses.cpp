#include "DeviceAddresses.h"

#include <algorithm>
#include <string_view>

#include "AddressArgument.h"
#include "FieldValue.h"
#include "FileText.h"
#include "Printable.h"
#include "ProjectError.h"

namespace workbench {

namespace {

constexpr std::uint32_t LastInstance = standard::ObjectId::LastInstance - 1;
constexpr std::string_view Separators = " \t;,=";

std::string_view Trimmed(std::string_view text) {
    std::size_t const first = text.find_first_not_of(" \t\r\"");
    return first == std::string_view::npos
               ? std::string_view()
               : text.substr(first, text.find_last_not_of(" \t\r\";") - first + 1);
}

void Add(AddressTable& table, std::string_view instanceText, std::string_view address,
         std::string const& where) {
    auto const instance = WholeNumberOf(instanceText, LastInstance);
    if (!instance) {
        throw ProjectError(where + tools::Quoted(instanceText) +
                           " is not a device instance; allowed is 0 to " + std::to_string(LastInstance) +
                           ", as in 2001=192.168.1.20");
    }
    standard::Peer peer;
    try {
        peer = ParseAddress(address);
    } catch (AddressMistake const& mistake) {
        throw ProjectError(where + mistake.what());
    }
    auto const known = table.emplace(*instance, peer);
    if (!known.second && !(known.first->second == peer)) {
        throw ProjectError(where + "device " + std::to_string(*instance) + " has the address " +
                           AddressText(known.first->second) + " already, and now " + AddressText(peer) +
                           "; a device has one");
    }
}

}  // namespace

void AddDeviceAddress(AddressTable& table, std::string const& text) {
    std::size_t const equals = text.find('=');
    std::string_view const all = text;
    bool const hasAddress = equals != std::string::npos;
    Add(table, Trimmed(all.substr(0, equals)),
        hasAddress ? Trimmed(all.substr(equals + 1)) : std::string_view(), tools::Quoted(text) + ": ");
}

AddressTable ReadAddressTable(std::string const& path) {
    std::string text;
    try {
        text = tools::FileText(path, 16);
    } catch (tools::UnreadableFile const& error) {
        throw ProjectError(error.what());
    }
    AddressTable table;
    std::size_t number = 0;
    std::size_t begin = text.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0;
    for (bool isFirst = true; begin < text.size();) {
        std::size_t const end = std::min(text.find('\n', begin), text.size());
        std::string_view const line = Trimmed(std::string_view(text).substr(begin, end - begin));
        begin = end + 1;
        ++number;
        if (line.empty() || line.front() == '#') {
            continue;
        }
        bool const isHeading = isFirst && (line.front() < '0' || line.front() > '9');
        isFirst = false;
        if (!isHeading) {
            std::size_t const separator = std::min(line.find_first_of(Separators), line.size());
            std::size_t const address = std::min(line.find_first_not_of(" \t;,=\"", separator), line.size());
            Add(table, Trimmed(line.substr(0, separator)), Trimmed(line.substr(address)),
                tools::Printable(path) + ":" + std::to_string(number) + ": ");
        }
    }
    return table;
}

void Resolve(Inventory& inventory, AddressTable const& table, ImportReport& report) {
    for (DeviceRecord& device : inventory.devices) {
        auto const known = table.find(device.Instance());
        if (!device.peer && known != table.end()) {
            device.peer = known->second;
        }
        if (!device.peer) {
            std::string const points = std::to_string(device.objects.size());
            report.lines.push_back(
                {"device " + std::to_string(device.Instance()), 0, 0, "", ImportLine::Effect::DeviceNotUsed,
                 "has no address, so its points (" + points + ") are left out; give one with -D " +
                     std::to_string(device.Instance()) + "=ADDRESS, --addresses or discover"});
        }
    }
}

}  // namespace workbench
