#include <random>

#include "FaultFixture.h"

// Datagrams good and bad at a device with random faults. Besides surviving them it must send no more and no
// longer datagrams than it may, keep to its bounds, and answer properly once the faults are cleared.
class RandomFaults : public test::FaultFixture {
protected:
    static constexpr int kCount = 10'000;

    std::uint32_t pick(std::uint32_t limit) { return m_random() % limit; }

    // Any parameters, also such as no file can give.
    simulator::Fault fault() {
        simulator::Fault fault;
        fault.kind = static_cast<simulator::FaultKind>(pick(simulator::kFaultKinds));
        fault.delay = std::chrono::milliseconds(pick(3000));
        fault.octet = pick(100);
        fault.mends = pick(2) == 0;
        if (pick(2) == 0) {
            fault.code = m_random() >> pick(32);
        }
        fault.errorClass = m_random() >> pick(32);
        fault.headers = static_cast<simulator::FaultHeaders>(pick(3));
        fault.octets = pick(pick(500) == 0 ? 70'000 : 60);
        fault.segment = pick(8);
        fault.count = pick(4);
        fault.on = static_cast<simulator::FaultScope>(pick(3));
        fault.chance = pick(3) / 2.0;
        fault.every = pick(3);
        fault.seed = m_random();
        if (pick(2) == 0) {
            fault.times = pick(4);
        }
        if (pick(2) == 0) {
            fault.duration = std::chrono::milliseconds(pick(2000));
        }
        return fault;
    }

    test::Octets datagram() {
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
        auto octets = unicast(test::Hex(npdus[pick(std::size(npdus))]));
        for (std::uint32_t changes = pick(4) == 0 ? pick(4) : 0; changes > 0 && octets.size() > 4;
             --changes) {
            octets[4 + pick(static_cast<std::uint32_t>(octets.size()) - 4)] = static_cast<char>(pick(256));
        }
        if (pick(8) == 0) {
            octets.resize(pick(static_cast<std::uint32_t>(octets.size())));
        }
        return octets;
    }

private:
    std::mt19937 m_random{20240702};
};

TEST_F(RandomFaults, DatagramsOfAllKinds) {
    for (std::string const& settings :
         {std::string(), std::string("router = {network = 5, mac = '0A14'}, proposed_window_size = 4,")}) {
        makeFaulty(settings);
        for (int i = 0; i < kCount; ++i) {
            if (pick(4) == 0) {
                faulty->faults().add(fault());
            }
            if (pick(100) == 0) {
                faulty->faults().clear();
            }
            now.sinceStart += std::chrono::milliseconds(pick(300));
            simulator::Endpoint const sender{0x7F000001, static_cast<std::uint16_t>(50000 + pick(3))};
            for (auto const& all : {faulty->receive({sender, datagram()}, now), faulty->tick(now)}) {
                ASSERT_LE(all.size(), 1200u);
                for (simulator::Delivery const& delivery : all) {
                    ASSERT_LE(delivery.datagram.octets.size(), 65507u);
                    ASSERT_GE(delivery.delay.count(), 0);
                }
            }
            ASSERT_LE(faulty->faults().list().size(), simulator::Faults::kMost);
        }
    }
    makeFaulty("");
    EXPECT_EQ(sent(kRead), whole(kValue));
}

TEST_F(RandomFaults, AfterClearTheNextRequestIsAnsweredProperly) {
    for (int i = 0; i < 2000; ++i) {
        faulty->faults().add(fault());
        faulty->receive({kClient, datagram()}, now);
        faulty->faults().clear();
        ASSERT_EQ(sent(kRead), whole(kValue)) << i;
    }
}
