#include "Printable.h"
#include "RandomOctets.h"
#include "WriteFixture.h"

using test::Octets;
using test::operator+;

// Writes that no correct client sends. Each has one answer of a kind that a write can have, and values that
// are read back are always well-formed.
class RandomWrites : public test::WriteFixture {
protected:
    static constexpr int Count = 10'000;

    void MakeDevice(std::string const& rules) {
        MakeWith(R"(
            analog_value{instance = 1, relinquish_default = 1}, binary_value{instance = 1},
            multi_state_value{instance = 1, alarm_values = {1}}, datetime_value{instance = 1},
            bit_string_value{instance = 1}, schedule{instance = 1}, analog_input{instance = 7,
            read_only = true, present_value = 1.5},
        )",
                 rules);
        station->OnWrite([this](std::string const& line) { Check(line); });
    }

    void Check(std::string const& line) {
        ++lines;
        ASSERT_EQ(tools::Printable(line), line);
    }

    void Send(Octets const& request) {
        std::string const text = test::ToHex(request);
        auto const answers = Ask(text);
        ASSERT_LE(answers.size(), 1u) << text;
        if (answers.empty()) {
            return;
        }
        std::string const type = answers[0].substr(0, 2);
        ASSERT_TRUE(type == "20" || type == "30" || type == "50" || type == "60" || type == "71")
            << text << " -> " << answers[0];
        acks += type == "20" ? 1 : 0;
    }

    // The value of every writable property is a sequence of whole tags and is accepted as the value of a
    // write.
    void ExpectReadable() {
        struct Row {
            char const* type;
            unsigned property;
        };
        for (Row const& row : {Row{"analog_value", 85},
                               {"analog_value", 104},
                               {"binary_value", 85},
                               {"multi_state_value", 7},
                               {"datetime_value", 85},
                               {"bit_string_value", 85},
                               {"schedule", 123},
                               {"schedule", 38},
                               {"schedule", 174},
                               {"schedule", 32}}) {
            std::string const value = Read(row.type, row.property);
            EXPECT_EQ(Write(row.type, row.property, value), Ack) << row.type << ' ' << value;
            EXPECT_EQ(Read(row.type, row.property), value) << row.type << ' ' << value;
        }
        EXPECT_EQ(Answer("02 74 01 0C 0C 00 00 00 07 19 55"),
                  "30 01 0C 0C 00 00 00 07 19 55 3E 44 3F C0 00 00 3F");
    }

    int acks = 0;
    int lines = 0;
    test::RandomOctets random{20260101};
};

namespace {

constexpr char const* Seeds[] = {
    "0C 00 80 00 01 19 55 3E 44 41 AC 00 00 3F 49 08",
    "0C 00 80 00 01 19 55 3E 00 3F 49 08",
    "0C 00 80 00 01 19 68 3E 44 41 AC 00 00 3F",
    "0C 01 40 00 01 19 55 3E 91 01 3F 49 10",
    "0C 04 C0 00 01 19 07 3E 21 02 21 03 3F",
    "0C 0B 00 00 01 19 55 3E A4 7C 03 0F FF B4 08 1E 00 05 3F",
    "0C 09 C0 00 01 19 55 3E 83 05 A0 E0 3F",
    "0C 04 40 00 01 19 7B 29 02 3E 0E B4 08 00 00 00 44 41 A0 00 00 B4 09 00 00 00 73 00 6F 6E 0F 3F",
    "0C 04 40 00 01 19 26 3E 0E 0C 7C 03 0F 05 0F 2E B4 08 00 00 00 21 01 2F 39 10 1C 01 80 00 07 2E 2F 39 "
    "0A "
    "0E 2B 0C FF 02 0F 2E 2F 39 05 0E 1E A4 7C 03 0F 05 A4 FF FF FF FF 1F 0F 2E B4 08 00 00 00 11 2F 39 05 "
    "3F",
    "0C 04 40 00 01 19 20 3E A4 7C 03 0F 05 A4 FF FF FF FF 3F",
    "0C 04 40 00 01 19 AE 3E C4 01 40 00 07 3F",
};

}  // namespace

TEST_F(RandomWrites, GoodOnesMutated) {
    for (char const* rules : {"writes = 'strict',", "writes = 'lenient',"}) {
        MakeDevice(rules);
        acks = lines = 0;
        for (int i = 0; i < Count / 2; ++i) {
            Octets const seed = test::Hex(Seeds[random.Pick(std::size(Seeds))]);
            Send(test::Hex("02 75 01 0F") + (i % 8 == 0 ? seed : random.Mutated(seed)));
            if (i % 500 == 0) {
                ExpectReadable();
            }
        }
        ExpectReadable();
        EXPECT_GT(acks, Count / 2 / 8) << "some of the mutated ones are still right";
        EXPECT_LT(acks, 4000) << "and some are not";
        EXPECT_GE(lines, Count / 2) << "each is reported";
    }
}

TEST_F(RandomWrites, NoiseForAValue) {
    MakeDevice("");
    for (int i = 0; i < Count; ++i) {
        Octets const seed = test::Hex(Seeds[random.Pick(std::size(Seeds))]);
        Octets const head(seed.begin(), seed.begin() + 7);
        Send(test::Hex("02 75 01 0F") + head + test::Hex("3E") + random.Noise(random.Pick(20)) +
             test::Hex("3F"));
    }
    ExpectReadable();
    EXPECT_GE(lines, Count);
}

TEST_F(RandomWrites, NoiseForARequest) {
    MakeDevice("");
    for (int i = 0; i < Count; ++i) {
        Send(test::Hex("02 75 01 0F") + random.Noise(random.Pick(60)));
    }
    ExpectReadable();
}

TEST_F(RandomWrites, BracketsWithinBrackets) {
    MakeDevice("");
    std::string deep;
    for (int i = 0; i < 1400; ++i) {
        deep += "0E ";
    }
    EXPECT_EQ(Answer("02 75 01 0F 0C 04 40 00 01 19 7B 3E " + deep), "60 01 05");
    std::string closed;
    for (int i = 0; i < 700; ++i) {
        closed = "0E " + closed + "0F ";
    }
    EXPECT_EQ(Answer("02 75 01 0F 0C 04 40 00 01 19 7B 3E " + closed + "3F"), InvalidDataType);
}
