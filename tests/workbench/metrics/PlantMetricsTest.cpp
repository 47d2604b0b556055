#include "PlantMetrics.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <sstream>

#include "DocumentPart.h"
#include "MetricsFixture.h"
#include "Printable.h"

using namespace test;
using namespace workbench;

namespace {

class PlantMetricsTest : public testing::Test {
protected:
    // The samples of a metric, without its name.
    std::vector<std::string> Samples(std::string const& name) const {
        std::vector<std::string> samples;
        std::istringstream text(plant.Text());
        for (std::string line; std::getline(text, line);) {
            std::size_t const end = line.find_first_of("{ ");
            if (line.substr(0, end) == name) {
                samples.push_back(line.substr(end));
            }
        }
        return samples;
    }

    MetricsPlant plant;
};

using Lines = std::vector<std::string>;

TEST_F(PlantMetricsTest, ARunHasThisText) {
    plant.AddBlock("AHU").task = "Fast";
    plant.AddVariable("Supply air", OpcUaType_Float).unit = "degrees-celsius";
    plant.AddVariable("Setpoint", OpcUaType_Float).write = true;
    plant.Cycle({Float(21.5F), Float(20)});
    BlockSnapshot& ahu = plant.snapshots.front();
    ahu.times = {3, 4120, 4000, 12000, 2};
    ahu.variables[1].write.stage = WriteStage::Written;
    plant.traffic.requests = 6;
    plant.traffic.answers = 5;
    plant.traffic.trips.Add(15000);
    plant.outlets = {{"mqtt", OutletHealth::Good, "connected", Noon, {{"messages", 12}}}};
    EXPECT_EQ(plant.Text(), R"(# HELP dorvel_build_info Version of the workbench; always 1.
# TYPE dorvel_build_info gauge
dorvel_build_info{version="1.2.3"} 1
# HELP dorvel_run_info Project of the run; always 1.
# TYPE dorvel_run_info gauge
dorvel_run_info{project="plant.lua"} 1
# HELP dorvel_run_start_time_seconds When the run began, in seconds since 1970 UTC.
# TYPE dorvel_run_start_time_seconds gauge
dorvel_run_start_time_seconds 1710502496.789
# HELP dorvel_variable_value Value of a number, a state or a boolean (0 or 1); left out while its quality is bad.
# TYPE dorvel_variable_value gauge
dorvel_variable_value{block="AHU",variable="Supply air",object="analog-value 1",property="present-value",unit="degrees-celsius"} 21.5
dorvel_variable_value{block="AHU",variable="Setpoint",object="analog-value 2",property="present-value",unit=""} 20
# HELP dorvel_variable_quality Quality of a value: 2 good, 1 uncertain, 0 bad or none yet; bad too while its block is in fault.
# TYPE dorvel_variable_quality gauge
dorvel_variable_quality{block="AHU",variable="Supply air"} 2
dorvel_variable_quality{block="AHU",variable="Setpoint"} 2
# HELP dorvel_variable_suspect 1 while the value comes from an error of the device, else 0.
# TYPE dorvel_variable_suspect gauge
dorvel_variable_suspect{block="AHU",variable="Supply air"} 0
dorvel_variable_suspect{block="AHU",variable="Setpoint"} 0
# HELP dorvel_block_info Address and task of a block; always 1.
# TYPE dorvel_block_info gauge
dorvel_block_info{block="AHU",address="192.168.1.20:47808",task="Fast"} 1
# HELP dorvel_block_up 1 if the latest cycle of the block has polled without a fault, else 0.
# TYPE dorvel_block_up gauge
dorvel_block_up{block="AHU"} 1
# HELP dorvel_block_fault 1 while the block is in fault, else 0.
# TYPE dorvel_block_fault gauge
dorvel_block_fault{block="AHU"} 0
# HELP dorvel_block_standby 1 while the block is not polled on standby, else 0.
# TYPE dorvel_block_standby gauge
dorvel_block_standby{block="AHU"} 0
# HELP dorvel_block_last_cycle_time_seconds When the latest cycle of the block ended, in seconds since 1970 UTC.
# TYPE dorvel_block_last_cycle_time_seconds gauge
dorvel_block_last_cycle_time_seconds{block="AHU"} 1710502496.789
# HELP dorvel_block_cycles_total Cycles of the block.
# TYPE dorvel_block_cycles_total counter
dorvel_block_cycles_total{block="AHU"} 3
# HELP dorvel_block_fault_cycles_total Cycles of the block that ended in fault.
# TYPE dorvel_block_fault_cycles_total counter
dorvel_block_fault_cycles_total{block="AHU"} 0
# HELP dorvel_block_cycle_last_seconds How long the latest cycle took.
# TYPE dorvel_block_cycle_last_seconds gauge
dorvel_block_cycle_last_seconds{block="AHU"} 0.000412
# HELP dorvel_block_cycle_median_seconds Median of the latest 128 cycles.
# TYPE dorvel_block_cycle_median_seconds gauge
dorvel_block_cycle_median_seconds{block="AHU"} 4e-04
# HELP dorvel_block_cycle_maximum_seconds The longest cycle of the run.
# TYPE dorvel_block_cycle_maximum_seconds gauge
dorvel_block_cycle_maximum_seconds{block="AHU"} 0.0012
# HELP dorvel_block_writes Variables of the block whose latest write is in that state.
# TYPE dorvel_block_writes gauge
dorvel_block_writes{block="AHU",state="pending"} 0
dorvel_block_writes{block="AHU",state="written"} 1
dorvel_block_writes{block="AHU",state="unconfirmed"} 0
dorvel_block_writes{block="AHU",state="differs"} 0
dorvel_block_writes{block="AHU",state="refused"} 0
# HELP dorvel_block_write_results_total Writes that came to that state.
# TYPE dorvel_block_write_results_total counter
dorvel_block_write_results_total{block="AHU",state="written"} 0
dorvel_block_write_results_total{block="AHU",state="unconfirmed"} 0
dorvel_block_write_results_total{block="AHU",state="differs"} 0
dorvel_block_write_results_total{block="AHU",state="refused"} 0
# HELP dorvel_task_period_seconds Period of the task.
# TYPE dorvel_task_period_seconds gauge
dorvel_task_period_seconds{task="Fast"} 0.5
# HELP dorvel_task_overruns_total How often all blocks of the task together took longer than its period.
# TYPE dorvel_task_overruns_total counter
dorvel_task_overruns_total{task="Fast"} 2
# HELP dorvel_datagrams_sent_total Datagrams sent to devices.
# TYPE dorvel_datagrams_sent_total counter
dorvel_datagrams_sent_total 6
# HELP dorvel_datagrams_received_total Datagrams received from devices.
# TYPE dorvel_datagrams_received_total counter
dorvel_datagrams_received_total 5
# HELP dorvel_round_trips_total Datagrams that were answered while the driver waited for it.
# TYPE dorvel_round_trips_total counter
dorvel_round_trips_total 1
# HELP dorvel_round_trip_last_seconds The latest round trip.
# TYPE dorvel_round_trip_last_seconds gauge
dorvel_round_trip_last_seconds 0.0015
# HELP dorvel_round_trip_median_seconds Median of the latest 4096 round trips.
# TYPE dorvel_round_trip_median_seconds gauge
dorvel_round_trip_median_seconds 0.0015
# HELP dorvel_round_trip_maximum_seconds The longest round trip of the run.
# TYPE dorvel_round_trip_maximum_seconds gauge
dorvel_round_trip_maximum_seconds 0.0015
# HELP dorvel_outlet_up 1 while the outlet works, else 0.
# TYPE dorvel_outlet_up gauge
dorvel_outlet_up{outlet="mqtt"} 1
# HELP dorvel_outlet_state 1 for the state of the outlet, 0 for the others: starting, good, waiting, failed.
# TYPE dorvel_outlet_state gauge
dorvel_outlet_state{outlet="mqtt",state="starting"} 0
dorvel_outlet_state{outlet="mqtt",state="good"} 1
dorvel_outlet_state{outlet="mqtt",state="waiting"} 0
dorvel_outlet_state{outlet="mqtt",state="failed"} 0
# HELP dorvel_outlet_state_time_seconds Since when the outlet has its state, in seconds since 1970 UTC.
# TYPE dorvel_outlet_state_time_seconds gauge
dorvel_outlet_state_time_seconds{outlet="mqtt"} 1710502496.789
# HELP dorvel_outlet_figures_total Figures of the outlet, such as messages.
# TYPE dorvel_outlet_figures_total counter
dorvel_outlet_figures_total{outlet="mqtt",figure="messages"} 12
)");
}

TEST_F(PlantMetricsTest, OnlyNumbersStatesAndBooleansHaveAValue) {
    plant.AddBlock("AHU");
    plant.AddVariable("On", OpcUaType_Boolean);
    plant.AddVariable("Text", OpcUaType_String);
    plant.AddVariable("Count", OpcUaType_UInt64);
    OpcUa_VariantHlp on;
    on.SetBool(true);
    OpcUa_VariantHlp count;
    count.SetUInt64(18446744073709551615ULL);
    plant.Cycle({on, Text("warm"), count});
    Lines const samples = Samples("dorvel_variable_value");
    ASSERT_EQ(samples.size(), 2u);
    EXPECT_EQ(samples[0].substr(samples[0].rfind(' ')), " 1");
    EXPECT_EQ(samples[1].substr(samples[1].rfind(' ')), " 18446744073709551615");
    EXPECT_EQ(Samples("dorvel_variable_quality").size(), 3u);
}

TEST_F(PlantMetricsTest, NumbersThatAreNotFiniteAreThoseOfPrometheus) {
    plant.AddBlock("AHU");
    for (char const* name : {"a", "b", "c"}) {
        plant.AddVariable(name, OpcUaType_Float);
    }
    plant.Cycle({Float(NAN), Float(INFINITY), Float(-INFINITY)});
    Lines ends;
    for (std::string const& sample : Samples("dorvel_variable_value")) {
        ends.push_back(sample.substr(sample.rfind(' ') + 1));
    }
    EXPECT_EQ(ends, (Lines{"NaN", "+Inf", "-Inf"}));
}

TEST_F(PlantMetricsTest, AValueOfBadQualityIsLeftOut) {
    plant.AddBlock("AHU");
    plant.AddVariable("T", OpcUaType_Float);
    plant.Cycle({Float(21)});
    plant.snapshots.front().fault = true;
    EXPECT_EQ(Samples("dorvel_variable_value"), Lines());
    EXPECT_EQ(Samples("dorvel_variable_quality"), (Lines{R"({block="AHU",variable="T"} 0)"}));
    EXPECT_EQ(Samples("dorvel_block_up"), (Lines{R"({block="AHU"} 0)"}));
    EXPECT_EQ(Samples("dorvel_block_fault"), (Lines{R"({block="AHU"} 1)"}));
}

TEST_F(PlantMetricsTest, ABlockOnStandbyIsNeitherUpNorInFault) {
    plant.AddBlock("AHU");
    plant.Cycle({});
    plant.snapshots.front().isStandby = true;
    EXPECT_EQ(Samples("dorvel_block_up"), (Lines{R"({block="AHU"} 0)"}));
    EXPECT_EQ(Samples("dorvel_block_fault"), (Lines{R"({block="AHU"} 0)"}));
    EXPECT_EQ(Samples("dorvel_block_standby"), (Lines{R"({block="AHU"} 1)"}));
}

TEST_F(PlantMetricsTest, BeforeItsFirstCycleABlockHasNoTimesAndNoValues) {
    plant.AddBlock("AHU");
    plant.AddVariable("T", OpcUaType_Float);
    plant.Cycle({});
    plant.snapshots.front().cycle = 0;
    plant.snapshots.front().variables.front().state.Status = OpcUa_BadNoData;
    EXPECT_EQ(Samples("dorvel_variable_value"), Lines());
    EXPECT_EQ(Samples("dorvel_block_last_cycle_time_seconds"), Lines());
    EXPECT_EQ(Samples("dorvel_block_cycle_last_seconds"), Lines());
    EXPECT_EQ(Samples("dorvel_block_up"), (Lines{R"({block="AHU"} 0)"}));
    EXPECT_EQ(Samples("dorvel_round_trip_last_seconds"), Lines());
}

TEST_F(PlantMetricsTest, CausesOfOneKindAreOneSeries) {
    plant.AddBlock("AHU");
    plant.Cycle({});
    plant.snapshots.front().causes = {{CauseKind::PropertyError, "analog-input 1", "text", 2},
                                      {CauseKind::PropertyError, "analog-input 2", "text", 1},
                                      {CauseKind::Silent, "", "text", 3}};
    EXPECT_EQ(Samples("dorvel_block_causes"),
              (Lines{R"({block="AHU",cause="property-error"} 3)", R"({block="AHU",cause="silent"} 3)"}));
}

TEST_F(PlantMetricsTest, NamesThatLookTheSameKeepTheirOwnSeries) {
    plant.AddBlock("AHU");
    for (char const* name : {"T\xFF", "T\xFE", "T\xEF\xBF\xBD (2)"}) {
        plant.AddVariable(name, OpcUaType_Float);
    }
    plant.Cycle({Float(1), Float(2), Float(3)});
    Lines const samples = Samples("dorvel_variable_quality");
    EXPECT_EQ(std::set<std::string>(samples.begin(), samples.end()).size(), 3u);
}

TEST_F(PlantMetricsTest, TasksWhoseNamesLookTheSameKeepTheirOwnSeries) {
    plant.tasks = {{"f\xFF", 500}, {"f\xFE", 1000}};
    plant.AddBlock("AHU").task = "f\xFF";
    plant.AddBlock("Meter").task = "f\xFE";
    plant.Cycle({});
    EXPECT_EQ(Samples("dorvel_task_period_seconds"),
              (Lines{"{task=\"f\xEF\xBF\xBD\"} 0.5", "{task=\"f\xEF\xBF\xBD (2)\"} 1"}));
    EXPECT_NE(Samples("dorvel_block_info").back().find("task=\"f\xEF\xBF\xBD (2)\""), std::string::npos);
}

// Series of a text, each as it is written; an empty list if a line is not one of the format.
std::vector<std::string> SeriesOf(std::string const& text) {
    std::vector<std::string> series;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.compare(0, 2, "# ") == 0) {
            continue;
        }
        std::size_t at = line.find_first_not_of("abcdefghijklmnopqrstuvwxyz_");
        if (at != std::string::npos && line[at] == '{') {
            bool isQuoted = false;
            for (++at; at < line.size() && (isQuoted || line[at] != '}'); ++at) {
                if (isQuoted && line[at] == '\\') {
                    ++at;
                } else if (line[at] == '"') {
                    isQuoted = !isQuoted;
                }
            }
            ++at;
        }
        if (at >= line.size() || line[at] != ' ') {
            return {};
        }
        series.push_back(line.substr(0, at));
    }
    return series;
}

TEST_F(PlantMetricsTest, WhateverNamesAreTheTextIsOneOfTheFormatAndNoSeriesIsTwice) {
    constexpr char Octets[] = "a\"\\\n\r\t{}=, \0\x01\x7F\x80\xBF\xC3\xA9\xED\xA0\x80\xF5\xFF";
    std::string const octets(Octets, sizeof Octets - 1);
    unsigned long long random = 1;
    auto const name = [&] {
        std::string text;
        random = random * 6364136223846793005ULL + 1442695040888963407ULL;
        for (unsigned long long left = random >> 60; left > 0; --left) {
            random = random * 6364136223846793005ULL + 1442695040888963407ULL;
            text += octets[(random >> 33) % octets.size()];
        }
        return text;
    };
    for (int i = 0; i < 20; ++i) {
        plant.AddBlock(name());
        for (int k = 0; k < 100; ++k) {
            plant.AddVariable(name(), OpcUaType_Float).unit = name();
        }
    }
    plant.AddVariable(std::string(65536, '"'), OpcUaType_Float);
    plant.Cycle({});
    for (BlockSnapshot& block : plant.snapshots) {
        for (VariableSnapshot& variable : block.variables) {
            variable.state.Value = Float(1);
        }
    }
    std::string const text = plant.Text();
    EXPECT_EQ(tools::ValidUtf8(text), text);
    EXPECT_EQ(text.find_first_of(std::string("\0\r\x1B", 3)), std::string::npos);
    std::vector<std::string> const series = SeriesOf(text);
    EXPECT_GT(series.size(), 6000u);
    EXPECT_EQ(std::set<std::string>(series.begin(), series.end()).size(), series.size());
}

TEST(MetricsDocument, HasEveryMetric) {
    std::string table = "\n| Metric | Type | Labels | |\n|---|---|---|---|\n";
    for (MetricFamily const& family : MetricFamilies()) {
        std::string const labels = family.labels;
        table += "| `" + std::string(family.name) + "` | " + (family.isCounter ? "counter" : "gauge") +
                 " | " + labels + (labels.empty() ? "| " : " | ") + family.help + " |\n";
    }
    ExpectInDocument(PUBLISH_DOCUMENT, "metrics", table + "\n");
}

}  // namespace
