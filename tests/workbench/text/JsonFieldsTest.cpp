#include "JsonFields.h"

#include <gtest/gtest.h>

namespace workbench {
namespace {

std::string LineOf(std::string const& text) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    WriteText(writer, text);
    return JsonLine(buffer);
}

TEST(JsonFields, ALineHasNoControlCharacterOfAText) {
    EXPECT_EQ(LineOf("a\x1B[2J\n\x7F\xC2\x80\xC2\x9B\xC2\x9F"),
              "\"a\\u001B[2J\\n\\u007f\\u0080\\u009b\\u009f\"\n");
}

TEST(JsonFields, OtherCharactersStayAsTheyAre) {
    EXPECT_EQ(LineOf("\xC2\xA0\xC2\xB0"
                     "C \xE2\x82\x80"),
              "\"\xC2\xA0\xC2\xB0"
              "C \xE2\x82\x80\"\n");
}

TEST(JsonFields, InvalidOctetsAreReplaced) {
    EXPECT_EQ(LineOf("\xC2"), "\"\xEF\xBF\xBD\"\n");
}

}  // namespace
}  // namespace workbench
