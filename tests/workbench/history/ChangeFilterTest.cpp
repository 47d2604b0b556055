#include "ChangeFilter.h"

#include <gtest/gtest.h>

#include <limits>

#include "Snapshots.h"

using namespace test;
using namespace workbench;

namespace {

using Indices = std::vector<std::size_t>;
constexpr float NaN = std::numeric_limits<float>::quiet_NaN();
constexpr float Infinity = std::numeric_limits<float>::infinity();

OpcUa_VariantHlp FloatOf(float value) {
    OpcUa_VariantHlp variant;
    variant.SetFloat(value);
    return variant;
}

OpcUa_VariantHlp UIntOf(unsigned value) {
    OpcUa_VariantHlp variant;
    variant.SetUInt(value);
    return variant;
}

OpcUa_VariantHlp TextOf(char const* text) {
    OpcUa_VariantHlp variant;
    variant.SetUTF8String(text);
    return variant;
}

// A block with a temperature, the state of a multi-state value and a name.
class Changes : public testing::Test {
protected:
    Changes() {
        plant.AddVariable("T", DataValueOf(OpcUaType_Float), FloatOf(20));
        plant.AddVariable("Mode", OpcUaType_UInt32, UIntOf(1)).objectType =
            ObjectTypes().FindName("multi-state-value");
        plant.AddVariable("Name", OpcUaType_String, TextOf("AHU"));
    }

    // Whether the filter takes the temperature after this one as changed.
    bool Takes(ChangeFilter& changes, float value) {
        block.variables[0].state.Value = FloatOf(value);
        return !changes.Take(block).variables.empty();
    }

    Plant plant;
    BlockSnapshot& block = plant.AddBlock("AHU");
    ChangeFilter filter;
    ChangeFilter wide{0.5};
};

TEST_F(Changes, AreEverythingInTheFirstCycle) {
    BlockChange const first = filter.Take(block);
    EXPECT_EQ(first.variables, (Indices{0, 1, 2}));
    EXPECT_TRUE(first.isState);
    block.time += Second;
    block.variables[0].state.Time += Second;
    EXPECT_TRUE(filter.Take(block).IsEmpty());
    filter.Forget();
    EXPECT_EQ(filter.Take(block).variables.size(), 3u);
}

TEST_F(Changes, AreValuesQualitiesSuspectsAndWrites) {
    filter.Take(block);
    block.variables[2].state.Value = TextOf("AHU 2");
    EXPECT_EQ(filter.Take(block).variables, Indices{2});
    block.variables[1].state.Status = OpcUa_Bad;
    EXPECT_EQ(filter.Take(block).variables, Indices{1});
    block.variables[0].suspect = "device: unknown-object";
    EXPECT_EQ(filter.Take(block).variables, Indices{0});
    block.variables[0].write = {WriteStage::Pending, FloatOf(22), {}, {}};
    EXPECT_EQ(filter.Take(block).variables, Indices{0});
    block.variables[0].write.value = FloatOf(23);
    EXPECT_EQ(filter.Take(block).variables, Indices{0});
    block.variables[0].write.stage = WriteStage::Written;
    BlockChange const last = filter.Take(block);
    EXPECT_EQ(last.variables, Indices{0});
    EXPECT_FALSE(last.isState);
    EXPECT_TRUE(filter.Take(block).IsEmpty());
}

TEST_F(Changes, CountBeyondTheDeadBandAgainstTheValueShownLast) {
    wide.Take(block);
    EXPECT_FALSE(Takes(wide, 20.5F));
    EXPECT_FALSE(Takes(wide, 19.5F));
    EXPECT_TRUE(Takes(wide, 20.75F));
    EXPECT_FALSE(Takes(wide, 20.25F));
    EXPECT_TRUE(Takes(wide, 20.125F));
}

TEST_F(Changes, ShowASlowDrift) {
    wide.Take(block);
    int shown = 0;
    for (int i = 1; i <= 100; ++i) {
        shown += Takes(wide, 20 + static_cast<float>(i) * 0.125F) ? 1 : 0;
    }
    EXPECT_EQ(shown, 20);
}

TEST_F(Changes, AreToAndFromWhatIsNotANumber) {
    for (ChangeFilter* const each : {&filter, &wide}) {
        each->Take(block);
        EXPECT_TRUE(Takes(*each, NaN));
        EXPECT_FALSE(Takes(*each, NaN));
        EXPECT_TRUE(Takes(*each, Infinity));
        EXPECT_FALSE(Takes(*each, Infinity));
        EXPECT_TRUE(Takes(*each, -Infinity));
        EXPECT_TRUE(Takes(*each, 20));
    }
}

TEST_F(Changes, AreToAndFromNoValue) {
    wide.Take(block);
    block.variables[0].state.Value = {};
    EXPECT_EQ(wide.Take(block).variables, Indices{0});
    EXPECT_TRUE(wide.Take(block).IsEmpty());
    EXPECT_TRUE(Takes(wide, 20));
}

TEST_F(Changes, OfStatesHaveNoDeadBand) {
    ChangeFilter widest(1000);
    widest.Take(block);
    block.variables[1].state.Value = UIntOf(2);
    EXPECT_EQ(widest.Take(block).variables, Indices{1});
}

TEST_F(Changes, OfTheBlockAreItsState) {
    filter.Take(block);
    block.fault = true;
    block.errorText = "No connection";
    EXPECT_TRUE(filter.Take(block).isState);
    EXPECT_TRUE(filter.Take(block).IsEmpty());
    block.errorText = "Timeout";
    EXPECT_TRUE(filter.Take(block).isState);
    block.causes = {{CauseKind::Silent, "", "no answer (1 request)"}};
    EXPECT_TRUE(filter.Take(block).isState);
    block.causes = {{CauseKind::Silent, "", "no answer (2 requests)", 2}};
    EXPECT_TRUE(filter.Take(block).IsEmpty());
    block.isStandby = true;
    EXPECT_TRUE(filter.Take(block).isState);
}

TEST_F(Changes, OfBlocksAreApart) {
    filter.Take(block);
    BlockSnapshot& other = plant.AddBlock("Boiler");
    plant.AddVariable("T", OpcUaType_Float, FloatOf(60));
    EXPECT_EQ(filter.Take(other).variables, Indices{0});
    EXPECT_TRUE(filter.Take(block).IsEmpty());
}

}  // namespace
