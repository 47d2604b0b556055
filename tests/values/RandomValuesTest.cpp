#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <stdexcept>

#include "ExceptionScheduleValue.h"
#include "Exceptions.h"
#include "SupportInformation.h"
#include "ValueTags.h"
#include "WeeklyScheduleValue.h"

// Unusual tags and texts from fixed seeds: each is refused with one of the known exceptions or gives a
// consistent value.

namespace {

using test::operator+;

constexpr int Rounds = 10000;
// Texts are typed by people, and a text costs little time.
constexpr int TextRounds = 100000;

class Chance {
public:
    explicit Chance(unsigned seed) : engine(seed) {}

    // A number from 0 to `limit` - 1.
    int Below(int limit) { return static_cast<int>(engine() % static_cast<unsigned>(limit)); }
    // Whether something differs from the message of a correct device.
    bool Fault() { return Below(100) < faultsInHundred; }
    void SetFaultsInHundred(int faults) { faultsInHundred = faults; }

private:
    int faultsInHundred = 0;
    std::mt19937 engine;
};

std::unique_ptr<Tag> RandomPrimitive(Chance& chance, int number) {
    // The four octets of a date, a time or a real.
    test::Octets data(static_cast<std::size_t>(chance.Fault() ? chance.Below(12) : 4));
    for (char& octet : data) {
        octet = static_cast<char>(chance.Below(4) != 0 ? chance.Below(32) : chance.Below(256));
    }
    auto tag = std::make_unique<Tag>(Tag::FromOctets(static_cast<char>(number), chance.Below(4) == 0, data));
    if (number == 1) {
        tag->SetValLenType(static_cast<char>(chance.Below(8)));
    }
    return tag;
}

// A sequence of tags, often of times and values, sometimes with a missing tag or nested ones.
void FillRandomly(ComplexTag& parent, Chance& chance, int depth) {
    for (int count = chance.Below(4) * 2 + (chance.Fault() ? 1 : 0); count > 0; --count) {
        bool const isTime = count % 2 == 0 && !chance.Fault();
        if (depth > 0 && chance.Fault()) {
            auto nested = std::make_unique<ComplexTag>(static_cast<char>(chance.Below(5)), true);
            FillRandomly(*nested, chance, depth - 1);
            parent.AddSubTag(std::move(nested));
        } else {
            parent.AddSubTag(RandomPrimitive(chance, isTime ? 11 : chance.Below(16)));
        }
    }
}

std::unique_ptr<ComplexTag> RandomList(Chance& chance) {
    auto list = std::make_unique<ComplexTag>(static_cast<char>(chance.Below(3)), true);
    FillRandomly(*list, chance, 2);
    return list;
}

// A wrapper with one value, any sequence of tags, seven days or some special events.
std::unique_ptr<ComplexTag> RandomWrapper(Chance& chance) {
    auto wrapper = std::make_unique<ComplexTag>(static_cast<char>(3), true);
    chance.SetFaultsInHundred(chance.Below(3) * 10);
    switch (chance.Below(4)) {
        case 0:
            wrapper->AddSubTag(RandomPrimitive(chance, chance.Below(13)));
            break;
        case 1:
            FillRandomly(*wrapper, chance, 3);
            break;
        case 2:
            for (int day = 0; day < 7; ++day) {
                wrapper->AddSubTag(RandomList(chance));
            }
            break;
        default:
            for (int event = chance.Below(4); event > 0; --event) {
                wrapper->AddSubTag(chance.Below(2) == 0 ? std::unique_ptr<TagBase>(RandomList(chance))
                                                        : RandomPrimitive(chance, 1));
                wrapper->AddSubTag(RandomList(chance));
                wrapper->AddSubTag(RandomPrimitive(chance, 3));
            }
    }
    return wrapper;
}

// The value, or null if the parser threw an exception that its callers handle.
std::unique_ptr<CPropertyValue> Parsed(PropertyValueParser const& parser, ComplexTag& wrapper) {
    try {
        return parser.Parse(wrapper);
    } catch (ParseException const&) {
        return nullptr;
    } catch (ArgumentOutOfRangeException const&) {
        return nullptr;
    }
}

std::vector<std::unique_ptr<TagBase>> WrittenTags(CPropertyValue const& value) {
    try {
        return value.ToApplicationComplexTags();
    } catch (std::invalid_argument const& failure) {
        EXPECT_TRUE(failure.what() == std::string("stoi") || failure.what() == std::string("stod"));
    } catch (std::out_of_range const& failure) {
        EXPECT_TRUE(failure.what() == std::string("stoi") || failure.what() == std::string("stod"));
    } catch (std::runtime_error const& failure) {
        static std::array<std::string, 6> const reasons = {
            "Number days != 7",
            "Number not odd",
            "ExceptionSchedule value = 0",
            "ExceptionSchedule Date - len != 9",
            "Date - len != 9",
            "Time - len != 8",
        };
        EXPECT_NE(std::find(reasons.begin(), reasons.end(), failure.what()), reasons.end()) << failure.what();
    }
    return {};
}

// A text that follows the grammar except for a few characters.
std::string RandomText(Chance& chance) {
    static std::array<std::string, 6> const samples = {
        "08000000,4,9,21.500000,17300000,4,9,18.000000;07000000,1,1,1;;;;;;",
        "12000000,2,3,45d;12000000,3,2,-7;12000000,6,4,0aff;12000000,7,5,hello;12000000,8,4,1010;;;",
        "12000000,10,9,315032024,12000000,11,8,06300000;12000000,12,0,1234;12000000,0,1,0;;;;;",
        "0,315032024,16,08000000,1,1,1,17000000,1,1,0;3,7,10,08000000,4,9,20.000000;",
        "2,**12,5,12000000,,13000000,9,1,1;1,101012024,231122024,3,12000000,5,8,1.000000;",
        "9;3,7,10;",
    };
    static std::string const characters("0123456789;,,,;*.-+ adefnx\0\xFF", 28);
    std::string text = samples[static_cast<std::size_t>(chance.Below(6))];
    for (int changes = chance.Below(4); changes > 0; --changes) {
        auto const position = static_cast<std::size_t>(chance.Below(static_cast<int>(text.size()) + 1));
        char const character = characters[static_cast<std::size_t>(chance.Below(28))];
        if (chance.Below(2) == 0) {
            text.insert(position, 1, character);
        } else {
            text.replace(position, static_cast<std::size_t>(chance.Below(3)), 1, character);
        }
    }
    return text;
}

}  // namespace

TEST(RandomTags, GiveAValueThatIsReadBackAsItselfOrAreRefused) {
    Chance chance(20240315);
    std::array<int, 33> parsed{};
    for (int round = 0; round < Rounds; ++round) {
        std::unique_ptr<ComplexTag> const wrapper = RandomWrapper(chance);
        for (int type = 0; type <= 31; ++type) {
            PropertyValueParser const* const parser =
                SupportInformation::GetInstance()->GetPropertyParser(static_cast<PropertyTypeEnum>(type));
            auto const value = parser == nullptr ? nullptr : Parsed(*parser, *wrapper);
            if (value == nullptr) {
                continue;
            }
            ++parsed[static_cast<std::size_t>(type)];
            auto const again = parser->Parse(*test::Wrap(test::WrittenOctets(*value)));
            ASSERT_EQ(value->Compare(*again), 0) << "type " << type << ", round " << round;
            ASSERT_EQ(test::Written(*value), test::Written(*again));
        }
    }
    for (int const type : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 12}) {
        EXPECT_GT(parsed[static_cast<std::size_t>(type)], 20) << "type " << type << " was tried too rarely";
    }
}

TEST(RandomTags, GiveAScheduleTextOrAreRefused) {
    Chance chance(20240316);
    WeeklyScheduleValueParser const weekly;
    ExceptionScheduleValueParser const exception;
    int texts = 0;
    for (int round = 0; round < Rounds; ++round) {
        std::unique_ptr<ComplexTag> const wrapper = RandomWrapper(chance);
        if (auto const value = Parsed(weekly, *wrapper)) {
            std::string const text = dynamic_cast<CharacterStringValue&>(*value).GetValue();
            ASSERT_GE(std::count(text.begin(), text.end(), ';'), 7);
            ASSERT_EQ(text.back(), ';');
            WrittenTags(WeeklyScheduleValue(text, EncodingTypeEnum::Utf8));
            ++texts;
        }
        if (auto const value = Parsed(exception, *wrapper)) {
            std::string const text = dynamic_cast<CharacterStringValue&>(*value).GetValue();
            ASSERT_TRUE(text.empty() || wrapper->size() % 3 == 0);
            WrittenTags(ExceptionScheduleValue(text, EncodingTypeEnum::Utf8));
            texts += text.empty() ? 0 : 1;
        }
    }
    EXPECT_GT(texts, 500);
}

TEST(RandomTexts, MakeAWeekThatCanBeReadOrAreRefused) {
    Chance chance(20240317);
    int weeks = 0;
    for (int round = 0; round < TextRounds; ++round) {
        std::string const text = RandomText(chance);
        auto const days = WrittenTags(WeeklyScheduleValue(text, EncodingTypeEnum::Utf8));
        if (days.empty()) {
            continue;
        }
        ASSERT_EQ(days.size(), 7U) << text;
        test::Octets octets;
        for (std::unique_ptr<TagBase> const& day : days) {
            octets = octets + day->GetBytes();
        }
        ASSERT_NO_THROW(test::ParseOctets<WeeklyScheduleValueParser>(octets)) << text;
        ++weeks;
    }
    EXPECT_GT(weeks, 10000);
}

TEST(RandomTexts, MakeEventsThatCanBeReadOrAreRefused) {
    Chance chance(20240318);
    int schedules = 0;
    for (int round = 0; round < TextRounds; ++round) {
        std::string const text = RandomText(chance);
        test::Octets octets;
        for (std::unique_ptr<TagBase> const& tag :
             WrittenTags(ExceptionScheduleValue(text, EncodingTypeEnum::Utf8))) {
            octets = octets + tag->GetBytes();
        }
        // The priorities of unknown forms shift the events, which the parser may refuse.
        auto const value = Parsed(ExceptionScheduleValueParser(), *test::Wrap(octets));
        schedules += value != nullptr && !octets.empty() ? 1 : 0;
    }
    EXPECT_GT(schedules, 10000);
}
