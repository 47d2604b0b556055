#include "DeviceFile.h"

#include <fstream>
#include <map>
#include <set>

#include "DeviceBuilder.h"
#include "LuaSandbox.h"
#include "Mistake.h"
#include "PrimitiveReader.h"
#include "Printable.h"
#include "SignalReader.h"

namespace simulator {

namespace {

constexpr std::size_t LongestFile = 1024 * 1024;

// All the functions that a device file can call.
std::vector<std::string> Constructors() {
    std::vector<std::string> names{"device", "fault"};
    for (auto const& more : {SignalConstructors(), PrimitiveConstructors()}) {
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

std::vector<Device> LoadDeviceFile(std::string const& path) {
    std::ifstream file(path, std::ios::binary);
    std::string text;
    if (file) {
        text.resize(LongestFile + 1);
        file.read(text.data(), static_cast<std::streamsize>(text.size()));
        text.resize(static_cast<std::size_t>(file.gcount()));
    }
    if (!file.is_open() || file.bad()) {
        throw Mistake(path + ": cannot be read");
    }
    if (text.size() > LongestFile) {
        throw Mistake(path + ": is longer than a device file may be");
    }
    return ParseDeviceFile(path, text);
}

std::vector<Device> ParseDeviceFile(std::string const& name, std::string const& text) try {
    return BuildDevices(text);
} catch (Mistake const& mistake) {
    std::string const place = mistake.Line() != 0 ? name + ":" + std::to_string(mistake.Line()) : name;
    throw Mistake(tools::Printable(place + ": " + mistake.what(), LongestMessage), mistake.Line());
}

}  // namespace simulator
