#include "Network/AddressParser.h"

#include <gtest/gtest.h>

#include <fstream>
#include <random>

#include "../ScriptedUdpSocket.h"
#include "Exceptions.h"
#include "Hex.h"

using Network::AddressParser;
using test::RuntimeErrorOf;
using test::ToHex;

namespace {

using Parts = std::vector<std::string>;

// The octets of an address text, or the exception's text.
std::string Parsed(std::string const& text) {
    test::RecordSeed("texts", text);
    try {
        return ToHex(AddressParser::ParseAddress(text));
    } catch (ParseException const& error) {
        return std::string("ParseException: ") + error.what();
    } catch (std::runtime_error const& error) {
        return error.what();
    }
}

std::string FormatError(std::string const& text) {
    return "ParseException: Format error:  " + text +
           ", expected: {192.168.10.1:478080} or {10:20:30:40:50:60}";
}

bool EndsWith(std::string const& text, std::string const& end) {
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

// The address texts in a line of a document, such as `"5"`, and what the line has as their octets: `05` in
// the next column or after "gives", or "none" in the next column.
std::vector<std::pair<std::string, std::string>> AddressesIn(std::string const& line) {
    std::vector<std::pair<std::string, std::string>> addresses;
    for (auto start = line.find("`\""); start != std::string::npos; start = line.find("`\"", start + 1)) {
        auto const quote = line.find("\"`", start + 2);
        if (quote == std::string::npos) {
            break;
        }
        std::string const text = line.substr(start + 2, quote - start - 2);
        auto const end = quote + 2;
        std::string const after = line.substr(end, line.find('`', end) - end);
        if (EndsWith(after, " gives ") || EndsWith(after, " | ")) {
            auto const octets = end + after.size() + 1;
            addresses.emplace_back(text, line.substr(octets, line.find('`', octets) - octets));
        } else if (after.compare(0, 7, " | none") == 0) {
            addresses.emplace_back(text, "");
        }
    }
    return addresses;
}

}  // namespace

TEST(AddressParser, EmptyTextGivesNoOctets) {
    EXPECT_EQ(Parsed(""), "");
}

TEST(AddressParser, DottedAddressGetsTheDefaultPort) {
    EXPECT_EQ(Parsed("192.168.10.1"), "C0 A8 0A 01 BA C0");
}

TEST(AddressParser, DottedAddressWithAPort) {
    EXPECT_EQ(Parsed("192.168.10.1:47809"), "C0 A8 0A 01 BA C1");
}

TEST(AddressParser, PortIsCutToSixteenBits) {
    EXPECT_EQ(Parsed("192.168.10.1:70000"), "C0 A8 0A 01 11 70");
}

TEST(AddressParser, DeviceNumbersGiveOneOctetOrSixLittleEndian) {
    EXPECT_EQ(Parsed("5"), "05");
    EXPECT_EQ(Parsed("255"), "FF");
    EXPECT_EQ(Parsed("256"), "00 01 00 00 00 00");
    EXPECT_EQ(Parsed("70000"), "70 11 01 00 00 00");
    EXPECT_EQ(Parsed("0"), "00");
    EXPECT_EQ(Parsed("65535"), "FF FF 00 00 00 00");
    EXPECT_EQ(Parsed("65536"), "00 00 01 00 00 00");
}

TEST(AddressParser, LargestDeviceNumberIs4194301) {
    EXPECT_EQ(Parsed("4194301"), "FD FF 3F 00 00 00");
    EXPECT_EQ(Parsed("4194302"), "");
    EXPECT_EQ(Parsed("2147483647"), "");
}

TEST(AddressParser, NegativeDeviceNumberGivesTwoZeroOctets) {
    EXPECT_EQ(Parsed("-1"), "00 00");
    EXPECT_EQ(Parsed("-2147483648"), "00 00");
}

TEST(AddressParser, PairGivesTwoOctets) {
    EXPECT_EQ(Parsed("10:20"), "0A 14");
    EXPECT_EQ(Parsed("300:-1"), "2C FF");
}

TEST(AddressParser, ThreeFieldsWithoutADotAreAFormatError) {
    EXPECT_EQ(Parsed("10:20:30"), FormatError("10:20:30"));
    EXPECT_EQ(Parsed("10:20:30:40:50:60"), FormatError("10:20:30:40:50:60"));
    EXPECT_EQ(Parsed(":"), FormatError(":"));
    EXPECT_EQ(Parsed("10:"), FormatError("10:"));
}

TEST(AddressParser, TextThatIsNotANumberIsAnUnknownError) {
    EXPECT_EQ(Parsed("abc"), "unknown error");
    EXPECT_EQ(Parsed(":5"), "unknown error");
    EXPECT_EQ(Parsed("a.b.c.d"), "unknown error");
    EXPECT_EQ(Parsed("2147483648"), "unknown error");
}

TEST(AddressParser, ThreePartsOfADottedAddressAreAFormatError) {
    EXPECT_EQ(Parsed("1.2.3"), FormatError("1.2.3"));
    EXPECT_EQ(Parsed("1.2.3.4.5"), FormatError("1.2.3.4.5"));
    EXPECT_EQ(Parsed("."), FormatError("."));
}

TEST(AddressParser, PortFieldIsNotCoveredByTheFallback) {
    EXPECT_EQ(Parsed("1.2.3.4:x"), "unknown error");
    EXPECT_EQ(Parsed("1.2.3.4:x:1"), "unknown error");
}

TEST(AddressParser, ListOfHexadecimalOctetsIsTheFallback) {
    EXPECT_EQ(Parsed("1.2:30"), "01 30");
    EXPECT_EQ(Parsed("1.2.3.4:10:0x20"), "01 10 20");
    EXPECT_EQ(Parsed("A.1:BB:1CC"), "0A BB CC");
    EXPECT_EQ(Parsed("1.2:zz"), "unknown error");
    EXPECT_EQ(Parsed("1.2:80000000"), "unknown error");
    EXPECT_EQ(Parsed(":1.2.3.4"), "unknown error");
}

// Only an address with the wrong number of parts falls back to the list.
TEST(AddressParser, PartThatIsNotANumberDoesNotFallBackToTheList) {
    EXPECT_EQ(Parsed("1.2.x.4:5"), "unknown error");
    EXPECT_EQ(Parsed("1.2.99999999999.4:5"), "unknown error");
}

// A text in a table, or in a sentence with "gives", and its octets.
TEST(AddressParser, ReadsEveryTextOfTheDocumentAsItSays) {
    std::ifstream document(CONFIGURATION_DOCUMENT);
    std::size_t count = 0;
    for (std::string line; std::getline(document, line);) {
        for (auto const& [text, octets] : AddressesIn(line)) {
            EXPECT_EQ(Parsed(text), octets) << line;
            ++count;
        }
    }
    EXPECT_EQ(count, 9u);
}

TEST(AddressParser, TrailingColonAddsNoField) {
    EXPECT_EQ(Parsed("192.168.10.1:"), "C0 A8 0A 01 BA C0");
    EXPECT_EQ(Parsed("192.168.10.1.:7"), "C0 A8 0A 01 00 07");
}

// As on the controller, where `long` has 32 bits.
TEST(AddressParser, PortsThatDoNotFit32BitsAreRefusedOnEveryMachine) {
    EXPECT_EQ(Parsed("1.2.3.4:4294967295"), "01 02 03 04 FF FF");
    EXPECT_EQ(Parsed("1.2.3.4:4294967296"), "unknown error");
    EXPECT_EQ(Parsed("1.2.3.4:18446744073709551615"), "unknown error");
    EXPECT_EQ(Parsed("1.2.3.4:99999999999999999999"), "unknown error");
    EXPECT_EQ(Parsed("1.2.3.4:-1"), "01 02 03 04 FF FF");
    EXPECT_EQ(Parsed("1.2.3.4:-4294967295"), "01 02 03 04 00 01");
    EXPECT_EQ(Parsed("1.2.3.4:-4294967296"), "unknown error");
    EXPECT_EQ(Parsed("1.2.3.4: +80x"), "01 02 03 04 00 50");
}

// The kind and the text of the exception that ParsePort throws.
template <class Refusal>
std::string PortRefusal(std::string const& text) {
    try {
        return std::to_string(AddressParser::ParsePort(text));
    } catch (Refusal const& refusal) {
        return refusal.what();
    }
}

TEST(AddressParser, ParsePortRefusesWithTheTextStoul) {
    EXPECT_EQ(AddressParser::ParsePort("47809"), 47809);
    EXPECT_EQ(AddressParser::ParsePort("70000"), 4464);
    for (std::string const text : {"", "port", "-", "- 5", "x5"}) {
        EXPECT_EQ(PortRefusal<std::invalid_argument>(text), "stoul") << text;
    }
    for (std::string const text : {"4294967296", "-4294967296", "99999999999999999999"}) {
        EXPECT_EQ(PortRefusal<std::out_of_range>(text), "stoul") << text;
    }
}

TEST(AddressParser, ParseIpCutsItsPartsToEightBits) {
    EXPECT_EQ(ToHex(AddressParser::ParseIp("300.-1.256.7")), "2C FF 00 07");
    EXPECT_EQ(ToHex(AddressParser::ParseIp("1.2.3.4.")), "01 02 03 04");
    EXPECT_EQ(RuntimeErrorOf([] { AddressParser::ParseIp("1.2.3"); }), "wrong Ip-address format");
    EXPECT_EQ(RuntimeErrorOf([] { AddressParser::ParseIp(""); }), "wrong Ip-address format");
    EXPECT_THROW(AddressParser::ParseIp("1.2.x.4"), std::invalid_argument);
    EXPECT_THROW(AddressParser::ParseIp("1.2.99999999999.4"), std::out_of_range);
}

TEST(AddressParser, SplitReadsAsGetlineDoes) {
    EXPECT_EQ(AddressParser::Split("", ':'), Parts());
    EXPECT_EQ(AddressParser::Split("a", ':'), Parts({"a"}));
    EXPECT_EQ(AddressParser::Split("a:b:", ':'), Parts({"a", "b"}));
    EXPECT_EQ(AddressParser::Split(":a::b", ':'), Parts({"", "a", "", "b"}));
    EXPECT_EQ(AddressParser::Split(":", ':'), Parts({""}));
}

TEST(AddressParser, AnyTextGivesAsManyOctetsAsItsFormSaysOrOneOfTwoErrors) {
    std::mt19937 random(36);
    std::string const alphabet = "0123456789...:::-+ xaF";
    int parsed = 0;
    for (int i = 0; i < 10000; ++i) {
        std::string text;
        for (auto left = random() % 20; left > 0; --left) {
            text += alphabet[random() % alphabet.size()];
        }
        try {
            auto const size = AddressParser::ParseAddress(text).size();
            bool const isListForm = text.find('.') != std::string::npos;
            EXPECT_TRUE(isListForm || size == 0 || size == 1 || size == 2 || size == 6) << text;
            EXPECT_LE(size, 20u) << text;
            ++parsed;
        } catch (ParseException const& error) {
            EXPECT_EQ(std::string("ParseException: ") + error.what(), FormatError(text));
        } catch (std::runtime_error const& error) {
            EXPECT_STREQ(error.what(), "unknown error") << text;
        }
    }
    EXPECT_GT(parsed, 500);
}
