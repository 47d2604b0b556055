#include <random>

#include "FaultFixture.h"

// Correct and incorrect datagrams to a device with random faults. The number and the length of its datagrams
// and its memory stay within their bounds, and it answers correctly after the faults are cleared.
class RandomFaults : public test::FaultFixture {
protected:
    static constexpr int Count = 10'000;

    std::uint32_t Pick(std::uint32_t limit) { return random() % limit; }

    // Any parameters, also those that a file cannot have.
    simulator::Fault Fault() {
        simulator::Fault fault;
        fault.kind = static_cast<simulator::FaultKind>(Pick(simulator::FaultKinds));
        fault.delay = std::chrono::milliseconds(Pick(3000));
        fault.octet = Pick(100);
        fault.mends = Pick(2) == 0;
        if (Pick(2) == 0) {
            fault.code = random() >> Pick(32);
        }
        fault.errorClass = random() >> Pick(32);
        fault.headers = static_cast<simulator::FaultHeaders>(Pick(3));
        fault.octets = Pick(Pick(500) == 0 ? 70'000 : 60);
        fault.segment = Pick(8);
        fault.count = Pick(4);
        fault.on = static_cast<simulator::FaultScope>(Pick(3));
        fault.chance = Pick(3) / 2.0;
        fault.every = Pick(3);
        fault.seed = random();
        if (Pick(2) == 0) {
            fault.times = Pick(4);
        }
        if (Pick(2) == 0) {
            fault.duration = std::chrono::milliseconds(Pick(2000));
        }
        return fault;
    }

    test::Octets Datagram() {
        static char const* const npdus[] = {
            "01 04 02 75 01 0C 0C 00 00 00 01 19 55",
            "01 04 02 70 07 0E 0C 0B C0 00 01 1E 09 55 09 4D 1F",
            "01 04 02 70 07 0C 0C 0B C0 00 01 19 55",
            "01 04 02 75 01 0F 0C 00 80 00 01 19 55 3E 44 40 00 00 00 3F",
            "01 04 40 07 00 01",
            "01 04 40 07 01 02",
            "01 04 42 07 02 7F",
            "01 04 70 07 00",
            "01 00 10 08",
        };
        auto octets = Unicast(test::Hex(npdus[Pick(std::size(npdus))]));
        for (std::uint32_t changes = Pick(4) == 0 ? Pick(4) : 0; changes > 0 && octets.size() > 4;
             --changes) {
            octets[4 + Pick(static_cast<std::uint32_t>(octets.size()) - 4)] = static_cast<char>(Pick(256));
        }
        if (Pick(8) == 0) {
            octets.resize(Pick(static_cast<std::uint32_t>(octets.size())));
        }
        return octets;
    }

private:
    std::mt19937 random{20240702};
};

TEST_F(RandomFaults, DatagramsOfAllKinds) {
    for (std::string const& settings :
         {std::string(), std::string("router = {network = 5, mac = '0A14'}, proposed_window_size = 4,")}) {
        MakeFaulty(settings);
        for (int i = 0; i < Count; ++i) {
            if (Pick(4) == 0) {
                faulty->GetFaults().Add(Fault());
            }
            if (Pick(100) == 0) {
                faulty->GetFaults().Clear();
            }
            now.sinceStart += std::chrono::milliseconds(Pick(300));
            simulator::Endpoint const sender{0x7F000001, static_cast<std::uint16_t>(50000 + Pick(3))};
            for (auto const& all : {faulty->Receive({sender, Datagram()}, now), faulty->Tick(now)}) {
                ASSERT_LE(all.size(), 1200u);
                for (simulator::Delivery const& delivery : all) {
                    ASSERT_LE(delivery.datagram.octets.size(), 65507u);
                    ASSERT_GE(delivery.delay.count(), 0);
                }
            }
            ASSERT_LE(faulty->GetFaults().List().size(), simulator::Faults::Most);
        }
    }
    MakeFaulty("");
    EXPECT_EQ(Sent(Read), Whole(Value));
}

TEST_F(RandomFaults, AfterClearTheNextRequestIsAnsweredProperly) {
    for (int i = 0; i < 2000; ++i) {
        faulty->GetFaults().Add(Fault());
        faulty->Receive({Client, Datagram()}, now);
        faulty->GetFaults().Clear();
        ASSERT_EQ(Sent(Read), Whole(Value)) << i;
    }
}
