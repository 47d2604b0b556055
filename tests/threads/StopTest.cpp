// Stops of the runtime at each point of a cycle, and the time until the cycle ends, in virtual time. A
// pending transaction runs to its end; no new one begins.

#include "Addin.h"
#include "BlockFixture.h"
#include "Variants.h"

using namespace dorvel::BACnet;
using namespace test;

namespace {

constexpr long long Wait = TBACnet::ReceiveTimeout;

class Stop : public BlockFixture {
protected:
    Stop() {
        WriteInvokeId = 0;
        block->WriteCondition = ProtocolWriteCondition::Always;
    }
    ~Stop() override { TBACnet::IsTerminated = false; }

    // A variable of an analog input that is written from another variable.
    void AddWritable(int number) {
        ScadaProtocol::ReadChannel const read{store->Declare("Read", OpcUaType_Double), "", OpcUaType_Double};
        ScadaProtocol::WriteChannel const write{store->Declare("Write", OpcUaType_Double), "",
                                                OpcUaType_Double};
        block->AddChannel(&read, &write, Properties(1, 0, number));
        store->Write(write.Id, "", Double(1), 0);
    }

    static void StopRuntime() { ConfigProcessorCallback(nullptr, ConfigProcessorMode::Stop, nullptr); }

    // A device: the runtime stops while the driver waits for the answer to the datagram with this number,
    // counted from 1. `device` returns the answers to each datagram.
    using Device = std::function<std::vector<Delivery>(unsigned long number, Octets const& request)>;
    void StopAt(unsigned long fatal, Device device) {
        network.Respond([this, fatal, device = std::move(device)](Octets const& request) {
            unsigned long const number = network.SentDatagrams().size();
            if (number == fatal) {
                StopRuntime();
                stoppedAt = network.Elapsed();
            }
            return device(number, request);
        });
    }

    // Runs one cycle. Returns the milliseconds from the stop to its end, -1 without a stop.
    long long Cycle() {
        block->Execute();
        return stoppedAt < 0 ? -1 : network.Elapsed() - stoppedAt;
    }

    static std::vector<Delivery> Silence(unsigned long, Octets const&) { return {}; }
    static unsigned Id(Octets const& request) { return static_cast<unsigned char>(request.at(8)); }
    static std::vector<Delivery> Value(Octets const& request, long long delay = 0) {
        return {{Answer(Id(request), static_cast<unsigned char>(request.at(14))), delay}};
    }
    static bool IsWrite(Octets const& request) { return request.at(9) == 0x0F; }
    static bool IsSegmentAck(Octets const& request) { return request.at(6) == 0x40; }

    unsigned long Sent() const { return network.SentDatagrams().size(); }

    long long stoppedAt = -1;
    static constexpr char Farewell[] = "Stop RT. Exit from driver\n";
};

TEST_F(Stop, BeforeACycleSendsNothing) {
    AddVariable(1, OpcUaType_Double);
    block->Inited();
    StopRuntime();
    Cycle();
    EXPECT_EQ(Sent(), 0u);
    EXPECT_EQ(network.Elapsed(), 0);
    EXPECT_EQ(log.Text(), Farewell);
    EXPECT_EQ(FaultState(), "none");
}

TEST_F(Stop, WhileAnAnswerIsOnItsWayEndsWithThatAnswer) {
    AddVariable(1, OpcUaType_Double);
    AddVariable(2, OpcUaType_Double);
    block->Inited();
    StopAt(1, [](unsigned long, Octets const& request) { return Value(request, 700); });
    EXPECT_EQ(Cycle(), 700);
    EXPECT_EQ(Sent(), 1u) << "the second object is not polled";
    EXPECT_EQ(log.Text(), Farewell);
    EXPECT_EQ(FaultState(), "none");
}

TEST_F(Stop, WhileADeviceWithOneAttemptIsSilentEndsWithinOneWait) {
    AddVariable(1, OpcUaType_Double);
    block->Inited();
    StopAt(1, Silence);
    EXPECT_EQ(Cycle(), Wait);
    EXPECT_EQ(Sent(), 1u);
    EXPECT_EQ(log.Text(), Farewell);
    EXPECT_EQ(FaultState(), "none") << "a cycle that was stopped reports nothing";
}

// One wait for each remaining attempt: the attempts belong to the transaction.
TEST_F(Stop, WhileADeviceIsSilentEndsWithTheAttemptsOfTheObject) {
    block->CountRepeat = 3;
    AddVariable(1, OpcUaType_Double);
    AddVariable(2, OpcUaType_Double);
    block->Inited();
    StopAt(1, Silence);
    EXPECT_EQ(Cycle(), 3 * Wait);
    EXPECT_EQ(Sent(), 3u);
}

TEST_F(Stop, InTheLastAttemptEndsWithinOneWait) {
    block->CountRepeat = 3;
    AddVariable(1, OpcUaType_Double);
    AddVariable(2, OpcUaType_Double);
    block->Inited();
    StopAt(3, Silence);
    EXPECT_EQ(Cycle(), Wait);
    EXPECT_EQ(Sent(), 3u);
}

TEST_F(Stop, BetweenTwoObjectsLeavesTheSecondAlone) {
    AddVariable(1, OpcUaType_Double);
    AddVariable(2, OpcUaType_Double);
    block->Inited();
    StopAt(1, [](unsigned long, Octets const& request) { return Value(request); });
    EXPECT_EQ(Cycle(), 0);
    EXPECT_EQ(Sent(), 1u);
}

// A device that answers with this number of segments of one octet, each after some time.
class StopAmongSegments : public Stop {
protected:
    StopAmongSegments() {
        AddVariable(1, OpcUaType_Double);
        AddVariable(2, OpcUaType_Double);
        block->Inited();
    }

    void StopAtSegment(unsigned long number, unsigned long segments, long long delay) {
        StopAt(number, [=](unsigned long sent, Octets const& request) -> std::vector<Delivery> {
            if (sent > segments) {
                return {};
            }
            bool const more = sent < segments;
            unsigned const invokeId =
                IsSegmentAck(request) ? static_cast<unsigned char>(request.at(7)) : Id(request);
            return {
                {AnswerDatagram(ReadAckSegment(invokeId, static_cast<unsigned>(sent - 1) & 0xFF, more, "00")),
                 delay}};
        });
    }
};

TEST_F(StopAmongSegments, CollectsTheRestAndWaitsOutTheLastAcknowledgement) {
    StopAtSegment(3, 10, 100);
    EXPECT_EQ(Cycle(), 8 * 100 + Wait);
    EXPECT_EQ(Sent(), 11u) << "a request and ten acknowledgements: the second object is not polled";
    EXPECT_EQ(FaultState(), "none");
}

TEST_F(StopAmongSegments, InTheWaitAfterTheLastOneEndsWithinOneWait) {
    StopAtSegment(11, 10, 100);
    EXPECT_EQ(Cycle(), Wait);
    EXPECT_EQ(Sent(), 11u);
}

TEST_F(StopAmongSegments, EndsWithinOneWaitWhenTheNextOneIsLost) {
    StopAt(3, [](unsigned long sent, Octets const& request) -> std::vector<Delivery> {
        if (sent >= 3) {
            return {};
        }
        unsigned const invokeId =
            IsSegmentAck(request) ? static_cast<unsigned char>(request.at(7)) : Id(request);
        return {{AnswerDatagram(ReadAckSegment(invokeId, static_cast<unsigned>(sent - 1), true, "00"))}};
    });
    EXPECT_EQ(Cycle(), Wait);
    EXPECT_EQ(Sent(), 3u);
}

// Only the device ends such an answer.
TEST_F(StopAmongSegments, GoesOnAsLongAsSegmentsCome) {
    constexpr unsigned long thousands = 20000;
    StopAtSegment(2, thousands, 1);
    EXPECT_EQ(Cycle(), static_cast<long long>(thousands - 1) + Wait);
    EXPECT_EQ(Sent(), thousands + 1);
}

class StopAmongWrites : public Stop {
protected:
    StopAmongWrites() {
        AddWritable(1);
        AddWritable(2);
        block->Inited();
    }

    static std::vector<Delivery> Done(Octets const& request, long long delay = 0) {
        return {{AnswerDatagram("20 " + HexOctet(Id(request)) + "0F"), delay}};
    }

    // The runtime stops at the first write.
    void StopAtWrite(std::function<std::vector<Delivery>(Octets const& request)> const& answer) {
        StopAt(3, [answer](unsigned long, Octets const& request) {
            return IsWrite(request) ? answer(request) : Value(request);
        });
    }
};

TEST_F(StopAmongWrites, BeforeTheFirstOneWritesNothing) {
    StopAt(2, [](unsigned long, Octets const& request) { return Value(request); });
    EXPECT_EQ(Cycle(), 0);
    EXPECT_EQ(Sent(), 2u);
    EXPECT_EQ(log.Text(), Farewell);
    EXPECT_EQ(FaultState(), "none");
}

TEST_F(StopAmongWrites, WhileAnAnswerIsOnItsWayEndsWithTheSecondThatFollowsIt) {
    StopAtWrite([](Octets const& request) { return Done(request, 700); });
    EXPECT_EQ(Cycle(), 700 + Wait);
    EXPECT_EQ(Sent(), 3u) << "the second value is not written";
    EXPECT_EQ(log.Text(), Farewell);
    EXPECT_EQ(FaultState(), "false, ") << "the poll was clean";
}

TEST_F(StopAmongWrites, OnASilentDeviceEndsWithinOneWait) {
    StopAtWrite([](Octets const&) { return std::vector<Delivery>(); });
    EXPECT_EQ(Cycle(), Wait);
    EXPECT_EQ(Sent(), 3u);
}

TEST_F(StopAmongWrites, GoesOnAsLongAsForeignAnswersCome) {
    StopAtWrite([](Octets const& request) {
        std::vector<Delivery> deliveries = Done(request);
        for (long long second = 1; second <= 30; ++second) {
            deliveries.push_back({AnswerDatagram("20 63 0F"), second * 900});
        }
        return deliveries;
    });
    EXPECT_EQ(Cycle(), 30 * 900 + Wait);
    EXPECT_EQ(Sent(), 3u);
}

TEST_F(Stop, EndsWhenTheRuntimeStartsAgain) {
    AddVariable(1, OpcUaType_Double);
    block->Inited();
    StopAt(1, [](unsigned long, Octets const& request) { return Value(request); });
    Cycle();
    ConfigProcessorCallback(nullptr, ConfigProcessorMode::Start, nullptr);
    Cycle();
    EXPECT_EQ(Sent(), 2u);
    EXPECT_EQ(FaultState(), "false, ");
}

}  // namespace
