#include "PlantRows.h"

#include <gtest/gtest.h>

#include "Snapshots.h"

using namespace test;
using namespace workbench;

namespace {

class Rows : public testing::Test {
protected:
    void SetUp() override {
        plant.AddBlock("AHU");
        Add("Supply air", 21.5f);
        Add("Return air", 20).write = true;
        plant.AddBlock("Meter");
        Add("Energy", 4711);
        Add("Power", 3);
        Show();
    }

    VariableConfig& Add(std::string const& name, float value) {
        return plant.AddVariable(name, DataValueOf(OpcUaType_Float), Float(value));
    }
    // A cycle with what the test has changed.
    void Show(long long now = Noon) { rows.Update({plant.Shared(), writes}, now); }
    void Choose(RowChoice const& choice) { rows.Choose(choice); }

    // "AHU,Supply air,>Return air", causes as "!0".
    std::string Shown() const {
        std::string text;
        for (std::size_t i = 0; i < rows.Rows().size(); ++i) {
            PlantRow const& row = rows.Rows()[i];
            BlockSnapshot const& block = *rows.Plant().blocks[row.block];
            text += (i > 0 ? "," : "") + std::string(rows.Selected() == i ? ">" : "");
            text += row.kind == PlantRow::Headline    ? block.config->name
                    : row.kind == PlantRow::CauseLine ? "!" + std::to_string(row.item)
                                                      : block.variables[row.item].config->name;
        }
        return text;
    }

    Plant plant;
    WriteList writes;
    PlantRows rows;
};

TEST_F(Rows, AreTheBlocksWithTheirVariables) {
    EXPECT_EQ(Shown(), ">AHU,Supply air,Return air,Meter,Energy,Power");
    EXPECT_EQ(rows.VariableCount(), 4u);
    EXPECT_EQ(rows.ShownCount(), 4u);
}

TEST_F(Rows, WithoutBlocksThereAreNone) {
    PlantRows none;
    none.Update({}, Noon);
    EXPECT_FALSE(none.Selected());
    none.Move(1);
    none.Select(3);
    none.FoldAll();
    EXPECT_EQ(none.SelectedRow(), nullptr);
}

TEST_F(Rows, TheSelectionMovesAndStopsAtTheEnds) {
    rows.Move(2);
    EXPECT_EQ(Shown(), "AHU,Supply air,>Return air,Meter,Energy,Power");
    rows.Move(100);
    EXPECT_EQ(rows.Selected(), 5u);
    rows.Move(-100);
    EXPECT_EQ(rows.Selected(), 0u);
}

TEST_F(Rows, CausesAreNotSelected) {
    BlockSnapshot& third = plant.AddBlock("Third");
    for (char const* const text : {"a", "b", "c", "d"}) {
        third.causes.push_back({CauseKind::PropertyError, text, text, 1, Noon});
    }
    Add("Last", 1);
    Show();
    EXPECT_EQ(Shown(), ">AHU,Supply air,Return air,Meter,Energy,Power,Third,!0,!1,!4,Last");
    rows.Move(100);
    EXPECT_EQ(rows.Selected(), 10u);
    rows.Move(-1);
    EXPECT_EQ(rows.Selected(), 6u);
    rows.Move(1);
    EXPECT_EQ(rows.Selected(), 10u);
    rows.Fold(2, true);
    EXPECT_EQ(Shown(), "AHU,Supply air,Return air,Meter,Energy,Power,>Third,!0");
}

TEST_F(Rows, TheFilterFindsWordsOfNameObjectAndValue) {
    Choose({"air", false, false, false});
    EXPECT_EQ(Shown(), ">AHU,Supply air,Return air");
    Choose({"meter.e", false, false, false});
    EXPECT_EQ(Shown(), ">Meter,Energy");
    Choose({"ANALOG-input 2", false, false, false});
    EXPECT_EQ(Shown(), "AHU,Supply air,Return air,>Meter,Power") << "21.5 and 20 have a 2 too";
    Choose({"4711", false, false, false});
    EXPECT_EQ(Shown(), ">Meter,Energy");
    Choose({"  21.5 sup ", false, false, false});
    EXPECT_EQ(Shown(), "AHU,>Supply air");
    Choose({"nothing", false, false, false});
    EXPECT_EQ(Shown(), "");
    EXPECT_EQ(rows.ShownCount(), 0u);
    Choose({});
    EXPECT_EQ(rows.ShownCount(), 4u);
    EXPECT_TRUE(rows.Selected());
}

TEST_F(Rows, TheFilterFollowsTheValues) {
    Choose({"99", false, false, false});
    EXPECT_EQ(Shown(), "");
    Plant next;
    next.AddBlock("AHU");
    next.AddVariable("Supply air", DataValueOf(OpcUaType_Float), Float(99));
    rows.Update({next.Shared(), {}}, Noon);
    EXPECT_EQ(Shown(), ">AHU,Supply air");
}

TEST_F(Rows, OnlyWhatIsNotGood) {
    Choose({"", true, false, false});
    EXPECT_EQ(Shown(), "");
    BlockSnapshot& third = plant.AddBlock("Third");
    plant.AddVariable("Bad", DataValueOf(OpcUaType_Float), Float(1), OpcUa_BadNoData);
    plant.AddVariable("Uncertain", DataValueOf(OpcUaType_Float), Float(1), 0x40000000u);
    Add("Good", 1);
    Add("Suspect", 1);
    VariableConfig const& refused = [this]() -> VariableConfig& { return Add("Refused", 1); }();
    const_cast<VariableConfig&>(refused).write = true;
    third.variables[3].suspect = "device: unknown-object";
    writes[&refused] = {WriteStage::Refused, Float(2), "because"};
    BlockSnapshot& fault = plant.AddBlock("Fault");
    fault.fault = true;
    Show();
    EXPECT_EQ(Shown(), ">Third,Bad,Uncertain,Suspect,Refused,Fault");
    EXPECT_EQ(rows.ShownOf(2), 4u);
}

TEST_F(Rows, OnlyWhatCanBeSet) {
    Choose({"", false, false, true});
    EXPECT_EQ(Shown(), ">AHU,Return air");
}

TEST_F(Rows, OnlyWhatChangedLately) {
    Choose({"", false, true, false});
    EXPECT_EQ(Shown(), "");
    BlockList blocks = plant.Shared();
    auto changed = std::make_shared<BlockSnapshot>(*blocks[1]);
    changed->variables[1].state.Value = Float(4);
    changed->time = Noon + Second;
    blocks[1] = changed;
    rows.Update({blocks, {}}, Noon + Second);
    EXPECT_EQ(Shown(), ">Meter,Power");
    EXPECT_EQ(rows.Changes().Of(1, 1), Noon + Second);
    rows.Update({blocks, {}}, Noon + Second + ChangedLately);
    EXPECT_EQ(Shown(), ">Meter,Power");
    rows.Update({blocks, {}}, Noon + Second + ChangedLately + 1);
    EXPECT_EQ(Shown(), "");
}

TEST_F(Rows, TheSelectionStaysWithItsVariable) {
    rows.Select(4);
    Choose({"e", false, false, false});
    EXPECT_EQ(Shown(), "AHU,Return air,Meter,>Energy,Power");
    Choose({"power", false, false, false});
    EXPECT_EQ(Shown(), "Meter,>Power");
}

TEST_F(Rows, AFoldedBlockIsItsHeadline) {
    rows.Select(2);
    rows.Fold(0, true);
    EXPECT_EQ(Shown(), ">AHU,Meter,Energy,Power");
    EXPECT_TRUE(rows.IsFolded(0));
    rows.Fold(0, false);
    EXPECT_EQ(Shown(), ">AHU,Supply air,Return air,Meter,Energy,Power");
    rows.Select(5);
    rows.FoldAll();
    EXPECT_EQ(Shown(), "AHU,>Meter");
    rows.FoldAll();
    EXPECT_EQ(Shown(), "AHU,Supply air,Return air,>Meter,Energy,Power");
}

TEST_F(Rows, AFilterFindsWhatIsFolded) {
    rows.FoldAll();
    Choose({"air", false, false, false});
    EXPECT_EQ(Shown(), ">AHU,Supply air,Return air");
    rows.Fold(0, true);
    EXPECT_EQ(Shown(), ">AHU");
    Choose({});
    EXPECT_EQ(Shown(), ">AHU,Meter");
}

}  // namespace
