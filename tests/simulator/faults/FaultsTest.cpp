#include "Faults.h"

#include <gtest/gtest.h>

#include <algorithm>

using simulator::Fault;
using simulator::FaultKind;
using simulator::Faults;
using simulator::FaultScope;
using simulator::Moment;

namespace {

Moment at(int milliseconds) {
    Moment moment;
    moment.sinceStart = std::chrono::milliseconds(milliseconds);
    return moment;
}

Faults::Request const kRead{FaultScope::Read, simulator::ObjectId{0, 1}};
Faults::Request const kWrite{FaultScope::Write, simulator::ObjectId{2, 1}};
Faults::Request const kOther{};

// Which of the requests are met: one character for each.
std::string met(Faults& faults, int count, Moment const& now = {}) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += faults.meet(kRead, now).empty() ? '.' : 'x';
    }
    return text;
}

Faults with(Fault const& fault) {
    Faults faults;
    EXPECT_TRUE(faults.add(fault));
    return faults;
}

}  // namespace

TEST(Faults, ForEverByDefaultAndForEveryRequest) {
    Faults faults = with({});
    EXPECT_EQ(met(faults, 5, at(1'000'000'000)), "xxxxx");
    EXPECT_EQ(faults.meet(kOther, at(1'000'000'000)).size(), 1u);
}

TEST(Faults, ScopeByServiceAndObject) {
    Fault fault;
    fault.on = FaultScope::Write;
    Faults faults = with(fault);
    EXPECT_EQ(faults.meet(kRead, {}).size(), 0u);
    EXPECT_EQ(faults.meet(kOther, {}).size(), 0u);
    EXPECT_EQ(faults.meet(kWrite, {}).size(), 1u);
    fault.on = FaultScope::Any;
    fault.object = simulator::ObjectId{0, 1};
    faults = with(fault);
    EXPECT_EQ(faults.meet(kRead, {}).size(), 1u);
    EXPECT_EQ(faults.meet(kWrite, {}).size(), 0u);
    EXPECT_EQ(faults.meet(kOther, {}).size(), 0u);
}

TEST(Faults, SoManyTimes) {
    Fault fault;
    fault.times = 2;
    Faults faults = with(fault);
    EXPECT_EQ(met(faults, 4), "xx..");
    EXPECT_TRUE(faults.list().empty());
}

TEST(Faults, TimesCountOnlyWhatIsInScope) {
    Fault fault;
    fault.times = 1;
    fault.on = FaultScope::Read;
    Faults faults = with(fault);
    faults.meet(kWrite, {});
    EXPECT_EQ(met(faults, 2), "x.");
}

TEST(Faults, TimeRunsFromTheFirstCallAfterAdding) {
    Fault fault;
    fault.after = std::chrono::milliseconds(100);
    fault.duration = std::chrono::milliseconds(50);
    Faults faults = with(fault);
    faults.update(at(5000));
    EXPECT_EQ(met(faults, 1, at(5099)), ".");
    EXPECT_EQ(met(faults, 1, at(5100)), "x");
    EXPECT_EQ(met(faults, 1, at(5149)), "x");
    EXPECT_EQ(faults.list().size(), 1u);
    EXPECT_EQ(met(faults, 1, at(5150)), ".");
    EXPECT_TRUE(faults.list().empty());
}

TEST(Faults, EveryKthAndAChance) {
    Fault fault;
    fault.every = 3;
    Faults faults = with(fault);
    EXPECT_EQ(met(faults, 7), "..x..x.");
    fault.every = 1;
    fault.chance = 0;
    faults = with(fault);
    EXPECT_EQ(met(faults, 5), ".....");
    fault.chance = 0.25;
    faults = with(fault);
    std::string const first = met(faults, 4000);
    EXPECT_NEAR(static_cast<double>(std::count(first.begin(), first.end(), 'x')), 1000, 100);
    faults = with(fault);
    EXPECT_EQ(met(faults, 4000), first) << "the same seed gives the same";
    fault.seed = 2;
    faults = with(fault);
    EXPECT_NE(met(faults, 4000), first);
}

TEST(Faults, ALossIsInHitsAndStrikesDatagrams) {
    Fault fault;
    fault.kind = FaultKind::Loss;
    fault.every = 2;
    fault.times = 1;
    Faults faults = with(fault);
    auto const hits = faults.meet(kRead, {});
    ASSERT_EQ(hits.size(), 1u);
    EXPECT_FALSE(faults.takes(hits[0].number, {}));
    EXPECT_TRUE(faults.takes(hits[0].number, {}));
    EXPECT_FALSE(faults.takes(hits[0].number, {}));
    EXPECT_FALSE(faults.takes(hits[0].number, {}));
    EXPECT_FALSE(faults.takes(hits[0].number + 1, {})) << "no such fault";
}

TEST(Faults, ClearEndsThoseUnderWayToo) {
    Faults faults = with({});
    auto const hits = faults.meet(kRead, {});
    ASSERT_EQ(hits.size(), 1u);
    EXPECT_TRUE(faults.isThere(hits[0].number));
    faults.clear();
    EXPECT_FALSE(faults.isThere(hits[0].number));
    EXPECT_TRUE(faults.add({}));
    EXPECT_FALSE(faults.isThere(hits[0].number)) << "numbers are not used again";
}

TEST(Faults, NoMoreThanSoManyAtOnceAndSpentOnesMakeRoom) {
    Faults faults;
    Fault once;
    once.times = 1;
    for (std::size_t i = 0; i < Faults::kMost; ++i) {
        EXPECT_TRUE(faults.add(i == 0 ? once : Fault()));
    }
    EXPECT_FALSE(faults.add({}));
    EXPECT_EQ(faults.meet(kRead, {}).size(), Faults::kMost);
    EXPECT_TRUE(faults.add({}));
    EXPECT_FALSE(faults.add({}));
    EXPECT_EQ(faults.list().size(), Faults::kMost);
}

TEST(Faults, DrawnNumbersAreWithinTheirLimit) {
    Faults faults = with({});
    auto const number = faults.meet(kRead, {})[0].number;
    bool isHighest = false;
    for (int i = 0; i < 1000; ++i) {
        std::uint32_t const drawn = faults.draw(number, 3);
        EXPECT_LE(drawn, 3u);
        isHighest = isHighest || drawn == 3;
    }
    EXPECT_TRUE(isHighest);
    EXPECT_EQ(faults.draw(number + 1, 3), 0u);
}
