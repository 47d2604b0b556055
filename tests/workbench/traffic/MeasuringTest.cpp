#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "FakeEnvironment.h"
#include "MeasuringEnvironment.h"

using namespace test;
using namespace workbench;

namespace {

TEST(RoundTrips, AreZeroWithoutAnyAnswer) {
    RoundTrips const trips;
    EXPECT_EQ(trips.Count(), 0u);
    EXPECT_EQ(trips.Median(), 0);
    EXPECT_EQ(trips.Maximum(), 0);
}

TEST(RoundTrips, HaveAMedianOfOddAndEvenCounts) {
    RoundTrips trips;
    trips.Add(30);
    EXPECT_EQ(trips.Median(), 30);
    trips.Add(10);
    EXPECT_EQ(trips.Median(), 20);
    trips.Add(11);
    EXPECT_EQ(trips.Median(), 11);
    EXPECT_EQ(trips.Maximum(), 30);
}

TEST(RoundTrips, TheMedianIsThatOfTheLatest4096) {
    RoundTrips trips;
    trips.Add(1000000);
    for (int i = 0; i < 4096; ++i) {
        trips.Add(5);
    }
    EXPECT_EQ(trips.Median(), 5);
    EXPECT_EQ(trips.Maximum(), 1000000);
    EXPECT_EQ(trips.Count(), 4097u);
}

TEST(RoundTrips, AgreeWithASortedList) {
    std::mt19937 random(8);
    RoundTrips trips;
    std::vector<long long> all;
    for (int i = 0; i < 1001; ++i) {
        all.push_back(random() % 100000);
        trips.Add(all.back());
    }
    std::sort(all.begin(), all.end());
    EXPECT_EQ(trips.Median(), all[500]);
    EXPECT_EQ(trips.Maximum(), all[1000]);
}

class Measuring : public testing::Test {
protected:
    void Send(int handle) { environment.Send(handle, device, "ab", 2); }
    int Receive(int handle) {
        sockaddr_in sender{};
        char buffer[10];
        return environment.Receive(handle, sender, buffer, sizeof buffer, 100);
    }

    sockaddr_in const device = Address("10.0.0.2", 47808);
    FakeEnvironment world;
    MeasuringEnvironment environment{world};
};

TEST_F(Measuring, ARoundTripIsFromRequestToAnswer) {
    Send(1);
    world.time += 70;
    world.Arrives(device, "x");
    EXPECT_EQ(Receive(1), 1);
    TrafficFigures const figures = environment.Figures();
    EXPECT_EQ(figures.requests, 1u);
    EXPECT_EQ(figures.answers, 1u);
    EXPECT_EQ(figures.trips.Count(), 1u);
    EXPECT_EQ(figures.trips.Median(), 70);
}

TEST_F(Measuring, ARequestSentAgainCountsFromItsLastTime) {
    Send(1);
    world.time += 1000;
    EXPECT_EQ(Receive(1), -1);
    Send(1);
    world.time += 5;
    world.Arrives(device, "x");
    Receive(1);
    EXPECT_EQ(environment.Figures().requests, 2u);
    EXPECT_EQ(environment.Figures().trips.Maximum(), 5);
}

TEST_F(Measuring, ASecondDatagramIsAnAnswerButNotARoundTrip) {
    Send(1);
    world.Arrives(device, "x");
    world.Arrives(device, "y");
    Receive(1);
    Receive(1);
    EXPECT_EQ(environment.Figures().answers, 2u);
    EXPECT_EQ(environment.Figures().trips.Count(), 1u);
}

TEST_F(Measuring, AnAnswerAfterTheWaitIsNotARoundTrip) {
    Send(1);
    EXPECT_EQ(Receive(1), -1);
    world.Arrives(device, "x");
    EXPECT_EQ(Receive(1), 1);
    EXPECT_EQ(environment.Figures().answers, 1u);
    EXPECT_EQ(environment.Figures().trips.Count(), 0u);
}

TEST_F(Measuring, SocketsAreMeasuredSeparately) {
    Send(1);
    world.time += 10;
    Send(2);
    world.time += 1;
    world.Arrives(device, "x");
    world.Arrives(device, "y");
    Receive(2);
    Receive(1);
    EXPECT_EQ(environment.Figures().trips.Maximum(), 11);
    EXPECT_EQ(environment.Figures().trips.Median(), 6);
}

TEST_F(Measuring, AClosedSocketHasNoPendingRequest) {
    Send(1);
    environment.Close(1);
    world.Arrives(device, "x");
    Receive(1);
    EXPECT_EQ(environment.Figures().trips.Count(), 0u);
    EXPECT_EQ(world.closed, std::vector<int>{1});
}

TEST_F(Measuring, ADatagramThatIsNotSentIsNotARequest) {
    world.sends = false;
    Send(1);
    EXPECT_EQ(environment.Figures().requests, 0u);
}

}  // namespace
