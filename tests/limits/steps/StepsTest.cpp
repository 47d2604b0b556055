// Work is proportional to the size: twice the size takes twice the steps.

#include "../LimitFixture.h"
#include "ExceptionScheduleValue.h"
#include "FakeStream.h"
#include "Network/AddressParser.h"
#include "StepCounter.h"
#include "TagParser.h"
#include "Variants.h"
#include "WeeklyScheduleValue.h"

using namespace test;

namespace {

std::string Times(std::size_t count, std::string const& part) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += part;
    }
    return text;
}

class Steps : public LimitFixture {
protected:
    // The body gets a size and does the work that is counted.
    template <class Body>
    static void ExpectProportional(std::size_t size, Body const& body) {
        body(1);  // builds the tables of the first use
        std::size_t const half = StepsOf([&] { body(size / 2); });
        std::size_t const whole = StepsOf([&] { body(size); });
        // The octets of a text are copied as blocks, which takes no step for each of them.
        EXPECT_GT(half, 5000u) << "the driver's steps are counted at all";
        EXPECT_LT(static_cast<double>(whole) / static_cast<double>(half), 2.1);
    }

    // One cycle of a block with one variable, with a device that answers this in segments.
    static void Poll(Octets const& payload, int objectType, int propertyCode, std::size_t perSegment) {
        SegmentingDevice device(payload, perSegment);
        LineNetwork network([&device](int line, Octets const& request) { return device(line, request); });
        Block block;
        block.Add(objectType, propertyCode, 1, OpcUaType_String);
        block.driver.Inited();
        block.driver.Execute();
    }
};

TEST_F(Steps, OfADeepTreeReadWrittenAndDestroyed) {
    ExpectProportional(SegmentingDevice::MostOctets / 2, [](std::size_t depth) {
        FakeStream stream(Octets(depth, 0x0E) + Octets(depth, 0x0F));
        TagParser::ReadTag(stream)->GetBytes();
    });
}

TEST_F(Steps, OfAWideTreeReadWrittenAndDestroyed) {
    ExpectProportional(SegmentingDevice::MostOctets / 2, [](std::size_t width) {
        FakeStream stream(Octets{0x0E} + Octets(2 * width, 0x10) + Octets{0x0F});
        TagParser::ReadTag(stream)->GetBytes();
    });
}

TEST_F(Steps, OfSegmentsByTheirNumber) {
    ExpectProportional(256, [](std::size_t segments) {
        Octets const content(2 * segments, 'a');
        Poll(ResultsOf(AnalogInput1Octets(), ResultOf(property::Description, content)), code::AnalogInput,
             code::Description, 2);
    });
}

TEST_F(Steps, OfSegmentsWithoutEnd) {
    ExpectProportional(20000, [](std::size_t segments) {
        Poll(Octets(segments, 0x0E), code::AnalogInput, code::PresentValue, 1);
    });
}

TEST_F(Steps, OfALongText) {
    ExpectProportional(0xFFFF, [](std::size_t size) {
        Octets text = {0x75, '\xFE', static_cast<char>(size >> 8), static_cast<char>(size)};
        text.resize(4 + size, 'a');
        Poll(ResultsOf(AnalogInput1Octets(), ResultOf(property::Description, text)), code::AnalogInput,
             code::Description, SegmentingDevice::Room);
    });
}

TEST_F(Steps, OfALongListOfResults) {
    ExpectProportional(40000, [](std::size_t pairs) {
        std::string const pair = "\x29\x55\x4E\x44\x3F\x80";
        std::string const end("\0\0\x4F", 3);
        std::string const results = Times(pairs, pair + end);
        Poll(ResultsOf(AnalogInput1Octets(), Octets(results.begin(), results.end())), code::AnalogInput,
             code::PresentValue, SegmentingDevice::Room);
    });
}

TEST_F(Steps, OfALongWeeklySchedule) {
    ExpectProportional(50000, [](std::size_t entries) {
        std::string const entry("\xB4\x0C\0\0\0\x21\x05", 7);
        std::string const day = '\x0E' + Times(entries, entry) + '\x0F' + Times(6, "\x0E\x0F");
        Poll(ResultsOf(Schedule1Octets(), ResultOf(property::WeeklySchedule, Octets(day.begin(), day.end()))),
             code::Schedule, code::WeeklySchedule, SegmentingDevice::Room);
        WeeklyScheduleValue(Times(entries, "12000000,2,1,5,") + "12000000,2,1,5;;;;;;;",
                            EncodingTypeEnum::Schedule)
            .ToApplicationComplexTags();
    });
}

TEST_F(Steps, OfALongExceptionSchedule) {
    ExpectProportional(20000, [](std::size_t events) {
        std::string const event("\x1C\x01\x80\0\x01\x2E\xB4\x0C\0\0\0\x21\x05\x2F\x39\x03", 16);
        std::string const all = Times(events, event);
        Poll(ResultsOf(Schedule1Octets(),
                       ResultOf(property::ExceptionSchedule, Octets(all.begin(), all.end()))),
             code::Schedule, code::ExceptionSchedule, SegmentingDevice::Room);
        ExceptionScheduleValue(Times(events, "3,1,3,12000000,2,1,5;"), EncodingTypeEnum::Schedule)
            .ToApplicationComplexTags();
    });
}

TEST_F(Steps, OfALongAddress) {
    ExpectProportional(
        200000, [](std::size_t parts) { Network::AddressParser::ParseAddress("1." + Times(parts, ":10")); });
}

class StepsOfABlock : public Steps {
protected:
    // A block with this number of variables: two polls, one of a silent device, and a write of all.
    static void Live(std::size_t variables, bool ofOneObject) {
        bool isSilent = false;
        LineNetwork network([&isSilent](int, Octets const& request) -> std::vector<LineAnswer> {
            if (isSilent) {
                return {};
            }
            return {{IsWrite(request) ? WriteDone(request) : ValueOf42(request)}};
        });
        Block block;
        block.driver.WriteCondition = ProtocolWriteCondition::Always;
        for (int number = 0; number < static_cast<int>(variables); ++number) {
            long long const id = block.Add(code::AnalogInput, code::PresentValue, ofOneObject ? 1 : number,
                                           {OpcUaType_DataValue, OpcUaType_Double}, true);
            block.store->Write(id + 1, "", Double(number), 0);
        }
        block.driver.Inited();
        block.driver.Execute();
        isSilent = true;
        block.driver.Execute();
    }
};

TEST_F(StepsOfABlock, WithManyObjects) {
    ExpectProportional(10000, [](std::size_t variables) { Live(variables, false); });
}

TEST_F(StepsOfABlock, WithManyVariablesOfOneObject) {
    ExpectProportional(10000, [](std::size_t variables) { Live(variables, true); });
}

}  // namespace
