// The write phase of a cycle: which values are written to the device, and what prevents it.

#include <array>
#include <memory>
#include <set>
#include <thread>

#include "AnsweringNetwork.h"
#include "BlockFixture.h"
#include "Variants.h"

using namespace dorvel::BACnet;
using namespace test;

namespace {

constexpr int ServicePlace = 9;
constexpr char WriteService = 15;

// A write of a Real to Present_Value of an analog input.
Octets WriteRequest(unsigned invokeId, unsigned number, std::string const& real) {
    return BvlcFrame("01 04 00 04 " + HexOctet(invokeId) + "0F 0C 00 00 00 " + HexOctet(number) +
                     "19 55 3E 44 " + real + " 3F");
}
Octets WriteAck(unsigned invokeId) {
    return AnswerDatagram("20 " + HexOctet(invokeId) + "0F");
}

constexpr char One[] = "3F 80 00 00";
constexpr char Two[] = "40 00 00 00";

class WritePhase : public BlockFixture {
protected:
    WritePhase() {
        WriteInvokeId = 0;
        dorvel::SetStandby(false);
        block->WriteCondition = ProtocolWriteCondition::Always;
    }
    ~WritePhase() override { dorvel::SetStandby(false); }

    // Adds a writable variable on an analog input and returns the id of its write channel.
    long long AddWritable(int number, OpcUa_BuiltInTypeHlp type = OpcUaType_Double, std::string field = "") {
        polled.insert(number);
        ScadaProtocol::ReadChannel read;
        read.Id = store->Declare("Read", OpcUaType_Double);
        read.Type = OpcUaType_Double;
        ScadaProtocol::WriteChannel write;
        write.Id = store->Declare("Write", type);
        write.Field = std::move(field);
        write.Type = type;
        block->AddChannel(&read, &write, Properties(1, 0, number));
        return write.Id;
    }

    void Set(long long id, OpcUa_VariantHlp const& value, std::string const& field = "") {
        store->Write(id, field, value, ScriptedNetwork::Start);
    }

    // Expects the poll of the next cycle and answers it.
    void ExpectPoll() {
        for (int const number : polled) {
            ++readInvokeId;
            auto const object = static_cast<unsigned>(number);
            network.Expect(Request(readInvokeId, object)).Answer(Answer(readInvokeId, object));
        }
    }
    // Expects a write in the next cycle. It is acknowledged by default.
    void ExpectWrite(unsigned invokeId, std::string const& real, unsigned number = 1) {
        ExpectWrite(WriteRequest(invokeId, number, real), WriteAck(invokeId));
    }
    void ExpectWrite(Octets request, Octets answer) {
        writes.emplace_back(std::move(request), std::move(answer));
    }
    // Stops the runtime while the device acknowledges the first write.
    void StopDuringTheWrite() {
        network.Respond([](Octets const&) {
            TBACnet::IsTerminated = true;
            return std::vector<Delivery>{{WriteAck(1)}};
        });
    }
    void Cycle() {
        ExpectPoll();
        for (auto& [request, answer] : writes) {
            network.Expect(request).Answer(answer);
        }
        writes.clear();
        block->Execute();
    }

    DriverVarDsc const& Descriptor(int number = 1) const {
        return *block->Device()->Tags().at(ObjectTypeEnum::Analog_Input).at(number).at(0)->descriptor;
    }

    std::set<int> polled;
    std::vector<std::pair<Octets, Octets>> writes;
    unsigned readInvokeId = 0;
};

TEST_F(WritePhase, FollowsACleanPollWithTheValueOfTheWriteChannel) {
    Set(AddWritable(1), Double(1));
    block->Inited();
    ExpectWrite(1, One);
    Cycle();
    EXPECT_EQ(FaultState(), "false, ");
    EXPECT_EQ(log.Text(), "");
}

TEST_F(WritePhase, SkipsAVariableWhoseWriteFlagIsClearWhateverItsChannelHas) {
    Set(AddWritable(1), Double(1));
    block->Inited();
    block->Device()->Tags().at(ObjectTypeEnum::Analog_Input).at(1).at(0)->descriptor->IsWrite = 0;
    Cycle();
    EXPECT_EQ(network.SentDatagrams().size(), 1u) << "only the poll";
    EXPECT_EQ(Descriptor().LastWritten.GetType(), OpcUaType_Null) << "the write condition is not evaluated";
}

TEST_F(WritePhase, UsesFieldAndTypeOfTheWriteChannel) {
    Set(AddWritable(1, OpcUaType_Int32, "setpoint"), Double(1.8), "setpoint");
    block->Inited();
    ExpectWrite(1, Two);
    Cycle();
}

TEST_F(WritePhase, WritesTheValueInsideADataValue) {
    long long const id = AddWritable(1, OpcUa_BuiltInTypeHlp(OpcUaType_DataValue, OpcUaType_Double));
    Set(id, DataValue(Double(2), ScriptedNetwork::Start, 0x80000000));
    block->Inited();
    ExpectWrite(1, Two);
    Cycle();
}

TEST_F(WritePhase, SkipsAValueThatTheConditionRefuses) {
    block->WriteCondition = ProtocolWriteCondition::OnChange;
    long long const id = AddWritable(1);
    Set(id, Double(1));
    block->Inited();
    Cycle();
    EXPECT_EQ(network.SentDatagrams().size(), 1u) << "the first value counts as written";
    Set(id, Double(2));
    ExpectWrite(1, Two);
    Cycle();
    Cycle();
    EXPECT_EQ(network.SentDatagrams().size(), 4u) << "three polls and one write";
    EXPECT_EQ(WriteInvokeId.load(), 1);
}

TEST_F(WritePhase, SkipsAMissingValueAndWritesTheNextOne) {
    AddWritable(1);
    Set(AddWritable(2), Double(2));
    block->Inited();
    ExpectWrite(1, Two, 2);
    Cycle();
    EXPECT_EQ(network.SentDatagrams().size(), 3u) << "two reads and one write";
}

TEST_F(WritePhase, SkipsAVariableWithoutAWriteChannel) {
    AddVariable(1, OpcUaType_Double);
    polled.insert(1);
    Set(AddWritable(2), Double(1));
    block->Inited();
    ExpectWrite(1, One, 2);
    Cycle();
    EXPECT_EQ(Descriptor().IsWrite, 0);
    EXPECT_EQ(Descriptor().LastWritten.GetType(), OpcUaType_Null) << "the write condition was not evaluated";
}

TEST_F(WritePhase, IsSkippedOnTheStandbyUnlessItMayWrite) {
    Set(AddWritable(1), Double(1));
    block->Inited();
    dorvel::SetStandby(true);
    Cycle();
    EXPECT_EQ(network.SentDatagrams().size(), 1u);
    EXPECT_EQ(Descriptor().LastWritten.GetType(), OpcUaType_Null) << "the write condition was not evaluated";
    block->WriteOnSlave = true;
    ExpectWrite(1, One);
    Cycle();
}

TEST_F(WritePhase, ReadsTheWriteItemOnceWhenThePhaseBegins) {
    block->WriteItemId = store->Declare("Gate", OpcUaType_Boolean);
    Set(AddWritable(1), Double(1));
    Set(AddWritable(2), Double(2));
    block->Inited();
    Cycle();
    EXPECT_EQ(network.SentDatagrams().size(), 2u);

    Set(block->WriteItemId, Bool(true));
    ExpectPoll();
    network.Respond([this](Octets const& request) {
        Set(block->WriteItemId, Bool(false));
        return std::vector<Delivery>{{WriteAck(static_cast<unsigned char>(request.at(8)))}};
    });
    block->Execute();
    EXPECT_EQ(network.SentDatagrams().size(), 6u) << "the second value too: the write item is read once";
}

TEST_F(WritePhase, EndsBetweenTwoWritesWhenTheRuntimeStops) {
    Set(AddWritable(1), Double(1));
    Set(AddWritable(2), Double(2));
    block->Inited();
    ExpectPoll();
    StopDuringTheWrite();
    block->Execute();
    ASSERT_EQ(network.SentDatagrams().size(), 3u);
    EXPECT_EQ(ToHex(network.SentDatagrams()[2].datagram), ToHex(WriteRequest(1, 1, One)));
    EXPECT_EQ(log.Text(), "Stop RT. Exit from driver\n");
    EXPECT_EQ(FaultState(), "false, ") << "the poll was clean";
}

TEST_F(WritePhase, EndsWithoutALogLineWhenNothingIsLeftToBeWritten) {
    Set(AddWritable(1), Double(1));
    block->Inited();
    ExpectPoll();
    StopDuringTheWrite();
    block->Execute();
    EXPECT_EQ(log.Text(), "");
}

TEST_F(WritePhase, EndsSilentlyWhenNoFurtherValueNeedsToBeWritten) {
    Set(AddWritable(1), Double(1));
    AddWritable(2);
    block->Inited();
    ExpectPoll();
    StopDuringTheWrite();
    block->Execute();
    EXPECT_EQ(network.SentDatagrams().size(), 3u) << "two reads and the write of the only value";
    EXPECT_EQ(log.Text(), "");
}

TEST_F(WritePhase, CountsTheValueThatTheStopSuppressedAsWritten) {
    Set(AddWritable(1), Double(1));
    Set(AddWritable(2), Double(2));
    block->Inited();
    ExpectPoll();
    StopDuringTheWrite();
    block->Execute();
    EXPECT_EQ(network.SentDatagrams().size(), 3u) << "two reads and the first write";
    EXPECT_EQ(Descriptor(2).LastWritten, Double(2)) << "the write condition was evaluated before the stop";
}

TEST_F(WritePhase, IsSkippedAfterAFault) {
    Set(AddWritable(1), Double(1));
    block->Inited();
    network.Expect(Request(1, 1));
    block->Execute();
    EXPECT_EQ(FaultState(), "true, No connection");
    EXPECT_EQ(Descriptor().LastWritten.GetType(), OpcUaType_Null) << "the write condition was not evaluated";
}

TEST_F(WritePhase, ContinuesAfterAFailedWriteAndReportsNoFault) {
    Set(AddWritable(1), Double(1));
    Set(AddWritable(2), Double(2));
    block->Inited();
    ExpectWrite(WriteRequest(1, 1, One), AnswerDatagram("50 01 0F 91 02 91 28"));
    ExpectWrite(2, Two, 2);
    Cycle();
    EXPECT_EQ(log.Text(), "Error! Error packet. Class: Property Code: WriteAccessDenied");
    EXPECT_EQ(FaultState(), "false, ");
    log.Clear();
    ExpectWrite(WriteRequest(3, 1, One), AnswerDatagram("60 03 09"));
    ExpectWrite(4, Two, 2);
    Cycle();
    EXPECT_EQ(log.Text(), "Error! The packet was rejected. Reason: UnrecognizedService");
}

TEST_F(WritePhase, WritesTheTagsInTheOrderOfTheirTable) {
    Set(AddWritable(2), Double(2));
    Set(AddWritable(1), Double(1));
    block->Inited();
    ExpectWrite(1, One, 1);
    ExpectWrite(2, Two, 2);
    Cycle();
}

TEST_F(WritePhase, SendsThePriorityOfTheBlock) {
    block->Priority = 8;
    Set(AddWritable(1), Double(1));
    block->Inited();
    ExpectWrite(Hex("81 0A 00 1A 01 04 00 04 01 0F 0C 00 00 00 01 19 55 3E 44 3F 80 00 00 3F 49 08"),
                WriteAck(1));
    Cycle();
}

// Two blocks that write in every cycle, each on its thread. Also meant for a race detector.
class TwoWriters : public ::testing::Test {
protected:
    static constexpr unsigned Cycles = 1000;

    struct Writer {
        std::shared_ptr<VariableStore> store = std::make_shared<VariableStore>();
        LuaDataProvider provider{store, nullptr};
        BACnetProtocol block;

        Writer() {
            block.SetDataProvider(&provider);
            block.CountRepeat = 1;
            block.MAC = "192.168.10.7:47808";
            block.WriteCondition = ProtocolWriteCondition::Always;
            block.FaultItemId = store->Declare("Fault", OpcUaType_Boolean);
            ScadaProtocol::ReadChannel const read{store->Declare("Read", OpcUaType_Double), "",
                                                  OpcUaType_Double};
            ScadaProtocol::WriteChannel const write{store->Declare("Write", OpcUaType_Double), "",
                                                    OpcUaType_Double};
            std::map<std::string, OpcUa_VariantHlp> properties;
            properties["ObjectType"].SetInt(1);
            properties["ObjectNumber"].SetInt(1);
            block.AddChannel(&read, &write, properties);
            block.Inited();
            store->Write(write.Id, "", Double(1), 0);
        }

        bool HasFault() const {
            VariableState state;
            bool fault = true;
            store->Read(block.FaultItemId, "", state);
            state.Value.GetBool(fault);
            return fault;
        }
    };

    static std::vector<Octets> Answer(Octets const& request) {
        unsigned const invokeId = static_cast<unsigned char>(request.at(8));
        if (request.at(ServicePlace) == WriteService) {
            return {WriteAck(invokeId)};
        }
        return {AnswerDatagram(ReadAck(invokeId, "00 00 00 01", PropertyResult(85, "44 42 28 00 00")))};
    }
};

TEST_F(TwoWriters, UseDistinctInvokeIdsAndDoNotDisturbEachOthersPolls) {
    TBACnet::IsTerminated = false;
    WriteInvokeId = 0;
    AnsweringNetwork network(Answer);
    LogCapture const log;
    std::array<Writer, 2> writers;
    std::vector<std::thread> threads;
    for (Writer& writer : writers) {
        threads.emplace_back([&writer] {
            for (unsigned cycle = 0; cycle < Cycles; ++cycle) {
                writer.block.Execute();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    std::array<unsigned, 256> writeIds{};
    for (std::vector<Octets> const& sent : network.Sent()) {
        unsigned reads = 0;
        for (Octets const& request : sent) {
            unsigned const invokeId = static_cast<unsigned char>(request.at(8));
            if (request.at(ServicePlace) == WriteService) {
                ++writeIds[invokeId];
            } else {
                ASSERT_EQ(invokeId, ++reads & 0xFF);
            }
        }
        EXPECT_EQ(reads, Cycles) << "no read was tried twice";
        EXPECT_EQ(sent.size(), 2 * Cycles);
    }
    for (unsigned id = 0; id < 256; ++id) {
        EXPECT_EQ(writeIds[id], (2 * Cycles - id) / 256 + (id == 0 ? 0 : 1)) << id;
    }
    EXPECT_EQ(WriteInvokeId.load(), 2 * Cycles % 256);
    EXPECT_FALSE(writers[0].HasFault() || writers[1].HasFault());
    EXPECT_EQ(log.Text(), "");
}

}  // namespace
