#include "DeviceFile.h"

#include <map>
#include <set>

#include "Copies.h"
#include "DeviceBuilder.h"
#include "FileText.h"
#include "LuaSandbox.h"
#include "Mistake.h"
#include "PrimitiveReader.h"
#include "Printable.h"
#include "RawReader.h"
#include "Routers.h"
#include "SignalReader.h"

namespace simulator {

namespace {

constexpr std::size_t LargestFile = 16;  // MB

// All the functions that a device file can call.
std::vector<std::string> Constructors() {
    std::vector<std::string> names{"device", "fault", "object"};
    for (auto const& more : {SignalConstructors(), PrimitiveConstructors(), RawConstructors()}) {
        names.insert(names.end(), more.begin(), more.end());
    }
    for (ObjectType const& type : AllObjectTypes()) {
        names.emplace_back(type.name);
    }
    return names;
}

// Two devices with the same instance or the same port are a mistake.
void ExpectDifferent(std::vector<Device> const& devices) {
    std::set<std::uint32_t> instances;
    std::map<std::uint16_t, std::string> ports;  // with the name of the router that has it
    for (Device const& device : devices) {
        if (!instances.insert(device.Id().instance).second) {
            throw Mistake("device " + device.Name() + ": another device has the same instance");
        }
        auto const port = device.Settings().port;
        if (!port || *port == 0) {
            continue;
        }
        std::string const& router = device.Settings().router.name;
        auto const [holder, isNew] = ports.emplace(*port, router);
        if (!isNew && (router.empty() || holder->second != router)) {
            throw Mistake("device " + device.Name() + ": another device has the same port");
        }
    }
}

std::vector<Device> BuildDevices(std::string const& text) {
    LuaSandbox sandbox(Constructors());
    std::map<std::string, ScriptValue> defaults;
    ObjectBuilder::Evaluate const evaluate = [&](std::string const& expression) {
        auto const known = defaults.find(expression);
        return known != defaults.end()
                   ? known->second
                   : defaults.emplace(expression, sandbox.Evaluate(expression)).first->second;
    };
    std::vector<Device> devices;
    for (ScriptValue const& given : sandbox.Run(text)) {
        devices.push_back(BuildDevice(given, evaluate));
    }
    if (devices.empty()) {
        throw Mistake("describes no device");
    }
    ExpectDifferent(devices);
    return devices;
}

std::vector<Device> ParseOne(std::string const& name, std::string const& text) try {
    return BuildDevices(text);
} catch (Mistake const& mistake) {
    std::string const place = mistake.Line() != 0 ? name + ":" + std::to_string(mistake.Line()) : name;
    throw Mistake(tools::Printable(place + ": " + mistake.what(), LongestMessage), mistake.Line());
}

std::vector<Device> LoadOne(std::string const& path) try {
    return ParseOne(path, tools::FileText(path, LargestFile));
} catch (tools::UnreadableFile const& reason) {
    throw Mistake(reason.what());
}

void Settle(std::vector<Device>& devices, std::string const& files) try {
    SettleRouters(devices);
} catch (Mistake const& mistake) {
    throw Mistake(tools::Printable(files + ": " + mistake.what(), LongestMessage));
}

}  // namespace

std::vector<Device> LoadDeviceFiles(std::vector<std::string> const& paths, std::uint32_t copies) {
    std::vector<Device> devices;
    for (std::string const& path : paths) {
        for (Device& device : LoadOne(path)) {
            devices.push_back(std::move(device));
        }
    }
    try {
        if (copies > 1 && devices.size() > 1) {
            throw Mistake("multiplies one device, and the device files have " +
                          std::to_string(devices.size()));
        }
        if (copies > 1) {
            devices = WithCopies(devices.front(), copies);
        }
    } catch (Mistake const& mistake) {
        throw mistake.In("--devices");
    }
    Settle(devices, paths.size() == 1 ? paths.front() : "the device files");
    return devices;
}

std::vector<Device> ParseDeviceFile(std::string const& name, std::string const& text) {
    std::vector<Device> devices = ParseOne(name, text);
    Settle(devices, name);
    return devices;
}

}  // namespace simulator
