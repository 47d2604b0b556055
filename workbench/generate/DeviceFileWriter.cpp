#include "DeviceFileWriter.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <set>

#include "HexText.h"
#include "LuaText.h"
#include "ObjectNames.h"
#include "ObjectText.h"
#include "Printable.h"

namespace workbench {

namespace {

constexpr std::uint16_t DeviceType = 8;
constexpr std::size_t LongestName = 60;
constexpr std::size_t DeviceIndent = 4;
constexpr std::size_t ObjectIndent = 12;

// The name of the router behind which each device is, by its position; empty for the local network.
std::vector<std::string> RouterNames(Inventory const& inventory) {
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < inventory.devices.size(); ++i) {
        order.push_back(i);
    }
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return inventory.devices[a].Instance() < inventory.devices[b].Instance();
    });
    std::map<standard::Endpoint, std::string> routers;
    std::vector<std::string> names(inventory.devices.size());
    for (std::size_t const i : order) {
        auto const& peer = inventory.devices[i].peer;
        if (peer && peer->remote) {
            names[i] =
                routers.emplace(peer->endpoint, "router-" + std::to_string(routers.size() + 1)).first->second;
        }
    }
    return names;
}

std::string FileStem(DeviceRecord const& device) {
    std::string stem;
    for (unsigned char const c : NameOf(device.device).substr(0, LongestName)) {
        if (c < 0x80 && std::isalnum(c) != 0) {
            stem += static_cast<char>(c);
        } else if (!stem.empty() && stem.back() != '-') {
            stem += '-';
        }
    }
    stem += stem.empty() ? "device-" : stem.back() == '-' ? "" : "-";
    return stem + std::to_string(device.Instance());
}

bool CanBeRouted(DeviceRecord const& device) {
    auto const& remote = device.peer->remote;
    return remote->network != 0 && remote->network != 65535 && !remote->mac.empty() &&
           remote->mac.size() <= 18;
}

class Writer {
public:
    Writer(DeviceRecord const& deviceRecord, std::string routerName)
        : device(deviceRecord), router(std::move(routerName)) {}

    DeviceFile Write() {
        std::string const objects = Objects();
        std::string const blanks(DeviceIndent, ' ');
        file.text = Head() + "device{\n" + blanks + "instance = " + std::to_string(device.Instance()) +
                    ",\n" + Router() + DeviceFields(device.device, DeviceIndent) + blanks + "objects = {\n" +
                    objects + blanks + "},\n}\n";
        AddLostDefaults();
        return std::move(file);
    }

private:
    std::string Head() const {
        std::string text =
            "A copy of device " + std::to_string(device.Instance()) + ", made by dorvel-workbench new.";
        if (!device.isComplete) {
            text += "\nPARTIAL: not everything of the device was read.";
        }
        for (std::string const& line : file.leftOut) {
            text += "\nNot copied: " + tools::Printable(line);
        }
        return LuaComment(text) + '\n';
    }

    std::string Router() const {
        if (router.empty() || !CanBeRouted(device)) {
            return {};
        }
        auto const& remote = *device.peer->remote;
        return std::string(DeviceIndent, ' ') + "router = {network = " + std::to_string(remote.network) +
               ", mac = \"" + tools::HexText(remote.mac, tools::HexDigits::Upper) + "\", name = \"" + router +
               "\"},\n";
    }

    std::string Objects() {
        std::string text;
        std::set<standard::ObjectId> seen;
        for (ObjectRecord const& object : device.objects) {
            if (object.id.type == DeviceType || !seen.insert(object.id).second) {
                continue;
            }
            std::string const why = WhyNot(object);
            if (!why.empty()) {
                file.leftOut.push_back(standard::ObjectText(object.id) + ": " + why);
                continue;
            }
            text += Object(object);
            ++file.objects;
        }
        return text;
    }

    // They are not in the text: a copy of the copy would not have them.
    void AddLostDefaults() {
        for (ObjectRecord const& object : device.objects) {
            if (object.id.type != DeviceType && LacksDefault(object)) {
                file.leftOut.push_back(
                    standard::ObjectText(object.id) +
                    ": its relinquish-default, since its priority-array is not one of its values");
            }
        }
    }

    static std::string WhyNot(ObjectRecord const& object) {
        if (object.id.instance >= standard::ObjectId::LastInstance) {
            return "no object can have this instance number";
        }
        bool const isRead = std::any_of(object.properties.begin(), object.properties.end(),
                                        [](auto const& property) { return !property.second.failure; });
        return isRead ? std::string() : "none of its properties could be read";
    }

    static std::string Object(ObjectRecord const& object) {
        std::string const constructor = ConstructorOf(object.id);
        std::string const type =
            constructor == "object" ? "type = " + std::to_string(object.id.type) + ", " : std::string();
        return std::string(8, ' ') + constructor + "{\n" + std::string(ObjectIndent, ' ') + type +
               "instance = " + std::to_string(object.id.instance) + ",\n" +
               ObjectFields(object, ObjectIndent) + std::string(8, ' ') + "},\n";
    }

    DeviceRecord const& device;
    std::string const router;
    DeviceFile file;
};

}  // namespace

std::vector<DeviceFile> WriteDeviceFiles(Inventory const& inventory) {
    std::vector<std::string> const routers = RouterNames(inventory);
    std::vector<DeviceFile> files;
    std::set<std::string> names;
    for (std::size_t i = 0; i < inventory.devices.size(); ++i) {
        DeviceRecord const& device = inventory.devices[i];
        if (device.Instance() >= standard::ObjectId::LastInstance) {
            continue;
        }
        DeviceFile file = Writer(device, routers[i]).Write();
        std::string const stem = FileStem(device);
        file.name = stem + ".lua";
        for (int number = 2; !names.insert(file.name).second; ++number) {
            file.name = stem + '-' + std::to_string(number) + ".lua";
        }
        files.push_back(std::move(file));
    }
    return files;
}

}  // namespace workbench
