// Answers after a write: which of them end it, which are ignored, and which are logged.

#include <typeinfo>

#include "AbortPdu.h"
#include "ErrorPdu.h"
#include "ErrorResponseException.h"
#include "RejectPdu.h"
#include "RejectResponseException.h"
#include "SimpleAck.h"
#include "WriteFixture.h"

using namespace dorvel::BACnet;
using namespace test;

namespace {

constexpr long long Wait = TBACnet::ReceiveTimeout;

class WriteResponse : public WriteFixture {
protected:
    // Writes once and delivers these datagrams, each 10 ms after the last one. Returns the log.
    std::string LogFor(std::vector<Octets> const& answers) {
        log.Clear();
        long long const before = network.Elapsed();
        ScriptedExchange& exchange = network.ExpectAny();
        for (std::size_t i = 0; i < answers.size(); ++i) {
            exchange.Answer(answers[i], 10 * static_cast<long long>(i + 1));
        }
        WriteSetpoint();
        duration = network.Elapsed() - before;
        return log.Text();
    }
    std::string LogFor(std::string const& hex) { return LogFor(std::vector<Octets>{Hex(hex)}); }

    // The invoke id of the next write.
    static unsigned Next() { return (WriteInvokeId.load() + 1u) & 0xFF; }

    long long duration = 0;
};

TEST_F(WriteResponse, AckFirstIsFollowedByOneReceiveThatWaitsInVain) {
    EXPECT_EQ(LogFor({WriteAck(1)}), "");
    EXPECT_EQ(duration, 10 + Wait);
}

TEST_F(WriteResponse, AckAfterAStaleAnswerEndsTheWriteAtOnce) {
    EXPECT_EQ(LogFor({WriteAck(9), WriteAck(1)}), "");
    EXPECT_EQ(duration, 20);
}

TEST_F(WriteResponse, SecondAckEndsTheWriteAtOnce) {
    EXPECT_EQ(LogFor({WriteAck(1), WriteAck(1)}), "");
    EXPECT_EQ(duration, 20);
}

TEST_F(WriteResponse, StaleAnswersAreReadOffTheSocketAfterTheAck) {
    EXPECT_EQ(LogFor({WriteAck(1), ValueAnswer(1), WriteAck(77), WriteReject(78, 4)}), "");
    EXPECT_EQ(duration, 40 + Wait);
    AddVariable(code::AnalogInput, code::PresentValue, 1);
    network.Expect(ReadRequest(1, AnalogInput1)).Answer(ValueAnswer(1));
    Poll();
    EXPECT_EQ(values.size(), 1u) << "in its first attempt";
}

TEST_F(WriteResponse, SilenceIsLoggedAsAnEmptyMessageAndEndsTheWrite) {
    EXPECT_EQ(LogFor(std::vector<Octets>()), "message size error");
    EXPECT_EQ(duration, Wait) << "no further receive";
}

TEST_F(WriteResponse, SocketThatCannotSendIsSilence) {
    network.RefuseToSend();
    WriteSetpoint();
    EXPECT_EQ(log.Text(), "message size error");
}

TEST_F(WriteResponse, EmptyDatagramCountsAsSilence) {
    EXPECT_EQ(LogFor({Octets()}), "message size error");
    EXPECT_EQ(LogFor({WriteAck(Next()), Octets(), WriteError(Next(), 2, 40)}), "")
        << "a result of 0 ends the receiving";
    EXPECT_EQ(duration, 20);
}

TEST_F(WriteResponse, NegativeResultOfTheReceiveEndsTheWriteAsWell) {
    network.Respond([this](Octets const&) {
        socket.open = 0;  // lost, and there is no other one
        network.RefuseToOpen();
        return std::vector<Delivery>{{WriteAck(9)}};
    });
    WriteSetpoint();
    EXPECT_EQ(log.Text(), "");
    EXPECT_EQ(network.Elapsed(), 0) << "there was no second receive";
}

TEST_F(WriteResponse, LastReplyIsNeverParsedAgainWhenNothingComes) {
    // Parsing this error again, with the invoke id that it then matches, would log it.
    network.ExpectAny().Answer(WriteError(2, 2, 40));
    WriteSetpoint();
    EXPECT_EQ(log.Text(), "");
    network.ExpectAny();
    WriteSetpoint();
    EXPECT_EQ(log.Text(), "message size error");
}

TEST_F(WriteResponse, ErrorOfTheWriteEndsItWithItsText) {
    EXPECT_EQ(LogFor({WriteError(1, 2, 40)}), "Error! Error packet. Class: Property Code: WriteAccessDenied");
    EXPECT_EQ(duration, 10) << "no further receive";
}

TEST_F(WriteResponse, ErrorAfterStaleAnswersEndsTheWriteToo) {
    EXPECT_EQ(LogFor({WriteAck(9), WriteAbort(1, 4), WriteError(1, 2, 37), WriteAck(1)}),
              "Error! Error packet. Class: Property Code: ValueOutOfRange");
    EXPECT_EQ(duration, 30);
}

TEST_F(WriteResponse, ErrorForAnotherInvokeIdIsIgnoredAndThePathKeepsReceiving) {
    EXPECT_EQ(LogFor({WriteError(7, 2, 40)}), "");
    EXPECT_EQ(duration, 10 + Wait);
    EXPECT_EQ(LogFor({WriteError(7, 2, 40), WriteError(8, 2, 40), WriteAck(2)}), "");
    EXPECT_EQ(duration, 30);
}

TEST_F(WriteResponse, EveryErrorHasTheTextsOfItsClassAndCode) {
    EXPECT_EQ(LogFor({WriteError(Next(), 1, 31)}), "Error! Error packet. Class: Object Code: UnknownObject");
    EXPECT_EQ(LogFor({WriteError(Next(), 2, 32)}),
              "Error! Error packet. Class: Property Code: UnknownProperty");
    EXPECT_EQ(LogFor({WriteError(Next(), 2, 9)}),
              "Error! Error packet. Class: Property Code: InvalidDataType");
    EXPECT_EQ(LogFor({WriteError(Next(), 200, 0)}), "Error! Error packet. Class: UnknownError Code: Other");
    for (unsigned number = 0; number < 256; ++number) {
        std::string const expected =
            "Error! Error packet. Class: " + ErrorPdu::Message(static_cast<ErrorClassEnum>(number)) +
            " Code: " + ErrorPdu::Message(static_cast<ErrorCodeEnum>(255 - number));
        EXPECT_EQ(LogFor({WriteError(Next(), number, 255 - number)}), expected);
    }
}

TEST_F(WriteResponse, RejectOfTheWriteEndsItWithItsReason) {
    EXPECT_EQ(LogFor({WriteReject(1, 3)}),
              "Error! The packet was rejected. Reason: InvalidParameterDataType");
    EXPECT_EQ(duration, 10);
    EXPECT_EQ(LogFor({WriteReject(Next(), 9)}),
              "Error! The packet was rejected. Reason: UnrecognizedService");
    for (unsigned reason = 0; reason < 256; ++reason) {
        EXPECT_EQ(
            LogFor({WriteReject(Next(), reason)}),
            "Error! The packet was rejected. Reason: " + RejectPdu::Message(static_cast<ReasonEnum>(reason)));
    }
}

TEST_F(WriteResponse, RejectForAnotherInvokeIdIsIgnored) {
    EXPECT_EQ(LogFor({WriteReject(7, 3), WriteAck(1)}), "");
    EXPECT_EQ(duration, 20);
}

TEST_F(WriteResponse, AbortIsIgnoredAndTheWriteKeepsWaiting) {
    EXPECT_EQ(LogFor({WriteAbort(1, 4)}), "");
    EXPECT_EQ(duration, 10 + Wait);
}

TEST_F(WriteResponse, AnswerOfAnotherServiceIsNotItsAnswer) {
    EXPECT_EQ(LogFor({ValueAnswer(1)}), "");
    EXPECT_EQ(duration, 10 + Wait);
}

TEST_F(WriteResponse, AckWithTheInvokeIdOfTheWriteCountsWhateverItsService) {
    EXPECT_EQ(LogFor({WriteAck(9), AnswerDatagram("20 01 63")}), "");
    EXPECT_EQ(duration, 20);
}

TEST_F(WriteResponse, InvalidDatagramEndsTheWriteWithItsText) {
    EXPECT_EQ(LogFor("DE AD BE EF"), "packet format error");
    EXPECT_EQ(duration, 10);
    EXPECT_EQ(LogFor("81"), "packet format error");
    EXPECT_EQ(LogFor("81 00 00 06 00 30"), "packet format error") << "a BVLC-Result";
    EXPECT_EQ(LogFor("81 0A 00 0A 01 00 20 03 0F"), "packet size error");
    EXPECT_EQ(LogFor("81 0A 00 06 01 00"), "message size error");
    EXPECT_EQ(LogFor("81 0A 00 08 01 00 20 03"), "message size error");
    EXPECT_EQ(LogFor("81 0A 00 09 01 00 F0 03 0F"), "packet format not expected");
    EXPECT_EQ(LogFor("81 0A 00 0A 01 00 30 03 0F 00"), "packet format not expected")
        << "an ack of a service without a parser";
}

TEST_F(WriteResponse, InvalidDatagramAfterTheAckIsLoggedToo) {
    EXPECT_EQ(LogFor({WriteAck(1), Hex("DE AD BE EF"), WriteAck(1)}), "packet format error");
    EXPECT_EQ(duration, 20);
}

TEST_F(WriteResponse, StaleAnswersKeepThePathReceivingHoweverMany) {
    std::vector<Octets> answers(500, WriteAck(200));
    answers.push_back(WriteAck(1));
    EXPECT_EQ(LogFor(answers), "");
    EXPECT_EQ(duration, 5010);
}

TEST_F(WriteResponse, InvokeIdAfter255WritesIs0) {
    network.Respond([](Octets const& request) {
        unsigned const invokeId = static_cast<unsigned char>(request.at(8));
        return std::vector<Delivery>{{WriteAck(invokeId)}, {WriteAck(invokeId)}};
    });
    for (int i = 0; i < 255; ++i) {
        WriteSetpoint();
    }
    EXPECT_EQ(WriteInvokeId.load(), 255);
    network.Expect(Setpoint(0)).Answer(WriteAck(0));
    WriteSetpoint();
    EXPECT_EQ(WriteInvokeId.load(), 0);
    EXPECT_EQ(network.SentDatagrams().size(), 256u);
    EXPECT_EQ(log.Text(), "");
}

TEST_F(WriteResponse, InvokeIdIsSharedByAllDevices) {
    NLSocket otherSocket;
    NLInitSocket(&otherSocket);
    TBACnet other(otherSocket, new sockaddr_in(), TaskNumber, "", "192.168.10.8:47808", 1000, 3, 1, 0, 0);
    auto tag = MakeTag(Object::Analog_Value, Property::Present_Value);
    OpcUa_VariantHlp value = Double(1);
    network.Expect(Setpoint(1)).Answer(WriteAck(1));
    device->Write(tag.get(), value);
    network.Expect(Setpoint(2)).Answer(WriteAck(2));
    other.Write(tag.get(), value);
    network.Expect(Setpoint(3)).Answer(WriteAck(3));
    device->Write(tag.get(), value);
    EXPECT_EQ(device->Settings().ReadInvokeId, 0);
    EXPECT_EQ(log.Text(), "");
}

TEST_F(WriteResponse, AnswerCountsOnlyWhileNoOtherBlockHasWritten) {
    network.Respond([](Octets const&) {
        WriteInvokeId = 50;  // other blocks, meanwhile
        return std::vector<Delivery>{{WriteError(1, 2, 40)}, {WriteAck(50), 10}};
    });
    WriteSetpoint();
    EXPECT_EQ(log.Text(), "");
    EXPECT_EQ(network.Elapsed(), 10) << "the ack of another block's write ends this one";
}

TEST_F(WriteResponse, FailedWritesNeverDisturbThePoll) {
    AddVariable(code::AnalogInput, code::PresentValue, 1);
    network.Expect(ReadRequest(1, AnalogInput1)).Answer(ValueAnswer(1));
    Poll();
    LogFor({WriteError(Next(), 2, 40)});
    LogFor({WriteReject(Next(), 4)});
    LogFor({WriteAbort(Next(), 4)});
    LogFor("DE AD BE EF");
    LogFor(std::vector<Octets>());
    Write(Object::Analog_Value, Property::Units, Int32(1));
    EXPECT_FALSE(device->HasFault());
    EXPECT_EQ(device->Settings().errorLimit, 3);
    EXPECT_EQ(device->Settings().repeatCount, 3);
    EXPECT_EQ(device->Settings().ReadInvokeId, 1);
    // The third attempt is still left.
    network.Expect(ReadRequest(2, AnalogInput1));
    network.Expect(ReadRequest(3, AnalogInput1));
    network.Expect(ReadRequest(4, AnalogInput1)).Answer(ValueAnswer(4));
    Poll();
    EXPECT_EQ(values.size(), 1u);
    EXPECT_FALSE(device->HasFault());
}

TEST_F(WriteResponse, WriteIsNeverRepeated) {
    LogFor(std::vector<Octets>());
    LogFor({WriteError(2, 2, 40)});
    EXPECT_EQ(network.SentDatagrams().size(), 2u);
}

// Answers as objects, including those that no octets give.
class WriteAnswer : public ::testing::Test {
protected:
    WriteAnswer() { WriteInvokeId = 200; }

    static bool Process(PDU&& pdu) {
        auto const tag = MakeTag(ObjectTypeEnum::Analog_Value, PropertyIdentifierEnum::Present_Value);
        return ProcessWriteResponse(pdu, *tag);
    }

    static constexpr char Own = static_cast<char>(200);
    static constexpr auto Service = ConfirmedServiceChoiceEnum::WriteProperty;
};

TEST_F(WriteAnswer, IsTheAckOfTheLatestWrite) {
    EXPECT_TRUE(Process(SimpleAck(Own, Service)));
    EXPECT_FALSE(Process(SimpleAck(72, Service)));
}

TEST_F(WriteAnswer, ErrorAndRejectHaveTheirNumbers) {
    try {
        Process(ErrorPdu(Own, Service,
                         new SimpleError(static_cast<ErrorClassEnum>(2), static_cast<ErrorCodeEnum>(40))));
        FAIL();
    } catch (ErrorResponseException const& refusal) {
        EXPECT_EQ(static_cast<int>(refusal.GetErrorClass()), 2);
        EXPECT_EQ(static_cast<int>(refusal.GetErrorCode()), 40);
    }
    try {
        Process(RejectPdu(Own, static_cast<ReasonEnum>(9)));
        FAIL();
    } catch (RejectResponseException const& refusal) {
        EXPECT_EQ(static_cast<int>(refusal.GetReason()), 9);
    }
}

TEST_F(WriteAnswer, WithoutASimpleErrorThrowsBadCast) {
    class OtherError : public ErrorBase {
        std::vector<char> GetBytes() const override { return {}; }
        bool Equals(ErrorBase&) const override { return false; }
    };
    EXPECT_THROW(Process(ErrorPdu(Own, Service, new OtherError)), std::bad_cast);
    EXPECT_THROW(Process(ErrorPdu(Own, Service, static_cast<ErrorBase*>(nullptr))), std::bad_cast);
    EXPECT_FALSE(Process(ErrorPdu(1, Service, new OtherError)));
}

TEST_F(WriteAnswer, OfAnotherClassThanItsTypeThrowsBadCast) {
    class Impostor : public AbortPdu {
    public:
        explicit Impostor(PduTypeEnum pretended) : type(pretended) {}
        PduTypeEnum PduType() const override { return type; }

    private:
        PduTypeEnum type;
    };
    EXPECT_THROW(Process(Impostor(PduTypeEnum::SimpleAck)), std::bad_cast);
    EXPECT_THROW(Process(Impostor(PduTypeEnum::Error)), std::bad_cast);
    EXPECT_THROW(Process(Impostor(PduTypeEnum::Reject)), std::bad_cast);
    EXPECT_FALSE(Process(Impostor(PduTypeEnum::Abort)));
    EXPECT_FALSE(Process(Impostor(PduTypeEnum::ComplexAck)));
}

}  // namespace
