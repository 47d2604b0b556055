// Answers to earlier requests are kept away from later requests: waiting datagrams are dropped, and the port
// changes after a request without an answer. In virtual time.

#include <gtest/gtest.h>

#include <thread>

#include "LogCapture.h"
#include "ScriptedNetwork.h"
#include "VirtualSocket.h"

using namespace test;

namespace {

constexpr int TimeOut = 1000;

class OldAnswers : public testing::Test {
protected:
    // A request that is answered with "0A".
    void Answered() {
        network.ExpectAny().Answer("0A");
        ASSERT_EQ(socket.Exchange(Hex("01"), TimeOut), 1);
        ASSERT_EQ(socket.buffer[0], 0x0A);
    }
    void Unanswered() {
        network.ExpectAny();
        ASSERT_EQ(socket.Exchange(Hex("01"), TimeOut), 0);
    }
    // The first octet that a request receives; the device itself does not answer.
    int FirstOctet() {
        network.ExpectAny();
        return socket.Exchange(Hex("01"), TimeOut) > 0 ? socket.buffer[0] : -1;
    }
    // The local port of the latest datagram, which is also in the record.
    unsigned short LastPort() const {
        EXPECT_EQ(network.SentDatagrams().back().localPort, socket.socket.port);
        return network.SentDatagrams().back().localPort;
    }

    ScriptedNetwork network;
    VirtualSocket socket;
};

}  // namespace

TEST_F(OldAnswers, ThatHaveWaitedAreDroppedBeforeARequestAfter20Milliseconds) {
    Answered();
    network.Deliver(Hex("0B"));
    network.Deliver(Hex("0C"));
    network.Pass(20);
    Answered();
    EXPECT_EQ(socket.Wait(0), 0);
}

TEST_F(OldAnswers, AreTakenInTheOrderOfArrivalWithinAnExchange) {
    Answered();
    network.Deliver(Hex("0B"));
    network.Deliver(Hex("0C"), 1);
    network.Pass(19);
    EXPECT_EQ(FirstOctet(), 0x0B);
    EXPECT_EQ(FirstOctet(), 0x0C);
}

TEST_F(OldAnswers, AreDropped256AtMostByOneRequest) {
    Answered();
    for (int i = 0; i < 257; ++i) {
        network.Deliver({static_cast<char>(i % 100)}, i);
    }
    network.Pass(1000);
    EXPECT_EQ(FirstOctet(), 256 % 100);
}

TEST_F(OldAnswers, AreTracedWithTheirNumber) {
    Answered();
    LogCapture log;
    log.EnableTrace();
    network.Pass(20);
    Answered();
    EXPECT_EQ(log.Text(), "");
    network.Deliver(Hex("0B"));
    network.Deliver(Hex("0C"));
    network.Pass(20);
    Answered();
    EXPECT_NE(log.Text().find("task 7: datagrams dropped before the request: 2\n"), std::string::npos)
        << log.Text();
}

TEST_F(OldAnswers, AreTakenByACallThatOnlyReceives) {
    Answered();
    network.Deliver(Hex("0B"));
    network.Pass(5000);
    EXPECT_EQ(socket.Wait(0), 1);
    EXPECT_EQ(socket.buffer[0], 0x0B);
}

TEST_F(OldAnswers, OnAFixedPortAreDroppedByTheFirstRequestToo) {
    ASSERT_EQ(NLTryOpenUDPSocket(&socket.socket, 47809, 20), 0);
    network.Deliver(Hex("0B"));
    network.Pass(20);
    Answered();
}

TEST_F(OldAnswers, TheNextRequestAfterOneWithoutAnAnswerLeavesFromAnotherPort) {
    Unanswered();
    unsigned short const first = LastPort();
    Unanswered();
    unsigned short const second = LastPort();
    EXPECT_NE(second, first);
    Answered();
    EXPECT_NE(LastPort(), second);
    EXPECT_EQ(network.OpenSockets(), 1);
}

TEST_F(OldAnswers, ThePortStaysAsLongAsRequestsAreAnswered) {
    Answered();
    unsigned short const port = LastPort();
    for (int i = 0; i < 5; ++i) {
        network.Pass(i * 50);
        Answered();
        EXPECT_EQ(LastPort(), port);
    }
    EXPECT_EQ(socket.Wait(TimeOut), 0) << "nothing comes after the last answer";
    Answered();
    EXPECT_EQ(LastPort(), port);
}

TEST_F(OldAnswers, ThePortChangesBeforeTheNextRequestAndNotEarlier) {
    Unanswered();
    unsigned short const port = LastPort();
    EXPECT_EQ(socket.Wait(TimeOut), 0);
    EXPECT_EQ(socket.socket.port, port);
    Answered();
    EXPECT_NE(LastPort(), port);
}

TEST_F(OldAnswers, AllAttemptsOfOneCallLeaveFromOnePort) {
    for (int i = 0; i < 3; ++i) {
        network.ExpectAny();
    }
    EXPECT_EQ(socket.Exchange(Hex("01"), TimeOut, 2), 0);
    for (auto const& datagram : network.SentDatagrams()) {
        EXPECT_EQ(datagram.localPort, socket.socket.port);
    }
}

TEST_F(OldAnswers, ACallThatOnlySendsIsNotSentAgain) {
    network.ExpectAny();
    Octets const request = Hex("01");
    EXPECT_EQ(NLSendReceive(&socket.socket, &socket.peer, request.data(), 1, socket.buffer,
                            sizeof socket.buffer, TimeOut, 5, 0, 7),
              0);
    unsigned short const port = LastPort();
    Answered();
    EXPECT_EQ(LastPort(), port);
}

TEST_F(OldAnswers, AnEmptyDatagramIsNoAnswer) {
    network.ExpectAny().Answer(Octets());
    EXPECT_EQ(socket.Exchange(Hex("01"), TimeOut), 0);
    unsigned short const port = LastPort();
    Answered();
    EXPECT_NE(LastPort(), port);
}

TEST_F(OldAnswers, ASocketOfARangeTakesItsNextFreePortAndBeginsAgainAtTheEnd) {
    network.TakePort(47811);
    ASSERT_EQ(NLTryOpenUDPSocket(&socket.socket, 47809, 5), 0);
    std::vector<unsigned short> ports;
    for (int i = 0; i < 6; ++i) {
        Unanswered();
        ports.push_back(LastPort());
        network.Pass(5000);
    }
    EXPECT_EQ(ports, (std::vector<unsigned short>{47809, 47810, 47812, 47813, 47809, 47810}));
}

TEST_F(OldAnswers, ARangeThatIsFullIsLeftUntilAPortOfItIsFree) {
    network.TakePort(47810);
    ASSERT_EQ(NLTryOpenUDPSocket(&socket.socket, 47809, 2), 0);
    Unanswered();
    Unanswered();
    EXPECT_TRUE(LastPort() < 47809 || LastPort() > 47810) << LastPort();
    network.Pass(10'000);
    Unanswered();
    EXPECT_EQ(LastPort(), 47809);
}

TEST_F(OldAnswers, TheRangeEndsAtTheLastPort) {
    ASSERT_EQ(NLTryOpenUDPSocket(&socket.socket, 65534, 20), 0);
    std::vector<unsigned short> ports;
    for (int i = 0; i < 3; ++i) {
        Unanswered();
        ports.push_back(LastPort());
        network.Pass(10'000);
    }
    EXPECT_EQ(ports, (std::vector<unsigned short>{65534, 65535, 65534}));
}

TEST_F(OldAnswers, WithoutARangeAnyFreePortIsTaken) {
    ASSERT_EQ(NLTryOpenUDPSocket(&socket.socket, 47809, 2), 0);
    NLCloseSocket(&socket.socket);
    Unanswered();
    Unanswered();
    EXPECT_TRUE(LastPort() < 47809 || LastPort() > 47810) << LastPort();
}

TEST_F(OldAnswers, WithoutAnotherSocketTheOldOneIsKept) {
    Unanswered();
    unsigned short const port = LastPort();
    network.RefuseToOpen();
    Answered();
    EXPECT_EQ(LastPort(), port);
}

// Two blocks in step use the same invoke ids, so that one could take the late answer to the other.
TEST_F(OldAnswers, APortThatWasLeftIsAvoidedFor10Seconds) {
    ASSERT_EQ(NLTryOpenUDPSocket(&socket.socket, 47809, 3), 0);
    Unanswered();
    Unanswered();  // from 47810
    VirtualSocket other;
    ASSERT_EQ(NLTryOpenUDPSocket(&other.socket, 47809, 3), 0);
    EXPECT_EQ(other.socket.port, 47811);
    network.ExpectAny();
    other.Exchange(Hex("01"), TimeOut);
    network.ExpectAny();
    other.Exchange(Hex("01"), TimeOut);
    EXPECT_GT(other.socket.port, 47811) << "47809 was left 2 s ago";
    network.Pass(10'000);
    network.ExpectAny();
    other.Exchange(Hex("01"), TimeOut);
    EXPECT_LE(other.socket.port, 47811);
}

TEST_F(OldAnswers, APortThatWasLeftIsNotTakenAsAnyFreePortEither) {
    Unanswered();
    unsigned short const left = LastPort();
    Answered();
    network.OfferPort(left);
    VirtualSocket other;
    network.ExpectAny();
    other.Exchange(Hex("01"), TimeOut);
    EXPECT_NE(other.socket.port, left);
    EXPECT_EQ(network.OpenSockets(), 2);
}

TEST_F(OldAnswers, ASocketThatIsClosedWithoutItsAnswerLeavesItsPort) {
    ASSERT_EQ(NLTryOpenUDPSocket(&socket.socket, 47809, 3), 0);
    Unanswered();
    ASSERT_EQ(NLTryOpenUDPSocket(&socket.socket, 47809, 3), 0);
    EXPECT_EQ(socket.socket.port, 47810);
    Answered();
    ASSERT_EQ(NLTryOpenUDPSocket(&socket.socket, 47810, 3), 0);
    EXPECT_EQ(socket.socket.port, 47810);
}

TEST_F(OldAnswers, ASocketOpensOnAPortThatWasLeftWhenThereIsNoOther) {
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(NLTryOpenUDPSocket(&socket.socket, 47809, 1), 0);
        Unanswered();
    }
    EXPECT_EQ(LastPort(), 47809);
}

TEST_F(OldAnswers, ASocketThatIsOpenedInACycleAfterAFaultKeepsItsPort) {
    network.RefuseToOpen();
    NLBeginCycle(true);
    EXPECT_EQ(socket.Exchange(Hex("01"), TimeOut), -1);
    network.RefuseToOpen(false);
    NLBeginCycle(true);
    Answered();
    unsigned short const port = LastPort();
    Answered();
    EXPECT_EQ(LastPort(), port);
}

TEST_F(OldAnswers, TheFirstRequestOfACycleAfterAFaultLeavesFromAnotherPort) {
    Answered();
    unsigned short const first = LastPort();
    NLBeginCycle(false);
    Answered();
    EXPECT_EQ(LastPort(), first);
    NLBeginCycle(true);
    Answered();
    unsigned short const second = LastPort();
    EXPECT_NE(second, first);
    Answered();
    EXPECT_EQ(LastPort(), second);
}

TEST_F(OldAnswers, ACycleAfterAFaultAffectsItsThreadAlone) {
    Answered();
    unsigned short const port = LastPort();
    std::thread([] { NLBeginCycle(true); }).join();
    Answered();
    EXPECT_EQ(LastPort(), port);
}

TEST_F(OldAnswers, ACycleAfterAFaultThatSendsNothingDoesNotAffectTheNext) {
    Answered();
    unsigned short const port = LastPort();
    NLBeginCycle(true);
    NLBeginCycle(false);
    Answered();
    EXPECT_EQ(LastPort(), port);
}
