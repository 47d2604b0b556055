#include "DeviceFile.h"

#include <map>
#include <set>

#include "DeviceBuilder.h"
#include "FileText.h"
#include "LuaSandbox.h"
#include "Mistake.h"
#include "PrimitiveReader.h"
#include "Printable.h"
#include "RawReader.h"
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
    std::set<std::uint16_t> ports;
    for (Device const& device : devices) {
        if (!instances.insert(device.Id().instance).second) {
            throw Mistake("device " + device.Name() + ": another device has the same instance");
        }
        auto const port = device.Settings().port;
        if (port && *port != 0 && !ports.insert(*port).second) {
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

}  // namespace

std::vector<Device> LoadDeviceFile(std::string const& path) try {
    return ParseDeviceFile(path, tools::FileText(path, LargestFile));
} catch (tools::UnreadableFile const& reason) {
    throw Mistake(reason.what());
}

std::vector<Device> ParseDeviceFile(std::string const& name, std::string const& text) try {
    return BuildDevices(text);
} catch (Mistake const& mistake) {
    std::string const place = mistake.Line() != 0 ? name + ":" + std::to_string(mistake.Line()) : name;
    throw Mistake(tools::Printable(place + ": " + mistake.what(), LongestMessage), mistake.Line());
}

}  // namespace simulator
