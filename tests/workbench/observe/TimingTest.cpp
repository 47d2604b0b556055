// What a block's state says when answers do not come, come late or belong to another request.

#include "Dialogue.h"

using namespace test;
using namespace workbench;

namespace {

using Timing = Dialogue;

TEST_F(Timing, ASilentDeviceIsSilentSinceItsFirstRequestWithoutAnAnswer) {
    Exchange(ReadA(1), AnswerA(1));
    EXPECT_EQ(Why(), "");
    long long const begin = network.time;
    for (unsigned id = 2; id <= 4; ++id) {
        Send(ReadA(id));
        Wait();
    }
    auto causes = EndCycle();
    ASSERT_EQ(causes.size(), 1u);
    EXPECT_EQ(causes[0].text, "no answer since 12:34:56, requests in this cycle: 3, latest: analog-input 1");
    EXPECT_EQ(causes[0].since, begin);
    EXPECT_EQ(causes[0].count, 3u) << "the requests without an answer";
    Send(ReadA(5));
    Wait();
    causes = EndCycle();
    ASSERT_EQ(causes.size(), 1u);
    EXPECT_EQ(causes[0].since, begin);
    EXPECT_EQ(causes[0].text.find("no answer since 12:34:56, requests in this cycle: 1, "), 0u)
        << causes[0].text;
    Exchange(ReadA(6), AnswerA(6));
    EXPECT_EQ(Why(), "");
    Send(ReadA(7));
    Wait();
    EXPECT_GT(EndCycle()[0].since, begin);
}

TEST_F(Timing, ALostAnswerIsCounted) {
    Send(ReadA(1));
    Wait();
    Exchange(ReadA(2), AnswerA(2));
    EXPECT_EQ(Why(), "requests without an answer in this cycle: 1, latest: analog-input 1");
}

TEST_F(Timing, AnAnswerWithinTheTimeOutIsNotLate) {
    Send(ReadA(1));
    Receive(AnswerA(1), 999);
    EXPECT_EQ(Why(), "");
}

TEST_F(Timing, ALateAnswerIsMeasuredOnTheSocketThatTheDriverHasLeft) {
    Send(ReadA(1));
    network.Comes(Handle, network.time + 1500 * Millisecond, AnswerA(1), device);
    Wait();
    observation.Close(Handle);
    EXPECT_TRUE(network.closed.empty());
    Send(ReadA(2), 8);
    long long const begin = network.time;
    EXPECT_EQ(Wait(8), -1);
    EXPECT_EQ(network.time, begin + 1000 * Millisecond) << "the driver waits as long as without the observer";
    auto const causes = EndCycle();
    ASSERT_EQ(causes.size(), 1u);
    EXPECT_EQ(causes[0].text, "answers come 1.50 s after the request, later than 1.00 s; dropped: 1");
    EXPECT_STREQ(CauseName(causes[0].kind), "late");
}

TEST_F(Timing, ADeviceThatWasLateIsSilentSinceItsLastAnswer) {
    for (unsigned id = 1; id <= 4; ++id) {
        int const handle = 10 + static_cast<int>(id);
        Send(ReadA(id), handle);
        network.Comes(handle, network.time + 1500 * Millisecond, AnswerA(id), device);
        Wait(handle);
        observation.Close(handle);
        network.time += Second;
        Why();
    }
    long long const begin = network.time;
    Send(ReadA(5), 20);
    Wait(20);
    auto const causes = EndCycle();
    ASSERT_EQ(causes.size(), 1u);
    EXPECT_EQ(causes[0].text.find("no answer since 12:35:04, "), 0u) << causes[0].text;
    EXPECT_EQ(causes[0].since, begin);
}

TEST_F(Timing, SilenceIsNotHiddenByALateAnswer) {
    Send(ReadA(1), 11);
    network.Comes(11, network.time + 1500 * Millisecond, AnswerA(1), device);
    Wait(11);
    observation.Close(11);
    for (int handle = 12; handle <= 14; ++handle) {
        Send(ReadC(static_cast<unsigned>(handle)), handle);
        Wait(handle);
        observation.Close(handle);
    }
    auto const causes = EndCycle();
    ASSERT_EQ(causes.size(), 2u);
    EXPECT_STREQ(CauseName(causes[0].kind), "silent");
    EXPECT_EQ(causes[0].count, 2u) << "the answer to the third may still come";
    EXPECT_EQ(causes[0].text, "requests without an answer in this cycle: 2, latest: analog-input 2");
    EXPECT_EQ(causes[1].text, "answers come 1.50 s after the request, later than 1.00 s; dropped: 1");
}

TEST_F(Timing, ADeviceThatIsOnlyLateIsNotSilent) {
    for (int handle = 11; handle <= 13; ++handle) {
        Send(ReadA(static_cast<unsigned>(handle)), handle);
        network.Comes(handle, network.time + 1500 * Millisecond, AnswerA(static_cast<unsigned>(handle)),
                      device);
        Wait(handle);
        observation.Close(handle);
    }
    auto const causes = EndCycle();
    ASSERT_EQ(causes.size(), 1u);
    EXPECT_STREQ(CauseName(causes[0].kind), "late");
    EXPECT_EQ(causes[0].count, 2u);
}

TEST_F(Timing, AnAnswerThatIsDroppedBeforeTheNextRequestIsLate) {
    Send(ReadA(1));
    Wait();
    network.Comes(Handle, network.time + 100 * Millisecond, AnswerA(1), device);
    EXPECT_EQ(Why().find("no answer since"), 0u);
    network.time += 3000 * Millisecond;
    EXPECT_GT(Wait(Handle, 0), 0);
    EXPECT_EQ(Why(), "answers come 1.00 s to 4.00 s after the request, later than 1.00 s; dropped: 1");
}

TEST_F(Timing, ASocketThatWasLeftIsClosedAfterTenSeconds) {
    Send(ReadA(1));
    Wait();
    observation.Close(Handle);
    EXPECT_TRUE(network.closed.empty());
    network.time += 10 * Second;
    observation.BeginCycle(Block());
    EXPECT_EQ(network.closed, std::vector<int>{Handle});
}

TEST_F(Timing, AtMostEightSocketsAreKept) {
    for (int handle = 10; handle < 20; ++handle) {
        Send(ReadA(1), handle);
        observation.Close(handle);
    }
    EXPECT_EQ(network.closed, (std::vector<int>{10, 11}));
}

TEST_F(Timing, ASocketWithoutARequestThatWaitsIsClosedAtOnce) {
    Exchange(ReadA(1), AnswerA(1));
    observation.Close(Handle);
    observation.Close(8);
    EXPECT_EQ(network.closed, (std::vector<int>{Handle, 8}));
}

TEST_F(Timing, SocketsThatWereLeftAreClosedAtTheEnd) {
    {
        Observation other(network);
        other.Watch(blocks);
        Octets const request = ReadA(1);
        other.Send(Handle, device, request.data(), static_cast<int>(request.size()));
        other.Close(Handle);
        EXPECT_TRUE(network.closed.empty());
    }
    EXPECT_EQ(network.closed, std::vector<int>{Handle});
}

TEST_F(Timing, AnAnswerToTheRequestBeforeIsNotLate) {
    Send(ReadA(1));
    Wait();
    Exchange(ReadA(2), AnswerA(2));
    EndCycle();
    network.time += 5 * Second;
    Send(ReadA(3), 8);
    Receive(AnswerA(1), 1, 8);
    EXPECT_EQ(Why(), "analog-input 1: the device answers the request before (invoke id 1)");
}

TEST_F(Timing, AnAnswerThatComesTwiceIsNamed) {
    Exchange(ReadA(1), AnswerA(1));
    Exchange(ReadC(2), AnswerA(1));
    Receive(AnswerC(2));
    Receive(AnswerC(2));
    EXPECT_EQ(Why(), "analog-input 1: an answer comes twice; analog-input 2: an answer comes twice");
}

TEST_F(Timing, AnUnknownInvokeIdIsNamed) {
    Exchange(ReadA(1), AnswerA(9));
    EXPECT_EQ(Why(), "an answer has invoke id 9 in place of 1");
}

TEST_F(Timing, ACauseKeepsItsTimeWhileEveryCycleHasIt) {
    Exchange(ReadA(1), Apdu("60 01 09"));
    long long const begin = EndCycle()[0].since;
    network.time += Second;
    Exchange(ReadA(2), Apdu("60 02 09"));
    EXPECT_EQ(EndCycle()[0].since, begin);
    Exchange(ReadA(3), AnswerA(3));
    EndCycle();
    Exchange(ReadA(4), Apdu("60 04 09"));
    EXPECT_GT(EndCycle()[0].since, begin + Second);
}

TEST_F(Timing, ACycleHasABoundedNumberOfCauses) {
    for (int object = 0; object < 100; ++object) {
        Octets request = ReadC(1);
        request[14] = static_cast<char>(object);
        Exchange(request, Apdu("60 01 09"));
    }
    EXPECT_EQ(EndCycle().size(), CauseList::Most);
}

}  // namespace
