#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <algorithm>
#include <random>

#include "JsonFormat.h"
#include "LineFormat.h"
#include "Snapshots.h"

using namespace test;
using namespace workbench;

namespace {

class Format : public testing::Test {
protected:
    void SetUp() override {
        block = &plant.AddBlock("AHU");
        plant.AddVariable("Supply", DataValueOf(OpcUaType_Float), Float(21.1f));
        plant.AddVariable("Name", OpcUaType_String, Text("a \"b\"\tc"), 0x808C0000u, Noon - Second);
        plant.AddVariable("Never", DataValueOf(OpcUaType_Boolean), {}, OpcUa_BadNoData, 0);
    }

    rapidjson::Document Parsed() const {
        rapidjson::Document document;
        std::string const text = FormatJson(*block);
        EXPECT_EQ(text.back(), '\n');
        EXPECT_EQ(text.find('\n'), text.size() - 1);
        EXPECT_FALSE(document.Parse(text.c_str()).HasParseError()) << text;
        return document;
    }

    // The value of a block's only variable.
    static std::string JsonValue(OpcUa_VariantHlp const& value) {
        Plant other;
        BlockSnapshot const& one = other.AddBlock("B");
        other.AddVariable("V", OpcUaType_Double, value);
        std::string const text = FormatJson(one);
        std::size_t const begin = text.find("\"value\":") + 8;
        return text.substr(begin, text.find(",\"quality\"") - begin);
    }

    static OpcUa_VariantHlp As(_OpcUa_BuiltInType type, char const* text) {
        OpcUa_VariantHlp value = Text(text);
        value.ChangeType(type);
        return value;
    }

    Plant plant;
    BlockSnapshot* block = nullptr;
};

TEST_F(Format, ACycleIsALinePerVariable) {
    std::string const start = "2024-03-15T12:34:56.789+01:00\tAHU\t3\tOK\t";
    std::string const end = "\t-\t-\t0.000\t0\n";
    EXPECT_EQ(FormatLines(*block),
              start +
                  "Supply\tanalog-input 1\tpresent-value\t21.1\tDataValue(Float)\tGood\t0x00000000\t"
                  "2024-03-15T12:34:56.789+01:00\t-" +
                  end + start +
                  "Name\tanalog-input 2\tpresent-value\ta \"b\"\\tc\tString\tSensor failure\t0x808C0000\t"
                  "2024-03-15T12:34:55.789+01:00\t-" +
                  end + start +
                  "Never\tanalog-input 3\tpresent-value\t-\tDataValue(Boolean)\tNo data\t0x809B0000\t-\t-" +
                  end);
}

TEST_F(Format, EveryLineHasTheColumnsOfTheHeader) {
    auto const tabs = [](std::string const& text) { return std::count(text.begin(), text.end(), '\t'); };
    EXPECT_EQ(tabs(LinesHeader()), 16);
    EXPECT_EQ(tabs(FormatLines(*block)), 3 * 16);
}

TEST_F(Format, TheNewestColumnsAreTheLastOnes) {
    block->variables[0].suspect = "device: unknown-object";
    block->causes = {{CauseKind::Silent, "", "no answer\tsince noon", 3, Noon},
                     {CauseKind::PropertyError, "analog-input 1", "analog-input 1: x", 1, Noon}};
    block->times = {3, 12345, 1, 2, 7};
    std::string const lines = FormatLines(*block);
    std::string const end = "\tno answer\\tsince noon; analog-input 1: x\t1.234\t7\n";
    EXPECT_NE(lines.find("\t-\tdevice: unknown-object" + end), std::string::npos) << lines;
    EXPECT_EQ(lines.substr(lines.size() - end.size()), end);
    EXPECT_EQ(LinesHeader(),
              "#time\tblock\tcycle\tstate\tvariable\tobject\tproperty\tvalue\ttype\tquality\tstatus\t"
              "value time\twrite\tsuspect\twhy\tcycle ms\toverruns\n");
}

TEST_F(Format, JsonHasTheCausesTheTimesAndTheSuspectValues) {
    block->variables[1].suspect = "device: unknown-object";
    block->causes = {{CauseKind::Silent, "", "no answer since noon", 3, Noon},
                     {CauseKind::PropertyError, "analog-input 2", "text", 1, Noon - Second}};
    block->times = {3, 12345, 10000, 200000, 7};
    auto const document = Parsed();
    EXPECT_FALSE(document["standby"].GetBool());
    EXPECT_EQ(document["cycle_ms"]["last"].GetDouble(), 1.2345);
    EXPECT_EQ(document["cycle_ms"]["median"].GetDouble(), 1);
    EXPECT_EQ(document["cycle_ms"]["maximum"].GetDouble(), 20);
    EXPECT_EQ(document["overruns"].GetUint(), 7u);
    EXPECT_FALSE(document["variables"][0].HasMember("suspect"));
    EXPECT_STREQ(document["variables"][1]["suspect"].GetString(), "device: unknown-object");
    auto const& causes = document["causes"];
    ASSERT_EQ(causes.Size(), 2u);
    EXPECT_STREQ(causes[0]["cause"].GetString(), "silent");
    EXPECT_TRUE(causes[0]["object"].IsNull());
    EXPECT_STREQ(causes[0]["text"].GetString(), "no answer since noon");
    EXPECT_EQ(causes[0]["count"].GetUint(), 3u);
    EXPECT_STREQ(causes[0]["since"].GetString(), "2024-03-15T12:34:56.789+01:00");
    EXPECT_STREQ(causes[1]["cause"].GetString(), "property-error");
    EXPECT_STREQ(causes[1]["object"].GetString(), "analog-input 2");
}

TEST_F(Format, AStandbyIsNotAFault) {
    block->isStandby = true;
    block->isReported = false;
    EXPECT_NE(FormatLines(*block).find("\t3\tSTANDBY\tSupply\t"), std::string::npos);
    auto const document = Parsed();
    EXPECT_TRUE(document["standby"].GetBool());
    EXPECT_FALSE(document["fault"].GetBool());
}

TEST_F(Format, LinesHaveTheFault) {
    block->fault = true;
    block->errorText = "No\tconnection";
    EXPECT_NE(FormatLines(*block).find("\t3\tFAULT No\\tconnection\tSupply\t"), std::string::npos);
    block->isReported = false;
    EXPECT_NE(FormatLines(*block).find("\t3\tFAULT not polled\tSupply\t"), std::string::npos);
}

TEST_F(Format, LinesHaveTheStateOfAWrite) {
    block->variables[0].write = {WriteStage::Pending, Float(22.5f), ""};
    block->variables[1].write = {WriteStage::Refused, Text("b"), "no\tway"};
    std::string const lines = FormatLines(*block);
    EXPECT_NE(lines.find("+01:00\t22.5 pending\t-\t-\t"), std::string::npos) << lines;
    EXPECT_NE(lines.find("+01:00\tb refused (no\\tway)\t-\t-\t"), std::string::npos) << lines;
    EXPECT_NE(lines.find("\t-\t-\t-\t-\t"), std::string::npos) << lines;
}

TEST_F(Format, JsonHasTheStateOfAWrite) {
    block->variables[0].write = {WriteStage::Written, Float(22.5f), ""};
    block->variables[1].write = {WriteStage::Unconfirmed, Text("b"), "reads back \"a\""};
    rapidjson::Document const document = Parsed();
    auto const& variables = document["variables"].GetArray();
    EXPECT_STREQ(variables[0]["write"]["state"].GetString(), "written");
    EXPECT_EQ(variables[0]["write"]["value"].GetFloat(), 22.5f);
    EXPECT_FALSE(variables[0]["write"].HasMember("reason"));
    EXPECT_STREQ(variables[1]["write"]["state"].GetString(), "unconfirmed");
    EXPECT_STREQ(variables[1]["write"]["reason"].GetString(), "reads back \"a\"");
    EXPECT_FALSE(variables[2].HasMember("write"));
}

TEST(SetAnswer, HasAFormInJsonAndInWords) {
    SetAnswer const taken{"AHU.T", Float(21.5f), ""};
    EXPECT_EQ(FormatJson(taken, 0), "{\"set\":\"AHU.T\",\"state\":\"pending\",\"value\":21.5}\n");
    EXPECT_EQ(AnswerText(taken, 0), "AHU.T = 21.5: pending");
    SetAnswer const mistake{"AHU.\xFF", {}, "\"x\" is wrong"};
    EXPECT_EQ(FormatJson(mistake, 0),
              "{\"set\":\"AHU.\xEF\xBF\xBD\",\"state\":\"invalid\",\"reason\":\"\\\"x\\\" is wrong\"}\n");
    EXPECT_EQ(AnswerText(mistake, 0), "\"x\" is wrong");
}

TEST_F(Format, JsonHasExactlyTheseFields) {
    block->variables.resize(1);
    EXPECT_EQ(
        FormatJson(*block),
        "{\"time\":\"2024-03-15T12:34:56.789+01:00\",\"block\":\"AHU\",\"cycle\":3,\"fault\":false,\"error\":"
        "\"\","
        "\"variables\":[{\"name\":\"Supply\",\"object\":\"analog-input 1\",\"property\":\"present-value\","
        "\"type\":\"DataValue(Float)\",\"value\":21.1,\"quality\":\"Good\",\"status\":\"0x00000000\","
        "\"time\":\"2024-03-15T12:34:56.789+01:00\"}],\"standby\":false,"
        "\"cycle_ms\":{\"last\":0,\"median\":0,\"maximum\":0},\"overruns\":0,\"causes\":[]}\n");
}

TEST_F(Format, UnitsAndStateTextsFollowTheValues) {
    Plant other;
    BlockSnapshot& one = other.AddBlock("B");
    other.AddVariable("V", DataValueOf(OpcUaType_Float), Float(21.5f)).unit = "eggs";
    VariableConfig& release = other.AddVariable("R", DataValueOf(OpcUaType_Boolean), Boolean(true));
    release.objectType = ObjectTypes().FindName("binary-value");
    release.stateTexts = {"blocked", "released"};
    release.description = "of the \"chiller\"";
    one.variables[0].write = {WriteStage::Pending, Float(22), ""};
    one.variables[1].write = {WriteStage::Written, Boolean(false), ""};
    std::string const lines = FormatLines(one);
    EXPECT_NE(lines.find("\t21.5 eggs\tDataValue(Float)\t"), std::string::npos) << lines;
    EXPECT_NE(lines.find("\t22 eggs pending\t"), std::string::npos) << lines;
    EXPECT_NE(lines.find("\ttrue (released)\t"), std::string::npos) << lines;
    EXPECT_NE(lines.find("\tfalse (blocked) written\t"), std::string::npos) << lines;
    std::string const json = FormatJson(one);
    EXPECT_NE(json.find("\"value\":21.5,\"unit\":\"eggs\",\"quality\""), std::string::npos) << json;
    EXPECT_NE(json.find("\"value\":true,\"stateText\":\"released\",\"description\":\"of the "
                        "\\\"chiller\\\"\",\"quality\""),
              std::string::npos)
        << json;
    EXPECT_NE(json.find("{\"state\":\"written\",\"value\":false,\"stateText\":\"blocked\"}"),
              std::string::npos)
        << json;
}

TEST_F(Format, TheAnswerToASetValueHasItsText) {
    Plant other;
    other.AddBlock("B");
    VariableConfig& release = other.AddVariable("R", DataValueOf(OpcUaType_Boolean), {});
    release.objectType = ObjectTypes().FindName("binary-value");
    release.stateTexts = {"blocked", "released"};
    SetAnswer const answer{"B.R", Boolean(true), "", &release};
    EXPECT_EQ(AnswerText(answer, 0), "B.R = true (released): pending");
    EXPECT_EQ(FormatJson(answer, 0),
              "{\"set\":\"B.R\",\"state\":\"pending\",\"value\":true,\"stateText\":\"released\"}\n");
}

TEST_F(Format, JsonCanBeParsed) {
    rapidjson::Document const document = Parsed();
    auto const& variables = document["variables"].GetArray();
    ASSERT_EQ(variables.Size(), 3u);
    EXPECT_STREQ(variables[1]["value"].GetString(), "a \"b\"\tc");
    EXPECT_STREQ(variables[1]["quality"].GetString(), "Sensor failure");
    EXPECT_STREQ(variables[1]["status"].GetString(), "0x808C0000");
    EXPECT_TRUE(variables[2]["value"].IsNull());
    EXPECT_TRUE(variables[2]["time"].IsNull());
    EXPECT_STREQ(variables[2]["quality"].GetString(), "No data");
}

TEST_F(Format, JsonHasTheFault) {
    block->fault = true;
    block->errorText = "No connection";
    rapidjson::Document const document = Parsed();
    EXPECT_TRUE(document["fault"].GetBool());
    EXPECT_STREQ(document["error"].GetString(), "No connection");
}

TEST_F(Format, JsonReportsABlockThatIsNotPolled) {
    block->isReported = false;
    rapidjson::Document const document = Parsed();
    EXPECT_TRUE(document["fault"].GetBool());
    EXPECT_STREQ(document["error"].GetString(), "not polled");
}

TEST_F(Format, ValuesOfEveryTypeHaveAJsonForm) {
    EXPECT_EQ(JsonValue(Boolean(true)), "true");
    EXPECT_EQ(JsonValue(As(OpcUaType_SByte, "-5")), "-5");
    EXPECT_EQ(JsonValue(As(OpcUaType_UInt64, "18446744073709551615")), "18446744073709551615");
    EXPECT_EQ(JsonValue(As(OpcUaType_Int64, "-9223372036854775808")), "-9223372036854775808");
    EXPECT_EQ(JsonValue(As(OpcUaType_Double, "1e300")), "1e+300");
    EXPECT_EQ(JsonValue(Float(0.1f)), "0.1");
    EXPECT_EQ(JsonValue(Float(std::stof("nan"))), "\"nan\"");
    EXPECT_EQ(JsonValue(Float(-std::stof("inf"))), "\"-inf\"");
    EXPECT_EQ(JsonValue(As(OpcUaType_Double, "INF")), "\"inf\"");
    EXPECT_EQ(JsonValue(Text("")), "\"\"");
    OpcUa_VariantHlp time;
    time.SetTime(Noon);
    EXPECT_EQ(JsonValue(time), "\"2024-03-15T12:34:56.789+01:00\"");
    OpcUa_VariantHlp octets;
    octets.SetByteString("\x0A\xFF", 2);
    EXPECT_EQ(JsonValue(octets), "\"0aff\"");
    OpcUa_VariantHlp inner = Float(3.5f);
    OpcUa_VariantHlp whole;
    whole.SetDataValue(inner, Noon, 0);
    EXPECT_EQ(JsonValue(whole), "3.5");
}

TEST_F(Format, JsonTextsAreUtf8WhateverADeviceSends) {
    EXPECT_EQ(JsonValue(Text("a\xFF\x1B")), "\"a\xEF\xBF\xBD\\u001B\"");
    std::mt19937 random(9);
    for (int i = 0; i < 10000; ++i) {
        std::string text(random() % 20, ' ');
        for (char& c : text) {
            c = static_cast<char>(random());
        }
        rapidjson::Document document;
        document.Parse<rapidjson::kParseValidateEncodingFlag>(JsonValue(Text(text)).c_str());
        EXPECT_FALSE(document.HasParseError());
    }
}

}  // namespace
