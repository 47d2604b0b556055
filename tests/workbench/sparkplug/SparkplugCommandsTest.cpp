#include "SparkplugCommands.h"

#include <rapidjson/document.h>

#include <random>

#include "SparkplugFixture.h"
#include "SparkplugValues.h"

using namespace test;
using namespace workbench;

namespace {

// Commands for a block with two variables that can be set, T (Float, alias 1) and N (Int32, alias 2), and R,
// which cannot.
class SparkplugCommandsTest : public SparkplugTest {
protected:
    static constexpr char Topic[] = "spBv1.0/plant/DCMD/north/AHU";

    void BeginRun() {
        Begin(Block(R"(Name="AHU", Address="192.168.1.20:47808")", Variable("T", "Float") + ", " +
                                                                       Variable("N", "Int32") + ", " +
                                                                       Variable("R", "Float", "")) +
              Block(R"(Name="Rooms", Address="192.168.1.21:47808")"));
        project.Runtime().SetCycleObserver([this](ScadaProtocol& protocol, unsigned long long cycle, bool) {
            for (std::size_t i = 0; i < cycles.size(); ++i) {
                if (project.Blocks()[i].protocol == &protocol) {
                    cycles[i] = TakeSnapshot(project.Blocks()[i], cycle, project.Runtime().Variables());
                    setter->AfterCycle(project.Blocks()[i], IsFault(cycles[i]));
                    setter->Show(cycles[i]);
                }
            }
            newest.clear();
        });
        RunCycle();
        Sent();
    }
    ~SparkplugCommandsTest() override { project.Runtime().SetCycleObserver({}); }

    // A device that keeps what is written.
    void OnCycle(FakeDriver& driver) override {
        if (driver.variables.size() == 3) {
            driver.Deliver(0, temperature);
            driver.Deliver(1, number);
            driver.Deliver(2, test::Float(1));
        } else {
            driver.Deliver(0, test::Float(1));
        }
        driver.Report(false, "");
        driver.WritePhase([this](std::size_t place, OpcUa_VariantHlp const& value) {
            (place == 0 ? temperature : number) = value;
        });
    }

    void RunCycle() {
        Wait(2);
        project.Runtime().RunOnce();
        Publish();
    }

    SparkplugMetric Metric(std::string const& name, std::optional<std::uint64_t> alias,
                           SparkplugValue value) {
        SparkplugMetric metric;
        metric.name = name;
        metric.alias = alias;
        metric.value = std::move(value);
        metric.timestamp = SparkplugTime(world.time);
        return metric;
    }

    static std::string Encoded(SparkplugMetric const& metric) {
        SparkplugPayload payload;
        payload.metrics = {metric};
        return EncodePayload(payload);
    }

    void Command(SparkplugMetric const& metric) { Receive(Topic, Encoded(metric)); }

    // The answers since the last call: "AHU.T pending 30", "AHU.T rejected null REASON".
    Names Answers() {
        Names texts;
        Sent();
        for (ReadPayload const& payload : taken) {
            for (ReadMetric const& metric : payload.metrics) {
                if (metric.Name() == SparkplugPublisher::AnswerName) {
                    texts.push_back(AnswerOf(metric.fields.Text(15)));
                }
            }
        }
        return texts;
    }

    static std::string AnswerOf(std::string const& json) {
        rapidjson::Document answer;
        answer.Parse(json.c_str());
        EXPECT_FALSE(answer.HasParseError()) << json;
        auto const& value = answer["value"];
        std::string const number = value.IsNumber() ? std::to_string(value.GetDouble()) : "null";
        std::string const reason = answer["reason"].IsString() ? answer["reason"].GetString() : "";
        return std::string(answer["block"].GetString()) + "." + answer["variable"].GetString() + " " +
               answer["state"].GetString() + " " + number + (reason.empty() ? "" : " " + reason);
    }

    OpcUa_VariantHlp temperature = test::Float(20);
    OpcUa_VariantHlp number = Number(1);
};

TEST_F(SparkplugCommandsTest, AreAnsweredAtOnceAndWhenTheyAreWritten) {
    BeginRun();
    Command(Metric("", 1, 30.5F));
    EXPECT_EQ(Answers(), Names{"AHU.T pending 30.500000"});
    RunCycle();
    RunCycle();
    RunCycle();
    EXPECT_EQ(Answers(), Names{"AHU.T written 30.500000"});
    EXPECT_EQ(Count("commands"), 1U);
    EXPECT_EQ(Count("commands refused"), 0U);
    RunCycle();
    EXPECT_EQ(Answers(), Names{});
}

TEST_F(SparkplugCommandsTest, ShowWhatTheDeviceHoldsAsData) {
    BeginRun();
    Command(Metric("T", 1, 30.5F));
    RunCycle();
    RunCycle();
    RunCycle();
    Names const names = Sent();
    EXPECT_NE(std::find(names.begin(), names.end(), "DDATA AHU"), names.end());
    EXPECT_EQ(taken.back().metrics.at(0).Alias(), 1U);
    EXPECT_EQ(taken.back().metrics.at(0).fields.Float(12), 30.5F);
}

TEST_F(SparkplugCommandsTest, MayHaveTheNameAndAnotherType) {
    BeginRun();
    Command(Metric("T", std::nullopt, std::string("30 ")));
    Command(Metric("N", std::nullopt, std::uint32_t{0xFFFFFFFB}));
    EXPECT_EQ(Answers(), (Names{"AHU.T pending 30.000000", "AHU.N pending -5.000000"}));
}

TEST_F(SparkplugCommandsTest, AreInvalidForAnotherValue) {
    BeginRun();
    SparkplugMetric null = Metric("T", std::nullopt, {});
    null.isNull = true;
    Command(null);
    EXPECT_EQ(Answers(),
              Names{"AHU.T invalid null the command has no value; send one of the type of the birth"});
    Command(Metric("N", std::nullopt, 1.5));
    EXPECT_EQ(Answers().at(0).find("AHU.N invalid null \"AHU.N\": \"1.5\" is not of type Int32"), 0U);
    Command(Metric("R", std::nullopt, 1.5F));
    EXPECT_EQ(Answers().at(0).find("AHU.R invalid null \"AHU.R\" is read-only"), 0U);
    EXPECT_EQ(Count("commands refused"), 3U);
}

TEST_F(SparkplugCommandsTest, AreRejectedWhenTheyAreOldOrRetainedOrTooMany) {
    BeginRun();
    SparkplugMetric const old = Metric("T", std::nullopt, 30.0F);
    Receive(Topic, Encoded(old), true);
    EXPECT_EQ(Answers(),
              Names{"AHU.T rejected null the command is retained; send it without the retain flag"});
    Wait(11);
    Command(old);
    EXPECT_EQ(Answers().at(0).find("AHU.T rejected null the command is 11 s old"), 0U);
    Command(Metric("T", std::nullopt, 30.0F));
    Command(Metric("T", std::nullopt, 31.0F));
    Names const answers = Answers();
    ASSERT_EQ(answers.size(), 2U);
    EXPECT_EQ(answers[0], "AHU.T pending 30.000000");
    EXPECT_EQ(answers[1].find("AHU.T rejected null a command for the variable came less than a second ago"),
              0U);
}

TEST_F(SparkplugCommandsTest, HaveTheTimeOfThePayloadWithoutOneOfTheirOwn) {
    BeginRun();
    SparkplugPayload payload;
    payload.timestamp = SparkplugTime(world.time) - 60000;
    payload.metrics = {Metric("T", std::nullopt, 30.0F)};
    payload.metrics[0].timestamp.reset();
    Receive(Topic, EncodePayload(payload));
    EXPECT_EQ(Answers().at(0).find("AHU.T rejected null the command is "), 0U);
    payload.timestamp = 0xFFFFFFFFFFFFFFFFU;
    Receive(Topic, EncodePayload(payload));
    EXPECT_EQ(Answers().at(0).find("AHU.T rejected null the command is "), 0U);
    payload.timestamp.reset();
    Receive(Topic, EncodePayload(payload));
    EXPECT_EQ(Answers(), Names{"AHU.T pending 30.000000"});
}

TEST_F(SparkplugCommandsTest, AreRejectedUnlessTheRunTakesThem) {
    settings.takesCommands = false;
    BeginRun();
    Command(Metric("T", std::nullopt, 30.0F));
    EXPECT_EQ(Answers().at(0).find("AHU.T rejected null this workbench takes no commands"), 0U);
    RunCycle();
    RunCycle();
    EXPECT_EQ(static_cast<OpcUa_Variant const&>(temperature), test::Float(20));
}

TEST_F(SparkplugCommandsTest, ForOtherMetricsAreInvalid) {
    BeginRun();
    Command(Metric("X", std::nullopt, 30.0F));
    Command(Metric("", 4, 30.0F));
    Command(Metric("N", 1, 30.0F));
    std::string const reason =
        " invalid null the block has no such metric; use the names or aliases of its latest birth";
    EXPECT_EQ(Answers(), (Names{"AHU.X" + reason, "AHU.4" + reason, "AHU.N" + reason}));
    EXPECT_EQ(Count("commands"), 3U);
    EXPECT_EQ(Count("commands refused"), 3U);
    Receive("spBv1.0/plant/DCMD/north/Boiler", Encoded(Metric("T", std::nullopt, 30.0F)));
    Receive("dorvel/north/AHU/T/set", "30");
    EXPECT_EQ(Count("commands refused"), 5U);
    EXPECT_EQ(Sent(), Names{});
}

TEST_F(SparkplugCommandsTest, AreNothingUntilTheirLastOctet) {
    BeginRun();
    SparkplugPayload payload;
    payload.timestamp = SparkplugTime(world.time);
    payload.metrics = {Metric("T", 1, 30.0F)};
    payload.metrics[0].type = SparkplugType::Float;
    std::string const whole = EncodePayload(payload);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        Receive(Topic, whole.substr(0, length));
    }
    EXPECT_EQ(Sent(), Names{});
    // The time alone, at its end, and no octets are payloads without a metric.
    EXPECT_EQ(Count("commands refused"), whole.size() - 2);
    Receive(Topic, whole);
    EXPECT_EQ(Answers(), Names{"AHU.T pending 30.000000"});
}

TEST_F(SparkplugCommandsTest, AreRefusedWhenTheyAreTooLong) {
    BeginRun();
    Receive(Topic, Encoded(Metric("T", std::nullopt, std::string(LongestCommand, '1'))));
    EXPECT_EQ(Count("commands refused"), 1U);
    EXPECT_EQ(Sent(), Names{});
    Command(Metric(std::string(60000, 'x'), std::nullopt, 30.0F));
    Sent();
    EXPECT_LT(messages.back().payload.size(), 1000U);
}

TEST_F(SparkplugCommandsTest, HaveBoundedAnswersWhileThereIsNoRoom) {
    BeginRun();
    broker.room = 0;
    for (int i = 0; i < 1000; ++i) {
        Command(Metric("T", std::nullopt, 30.0F));
    }
    broker.room = 100000;
    Publish();
    EXPECT_EQ(Answers().size(), SparkplugCommands::MostAnswers);
    EXPECT_EQ(Count("answers dropped"), 1000U - SparkplugCommands::MostAnswers);
}

TEST_F(SparkplugCommandsTest, AreAnsweredAtTheEndOfTheRun) {
    BeginRun();
    Command(Metric("T", std::nullopt, 30.0F));
    Answers();
    publisher->End(world.time, broker);
    EXPECT_EQ(Sent(), (Names{"NDATA", "NDEATH"}));
    EXPECT_EQ(AnswerOf(taken[0].metrics[0].fields.Text(15)).find("AHU.T unconfirmed"), 0U);
}

TEST_F(SparkplugCommandsTest, WithAnyOctetsDisturbNothing) {
    BeginRun();
    std::mt19937 random(19);
    std::string const good = Encoded(Metric("T", 1, 30.0F));
    char const* const topics[] = {Topic, "spBv1.0/plant/NCMD/north", "spBv1.0/plant/DCMD/north/Rooms", ""};
    for (int i = 0; i < 5000; ++i) {
        std::string octets = good;
        for (unsigned changes = random() % 5; changes > 0; --changes) {
            octets[random() % octets.size()] = static_cast<char>(random());
        }
        octets.resize(random() % (octets.size() + 3), static_cast<char>(random()));
        Receive(topics[random() % 4], octets, random() % 8 == 0);
    }
    RunCycle();
    RunCycle();
    Sent();
    cycles[0].variables[0].state.Value = test::Float(-77);
    newest.clear();
    Publish();
    ASSERT_EQ(Sent(), Names{"DDATA AHU"});
    EXPECT_EQ(taken[0].metrics.at(0).fields.Float(12), -77.0F);
}

}  // namespace
