#include <gtest/gtest.h>

#include <random>

#include "AbortPdu.h"
#include "Apdu.h"
#include "ComplexAck.h"
#include "ConfirmedRequestPdu.h"
#include "ErrorPdu.h"
#include "ReadPropertyMultipleAck.h"
#include "RejectPdu.h"
#include "SimpleAck.h"
#include "SupportInformation.h"

using test::operator+;
using test::Hex;
using test::Octets;
using test::ParseApdu;
using test::ToHex;

namespace {

constexpr int Rounds = 10000;

using Random = std::mt19937;

int Below(Random& random, int limit) {
    return std::uniform_int_distribution<int>(0, limit - 1)(random);
}

template <class Container>
auto const& AnyOf(Random& random, Container const& choices) {
    return choices[static_cast<std::size_t>(Below(random, static_cast<int>(std::size(choices))))];
}

// The PDU, or null if the parser threw one of the exceptions that its callers handle.
std::unique_ptr<PDU> ParseOrRefuse(Octets const& apdu) {
    try {
        return ParseApdu(apdu);
    } catch (ParseException const&) {
    } catch (SupportInformationException const&) {
    } catch (ArgumentOutOfRangeException const&) {
    }
    return nullptr;
}

// Expects every value of a parsed ack to belong to a pair of the support table.
void ExpectSupportedValues(ReadPropertyMultipleAck const& ack) {
    EXPECT_LE(ack.GetValues().size(), 127u);
    for (auto const& [property, value] : ack.GetValues()) {
        EXPECT_NE(value, nullptr);
        EXPECT_NO_THROW(
            SupportInformation::GetInstance()->GetPropertyInfo(ack.GetObjectId().GetObjectType(), property));
    }
}

void ExpectComplexAck(ComplexAck const& ack, Octets apdu) {
    EXPECT_EQ(ack.GetSegmentedMessage(), ack.GetServiceAck() == nullptr);
    if (ack.GetSegmentedMessage()) {
        apdu[0] = static_cast<char>(apdu[0] & 0xFC);
        EXPECT_EQ(ToHex(ack.GetBytes()), ToHex(apdu));
    } else if (auto const* multiple = dynamic_cast<ReadPropertyMultipleAck const*>(ack.GetServiceAck())) {
        ExpectSupportedValues(*multiple);
    }
}

// Expects the properties that any PDU parsed from these octets has.
void ExpectFits(PDU const& pdu, Octets const& apdu) {
    ASSERT_EQ(static_cast<int>(pdu.PduType()), static_cast<unsigned char>(apdu.at(0)) >> 4);
    Octets const head{static_cast<char>(apdu[0] & 0xF0), apdu.at(1), apdu.at(2)};
    switch (pdu.PduType()) {
        case PduTypeEnum::SimpleAck:
        case PduTypeEnum::Reject:
            EXPECT_EQ(ToHex(pdu.GetBytes()), ToHex(head));
            break;
        case PduTypeEnum::Error:
            EXPECT_EQ(ToHex(pdu.GetBytes()).substr(0, 8), ToHex(head));
            EXPECT_NE(dynamic_cast<ErrorPdu const&>(pdu).GetError(), nullptr);
            break;
        case PduTypeEnum::Abort:
            EXPECT_EQ(dynamic_cast<AbortPdu const&>(pdu).GetOriginalInvokeId(), apdu[1]);
            break;
        case PduTypeEnum::ConfirmedRequest:
            EXPECT_EQ(dynamic_cast<ConfirmedRequestPdu const&>(pdu).GetInvokeId(), apdu[2]);
            EXPECT_NE(dynamic_cast<ConfirmedRequestPdu const&>(pdu).GetServiceRequest(), nullptr);
            break;
        case PduTypeEnum::ComplexAck:
            ExpectComplexAck(dynamic_cast<ComplexAck const&>(pdu), apdu);
            break;
    }
}

// The number of APDUs from `make` that the parser accepts.
template <class Make>
int ParseMany(Make make) {
    Random random(20240521);
    int parsed = 0;
    for (int round = 0; round < Rounds; ++round) {
        Octets const apdu = make(random);
        SCOPED_TRACE(ToHex(apdu));
        if (auto const pdu = ParseOrRefuse(apdu)) {
            ++parsed;
            ExpectFits(*pdu, apdu);
        }
        if (testing::Test::HasFailure()) {
            break;
        }
    }
    EXPECT_EQ(PduParser::PduParsers.size(), 6u);
    return parsed;
}

Octets RandomOctets(Random& random, int maximum) {
    Octets octets(static_cast<std::size_t>(Below(random, maximum + 1)));
    for (char& octet : octets) {
        octet = static_cast<char>(Below(random, 256));
    }
    return octets;
}

// One octet replaced, dropped or doubled, or the end cut off.
void Mutate(Random& random, Octets& octets) {
    int const size = static_cast<int>(octets.size());
    auto const position = octets.begin() + Below(random, size);
    switch (Below(random, 6)) {
        case 0:
            octets.erase(position);
            break;
        case 1:
            octets.insert(position, *position);
            break;
        case 2:
            octets.erase(position, octets.end());
            break;
        default:
            *position = static_cast<char>(Below(random, 256));
            break;
    }
}

// A ReadPropertyMultiple ComplexACK with valid results, for object types that have the property.
Octets RandomReadAck(Random& random) {
    static char const* const objects[] = {"00 00 00 01", "00 C0 00 02", "02 00 00 03",
                                          "04 40 00 04", "0B 00 00 05", "01 80 00 06"};
    static char const* const results[] = {
        "29 55 4E 44 3F 80 00 00 4F",                 // present-value, real
        "29 55 4E 91 01 4F",                          // present-value, enumerated
        "29 6F 4E 82 04 F0 4F",                       // status-flags
        "29 51 4E 11 4F",                             // out-of-service
        "29 4D 4E 75 05 00 41 42 43 44 4F",           // object-name
        "29 55 4E A4 7C 05 15 02 B4 0C 00 00 00 4F",  // present-value, date and time
        "29 7B 4E 0E B4 08 00 00 00 11 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 4F",  // weekly-schedule
        "29 26 4E 0E 0C 7C 05 15 02 0F 2E B4 08 00 00 00 91 01 2F 39 10 4F",        // exception-schedule
    };
    Octets apdu = Hex("30 09 0E 0C") + Hex(AnyOf(random, objects)) + Hex("1E");
    for (int left = Below(random, 4); left >= 0; --left) {
        apdu = std::move(apdu) + Hex(AnyOf(random, results));
    }
    return std::move(apdu) + Hex("1F");
}

}  // namespace

TEST(RandomApdu, AnyOctetsGiveAPduOrAKnownException) {
    int const parsed = ParseMany([](Random& random) { return RandomOctets(random, 40); });
    EXPECT_GT(parsed, 500);
}

TEST(RandomApdu, OctetsAfterTheHeaderOfAReadAckGiveAPduOrAKnownException) {
    int const parsed = ParseMany(
        [](Random& random) { return Hex("30 09 0E 0C 00 00 00 01 1E") + RandomOctets(random, 60); });
    EXPECT_GT(parsed, 500);
}

TEST(RandomApdu, ReadAckWithAMutatedOctetGivesAPduOrAKnownException) {
    int const parsed = ParseMany([](Random& random) {
        Octets apdu = RandomReadAck(random);
        Mutate(random, apdu);
        return apdu;
    });
    EXPECT_GT(parsed, 500);
    EXPECT_LT(parsed, Rounds);
}

TEST(RandomApdu, ShortPdusWithAMutatedOctetGiveAPduOrAKnownException) {
    static char const* const apdus[] = {
        "02 74 09 0C 0C 00 00 00 01 19 55 29 07",
        "00 04 09 0F 0C 00 80 00 01 19 55 3E 44 3F 80 00 00 3F 49 08",
        "0E 74 09 00 04 0C 0C 00 00 00 01 19 55",
        "20 09 0F",
        "30 09 0C 0C 00 00 00 01 19 55 3E 44 3F 80 00 00 3F",
        "3C 09 00 04 0E 0C 00 00 00 01",
        "50 09 0E 91 02 91 1F",
        "60 09 04",
        "70 09 04",
    };
    int const parsed = ParseMany([](Random& random) {
        Octets apdu = Hex(AnyOf(random, apdus));
        Mutate(random, apdu);
        return apdu;
    });
    EXPECT_GT(parsed, 500);
}
