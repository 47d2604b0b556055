#include "Copies.h"

#include "Mistake.h"

namespace simulator {

namespace {

constexpr std::uint32_t LastPort = 65535;

[[noreturn]] void Fail(std::uint32_t count, char const* what) {
    throw Mistake("there are not " + std::to_string(count) + ' ' + what + " from that of the device file on");
}

// Counts in the octets of an address, the last one first. False if all of them are used up.
bool Advance(Octets& mac) {
    for (std::size_t i = mac.size(); i-- > 0;) {
        mac[i] = static_cast<char>(OctetValue(mac[i]) + 1);
        if (mac[i] != 0) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::vector<Device> WithCopies(Device const& device, std::uint32_t count) {
    if (count > ObjectId::LastInstance - device.Id().instance) {
        Fail(count, "instances");
    }
    std::vector<Device> devices{device};
    DeviceSettings settings = device.Settings();
    bool const sharesPort = !settings.router.name.empty() || settings.port == 0;
    for (std::uint32_t i = 1; i < count; ++i) {
        if (settings.position && !Advance(settings.position->mac)) {
            Fail(count, "addresses on the network of the router");
        }
        if (settings.port && !sharesPort) {
            if (*settings.port == LastPort) {
                Fail(count, "ports");
            }
            ++*settings.port;
        }
        std::string const name = device.Name() + "-" + std::to_string(i + 1);
        devices.push_back(device.Copy(device.Id().instance + i, name, settings));
    }
    return devices;
}

}  // namespace simulator
