#include <utility>

#include "RandomOctets.h"
#include "StationFixture.h"

using test::Octets;

// Datagrams that no correct client sends. The device sends only well-formed datagrams that are not longer
// than the client accepts, and answers correctly afterwards.
class RandomDatagrams : public test::StationFixture {
protected:
    static constexpr int Count = 10'000;

    void SetUp() override {
        MakeWith(R"(
            analog_input{instance = 1, present_value = 1.5}, schedule{instance = 2},
            multi_state_value{instance = 3, state_text = {"off", "on"}},
        )");
    }

    void Check(Octets const& datagram) {
        now.sinceStart += std::chrono::milliseconds(100);
        for (auto const& answers : {station->Receive({Client, datagram}, now), station->Tick(now)}) {
            ASSERT_LE(answers.size(), 127u);
            for (simulator::Datagram const& answer : answers) {
                CheckAnswer(answer.octets, test::ToHex(datagram));
            }
        }
    }

    static void CheckAnswer(Octets const& answer, std::string const& asked) {
        ASSERT_GE(answer.size(), 6u) << asked;
        ASSERT_LE(answer.size(), 1497u + 4) << asked;
        ASSERT_EQ(answer[0], '\x81') << asked;
        ASSERT_TRUE(answer[1] == 0x0A || answer[1] == 0x00) << asked;
        std::size_t const length =
            static_cast<unsigned char>(answer[2]) * 256u + static_cast<unsigned char>(answer[3]);
        ASSERT_EQ(length, answer.size()) << asked;
    }

    void ExpectAlive() {
        EXPECT_EQ(Answer("02 74 01 0C 0C 00 00 00 01 19 55"),
                  "30 01 0C 0C 00 00 00 01 19 55 3E 44 3F C0 00 00 3F");
    }

    // Mutated, mostly with a correct length field, so that the other layers are reached.
    Octets Mutated(Octets octets) {
        octets = random.Mutated(std::move(octets));
        if (octets.size() >= 4 && random.Pick(8) != 0) {
            octets[2] = static_cast<char>(octets.size() >> 8);
            octets[3] = static_cast<char>(octets.size());
        }
        return octets;
    }

    test::RandomOctets random{20240315};
};

TEST_F(RandomDatagrams, Noise) {
    for (int i = 0; i < Count; ++i) {
        Check(random.Noise(random.Pick(i % 10 == 0 ? 1500 : 40)));
    }
    ExpectAlive();
}

TEST_F(RandomDatagrams, NoiseAfterGoodHeaders) {
    for (int i = 0; i < Count; ++i) {
        Octets npdu = test::Hex("01 04");
        Octets const apdu = random.Noise(random.Pick(60));
        npdu.insert(npdu.end(), apdu.begin(), apdu.end());
        Check(Unicast(npdu));
    }
    ExpectAlive();
}

TEST_F(RandomDatagrams, GoodOnesMutated) {
    std::vector<Octets> seeds;
    for (char const* npdu : {
             "01 04 02 74 07 0C 0C 00 00 00 01 19 55",
             "01 04 02 70 07 0E 0C 00 00 00 01 1E 09 08 1F",
             "01 04 02 70 07 0E 0C 04 40 00 02 1E 09 7B 19 03 09 26 1F 0C 04 C0 00 03 1E 09 6E 19 01 1F",
             "01 04 40 07 00 05",
             "01 04 42 07 01 01",
             "01 04 70 07 00",
             "01 00 10 08 09 00 1B 3F FF FF",
             "01 2C 00 05 02 0A 14 00 09 01 2A FF 02 74 07 0C 0C 00 00 00 01 19 55",
             "01 80 00 00 05",
         }) {
        seeds.push_back(Unicast(test::Hex(npdu)));
    }
    seeds.push_back(test::Hex("81 04 00 12 C0 A8 01 02 BA C0 01 00 10 08 09 00 19 64"));
    for (int i = 0; i < Count; ++i) {
        Octets const& seed = seeds[random.Pick(seeds.size())];
        Check(i % 3 == 0 ? seed : Mutated(seed));
    }
    ExpectAlive();
}
