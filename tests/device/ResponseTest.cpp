// Processing the answer to a read.

#include <typeinfo>

#include "AbortPdu.h"
#include "AbortResponseException.h"
#include "DeviceFixture.h"
#include "EnumValue.h"
#include "ErrorPdu.h"
#include "ErrorResponseException.h"
#include "FakeStream.h"
#include "PduParser.h"
#include "RealValue.h"
#include "RejectPdu.h"
#include "RejectResponseException.h"
#include "SimpleAck.h"
#include "SupportInformation.h"

using namespace dorvel::BACnet;
using namespace test;

namespace {

constexpr unsigned SensorFailure = 2156658688;

class Response : public DeviceFixture {
protected:
    Response() {
        MakeDevice();
        AddVariable(code::AnalogInput, code::PresentValue, 1, DataValueOf(OpcUaType_Double));
        AddVariable(code::AnalogInput, code::OutOfService, 1, DataValueOf(OpcUaType_Boolean));
    }

    static OpcUa_BuiltInTypeHlp DataValueOf(_OpcUa_BuiltInType element) {
        return {OpcUaType_DataValue, element};
    }

    int Process(PDU& pdu, char expected = 1) {
        return device->ProcessResponseM(ObjectIdentifier(ObjectTypeEnum::Analog_Input, 1), expected, pdu,
                                        TagsOf(ObjectTypeEnum::Analog_Input, 1), values);
    }

    int ProcessAck(std::string const& results, unsigned invokeId = 1) {
        FakeStream stream(Hex(ReadAck(invokeId, AnalogInput1, results)));
        return Process(*PduParser::Parse(stream));
    }

    unsigned StatusOf(std::size_t index) {
        OpcUa_VariantHlp const& value = values.at(index).Value;
        return value.GetType() == OpcUaType_DataValue ? value.Value.DataValue->StatusCode : 1;
    }
};

TEST_F(Response, StaleInvokeIdGives0AndNoRecord) {
    log.EnableTrace();
    EXPECT_EQ(ProcessAck(PropertyResult(85, Real42), 200), 0);
    EXPECT_TRUE(values.empty());
    EXPECT_EQ(log.Text(), " InvokeId(200) != ReadInvokeId(1)");
}

TEST_F(Response, StaleInvokeIdIsSilentWithoutTrace) {
    EXPECT_EQ(ProcessAck(PropertyResult(85, Real42), 200), 0);
    EXPECT_EQ(log.Text(), "");
}

TEST_F(Response, StatusFlagsWithOnlyOtherBitsAreGood) {
    for (std::string const flags : {"82 0F 0F", "82 FF 0F", "84 FF FF FF 0F"}) {
        values.clear();
        EXPECT_EQ(ProcessAck(PropertyResult(85, Real42) + PropertyResult(111, flags)), 1);
        EXPECT_EQ(StatusOf(0), 0u) << flags;
    }
}

TEST_F(Response, EachStatusFlagIsASensorFailure) {
    for (std::string const flags : {"82 04 80", "82 04 40", "82 04 20", "82 04 10", "82 04 F0"}) {
        values.clear();
        EXPECT_EQ(ProcessAck(PropertyResult(85, Real42) + PropertyResult(111, flags)), 1);
        EXPECT_EQ(StatusOf(0), SensorFailure) << flags;
    }
}

TEST_F(Response, OnlyPresentValueCarriesTheQuality) {
    EXPECT_EQ(
        ProcessAck(PropertyResult(81, "11") + PropertyResult(85, Real42) + PropertyResult(111, FlagsFault)),
        1);
    ASSERT_EQ(values.size(), 2u);
    EXPECT_EQ(values[0].Id, 2);
    EXPECT_EQ(StatusOf(0), 0u);
    EXPECT_EQ(values[1].Id, 1);
    EXPECT_EQ(StatusOf(1), SensorFailure);
}

TEST_F(Response, TagOnStatusFlagsIsDeliveredGoodAndStillMakesTheQuality) {
    AddVariable(code::AnalogInput, code::StatusFlags, 1, DataValueOf(OpcUaType_UInt64));
    EXPECT_EQ(ProcessAck(PropertyResult(111, FlagsFault) + PropertyResult(85, Real42)), 1);
    ASSERT_EQ(values.size(), 2u);
    EXPECT_EQ(values[0].Id, 1) << "by property number: 85 comes before 111";
    EXPECT_EQ(StatusOf(0), SensorFailure);
    EXPECT_EQ(values[1].Id, 3);
    EXPECT_EQ(StatusOf(1), 0u);
    EXPECT_EQ(AsDouble(values[1]), 4);
}

TEST_F(Response, AckWithoutResultsIsAnAnswerWithoutRecords) {
    EXPECT_EQ(ProcessAck(""), 1);
    EXPECT_TRUE(values.empty());
}

TEST_F(Response, PropertyThatWasNotRequestedIsIgnored) {
    EXPECT_EQ(ProcessAck(PropertyResult(28, "73 00 41 42") + PropertyResult(85, Real42)), 1);
    ASSERT_EQ(values.size(), 1u);
    EXPECT_EQ(values[0].Id, 1);
}

TEST_F(Response, TagWhosePropertyIsMissingGetsNoRecord) {
    EXPECT_EQ(ProcessAck(PropertyResult(81, "11")), 1);
    ASSERT_EQ(values.size(), 1u);
    EXPECT_EQ(values[0].Id, 2);
}

TEST_F(Response, OfTwoTagsOnOnePropertyTheFirstGetsTheValue) {
    AddVariable(code::AnalogInput, code::PresentValue, 1);
    EXPECT_EQ(ProcessAck(PropertyResult(85, Real42)), 1);
    ASSERT_EQ(values.size(), 1u);
    EXPECT_EQ(values[0].Id, 1);
}

TEST_F(Response, RecordOfATypeThatIsNotDeliveredIsStillAppended) {
    TagsOf(ObjectTypeEnum::Analog_Input, 1)[1]->address->propertyId =
        PropertyIdentifierEnum::Object_Identifier;
    auto* results = new ReadPropertyMultipleAck();
    ComplexAck ack(1, ConfirmedServiceChoiceEnum::ReadPropertyMultiple, results);
    results->SetValue(PropertyIdentifierEnum::Object_Identifier, std::make_unique<RealValue>(42.0f));
    EXPECT_EQ(Process(ack), 1);
    ASSERT_EQ(values.size(), 1u);
    EXPECT_EQ(values[0].Id, 2);
    EXPECT_EQ(values[0].Value.GetType(), OpcUaType_Null);
}

TEST_F(Response, RecordsBeforeAnUnsupportedPropertyStay) {
    auto* results = new ReadPropertyMultipleAck();
    ComplexAck ack(1, ConfirmedServiceChoiceEnum::ReadPropertyMultiple, results);
    results->SetValue(PropertyIdentifierEnum::Present_Value, std::make_unique<RealValue>(42.0f));
    results->SetValue(PropertyIdentifierEnum::Setpoint, std::make_unique<RealValue>(1.0f));
    EXPECT_THROW(Process(ack), SupportInformationException);
    EXPECT_EQ(values.size(), 1u);
}

TEST_F(Response, StatusFlagsOfAnotherClassAreABadCast) {
    auto* results = new ReadPropertyMultipleAck();
    ComplexAck ack(1, ConfirmedServiceChoiceEnum::ReadPropertyMultiple, results);
    results->SetValue(PropertyIdentifierEnum::Status_Flags, std::make_unique<RealValue>(42.0f));
    EXPECT_THROW(Process(ack), std::bad_cast);
}

TEST_F(Response, AckOfAnotherServiceIsABadCastOnlyWhenExpected) {
    ComplexAck ack(1, ConfirmedServiceChoiceEnum::ReadPropertyMultiple, nullptr);
    EXPECT_THROW(Process(ack), std::bad_cast);
    EXPECT_EQ(Process(ack, 2), 0);
}

TEST_F(Response, ExpectedErrorThrowsWithClassAndCode) {
    ErrorPdu pdu(1, ConfirmedServiceChoiceEnum::ReadPropertyMultiple,
                 new SimpleError(ErrorClassEnum::Property, ErrorCodeEnum::UnknownObject));
    try {
        Process(pdu);
        FAIL() << "no exception";
    } catch (ErrorResponseException const& refusal) {
        EXPECT_STREQ(refusal.what(), "Recieved packet with error. Class Property Code Property");
        EXPECT_EQ(refusal.GetErrorClass(), ErrorClassEnum::Property);
        EXPECT_EQ(refusal.GetErrorCode(), ErrorCodeEnum::UnknownObject);
    }
}

TEST_F(Response, ErrorWithoutASimpleErrorIsABadCast) {
    ErrorPdu pdu(1, ConfirmedServiceChoiceEnum::ReadPropertyMultiple, nullptr);
    EXPECT_THROW(Process(pdu), std::bad_cast);
}

TEST_F(Response, ExpectedRejectThrowsWithItsReason) {
    RejectPdu pdu(1, static_cast<ReasonEnum>(9));
    try {
        Process(pdu);
        FAIL() << "no exception";
    } catch (RejectResponseException const& refusal) {
        EXPECT_STREQ(refusal.what(), "Error! The packet was rejected. Reason: UnrecognizedService");
        EXPECT_EQ(static_cast<int>(refusal.GetReason()), 9);
    }
}

TEST_F(Response, AbortIsTakenForInvokeId0WhateverItCarries) {
    AbortPdu pdu(1, AbortReasonEnum::TsmTimeout);
    EXPECT_EQ(Process(pdu, 1), 0);
    try {
        Process(pdu, 0);
        FAIL() << "no exception";
    } catch (AbortResponseException const& refusal) {
        EXPECT_STREQ(refusal.what(), "Error! Transaction cancelled. Reason: Other");
        EXPECT_EQ(refusal.GetReason(), AbortReasonEnum::Other);
    }
}

TEST_F(Response, ErrorRejectAndAbortOfAnotherRequestGive0AndATraceLine) {
    log.EnableTrace();
    ErrorPdu error(static_cast<char>(250), ConfirmedServiceChoiceEnum::ReadPropertyMultiple, nullptr);
    EXPECT_EQ(Process(error), 0);
    RejectPdu reject(3, static_cast<ReasonEnum>(9));
    EXPECT_EQ(Process(reject), 0);
    AbortPdu abort(4, AbortReasonEnum::TsmTimeout);
    EXPECT_EQ(Process(abort), 0);
    EXPECT_EQ(log.Text(),
              " OriginalInvokeId(250) != ReadInvokeId(1) OriginalInvokeId(3) != ReadInvokeId(1)"
              " OriginalInvokeId(0) != ReadInvokeId(1)");
}

TEST_F(Response, OtherPduTypesGive0AndATraceLine) {
    log.EnableTrace();
    SimpleAck pdu(1, ConfirmedServiceChoiceEnum::WriteProperty);
    EXPECT_EQ(Process(pdu), 0);
    EXPECT_EQ(log.Text(), " Unknown Answer Type(2)");
}

// A PDU whose type does not match its class.
class Impostor : public SimpleAck {
public:
    explicit Impostor(PduTypeEnum claimed) : type(claimed) {}
    PduTypeEnum PduType() const override { return type; }

private:
    PduTypeEnum type;
};

TEST_F(Response, TypeThatDoesNotFitTheClassIsABadCast) {
    for (auto const type :
         {PduTypeEnum::ComplexAck, PduTypeEnum::Error, PduTypeEnum::Reject, PduTypeEnum::Abort}) {
        Impostor pdu(type);
        EXPECT_THROW(Process(pdu), std::bad_cast) << static_cast<int>(type);
    }
}

}  // namespace
