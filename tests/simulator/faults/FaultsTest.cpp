#include "Faults.h"

#include <gtest/gtest.h>

#include <algorithm>

using simulator::Fault;
using simulator::FaultKind;
using simulator::Faults;
using simulator::FaultScope;
using simulator::Moment;

namespace {

Moment At(int milliseconds) {
    Moment moment;
    moment.sinceStart = std::chrono::milliseconds(milliseconds);
    return moment;
}

Faults::Request const Read{FaultScope::Read, simulator::ObjectId{0, 1}};
Faults::Request const Write{FaultScope::Write, simulator::ObjectId{2, 1}};
Faults::Request const Other{};

// One character for each request: whether the fault applies to it.
std::string Met(Faults& faults, int count, Moment const& now = {}) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += faults.Meet(Read, now).empty() ? '.' : 'x';
    }
    return text;
}

Faults With(Fault const& fault) {
    Faults faults;
    EXPECT_TRUE(faults.Add(fault));
    return faults;
}

}  // namespace

TEST(Faults, ForEverByDefaultAndForEveryRequest) {
    Faults faults = With({});
    EXPECT_EQ(Met(faults, 5, At(1'000'000'000)), "xxxxx");
    EXPECT_EQ(faults.Meet(Other, At(1'000'000'000)).size(), 1u);
}

TEST(Faults, ScopeByServiceAndObject) {
    Fault fault;
    fault.on = FaultScope::Write;
    Faults faults = With(fault);
    EXPECT_EQ(faults.Meet(Read, {}).size(), 0u);
    EXPECT_EQ(faults.Meet(Other, {}).size(), 0u);
    EXPECT_EQ(faults.Meet(Write, {}).size(), 1u);
    fault.on = FaultScope::Any;
    fault.object = simulator::ObjectId{0, 1};
    faults = With(fault);
    EXPECT_EQ(faults.Meet(Read, {}).size(), 1u);
    EXPECT_EQ(faults.Meet(Write, {}).size(), 0u);
    EXPECT_EQ(faults.Meet(Other, {}).size(), 0u);
}

TEST(Faults, SoManyTimes) {
    Fault fault;
    fault.times = 2;
    Faults faults = With(fault);
    EXPECT_EQ(Met(faults, 4), "xx..");
    EXPECT_TRUE(faults.List().empty());
}

TEST(Faults, TimesCountOnlyWhatIsInScope) {
    Fault fault;
    fault.times = 1;
    fault.on = FaultScope::Read;
    Faults faults = With(fault);
    faults.Meet(Write, {});
    EXPECT_EQ(Met(faults, 2), "x.");
}

TEST(Faults, TimeRunsFromTheFirstCallAfterAdding) {
    Fault fault;
    fault.after = std::chrono::milliseconds(100);
    fault.duration = std::chrono::milliseconds(50);
    Faults faults = With(fault);
    faults.Update(At(5000));
    EXPECT_EQ(Met(faults, 1, At(5099)), ".");
    EXPECT_EQ(Met(faults, 1, At(5100)), "x");
    EXPECT_EQ(Met(faults, 1, At(5149)), "x");
    EXPECT_EQ(faults.List().size(), 1u);
    EXPECT_EQ(Met(faults, 1, At(5150)), ".");
    EXPECT_TRUE(faults.List().empty());
}

TEST(Faults, EveryKthAndAChance) {
    Fault fault;
    fault.every = 3;
    Faults faults = With(fault);
    EXPECT_EQ(Met(faults, 7), "..x..x.");
    fault.every = 1;
    fault.chance = 0;
    faults = With(fault);
    EXPECT_EQ(Met(faults, 5), ".....");
    fault.chance = 0.25;
    faults = With(fault);
    std::string const first = Met(faults, 4000);
    EXPECT_NEAR(static_cast<double>(std::count(first.begin(), first.end(), 'x')), 1000, 100);
    faults = With(fault);
    EXPECT_EQ(Met(faults, 4000), first) << "the same seed gives the same";
    fault.seed = 2;
    faults = With(fault);
    EXPECT_NE(Met(faults, 4000), first);
}

TEST(Faults, ALossIsInHitsAndStrikesDatagrams) {
    Fault fault;
    fault.kind = FaultKind::Loss;
    fault.every = 2;
    fault.times = 1;
    Faults faults = With(fault);
    auto const hits = faults.Meet(Read, {});
    ASSERT_EQ(hits.size(), 1u);
    EXPECT_FALSE(faults.Takes(hits[0].number, {}));
    EXPECT_TRUE(faults.Takes(hits[0].number, {}));
    EXPECT_FALSE(faults.Takes(hits[0].number, {}));
    EXPECT_FALSE(faults.Takes(hits[0].number, {}));
    EXPECT_FALSE(faults.Takes(hits[0].number + 1, {})) << "no such fault";
}

TEST(Faults, ClearEndsThoseUnderWayToo) {
    Faults faults = With({});
    auto const hits = faults.Meet(Read, {});
    ASSERT_EQ(hits.size(), 1u);
    EXPECT_TRUE(faults.IsThere(hits[0].number));
    faults.Clear();
    EXPECT_FALSE(faults.IsThere(hits[0].number));
    EXPECT_TRUE(faults.Add({}));
    EXPECT_FALSE(faults.IsThere(hits[0].number)) << "numbers are not used again";
}

TEST(Faults, NoMoreThanSoManyAtOnceAndSpentOnesMakeRoom) {
    Faults faults;
    Fault once;
    once.times = 1;
    for (std::size_t i = 0; i < Faults::Most; ++i) {
        EXPECT_TRUE(faults.Add(i == 0 ? once : Fault()));
    }
    EXPECT_FALSE(faults.Add({}));
    EXPECT_EQ(faults.Meet(Read, {}).size(), Faults::Most);
    EXPECT_TRUE(faults.Add({}));
    EXPECT_FALSE(faults.Add({}));
    EXPECT_EQ(faults.List().size(), Faults::Most);
}

TEST(Faults, DrawnNumbersAreWithinTheirLimit) {
    Faults faults = With({});
    auto const number = faults.Meet(Read, {})[0].number;
    bool isHighest = false;
    for (int i = 0; i < 1000; ++i) {
        std::uint32_t const drawn = faults.Draw(number, 3);
        EXPECT_LE(drawn, 3u);
        isHighest = isHighest || drawn == 3;
    }
    EXPECT_TRUE(isHighest);
    EXPECT_EQ(faults.Draw(number + 1, 3), 0u);
}
