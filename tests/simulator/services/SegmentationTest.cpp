#include "StationFixture.h"

using std::chrono::milliseconds;
using test::Texts;

// A value of 126 octets, read by a client that accepts APDUs of 50. The ack has 137 octets of parameters, in
// four segments of 45, 45, 45 and 2.
class Segmentation : public test::StationFixture {
protected:
    void SetUp() override { MakeDevice(""); }

    void MakeDevice(std::string const& settings) {
        std::string octets;
        for (int i = 0; i < 126; ++i) {
            octets += "5A";
        }
        MakeWith("octet_string_value{instance = 1, present_value = '" + octets + "'}",
                 "proposed_window_size = 3, apdu_segment_timeout = 2000," + settings);
    }

    // `flags` is the first octet of the request, `limits` the second.
    Texts Read(std::string const& flags = "02", std::string const& limits = "70") {
        return Ask(flags + " " + limits + " 07 0C 0C 0B C0 00 01 19 55");
    }

    // The sequence numbers of the segments, with "+" after each that has more-follows; other APDUs unchanged.
    static std::string Numbers(Texts const& apdus) {
        std::string text;
        for (std::string const& apdu : apdus) {
            if (apdu.substr(2, 4) != " 07 " || apdu.substr(9, 5) != "03 0C") {
                return apdu;
            }
            text += (text.empty() ? "" : " ") + apdu.substr(6, 2) + (apdu.substr(0, 2) == "3C" ? "+" : "");
        }
        return text;
    }

    std::string Acknowledge(std::string const& number, std::string const& window) {
        return Numbers(Ask("40 07 " + number + " " + window));
    }

    std::string Pass(int time) { return Numbers(Wait(milliseconds(time))); }
};

TEST_F(Segmentation, SegmentsJoinedAreTheWholeAnswer) {
    Texts apdus = Read();
    for (char const* number : {"00", "01", "02"}) {
        Texts const next = Ask(std::string("40 07 ") + number + " 01");
        apdus.insert(apdus.end(), next.begin(), next.end());
    }
    ASSERT_EQ(apdus.size(), 4u);
    std::string joined;
    for (std::string const& apdu : apdus) {
        EXPECT_LE(apdu.size(), 50u * 3 - 1);
        joined += apdu.substr(14);
    }
    EXPECT_EQ(apdus[0].substr(0, 14), "3C 07 00 03 0C");
    EXPECT_EQ(apdus[3], "38 07 03 03 0C 5A 3F");
    Texts const whole = Read("02", "75");
    ASSERT_EQ(whole.size(), 1u);
    EXPECT_EQ(whole[0], "30 07 0C" + joined);
}

TEST_F(Segmentation, AWindowOfOneGoesStepByStep) {
    EXPECT_EQ(Numbers(Read()), "00+");
    EXPECT_EQ(Acknowledge("00", "01"), "01+");
    EXPECT_EQ(Acknowledge("01", "01"), "02+");
    EXPECT_EQ(Acknowledge("02", "01"), "03");
    EXPECT_EQ(Acknowledge("03", "01"), "");
    EXPECT_EQ(Acknowledge("03", "01"), "") << "the transaction is over";
    EXPECT_EQ(Pass(60'000), "");
}

TEST_F(Segmentation, AWiderWindowSendsSeveralAtOnce) {
    EXPECT_EQ(Numbers(Read()), "00+");
    EXPECT_EQ(Acknowledge("00", "02"), "01+ 02+");
    EXPECT_EQ(Acknowledge("02", "02"), "03");
    EXPECT_EQ(Acknowledge("03", "02"), "");
}

TEST_F(Segmentation, AnAckWithinTheWindowContinuesAfterIt) {
    Read();
    EXPECT_EQ(Acknowledge("00", "03"), "01+ 02+ 03");
    EXPECT_EQ(Acknowledge("01", "03"), "02+ 03");
}

TEST_F(Segmentation, ANegativeAckAsksForWhatIsMissing) {
    Read();
    EXPECT_EQ(Acknowledge("00", "03"), "01+ 02+ 03");
    EXPECT_EQ(Numbers(Ask("42 07 02 03")), "03");
    EXPECT_EQ(Acknowledge("03", "03"), "");
    EXPECT_EQ(Pass(60'000), "");
}

TEST_F(Segmentation, ARepeatedAckSendsNothingAndRestartsTheTimer) {
    Read();
    EXPECT_EQ(Acknowledge("00", "01"), "01+");
    EXPECT_EQ(Pass(1500), "");
    EXPECT_EQ(Acknowledge("00", "01"), "");
    EXPECT_EQ(Pass(1999), "");
    EXPECT_EQ(Pass(1), "01+");
}

TEST_F(Segmentation, AnAckForWhatWasNotSentIsIgnored) {
    Read();
    EXPECT_EQ(Acknowledge("01", "01"), "");
    EXPECT_EQ(Acknowledge("FF", "01"), "");
    EXPECT_EQ(Acknowledge("00", "7F"), "01+ 02+ 03");
    EXPECT_EQ(Acknowledge("04", "7F"), "") << "there is no such segment";
    EXPECT_EQ(Acknowledge("03", "7F"), "");
}

TEST_F(Segmentation, AWithheldAckIsWaitedForThreeTimes) {
    EXPECT_EQ(Numbers(Read()), "00+");
    EXPECT_EQ(Pass(1999), "");
    EXPECT_EQ(Pass(1), "00+");
    EXPECT_EQ(Pass(2000), "00+");
    EXPECT_EQ(Pass(2000), "00+");
    EXPECT_EQ(Pass(2000), "");
    EXPECT_EQ(Pass(60'000), "");
    EXPECT_EQ(Acknowledge("00", "01"), "") << "the transaction is over";
}

TEST_F(Segmentation, AnAckGivesTheRepetitionsBack) {
    Read();
    Pass(2000);
    Pass(2000);
    EXPECT_EQ(Acknowledge("00", "02"), "01+ 02+");
    EXPECT_EQ(Pass(2000), "01+ 02+");
    EXPECT_EQ(Pass(2000), "01+ 02+");
    EXPECT_EQ(Pass(2000), "01+ 02+");
    EXPECT_EQ(Pass(2000), "");
}

TEST_F(Segmentation, RetriesAndTimeoutAreTheDevices) {
    MakeDevice("number_of_apdu_retries = 0,");
    Read();
    EXPECT_EQ(Pass(2000), "");
    EXPECT_EQ(Acknowledge("00", "01"), "");
}

TEST_F(Segmentation, AClientThatTakesNoSegmentsGetsAnAbort) {
    EXPECT_EQ(Read("00"), (Texts{"71 07 04"}));
}

TEST_F(Segmentation, ADeviceThatSendsNoSegmentsAborts) {
    MakeDevice("segmentation_supported = 'no-segmentation',");
    EXPECT_EQ(Read(), (Texts{"71 07 04"}));
    MakeDevice("segmentation_supported = 'segmented-receive',");
    EXPECT_EQ(Read(), (Texts{"71 07 04"}));
}

TEST_F(Segmentation, MoreSegmentsThanTheClientTakesAbort) {
    EXPECT_EQ(Read("02", "10"), (Texts{"71 07 01"})) << "two segments at most";
    EXPECT_EQ(Numbers(Read("02", "20")), "00+") << "four segments at most";
    EXPECT_EQ(Numbers(Read("02", "00")), "00+") << "unspecified";
}

TEST_F(Segmentation, MoreSegmentsThanTheDeviceSendsAbort) {
    MakeDevice("max_answer_segments = 3,");
    EXPECT_EQ(Read(), (Texts{"71 07 01"}));
    MakeDevice("max_answer_segments = 4,");
    EXPECT_EQ(Numbers(Read()), "00+");
}

TEST_F(Segmentation, TheSmallerOfBothApdusCounts) {
    MakeDevice("max_apdu_length_accepted = 128,");
    Texts const apdus = Read("02", "75");
    ASSERT_EQ(apdus.size(), 1u);
    EXPECT_EQ(apdus[0].size(), 128u * 3 - 1);
    EXPECT_EQ(Numbers(apdus), "00+");
}

TEST_F(Segmentation, AnAnswerThatJustFitsIsNotSegmented) {
    MakeDevice("max_apdu_length_accepted = 140,");
    EXPECT_EQ(Read("02", "75")[0].substr(0, 8), "30 07 0C");
    MakeDevice("max_apdu_length_accepted = 139,");
    EXPECT_EQ(Read("02", "75")[0].substr(0, 8), "3C 07 00");
}

TEST_F(Segmentation, AnAbortOfTheClientEndsIt) {
    Read();
    EXPECT_EQ(Ask("71 07 00"), Texts{}) << "sent by a server: not meant";
    EXPECT_EQ(Acknowledge("00", "01"), "01+");
    EXPECT_EQ(Ask("70 07 00"), Texts{});
    EXPECT_EQ(Acknowledge("01", "01"), "");
    EXPECT_EQ(Pass(60'000), "");
}

TEST_F(Segmentation, AnImpossibleWindowAborts) {
    Read();
    EXPECT_EQ(Ask("40 07 00 00"), (Texts{"71 07 07"}));
    EXPECT_EQ(Acknowledge("00", "01"), "");
    Read();
    EXPECT_EQ(Ask("40 07 00 80"), (Texts{"71 07 07"}));
}

TEST_F(Segmentation, OnlyItsOwnClientAndInvokeIdCount) {
    Read();
    EXPECT_EQ(Ask("40 07 00 01", {0x7F000001, 50001}), Texts{});
    EXPECT_EQ(Ask("40 07 00 01", {0x7F000002, 50000}), Texts{});
    EXPECT_EQ(Ask("40 08 00 01"), Texts{});
    EXPECT_EQ(Ask("41 07 00 01"), Texts{}) << "from a server";
    EXPECT_EQ(Acknowledge("00", "01"), "01+");
}

TEST_F(Segmentation, TheSameRequestAgainStartsOver) {
    Read();
    EXPECT_EQ(Acknowledge("00", "01"), "01+");
    EXPECT_EQ(Numbers(Read()), "00+");
    EXPECT_EQ(Pass(2000), "00+") << "and only once";
}

TEST_F(Segmentation, SegmentAcksCutOffAreIgnored) {
    Read();
    for (char const* apdu : {"40", "40 07", "40 07 00", "70"}) {
        EXPECT_EQ(Ask(apdu), Texts{}) << apdu;
    }
    EXPECT_EQ(Acknowledge("00", "01"), "01+");
}

TEST_F(Segmentation, NumbersWrapAfter255) {
    std::string octets;
    for (int i = 0; i < 45 * 299; ++i) {
        octets += "5A";
    }
    MakeWith("octet_string_value{instance = 1, present_value = '" + octets + "'}",
             "proposed_window_size = 3,");
    Texts apdus = Read();
    int count = 1;
    while (apdus[0].substr(0, 2) == "3C") {
        ASSERT_EQ(apdus.size(), 1u);
        std::string const number = apdus[0].substr(6, 2);
        ASSERT_EQ(number, test::ToHex({static_cast<char>(count - 1)}));
        apdus = Ask("40 07 " + number + " 01");
        ASSERT_FALSE(apdus.empty());
        ++count;
    }
    EXPECT_EQ(count, 300);
}

TEST_F(Segmentation, TooManyAtOnceAreAborted) {
    for (std::uint16_t port = 1; port <= 32; ++port) {
        ASSERT_EQ(Ask("02 70 07 0C 0C 0B C0 00 01 19 55", {0x7F000001, port}).size(), 1u);
    }
    EXPECT_EQ(Read(), (Texts{"71 07 09"}));
    EXPECT_EQ(Wait(milliseconds(2000)).size(), 32u);
    Wait(milliseconds(2000));
    Wait(milliseconds(2000));
    Wait(milliseconds(2000));
    EXPECT_EQ(Numbers(Read()), "00+") << "those given up make room";
}
