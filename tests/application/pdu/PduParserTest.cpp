#include "PduParser.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "Apdu.h"

using test::operator+;
using test::Hex;
using test::Octets;
using test::ParseApdu;
using test::TextOf;

namespace {

struct EarlyParse {
    EarlyParse() : type(ParseApdu("20 09 0F")->PduType()) {}
    PduTypeEnum type;
};

// Runs before the static initialisers of every other file.
__attribute__((init_priority(101))) EarlyParse const EarlyParse;

}  // namespace

TEST(PduParser, ParsesBeforeTheRegistryOfItsOwnFileIsInitialised) {
    EXPECT_EQ(EarlyParse.type, PduTypeEnum::SimpleAck);
}

TEST(PduParser, EmptyStreamThrowsWrongLength) {
    EXPECT_EQ(TextOf<WrongLengthException>([] { ParseApdu(""); }), "message size error");
}

TEST(PduParser, UnconfirmedRequestAndSegmentAckThrowFormatError) {
    EXPECT_EQ(TextOf<FormatErrorException>([] { ParseApdu("10 00"); }), "packet format not expected");
    EXPECT_EQ(TextOf<FormatErrorException>([] { ParseApdu("40 01 00 01"); }), "packet format not expected");
}

TEST(PduParser, ComplexAckOfAServiceWithoutAParserThrowsFormatError) {
    EXPECT_EQ(TextOf<FormatErrorException>([] { ParseApdu("30 09 0F"); }), "packet format not expected");
    EXPECT_THROW(ParseApdu("30 09 1D 0E 0F"), FormatErrorException);
}

TEST(PduParser, EveryTypeWithoutAParserThrowsFormatErrorAndTheRegistryDoesNotGrow) {
    for (int first = 0; first < 256; ++first) {
        int const type = first >> 4;
        if (type == 1 || type == 4 || type >= 8) {
            SCOPED_TRACE(first);
            EXPECT_THROW(ParseApdu(Octets{static_cast<char>(first)} + Hex("09 0F 00 00")),
                         FormatErrorException);
        }
    }
    EXPECT_EQ(PduParser::PduParsers.size(), 6u);
}

TEST(PduParser, DefaultRegistryHasAParserForEachTypeWithAClass) {
    PduParser::Registry const parsers = PduParser::GetDefaultPduParsers();
    EXPECT_EQ(parsers.size(), 6u);
    for (int const type : {0, 2, 3, 5, 6, 7}) {
        SCOPED_TRACE(type);
        EXPECT_NE(parsers.at(static_cast<PduTypeEnum>(type)), nullptr);
        EXPECT_NE(PduParser::PduParsers.at(static_cast<PduTypeEnum>(type)), nullptr);
    }
    EXPECT_NE(parsers.at(PduTypeEnum::Abort), PduParser::PduParsers.at(PduTypeEnum::Abort));
}

TEST(PduParser, TypeSelectsTheClass) {
    struct Row {
        char const* apdu;
        PduTypeEnum type;
    };
    for (Row const& row : {
             Row{"00 04 09 0C 0C 00 00 00 01 19 55", PduTypeEnum::ConfirmedRequest},
             Row{"20 09 0F", PduTypeEnum::SimpleAck},
             Row{"30 09 0E 0C 00 00 00 01 1E 1F", PduTypeEnum::ComplexAck},
             Row{"50 09 0E 91 02 91 1F", PduTypeEnum::Error},
             Row{"60 09 04", PduTypeEnum::Reject},
             Row{"70 09 04", PduTypeEnum::Abort},
         }) {
        EXPECT_EQ(ParseApdu(row.apdu)->PduType(), row.type) << row.apdu;
    }
}

TEST(PduParser, OctetsAfterThePduStayInTheStream) {
    FakeStream stream(Hex("20 09 0F AA BB"));
    EXPECT_EQ(PduParser::Parse(stream)->PduType(), PduTypeEnum::SimpleAck);
    EXPECT_EQ(stream.Available(), 2);
}

TEST(PduParser, UnreadServiceChoiceGlobalStartsAtZero) {
    EXPECT_EQ(static_cast<int>(_serviceChoice), 0);
}

TEST(PduParser, SeveralThreadsParseKnownAndUnknownTypesAtOnce) {
    std::vector<int> refused(4, 0);
    std::vector<std::thread> threads;
    for (int& count : refused) {
        threads.emplace_back([&count] {
            for (int round = 0; round < 500; ++round) {
                ParseApdu("30 09 0E 0C 00 00 00 01 1E 1F");
                try {
                    ParseApdu(Octets{static_cast<char>(0x80 + (round % 8) * 16), 0});
                } catch (FormatErrorException const&) {
                    ++count;
                }
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(refused, std::vector<int>(4, 500));
    EXPECT_EQ(PduParser::PduParsers.size(), 6u);
}
