#include "JsonPublisher.h"

#include "PublishFixture.h"

using namespace test;
using namespace workbench;

namespace {

using Topics = std::vector<std::string>;

class JsonPublisherTest : public PublishTest {
protected:
    std::string Payload(std::string const& topic) const {
        auto const found = broker.retained.find("dorvel/pc-plant/" + topic);
        return found == broker.retained.end() ? "none" : found->second;
    }
};

TEST_F(JsonPublisherTest, SendsTheProcessTheBlocksAndTheirVariables) {
    Connect();
    Run();
    EXPECT_EQ(
        Payload("$state"),
        R"({"online":true,"version":"1.2.3","project":"plant.lua","time":"2024-03-15T12:34:56.789+01:00"})");
    EXPECT_EQ(Payload("AHU/$state"),
              R"({"state":"ok","reason":null,"time":"2024-03-15T12:34:57.789+01:00"})");
    EXPECT_EQ(
        Payload("AHU/T"),
        R"({"value":21.5,"unit":"degrees-celsius","quality":"good","suspect":null,)"
        R"("time":"2024-03-15T12:34:57.789+01:00","object":"analog-value 1","property":"present-value"})");
    EXPECT_EQ(Payload("AHU/Mode"),
              R"({"value":2,"unit":null,"stateText":"on","quality":"good","suspect":null,)"
              R"("time":"2024-03-15T12:34:57.789+01:00","object":"multi-state-value 2",)"
              R"("property":"present-value"})");
    EXPECT_EQ(
        Payload("AHU/Na%2Fme"),
        R"({"value":"supply air","unit":null,"quality":"good","suspect":null,)"
        R"("time":"2024-03-15T12:34:57.789+01:00","object":"analog-value 3","property":"description"})");
    EXPECT_EQ(broker.retained.size(), 7U);
    for (Message const& message : broker.sent) {
        EXPECT_TRUE(message.isRetained);
        EXPECT_EQ(message.qos, 1);
    }
    EXPECT_EQ(broker.Topics(),
              (Topics{"dorvel/pc-plant/$state", "dorvel/pc-plant/AHU/$state", "dorvel/pc-plant/Room 1/$state",
                      "dorvel/pc-plant/AHU/T", "dorvel/pc-plant/AHU/Mode", "dorvel/pc-plant/AHU/Na%2Fme",
                      "dorvel/pc-plant/Room 1/T"}));
}

TEST_F(JsonPublisherTest, SendsThenWhatChanges) {
    Settle();
    Run(3);
    EXPECT_TRUE(broker.sent.empty());
    temperature = 22;
    Run();
    EXPECT_EQ(broker.Topics(), Topics{"dorvel/pc-plant/AHU/T"});
    quality = 0x40000000U;
    Run();
    EXPECT_EQ(broker.Topics(), Topics{"dorvel/pc-plant/Room 1/T"});
    EXPECT_EQ(Payload("Room 1/T"),
              R"({"value":20,"unit":null,"quality":"uncertain","qualityText":"Uncertain","suspect":null,)"
              R"("time":"2024-03-15T12:35:02.789+01:00","object":"analog-input 1",)"
              R"("property":"present-value"})");
}

TEST_F(JsonPublisherTest, SaysThatNothingIsKnownBeforeTheFirstCycle) {
    Connect();
    Publish();
    EXPECT_EQ(Payload("AHU/$state"),
              R"({"state":"waiting","reason":null,"time":"2024-03-15T12:34:56.789+01:00"})");
    EXPECT_EQ(broker.retained.size(), 3U);
}

TEST_F(JsonPublisherTest, SendsFaultsStandbyAndSuspects) {
    Settle();
    isSilent = true;
    Run();
    EXPECT_EQ(Payload("AHU/$state"),
              R"({"state":"fault","reason":"No connection","time":"2024-03-15T12:34:58.789+01:00"})");
    EXPECT_NE(
        Payload("AHU/T").find(
            R"("value":21.5,"unit":"degrees-celsius","quality":"bad","qualityText":"the block is in fault")"),
        std::string::npos)
        << Payload("AHU/T");
    isSilent = false;
    isStandby = true;
    Run();
    EXPECT_NE(Payload("AHU/$state").find(R"({"state":"standby","reason":null)"), std::string::npos);
    EXPECT_NE(Payload("AHU/T").find(R"("quality":"uncertain","qualityText":"the block is on standby")"),
              std::string::npos);
    isStandby = false;
    suspect = "device: unknown-object";
    Run();
    EXPECT_EQ(Payload("AHU/$state"),
              R"({"state":"ok","reason":null,"suspect":1,"time":"2024-03-15T12:35:00.789+01:00"})");
    EXPECT_NE(Payload("AHU/T").find(R"("quality":"good","suspect":"device: unknown-object")"),
              std::string::npos);
}

TEST_F(JsonPublisherTest, SendsValuesThatAreNotNumbersOrNotUtf8) {
    temperature = std::numeric_limits<float>::quiet_NaN();
    label = std::string("a\0\"\x7F\xFF", 5);
    Settle();
    EXPECT_EQ(Payload("AHU/T").substr(0, 15), R"({"value":"nan",)");
    EXPECT_EQ(Payload("AHU/Na%2Fme").substr(0, 29), "{\"value\":\"a\\u0000\\\"\\u007f\xEF\xBF\xBD\"");
    label = std::string(64 << 10, 'x');
    Run();
    EXPECT_GT(Payload("AHU/Na%2Fme").size(), std::size_t{64} << 10);
}

TEST_F(JsonPublisherTest, HasADeadBandAndAnInterval) {
    settings.deadBand = 1;
    settings.interval = 3 * Second;
    Make();
    Settle();
    temperature = 22.5F;
    Run(2);
    EXPECT_TRUE(broker.sent.empty()) << "within the dead band and the interval";
    temperature = 23;
    Run();
    EXPECT_EQ(broker.Topics(), Topics{"dorvel/pc-plant/AHU/T"});
    temperature = 25;
    Run(2);
    EXPECT_TRUE(broker.sent.empty()) << "within the interval";
    Run();
    EXPECT_EQ(broker.Topics(), Topics{"dorvel/pc-plant/AHU/T"});
    EXPECT_EQ(Payload("AHU/T").substr(0, 11), R"({"value":25)");
}

TEST_F(JsonPublisherTest, KeepsTheNewestValuesWhileThereIsNoRoom) {
    Settle();
    broker.room = 0;
    for (int i = 0; i < 100; ++i) {
        temperature += 1;
        Run();
    }
    EXPECT_TRUE(broker.sent.empty());
    broker.room = 1;
    Publish();
    EXPECT_EQ(broker.Topics(), Topics{"dorvel/pc-plant/AHU/T"});
    EXPECT_EQ(Payload("AHU/T").substr(0, 15), R"({"value":121.5,)");
}

TEST_F(JsonPublisherTest, SendsEverythingAgainAfterAConnection) {
    Settle();
    publisher->Disconnected();
    temperature = 30;
    Run();
    EXPECT_TRUE(broker.sent.empty());
    broker.retained.clear();
    Connect();
    Publish();
    EXPECT_EQ(broker.retained.size(), 7U);
    EXPECT_EQ(Payload("AHU/T").substr(0, 11), R"({"value":30)");
}

TEST_F(JsonPublisherTest, HasAWillAndSaysGoodbye) {
    Message const will = publisher->Will(world.time);
    EXPECT_EQ(will.topic, "dorvel/pc-plant/$state");
    EXPECT_EQ(will.payload, R"({"online":false,"time":null})");
    EXPECT_EQ(will.qos, 1);
    EXPECT_TRUE(will.isRetained);
    Settle();
    publisher->End(world.time, broker);
    EXPECT_EQ(Payload("AHU/$state"),
              R"({"state":"offline","reason":"the run has ended","time":"2024-03-15T12:34:57.789+01:00"})");
    EXPECT_EQ(Payload("$state"), R"({"online":false,"time":"2024-03-15T12:34:57.789+01:00"})");
    EXPECT_EQ(broker.Topics().back(), "dorvel/pc-plant/$state");
    Run();
    EXPECT_TRUE(broker.sent.empty());
}

TEST_F(JsonPublisherTest, SubscribesToCommandsOnlyIfItTakesThem) {
    EXPECT_EQ(publisher->Subscriptions(), Topics{"dorvel/pc-plant/+/+/set"});
    settings.takesCommands = false;
    Make();
    EXPECT_TRUE(publisher->Subscriptions().empty());
}

TEST_F(JsonPublisherTest, HasTheNodeInItsTopicsUnlessThereIsAPrefix) {
    settings.prefix = "";
    settings.node = "pc/1";
    Make();
    EXPECT_EQ(publisher->Will(world.time).topic, "dorvel/pc%2F1/$state");
}

TEST_F(JsonPublisherTest, RefusesAPrefixThatBrokersDoNotTake) {
    settings.prefix = "plant/#";
    EXPECT_THROW(Make(), ProjectError);
}

// Whatever the connection does, a broker that can be reached at the end has what the run has.
TEST_F(JsonPublisherTest, LosesNoNewestValueWhateverTheConnectionDoes) {
    unsigned seed = 16;
    auto const below = [&](unsigned bound) { return (seed = seed * 1664525 + 1013904223) / 65536 % bound; };
    settings.interval = 2 * Second;
    Make();
    Connect();
    for (int round = 0; round < 3000; ++round) {
        temperature = static_cast<float>(below(5));
        label = std::to_string(below(3));
        isSilent = below(10) == 0;
        broker.room = below(4);
        if (below(20) == 0) {
            publisher->Disconnected();
            broker.retained.clear();
            broker.room = 1 + below(4);
            Connect();
        }
        Run();
        broker.sent.clear();
        if (round % 50 == 0) {
            broker.room = 1000;
            isSilent = false;
            Run(4);
            FakeBroker fresh;
            auto const known = broker.retained;
            JsonPublisher other(settings,
                                OutletParts{"plants/plant.lua",
                                            "1.2.3",
                                            project.Blocks(),
                                            project.Tasks(),
                                            *memory,
                                            *setter,
                                            log,
                                            {}},
                                status);
            other.Connected(world.time, fresh);
            other.Publish(memory->board.All(), world.time, fresh);
            for (auto const& [topic, payload] : fresh.retained) {
                if (topic != "dorvel/pc-plant/$state") {
                    ASSERT_EQ(known.count(topic), 1U) << topic;
                    ASSERT_EQ(known.at(topic).substr(0, known.at(topic).find("\"time\"")),
                              payload.substr(0, payload.find("\"time\"")))
                        << topic << " in round " << round;
                }
            }
        }
    }
}

}  // namespace
