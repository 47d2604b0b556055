// A simulated device that gets datagrams: for every input, what it sends is well-formed, no longer than the
// client accepts, and has the request's invoke id; and it still answers properly afterwards.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "DeviceFile.h"
#include "Hex.h"
#include "Input.h"
#include "Require.h"
#include "Station.h"

using fuzz::Input;
using fuzz::Require;
using test::Octets;

namespace {

constexpr int MostDatagrams = 48;
constexpr std::size_t MostTransactions = 32;
constexpr std::size_t LargestWindow = 127;
constexpr std::size_t LongestApdu = 1476;
constexpr std::size_t LongestHeader = 4 + 2 + 3 + 18 + 3 + 255 + 1;  // BVLC and NPDU with two addresses

constexpr char DeviceFile[] = R"(
device{name = "Plain", instance = 100, apdu_segment_timeout = 500, number_of_apdu_retries = 1, objects = {
    analog_input{instance = 1, present_value = 1.5},
    analog_value{instance = 2, present_value = ramp{from = 0, to = 10, period = 60}, description = "ramp"},
    binary_output{instance = 3}, multi_state_value{instance = 4, state_text = {"off", "on"}},
    schedule{instance = 5}, large_analog_value{instance = 7},
    date_value{instance = 8}, time_value{instance = 9}, bit_string_value{instance = 10}, loop{instance = 11},
    octet_string_value{instance = 12}, datetime_value{instance = 13}}}
device{name = "Routed", instance = 101, router = {network = 5, mac = "0A14"}, max_apdu_length_accepted = 50,
    writes = "lenient", objects = {analog_value{instance = 2, description = "behind a router"}}}
)";

std::vector<simulator::Device> const& Devices() {
    static std::vector<simulator::Device> const devices = simulator::ParseDeviceFile("fuzz", DeviceFile);
    return devices;
}

unsigned At(Octets const& octets, std::size_t index) {
    Require(index < octets.size(), "a datagram holds all of its parts");
    return static_cast<unsigned char>(octets[index]);
}

// The APDU of a datagram, whose header must be good; empty for a network message or a BVLC-Result.
Octets ApduOf(Octets const& datagram) {
    Require(At(datagram, 0) == 0x81, "the type is BACnet/IP");
    Require((At(datagram, 2) << 8 | At(datagram, 3)) == datagram.size(),
            "the length is that of the datagram");
    if (At(datagram, 1) == 0) {
        Require(datagram.size() == 6, "a BVLC-Result has six octets");
        return {};
    }
    Require(At(datagram, 1) == 0x0A && At(datagram, 4) == 1, "a unicast NPDU of version 1 is sent");
    unsigned const control = At(datagram, 5);
    Require((control & 0x50) == 0, "the reserved bits are clear");
    std::size_t position = 6;
    for (unsigned const flag : {0x20u, 0x08u}) {
        position += (control & flag) != 0 ? 3 + At(datagram, position + 2) : 0;
    }
    position += (control & 0x20) != 0 ? 1 : 0;
    if ((control & 0x80) != 0) {
        return {};
    }
    Require(position < datagram.size() && position <= LongestHeader, "an APDU follows the header");
    return Octets(datagram.begin() + static_cast<std::ptrdiff_t>(position), datagram.end());
}

class Exchange {
public:
    explicit Exchange(Input& played)
        : input(played), routed(input.Octet() % 2 != 0), station(Devices().at(routed ? 1 : 0)) {}

    void Play() {
        for (int i = 0; i < MostDatagrams && !input.IsEmpty(); ++i) {
            Step(input.Octet());
        }
        RequireAlive();
    }

private:
    // Bits 0 to 2: which part of the datagram the input supplies; 3: from another client; 4 to 6: the time
    // before it, in steps of 100 ms.
    void Step(unsigned control) {
        now.sinceStart += std::chrono::milliseconds(100 * (control >> 4 & 7));
        now.local += std::chrono::milliseconds(100 * (control >> 4 & 7));
        auto const repeated = station.Tick(now);
        Require(repeated.size() <= MostTransactions * LargestWindow,
                "a tick repeats at most the windows of all transactions");
        for (simulator::Datagram const& answer : repeated) {
            RequireApdu(ApduOf(answer.octets));
        }
        Octets const apdu = Apdu(control & 7);
        Ask((control & 7) == 0 ? input.Octets(input.Octet()) : Datagram(control & 7, apdu),
            (control & 8) != 0 ? 50001 : 50000, (control & 7) >= 3 ? apdu : Octets());
    }

    // The apdu is that of the datagram, empty if it is not known.
    void Ask(Octets const& datagram, std::uint16_t port, Octets const& apdu) {
        auto const answers = station.Receive({{0x7F000001, port}, datagram}, now);
        Require(answers.size() <= LargestWindow, "an answer is at most a window");
        for (simulator::Datagram const& answer : answers) {
            Octets const answered = ApduOf(answer.octets);
            RequireApdu(answered);
            bool const isRequest = apdu.size() >= 4 && (At(apdu, 0) >> 4) == 0;
            if (isRequest && !answered.empty()) {
                RequireAnswerTo(apdu, answered);
            }
        }
    }

    static void RequireApdu(Octets const& apdu) {
        Require(apdu.size() <= LongestApdu, "an APDU is no longer than BACnet/IP allows");
        if (apdu.empty()) {
            return;
        }
        unsigned const type = At(apdu, 0) >> 4;
        Require(type == 1 || type == 2 || type == 3 || (type >= 5 && type <= 7), "an APDU is an answer");
        Require(type == 1 || apdu.size() >= 3, "an answer has its header");
    }

    static void RequireAnswerTo(Octets const& request, Octets const& answer) {
        static constexpr std::size_t lengths[] = {50, 128, 206, 480, 1024, 1476};
        Require(At(answer, 1) == At(request, 2), "an answer has the request's invoke id");
        Require(answer.size() <= lengths[std::min(At(request, 1) & 15, 5u)],
                "an answer is no longer than the client accepts");
        Require((At(answer, 0) & 0xF8) != 0x38 || (At(request, 0) & 2) != 0,
                "an answer is segmented only if the client accepts segments");
    }

    Octets Datagram(unsigned kind, Octets const& apdu) {
        using test::operator+;
        switch (kind) {
            case 1:
                return Framed(static_cast<char>(input.Octet()), input.Octets(input.Octet()));
            case 2:
                return Framed(0x0A, Octets{1} + input.Octets(input.Octet()));
            case 6:
                return Framed(0x0A, test::Hex("01 0C 00 05 01 07") + apdu);
            case 7:
                return Framed(0x0A, test::Hex("01 24 00 05 02 0A 14 FF") + apdu);
            default:
                return Framed(0x0A,
                              (routed ? test::Hex("01 24 00 05 02 0A 14 FF") : test::Hex("01 04")) + apdu);
        }
    }

    // A request with a good header, a Segment-ACK, or any octets.
    Octets Apdu(unsigned kind) {
        using test::operator+;
        if (kind < 3) {
            return {};
        }
        if (kind == 3) {
            return input.Octets(input.Octet());
        }
        static constexpr char services[] = {0x0C, 0x0E, 0x0F};
        unsigned const form = input.Octet();
        if (form >= 0xE0) {
            return Octets{0x40, 7, static_cast<char>(input.Octet()), static_cast<char>(form & 0x1F)};
        }
        return Octets{static_cast<char>(form & 2), static_cast<char>(input.Octet()), 7, services[form % 3]} +
               input.Octets(input.Octet());
    }

    static Octets Framed(char function, Octets const& npdu) {
        using test::operator+;
        std::size_t const size = npdu.size() + 4;
        return Octets{'\x81', function, static_cast<char>(size >> 8), static_cast<char>(size)} + npdu;
    }

    // Protocol_Version of the device, which cannot be written.
    void RequireAlive() {
        using test::operator+;
        Octets const head = routed ? test::Hex("01 24 00 05 02 0A 14 FF") : test::Hex("01 04");
        Octets const request =
            Framed(0x0A, head + test::Hex("02 70 09 0C 0C 02") + test::Hex("3F FF FF 19 62"));
        auto const answers = station.Receive({{0x7F000001, 50000}, request}, now);
        Require(answers.size() == 1, "the device still answers");
        Octets const expected = test::Hex("30 09 0C 0C 02 3F FF FF 19 62 3E 21 01 3F");
        Octets const apdu = ApduOf(answers.front().octets);
        Require(apdu.size() == expected.size() && apdu.back() == expected.back() &&
                    std::equal(apdu.begin(), apdu.begin() + 3, expected.begin()),
                "the device still answers properly");
    }

    Input& input;
    bool const routed;
    simulator::Station station;
    simulator::Moment now;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Input input(data, size);
    Exchange(input).Play();
    return 0;
}
