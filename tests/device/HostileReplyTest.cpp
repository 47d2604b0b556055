// Replies that no correct device sends: cut, corrupted, or random. Every exchange ends, and it delivers only
// values of configured variables.

#include <random>

#include "DeviceFixture.h"

using namespace dorvel::BACnet;
using namespace test;

namespace {

class HostileReply : public DeviceFixture {
protected:
    HostileReply() {
        MakeImpatientDevice();
        AddVariable(code::AnalogInput, code::PresentValue, 1, {OpcUaType_DataValue, OpcUaType_Double});
        AddVariable(code::AnalogInput, code::Description, 1, OpcUaType_String);
        AddVariable(code::AnalogInput, code::OutOfService, 1, OpcUaType_Boolean);
        AddVariable(code::AnalogInput, code::StatusFlags, 1, OpcUaType_UInt64);
    }

    // An answer of 51 octets to the last request.
    Octets CorrectAnswer(unsigned invokeId) const {
        return AnswerDatagram(ReadAck(invokeId, AnalogInput1,
                                      PropertyResult(85, Real42) +
                                          PropertyResult(28, "75 06 00 41 42 43 44 45") +
                                          PropertyResult(81, "10") + PropertyResult(111, FlagsClear)));
    }

    int Process() {
        values.clear();
        return device->ProcessTagM(ObjectIdentifier(ObjectTypeEnum::Analog_Input, 1),
                                   TagsOf(ObjectTypeEnum::Analog_Input, 1), values);
    }

    static unsigned InvokeIdOf(Octets const& request) { return static_cast<unsigned char>(request.at(8)); }

    static void MendLength(Octets& datagram) {
        if (datagram.size() >= 4) {
            datagram[2] = static_cast<char>(datagram.size() >> 8);
            datagram[3] = static_cast<char>(datagram.size());
        }
    }

    void ExpectOnlyConfiguredValues() {
        EXPECT_LE(values.size(), 4u);
        for (WriteDataRec const& record : values) {
            EXPECT_GE(record.Id, 1);
            EXPECT_LE(record.Id, 4);
        }
    }
};

TEST_F(HostileReply, EveryLengthOfATruncatedAnswerIsAFailure) {
    std::size_t length = 0;
    network.Respond([&](Octets const& request) {
        Octets answer = CorrectAnswer(InvokeIdOf(request));
        answer.resize(std::min(length, answer.size()));
        return std::vector<test::Delivery>{{answer}};
    });
    std::size_t const whole = CorrectAnswer(0).size();
    ASSERT_GT(whole, 40u);
    for (length = 0; length < whole; ++length) {
        EXPECT_EQ(Process(), 0) << length;
        EXPECT_TRUE(values.empty()) << length;
    }
    EXPECT_EQ(Process(), 1);
    EXPECT_EQ(values.size(), 4u);
}

TEST_F(HostileReply, EveryLengthOfATruncatedAnswerWithACorrectLengthFieldIsAFailure) {
    std::size_t length = 0;
    network.Respond([&](Octets const& request) {
        Octets answer = CorrectAnswer(InvokeIdOf(request));
        answer.resize(std::min(length, answer.size()));
        MendLength(answer);
        return std::vector<test::Delivery>{{answer}};
    });
    for (; length < CorrectAnswer(0).size(); ++length) {
        EXPECT_EQ(Process(), 0) << length;
        EXPECT_TRUE(values.empty()) << length;
    }
}

TEST_F(HostileReply, EverySingleOctetChangedIsSurvived) {
    std::size_t position = 0;
    unsigned change = 0;
    network.Respond([&](Octets const& request) {
        if (request.at(6) == 0x40) {
            return std::vector<test::Delivery>();
        }
        Octets answer = CorrectAnswer(InvokeIdOf(request));
        answer.at(position) = static_cast<char>(answer.at(position) ^ change);
        return std::vector<test::Delivery>{{answer}};
    });
    for (position = 0; position < CorrectAnswer(0).size(); ++position) {
        for (change = 1; change < 256; change += 7) {
            Process();
            ExpectOnlyConfiguredValues();
        }
    }
}

// Random octets, or a correct answer or segment with a few octets changed, removed or inserted; mostly with a
// correct length field, so that the deeper layers are reached too.
class Mutator {
public:
    explicit Mutator(unsigned seed) : random(seed) {}

    Octets RandomOctets(std::size_t longest) {
        Octets octets(Below(longest + 1));
        for (char& octet : octets) {
            octet = static_cast<char>(Below(256));
        }
        return octets;
    }

    void Mutate(Octets& octets) {
        for (std::size_t step = Below(4); step > 0 && !octets.empty(); --step) {
            auto const position = octets.begin() + static_cast<std::ptrdiff_t>(Below(octets.size()));
            switch (Below(3)) {
                case 0:
                    *position = static_cast<char>(Below(256));
                    break;
                case 1:
                    octets.erase(position);
                    break;
                default:
                    octets.insert(position, static_cast<char>(Below(256)));
            }
        }
    }

    std::size_t Below(std::size_t bound) {
        return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random);
    }

private:
    std::mt19937 random;
};

TEST_F(HostileReply, TenThousandRandomRepliesAreSurvived) {
    Mutator mutator(20240315);
    network.Respond([&](Octets const& request) {
        bool const isSegmentAck = request.at(6) == 0x40;
        unsigned const invokeId = static_cast<unsigned char>(request.at(isSegmentAck ? 7 : 8));
        std::string const payload = ReadResults(AnalogInput1, PropertyResult(85, Real42));
        Octets answer = CorrectAnswer(invokeId);
        if (isSegmentAck || mutator.Below(4) == 0) {
            unsigned const number = isSegmentAck ? static_cast<unsigned char>(request.at(8)) + 1 : 0;
            answer = AnswerDatagram(ReadAckSegment(invokeId, number & 0xFF, mutator.Below(3) != 0, payload));
        } else if (mutator.Below(8) == 0) {
            answer = mutator.RandomOctets(64);
        }
        mutator.Mutate(answer);
        if (mutator.Below(8) != 0) {
            MendLength(answer);
        }
        return std::vector<test::Delivery>{{answer}};
    });
    int answered = 0;
    for (int reply = 0; reply < 10000; ++reply) {
        std::size_t const before = network.SentDatagrams().size();
        answered += Process();
        ExpectOnlyConfiguredValues();
        EXPECT_LT(network.SentDatagrams().size() - before, 1000u);
    }
    EXPECT_GT(answered, 1000) << "the mutations keep too little intact";
    EXPECT_LT(answered, 9000) << "the mutations keep too much intact";
}

TEST_F(HostileReply, DeeplyNestedTagsAreRefused) {
    device->Settings().repeatCount = 1;
    std::string nested = "0C 00 00 00 01 ";
    for (int depth = 0; depth < 1400; ++depth) {
        nested += "1E ";
    }
    network.ExpectAny().Answer(AnswerDatagram("30 01 0E " + nested));
    EXPECT_EQ(Process(), 0);
}

}  // namespace
