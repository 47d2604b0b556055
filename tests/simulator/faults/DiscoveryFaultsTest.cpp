// Faults that disturb programs which look for devices and their objects.
#include "FaultFixture.h"

using test::Hex;
using test::operator+;

class DiscoveryFaults : public test::FaultFixture {
protected:
    static constexpr char const* WhoIs = "10 08";
    static constexpr char const* IAm = "10 00 C4 02 00 00 64 22 05 C4 91 01 22 03 E7";

    std::string CountOfObjects() {
        std::string const text = ApdusOf("02 75 01 0C 0C 02 00 00 64 19 4C 29 00");
        return text.substr(text.find(" 3E ") + 4, 5);
    }
};

TEST_F(DiscoveryFaults, FaultsOfAnyRequestLeaveWhoIsAlone) {
    Add("silence");
    Add("garbage");
    EXPECT_EQ(Sent(WhoIs), Whole(IAm));
}

TEST_F(DiscoveryFaults, ADeviceCanAnswerTwiceLateOrNotAtAll) {
    Add("duplicate on=who_is times=1");
    EXPECT_EQ(Sent(WhoIs), Whole(IAm) + ", " + Whole(IAm));
    EXPECT_EQ(Sent(WhoIs), Whole(IAm));
    Add("delay on=who_is seconds=1.5 times=1");
    EXPECT_EQ(Sent(WhoIs), Whole(IAm) + " after 1500 ms");
    Add("silence on=who_is times=1");
    EXPECT_EQ(Sent(WhoIs), "");
    EXPECT_EQ(Sent(WhoIs), Whole(IAm));
}

TEST_F(DiscoveryFaults, TheyLeaveConfirmedRequestsAlone) {
    Add("silence on=who_is");
    EXPECT_EQ(ApdusOf(Read), Value);
}

TEST_F(DiscoveryFaults, ARequestForAnotherDeviceDoesNotCount) {
    Add("silence on=who_is times=1");
    EXPECT_EQ(Sent("10 08 09 05 19 06"), "");
    EXPECT_EQ(Sent(WhoIs), "");
    EXPECT_EQ(Sent(WhoIs), Whole(IAm));
}

TEST_F(DiscoveryFaults, AnIAmCanBeMalformedOrFromAnotherAddress) {
    Add("truncate on=who_is octet=12 times=1");
    EXPECT_EQ(Sent(WhoIs), "81 0A 00 0C 01 00 10 00 C4 02 00 00");
    Add("other_address on=who_is times=1");
    EXPECT_EQ(Sent(WhoIs), Whole(IAm) + " elsewhere");
}

TEST_F(DiscoveryFaults, AnotherInstance) {
    Add("other_instance code=7");
    EXPECT_EQ(Sent(WhoIs), Whole("10 00 C4 02 00 00 07 22 05 C4 91 01 22 03 E7"));
    EXPECT_EQ(Sent("10 07 2C 02 00 00 64"), Whole("10 01 C4 02 00 00 07 C4 02 00 00 64 72 00 44"));
    EXPECT_EQ(ApdusOf(Read), Value);
    faulty->GetFaults().Clear();
    Add("other_instance");
    EXPECT_EQ(Sent(WhoIs), Whole("10 00 C4 02 3F FF FF 22 05 C4 91 01 22 03 E7"));
}

TEST_F(DiscoveryFaults, AnotherStationBehindTheRouter) {
    MakeFaulty("router = {network = 5, mac = '0AFF'}, faults = {fault{'wrong_station', code = 2}}, ");
    auto const answers = faulty->Receive({Client, Hex("81 0B 00 0C 01 20 00 05 00 FF 10 08")}, now);
    EXPECT_EQ(Shown(answers), std::string("81 0A 00 1A 01 08 00 05 02 0A 01 ") + IAm);
    MakeFaulty("faults = {fault{'wrong_station'}}, ");
    EXPECT_EQ(Sent(WhoIs), Whole(IAm));
}

TEST_F(DiscoveryFaults, AnIAmToAllCanBeDisturbedToo) {
    MakeFaulty("i_am = 'broadcast', faults = {fault{'other_instance', code = 7}}, ");
    EXPECT_EQ(Sent(WhoIs), "81 0B 00 19 01 20 FF FF 00 FF 10 00 C4 02 00 00 07 22 05 C4 91 01 22 03 E7");
}

TEST_F(DiscoveryFaults, AnObjectListThatChanges) {
    EXPECT_EQ(CountOfObjects(), "21 04");
    Add("changing_object_list");
    EXPECT_EQ(CountOfObjects(), "21 03");
    EXPECT_EQ(CountOfObjects(), "21 04");
    EXPECT_EQ(CountOfObjects(), "21 03");
    faulty->GetFaults().Clear();
    EXPECT_EQ(ApdusOf("02 75 01 0C 0C 02 00 00 64 19 9B"), "30 01 0C 0C 02 00 00 64 19 9B 3E 21 04 3F");
}

TEST_F(DiscoveryFaults, AnObjectListThatChangesOnce) {
    Add("changing_object_list times=1");
    EXPECT_EQ(CountOfObjects(), "21 03");
    EXPECT_EQ(CountOfObjects(), "21 03");
}

TEST_F(DiscoveryFaults, ScopesThatAKindCannotHaveAreMistakes) {
    std::vector<simulator::CommandTarget> const targets{{"D", &faulty->GetFaults()}};
    EXPECT_EQ(simulator::RunFaultCommand("fault D error on=who_is", targets).text,
              "fault: error: on: must not be \"who_is\"\n");
    EXPECT_EQ(simulator::RunFaultCommand("fault D other_instance on=read", targets).text,
              "fault: other_instance: on: must be \"who_is\"\n");
    EXPECT_EQ(simulator::RunFaultCommand("fault D silence on=who", targets).text,
              "fault: silence: on: must be \"any\", \"read\", \"write\" or \"who_is\", not \"who\"\n");
}
