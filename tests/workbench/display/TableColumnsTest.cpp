#include "TableColumns.h"

#include <gtest/gtest.h>

#include <clocale>

#include "Screen.h"
#include "Snapshots.h"

using namespace test;
using namespace workbench;

namespace {

class Columns : public testing::Test {
protected:
    void SetUp() override {
        std::setlocale(LC_CTYPE, "C.UTF-8");
        plant.AddBlock("AHU");
    }

    VariableConfig& Add(std::string const& name, float value = 21.5f, OpcUa_StatusCode status = OpcUa_Good) {
        return plant.AddVariable(name, DataValueOf(OpcUaType_Float), Float(value), status,
                                 Noon - 4 * Second / 10);
    }
    Row RowOf(std::size_t index, WriteState const& write = {}) const {
        BlockSnapshot const block = plant.All().front();
        ValuesForPeople values;
        return VariableRow(block.variables[index], block, write, values, Noon);
    }
    // The row as text, with "|" between the columns that are shown.
    static std::string Shown(Row const& row, std::size_t width) {
        Widths const common = FitColumns(Wider(WidthsOf(HeaderRow(), width), WidthsOf(row, width)), width);
        Widths const widths = FitRow(row, common, width);
        std::string text;
        std::size_t total = Indent - Gap;
        for (std::size_t column = 0; column < ColumnCount; ++column) {
            if (widths[column] > 0) {
                text += (text.empty() ? "" : "|") + Cell(row, column, widths[column]);
                total += widths[column] + Gap;
            }
        }
        EXPECT_LE(total, width) << text;
        return text;
    }

    Plant plant;
};

TEST_F(Columns, HaveTheValueWithItsUnitAndWhatIsKnownOfTheVariable) {
    VariableConfig& variable = Add("Supply");
    variable.unit = "degrees-celsius";
    variable.description = "behind the coil";
    EXPECT_EQ(Shown(RowOf(0), 200),
              "Supply  |21.5 \xC2\xB0"
              "C|Good   |       |     |0.4 s|analog-input 1|present-value|behind the coil");
}

TEST_F(Columns, GiveWayInThisOrderAgeObjectPropertyQuality) {
    Add("Supply");
    Row row = RowOf(0, {WriteStage::Refused, Float(99), "because"});
    row.cells[Suspect] = "unknown-object";
    std::string last;
    std::vector<std::string> steps;
    for (std::size_t width = 120; width >= LeastWidth; --width) {
        std::string shown;
        for (std::size_t const column : {Age, Object, Property, Quality}) {
            Widths const common = FitColumns(WidthsOf(row, width), width);
            shown += common[column] > 0 ? HeaderRow().cells[column] + " " : "";
        }
        if (shown != last) {
            steps.push_back(shown);
            last = shown;
        }
        EXPECT_NE(Shown(row, width).find("Supply"), std::string::npos) << width;
        EXPECT_NE(Shown(row, width).find("21.5"), std::string::npos) << width;
        EXPECT_NE(Shown(row, width).find("refused"), std::string::npos) << width;
    }
    EXPECT_EQ(steps, (std::vector<std::string>{"Age Object Property Quality ", "Object Property Quality ",
                                               "Property Quality ", "Quality ", ""}));
}

TEST_F(Columns, ALongNameOrValueTakesTheRoomOfOtherColumnsInItsRow) {
    Add("Short");
    Add(std::string(60, 'n'));
    Widths const common = FitColumns(WidthsOf(RowOf(0), 100), 100);
    Row const longRow = RowOf(1);
    Widths const widths = FitRow(longRow, common, 100);
    EXPECT_EQ(widths[Variable], 60u);
    EXPECT_EQ(widths[Value], common[Value]);
    EXPECT_EQ(widths[Age], 0u);
    EXPECT_EQ(widths[Quality], common[Quality]);
    EXPECT_EQ(FitRow(RowOf(0), common, 100), common);
}

TEST_F(Columns, ACutTextShowsIt) {
    VariableConfig& variable =
        plant.AddVariable(std::string(80, 'n'), OpcUaType_String, Text(std::string(90, 'v')));
    variable.write = true;
    std::string const shown = Shown(RowOf(0), 60);
    EXPECT_NE(shown.find("n\xE2\x80\xA6"), std::string::npos) << shown;
    EXPECT_NE(shown.find("v\xE2\x80\xA6"), std::string::npos) << shown;
}

TEST_F(Columns, TheStateOfAWriteIsNeverCut) {
    Add(std::string(50, 'n')).write = true;
    for (WriteStage const stage : {WriteStage::Pending, WriteStage::Written, WriteStage::Unconfirmed,
                                   WriteStage::Differs, WriteStage::Refused}) {
        Row row = RowOf(0, {stage, Text(std::string(70, 'x')), "because"});
        row.cells[Suspect] = std::string(50, 's');
        row.cells[Value] = std::string(500, 'v');
        for (std::size_t width = LeastWidth; width < 250; ++width) {
            EXPECT_NE(Shown(row, width).find(StageName(stage)), std::string::npos) << width;
        }
    }
}

TEST_F(Columns, AMarkShowsTheQualityWithoutColour) {
    Add("good");
    Add("bad", 1, OpcUa_BadNoData);
    Add("uncertain", 1, 0x40000000u);
    EXPECT_EQ(RowOf(0).mark, ' ');
    EXPECT_EQ(RowOf(1).mark, '!');
    EXPECT_EQ(RowOf(2).mark, '?');
    BlockSnapshot block = plant.All().front();
    block.variables[0].suspect = "device: unknown-object";
    ValuesForPeople values;
    Row const row = VariableRow(block.variables[0], block, {}, values, Noon);
    EXPECT_EQ(row.mark, '~');
    EXPECT_EQ(row.cells[Suspect], "unknown-object");
    EXPECT_EQ(row.colours[Value], Colour::Red);
}

TEST_F(Columns, AVariableThatCanBeSetHasADash) {
    Add("no");
    Add("yes").write = true;
    EXPECT_EQ(RowOf(0).cells[Write], "");
    EXPECT_EQ(RowOf(1).cells[Write], "-");
}

TEST(TableLine, CutsWhatDoesNotFit) {
    TableLine line(6, false);
    line.Add("abcd");
    line.Add("efgh");
    line.Add("x");
    EXPECT_EQ(line.Text(), "abcde\xE2\x80\xA6");
}

TEST(TableLine, IsReversedWhenItIsSelectedAndHasColours) {
    TableLine plain(10, false, true);
    plain.Add("ab", Colour::Red);
    EXPECT_EQ(plain.Text(), "ab");
    TableLine coloured(5, true, true);
    coloured.Add("ab", Colour::Red);
    coloured.FillTo();
    EXPECT_EQ(coloured.Text(), "\x1B[31;7mab\x1B[0m\x1B[0;7m   \x1B[0m");
}

}  // namespace
