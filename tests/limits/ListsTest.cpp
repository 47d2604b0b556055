// Long lists: the results of one answer, the entries and events of schedules.

#include "ExceptionScheduleValue.h"
#include "LimitFixture.h"
#include "WeeklyScheduleValue.h"

using namespace test;

namespace {

Octets Repeated(std::size_t count, Octets const& part) {
    Octets all;
    for (std::size_t i = 0; i < count; ++i) {
        Append(all, part);
    }
    return all;
}

// One cycle of a block with one variable, with a device that answers this.
struct Outcome {
    bool hasFault = true;
    VariableState state;
    std::string text;
    double number = -1;
};

Outcome Poll(Octets const& payload, int objectType, int propertyCode, OpcUa_BuiltInTypeHlp type) {
    SegmentingDevice device(payload);
    LineNetwork network([&](int line, Octets const& request) -> std::vector<LineAnswer> {
        if (device.Segments() == 1) {
            return {{WholeAnswer(InvokeIdOf(request), payload)}};
        }
        return device(line, request);
    });
    Block block;
    long long const id = block.Add(objectType, propertyCode, 1, type);
    block.driver.Inited();
    block.driver.Execute();
    return {block.HasFault(), block.StateOf(id), block.TextOf(id), block.NumberOf(id)};
}

// The driver counts the size of a list of results in one octet.
class ListOfResults : public LimitFixture {
protected:
    // Pairs with 1.0, one pair at this index with 42.0 and, on request, a property without a value at the
    // end.
    static Outcome PollPairs(std::size_t pairs, std::size_t index, bool isOdd = false) {
        Octets const one = ResultOf(property::PresentValue, Hex("44 3F 80 00 00"));
        Octets const marked = ResultOf(property::PresentValue, Real42Octets());
        Octets results = Repeated(index, one) + marked + Repeated(pairs - index - 1, one);
        if (isOdd) {
            Append(results, Hex("29 55"));
        }
        return Poll(ResultsOf(AnalogInput1Octets(), results), code::AnalogInput, code::PresentValue,
                    OpcUaType_Double);
    }
};

TEST_F(ListOfResults, Of254SubTagsIsReadToItsEnd) {
    Outcome const outcome = PollPairs(127, 126);
    EXPECT_FALSE(outcome.hasFault);
    EXPECT_EQ(outcome.number, 42);
}

TEST_F(ListOfResults, Of255SubTagsLacksAValueAndIsAFailedAttempt) {
    Outcome const outcome = PollPairs(127, 126, true);
    EXPECT_TRUE(outcome.hasFault);
    EXPECT_EQ(outcome.state.Time, 0);
}

TEST_F(ListOfResults, Of256SubTagsIsReadAsEmpty) {
    Outcome const outcome = PollPairs(128, 0);
    EXPECT_FALSE(outcome.hasFault);
    EXPECT_EQ(outcome.state.Time, 0) << "no record";
}

// 1000 is three times 256 and 232, so 116 pairs.
TEST_F(ListOfResults, Of1000SubTagsIsReadUpToThe232nd) {
    EXPECT_EQ(PollPairs(500, 115).number, 42);
    EXPECT_EQ(PollPairs(500, 116).number, 1);
    EXPECT_EQ(PollPairs(500, 114).number, 1) << "the last one counts";
}

TEST_F(ListOfResults, OfAWholeAnswerIsReadInMemoryOfItsSize) {
    auto const measure = [](std::size_t pairs) {
        AllocationWatch const watch;
        PollPairs(pairs, 0);
        return watch.Made();
    };
    measure(1);  // builds the tables of the first use
    constexpr std::size_t most = SegmentingDevice::MostOctets / 9 - 2;
    EXPECT_LT(Ratio(measure(most), measure(most / 2)), 2.1);
}

// The sizes of lists in schedules are not cut.
class ListInASchedule : public LimitFixture {
protected:
    static std::string WeeklyText(std::size_t entries) {
        Octets const day = Hex("0E") + Repeated(entries, Hex("B4 0C 00 00 00 21 05")) + Hex("0F");
        Octets const days = day + Repeated(6, Hex("0E 0F"));
        Outcome const outcome = Poll(ResultsOf(Schedule1Octets(), ResultOf(property::WeeklySchedule, days)),
                                     code::Schedule, code::WeeklySchedule, OpcUaType_String);
        EXPECT_FALSE(outcome.hasFault);
        return outcome.text;
    }
    static std::string ExceptionText(std::size_t events, std::size_t entries) {
        Octets const list = Hex("2E") + Repeated(entries, Hex("B4 0C 00 00 00 21 05")) + Hex("2F");
        Octets const event = Hex("1C 01 80 00 01") + list + Hex("39 03");
        Outcome const outcome =
            Poll(ResultsOf(Schedule1Octets(), ResultOf(property::ExceptionSchedule, Repeated(events, event))),
                 code::Schedule, code::ExceptionSchedule, OpcUaType_String);
        EXPECT_FALSE(outcome.hasFault);
        return outcome.text;
    }
    static std::string TextTimes(std::size_t count, std::string const& part) {
        std::string text;
        for (std::size_t i = 0; i < count; ++i) {
            text += part;
        }
        return text;
    }
};

TEST_F(ListInASchedule, DayOf255And256And1000EntriesIsReadWhole) {
    for (std::size_t const entries : {127u, 128u, 255u, 256u, 500u, 1000u}) {
        std::string const text = "12000000,2,2,5d" + TextTimes(entries - 1, ",12000000,2,2,5d") + ";;;;;;;";
        EXPECT_EQ(WeeklyText(entries), text) << entries;
    }
}

TEST_F(ListInASchedule, EventOf255And256And1000EntriesIsReadWhole) {
    for (std::size_t const entries : {127u, 128u, 255u, 256u, 500u, 1000u}) {
        std::string const text = "3,1,3,12000000,2,1,5" + TextTimes(entries - 1, ",12000000,2,1,5") + ";";
        EXPECT_EQ(ExceptionText(1, entries), text) << entries;
    }
}

TEST_F(ListInASchedule, ScheduleOf255And256And1000EventsIsReadWhole) {
    for (std::size_t const events : {85u, 86u, 255u, 256u, 1000u}) {
        EXPECT_EQ(ExceptionText(events, 1), TextTimes(events, "3,1,3,12000000,2,1,5;")) << events;
    }
}

// A written Unsigned is 0 or 1.
TEST_F(ListInASchedule, DayOf1000EntriesIsWrittenWhole) {
    for (std::size_t const entries : {255u, 256u, 1000u}) {
        std::string const text = "12000000,2,1,5" + TextTimes(entries - 1, ",12000000,2,1,5") + ";;;;;;;";
        WeeklyScheduleValue const schedule(text, EncodingTypeEnum::Schedule);
        auto const tags = schedule.ToApplicationComplexTags();
        ASSERT_EQ(tags.size(), 7u);
        Octets const day = Hex("0E") + Repeated(entries, Hex("B4 0C 00 00 00 21 01")) + Hex("0F");
        EXPECT_TRUE(tags[0]->GetBytes() == day) << entries;
    }
}

TEST_F(ListInASchedule, ScheduleOf1000EventsIsWrittenWhole) {
    for (std::size_t const events : {255u, 256u, 1000u}) {
        ExceptionScheduleValue const schedule(TextTimes(events, "3,1,3,12000000,2,1,5;"),
                                              EncodingTypeEnum::Schedule);
        auto const tags = schedule.ToApplicationComplexTags();
        ASSERT_EQ(tags.size(), 3 * events);
        Octets all;
        for (auto const& tag : tags) {
            Append(all, tag->GetBytes());
        }
        Octets const event = Hex("1C 01 80 00 01 2E B4 0C 00 00 00 21 01 2F 39 03");
        EXPECT_TRUE(all == Repeated(events, event)) << events;
    }
}

TEST_F(ListInASchedule, WorkGrowsWithTheListAndNotFaster) {
    auto const read = [](std::size_t entries) {
        AllocationWatch const watch;
        WeeklyText(entries);
        return watch.Made();
    };
    auto const write = [](std::size_t events) {
        std::string const text = TextTimes(events, "3,1,3,12000000,2,1,5;");
        AllocationWatch const watch;
        ExceptionScheduleValue(text, EncodingTypeEnum::Schedule).ToApplicationComplexTags();
        return watch.Made();
    };
    read(1);
    EXPECT_LT(Ratio(read(50000), read(25000)), 2.2);
    EXPECT_LT(Ratio(write(50000), write(25000)), 2.2);
}

}  // namespace
