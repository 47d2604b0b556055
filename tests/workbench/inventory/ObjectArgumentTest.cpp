#include "ObjectArgument.h"

#include <gtest/gtest.h>

#include <string>

namespace workbench {
namespace {

using standard::ObjectId;

std::string Mistake(std::string const& text) {
    try {
        ParseObject(text);
    } catch (ObjectMistake const& mistake) {
        return mistake.what();
    }
    return {};
}

TEST(ObjectArgument, IsATypeAndAnInstance) {
    for (char const* const text :
         {"analog-input 1", "analog-input,1", "analog-input:1", "Analog_Input, 1", "0,1", "0 1"}) {
        EXPECT_EQ((ObjectId{0, 1}), ParseObject(text)) << text;
    }
    EXPECT_EQ((ObjectId{1023, 4194302}), ParseObject("1023,4194302"));
    EXPECT_EQ((ObjectId{20, 7}), ParseObject("trend-log 7"));
}

TEST(ObjectArgument, SaysWhatIsWrong) {
    EXPECT_EQ(
        "\"analog-inptu\" is not an object type (did you mean \"analog-input\"?); allowed is a name such as "
        "analog-input, or a number from 0 to 1023",
        Mistake("analog-inptu 1"));
    EXPECT_EQ(
        "\"analog-input\" is not an object; allowed is a type and an instance from 0 to 4194302, such as "
        "\"analog-input 1\" or analog-input,1",
        Mistake("analog-input"));
}

TEST(ObjectArgument, RefusesWhatItIsNot) {
    for (char const* const text :
         {"", " ", "1", "1024,1", "0,4194303", "analog-input -1", "analog-input 1 2", "analog-input 1x",
          "object", "object type 128 1", "analog-input 99999999999"}) {
        EXPECT_NE("", Mistake(text)) << text;
    }
}

}  // namespace
}  // namespace workbench
