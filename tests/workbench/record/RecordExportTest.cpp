#include "RecordExport.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <time.h>

#include <limits>

using namespace workbench;

namespace {

class ExportTest : public testing::Test {
protected:
    ExportTest() {
        setenv("TZ", "UTC0", 1);
        tzset();
        variable.block = "=AHU";
        variable.name = "T, supply";
        variable.object = "analog-input 1";
        variable.property = "present-value";
        variable.type = "DataValue(Float)";
        variable.unit = "degrees-celsius";
        row.time = 1710502496789;
        row.number = 21.1;
        row.quality = QualityKind::Good;
    }
    ~ExportTest() override {
        unsetenv("TZ");
        tzset();
    }

    RecordedVariable variable;
    RecordRow row;
};

TEST_F(ExportTest, WritesARowAsCsv) {
    EXPECT_EQ(RowsHeader(RecordFormat::Csv), "time,block,variable,value,unit,state_text,quality\r\n");
    EXPECT_EQ(RowText(variable, row, RecordFormat::Csv),
              "2024-03-15T11:34:56.789+00:00,'=AHU,\"T, supply\",21.1,degrees-celsius,,good\r\n");
}

TEST_F(ExportTest, WritesARowAsJson) {
    EXPECT_EQ(RowsHeader(RecordFormat::Json), "");
    EXPECT_EQ(RowText(variable, row, RecordFormat::Json),
              R"({"time":"2024-03-15T11:34:56.789+00:00","block":"=AHU","variable":"T, supply","value":21.1,)"
              R"("unit":"degrees-celsius","stateText":null,"quality":"good"})"
              "\n");
}

TEST_F(ExportTest, WritesGapsTextsStatesAndBooleans) {
    row.number = std::numeric_limits<double>::quiet_NaN();
    row.quality = QualityKind::Bad;
    EXPECT_NE(RowText(variable, row, RecordFormat::Csv).find(",,degrees-celsius,,bad"), std::string::npos);
    EXPECT_NE(RowText(variable, row, RecordFormat::Json).find("\"value\":null"), std::string::npos);
    variable.object = "multi-state-value 3";
    variable.states = {"off", "on"};
    row.number = 2;
    EXPECT_NE(RowText(variable, row, RecordFormat::Csv).find(",2,degrees-celsius,on,"), std::string::npos);
    variable.object = "binary-value 3";
    variable.type = "DataValue(Boolean)";
    row.number = 0;
    EXPECT_NE(RowText(variable, row, RecordFormat::Json).find("\"value\":false"), std::string::npos);
    EXPECT_NE(RowText(variable, row, RecordFormat::Json).find("\"stateText\":\"off\""), std::string::npos);
    row.isText = true;
    row.text = "=1+1";
    EXPECT_NE(RowText(variable, row, RecordFormat::Csv).find(",'=1+1,"), std::string::npos);
}

TEST_F(ExportTest, WritesEvents) {
    RecordedEvent const event{7, row.time, "fault", "AHU", "", "No connection"};
    EXPECT_EQ(EventText(event, RecordFormat::Csv),
              "7,2024-03-15T11:34:56.789+00:00,fault,AHU,,No connection\r\n");
    EXPECT_EQ(
        EventText(event, RecordFormat::Json),
        R"({"id":7,"time":"2024-03-15T11:34:56.789+00:00","event":"fault","block":"AHU","variable":null,)"
        R"("text":"No connection"})"
        "\n");
}

TEST(MatchingVariables, AreChosenByPatterns) {
    std::vector<RecordedVariable> variables(3);
    variables[0].block = variables[1].block = "AHU";
    variables[0].name = "Supply air";
    variables[1].name = "Return air";
    variables[2].block = "Rooms";
    variables[2].name = "T*";
    std::vector<std::string> unknown;
    auto const count = [&](std::vector<std::string> const& patterns) {
        return MatchingVariables(variables, patterns, unknown).size();
    };
    EXPECT_EQ(count({}), 3U);
    EXPECT_EQ(count({"AHU.*"}), 2U);
    EXPECT_EQ(count({"*air", "AHU.Supply air"}), 2U);
    EXPECT_EQ(count({"*"}), 3U);
    EXPECT_EQ(count({"*.*u*y*"}), 1U);
    EXPECT_EQ(count({"Rooms.T*"}), 1U);
    EXPECT_TRUE(unknown.empty());
    EXPECT_EQ(count({"AHU", "*x*"}), 0U);
    EXPECT_EQ(unknown, (std::vector<std::string>{"AHU", "*x*"}));
}

}  // namespace
