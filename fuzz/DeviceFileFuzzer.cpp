// The simulator's device files: a text describes devices that can be read, or loading it ends in a message of
// one line.
#include <cstddef>
#include <cstdint>
#include <string>

#include "DeviceFile.h"
#include "Hex.h"
#include "Mistake.h"
#include "Require.h"
#include "Station.h"

using fuzz::Require;

namespace {

void RequireMessage(std::string const& message) {
    Require(message.compare(0, 2, "d:") == 0, "a message begins with the file");
    for (unsigned char const c : message) {
        Require(c >= 0x20 && c != 0x7F, "a message is one line");
    }
}

// Reads all properties of all objects, with segments.
void ReadAll(simulator::Device const& device) {
    simulator::Station station(device);
    using test::operator+;
    for (simulator::BacnetObject const& object : device.Objects()) {
        std::uint32_t const id = static_cast<std::uint32_t>(object.Id().type) << 22 | object.Id().instance;
        test::Octets const name{static_cast<char>(id >> 24), static_cast<char>(id >> 16),
                                static_cast<char>(id >> 8), static_cast<char>(id)};
        test::Octets const request =
            test::Hex("81 0A 00 13 01 04 02 75 01 0E 0C") + name + test::Hex("1E 09 08 1F");
        auto const answers = station.Receive({{0x7F000001, 50000}, request}, {});
        Require(device.Settings().position || answers.size() == 1, "an object can be read");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    try {
        auto const devices =
            simulator::ParseDeviceFile("d", std::string(reinterpret_cast<char const*>(data), size));
        Require(!devices.empty(), "a file describes devices");
        for (simulator::Device const& device : devices) {
            ReadAll(device);
        }
    } catch (simulator::Mistake const& mistake) {
        RequireMessage(mistake.what());
    }
    return 0;
}
