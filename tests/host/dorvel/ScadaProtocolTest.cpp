#include "dorvel/ScadaProtocol.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "ScriptedNetwork.h"
#include "TestBlock.h"
#include "Variants.h"
#include "dorvelshare/VariableStore.h"

using namespace test;

namespace {

class Protocol : public testing::Test {
protected:
    Protocol() { block.SetDataProvider(&provider); }
    ~Protocol() override { dorvel::SetStandby(false); }

    long long Item(_OpcUa_BuiltInType type) { return store->Declare("item", type); }
    long long Flag(bool value) {
        long long const id = Item(OpcUaType_Boolean);
        Write(id, Bool(value));
        return id;
    }
    void Write(long long id, OpcUa_VariantHlp const& value) { store->Write(id, "", value, network.Now()); }
    OpcUa_VariantHlp Value(long long id) {
        VariableState state;
        store->Read(id, "", state);
        return state.Value;
    }
    bool IsFault() {
        std::lock_guard<std::mutex> const lock(block.State().Mutex);
        return block.State().Fault;
    }

    ScriptedNetwork network;
    std::shared_ptr<VariableStore> store = std::make_shared<VariableStore>();
    LuaDataProvider provider{store, nullptr};
    TestBlock block;
};

}  // namespace

TEST_F(Protocol, ACycleCallsExecute) {
    EXPECT_TRUE(block.Cycle());
    EXPECT_EQ(block.executeCalls, 1);
    EXPECT_FALSE(block.State().Finished);  // only the driver reports the outcome of a poll
}

TEST_F(Protocol, WithoutADataProviderNothingRuns) {
    block.SetDataProvider(nullptr);
    EXPECT_FALSE(block.Cycle());
    EXPECT_EQ(block.executeCalls, 0);
}

TEST_F(Protocol, ACycleNeedsTheExecuteItemToBeTrue) {
    block.ExecuteItemId = Flag(false);
    EXPECT_FALSE(block.Cycle());
    Write(block.ExecuteItemId, Int32(1));
    EXPECT_TRUE(block.Cycle());
    EXPECT_EQ(block.executeCalls, 1);
}

TEST_F(Protocol, AnExecuteItemThatIsUnknownOrNullIsNotTrue) {
    block.ExecuteItemId = 999;
    EXPECT_FALSE(block.Cycle());
    block.ExecuteItemId = Item(OpcUaType_Boolean);
    EXPECT_FALSE(block.Cycle());
}

TEST_F(Protocol, TheStandbyPollsOnlyWithExecuteOnSlave) {
    dorvel::SetStandby(true);
    EXPECT_TRUE(dorvel::IsStandby());
    EXPECT_FALSE(block.Cycle());
    block.ExecuteOnSlave = true;
    EXPECT_TRUE(block.Cycle());
}

TEST_F(Protocol, TheFaultStateIsWrittenToTheItems) {
    block.FaultItemId = Item(OpcUaType_Boolean);
    block.ErrorTextItemId = Item(OpcUaType_String);
    block.ConnectItemId = Item(OpcUaType_Boolean);
    block.UpdateFaultState(true, "No connection");
    EXPECT_EQ(Value(block.FaultItemId), Bool(true));
    EXPECT_EQ(Value(block.ErrorTextItemId), Text("No connection"));
    EXPECT_EQ(Value(block.ConnectItemId), Bool(false));
    block.UpdateFaultState(false, "");
    EXPECT_EQ(Value(block.FaultItemId), Bool(false));
    EXPECT_EQ(Value(block.ErrorTextItemId), Text(""));
    EXPECT_EQ(Value(block.ConnectItemId), Bool(true));
}

TEST_F(Protocol, FaultStateWithoutItemsIsKept) {
    block.UpdateFaultState(true, "why");
    EXPECT_TRUE(block.State().Finished);
    EXPECT_TRUE(IsFault());
    EXPECT_EQ(block.State().ErrorText, "why");
}

TEST_F(Protocol, AnExceptionOfTheDriverIsAFaultWithItsText) {
    block.ErrorTextItemId = Item(OpcUaType_String);
    block.onExecute = [] { throw std::runtime_error("broken"); };
    EXPECT_TRUE(block.Cycle());
    EXPECT_TRUE(IsFault());
    EXPECT_EQ(Value(block.ErrorTextItemId), Text("broken"));
    block.onExecute = [] { throw 5; };
    EXPECT_TRUE(block.Cycle());
    EXPECT_EQ(Value(block.ErrorTextItemId), Text("Unknown error"));
}

TEST_F(Protocol, ACycleIsNotReentered) {
    bool inner = true;
    block.onExecute = [&] { inner = block.Cycle(); };
    EXPECT_TRUE(block.Cycle());
    EXPECT_FALSE(inner);
    EXPECT_EQ(block.executeCalls, 1);
}

TEST_F(Protocol, AFaultPausesForTheReconnectInterval) {
    block.reconnectInterval = 500;
    block.onExecute = [&] { block.UpdateFaultState(true, "silent"); };
    EXPECT_TRUE(block.Cycle());
    EXPECT_FALSE(block.Cycle());
    sockaddr_in sender{};
    char nothing = 0;
    network.Receive(0, sender, &nothing, 0, 500);  // time passes
    EXPECT_TRUE(block.Cycle());
}

TEST_F(Protocol, WithoutAFaultThereIsNoPause) {
    block.reconnectInterval = 500;
    block.onExecute = [&] { block.UpdateFaultState(false, ""); };
    EXPECT_TRUE(block.Cycle());
    EXPECT_TRUE(block.Cycle());
}

TEST_F(Protocol, WritingIsAllowedByDefault) {
    EXPECT_NE(block.isWrite(), 0);
}

TEST_F(Protocol, TheStandbyWritesOnlyWithWriteOnSlave) {
    dorvel::SetStandby(true);
    EXPECT_EQ(block.isWrite(), 0);
    block.WriteOnSlave = true;
    EXPECT_NE(block.isWrite(), 0);
}

TEST_F(Protocol, WritesNeedTheWriteItemToBeTrue) {
    block.WriteItemId = Flag(false);
    for (auto const condition : {ProtocolWriteCondition::OnChange, ProtocolWriteCondition::Always}) {
        block.WriteCondition = condition;
        EXPECT_EQ(block.isWrite(), 0);
    }
    block.WriteCondition = ProtocolWriteCondition::OnTrigger;  // there the item is no gate
    EXPECT_NE(block.isWrite(), 0);
    Write(block.WriteItemId, Bool(true));
    block.WriteCondition = ProtocolWriteCondition::Always;
    EXPECT_NE(block.isWrite(), 0);
}

TEST_F(Protocol, OnChangeTakesTheFirstValueAsWritten) {
    DriverVarDsc descriptor;
    EXPECT_EQ(block.IsNeedWriteValue(Int32(1), descriptor), 0);
    EXPECT_EQ(block.IsNeedWriteValue(Int32(1), descriptor), 0);
    EXPECT_NE(block.IsNeedWriteValue(Int32(2), descriptor), 0);
    EXPECT_EQ(block.IsNeedWriteValue(Int32(2), descriptor), 0);
    EXPECT_NE(block.IsNeedWriteValue(Int32(1), descriptor), 0);
}

TEST_F(Protocol, OnChangeComparesTheValueAndNotItsTime) {
    DriverVarDsc descriptor;
    block.IsNeedWriteValue(DataValue(Int32(1), 10, OpcUa_Good), descriptor);
    EXPECT_EQ(block.IsNeedWriteValue(DataValue(Int32(1), 20, OpcUa_Bad), descriptor), 0);
    EXPECT_NE(block.IsNeedWriteValue(DataValue(Int32(2), 20, OpcUa_Good), descriptor), 0);
}

TEST_F(Protocol, AlwaysWritesInEveryCycle) {
    DriverVarDsc descriptor;
    block.WriteCondition = ProtocolWriteCondition::Always;
    EXPECT_NE(block.IsNeedWriteValue(Int32(1), descriptor), 0);
    EXPECT_NE(block.IsNeedWriteValue(Int32(1), descriptor), 0);
}

TEST_F(Protocol, NullIsNeverWritten) {
    for (auto const condition : {ProtocolWriteCondition::OnChange, ProtocolWriteCondition::Always}) {
        DriverVarDsc descriptor;
        block.WriteCondition = condition;
        block.IsNeedWriteValue(Int32(1), descriptor);
        EXPECT_EQ(block.IsNeedWriteValue(Null(), descriptor), 0);
        EXPECT_EQ(block.IsNeedWriteValue(DataValue(Null(), 1, OpcUa_Good), descriptor), 0);
        EXPECT_EQ(descriptor.LastWritten, Int32(1));
    }
}

TEST_F(Protocol, OnTriggerWritesAtTheRisingEdgeOnce) {
    DriverVarDsc descriptor;
    block.WriteCondition = ProtocolWriteCondition::OnTrigger;
    block.WriteItemId = Flag(false);
    EXPECT_EQ(block.IsNeedWriteValue(Int32(1), descriptor), 0);
    Write(block.WriteItemId, Bool(true));
    EXPECT_NE(block.IsNeedWriteValue(Int32(1), descriptor), 0);
    EXPECT_EQ(block.IsNeedWriteValue(Int32(2), descriptor), 0);
    Write(block.WriteItemId, Bool(false));
    EXPECT_EQ(block.IsNeedWriteValue(Int32(2), descriptor), 0);
    Write(block.WriteItemId, Bool(true));
    EXPECT_NE(block.IsNeedWriteValue(Int32(2), descriptor), 0);
}

TEST_F(Protocol, OnTriggerNeedsToHaveSeenFalse) {
    DriverVarDsc descriptor;
    block.WriteCondition = ProtocolWriteCondition::OnTrigger;
    block.WriteItemId = Flag(true);
    EXPECT_EQ(block.IsNeedWriteValue(Int32(1), descriptor), 0);
}

TEST_F(Protocol, OnTriggerSeesTheEdgeForEveryVariable) {
    DriverVarDsc one;
    DriverVarDsc two;
    block.WriteCondition = ProtocolWriteCondition::OnTrigger;
    block.WriteItemId = Flag(false);
    block.IsNeedWriteValue(Int32(1), one);
    block.IsNeedWriteValue(Int32(1), two);
    Write(block.WriteItemId, Bool(true));
    EXPECT_NE(block.IsNeedWriteValue(Int32(1), one), 0);
    EXPECT_NE(block.IsNeedWriteValue(Int32(1), two), 0);
}

TEST_F(Protocol, OnTriggerWithoutAnItemNeverWrites) {
    DriverVarDsc descriptor;
    block.WriteCondition = ProtocolWriteCondition::OnTrigger;
    EXPECT_EQ(block.IsNeedWriteValue(Int32(1), descriptor), 0);
    EXPECT_EQ(block.IsNeedWriteValue(Int32(2), descriptor), 0);
}

TEST_F(Protocol, InitedInternalAddsEveryChannelAndThenCallsInited) {
    block.Vars.resize(2);
    block.Vars[0].Read = {7, "x", OpcUaType_Double};
    block.Vars[0].Properties["ObjectType"] = Int32(3);
    block.Vars[1].Write = ScadaProtocol::WriteChannel{9, "y", OpcUaType_Int32};
    block.onInited = [&] { EXPECT_EQ(block.descriptors.size(), 2u); };
    block.InitedInternal(nullptr);
    EXPECT_EQ(block.initedCalls, 1);
    ASSERT_EQ(block.descriptors.size(), 2u);
    EXPECT_EQ(block.descriptors[0].IsWrite, 0);
    EXPECT_EQ(block.descriptors[0].ReadId, 7);
    EXPECT_EQ(block.descriptors[0].ReadField, "x");
    EXPECT_EQ(block.descriptors[0].ReadType.Type, OpcUaType_Double);
    EXPECT_EQ(block.channelProperties[0].at("ObjectType"), Int32(3));
    EXPECT_EQ(block.descriptors[1].IsWrite, 1);
    EXPECT_EQ(block.descriptors[1].WriteId, 9);
    EXPECT_EQ(block.descriptors[1].WriteField, "y");
    EXPECT_EQ(block.descriptors[1].WriteType.Type, OpcUaType_Int32);
    EXPECT_EQ(block.DataProvider(), &provider);  // without a Lua state it stays
}

TEST_F(Protocol, InitedInternalKeepsVarsWithoutTheirProperties) {
    block.Vars.resize(2);
    block.Vars[1].Read.Id = 8;
    block.Vars[1].Properties["ObjectType"] = Int32(3);
    block.InitedInternal(nullptr);
    ASSERT_EQ(block.Vars.size(), 2u);
    EXPECT_EQ(block.Vars[1].Read.Id, 8);
    EXPECT_TRUE(block.Vars[1].Properties.empty());
}

TEST(DriverVarDscTest, TheWriteFlagIsTheFirstOctet) {
    DriverVarDsc const descriptor;
    EXPECT_EQ(static_cast<void const*>(&descriptor), static_cast<void const*>(&descriptor.IsWrite));
}
