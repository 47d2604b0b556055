#include "CsvFormat.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "CsvText.h"
#include "JsonFormat.h"
#include "LineFormat.h"
#include "Snapshots.h"

using namespace test;
using namespace workbench;

namespace {

OpcUa_VariantHlp Float(float value) {
    OpcUa_VariantHlp variant;
    variant.SetFloat(value);
    return variant;
}

OpcUa_VariantHlp Text(std::string const& text) {
    OpcUa_VariantHlp variant;
    variant.SetString(text.data(), static_cast<int>(text.size()));
    return variant;
}

class CsvRows : public testing::Test {
protected:
    // The cells of the first row by the names of their columns.
    std::map<std::string, std::string> FirstRow() const {
        CsvText const csv = ReadCsv(CsvHeader() + FormatCsv(block));
        std::map<std::string, std::string> cells;
        for (std::size_t i = 0; i < csv.rows.at(0).fields.size(); ++i) {
            cells[csv.rows[0].fields[i].text] = csv.rows.at(1).fields.at(i).text;
        }
        return cells;
    }

    std::string Value(OpcUa_VariantHlp value) {
        block.variables.clear();
        plant.AddVariable("V", OpcUaType_Double, std::move(value));
        return FirstRow()["value"];
    }

    Plant plant;
    BlockSnapshot& block = plant.AddBlock("AHU");
};

TEST_F(CsvRows, AreThoseOfTheManual) {
    plant.AddVariable("Supply", DataValueOf(OpcUaType_Float), Float(21.1F)).unit = "degrees-celsius";
    block.times = {3, 12345, 1, 2, 7};
    EXPECT_EQ(
        CsvHeader(),
        "time,block,cycle,state,error,variable,object,property,value,unit,state_text,type,quality,status,"
        "value_time,write,write_value,write_reason,suspect,why,cycle_ms,overruns\r\n");
    EXPECT_EQ(
        FormatCsv(block),
        "2024-03-15T12:34:56.789+01:00,AHU,3,ok,,Supply,analog-input 1,present-value,21.1,degrees-celsius,,"
        "DataValue(Float),Good,0x00000000,2024-03-15T12:34:56.789+01:00,,,,,,1.234,7\r\n");
}

TEST_F(CsvRows, HaveACellForEachColumn) {
    plant.AddVariable("a, \"b\"\r\nc", OpcUaType_String, Text("x;y\n\"z\","));
    auto cells = FirstRow();
    EXPECT_EQ(cells.size(), 22u);
    EXPECT_EQ(cells["variable"], "a, \"b\"\\r\\nc");
    EXPECT_EQ(cells["value"], "x;y\\n\"z\",");
}

TEST_F(CsvRows, HaveNumbersThatProgramsRead) {
    EXPECT_EQ(Value(Float(-5.5F)), "-5.5");
    EXPECT_EQ(Value(Float(-std::numeric_limits<float>::infinity())), "-inf");
    EXPECT_EQ(Value(Float(std::numeric_limits<float>::quiet_NaN())), "nan");
    EXPECT_EQ(Value({}), "");
    EXPECT_EQ(Value(Text("")), "");
}

TEST_F(CsvRows, HaveNoFormulaInATextOfADevice) {
    EXPECT_EQ(Value(Text("=1+1")), "'=1+1");
    EXPECT_EQ(Value(Text("  @SUM(A1)")), "'  @SUM(A1)");
    EXPECT_EQ(Value(Text("-2+3")), "'-2+3");
    EXPECT_EQ(Value(Text("\t=1")), "\\t=1") << "a control character is visible";
    EXPECT_EQ(Value(Text("a=b")), "a=b");
}

TEST_F(CsvRows, HaveTheStateOfTheBlockInOneWord) {
    plant.AddVariable("V", OpcUaType_Float, Float(1));
    block.fault = true;
    block.errorText = "No connection";
    block.causes = {{CauseKind::Silent, "", "no answer, 3 requests", 3, Noon}};
    auto cells = FirstRow();
    EXPECT_EQ(cells["state"], "fault");
    EXPECT_EQ(cells["error"], "No connection");
    EXPECT_EQ(cells["why"], "no answer, 3 requests");
    block.isStandby = true;
    EXPECT_EQ(FirstRow()["state"], "standby");
    block.cycle = 0;
    EXPECT_EQ(FirstRow()["state"], "waiting");
}

TEST_F(CsvRows, HaveThePartsOfAWrite) {
    plant.AddVariable("V", OpcUaType_Float, Float(1)).unit = "percent";
    block.variables[0].write = {WriteStage::Refused, Float(22.5F), "no, not now", {}};
    block.variables[0].suspect = "device: unknown-object";
    auto cells = FirstRow();
    EXPECT_EQ(cells["write"], "refused");
    EXPECT_EQ(cells["write_value"], "22.5");
    EXPECT_EQ(cells["write_reason"], "no, not now");
    EXPECT_EQ(cells["suspect"], "device: unknown-object");
    EXPECT_EQ(cells["unit"], "percent");
}

TEST(ChosenVariables, AreTheOnlyOnesInEachFormat) {
    Plant plant;
    BlockSnapshot const& block = plant.AddBlock("AHU");
    for (char const* const name : {"One", "Two", "Three"}) {
        plant.AddVariable(name, OpcUaType_Float, Float(1));
    }
    auto const count = [](std::string const& text, std::string const& words) {
        std::size_t found = 0;
        for (std::size_t at = text.find(words); at != std::string::npos; at = text.find(words, at + 1)) {
            ++found;
        }
        return found;
    };
    ChosenVariables const chosen = {0, 2};
    for (auto const& text :
         {FormatCsv(block, chosen), FormatLines(block, chosen), FormatJson(block, chosen)}) {
        EXPECT_EQ(count(text, "One"), 1u) << text;
        EXPECT_EQ(count(text, "Two"), 0u) << text;
        EXPECT_EQ(count(text, "Three"), 1u) << text;
    }
    EXPECT_EQ(FormatCsv(block, {}), "");
    EXPECT_EQ(FormatLines(block, {}), "");
    EXPECT_NE(FormatJson(block, {}).find("\"variables\":[],\"standby\":false"), std::string::npos);
    EXPECT_EQ(FormatJson(block, AllVariables(block)), FormatJson(block));
}

}  // namespace
