#include <fstream>
#include <set>
#include <sstream>

#include "DeviceBirth.h"
#include "Printable.h"
#include "SparkplugFixture.h"
#include "SparkplugValues.h"

using namespace test;
using namespace workbench;

namespace {

using Facts = SparkplugTest;
using Sizes = SparkplugTest;
using Hostile = SparkplugTest;

std::string State(std::string const& name) {
    return "{Name='" + name +
           "', Type='DataValue', ElementType='UInt32', ObjectType='multi-state-value', "
           "ObjectProperties='present-value', ObjectNumber=2, StateTexts={'off', 'on \"1\"'}}";
}

// The rows of the document's table: "engUnit String".
std::set<std::string> DocumentedProperties() {
    std::set<std::string> rows;
    std::ifstream document(PUBLISH_DOCUMENT);
    bool isInside = false;
    for (std::string line; std::getline(document, line);) {
        isInside = (isInside || line == "<!-- sparkplug properties: begin -->") &&
                   line != "<!-- sparkplug properties: end -->";
        std::istringstream cells(line);
        std::string bar;
        std::string name;
        std::string type;
        if (isInside && cells >> bar >> name >> bar >> type && name.front() == '`') {
            rows.insert(name.substr(1, name.size() - 2) + " " + type);
        }
    }
    return rows;
}

TEST_F(Facts, AreTheDocumentedProperties) {
    Begin(Block(R"(Name="AHU", Address="192.168.1.20:47808")",
                Variable("T", "Float",
                         "Unit='degrees-celsius', Description='Supply', Point={Minimum=-50, Maximum=150}") +
                    ", " + State("S")));
    Wait(60);
    SetFault(0, true);
    Publish();
    SetFault(0, false);
    SetValue(0, 0, {}, OpcUa_BadNoData);
    Publish();
    Sent();
    std::set<std::string> found;
    ReadPayload const birth(messages.back().payload);
    for (ReadMetric const& metric : birth.metrics) {
        for (auto const& [key, fields] : metric.properties) {
            found.insert(key + " " + SparkplugTypeName(static_cast<SparkplugType>(fields.Number(1))));
        }
    }
    EXPECT_EQ(found, DocumentedProperties());
}

TEST_F(Facts, AreThoseOfTheProject) {
    Begin(Block(
        R"(Name="AHU", Address="192.168.1.20:47808")",
        Variable(
            "T", "Float",
            "Write=true, Unit='degrees-celsius', Description='Supply', Point={Minimum=-50, Maximum=150}") +
            ", " + State("S")));
    ReadPayload const birth(messages.back().payload);
    ReadMetric const& temperature = birth.Metric("T");
    EXPECT_EQ(temperature.Property("engUnit"), "°C");
    EXPECT_EQ(temperature.properties.at("engLow").Double(6), -50.0);
    EXPECT_EQ(temperature.properties.at("engHigh").Double(6), 150.0);
    EXPECT_EQ(temperature.Property("description"), "Supply");
    EXPECT_EQ(temperature.Property("object"), "analog-value 1");
    EXPECT_EQ(temperature.Property("property"), "present-value");
    EXPECT_EQ(temperature.properties.count("status"), 0U);
    EXPECT_EQ(temperature.properties.at("readOnly").Number(7), 0U);
    ReadMetric const& state = birth.Metric("S");
    EXPECT_EQ(state.Property("states"), R"({"1":"off","2":"on \"1\""})");
    EXPECT_EQ(state.properties.at("readOnly").Number(7), 1U);
    EXPECT_EQ(state.properties.count("engUnit"), 0U);
}

TEST_F(Facts, AreReadOnlyWithoutCommands) {
    settings.takesCommands = false;
    Begin(TwoBlocks());
    ReadPayload const birth(messages.back().payload);
    EXPECT_EQ(birth.Metric("T").properties.at("readOnly").Number(7), 1U);
}

// A block of so many variables, in which the test sets values.
std::string Large(std::size_t count, std::string const& type) {
    std::string variables;
    for (std::size_t i = 0; i < count; ++i) {
        std::string const number = std::to_string(i);
        variables +=
            "{Name='Variable number " + number + "', Type='DataValue', ElementType='" + type +
            "', ObjectType='analog-value', ObjectProperties='present-value', ObjectNumber=" + number +
            ", Unit='degrees-celsius', Description='A description of some length'},\n";
    }
    return Block(R"(Name="AHU", Address="192.168.1.20:47808")", variables);
}

TEST_F(Sizes, OfABirthOf10000VariablesAreBounded) {
    Begin(Large(10000, "Float"));
    ReadPayload const birth(messages.back().payload);
    EXPECT_EQ(birth.metrics.size(), 10000U);
    EXPECT_LE(messages.back().payload.size(), DeviceBirth::LongestWhole);
    EXPECT_EQ(birth.metrics[0].properties.count("description"), 0U);
    EXPECT_EQ(birth.metrics[0].Property("engUnit"), "°C");
    RecordProperty("octets", static_cast<int>(messages.back().payload.size()));
}

TEST_F(Sizes, OfDataAreBounded) {
    Begin(Large(10000, "Float"));
    for (std::size_t i = 0; i < 10000; ++i) {
        SetValue(0, i, Number(2));
    }
    Publish();
    EXPECT_EQ(Sent(), Names(10, "DDATA AHU"));
    std::set<std::uint64_t> aliases;
    for (ReadPayload const& payload : taken) {
        EXPECT_EQ(payload.metrics.size(), SparkplugPublisher::MostMetricsOfData);
        for (ReadMetric const& metric : payload.metrics) {
            aliases.insert(metric.Alias());
        }
    }
    EXPECT_EQ(aliases.size(), 10000U);
}

TEST_F(Sizes, OfLongTextsAreThoseOfDataAndNotOfTheBirth) {
    Load(Large(1000, "String"));
    RunAll();
    for (std::size_t i = 0; i < 1000; ++i) {
        SetValue(0, i, test::Text(std::string(i == 7 ? 3 : 5000, 'x')));
    }
    Connect();
    Publish();
    Names const names = Sent();
    ASSERT_GT(names.size(), 2U);
    EXPECT_EQ(names[1], "DBIRTH AHU");
    EXPECT_LE(messages[1].payload.size(), DeviceBirth::LongestWhole);
    EXPECT_TRUE(taken[1].metrics[0].IsNull());
    EXPECT_EQ(taken[1].metrics[7].fields.Text(15), "xxx");
    std::size_t values = 0;
    for (std::size_t i = 2; i < names.size(); ++i) {
        EXPECT_EQ(names[i], "DDATA AHU");
        EXPECT_LE(messages[i].payload.size(), SparkplugPublisher::LongestData + 6000);
        for (ReadMetric const& metric : taken[i].metrics) {
            values += metric.fields.Text(15).size() == 5000 ? 1 : 0;
        }
    }
    EXPECT_EQ(values, 999U);
    Publish();
    EXPECT_EQ(Sent(), Names{});
}

TEST_F(Sizes, OfWhatWaitsDoNotGrowWithTheBirths) {
    Load(Large(1000, "String"));
    RunAll();
    for (std::size_t i = 0; i < 1000; ++i) {
        SetValue(0, i, test::Text(std::string(5000, 'x')));
    }
    broker.room = 2;
    Connect();
    Publish();
    for (int i = 0; i < 3; ++i) {
        for (bool const isFault : {true, false}) {
            Wait(60);
            SetFault(0, isFault);
            broker.room = broker.sent.size() + 1;
            Publish();
        }
    }
    EXPECT_EQ(Sent().back(), "DBIRTH AHU");
    broker.room = 100000;
    Publish();
    Sent();
    std::size_t values = 0;
    for (ReadPayload const& payload : taken) {
        values += payload.metrics.size();
    }
    EXPECT_EQ(values, 1000U);
}

TEST_F(Sizes, OfPropertiesAreBounded) {
    std::string states;
    for (int i = 0; i < 500; ++i) {
        states += "'state " + std::to_string(i) + "',";
    }
    Begin(Block(R"(Name="AHU", Address="192.168.1.20:47808")",
                "{Name='S', Type='DataValue', ElementType='UInt32', ObjectType='multi-state-value', "
                "ObjectProperties='present-value', ObjectNumber=2, Description='" +
                    std::string(5000, 'd') + "', StateTexts={" + states + "}}"));
    ReadPayload const birth(messages.back().payload);
    EXPECT_EQ(birth.Metric("S").properties.count("states"), 0U);
    EXPECT_EQ(birth.Metric("S").Property("description").size(), 1000U);
}

TEST_F(Hostile, NamesAreValidTextsAndTopics) {
    std::string const names[] = {
        "a/b+c#", "", "%", "$SYS", std::string("a\0b", 3), "\xFF\xFE", "bdSeq", std::string(65536, 'n')};
    std::deque<BlockConfig> blocks;
    SparkplugPayload head;
    for (std::string const& name : names) {
        blocks.emplace_back();
        blocks.back().name = name;
        for (std::string const& variable : names) {
            blocks.back().variables.push_back({variable,
                                               {OpcUaType_DataValue, OpcUaType_String},
                                               ObjectTypes().FindCode(1),
                                               Properties().FindCode(0),
                                               1});
        }
    }
    SparkplugNames const plant(names[0], names[4], blocks);
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        std::string const topic = plant.DeviceTopic("DBIRTH", i);
        EXPECT_EQ(std::count(topic.begin(), topic.end(), '/'), 4) << topic;
        EXPECT_EQ(topic.find_first_of(std::string("+#\0", 3)), std::string::npos) << topic;
        EXPECT_EQ(plant.BlockOfTopic("DBIRTH", topic), i);
        BlockSnapshot snapshot;
        snapshot.config = &blocks[i];
        snapshot.cycle = 1;
        for (VariableConfig const& variable : blocks[i].variables) {
            snapshot.variables.push_back({&variable, {test::Text("v"), OpcUa_Good, Noon}});
            snapshot.variables.back().state.Value.SetString("\xFF", 1);
        }
        ReadPayload const birth(MakeDeviceBirth(snapshot, i, plant, true, head).payload);
        std::set<std::string> metrics;
        for (ReadMetric const& metric : birth.metrics) {
            metrics.insert(metric.Name());
            EXPECT_EQ(tools::ValidUtf8(metric.Name()), metric.Name());
            EXPECT_EQ(metric.fields.Text(15), "\xEF\xBF\xBD");
        }
        EXPECT_EQ(metrics.size(), std::size(names));
    }
}

}  // namespace
