#include "FaultyStation.h"

#include <set>

#include "FaultFixture.h"

using FaultyStation = test::FaultFixture;

// The datagram of a read and its answer: 81 0A 00 17 01 00 and then the APDU of 17 octets.

TEST_F(FaultyStation, WithoutFaultsItIsTheStation) {
    EXPECT_EQ(Sent(Read), Whole(Value));
    EXPECT_EQ(Sent(Write), Whole(Done));
    EXPECT_EQ(RequestLong(), "00+");
    EXPECT_EQ(Acknowledge("00", "03"), "01+ 02+ 03");
    EXPECT_EQ(Pass(2000), "01+ 02+ 03");
    EXPECT_EQ(ApdusOf("10 08"), "10 00 C4 02 00 00 64 22 05 C4 91 01 22 03 E7");
}

TEST_F(FaultyStation, EachFaultOfADatagramByItsOctets) {
    std::string const value = Whole(Value);
    std::string const rest = value.substr(11);  // after the BVLC header
    struct Row {
        char const* fault;
        std::string datagrams;
    };
    Row const rows[] = {
        {"silence", ""},
        {"delay", value + " after 2000 ms"},
        {"delay seconds=0.4", value + " after 400 ms"},
        {"loss chance=1", ""},
        {"loss every=2", value},
        {"duplicate", value + ", " + value},
        {"other_invoke_id", "81 0A 00 17 01 00 30 02" + value.substr(23)},
        {"other_invoke_id code=255", "81 0A 00 17 01 00 30 00" + value.substr(23)},
        {"other_address", value + " elsewhere"},
        {"truncate", "81 0A 00 08 01 00 30 01"},
        {"truncate octet=9 mend=false", "81 0A 00 17 01 00 30 01 0C"},
        {"truncate octet=3", "81 0A 00"},
        {"truncate octet=23", value},
        {"truncate octet=4294967295", value},
        {"bvlc_function", "81 00 00 17" + rest},
        {"bvlc_function code=255", "81 FF 00 17" + rest},
        {"bvlc_type", "82 0A 00 17" + rest},
        {"bvlc_type code=0", "00 0A 00 17" + rest},
        {"bvlc_length", "81 0A 00 18" + rest},
        {"bvlc_length code=65535", "81 0A 00 16" + rest},
        {"headers_only headers=bvlc", "81 0A 00 04"},
        {"headers_only", "81 0A 00 06 01 00"},
        {"headers_only headers=apdu", "81 0A 00 09 01 00 30 01 0C"},
        {"garbage octets=0", ""},
        {"network_message", "81 0A 00 0A 01 80 03 01 00 00"},
        {"network_message code=18", "81 0A 00 0A 01 80 12 01 00 00"},
        {"error", "81 0A 00 0D 01 00 50 01 0C 91 01 91 1F"},
        {"error class=2 code=32", "81 0A 00 0D 01 00 50 01 0C 91 02 91 20"},
        {"reject", "81 0A 00 09 01 00 60 01 09"},
        {"reject code=4", "81 0A 00 09 01 00 60 01 04"},
        {"abort", "81 0A 00 09 01 00 71 01 00"},
        {"abort code=4", "81 0A 00 09 01 00 71 01 04"},
        {"wrong_object", Whole("30 01 0C 0C 00 00 00 02 19 55 3E 44 3F C0 00 00 3F")},
        {"odd_list", value},
        {"unasked_property code=75", Whole("30 01 0C 0C 00 00 00 01 19 4B 3E C4 00 00 00 01 3F")},
        {"lost_segment segment=0", value},
        {"segments_out_of_order", value},
        {"repeated_segment", value},
        {"oversized_segments", value},
        {"endless_segments", "81 0A 00 19 01 04 3C 01 00 10" + value.substr(23)},
    };
    for (Row const& row : rows) {
        faulty->GetFaults().Clear();
        Add(row.fault);
        EXPECT_EQ(Sent(Read), row.datagrams) << row.fault;
    }
}

TEST_F(FaultyStation, FaultsOfAMultipleRead) {
    std::string const status = " 29 6F 4E 82 04 00 4F 1F";
    Add("unasked_property code=75");
    EXPECT_EQ(ApdusOf(ReadMultiple),
              "30 01 0E 0C 00 00 00 01 1E 29 4B 4E C4 00 00 00 01 4F 29 55 4E 44 3F C0 00 00 4F" + status);
    faulty->GetFaults().Clear();
    Add("odd_list");
    EXPECT_EQ(ApdusOf(ReadMultiple), "30 01 0E 0C 00 00 00 01 1E 29 55 4E 44 3F C0 00 00 4F 29 6F 1F");
    EXPECT_EQ(
        ApdusOf("02 75 01 0E 0C 00 00 00 01 1E 09 55 09 54 1F 0C 00 80 00 01 1E 09 57 19 01 1F"),
        "30 01 0E 0C 00 00 00 01 1E 29 55 4E 44 3F C0 00 00 4F 29 54 1F 0C 00 80 00 01 1E 29 57 39 01 1F")
        << "also of errors, elements of arrays and several objects";
    faulty->GetFaults().Clear();
    Add("wrong_object");
    EXPECT_EQ(ApdusOf(ReadMultiple), "30 01 0E 0C 00 00 00 02 1E 29 55 4E 44 3F C0 00 00 4F" + status);
}

TEST_F(FaultyStation, PreviousAnswerIsThatOfTheRequestBefore) {
    Add("previous_answer");
    EXPECT_EQ(Sent(Read), "") << "there was none";
    EXPECT_EQ(Sent(Write), Whole(Value));
    EXPECT_EQ(Sent(Read), Whole(Done));
    EXPECT_EQ(Shown(Deliveries(Read, {0x7F000001, 50001})), Whole(Value)) << "of the same address";
    EXPECT_EQ(Shown(Deliveries(Read, {0x7F000002, 50001})), "") << "of another client";
    faulty->GetFaults().Clear();
    EXPECT_EQ(Sent(Read), Whole(Value));
}

TEST_F(FaultyStation, PreviousAnswerOfAnAnswerInSegmentsIsOneDatagram) {
    Sent(Read);
    Add("previous_answer times=1");
    EXPECT_EQ(Sent(ReadLong), Whole(Value));
    EXPECT_EQ(Pass(2000), "") << "nothing is repeated of what was not sent";
    EXPECT_EQ(Acknowledge("00"), "");
}

TEST_F(FaultyStation, ASilentDeviceDoesNotWriteAndOneWhoseAnswerIsLostDoes) {
    auto const value = [this] { return ApdusOf("02 75 01 0C 0C 00 80 00 01 19 55").substr(36, 11); };
    for (char const* fault : {"silence", "error", "reject", "abort", "network_message"}) {
        Add(std::string(fault) + " times=1");
        Sent(Write);
        EXPECT_EQ(value(), "00 00 00 00") << fault;
    }
    Add("loss chance=1 times=1");
    EXPECT_EQ(Sent(Write), "");
    EXPECT_EQ(value(), "40 00 00 00");
}

TEST_F(FaultyStation, FaultsOfAWriteAlone) {
    Add("error on=write class=2 code=40");
    EXPECT_EQ(Sent(Read), Whole(Value));
    EXPECT_EQ(Sent(ReadMultiple).substr(0, 23), "81 0A 00 20 01 00 30 01");
    EXPECT_EQ(ApdusOf(Write), "50 01 0F 91 02 91 28");
}

TEST_F(FaultyStation, FaultsOfAnObjectAlone) {
    Add("silence object=analog_value:1");
    EXPECT_EQ(Sent(Read), Whole(Value));
    EXPECT_EQ(Sent(Write), "");
}

TEST_F(FaultyStation, WhatDoesNotFitTheAnswerLeavesItAlone) {
    for (char const* fault : {"wrong_object", "odd_list", "unasked_property", "lost_segment segment=0",
                              "endless_segments", "oversized_segments"}) {
        faulty->GetFaults().Clear();
        Add(fault);
        EXPECT_EQ(Sent(Write), Whole(Done)) << fault;
    }
}

TEST_F(FaultyStation, OnlyAnswersToConfirmedRequestsAreMet) {
    Add("silence");
    EXPECT_EQ(ApdusOf("10 08").substr(0, 5), "10 00");
    EXPECT_EQ(Sent("00"), "") << "a request without an invoke id";
    EXPECT_EQ(Shown(faulty->Receive({Client, test::Hex("81 05 00 06 00 00")}, now)), "81 00 00 06 00 30");
    EXPECT_EQ(Shown(faulty->Receive({Client, {}}, now)), "");
}

TEST_F(FaultyStation, SeveralFaultsActOneAfterTheOther) {
    Add("delay seconds=1");
    Add("duplicate");
    Add("other_address");
    Add("delay seconds=0.5");
    Add("truncate octet=4");
    EXPECT_EQ(Sent(Read), "81 0A 00 04 after 1500 ms elsewhere, 81 0A 00 04 after 1500 ms elsewhere");
}

TEST_F(FaultyStation, ManyDuplicatesAreBounded) {
    for (int i = 0; i < 64; ++i) {
        Add("duplicate");
    }
    EXPECT_GE(Deliveries(Read).size(), 256u);
    EXPECT_LE(Deliveries(Read).size(), 1024u);
}

TEST_F(FaultyStation, GarbageIsSeededAndOfManyLengths) {
    Add("garbage octets=20");
    std::string first;
    std::set<std::size_t> lengths;
    for (int i = 0; i < 500; ++i) {
        auto const all = Deliveries(Read);
        ASSERT_EQ(all.size(), 1u);
        lengths.insert(all[0].datagram.octets.size());
        first += Shown(all) + "\n";
    }
    EXPECT_EQ(lengths.size(), 21u);
    EXPECT_EQ(*lengths.rbegin(), 20u);
    MakeFaulty("faults = {fault{'garbage', octets = 20}},");
    std::string second;
    for (int i = 0; i < 500; ++i) {
        second += Sent(Read) + "\n";
    }
    EXPECT_EQ(first, second);
}

TEST_F(FaultyStation, AFaultHealsWhenItsTimeIsOver) {
    Add("silence duration=5");
    EXPECT_EQ(Sent(Read), "");
    Pass(4999);
    EXPECT_EQ(Sent(Read), "");
    Pass(1);
    EXPECT_EQ(Sent(Read), Whole(Value));
}

TEST_F(FaultyStation, BehindARouterAnswersKeepTheirAddresses) {
    MakeFaulty("router = {network = 5, mac = '0A14'},");
    auto const ask = [this](char const* apdu) {
        return Shown(faulty->Receive(
            {Client, Unicast(test::Hex(std::string("01 2C 00 05 02 0A 14 00 09 01 2A FF ") + apdu))}, now));
    };
    std::string const head = " 01 28 00 09 01 2A 00 05 02 0A 14 FF ";
    Add("error times=1");
    EXPECT_EQ(ask(Read), "81 0A 00 17" + head + "50 01 0C 91 01 91 1F");
    Add("network_message times=1");
    EXPECT_EQ(ask(Read), "81 0A 00 0F 01 A0 00 09 01 2A FF 03 01 00 05");
    Add("unasked_property code=75 times=1");
    EXPECT_EQ(ask(Read), "81 0A 00 21" + head + "30 01 0C 0C 00 00 00 01 19 4B 3E C4 00 00 00 01 3F");
    Add("headers_only times=1");
    EXPECT_EQ(ask(Read), "81 0A 00 10" + head.substr(0, head.size() - 1));
    EXPECT_EQ(ask(Read), "81 0A 00 21" + head + Value);
}

TEST_F(FaultyStation, WhatIsForAnotherStationIsNotAnsweredEvenWrongly) {
    MakeFaulty("router = {network = 5, mac = '0A14'}, faults = {fault{'error'}, fault{'previous_answer'}},");
    EXPECT_EQ(Sent(Read), "");
}
