#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <vector>

#include "FakeEnvironment.h"
#include "Hex.h"
#include "Observation.h"
#include "Snapshots.h"
#include "Whereabouts.h"

namespace test {

constexpr long long Millisecond = 10000;

// A network in virtual time: a datagram comes at its time, on its socket.
class TimedNetwork : public FakeEnvironment {
public:
    int Receive(int handle, sockaddr_in& sender, void* buffer, int size, int timeout) override {
        long long const end = time + timeout * Millisecond;
        auto first = datagrams.end();
        for (auto datagram = datagrams.begin(); datagram != datagrams.end(); ++datagram) {
            bool const isEarlier = first == datagrams.end() || datagram->time < first->time;
            first = datagram->handle == handle && isEarlier ? datagram : first;
        }
        if (first == datagrams.end() || first->time > end) {
            time = end;
            return -1;
        }
        time = std::max(time, first->time);
        sender = first->sender;
        auto const length = std::min(first->octets.size(), static_cast<std::size_t>(size));
        std::memcpy(buffer, first->octets.data(), length);
        datagrams.erase(first);
        return static_cast<int>(length);
    }
    void Comes(int handle, long long when, Octets octets, sockaddr_in const& sender) {
        datagrams.push_back({handle, when, sender, std::move(octets)});
    }

private:
    struct Datagram {
        int handle;
        long long time;
        sockaddr_in sender;
        Octets octets;
    };
    std::deque<Datagram> datagrams;
};

// A block with these variables on a device, whose cycle the test plays call by call:
//   A  analog-input 1 present-value      B  analog-input 1 description
//   C  analog-input 2 present-value      D  integer-value 1 present-value
// All but C can be written.
class Dialogue : public testing::Test {
protected:
    static constexpr int Handle = 7;

    Dialogue() {
        network.time = Noon;
        dorvel::SetEnvironment(&network);
        blocks.emplace_back();
        NameRow const* const input = workbench::ObjectTypes().FindName("analog-input");
        NameRow const* const integer = workbench::ObjectTypes().FindName("integer-value");
        NameRow const* const present = workbench::Properties().FindName("present-value");
        NameRow const* const words = workbench::Properties().FindName("description");
        Block().name = "AHU";
        Block().variables = {{"A", OpcUaType_Float, input, present, 1, 0, 0, true},
                             {"B", OpcUaType_String, input, words, 1, 0, 0, true},
                             {"C", OpcUaType_Float, input, present, 2},
                             {"D", OpcUaType_Int32, integer, present, 1, 0, 0, true}};
        observation.Watch(blocks);
        workbench::Here() = {&Block(), nullptr, nullptr};
        observation.BeginCycle(Block());
    }
    ~Dialogue() override {
        workbench::Here() = {};
        dorvel::SetEnvironment(nullptr);
    }

    using NameRow = workbench::NameRow;

    workbench::BlockConfig& Block() { return blocks.front(); }
    workbench::VariableConfig& Variable(std::size_t index) { return Block().variables[index]; }
    workbench::PointTable const& Points() { return observation.Of(Block())->Points(); }
    workbench::PointState const& Point(std::size_t index) { return Points().StateOf(Variable(index)); }

    // A datagram with an APDU that is given in hexadecimal digits.
    static Octets Frame(Octets const& apdu, std::string const& npdu = "01 00") {
        Octets frame = Hex("81 0A 00 00 " + npdu) + apdu;
        frame[2] = static_cast<char>(frame.size() >> 8);
        frame[3] = static_cast<char>(frame.size() & 0xFF);
        return frame;
    }
    static Octets Apdu(std::string const& hex) { return Frame(Hex(hex)); }

    // The driver's requests: present value, description and status flags of analog input 1; present value and
    // status flags of analog input 2; a value for integer value 1.
    static Octets ReadA(unsigned id) { return Request(id, "0C 00000001 1E 09 55 09 1C 09 6F 1F"); }
    static Octets ReadC(unsigned id) { return Request(id, "0C 00000002 1E 09 55 09 6F 1F"); }
    static Octets Request(unsigned id, std::string const& parameters) {
        return Frame(Hex("02 74") + Octets{static_cast<char>(id)} + Hex("0E " + parameters), "01 04");
    }
    static Octets WriteD(unsigned id, std::string const& value, std::string const& priority = "49 08") {
        return Frame(Hex("00 04") + Octets{static_cast<char>(id)} +
                         Hex("0F 0C 0B400001 19 55 3E " + value + " 3F " + priority),
                     "01 04");
    }
    // Answers to ReadA and ReadC: 21.5, "x" and no status flag set.
    static Octets AnswerA(unsigned id) { return Ack(id, AnswersA); }
    static Octets AnswerC(unsigned id) {
        return Ack(id, "0C 00000002 1E 29 55 4E 44 41AC0000 4F 29 6F 4E 82 04 00 4F 1F");
    }
    static Octets Ack(unsigned id, std::string const& results) {
        return Frame(Hex("30") + Octets{static_cast<char>(id)} + Hex("0E " + results));
    }
    static constexpr char AnswersA[] =
        "0C 00000001 1E 29 55 4E 44 41AC0000 4F 29 1C 4E 75 02 00 78 4F 29 6F 4E 82 04 00 4F 1F";

    void Send(Octets const& datagram, int handle = Handle) {
        observation.Send(handle, device, datagram.data(), static_cast<int>(datagram.size()));
    }
    // Waits as the driver does; the datagram comes after these milliseconds.
    int Receive(Octets const& datagram, long long milliseconds = 1, int handle = Handle, int timeout = 1000) {
        network.Comes(handle, network.time + milliseconds * Millisecond, datagram, device);
        return Wait(handle, timeout);
    }
    int Wait(int handle = Handle, int timeout = 1000) {
        char buffer[1500];
        sockaddr_in sender{};
        return observation.Receive(handle, sender, buffer, sizeof buffer, timeout);
    }
    void Exchange(Octets const& request, Octets const& answer) {
        Send(request);
        Receive(answer);
    }

    std::vector<workbench::Cause> EndCycle() {
        auto causes = observation.EndCycle(Block());
        observation.BeginCycle(Block());
        return causes;
    }
    // The texts of the cycle that ends here.
    std::string Why() { return workbench::WhyText(EndCycle()); }

    sockaddr_in device = Address("10.0.0.5", 47808);
    TimedNetwork network;
    std::deque<workbench::BlockConfig> blocks;
    workbench::Observation observation{network};
};

}  // namespace test
