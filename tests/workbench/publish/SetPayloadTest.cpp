#include "SetPayload.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

#include "Snapshots.h"

using namespace test;
using namespace workbench;

namespace {

TEST(SetPayload, IsAnObjectWithValueIdAndTime) {
    SetPayload const payload =
        ReadSetPayload(R"( {"id":"a\"b","value":21.50,"time":"2024-03-15T12:34:56.789+01:00","more":[{}]} )");
    EXPECT_EQ(payload.mistake, "");
    EXPECT_EQ(payload.value, "21.50");
    EXPECT_EQ(payload.id, R"("a\"b")");
    EXPECT_EQ(payload.time, Noon);
}

TEST(SetPayload, IsAValueAlone) {
    std::map<std::string, std::string> const values = {
        {"21.5", "21.5"},
        {"-5", "-5"},
        {" 18446744073709551615\n", "18446744073709551615"},
        {"1e3", "1e3"},
        {"true", "true"},
        {R"("manual")", "manual"},
        {R"("")", ""},
        {"manual", "manual"},
        {"21.5 \xC2\xB0\x43", "21.5 \xC2\xB0\x43"},
        {"Mon-Fri 06:00 21.5, 20:00 17", "Mon-Fri 06:00 21.5, 20:00 17"},
        {"nullpunkt", "nullpunkt"},
        {"true north", "true north"},
        {"nan", "nan"}};
    for (auto const& [payload, value] : values) {
        EXPECT_EQ(ReadSetPayload(payload).mistake, "") << payload;
        EXPECT_EQ(ReadSetPayload(payload).value, value);
        EXPECT_EQ(ReadSetPayload(payload).id, "");
        EXPECT_FALSE(ReadSetPayload(payload).time);
    }
}

TEST(SetPayload, HasAnIdThatIsATextOrANumber) {
    EXPECT_EQ(ReadSetPayload(R"({"value":1,"id":12345678901234567890123})").id, "12345678901234567890123");
    EXPECT_EQ(ReadSetPayload(R"({"value":1,"id":"x\u007f\u0000"})").id, R"("x\u007f\u0000")");
    EXPECT_EQ(ReadSetPayload(R"({"value":1,"id":true})").mistake, "id is not a text or a number");
    EXPECT_EQ(ReadSetPayload(R"({"value":1,"id":")" + std::string(199, 'a') + "\"}").mistake,
              "id has 201 octets; allowed are 200");
    EXPECT_EQ(ReadSetPayload(R"({"id":7,"value":null})").id, "7");
}

TEST(SetPayload, StatesItsMistake) {
    std::map<std::string, std::string> const mistakes = {
        {"", R"(the payload is empty; expected is {"value":21.5}, or the value alone)"},
        {" \n", R"(the payload is empty; expected is {"value":21.5}, or the value alone)"},
        {"{}", R"(value is missing; expected is {"value":21.5}, or the value alone)"},
        {"[1]", R"(a list is not a value; expected is {"value":21.5}, or the value alone)"},
        {"null", "null is not a value that can be set"},
        {R"({"value":null})", "null is not a value that can be set"},
        {R"({"value":[1]})",
         R"(value is an object or a list; expected is {"value":21.5}, or the value alone)"},
        {R"({"value":1,"value":2})", "value is there twice; one is allowed"},
        {R"({"id":1,"id":2})", "id is there twice; one is allowed"},
        {R"({"value":1,"time":"noon"})",
         R"(time: "noon" is not a time; expected is a text such as "2024-03-15T12:34:56Z")"},
        {R"({"value":1,"time":5})",
         R"(time: "5" is not a time; expected is a text such as "2024-03-15T12:34:56Z")"},
        {R"({"value" 1})",
         "the payload is not JSON: octet 9: Missing a colon after a name of object member."},
        {"\"\xFF\"", "the payload is not JSON: octet 1: Invalid encoding in string."},
        {"a\xFF", "\"a\xEF\xBF\xBD\" is not a text in UTF-8"},
        {std::string("a\0", 2), R"("a\x00" is not a text in UTF-8)"}};
    for (auto const& [payload, mistake] : mistakes) {
        EXPECT_EQ(ReadSetPayload(payload).mistake, mistake) << payload;
    }
}

TEST(SetPayload, IsBoundedInLengthAndDepth) {
    EXPECT_EQ(ReadSetPayload(std::string(65536, 'a')).mistake, "");
    EXPECT_EQ(ReadSetPayload(std::string(65537, 'a')).mistake,
              "the payload has 65537 octets; allowed are 65536");
    EXPECT_EQ(ReadSetPayload(R"({"value":1,"x":[[[[[[[]]]]]]]})").mistake, "");
    EXPECT_NE(ReadSetPayload(R"({"value":1,"x":[[[[[[[[]]]]]]]]})").mistake.find("nested more than 8 deep"),
              std::string::npos);
    EXPECT_NE(ReadSetPayload(R"({"x":)" + std::string(60000, '[')).mistake, "");
}

TEST(SetPayload, OfRandomOctetsIsAValueOrAMistake) {
    std::mt19937 random(16);
    static constexpr char likely[] = R"({}[]":,0123e.-truefalsnvid\ )";
    for (int round = 0; round < 50000; ++round) {
        std::string text(random() % 40, ' ');
        for (char& octet : text) {
            octet = random() % 16 != 0 ? likely[random() % (sizeof likely - 1)] : static_cast<char>(random());
        }
        SetPayload const payload = ReadSetPayload(text);
        ASSERT_LE(payload.value.size(), text.size());
        ASSERT_LE(payload.id.size(), SetPayload::LongestId);
    }
}

}  // namespace
