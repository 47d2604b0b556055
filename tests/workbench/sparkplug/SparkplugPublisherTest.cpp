#include "SparkplugPublisher.h"

#include "Hex.h"
#include "SparkplugFixture.h"

using namespace test;
using namespace workbench;

namespace {

using Births = SparkplugTest;
using Data = SparkplugTest;
using Deaths = SparkplugTest;
using Rebirths = SparkplugTest;

int BirthNumber(ReadPayload const& payload) {
    return static_cast<int>(payload.Metric("bdSeq").fields.Number(11));
}

// 21 January 2024, 08:40 UTC as milliseconds since 1970.
constexpr std::uint64_t StartTime = 1705826400000ULL;

std::string RebirthPayload() {
    SparkplugMetric metric;
    metric.name = "Node Control/Rebirth";
    metric.type = SparkplugType::Boolean;
    metric.value = true;
    SparkplugPayload payload;
    payload.metrics = {metric};
    return EncodePayload(payload);
}

TEST_F(Births, AreThoseOfTheNodeAndThenOfEachDevice) {
    Load(TwoBlocks());
    RunAll();
    Connect();
    Publish();
    EXPECT_EQ(Sent(), (Names{"NBIRTH", "DBIRTH AHU", "DBIRTH Rooms"}));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(taken[i].Seq(), i);
        EXPECT_EQ(taken[i].Time(), StartTime);
        EXPECT_EQ(messages[i].qos, 0);
        EXPECT_FALSE(messages[i].isRetained);
    }
}

TEST_F(Births, OfANodeHaveItsFacts) {
    Begin(TwoBlocks());
    ReadPayload const node(messages.front().payload);
    ASSERT_EQ(node.metrics.size(), 5U);
    EXPECT_EQ(node.Metric("bdSeq").Type(), 4U);
    EXPECT_EQ(node.Metric("Node Control/Rebirth").Type(), 11U);
    EXPECT_EQ(node.Metric("Node Control/Rebirth").fields.Number(14), 0U);
    EXPECT_EQ(node.Metric("Properties/Project").fields.Text(15), "plant.lua");
    EXPECT_EQ(node.Metric("Properties/Version").fields.Text(15), "1.2.3");
    EXPECT_TRUE(node.Metric("Commands/Answer").IsNull());
    for (ReadMetric const& metric : node.metrics) {
        EXPECT_FALSE(metric.fields.Has(2)) << metric.Name();
        EXPECT_EQ(metric.Time(), StartTime);
    }
}

TEST_F(Births, OfADeviceHaveNamesAliasesTypesAndValues) {
    Load(TwoBlocks());
    RunAll();
    SetValue(0, 0, Float(21.5F));
    SetValue(0, 1, Number(-5));
    Connect();
    Publish();
    Sent();
    ASSERT_EQ(taken[1].metrics.size(), 2U);
    ReadMetric const& temperature = taken[1].Metric("T");
    EXPECT_EQ(temperature.Alias(), 1U);
    EXPECT_EQ(temperature.Type(), 9U);
    EXPECT_EQ(temperature.Time(), StartTime);
    EXPECT_EQ(temperature.fields.Float(12), 21.5F);
    EXPECT_EQ(temperature.Quality(), 192);
    EXPECT_EQ(taken[1].Metric("N").Alias(), 2U);
    EXPECT_EQ(taken[1].Metric("N").fields.Number(10), 0xFFFFFFFBU);
    EXPECT_EQ(taken[2].Metric("T").Alias(), 3U);
}

TEST_F(Births, WaitForTheFirstCycleOfABlock) {
    Load(TwoBlocks());
    Connect();
    Publish();
    EXPECT_EQ(Sent(), Names{"NBIRTH"});
    Finish(1);
    Publish();
    EXPECT_EQ(Sent(), Names{"DBIRTH Rooms"});
    EXPECT_TRUE(taken[0].Metric("T").IsNull());
    EXPECT_FALSE(taken[0].Metric("T").HasValue());
    EXPECT_EQ(taken[0].Metric("T").Quality(), 0);
    EXPECT_EQ(taken[0].Metric("T").Property("status"), "No data");
}

TEST_F(Births, HaveTheNumberOfTheWillWhichRisesWithEachConnection) {
    Load(TwoBlocks());
    RunAll();
    int last = static_cast<int>(Start / Second % 256) - 1;
    for (int i = 0; i < 600; ++i) {
        Message const will = Connect();
        Publish();
        Sent();
        int const number = BirthNumber(taken[0]);
        EXPECT_EQ(number, (last + 1) % 256);
        EXPECT_EQ(BirthNumber(ReadPayload(will.payload)), number);
        EXPECT_EQ(taken[0].Seq(), 0);
        last = number;
        publisher->Disconnected();
    }
}

TEST_F(Births, HaveAWillWithoutASequenceNumber) {
    Load(TwoBlocks());
    world.time = 116444736000000000LL + 1000 * Second + 5 * Second;
    Message const will = publisher->Will(world.time);
    EXPECT_EQ(will.topic, "spBv1.0/plant/NDEATH/north");
    EXPECT_EQ(will.qos, 1);
    EXPECT_FALSE(will.isRetained);
    // 1,005,000 ms are C8 AB 3D; the seconds of the file time modulo 256 are 237, the octets ED 01.
    EXPECT_EQ(ToHex({will.payload.begin(), will.payload.end()}),
              "08 C8 AB 3D 12 10 0A 05 62 64 53 65 71 18 C8 AB 3D 20 04 58 ED 01");
}

TEST_F(Births, WaitForRoom) {
    Load(TwoBlocks());
    RunAll();
    broker.room = 0;
    Connect();
    Publish();
    EXPECT_EQ(Sent(), Names{});
    broker.room = 2;
    Publish();
    EXPECT_EQ(Sent(), (Names{"NBIRTH", "DBIRTH AHU"}));
    SetValue(1, 0, Number(5));
    Publish();
    EXPECT_EQ(Sent(), Names{"DBIRTH Rooms"});
    EXPECT_EQ(taken[0].Seq(), 2);
    EXPECT_EQ(taken[0].Metric("T").fields.Float(12), 5.0F);
    Publish();
    EXPECT_EQ(Sent(), Names{});
}

TEST_F(Data, HaveWhatHasChangedByAlias) {
    Begin(TwoBlocks());
    Wait(1);
    SetValue(0, 1, Number(7));
    Publish();
    EXPECT_EQ(Sent(), Names{"DDATA AHU"});
    // Payload: time, a metric of alias 2, time, Int32 and 7, and the sequence number 3.
    EXPECT_EQ(ToHex({messages.back().payload.begin(), messages.back().payload.end()}),
              "08 E8 F5 B4 D9 D2 31 12 0D 10 02 18 E8 F5 B4 D9 D2 31 20 03 50 07 18 03");
    Publish();
    EXPECT_EQ(Sent(), Names{});
}

TEST_F(Data, HaveSequenceNumbersOverAllDevicesThatBeginAgainAfter255) {
    Begin(TwoBlocks());
    int expected = 3;
    for (int i = 0; i < 300; ++i) {
        SetValue(0, 0, Number(i + 2));
        SetValue(1, 0, Number(i + 2));
        Publish();
        ASSERT_EQ(Sent(), (Names{"DDATA AHU", "DDATA Rooms"}));
        for (ReadPayload const& payload : taken) {
            ASSERT_EQ(payload.Seq(), expected);
            expected = (expected + 1) % 256;
        }
    }
}

TEST_F(Data, StateTheQualityUnlessItStaysGood) {
    Begin(TwoBlocks());
    SetValue(0, 0, Number(2));
    Publish();
    Sent();
    EXPECT_EQ(taken.at(0).metrics.at(0).Quality(), -1);
    SetValue(0, 0, Number(2), OpcUa_Bad);
    Publish();
    Sent();
    EXPECT_EQ(taken.at(0).metrics.at(0).Quality(), 0);
    EXPECT_EQ(taken.at(0).metrics.at(0).Property("status"), "Bad");
    EXPECT_EQ(taken.at(0).metrics.at(0).fields.Float(12), 2.0F);
    SetValue(0, 0, Number(3), OpcUa_Bad);
    Publish();
    Sent();
    EXPECT_EQ(taken.at(0).metrics.at(0).Quality(), 0);
    SetValue(0, 0, Number(3));
    Publish();
    Sent();
    EXPECT_EQ(taken.at(0).metrics.at(0).Quality(), 192);
    EXPECT_EQ(taken.at(0).metrics.at(0).Property("status"), "Good");
    SetValue(0, 0, Number(4));
    Publish();
    Sent();
    EXPECT_EQ(taken.at(0).metrics.at(0).Quality(), -1);
}

TEST_F(Data, OfASuspectValueAreBad) {
    Begin(TwoBlocks());
    cycles[0].variables[0].suspect = "device: unknown-object";
    Finish(0);
    Publish();
    Sent();
    EXPECT_EQ(taken.at(0).metrics.at(0).Quality(), 0);
    EXPECT_EQ(taken.at(0).metrics.at(0).Property("status"), "suspect: device: unknown-object");
    EXPECT_EQ(taken.at(0).metrics.at(0).fields.Float(12), 1.0F);
}

TEST_F(Data, OfAValueThatIsGoneAreNull) {
    Begin(TwoBlocks());
    SetValue(0, 0, {}, OpcUa_BadNoData);
    Publish();
    Sent();
    EXPECT_TRUE(taken.at(0).metrics.at(0).IsNull());
    EXPECT_FALSE(taken.at(0).metrics.at(0).HasValue());
    EXPECT_EQ(taken.at(0).metrics.at(0).Quality(), 0);
}

TEST_F(Data, AreTheNewestAfterABrokerWithoutRoom) {
    Begin(TwoBlocks());
    broker.room = 0;
    for (int i = 0; i < 100; ++i) {
        SetValue(0, 0, Number(i + 10));
        Publish();
    }
    broker.room = 100;
    Publish();
    ASSERT_EQ(Sent(), Names{"DDATA AHU"});
    ASSERT_EQ(taken[0].metrics.size(), 1U);
    EXPECT_EQ(taken[0].metrics[0].fields.Float(12), 109.0F);
    EXPECT_EQ(taken[0].Seq(), 3);
}

TEST_F(Data, OfBlocksInTurnHaveOneMessageEachForOneRoom) {
    Begin(TwoBlocks());
    broker.room = 1;
    SetValue(0, 0, Number(5));
    SetValue(1, 0, Number(6));
    Publish();
    EXPECT_EQ(Sent(), Names{"DDATA AHU"});
    SetValue(1, 0, Number(7));
    Publish();
    EXPECT_EQ(Sent(), Names{"DDATA Rooms"});
    EXPECT_EQ(taken[0].metrics.at(0).fields.Float(12), 7.0F);
}

TEST_F(Data, AreBoundedByDeadBandAndInterval) {
    settings.deadBand = 0.5;
    settings.interval = 10 * Second;
    Begin(TwoBlocks());
    Wait(20);
    SetValue(0, 0, Float(1.25F));
    Publish();
    EXPECT_EQ(Sent(), Names{});
    SetValue(0, 0, Float(2));
    Publish();
    EXPECT_EQ(Sent(), Names{"DDATA AHU"});
    SetValue(0, 0, Float(3));
    Publish();
    EXPECT_EQ(Sent(), Names{});
    Wait(10);
    Publish();
    EXPECT_EQ(Sent(), Names{"DDATA AHU"});
}

TEST_F(Deaths, FollowAFaultAndEndWithABirth) {
    Begin(TwoBlocks());
    Wait(60);
    SetFault(0, true);
    SetValue(0, 0, Number(1), OpcUa_Bad);
    Publish();
    EXPECT_EQ(Sent(), Names{"DDEATH AHU"});
    EXPECT_EQ(taken[0].Seq(), 3);
    EXPECT_TRUE(taken[0].metrics.empty());
    SetValue(0, 0, Number(2), OpcUa_Bad);
    Publish();
    EXPECT_EQ(Sent(), Names{});
    SetFault(0, false);
    SetValue(0, 0, Number(3));
    Publish();
    EXPECT_EQ(Sent(), Names{"DBIRTH AHU"});
    EXPECT_EQ(taken[0].Metric("T").fields.Float(12), 3.0F);
    EXPECT_EQ(taken[0].Seq(), 4);
    SetValue(0, 0, Number(4));
    Publish();
    EXPECT_EQ(Sent(), Names{"DDATA AHU"});
}

TEST_F(Deaths, OfABlockThatComesAndGoesHaveFewBirths) {
    Begin(TwoBlocks());
    std::size_t births = 0;
    for (int i = 0; i < 60; ++i) {
        Wait(1);
        SetFault(0, i % 2 == 0);
        Publish();
        for (std::string const& name : Sent()) {
            births += name == "DBIRTH AHU" ? 1 : 0;
        }
    }
    EXPECT_GE(births, 9U);
    EXPECT_LE(births, 12U);
}

TEST_F(Deaths, FollowStandby) {
    Begin(TwoBlocks());
    Wait(60);
    cycles[1].isStandby = true;
    Finish(1);
    Publish();
    EXPECT_EQ(Sent(), Names{"DDEATH Rooms"});
    cycles[1].isStandby = false;
    Finish(1);
    Publish();
    EXPECT_EQ(Sent(), Names{"DBIRTH Rooms"});
}

TEST_F(Deaths, OfTheNodeEndTheRun) {
    Load(TwoBlocks());
    RunAll();
    Message const will = Connect();
    Publish();
    Sent();
    publisher->End(world.time, broker);
    EXPECT_EQ(Sent(), Names{"NDEATH"});
    EXPECT_EQ(messages.back().qos, 1);
    EXPECT_EQ(taken[0].Seq(), -1);
    EXPECT_EQ(BirthNumber(taken[0]), BirthNumber(ReadPayload(will.payload)));
    publisher->End(world.time, broker);
    EXPECT_EQ(Sent(), Names{});
}

TEST_F(Deaths, OfTheConnectionStopAllMessages) {
    Begin(TwoBlocks());
    publisher->Disconnected();
    SetValue(0, 0, Number(9));
    Publish();
    Receive("spBv1.0/plant/NCMD/north", RebirthPayload());
    publisher->End(world.time, broker);
    EXPECT_EQ(Sent(), Names{});
}

TEST_F(Rebirths, AreAllBirthsWithTheNumberOfTheWill) {
    Begin(TwoBlocks());
    int const number = BirthNumber(ReadPayload(messages.front().payload));
    SetValue(0, 0, Number(9));
    Receive("spBv1.0/plant/NCMD/north", RebirthPayload());
    Publish();
    EXPECT_EQ(Sent(), (Names{"NBIRTH", "DBIRTH AHU", "DBIRTH Rooms"}));
    EXPECT_EQ(BirthNumber(taken[0]), number);
    EXPECT_EQ(taken[0].Seq(), 0);
    EXPECT_EQ(taken[2].Seq(), 2);
    EXPECT_EQ(taken[1].Metric("T").fields.Float(12), 9.0F);
    EXPECT_EQ(Count("rebirths"), 1U);
}

// With a time and a type, as the JavaScript library of the format writes it.
TEST_F(Rebirths, FollowARequestOfAHost) {
    Begin(TwoBlocks());
    Octets const request = Hex(
        "08 80 EE B4 D9 D2 31 12 1A 0A 14 4E 6F 64 65 20 43 6F 6E 74 72 6F 6C 2F 52 65 62 69 72 74 68 20 0B "
        "70 01");
    Receive("spBv1.0/plant/NCMD/north", {request.begin(), request.end()});
    Publish();
    EXPECT_EQ(Sent(), (Names{"NBIRTH", "DBIRTH AHU", "DBIRTH Rooms"}));
}

TEST_F(Rebirths, OfManyRequestsAreOneInFiveSeconds) {
    Begin(TwoBlocks());
    std::size_t births = 0;
    for (int i = 0; i < 600; ++i) {
        world.time += Second / 10;
        for (int j = 0; j < 10; ++j) {
            Receive("spBv1.0/plant/NCMD/north", RebirthPayload());
        }
        Publish();
        for (std::string const& name : Sent()) {
            births += name == "NBIRTH" ? 1 : 0;
        }
    }
    EXPECT_EQ(births, 12U);
    Wait(5);
    Publish();
    EXPECT_EQ(Sent().size(), 3U);
    Wait(5);
    Publish();
    EXPECT_EQ(Sent(), Names{});
}

TEST_F(Rebirths, NeedACommandThatAsksForThem) {
    Begin(TwoBlocks());
    std::string const topic = "spBv1.0/plant/NCMD/north";
    Receive(topic, RebirthPayload(), true);
    Receive(topic, "\xFF");
    Receive(topic, "");
    Receive("spBv1.0/plant/NCMD/south", RebirthPayload());
    SparkplugPayload payload;
    payload.metrics.resize(2);
    payload.metrics[0].name = "Node Control/Rebirth";
    payload.metrics[0].value = false;
    payload.metrics[1].name = "Node Control/Reboot";
    payload.metrics[1].value = true;
    Receive(topic, EncodePayload(payload));
    Publish();
    EXPECT_EQ(Sent(), Names{});
    EXPECT_EQ(Count("commands refused"), 5U);
}

TEST_F(Births, AreAskedForOnTheTopicsOfCommands) {
    Load(TwoBlocks());
    EXPECT_EQ(publisher->Subscriptions(), (Names{"spBv1.0/plant/NCMD/north", "spBv1.0/plant/DCMD/north/+"}));
}

}  // namespace
