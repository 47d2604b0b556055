// Read transactions of one object: attempts, errors, and the log.

#include "DeviceFixture.h"

using namespace dorvel::BACnet;
using namespace test;

namespace {

class Transaction : public DeviceFixture {
protected:
    Transaction() {
        MakeDevice();
        AddVariable(code::AnalogInput, code::PresentValue, 1);
    }

    int Process(ObjectTypeEnum type = ObjectTypeEnum::Analog_Input, int number = 1) {
        return device->ProcessTagM(ObjectIdentifier(type, static_cast<unsigned>(number)),
                                   TagsOf(type, number), values);
    }

    // The same answer to every attempt, with the invoke id of the request.
    void AnswerAll(std::function<std::string(unsigned invokeId)> apdu) {
        network.Respond([apdu](Octets const& request) {
            return std::vector<Delivery>{{AnswerDatagram(apdu(static_cast<unsigned char>(request.at(8))))}};
        });
    }
};

TEST_F(Transaction, DeliversTheValue) {
    network.Expect(ReadRequest(1, AnalogInput1)).Answer(ValueAnswer(1), 12);
    EXPECT_EQ(Process(), 1);
    ASSERT_EQ(values.size(), 1u);
    EXPECT_EQ(values[0].Id, 1);
    EXPECT_EQ(values[0].Value.GetType(), OpcUaType_Double);
    EXPECT_EQ(AsDouble(values[0]), 42);
    EXPECT_EQ(network.Elapsed(), 12);
}

TEST_F(Transaction, RequestHasItsOctets) {
    network.Expect("81 0A 00 15 01 04 02 74 01 0E 0C 00 00 00 01 1E 09 55 09 6F 1F").Answer(ValueAnswer(1));
    EXPECT_EQ(Process(), 1);
}

TEST_F(Transaction, RepeatCount0SendsNothing) {
    device->Settings().repeatCount = 0;
    EXPECT_EQ(Process(), 0);
    EXPECT_TRUE(network.SentDatagrams().empty());
}

TEST_F(Transaction, SilentDeviceGetsRepeatCountRequestsWithIncreasingInvokeIds) {
    network.Expect(ReadRequest(1, AnalogInput1));
    network.Expect(ReadRequest(2, AnalogInput1));
    network.Expect(ReadRequest(3, AnalogInput1));
    EXPECT_EQ(Process(), 0);
    EXPECT_EQ(network.Elapsed(), 3000);
    EXPECT_EQ(log.Text(), "");
}

TEST_F(Transaction, SilenceIsTracedAsAnEmptyMessage) {
    log.EnableTrace();
    device->Settings().repeatCount = 1;
    network.ExpectAny();
    Process();
    EXPECT_EQ(log.Text(), "0-1 message size error\n");
}

TEST_F(Transaction, DatagramWithoutAnApduCountsAsSilence) {
    log.EnableTrace();
    network.Expect(ReadRequest(1, AnalogInput1)).Answer("81 0A 00 06 01 00");
    network.Expect(ReadRequest(2, AnalogInput1)).Answer(RoutedAnswerDatagram(5, "0A 14", ""));
    network.Expect(ReadRequest(3, AnalogInput1)).Answer(ValueAnswer(3));
    EXPECT_EQ(Process(), 1);
    EXPECT_EQ(log.Text(), "0-1 message size error\n0-1 message size error\nvalue : 42.000000\n");
    EXPECT_EQ(network.Elapsed(), 0);
}

TEST_F(Transaction, AnswerToTheSecondAttemptCounts) {
    network.Expect(ReadRequest(1, AnalogInput1));
    network.Expect(ReadRequest(2, AnalogInput1)).Answer(ValueAnswer(2));
    EXPECT_EQ(Process(), 1);
    EXPECT_EQ(values.size(), 1u);
}

TEST_F(Transaction, InvokeIdWrapsFrom255To0) {
    device->Settings().ReadInvokeId = static_cast<char>(254);
    network.Expect(ReadRequest(255, AnalogInput1));
    network.Expect(ReadRequest(0, AnalogInput1)).Answer(ValueAnswer(0));
    EXPECT_EQ(Process(), 1);
}

TEST_F(Transaction, LateAnswerIsReceivedAndIgnoredAsStale) {
    network.Expect(ReadRequest(1, AnalogInput1)).Answer(ValueAnswer(1), 1500);
    network.Expect(ReadRequest(2, AnalogInput1));
    network.Expect(ReadRequest(3, AnalogInput1)).Answer(ValueAnswer(3));
    log.EnableTrace();
    EXPECT_EQ(Process(), 1);
    EXPECT_EQ(values.size(), 1u);
    EXPECT_EQ(network.Elapsed(), 1500);
    EXPECT_EQ(log.Text(), "0-1 message size error\n InvokeId(1) != ReadInvokeId(2)value : 42.000000\n");
}

TEST_F(Transaction, OneTooManyAnswersShiftsEveryFollowingExchange) {
    network.Expect(ReadRequest(1, AnalogInput1)).Answer(ValueAnswer(1)).Answer(ValueAnswer(1), 1);
    network.Expect(ReadRequest(2, AnalogInput1)).Answer(ValueAnswer(2), 2);
    network.Expect(ReadRequest(3, AnalogInput1)).Answer(ValueAnswer(3), 3);
    network.Expect(ReadRequest(4, AnalogInput1)).Answer(ValueAnswer(4), 4);
    EXPECT_EQ(Process(), 1);
    EXPECT_EQ(Process(), 0) << "each attempt received the answer to the one before";
    EXPECT_EQ(values.size(), 1u);
}

TEST_F(Transaction, SilenceNeverMeetsTheLastAnswerAgain) {
    network.Expect(ReadRequest(1, AnalogInput1)).Answer(ValueAnswer(2));
    network.Expect(ReadRequest(2, AnalogInput1));
    network.Expect(ReadRequest(3, AnalogInput1)).Answer(Octets());
    EXPECT_EQ(Process(), 0);
    EXPECT_TRUE(values.empty());
}

TEST_F(Transaction, AnswerOfAnotherObjectIsAcceptedByItsInvokeIdAlone) {
    network.ExpectAny().Answer(ValueAnswer(1, AnalogInput2));
    EXPECT_EQ(Process(), 1);
    EXPECT_EQ(values.size(), 1u);
}

TEST_F(Transaction, AnswerFromAnotherAddressIsAccepted) {
    network.ExpectAny().AnswerFrom(0x0A000001, ValueAnswer(1));
    EXPECT_EQ(Process(), 1);
    EXPECT_EQ(values.size(), 1u);
}

TEST_F(Transaction, OfTwoTagsOnOnePropertyBothAreRequestedAndTheFirstGetsTheValue) {
    AddVariable(code::AnalogInput, code::PresentValue, 1);
    network.Expect(ReadRequest(1, AnalogInput1, "09 55 09 55 09 6F"))
        .Answer(AnswerDatagram(ReadAck(
            1, AnalogInput1,
            PropertyResult(85, Real42) + PropertyResult(85, Real42) + PropertyResult(111, FlagsClear))));
    EXPECT_EQ(Process(), 1);
    ASSERT_EQ(values.size(), 1u);
    EXPECT_EQ(values[0].Id, 1);
}

TEST_F(Transaction, UnknownCodesRequestProperty0OfAnAnalogInput) {
    AddVariable(999, -5, 2);
    network.Expect(ReadRequest(1, AnalogInput2, "09 00 09 6F"))
        .Answer(AnswerDatagram(ReadAck(1, AnalogInput2, PropertyResult(111, FlagsClear))));
    EXPECT_EQ(Process(ObjectTypeEnum::Analog_Input, 2), 1);
    EXPECT_TRUE(values.empty());
}

TEST_F(Transaction, ErrorPduIsAFailedAttemptAndLoggedAsBadCast) {
    AnswerAll([](unsigned invokeId) { return "50 " + HexOctet(invokeId) + "0E 91 02 91 1F"; });
    EXPECT_EQ(Process(), 0);
    EXPECT_EQ(network.SentDatagrams().size(), 3u);
    EXPECT_EQ(log.Text(), "0-1 std::bad_cast\n0-1 std::bad_cast\n0-1 std::bad_cast\n");
}

TEST_F(Transaction, RejectAbortAndSimpleAckAreFailedAttemptsToo) {
    network.Expect(ReadRequest(1, AnalogInput1)).Answer(AnswerDatagram("60 01 09"));
    network.Expect(ReadRequest(2, AnalogInput1)).Answer(AnswerDatagram("71 02 04"));
    network.Expect(ReadRequest(3, AnalogInput1)).Answer(AnswerDatagram("20 03 0F"));
    EXPECT_EQ(Process(), 0);
    EXPECT_EQ(log.Text(), "0-1 std::bad_cast\n0-1 std::bad_cast\n0-1 std::bad_cast\n");
}

TEST_F(Transaction, UnconfirmedRequestIsAFormatErrorOfOneAttempt) {
    log.EnableTrace();
    network.Expect(ReadRequest(1, AnalogInput1))
        .Answer(AnswerDatagram("10 00 C4 02 00 00 07 22 04 C4 91 00 21 0F"));
    network.Expect(ReadRequest(2, AnalogInput1)).Answer(ValueAnswer(2));
    EXPECT_EQ(Process(), 1);
    EXPECT_EQ(log.Text(), "0-1 packet format not expected\nvalue : 42.000000\n");
}

TEST_F(Transaction, RuntimeErrorsOfTheExchangeAreSilentWithoutTrace) {
    network.ExpectAny().Answer("81 00 00 06 00 30");
    network.ExpectAny().Answer("81 0A 00 08 01 00");
    network.ExpectAny().Answer("81 0A 00 06 02 00");
    EXPECT_EQ(Process(), 0);
    EXPECT_EQ(log.Text(), "");
}

TEST_F(Transaction, RuntimeErrorsOfTheExchangeAreTraced) {
    log.EnableTrace();
    network.ExpectAny().Answer("81 00 00 06 00 30");
    network.ExpectAny().Answer("81 0A 00 08 01 00");
    network.ExpectAny().Answer("81 0A 00 06 02 00");
    EXPECT_EQ(Process(), 0);
    EXPECT_EQ(log.Text(), "0-1 packet format error\n0-1 packet size error\n0-1 Wrong protocol version\n");
}

TEST_F(Transaction, ExceptionOutsideTheFamilyIsLoggedAsUnknown) {
    AddVariable(code::BinaryValue, code::PresentValue, 1);
    AnswerAll([](unsigned id) { return ReadAck(id, "01 40 00 01", PropertyResult(85, "92 00 01")); });
    EXPECT_EQ(Process(ObjectTypeEnum::Binary_Value, 1), 0);
    EXPECT_EQ(log.Text(), "Unknown error\nUnknown error\nUnknown error\n");
}

TEST_F(Transaction, UnsupportedPropertyEndsItAsAnswered) {
    log.EnableTrace();
    network.ExpectAny().Answer(AnswerDatagram(ReadAck(1, AnalogInput1, PropertyResult(200, Real42))));
    EXPECT_EQ(Process(), 1);
    EXPECT_TRUE(values.empty());
    EXPECT_EQ(log.Text(), "0-1 Support Information not found\n");
}

TEST_F(Transaction, LightingOutputCannotBeReadAsItsStatusFlagsHaveNoRow) {
    AddVariable(15, code::PresentValue, 1);
    network.Expect(ReadRequest(1, "0D 80 00 01"))
        .Answer(AnswerDatagram(
            ReadAck(1, "0D 80 00 01", PropertyResult(85, Real42) + PropertyResult(111, FlagsClear))));
    EXPECT_EQ(Process(ObjectTypeEnum::Lighting_Output, 1), 1);
    EXPECT_TRUE(values.empty());
}

TEST_F(Transaction, LightingOutputThatOmitsItsStatusFlagsIsRead) {
    AddVariable(15, code::PresentValue, 1);
    network.ExpectAny().Answer(AnswerDatagram(ReadAck(1, "0D 80 00 01", PropertyResult(85, Real42))));
    EXPECT_EQ(Process(ObjectTypeEnum::Lighting_Output, 1), 1);
    ASSERT_EQ(values.size(), 1u);
    EXPECT_EQ(AsDouble(values[0]), 42);
}

TEST_F(Transaction, PropertyThatIsSentCutIsAnsweredAsAnother) {
    AddVariable(15, 20, 2);  // Power, 384, requested as 128
    network.Expect(ReadRequest(1, "0D 80 00 02", "09 80 09 6F"))
        .Answer(AnswerDatagram(ReadAck(1, "0D 80 00 02", PropertyResult(128, Real42))));
    EXPECT_EQ(Process(ObjectTypeEnum::Lighting_Output, 2), 1);
    EXPECT_TRUE(values.empty());
}

TEST_F(Transaction, FiftyPropertiesAreOneRequest) {
    std::string properties = "09 55 ";
    for (int tag = 0; tag < 49; ++tag) {
        AddVariable(code::AnalogInput, code::Description, 1, OpcUaType_String);
        properties += "09 1C ";
    }
    network.Expect(ReadRequest(1, AnalogInput1, properties + "09 6F")).Answer(ValueAnswer(1));
    EXPECT_EQ(Process(), 1);
}

TEST_F(Transaction, LongPropertyListIsSentWithTheLengthFieldOfInstalledDevices) {
    for (int tag = 0; tag < 129; ++tag) {
        AddVariable(code::AnalogInput, code::PresentValue, 1);
    }
    network.ExpectAny().Answer(ValueAnswer(1));
    EXPECT_EQ(Process(), 1);
    Octets const& request = network.SentDatagrams().at(0).datagram;
    ASSERT_EQ(request.size(), 279u);
    EXPECT_EQ(ToHex(request).substr(0, 17), "81 0A 10 17 01 04");
}

TEST_F(Transaction, RoutedDeviceIsPolledThroughItsRouter) {
    DeviceParameters parameters;
    parameters.address = "192.168.10.1:47808";
    parameters.mac = "10:20";
    parameters.networkNumber = 5;
    MakeDevice(parameters);
    AddVariable(code::AnalogInput, code::PresentValue, 1);
    network.Expect("81 0A 00 1B 01 24 00 05 02 0A 14 FF 02 74 01 0E 0C 00 00 00 01 1E 09 55 09 6F 1F")
        .Answer(RoutedAnswerDatagram(5, "0A 14", ReadAck(1, AnalogInput1, PropertyResult(85, Real42))));
    EXPECT_EQ(Process(), 1);
    EXPECT_EQ(values.size(), 1u);
    EXPECT_EQ(network.SentDatagrams().at(0).localPort, 47809);
}

}  // namespace
