// The session with a device: how its constructor reads the block's fields, the tag table, and the poll cycle.

#include <type_traits>

#include "CodeMaps.h"
#include "DeviceFixture.h"

using namespace dorvel::BACnet;
using namespace test;

namespace {

class Session : public DeviceFixture {};

// Guarantees for a caller that reads the records.
static_assert(std::is_same_v<decltype(tagReadData::descriptor), DriverVarDsc*>);
static_assert(std::is_same_v<decltype(tagReadData::address), tagAddress*>);
static_assert(!std::is_copy_constructible_v<tagReadData> && !std::is_copy_assignable_v<tagReadData>);

TEST_F(Session, LocalDeviceIsItsMac) {
    MakeDevice();
    EXPECT_TRUE(device->IsCreated());
    EXPECT_EQ(ToHex(device->Settings().linkAddress), "C0 A8 0A 07 BA C0");
    EXPECT_EQ(ToHex(device->Settings().remoteAddress.bytes), "");
    EXPECT_EQ(device->Settings().remoteAddress.network, 0);
    EXPECT_EQ(network.OpenSockets(), 0);
}

TEST_F(Session, LocalDeviceIgnoresTheAddress) {
    DeviceParameters parameters;
    parameters.address = "no address";
    EXPECT_TRUE(MakeDevice(parameters).IsCreated());
}

TEST_F(Session, RoutedDeviceIsItsMacBehindTheAddress) {
    DeviceParameters parameters;
    parameters.address = "192.168.10.1:47809";
    parameters.mac = "10:20";
    parameters.networkNumber = 5;
    MakeDevice(parameters);
    EXPECT_TRUE(device->IsCreated());
    EXPECT_EQ(ToHex(device->Settings().linkAddress), "C0 A8 0A 01 BA C1");
    EXPECT_EQ(ToHex(device->Settings().remoteAddress.bytes), "0A 14");
    EXPECT_EQ(device->Settings().remoteAddress.network, 5);
}

TEST_F(Session, RoutedDeviceOpensTheFirstFreePortAboveTheSocketsOwn) {
    network.TakePort(47809);
    DeviceParameters parameters;
    parameters.networkNumber = 5;
    MakeDevice(parameters);
    EXPECT_EQ(network.OpenSockets(), 1);
    EXPECT_EQ(socket.port, 47810);
}

TEST_F(Session, DestructorClosesTheSocket) {
    DeviceParameters parameters;
    parameters.networkNumber = 5;
    MakeDevice(parameters);
    ASSERT_EQ(network.OpenSockets(), 1);
    device.reset();
    EXPECT_EQ(network.OpenSockets(), 0);
}

TEST_F(Session, RoutedDeviceOpensItsSocketBeforeItReadsTheAddressOfTheRouter) {
    DeviceParameters parameters;
    parameters.address = "100:x";
    parameters.networkNumber = 5;
    MakeDevice(parameters);
    EXPECT_FALSE(device->IsCreated());
    EXPECT_EQ(network.OpenSockets(), 1);
}

TEST_F(Session, RoutedDeviceOpensNoSocketForABadMac) {
    DeviceParameters parameters;
    parameters.mac = "1.2.3";
    parameters.networkNumber = 5;
    MakeDevice(parameters);
    EXPECT_FALSE(device->IsCreated());
    EXPECT_EQ(network.OpenSockets(), 0);
}

TEST_F(Session, NetworkNumberIsCutTo16Bits) {
    DeviceParameters parameters;
    parameters.networkNumber = 0x10000;
    MakeDevice(parameters);
    EXPECT_EQ(device->Settings().remoteAddress.network, 0);
    EXPECT_EQ(network.OpenSockets(), 0);
}

TEST_F(Session, FieldsOfTheBlockAreCutToTheirWidths) {
    DeviceParameters parameters;
    parameters.timeout = 0x12345;
    parameters.countRepeat = 0x10002;
    parameters.addressNumber = -3;
    parameters.networkNumber = 0x10005;
    parameters.priority = 12;
    TBACnetSettings const& settings = MakeDevice(parameters).Settings();
    EXPECT_EQ(settings.timeout, 0x2345);
    EXPECT_EQ(settings.repeatCount, 2);
    EXPECT_EQ(settings.repeatCountCopy, 2);
    EXPECT_EQ(settings.errorLimit, 2);
    EXPECT_EQ(settings.addressNumber, -3);
    EXPECT_EQ(settings.networkNumber, 5);
    EXPECT_EQ(settings.remoteAddress.network, 5);
    EXPECT_EQ(settings.priority, 12);
    EXPECT_EQ(settings.ReadInvokeId, 0);
}

TEST_F(Session, BadMacIsLoggedAndLeavesNoDevice) {
    DeviceParameters parameters;
    parameters.mac = "1.2.3";
    MakeDevice(parameters);
    EXPECT_FALSE(device->IsCreated());
    EXPECT_EQ(device->Settings().repeatCount, 0);
    EXPECT_EQ(device->Settings().errorLimit, 0);
    EXPECT_EQ(log.Text(), "Format error:  1.2.3, expected: {192.168.10.1:478080} or {10:20:30:40:50:60}\n");
}

TEST_F(Session, BadMacIsNotUsedAsAFormatOfTheLog) {
    DeviceParameters parameters;
    parameters.mac = "1.2.%s%n";
    MakeDevice(parameters);
    EXPECT_EQ(log.Text(),
              "Format error:  1.2.%s%n, expected: {192.168.10.1:478080} or {10:20:30:40:50:60}\n");
}

TEST_F(Session, BadRouterAddressIsLoggedAndLeavesNoDevice) {
    DeviceParameters parameters;
    parameters.address = "100:x";
    parameters.networkNumber = 5;
    MakeDevice(parameters);
    EXPECT_FALSE(device->IsCreated());
    EXPECT_EQ(log.Text(), "unknown error\n");
}

TEST_F(Session, InitTagsSortsByTypeAndNumberAndKeepsTheOrderWithinAnObject) {
    MakeDevice();
    AddVariable(code::AnalogValue, code::PresentValue, 2);
    AddVariable(code::AnalogInput, code::OutOfService, 9);
    AddVariable(code::AnalogInput, code::PresentValue, 9);
    AddVariable(code::AnalogInput, code::PresentValue, 1);
    ASSERT_EQ(device->Tags().size(), 2u);
    ASSERT_EQ(TagsOf(ObjectTypeEnum::Analog_Input, 9).size(), 2u);
    EXPECT_EQ(TagsOf(ObjectTypeEnum::Analog_Input, 9)[0]->descriptor->ReadId, 2);
    EXPECT_EQ(TagsOf(ObjectTypeEnum::Analog_Input, 9)[0]->address->propertyId,
              PropertyIdentifierEnum::Out_Of_Service);
    EXPECT_EQ(TagsOf(ObjectTypeEnum::Analog_Input, 9)[1]->descriptor->ReadId, 3);
    EXPECT_EQ(TagsOf(ObjectTypeEnum::Analog_Value, 2)[0]->address->objectNumber, 2);
}

TEST_F(Session, UnknownCodesAddressObjectType0AndProperty0) {
    MakeDevice();
    AddVariable(999, -5, 4);
    tagAddress const& address = *TagsOf(ObjectTypeEnum::Analog_Input, 4)[0]->address;
    EXPECT_EQ(static_cast<int>(address.propertyId), 0);
    objectTypesMap.erase(999);
    propertyTypesMap.erase(-5);
}

class PollCycle : public DeviceFixture {};

TEST_F(PollCycle, EmptyTagTableIsStartAndDone) {
    MakeDevice();
    log.EnableTrace();
    Poll();
    EXPECT_EQ(log.Text(), "read start\nread done\n");
    EXPECT_FALSE(device->HasFault());
    EXPECT_TRUE(network.SentDatagrams().empty());
}

TEST_F(PollCycle, WithoutTraceNothingIsLogged) {
    MakeDevice();
    Poll();
    EXPECT_EQ(log.Text(), "");
}

TEST_F(PollCycle, ObjectsAreReadByTypeAndNumberNotByConfiguration) {
    MakeDevice();
    AddVariable(code::AnalogValue, code::PresentValue, 1);
    AddVariable(code::AnalogInput, code::PresentValue, 2);
    AddVariable(code::AnalogInput, code::PresentValue, 1);
    network.Expect(ReadRequest(1, AnalogInput1)).Answer(ValueAnswer(1, AnalogInput1));
    network.Expect(ReadRequest(2, AnalogInput2)).Answer(ValueAnswer(2, AnalogInput2));
    network.Expect(ReadRequest(3, AnalogValue1)).Answer(ValueAnswer(3, AnalogValue1));
    log.EnableTrace();
    Poll();
    ASSERT_EQ(values.size(), 3u);
    EXPECT_EQ(values[0].Id, 3);
    EXPECT_EQ(values[1].Id, 2);
    EXPECT_EQ(values[2].Id, 1);
    EXPECT_FALSE(device->HasFault());
    EXPECT_EQ(log.Text(),
              "read start\nObject type 0 number 1\nvalue : 42.000000\nObject type 0 number 2\n"
              "value : 42.000000\nObject type 2 number 1\nvalue : 42.000000\nread done\n");
}

TEST_F(PollCycle, ObjectTypesAreReadByTheirBacnetNumbersNotByTheirCodes) {
    MakeDevice();
    for (int const type : {code::Accumulator, code::AnalogInput, code::MultiStateValue,
                           code::MultiStateOutput, code::OctetStringValue, code::Schedule}) {
        AddVariable(type, code::StatusFlags, 1);
    }
    unsigned invokeId = 0;
    // Types 0, 14, 17, 19, 23 and 47.
    for (std::string const object :
         {"00 00 00 01", "03 80 00 01", "04 40 00 01", "04 C0 00 01", "05 C0 00 01", "0B C0 00 01"}) {
        ++invokeId;
        network.Expect(ReadRequest(invokeId, object, "09 6F"))
            .Answer(AnswerDatagram(ReadAck(invokeId, object, PropertyResult(111, FlagsClear))));
    }
    Poll();
    std::vector<long long> ids;
    for (WriteDataRec const& record : values) {
        ids.push_back(record.Id);
    }
    EXPECT_EQ(ids, (std::vector<long long>{2, 4, 6, 3, 1, 5}));
}

TEST_F(PollCycle, FirstFailedObjectEndsTheCycleWithAFault) {
    MakeImpatientDevice();
    AddVariable(code::AnalogInput, code::PresentValue, 1);
    AddVariable(code::AnalogInput, code::PresentValue, 2);
    AddVariable(code::AnalogValue, code::PresentValue, 1);
    network.Expect(ReadRequest(1, AnalogInput1)).Answer(ValueAnswer(1));
    network.Expect(ReadRequest(2, AnalogInput2));
    log.EnableTrace();
    Poll();
    EXPECT_TRUE(device->HasFault());
    EXPECT_EQ(values.size(), 1u);
    EXPECT_EQ(log.Text(),
              "read start\nObject type 0 number 1\nvalue : 42.000000\nObject type 0 number 2\n"
              "0-2 message size error\nError limit exceeded\n");
}

TEST_F(PollCycle, NextCycleBeginsAgainWithTheFirstObject) {
    MakeImpatientDevice();
    AddVariable(code::AnalogInput, code::PresentValue, 1);
    network.Expect(ReadRequest(1, AnalogInput1));
    network.Expect(ReadRequest(2, AnalogInput1)).Answer(ValueAnswer(2));
    Poll();
    EXPECT_TRUE(device->HasFault());
    Poll();
    EXPECT_FALSE(device->HasFault());
    EXPECT_EQ(values.size(), 1u);
}

TEST_F(PollCycle, UnsupportedPropertyCountsAsAnAnswer) {
    MakeImpatientDevice();
    AddVariable(code::AnalogInput, code::PresentValue, 1);
    AddVariable(code::AnalogInput, code::PresentValue, 2);
    auto const unsupported = AnswerDatagram(ReadAck(1, AnalogInput1, PropertyResult(200, Real42)));
    network.Expect(ReadRequest(1, AnalogInput1)).Answer(unsupported);
    network.Expect(ReadRequest(2, AnalogInput2)).Answer(ValueAnswer(2, AnalogInput2));
    Poll();
    EXPECT_FALSE(device->HasFault());
    EXPECT_EQ(values.size(), 1u);
}

TEST_F(PollCycle, BudgetLargerThanOneFailureIsRestoredByAnAnswer) {
    MakeImpatientDevice();
    device->Settings().errorLimit = 2;
    for (int number = 1; number <= 5; ++number) {
        AddVariable(code::AnalogInput, code::PresentValue, number);
    }
    network.ExpectAny();
    network.ExpectAny().Answer(ValueAnswer(2, AnalogInput2));
    network.ExpectAny();
    network.ExpectAny();
    Poll();
    EXPECT_TRUE(device->HasFault());
    EXPECT_EQ(network.SentDatagrams().size(), 4u);
}

TEST_F(PollCycle, FailureThatCostsMoreThanIsLeftOfTheBudgetEndsThePoll) {
    MakeImpatientDevice();
    device->Settings().repeatCount = 3;
    device->Settings().errorLimit = 2;
    AddVariable(code::AnalogInput, code::PresentValue, 1);
    AddVariable(code::AnalogInput, code::PresentValue, 2);
    for (int attempt = 0; attempt < 3; ++attempt) {
        network.ExpectAny();
    }
    Poll();
    EXPECT_TRUE(device->HasFault());
    EXPECT_EQ(network.SentDatagrams().size(), 3u);
}

TEST_F(PollCycle, CountRepeat0IsAFaultWithoutADatagram) {
    DeviceParameters parameters;
    parameters.countRepeat = 0;
    MakeDevice(parameters);
    AddVariable(code::AnalogInput, code::PresentValue, 1);
    Poll();
    EXPECT_TRUE(device->HasFault());
    EXPECT_TRUE(network.SentDatagrams().empty());
}

TEST_F(PollCycle, StopBetweenTwoObjectsEndsWithoutFaultAndWithoutTheClosingTrace) {
    MakeDevice();
    AddVariable(code::AnalogInput, code::PresentValue, 1);
    AddVariable(code::AnalogInput, code::PresentValue, 2);
    network.Respond([](Octets const&) {
        TBACnet::IsTerminated = true;
        return std::vector<Delivery>{{ValueAnswer(1)}};
    });
    log.EnableTrace();
    Poll();
    EXPECT_FALSE(device->HasFault());
    EXPECT_EQ(values.size(), 1u);
    EXPECT_EQ(network.SentDatagrams().size(), 1u);
    EXPECT_EQ(log.Text(), "read start\nObject type 0 number 1\nvalue : 42.000000\n");
}

TEST_F(PollCycle, StoppedRuntimeIsNotAsked) {
    MakeDevice();
    AddVariable(code::AnalogInput, code::PresentValue, 1);
    TBACnet::IsTerminated = true;
    Poll();
    EXPECT_FALSE(device->HasFault());
    EXPECT_TRUE(network.SentDatagrams().empty());
}

}  // namespace
