#include "ValueChanges.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "Snapshots.h"

using namespace test;
using namespace workbench;

namespace {

using Places = std::vector<std::size_t>;

class ValueChangesTest : public testing::Test {
protected:
    ValueChangesTest() {
        plant.AddVariable("A", DataValueOf(OpcUaType_Float), Float(20));
        plant.AddVariable("B", DataValueOf(OpcUaType_Float), Float(30));
        plant.AddVariable("C", OpcUaType_String, Text("c"));
    }

    void Take(ValueChanges& changes) { changes.Take(plant.Shared()); }

    // The indices of the variables that are sent, at most so many.
    static Places Values(ValueChanges& changes, long long now = Noon, std::size_t most = 1000) {
        Places values;
        while (values.size() < most) {
            auto const place = changes.NextValue(now);
            if (!place) {
                break;
            }
            values.push_back(place->block * 10 + place->variable);
        }
        return values;
    }
    static Places States(ValueChanges& changes) {
        Places states;
        while (auto const block = changes.NextState()) {
            states.push_back(*block);
        }
        return states;
    }

    Plant plant;
    BlockSnapshot& block = plant.AddBlock("AHU");
    ValueChanges all;
};

TEST_F(ValueChangesTest, AreEverythingAtFirstAndThenWhatChanges) {
    Take(all);
    EXPECT_EQ(States(all), Places{0});
    EXPECT_EQ(Values(all), (Places{0, 1, 2}));
    Take(all);
    EXPECT_TRUE(States(all).empty());
    EXPECT_TRUE(Values(all).empty());
    block.variables[1].state.Value = Float(31);
    block.variables[2].state.Time += Second;
    Take(all);
    EXPECT_EQ(Values(all), Places{1});
    block.variables[2].state.Status = OpcUa_Bad;
    block.variables[0].suspect = "device: unknown-object";
    Take(all);
    EXPECT_EQ(States(all), Places{0}) << "the number of suspects has changed";
    EXPECT_EQ(all.Suspects(0), 1U);
    EXPECT_EQ(Values(all), (Places{0, 2}));
}

TEST_F(ValueChangesTest, OfOneVariableAreItsNewestValue) {
    Take(all);
    Values(all);
    for (float const value : {21.0F, 22.0F, 23.0F}) {
        block.variables[0].state.Value = Float(value);
        Take(all);
    }
    auto const place = all.NextValue(Noon);
    ASSERT_TRUE(place);
    EXPECT_EQ(all.Variable(*place).state.Value, Float(23));
    EXPECT_FALSE(all.NextValue(Noon));
}

TEST_F(ValueChangesTest, EndWhenAValueIsAgainWhatWasSent) {
    Take(all);
    Values(all);
    block.variables[0].state.Value = Float(21);
    Take(all);
    block.variables[0].state.Value = Float(20);
    Take(all);
    EXPECT_TRUE(Values(all).empty());
    block.isStandby = true;
    Take(all);
    block.isStandby = false;
    Take(all);
    EXPECT_EQ(States(all), Places{0});
    EXPECT_TRUE(States(all).empty());
}

TEST_F(ValueChangesTest, LeaveInTurnSoThatNoVariableStarves) {
    Take(all);
    Values(all);
    std::map<std::size_t, int> counts;
    for (int round = 0; round < 300; ++round) {
        for (VariableSnapshot& variable : block.variables) {
            variable.state.Value = Float(static_cast<float>(round));
        }
        Take(all);
        for (std::size_t const value : Values(all, Noon, 1)) {
            ++counts[value];
        }
    }
    EXPECT_EQ(counts, (std::map<std::size_t, int>{{0, 100}, {1, 100}, {2, 100}}));
}

TEST_F(ValueChangesTest, OfNumbersAreBeyondTheDeadBandAgainstWhatWasSent) {
    ValueChanges changes({0.5, 0});
    Take(changes);
    Values(changes);
    for (float const value : {20.5F, 19.5F}) {
        block.variables[0].state.Value = Float(value);
        Take(changes);
        EXPECT_TRUE(Values(changes).empty());
    }
    for (float const value : {20.75F, std::numeric_limits<float>::quiet_NaN(), 20.75F}) {
        block.variables[0].state.Value = Float(value);
        Take(changes);
        EXPECT_EQ(Values(changes), Places{0});
    }
}

TEST_F(ValueChangesTest, OfAVariableHaveAnInterval) {
    ValueChanges changes({0, 10 * Second});
    Take(changes);
    EXPECT_EQ(Values(changes, Noon), (Places{0, 1, 2}));
    block.variables[0].state.Value = Float(21);
    Take(changes);
    EXPECT_TRUE(Values(changes, Noon + 10 * Second - 1).empty());
    block.variables[0].state.Value = Float(22);
    Take(changes);
    auto const place = changes.NextValue(Noon + 10 * Second);
    ASSERT_TRUE(place);
    EXPECT_EQ(changes.Variable(*place).state.Value, Float(22));
    EXPECT_TRUE(Values(changes, Noon + 10 * Second).empty());
    block.variables[1].state.Value = Float(31);
    Take(changes);
    EXPECT_EQ(Values(changes, Noon + 11 * Second), Places{1}) << "it has rested long enough";
}

TEST_F(ValueChangesTest, DoNotWaitForAClockThatIsSetBack) {
    ValueChanges changes({0, 10 * Second});
    Take(changes);
    Values(changes, Noon);
    block.variables[0].state.Value = Float(21);
    Take(changes);
    EXPECT_EQ(Values(changes, Noon - Hour), Places{0});
}

TEST_F(ValueChangesTest, AreEverythingAgainForAReceiverThatKnowsNothing) {
    ValueChanges changes({0, 10 * Second});
    Take(changes);
    States(changes);
    Values(changes, Noon);
    changes.Forget();
    Take(changes);
    EXPECT_EQ(States(changes), Places{0});
    EXPECT_EQ(Values(changes, Noon), (Places{0, 1, 2})) << "without an interval";
    changes.Forget(0);
    EXPECT_EQ(States(changes), Places{0});
    EXPECT_EQ(Values(changes, Noon), (Places{0, 1, 2}));
    changes.CountAsSent(0, Noon);
    EXPECT_TRUE(Values(changes, Noon + Hour).empty());
    changes.Forget(7);
}

TEST_F(ValueChangesTest, ThatCountAsSentAreNotSent) {
    Take(all);
    all.CountAsSent(0, Noon);
    EXPECT_TRUE(States(all).empty());
    EXPECT_TRUE(Values(all).empty());
    block.variables[2].state.Value = Text("d");
    Take(all);
    EXPECT_EQ(Values(all), Places{2});
}

TEST_F(ValueChangesTest, WaitForTheirIntervalAlsoAfterTheyCountAsSent) {
    ValueChanges changes({0, 10 * Second});
    Take(changes);
    changes.CountAsSent(0, Noon);
    block.variables[0].state.Value = Float(21);
    Take(changes);
    EXPECT_TRUE(Values(changes, Noon + 1).empty());
    EXPECT_EQ(Values(changes, Noon + 10 * Second), Places{0});
}

TEST_F(ValueChangesTest, OfABlockInFaultAreTheQualityOfAllItsValues) {
    Take(all);
    States(all);
    Values(all);
    block.fault = true;
    block.errorText = "No connection";
    Take(all);
    EXPECT_EQ(States(all), Places{0});
    EXPECT_EQ(Values(all), (Places{0, 1, 2}));
    EXPECT_EQ(PublishedQuality(block, block.variables[0]), QualityKind::Bad);
    block.fault = false;
    block.errorText.clear();
    block.isStandby = true;
    Take(all);
    EXPECT_EQ(Values(all), (Places{0, 1, 2}));
    EXPECT_EQ(PublishedQuality(block, block.variables[0]), QualityKind::Uncertain);
    block.variables[0].state.Status = OpcUa_Bad;
    EXPECT_EQ(PublishedQuality(block, block.variables[0]), QualityKind::Bad);
}

TEST_F(ValueChangesTest, BeforeTheFirstCycleAreTheStateAlone) {
    block.cycle = 0;
    BlockSnapshot& other = plant.AddBlock("Boiler");
    plant.AddVariable("T", OpcUaType_Float, Float(60));
    Take(all);
    EXPECT_EQ(States(all), (Places{0, 1}));
    EXPECT_EQ(Values(all), Places{10});
    block.cycle = 1;
    Take(all);
    EXPECT_EQ(States(all), Places{0});
    EXPECT_EQ(Values(all), (Places{0, 1, 2}));
    EXPECT_EQ(all.Block(1).config, other.config);
}

TEST_F(ValueChangesTest, AreTheNewestValuesHoweverTheyAreAskedFor) {
    unsigned seed = 16;
    auto const below = [&](unsigned bound) { return (seed = seed * 1664525 + 1013904223) / 65536 % bound; };
    ValueChanges changes({0, 3 * Second});
    Take(changes);
    std::map<std::size_t, OpcUa_VariantHlp> receiver;
    long long now = Noon;
    for (int round = 0; round < 20000; ++round) {
        now += below(2) * Second;
        if (below(2) == 0) {
            block.variables[below(3)].state.Value = Float(static_cast<float>(below(3)));
        }
        if (below(3) == 0) {
            Take(changes);
        }
        if (below(200) == 0) {
            changes.Forget();
            receiver.clear();
            Take(changes);
        }
        if (below(50) == 0) {
            changes.CountAsSent(0, now);
            for (std::size_t i = 0; i < 3; ++i) {
                receiver[i] = changes.Variable({0, i}).state.Value;
            }
        }
        if (below(50) == 0) {
            changes.Forget(0);
        }
        for (std::size_t room = below(3); room > 0; --room) {
            if (auto const place = changes.NextValue(now)) {
                receiver[place->variable] = changes.Variable(*place).state.Value;
            }
        }
        if (round % 100 == 0) {
            Take(changes);
            now += 3 * Second;
            while (auto const place = changes.NextValue(now)) {
                receiver[place->variable] = changes.Variable(*place).state.Value;
            }
            for (std::size_t i = 0; i < 3; ++i) {
                ASSERT_EQ(receiver[i], block.variables[i].state.Value) << "round " << round;
            }
        }
    }
}

}  // namespace
