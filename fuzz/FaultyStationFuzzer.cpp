// A simulated device with faults, which gets commands and datagrams: for every input, what it sends is
// bounded, a wrong command changes nothing, and after the faults are removed it answers properly.
#include <cstddef>
#include <cstdint>
#include <string>

#include "DeviceFile.h"
#include "FaultCommand.h"
#include "FaultyStation.h"
#include "Hex.h"
#include "Input.h"
#include "Require.h"

using fuzz::Input;
using fuzz::Require;
using test::Hex;
using test::Octets;
using test::operator+;

namespace {

constexpr int MostSteps = 32;
constexpr std::size_t MostDeliveries = 1024;
constexpr std::size_t LongestDatagram = 65507;

// Has answers of one datagram, and an octet string that is four segments for a client that accepts 50 octets.
std::string DeviceFile() {
    std::string const octets(2 * 126, '5');
    return R"(device{name = "D", instance = 100, apdu_segment_timeout = 500, number_of_apdu_retries = 1, objects = {
        analog_input{instance = 1, present_value = 1.5}, analog_value{instance = 1},
        octet_string_value{instance = 1, present_value = ")" +
           octets + R"("}}})";
}

// Requests without the invoke id, which is their third octet.
char const* const Requests[] = {
    "02 75 0C 0C 00 00 00 01 19 55",
    "02 75 0E 0C 00 00 00 01 1E 09 55 09 6F 1F",
    "02 75 0F 0C 00 80 00 01 19 55 3E 44 40 00 00 00 3F",
    "02 70 0C 0C 0B C0 00 01 19 55",
    "02 70 0E 0C 0B C0 00 01 1E 09 55 1F",
};

simulator::Device const& Device() {
    static simulator::Device const device = simulator::ParseDeviceFile("fuzz", DeviceFile()).at(0);
    return device;
}

Octets Unicast(Octets const& apdu) {
    std::size_t const size = apdu.size() + 6;
    return Octets{'\x81', 0x0A, static_cast<char>(size >> 8), static_cast<char>(size), 1, 4} + apdu;
}

class Exchange {
public:
    explicit Exchange(Input& played) : input(played), station(Device()) {}

    void Play() {
        for (int i = 0; i < MostSteps && !input.IsEmpty(); ++i) {
            Step(input.Octet());
        }
        Command("clear D");
        RequireAlive();
    }

private:
    // Bits 0 to 2: a command or the kind of a datagram; 3: from another client, or a command without the
    // prefix; 4 to 6: the time before it, in steps of 100 ms.
    void Step(unsigned control) {
        now.sinceStart += std::chrono::milliseconds(100 * (control >> 4 & 7));
        now.local += std::chrono::milliseconds(100 * (control >> 4 & 7));
        RequireBounded(station.Tick(now));
        if ((control & 7) == 1) {
            Command(((control & 8) != 0 ? "" : "fault D ") + input.Text(input.Octet()));
            return;
        }
        std::uint16_t const port = (control & 8) != 0 ? 50001 : 50000;
        RequireBounded(station.Receive({{0x7F000001, port}, Datagram(control & 7)}, now));
    }

    Octets Datagram(unsigned kind) {
        switch (kind) {
            case 0:
                return input.Octets(input.Octet());
            case 2:
                return Unicast(Octets{0x40} + input.Octets(3));
            case 3:
                return Unicast(input.Octets(input.Octet()));
            default:
                return Unicast(Request());
        }
    }

    Octets Request() {
        Octets request = Hex(Requests[input.Below(std::size(Requests))]);
        request.insert(request.begin() + 2, static_cast<char>(input.Octet()));
        return request;
    }

    void Command(std::string const& line) {
        std::size_t const before = station.GetFaults().List().size();
        auto const answer = simulator::RunFaultCommand(line, {{"D", &station.GetFaults()}});
        for (unsigned char const c : answer.text) {
            Require((c >= 0x20 && c != 0x7F) || c == '\n', "an answer consists of printable lines");
        }
        Require(!answer.isMistake || station.GetFaults().List().size() == before,
                "a wrong command changes nothing");
    }

    static void RequireBounded(std::vector<simulator::Delivery> const& deliveries) {
        Require(deliveries.size() <= MostDeliveries, "the number of datagrams is bounded");
        for (simulator::Delivery const& delivery : deliveries) {
            Require(delivery.datagram.octets.size() <= LongestDatagram, "a datagram can be sent");
            Require(delivery.delay.count() >= 0, "nothing is sent in the past");
        }
    }

    // Protocol_Version of the device, which cannot be written.
    void RequireAlive() {
        Octets const request = Unicast(Hex("02 70 09 0C 0C 02 3F FF FF 19 62"));
        auto const answers = station.Receive({{0x7F000001, 50002}, request}, now);
        Require(answers.size() == 1 && answers.front().delay.count() == 0 && !answers.front().fromElsewhere,
                "the device answers once and without delay");
        Octets const expected = Hex("81 0A 00 14 01 00 30 09 0C 0C 02 00 00 64 19 62 3E 21 01 3F");
        Require(answers.front().datagram.octets == expected, "the device answers properly");
    }

    Input& input;
    simulator::FaultyStation station;
    simulator::Moment now;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Input input(data, size);
    Exchange(input).Play();
    return 0;
}
