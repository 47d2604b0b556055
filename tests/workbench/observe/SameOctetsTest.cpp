// The driver sends the same octets at the same times and reads the same values with and without the observer.

#include <random>

#include "Dialogue.h"
#include "TBACnet.h"
#include "dorvelshare/NLSocket.h"
#include "dorvelshare/Trace.h"

using namespace test;
using namespace workbench;

namespace {

// A device that answers each request in one of many ways, chosen by a seed.
class Unreliable : public TimedNetwork {
public:
    explicit Unreliable(unsigned seed) : random(seed) { time = Noon; }

    int Open(unsigned short) override { return ++handles; }
    bool Send(int handle, sockaddr_in const& peer, void const* data, int length) override {
        auto const* const first = static_cast<char const*>(data);
        Octets const request(first, first + length);
        record +=
            std::to_string(time - Noon) + " on " + std::to_string(handle) + ": " + ToHex(request) + "\n";
        Answer(handle, request, peer);
        return true;
    }

    std::string record;

private:
    void Answer(int handle, Octets const& request, sockaddr_in peer) {
        Octets answer = AnswerTo(request);
        long long delay = 1 + static_cast<long long>(random() % 20);
        switch (random() % 14) {
            case 0:
                return;
            case 1:
                delay = 1500;
                break;
            case 2:
                Comes(handle, time + 2 * Millisecond, answer, peer);
                break;
            case 3:
                answer = Hex("81 0A 00 09 01 00 60 00 09");
                answer[7] = request[8];
                break;
            case 4:
                answer[random() % answer.size()] = static_cast<char>(random());
                break;
            case 5:
                answer.resize(random() % answer.size() + 1);
                break;
            case 6:
                peer = Address("10.0.0.9", 1);
                break;
            case 7:
                answer[7] = static_cast<char>(answer[7] - 1);
                break;
            default:
                break;
        }
        Comes(handle, time + delay * Millisecond, answer, peer);
    }

    Octets AnswerTo(Octets const& request) {
        if (request[6] == 0x40) {
            return SegmentOf(request[7], random() % 3 != 0);
        }
        if (request[9] == 0x0F) {
            Octets ack = Hex("81 0A 00 09 01 00 20 00 0F");
            ack[7] = request[8];
            return ack;
        }
        if (random() % 4 == 0) {
            return SegmentOf(request[8], true);
        }
        Octets ack =
            Hex("81 0A 00 1E 01 00 30 00 0E 0C 00000000 1E 29 55 4E 44 41AC0000 4F 29 6F 4E 82 04 00 4F 1F");
        ack[2] = static_cast<char>(ack.size() >> 8);
        ack[3] = static_cast<char>(ack.size());
        ack[7] = request[8];
        std::copy_n(request.begin() + 11, 4, ack.begin() + 10);
        return ack;
    }

    Octets SegmentOf(char invokeId, bool more) {
        Octets segment = Hex("81 0A 00 0E 01 00 38 00 00 01 0E 0C 00 00");
        segment[6] = static_cast<char>(more ? 0x3C : 0x38);
        segment[7] = invokeId;
        segment[8] = static_cast<char>(random() % 4);
        return segment;
    }

    std::mt19937 random;
    int handles = 0;
};

// What a device client sends and reads in some cycles.
class Conversation {
public:
    Conversation(unsigned seed, bool isObserved) : network(seed), observation(network) {
        dorvel::SetEnvironment(isObserved ? static_cast<dorvel::HostEnvironment*>(&observation) : &network);
        dorvel::SetLogSink([](std::string_view) {});
        dorvel::BACnet::TBACnet::IsTerminated = false;
        dorvel::BACnet::WriteInvokeId = 0;
        NLInitSocket(&socket);
        auto* const peer = new sockaddr_in();
        NLMakeAddress(peer, IPAddressFromString("10.0.0.5"), 47808);
        device = std::make_unique<dorvel::BACnet::TBACnet>(socket, peer, 1, "10.0.0.5:47808",
                                                           "10.0.0.5:47808", 1000, 2, 1, 0, 8);
        AddObjects();
        observation.Watch(blocks);
    }
    ~Conversation() {
        Here() = {};
        device.reset();
        dorvel::SetLogSink({});
        dorvel::SetEnvironment(nullptr);
    }

    std::string Record(int cycles) {
        bool isFault = false;
        for (int cycle = 0; cycle < cycles; ++cycle) {
            Here() = {&blocks.front(), nullptr, nullptr};
            observation.BeginCycle(blocks.front());
            NLBeginCycle(isFault);
            isFault = Poll();
            causes += observation.EndCycle(blocks.front()).size();
            Here() = {};
            network.time += 300 * Millisecond;
        }
        return network.record;
    }

    std::size_t causes = 0;

private:
    void AddObjects() {
        blocks.emplace_back();
        for (int number = 1; number <= 3; ++number) {
            auto* const descriptor = new DriverVarDsc();
            descriptor->ReadType = OpcUaType_Double;
            dorvel::BACnet::VelaBufferParameters record{descriptor, 3, 0, number};
            device->InitTags({&record});
            blocks.front().variables.push_back({"V", OpcUaType_Double, ObjectTypes().FindName("analog-value"),
                                                Properties().FindName("present-value"), number, 0, 0, true});
        }
    }

    bool Poll() {
        std::vector<WriteDataRec> values;
        device->ClearFault();
        device->Read(values);
        for (WriteDataRec const& value : values) {
            double number = -1;
            value.Value.GetDouble(number);
            network.record += "value " + std::to_string(number) + "\n";
        }
        if (!device->HasFault()) {
            OpcUa_VariantHlp value;
            value.SetDouble(5);
            Here().object = Here().variable = &blocks.front().variables.front();
            device->Write(device->Tags().begin()->second.begin()->second.front(), value);
        }
        network.record += device->HasFault() ? "fault\n" : "good\n";
        return device->HasFault();
    }

    Unreliable network;
    Observation observation;
    std::deque<BlockConfig> blocks;
    NLSocket socket{};
    std::unique_ptr<dorvel::BACnet::TBACnet> device;
};

TEST(SameOctets, WithAndWithoutTheObserver) {
    std::size_t causes = 0;
    for (unsigned seed = 1; seed <= 200; ++seed) {
        std::string const alone = Conversation(seed, false).Record(20);
        Conversation observed(seed, true);
        ASSERT_EQ(observed.Record(20), alone) << "seed " << seed;
        EXPECT_NE(alone.find("good"), std::string::npos);
        causes += observed.causes;
    }
    EXPECT_GT(causes, 1000u) << "the observer has seen what happened";
}

}  // namespace
