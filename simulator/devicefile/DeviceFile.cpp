#include "DeviceFile.h"

#include <fstream>
#include <map>
#include <set>

#include "DeviceBuilder.h"
#include "LuaSandbox.h"
#include "Mistake.h"
#include "PrimitiveReader.h"
#include "SignalReader.h"

namespace simulator {

namespace {

constexpr std::size_t kLongestFile = 1024 * 1024;

// All the functions that a device file can call.
std::vector<std::string> constructors() {
    std::vector<std::string> names{"device", "fault"};
    for (auto const& more : {signalConstructors(), primitiveConstructors()}) {
        names.insert(names.end(), more.begin(), more.end());
    }
    for (ObjectType const& type : objectTypes()) {
        names.emplace_back(type.name);
    }
    return names;
}

// Devices that cannot be told apart, by instance or by port, are a mistake.
void expectDifferent(std::vector<Device> const& devices) {
    std::set<std::uint32_t> instances;
    std::set<std::uint16_t> ports;
    for (Device const& device : devices) {
        if (!instances.insert(device.id().instance).second) {
            throw Mistake("device " + device.name() + ": another device has the same instance");
        }
        auto const port = device.settings().port;
        if (port && *port != 0 && !ports.insert(*port).second) {
            throw Mistake("device " + device.name() + ": another device has the same port");
        }
    }
}

std::vector<Device> buildDevices(std::string const& text) {
    LuaSandbox sandbox(constructors());
    std::map<std::string, ScriptValue> defaults;
    ObjectBuilder::Evaluate const evaluate = [&](std::string const& expression) {
        auto const known = defaults.find(expression);
        return known != defaults.end()
                   ? known->second
                   : defaults.emplace(expression, sandbox.evaluate(expression)).first->second;
    };
    std::vector<Device> devices;
    for (ScriptValue const& given : sandbox.run(text)) {
        devices.push_back(buildDevice(given, evaluate));
    }
    if (devices.empty()) {
        throw Mistake("describes no device");
    }
    expectDifferent(devices);
    return devices;
}

}  // namespace

std::vector<Device> loadDeviceFile(std::string const& path) {
    std::ifstream file(path, std::ios::binary);
    std::string text;
    if (file) {
        text.resize(kLongestFile + 1);
        file.read(text.data(), static_cast<std::streamsize>(text.size()));
        text.resize(static_cast<std::size_t>(file.gcount()));
    }
    if (!file.is_open() || file.bad()) {
        throw Mistake(path + ": cannot be read");
    }
    if (text.size() > kLongestFile) {
        throw Mistake(path + ": is longer than a device file may be");
    }
    return parseDeviceFile(path, text);
}

std::vector<Device> parseDeviceFile(std::string const& name, std::string const& text) try {
    return buildDevices(text);
} catch (Mistake const& mistake) {
    std::string const place = mistake.line() != 0 ? name + ":" + std::to_string(mistake.line()) : name;
    throw Mistake(oneLine(place + ": " + mistake.what()), mistake.line());
}

}  // namespace simulator
