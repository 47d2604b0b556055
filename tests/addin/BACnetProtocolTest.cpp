// The driver object: from the block's fields to the device client, and from a poll to the runtime's
// variables.

#include "BACnet_protocol.h"

#include <arpa/inet.h>

#include <stdexcept>

#include "BlockFixture.h"
#include "Variants.h"

using namespace dorvel::BACnet;
using namespace test;

namespace {

OpcUa_BuiltInTypeHlp const DoubleDataValue(OpcUaType_DataValue, OpcUaType_Double);

class Block : public BlockFixture {};

TEST_F(Block, HasItsDefaults) {
    BACnetProtocol const fresh;
    EXPECT_EQ(fresh.Address, "127.0.0.1:47808");
    EXPECT_EQ(fresh.MAC, "255.255.255.255:47808");
    EXPECT_EQ(fresh.Timeout, 1000);
    EXPECT_EQ(fresh.CountRepeat, 3);
    EXPECT_EQ(fresh.AddressNumber, 1);
    EXPECT_EQ(fresh.NetworkNumber, 0);
    EXPECT_EQ(fresh.Priority, 0);
    EXPECT_EQ(fresh.Device(), nullptr);
    EXPECT_EQ(fresh.Socket().open, 0);
    EXPECT_EQ(fresh.Socket().port, NLBasePort);
}

TEST_F(Block, AddChannelTakesTheThreeCodesAndTheChannels) {
    ScadaProtocol::ReadChannel const read{11, "r", DoubleDataValue};
    ScadaProtocol::WriteChannel const write{12, "w", OpcUaType_Float};
    block->AddChannel(&read, &write, Properties(5, 30, -2));
    ASSERT_EQ(block->PendingChannels().size(), 1u);
    VelaBufferParameters const& pending = *block->PendingChannels()[0];
    EXPECT_EQ(pending.objectType, 5);
    EXPECT_EQ(pending.objectProperties, 30);
    EXPECT_EQ(pending.objectNumber, -2);
    EXPECT_EQ(pending.descriptor->ReadId, 11);
    EXPECT_EQ(pending.descriptor->ReadField, "r");
    EXPECT_EQ(pending.descriptor->ReadType.Type, OpcUaType_DataValue);
    EXPECT_NE(pending.descriptor->IsWrite, 0);
    EXPECT_EQ(pending.descriptor->WriteId, 12);
    EXPECT_EQ(pending.descriptor->WriteField, "w");
    EXPECT_EQ(pending.descriptor->WriteType.Type, OpcUaType_Float);
}

TEST_F(Block, VariableWithoutPropertiesAddresses0) {
    ScadaProtocol::ReadChannel const read{11, "", OpcUaType_Double};
    std::map<std::string, OpcUa_VariantHlp> properties;
    properties["ObjectType"].SetUTF8String("no number");
    properties["Other"].SetInt(7);
    block->AddChannel(&read, nullptr, properties);
    VelaBufferParameters const& pending = *block->PendingChannels().at(0);
    EXPECT_EQ(pending.objectType, 0);
    EXPECT_EQ(pending.objectProperties, 0);
    EXPECT_EQ(pending.objectNumber, 0);
}

TEST_F(Block, InitedMakesTheDeviceAndItsTags) {
    AddVariable(1, OpcUaType_Double);
    AddVariable(2, OpcUaType_Double);
    block->Address = "192.168.10.1:50001";
    block->Inited();
    ASSERT_NE(block->Device(), nullptr);
    EXPECT_TRUE(block->Device()->IsCreated());
    EXPECT_TRUE(block->PendingChannels().empty());
    EXPECT_EQ(block->Device()->Tags().at(ObjectTypeEnum::Analog_Input).size(), 2u);
    EXPECT_EQ(ntohl(block->Socket().address.sin_addr.s_addr), 0xC0A80A01u);
    EXPECT_EQ(ntohs(block->Socket().address.sin_port), 50001);
    EXPECT_EQ(block->Socket().open, 0);
}

TEST_F(Block, AddressWithoutColonOrWithTwoHasNoDevice) {
    for (std::string const address : {"192.168.10.1", "192.168.10.1:1:2", "", ":"}) {
        BACnetProtocol refused;
        refused.SetDataProvider(&provider);
        refused.FaultItemId = block->FaultItemId;
        refused.Address = address;
        log.Clear();
        refused.Inited();
        EXPECT_EQ(log.Text(), "Incorrect IP address") << address;
        EXPECT_EQ(refused.Device(), nullptr);
        log.Clear();
        refused.Execute();
        refused.Execute();
        EXPECT_EQ(log.Text(), "Error create device for poll\nError create device for poll\n");
        EXPECT_EQ(FaultState(), "none");
    }
    EXPECT_TRUE(network.SentDatagrams().empty());
}

TEST_F(Block, PortAbove65535IsCutTo16Bits) {
    AddVariable(1, OpcUaType_Double);
    block->Address = "127.0.0.1:70000";
    block->Inited();
    EXPECT_EQ(ntohs(block->Socket().address.sin_port), 70000 - 65536);
    network.ExpectAny();
    block->Execute();
    EXPECT_EQ(ntohs(network.SentDatagrams().at(0).peer.sin_port), 70000 - 65536);
    EXPECT_EQ(ntohl(network.SentDatagrams().at(0).peer.sin_addr.s_addr), 0x7F000001u);
    EXPECT_EQ(log.Text(), "");
}

TEST_F(Block, PortIsReadAsOnTheController) {
    struct Case {
        char const* port;
        int expected;
    };
    for (auto const& [port, expected] : {Case{"4294967295", 65535},
                                         {"-1", 65535},
                                         {"+5", 5},
                                         {" 7", 7},
                                         {"80x", 80},
                                         {"-4294967295", 1},
                                         {"0x10", 0}}) {
        BACnetProtocol other;
        other.Address = std::string("127.0.0.1:") + port;
        other.Inited();
        EXPECT_EQ(ntohs(other.Socket().address.sin_port), expected) << port;
    }
}

TEST_F(Block, PortBeyond32BitsThrowsOutOfRangeAndLeavesNoDevice) {
    for (std::string const port :
         {"4294967296", "-4294967296", "18446744073709551615", "18446744073709551616"}) {
        block->Address = "127.0.0.1:" + port;
        try {
            block->Inited();
            ADD_FAILURE() << port;
        } catch (std::out_of_range const& refusal) {
            EXPECT_STREQ(refusal.what(), "stoul");
        }
        EXPECT_EQ(block->Device(), nullptr);
    }
}

TEST_F(Block, PortThatIsNotANumberThrowsInvalidArgumentAndLeavesNoDevice) {
    block->Address = "127.0.0.1:port";
    try {
        block->Inited();
        FAIL() << "no exception";
    } catch (std::invalid_argument const& refusal) {
        EXPECT_STREQ(refusal.what(), "stoul");
    }
    EXPECT_EQ(block->Device(), nullptr);
    block->Execute();
    EXPECT_EQ(log.Text(), "Error create device for poll\n");
}

TEST_F(Block, BadMacIsReportedByEveryCycle) {
    block->MAC = "1.2.3";
    block->Inited();
    ASSERT_NE(block->Device(), nullptr);
    log.Clear();
    block->Execute();
    EXPECT_EQ(log.Text(), "Error create device for poll\n");
    EXPECT_EQ(FaultState(), "none");
}

TEST_F(Block, WithoutVariablesHasNoFault) {
    block->Inited();
    block->Execute();
    EXPECT_EQ(FaultState(), "false, ");
    EXPECT_TRUE(network.SentDatagrams().empty());
}

TEST_F(Block, CleanPollDeliversValuesAndClearsTheFault) {
    long long const plain = AddVariable(1, OpcUaType_Double);
    long long const dataValue = AddVariable(2, DoubleDataValue);
    block->Inited();
    network.Expect(Request(1, 1)).Answer(Answer(1, 1), 4);
    network.Expect(Request(2, 2)).Answer(Answer(2, 2, "82 04 40"), 6);
    block->Execute();
    EXPECT_EQ(NumberOf(plain), 42);
    EXPECT_EQ(StateOf(plain).Status, OpcUa_Good);
    EXPECT_EQ(NumberOf(dataValue), 42);
    EXPECT_EQ(StateOf(dataValue).Status, 0x808C0000u);
    EXPECT_EQ(StateOf(dataValue).Time, ScriptedNetwork::Start + 10 * ScriptedNetwork::UnitsPerMillisecond);
    EXPECT_EQ(FaultState(), "false, ");
    EXPECT_EQ(log.Text(), "");
}

TEST_F(Block, FaultMakesOldDataValuesBadAndLeavesOtherVariablesAlone) {
    long long const plain = AddVariable(1, OpcUaType_Double);
    long long const dataValue = AddVariable(2, DoubleDataValue);
    block->Inited();
    network.ExpectAny().Answer(Answer(1, 1));
    network.ExpectAny().Answer(Answer(2, 2));
    block->Execute();
    network.ExpectAny();
    block->Execute();
    EXPECT_EQ(FaultState(), "true, No connection");
    EXPECT_EQ(NumberOf(plain), 42);
    EXPECT_EQ(StateOf(plain).Status, OpcUa_Good);
    EXPECT_EQ(StateOf(plain).Time, ScriptedNetwork::Start);
    EXPECT_EQ(NumberOf(dataValue), 42);
    EXPECT_EQ(StateOf(dataValue).Status, 0x80000000u);
    EXPECT_EQ(StateOf(dataValue).Time, ScriptedNetwork::Start + 1000 * ScriptedNetwork::UnitsPerMillisecond);
}

TEST_F(Block, FaultMakesTheOldValueOfAFieldBadInThatField) {
    long long const variable = AddVariable(1, DoubleDataValue, "supply");
    store->Write(variable, "", Double(7), ScriptedNetwork::Start);
    block->Inited();
    network.ExpectAny().Answer(Answer(1, 1));
    block->Execute();
    EXPECT_EQ(NumberOf(variable, "supply"), 42);
    EXPECT_EQ(StateOf(variable, "supply").Status, OpcUa_Good);
    network.ExpectAny();
    block->Execute();
    EXPECT_EQ(NumberOf(variable, "supply"), 42);
    EXPECT_EQ(StateOf(variable, "supply").Status, 0x80000000u);
    EXPECT_EQ(NumberOf(variable), 7);
    EXPECT_EQ(StateOf(variable).Status, OpcUa_Good);
}

TEST_F(Block, ValuesGatheredBeforeTheFaultAreDropped) {
    long long const first = AddVariable(1, OpcUaType_Double);
    AddVariable(2, OpcUaType_Double);
    block->Inited();
    network.ExpectAny().Answer(Answer(1, 1));
    network.ExpectAny();
    block->Execute();
    EXPECT_EQ(FaultState(), "true, No connection");
    EXPECT_EQ(StateOf(first).Status, OpcUa_BadNoData);
}

TEST_F(Block, FaultWithoutDataValueVariablesStillSetsTheFaultState) {
    long long const plain = AddVariable(1, OpcUaType_Double);
    block->Inited();
    network.ExpectAny();
    block->Execute();
    EXPECT_EQ(FaultState(), "true, No connection");
    EXPECT_EQ(StateOf(plain).Status, OpcUa_BadNoData);
    EXPECT_EQ(StateOf(plain).Time, 0);
}

TEST_F(Block, DeviceThatAnswersAgainIsGoodInThatCycle) {
    long long const dataValue = AddVariable(1, DoubleDataValue);
    block->Inited();
    network.ExpectAny();
    block->Execute();
    EXPECT_EQ(FaultState(), "true, No connection");
    EXPECT_EQ(StateOf(dataValue).Status, 0x80000000u) << "a variable that has never had a value is bad too";
    network.ExpectAny().Answer(Answer(2, 1));
    block->Execute();
    EXPECT_EQ(FaultState(), "false, ");
    EXPECT_EQ(StateOf(dataValue).Status, OpcUa_Good);
}

TEST_F(Block, InvalidAnswersOfItsDeviceKeepTheVariablesOfAnotherBlock) {
    long long const sound = AddVariable(1, DoubleDataValue);
    block->Inited();
    auto const other = MakeBlock();
    other->CountRepeat = 2;
    long long const lost = AddVariable(*other, 1, DoubleDataValue);
    other->Inited();
    network.Expect(Request(1, 1)).Answer(Answer(1, 1));
    network.Expect(Request(1, 1)).Answer("81 0A 00 0C 01 00 30 01 0E FF FF FF");
    network.Expect(Request(2, 1)).Answer("DE AD BE EF", 5);
    block->Execute();
    other->Execute();
    EXPECT_EQ(NumberOf(sound), 42);
    EXPECT_EQ(StateOf(sound).Status, OpcUa_Good);
    EXPECT_EQ(StateOf(sound).Time, ScriptedNetwork::Start);
    EXPECT_EQ(FaultState(), "false, ");
    EXPECT_EQ(StateOf(lost).Status, 0x80000000u);
    EXPECT_EQ(FaultState(*other), "true, No connection");
}

TEST_F(Block, StoppedRuntimeGetsNoValues) {
    long long const first = AddVariable(1, OpcUaType_Double);
    block->Inited();
    network.Respond([](Octets const&) {
        TBACnet::IsTerminated = true;
        return std::vector<Delivery>{{Answer(1, 1)}};
    });
    block->Execute();
    EXPECT_EQ(log.Text(), "Stop RT. Exit from driver\n");
    EXPECT_EQ(StateOf(first).Status, OpcUa_BadNoData);
    EXPECT_EQ(FaultState(), "none");
}

TEST_F(Block, VariableWithoutAWriteChannelIsNeverWritten) {
    block->WriteCondition = ProtocolWriteCondition::Always;
    long long const variable = AddVariable(1, OpcUaType_Double);
    EXPECT_EQ(block->PendingChannels().at(0)->descriptor->IsWrite, 0);
    block->Inited();
    network.Expect(Request(1, 1)).Answer(Answer(1, 1));
    block->Execute();
    EXPECT_EQ(NumberOf(variable), 42);
    EXPECT_EQ(network.SentDatagrams().size(), 1u) << "only the read";
    DriverVarDsc const& descriptor =
        *block->Device()->Tags().at(ObjectTypeEnum::Analog_Input).at(1).at(0)->descriptor;
    EXPECT_EQ(descriptor.LastWritten.GetType(), OpcUaType_Null) << "the write condition was not evaluated";
}

TEST_F(Block, TimeoutOfTheBlockDoesNotAffectTheExchange) {
    AddVariable(1, OpcUaType_Double);
    block->Timeout = 50;
    block->Inited();
    network.ExpectAny();
    block->Execute();
    EXPECT_EQ(network.Elapsed(), 1000);
}

TEST_F(Block, DestructionClosesTheSocket) {
    AddVariable(1, OpcUaType_Double);
    block->Inited();
    network.ExpectAny().Answer(Answer(1, 1));
    block->Execute();
    EXPECT_EQ(network.OpenSockets(), 1);
    block = std::make_unique<BACnetProtocol>();
    EXPECT_EQ(network.OpenSockets(), 0);
}

}  // namespace
