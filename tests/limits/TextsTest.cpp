// Texts of 64 KB in both directions, and texts of unlimited length in a configuration.

#include <stdexcept>

#include "Exceptions.h"
#include "LimitFixture.h"
#include "Network/AddressParser.h"
#include "Variants.h"

using namespace test;
using Network::AddressParser;

namespace {

// The longest content of a tag with a length in two octets.
constexpr std::size_t MostContent = 0xFFFF;

// An application tag with this content.
Octets LongTag(char first, Octets const& content) {
    Octets tag = {first, '\xFE', static_cast<char>(content.size() >> 8), static_cast<char>(content.size())};
    Append(tag, content);
    return tag;
}

class LongTexts : public LimitFixture {
protected:
    // The text that one variable gets from a device that answers this in segments.
    std::string Read(Octets const& object, char propertyNumber, Octets const& value, int objectType,
                     int propertyCode) {
        SegmentingDevice device(ResultsOf(object, ResultOf(propertyNumber, value)));
        LineNetwork network([&device](int line, Octets const& request) { return device(line, request); });
        Block block;
        long long const id = block.Add(objectType, propertyCode, 1, OpcUaType_String);
        block.driver.Inited();
        block.driver.Execute();
        EXPECT_FALSE(block.HasFault());
        return block.TextOf(id);
    }

    // The datagram that writes a text to a property of an object; empty when none was sent.
    Octets Write(std::string const& text, int objectType, int propertyCode, Octets const& readAnswer) {
        Octets written;
        LineNetwork network([&](int, Octets const& request) -> std::vector<LineAnswer> {
            if (!IsWrite(request)) {
                return {{WholeAnswer(InvokeIdOf(request), readAnswer)}};
            }
            written = request;
            return {{WriteDone(request)}};
        });
        Block block;
        block.driver.WriteCondition = ProtocolWriteCondition::Always;
        long long const id = block.Add(objectType, propertyCode, 1, OpcUaType_String, true);
        block.driver.Inited();
        block.store->Write(id + 1, "", Text(text), 0);
        block.driver.Execute();
        EXPECT_FALSE(block.HasFault()) << "a failed write is not a fault";
        return written;
    }

    static std::string Letters(std::size_t count) {
        std::string text;
        for (std::size_t i = 0; i < count; ++i) {
            text += static_cast<char>('a' + i % 26);
        }
        return text;
    }
};

TEST_F(LongTexts, CharacterStringOf64KBIsRead) {
    std::string const text = Letters(MostContent - 1);
    Octets content = {0};
    content.insert(content.end(), text.begin(), text.end());
    EXPECT_EQ(Read(AnalogInput1Octets(), property::Description, LongTag(0x75, content), code::AnalogInput,
                   code::Description),
              text);
}

TEST_F(LongTexts, OctetStringOf64KBIsReadAndTracedAsItsDigits) {
    std::string digits;
    for (std::size_t i = 0; i < MostContent; ++i) {
        digits += "a5";
    }
    log.EnableTrace();
    EXPECT_EQ(Read(Hex("0B C0 00 01"), property::PresentValue, LongTag(0x65, Octets(MostContent, '\xA5')),
                   code::OctetStringValue, code::PresentValue),
              digits);
    EXPECT_NE(log.Text().find("value : " + digits + "\n"), std::string::npos);
}

TEST_F(LongTexts, EntryOfAScheduleWithATextOf64KBIsRead) {
    std::string const text = Letters(MostContent - 1);
    Octets content = {0};
    content.insert(content.end(), text.begin(), text.end());
    Octets const days =
        Hex("0E B4 0C 00 00 00") + LongTag(0x75, content) + Hex("0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F");
    EXPECT_EQ(Read(Schedule1Octets(), property::WeeklySchedule, days, code::Schedule, code::WeeklySchedule),
              "12000000,7,65534," + text + ";;;;;;;");
}

// The length octet of a written text keeps its low eight bits, the frame's length field its low sixteen.
TEST_F(LongTexts, CharacterStringOf64KBIsWrittenWithAllItsOctets) {
    std::string const text = Letters(0xFFFF);
    Octets const datagram =
        Write(text, code::AnalogInput, code::Description,
              ResultsOf(AnalogInput1Octets(), ResultOf(property::Description, Hex("71 00"))));
    Octets const head = Hex("0C 00 00 00 01 19 55 3E 75 00 00");
    ASSERT_EQ(datagram.size(), 10 + head.size() + text.size() + 1);
    EXPECT_EQ(ToHex(Octets(datagram.begin() + 10, datagram.begin() + 21)), ToHex(head));
    EXPECT_TRUE(std::equal(text.begin(), text.end(), datagram.begin() + 21));
    std::size_t const length =
        static_cast<unsigned char>(datagram[2]) * 256u + static_cast<unsigned char>(datagram[3]);
    EXPECT_EQ(length, datagram.size() & 0xFFFF);
}

TEST_F(LongTexts, ScheduleTextOfAMegabyteIsWritten) {
    std::string day = "12000000,2,1,5";
    while (day.size() < 1000000) {
        day += ",12000000,2,1,5";
    }
    Octets const noDays =
        ResultOf(property::WeeklySchedule, Hex("0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F"));
    Octets const datagram =
        Write(day + ";;;;;;;", code::Schedule, code::WeeklySchedule, ResultsOf(Schedule1Octets(), noDays));
    std::size_t const entries = (day.size() + 1) / 15;
    EXPECT_EQ(datagram.size(), 10 + 5 + 2 + 2 + 7 * 2 + 7 * entries);
}

// One entry with a value of a megabyte, which needs a length field.
TEST_F(LongTexts, ScheduleEntryOfAMegabyteIsWritten) {
    std::string const text = Letters(1000000);
    Octets const noDays =
        ResultOf(property::WeeklySchedule, Hex("0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F 0E 0F"));
    Octets const datagram = Write("12000000,7,1000000," + text + ";;;;;;;", code::Schedule,
                                  code::WeeklySchedule, ResultsOf(Schedule1Octets(), noDays));
    EXPECT_EQ(datagram.size(), 10 + 5 + 2 + 2 + 7 * 2 + 5 + 3 + text.size());
}

TEST_F(LongTexts, AddressOfAMegabyteOfDigitsIsRefused) {
    EXPECT_THROW(AddressParser::ParseAddress(std::string(1000000, '9')), std::runtime_error);
    EXPECT_THROW(AddressParser::ParseAddress(std::string(1000000, '9') + ":1"), std::runtime_error);
    EXPECT_THROW(AddressParser::ParseAddress(std::string(1000000, '.')), ParseException);
    EXPECT_THROW(AddressParser::ParsePort(std::string(1000000, '9')), std::out_of_range);
}

TEST_F(LongTexts, BlockWithAnAddressOfAMegabyteReportsItAndDoesNotPoll) {
    LineNetwork network([](int, Octets const&) { return std::vector<LineAnswer>(); });
    Block block;
    block.driver.MAC = std::string(1000000, '.');
    block.driver.Inited();
    EXPECT_NE(log.Text().find("Format error:  ......"), std::string::npos);
    block.driver.Execute();
    EXPECT_EQ(network.TotalSent(), 0u);

    Block other;
    other.driver.Address = std::string(500000, '1') + ":" + std::string(500000, '0');
    other.driver.Inited();
    other.driver.Execute();
    EXPECT_FALSE(other.HasFault());
}

// Each part of such an address is an octet. A device with such an address is still polled.
TEST_F(LongTexts, AddressOfManyPartsIsParsedInWorkOfItsLength) {
    auto const measure = [](std::size_t parts) {
        std::string text = "1.";
        while (text.size() < 3 * parts) {
            text += ":10";
        }
        AllocationWatch const watch;
        EXPECT_GE(AddressParser::ParseAddress(text).size(), parts - 2);
        return watch.Made();
    };
    EXPECT_LT(Ratio(measure(200000), measure(100000)), 2.1);
}

TEST_F(LongTexts, DeviceWithAnAddressOfManyPartsIsPolled) {
    unsigned long largest = 0;
    LineNetwork network([&largest](int, Octets const& request) {
        largest = request.size();
        return std::vector<LineAnswer>();
    });
    Block block;
    block.driver.NetworkNumber = 5;
    block.driver.MAC = "1.";
    while (block.driver.MAC.size() < 3000) {
        block.driver.MAC += ":10";
    }
    block.Add(code::AnalogInput, code::PresentValue, 1, OpcUaType_Double);
    block.driver.Inited();
    block.driver.Execute();
    EXPECT_TRUE(block.HasFault());
    EXPECT_GT(largest, 30u);
}

TEST_F(LongTexts, NamesAndFieldsOfAMegabyteAreKept) {
    LineNetwork network(
        [](int, Octets const& request) { return std::vector<LineAnswer>{{ValueOf42(request)}}; });
    Block block;
    std::string const name = Letters(1000000);
    ScadaProtocol::ReadChannel const read{block.store->Declare(name, OpcUaType_Double), name,
                                          OpcUaType_Double};
    std::map<std::string, OpcUa_VariantHlp> properties;
    properties["ObjectType"].SetInt(code::AnalogInput);
    properties[name].SetInt(1);
    block.driver.AddChannel(&read, nullptr, properties);
    block.driver.Inited();
    block.driver.Execute();
    EXPECT_FALSE(block.HasFault());
    VariableState state;
    ASSERT_TRUE(block.store->Read(read.Id, name, state));
    double number = 0;
    state.Value.GetDouble(number);
    EXPECT_EQ(number, 42);
    EXPECT_EQ(block.store->Name(read.Id), name);
}

}  // namespace
