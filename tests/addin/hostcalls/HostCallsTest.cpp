// The operations of the host that the add-in calls, with their order and arguments. This program has its own
// definitions of them, which take precedence over those of the host's libraries.

#include "Addin.h"
#include "BlockFixture.h"

using namespace dorvel::BACnet;
using namespace test;

namespace {

// The calls of the current test, in order.
std::vector<std::string> calls;
std::vector<WriteDataRec> writtenValues;

}  // namespace

void LuaDataProvider::WriteValues(std::vector<WriteDataRec> const& values) const {
    calls.push_back("WriteValues: " + std::to_string(values.size()));
    writtenValues = values;
}

void ScadaProtocol::UpdateFaultState(bool fault, std::string const& text) {
    calls.push_back(std::string("UpdateFaultState: ") + (fault ? "true, " : "false, ") + text);
}

void OpcUa_Trace_Imp(int level, char const* /*file*/, int /*line*/, char const* format, ...) {
    calls.push_back("OpcUa_Trace_Imp: " + std::to_string(level) + ", " + format);
}

int RegisterExternalSTLib(char const* name, lua_CFunction /*open*/) {
    calls.push_back(std::string("RegisterExternalSTLib: ") + name);
    return -1;  // taken
}

int RegisterConfigProcessor(char const* name, int order, ConfigProcessor processor, void const* source,
                            void* reserved1, void* reserved2) {
    bool const isOurs = processor == ConfigProcessorCallback;
    bool const isAlone = source == nullptr && reserved1 == nullptr && reserved2 == nullptr;
    calls.push_back(std::string("RegisterConfigProcessor: ") + name + ", " + std::to_string(order) +
                    (isOurs && isAlone ? "" : ", another callback or an argument for it"));
    return 0;
}

namespace {

using Calls = std::vector<std::string>;

OpcUa_BuiltInTypeHlp const DoubleDataValue(OpcUaType_DataValue, OpcUaType_Double);

class HostCalls : public BlockFixture {
protected:
    HostCalls() {
        calls.clear();
        writtenValues.clear();
    }
};

TEST_F(HostCalls, ValuesOfACleanPollAreWrittenBeforeTheFaultState) {
    AddVariable(1, OpcUaType_Double);
    AddVariable(2, DoubleDataValue);
    block->Inited();
    network.ExpectAny().Answer(Answer(1, 1));
    network.ExpectAny().Answer(Answer(2, 2));
    block->Execute();
    EXPECT_EQ(calls, (Calls{"WriteValues: 2", "UpdateFaultState: false, "}));
}

TEST_F(HostCalls, OldValuesAfterAFaultAreWrittenBeforeTheFaultState) {
    AddVariable(1, OpcUaType_Double);
    AddVariable(2, DoubleDataValue);
    block->Inited();
    network.ExpectAny();
    block->Execute();
    EXPECT_EQ(calls, (Calls{"WriteValues: 1", "UpdateFaultState: true, No connection"}));
}

TEST_F(HostCalls, CleanPollWithoutAValueStillWritesValues) {
    block->Inited();
    block->Execute();
    EXPECT_EQ(calls, (Calls{"WriteValues: 0", "UpdateFaultState: false, "}));
}

TEST_F(HostCalls, FaultWithoutADataValueVariableStillWritesValues) {
    AddVariable(1, OpcUaType_Double);
    block->Inited();
    network.ExpectAny();
    block->Execute();
    EXPECT_EQ(calls, (Calls{"WriteValues: 0", "UpdateFaultState: true, No connection"}));
}

TEST_F(HostCalls, OldValueAfterAFaultCarriesTheTimeOfTheFault) {
    long long const variable = AddVariable(1, DoubleDataValue);
    block->Inited();
    network.ExpectAny();
    block->Execute();
    ASSERT_EQ(writtenValues.size(), 1u);
    EXPECT_EQ(writtenValues[0].Id, variable);
    ASSERT_EQ(writtenValues[0].Value.GetType(), OpcUaType_DataValue);
    OpcUa_DataValue const& value = *writtenValues[0].Value.Value.DataValue;
    EXPECT_EQ(value.SourceTimestamp, ScriptedNetwork::Start + 1000 * ScriptedNetwork::UnitsPerMillisecond);
    EXPECT_EQ(value.StatusCode, 0x80000000u);
}

TEST_F(HostCalls, NothingIsReportedWhenTheRuntimeStopsDuringAFault) {
    AddVariable(1, DoubleDataValue);
    block->Inited();
    network.Respond([](Octets const&) {
        TBACnet::IsTerminated = true;
        return std::vector<Delivery>();
    });
    block->Execute();
    EXPECT_EQ(calls, Calls());
    EXPECT_EQ(log.Text(), "Stop RT. Exit from driver\n");
}

// The name of the type is taken here, and only the first call in a process registers it.
TEST_F(HostCalls, InitRegistersTheTypeOnceAndTheProcessorWithItsOrderNumber) {
    std::string const processor = "RegisterConfigProcessor: dorvel_Bacnet, 320";
    EXPECT_EQ(Init(), 0);
    EXPECT_EQ(calls,
              (Calls{"RegisterExternalSTLib: BACnet",
                     "OpcUa_Trace_Imp: 32, BACnetProtocol: Already registred other type with name '%s'",
                     processor}));
    calls.clear();
    EXPECT_EQ(Init(), 0);
    EXPECT_EQ(calls, Calls{processor});
}

}  // namespace
