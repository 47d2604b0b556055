#include "TopicLevel.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

#include "Printable.h"
#include "Utf8.h"

using namespace workbench;

namespace {

// What MQTT and brokers want of a level, written apart from what makes one.
::testing::AssertionResult IsLevel(std::string const& level) {
    if (level.empty() || level.size() > LongestLevel || level.front() == '$') {
        return ::testing::AssertionFailure() << "length or beginning of " << tools::Quoted(level);
    }
    for (std::size_t i = 0; i < level.size(); i += tools::CharacterAt(level, i).length) {
        long const code = tools::CharacterAt(level, i).codePoint;
        bool const isControl = code < 0x20 || (code >= 0x7F && code <= 0x9F);
        bool const isNoCharacter = (code >= 0xFDD0 && code <= 0xFDEF) || code % 0x10000 >= 0xFFFE;
        if (isControl || isNoCharacter || code == '+' || code == '#' || code == '/') {
            return ::testing::AssertionFailure() << "octet " << i << " of " << tools::Quoted(level);
        }
    }
    return ::testing::AssertionSuccess();
}

TEST(TopicLevel, OfAnOrdinaryNameIsTheName) {
    for (char const* name : {"T", "AHU 1", "Zulufttemperatur Süd", "a$b", "a.b=c", "\xF0\x9F\x8C\xA1"}) {
        EXPECT_EQ(EscapedLevel(name), name);
    }
}

TEST(TopicLevel, HasEscapesForWhatATopicMustNotHave) {
    std::map<std::string, std::string> const levels = {
        {"a/b", "a%2Fb"},
        {"a+b#c", "a%2Bb%23c"},
        {"50%~", "50%25%7E"},
        {"$state", "%24state"},
        {std::string("a\0b", 3), "a%00b"},
        {"\t\x7F", "%09%7F"},
        {"\xC2\x85", "%C2%85"},         // a control character of C1
        {"\xEF\xBF\xBE", "%EF%BF%BE"},  // U+FFFE
        {"\xFF\xC3", "%FF%C3"},         // not UTF-8
        {"\xED\xA0\x80", "%ED%A0%80"},  // half of a pair of UTF-16
        {"\xC3\xBC\xFC", "\xC3\xBC%FC"},
        {"", "%"}};
    for (auto const& [name, level] : levels) {
        EXPECT_EQ(EscapedLevel(name), level);
        EXPECT_TRUE(IsLevel(level));
    }
}

TEST(TopicLevel, OfALongNameIsItsBeginningAndAHash) {
    EXPECT_EQ(EscapedLevel(std::string(200, 'a')), std::string(200, 'a'));
    // The hash is FNV-1a with 64 bits.
    EXPECT_EQ(EscapedLevel(std::string(201, 'a')), std::string(150, 'a') + "~9A253EDA0CE95884");
    std::string const first = EscapedLevel(std::string(64 << 10, 'a'));
    EXPECT_EQ(first.size(), 167U);
    EXPECT_NE(first, EscapedLevel(std::string(64 << 10, 'a') + "b"));
}

TEST(TopicLevel, OfALongNameIsCutBetweenCharactersAndEscapes) {
    std::string const umlauts = std::string(149, 'a') + std::string(50, '\xC3') + "\xC3\xBC";
    EXPECT_EQ(EscapedLevel(umlauts).substr(0, 150), std::string(149, 'a') + "~");
    std::string const slashes = EscapedLevel(std::string(149, 'a') + std::string(60, '/'));
    EXPECT_EQ(slashes.substr(0, 150), std::string(149, 'a') + "~");
    std::string const whole = EscapedLevel(std::string(147, 'a') + std::string(60, '/'));
    EXPECT_EQ(whole.substr(0, 151), std::string(147, 'a') + "%2F~");
    for (std::string const& level : {EscapedLevel(umlauts), slashes, whole}) {
        EXPECT_TRUE(IsLevel(level));
    }
}

TEST(TopicLevel, OfRandomNamesAreLevelsAndDiffer) {
    std::mt19937 random(16);
    static constexpr char likely[] = "/+#%~$ab\x01\x7F\xC3\xBC\xEF\xBF\xBE";
    std::map<std::string, std::string> names;
    for (int round = 0; round < 20000; ++round) {
        std::string name(random() % (round % 100 == 0 ? 300 : 4), ' ');
        for (char& octet : name) {
            octet = random() % 2 == 0 ? likely[random() % (sizeof likely - 1)] : static_cast<char>(random());
        }
        std::string const level = EscapedLevel(name);
        ASSERT_TRUE(IsLevel(level));
        auto const [known, isNew] = names.emplace(level, name);
        ASSERT_TRUE(isNew || known->second == name) << tools::Quoted(name);
    }
}

TEST(TopicPrefix, OfOrdinaryLevelsIsAccepted) {
    for (char const* prefix : {"dorvel/pc-plant", "a", "/plant", "a//b", "Gebäude 1/AHU", "a$b"}) {
        EXPECT_EQ(PrefixMistake(prefix), "");
    }
    EXPECT_EQ(PrefixMistake("a/").rfind("\"a/\" cannot begin topics", 0), 0U);
    EXPECT_EQ(PrefixMistake(std::string(512, 'a')), "");
}

TEST(TopicPrefix, ThatBrokersRefuseIsAMistake) {
    EXPECT_EQ(PrefixMistake("plant/+"),
              R"("plant/+" has "+" in it; allowed is UTF-8 without +, # and control characters)");
    EXPECT_NE(PrefixMistake("$SYS/plant").find("cannot begin topics"), std::string::npos);
    EXPECT_NE(PrefixMistake(std::string(513, 'a')).find("has 513 octets; allowed are at most 512"),
              std::string::npos);
    for (std::string const& prefix :
         {std::string(), std::string("a/"), std::string("#"), std::string("a\0", 2), std::string("\xFF"),
          std::string("a\nb"), std::string("\xC2\x80")}) {
        EXPECT_NE(PrefixMistake(prefix), "");
    }
}

}  // namespace
