// The observer of the workbench between a client and a network that both come from the input. For every
// input: each call reaches the environment below with the same octets and returns what that returns, except
// that a socket with an open request may stay open for a while; the causes of a cycle are bounded in number
// and length; no exception leaves it.
//
// The input is a list of calls, each an octet: its lowest three bits are the call, the next two the socket.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <set>
#include <string>

#include "Input.h"
#include "Observation.h"
#include "Require.h"
#include "Whereabouts.h"
#include "dorvelshare/Trace.h"

using fuzz::Input;
using fuzz::Require;
using standard::Octets;
using workbench::BlockConfig;

namespace {

enum Call : unsigned { Send, SendRead, SendWrite, Receive, ReceiveAnswer, Wait, Close, EndCycle };

constexpr int MostCalls = 64;
constexpr std::size_t MostLeft = 8;
constexpr std::size_t LongestText = 400;
constexpr long long Millisecond = 10'000;

sockaddr_in Address(unsigned station) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(0x0A000001 + station);
    address.sin_port = htons(47808);
    return address;
}

// Notes what it was called with. What arrives is set before each call.
class Network : public dorvel::HostEnvironment {
public:
    int Open(unsigned short) override { return -1; }
    unsigned short LocalPort(int) override { return 0; }
    void Close(int handle) override { open.erase(handle); }
    bool Send(int handle, sockaddr_in const&, void const* data, int length) override {
        auto const* const first = static_cast<char const*>(data);
        open.insert(handle);
        sent.assign(first, first + length);
        return true;
    }
    int Receive(int handle, sockaddr_in& sender, void* buffer, int size, int timeout) override {
        if (handle != arrivingOn) {
            time += timeout * Millisecond;
            return -1;
        }
        arrivingOn = -1;
        sender = Address(station);
        std::size_t const length = std::min(arriving.size(), static_cast<std::size_t>(size));
        std::copy_n(arriving.begin(), length, static_cast<char*>(buffer));
        return static_cast<int>(length);
    }
    long long Now() override { return 133485408000000000 + time; }
    long long SteadyNow() override { return time; }
    long long LocalTimeDiff() override { return 0; }

    std::set<int> open;
    Octets sent;
    Octets arriving;
    int arrivingOn = -1;
    unsigned station = 0;
    long long time = 0;
};

BlockConfig MakeBlock() {
    BlockConfig block;
    block.name = "B";
    for (int number = 1; number <= 2; ++number) {
        for (char const* const property : {"present-value", "description"}) {
            workbench::VariableConfig variable;
            variable.name = property;
            variable.objectType = workbench::ObjectTypes().FindName("analog-value");
            variable.property = workbench::Properties().FindName(property);
            variable.objectNumber = number;
            variable.write = true;
            block.variables.push_back(variable);
        }
    }
    return block;
}

Octets Frame(Octets const& apdu) {
    Octets frame{char(0x81), 0x0A, 0, 0, 1, 4};
    frame.insert(frame.end(), apdu.begin(), apdu.end());
    frame[2] = static_cast<char>(frame.size() >> 8);
    frame[3] = static_cast<char>(frame.size());
    return frame;
}

class Play {
public:
    explicit Play(Input& played) : input(played), observation(network) {
        blocks.push_back(MakeBlock());
        observation.Watch(blocks);
        workbench::Here() = {&blocks.front(), nullptr, nullptr};
        observation.BeginCycle(blocks.front());
    }
    ~Play() { workbench::Here() = {}; }
    Play(Play const&) = delete;
    Play& operator=(Play const&) = delete;

    void Step() {
        unsigned const octet = input.Octet();
        int const handle = static_cast<int>(octet >> 3 & 3);
        switch (octet & 7) {
            case Send:
                Sends(handle, input.Octets(input.Octet()));
                break;
            case SendRead:
                Sends(handle, Frame({2, 0x74, Id(), 14, 0x0C, 0, char(0x80), 0, char(input.Octet()), 0x1E, 9,
                                     85, 9, 28, 9, 111, 0x1F}));
                break;
            case SendWrite:
                workbench::Here().variable = &blocks.front().variables.front();
                Sends(handle, Frame({0, 4, Id(), 15, 0x0C, 0, char(0x80), 0, 1, 0x19, 85, 0x3E, 0x21, 5, 0x3F,
                                     0x49, 8}));
                break;
            case Receive:
                Receives(handle, input.Octets(input.Octet()));
                break;
            case ReceiveAnswer:
                Receives(handle, Frame(input.Octets(input.Octet())));
                break;
            case Wait:
                Waits(handle, static_cast<int>(input.Octet()) * 8);
                break;
            case Close:
                observation.Close(handle);
                Require(network.open.size() <= 4 + MostLeft, "sockets that were left are bounded");
                break;
            default:
                EndsCycle();
        }
    }

    void EndsCycle() {
        auto const causes = observation.EndCycle(blocks.front());
        Require(causes.size() <= workbench::CauseList::Most, "the causes of a cycle are bounded");
        for (workbench::Cause const& cause : causes) {
            Require(cause.text.size() <= LongestText, "the text of a cause is bounded");
            Require(!cause.text.empty() && cause.count > 0, "a cause has a text and a count");
        }
        observation.BeginCycle(blocks.front());
    }

private:
    char Id() { return static_cast<char>(++invokeId); }

    void Sends(int handle, Octets const& datagram) {
        Require(observation.Send(handle, Address(0), datagram.data(), static_cast<int>(datagram.size())),
                "a datagram is sent");
        Require(network.sent == datagram, "the octets that are sent are the same");
    }

    void Receives(int handle, Octets const& datagram) {
        network.arriving = datagram;
        network.arrivingOn = handle;
        network.station = input.Octet() % 4 == 3 ? 1 : 0;
        char buffer[1500];
        sockaddr_in sender{};
        int const length = observation.Receive(handle, sender, buffer, sizeof buffer, 1000);
        Require(length == static_cast<int>(datagram.size()) &&
                    std::equal(datagram.begin(), datagram.end(), buffer),
                "the octets that are received are the same");
    }

    void Waits(int handle, int timeout) {
        network.arrivingOn = -1;
        long long const begin = network.time;
        char buffer[1500];
        sockaddr_in sender{};
        Require(observation.Receive(handle, sender, buffer, sizeof buffer, timeout) == -1,
                "nothing is received");
        Require(network.time == begin + timeout * Millisecond,
                "a wait lasts as long as without the observer");
    }

    Input& input;
    Network network;
    workbench::Observation observation;
    std::deque<BlockConfig> blocks;
    unsigned invokeId = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    dorvel::SetLogSink([](std::string_view) {});
    Input input(data, size);
    Play play(input);
    for (int i = 0; i < MostCalls && !input.IsEmpty(); ++i) {
        play.Step();
    }
    play.EndsCycle();
    return 0;
}
