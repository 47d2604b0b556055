#include "Exceptions.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

template <typename Exception>
void ExpectThreeConstructors(char const* defaultText) {
    EXPECT_STREQ(Exception().what(), defaultText);
    EXPECT_STREQ(Exception("own words").what(), "own words");
    EXPECT_STREQ(Exception(std::string("a string")).what(), "a string");
}

template <typename Derived, typename Base>
constexpr bool IsA = std::is_base_of<Base, Derived>::value;

}  // namespace

TEST(Exceptions, DefaultTextsAreTheSystemsVocabulary) {
    ExpectThreeConstructors<TimeOutException>("timout");
    ExpectThreeConstructors<ParseException>("parse error");
    ExpectThreeConstructors<WrongLengthException>("message size error");
    ExpectThreeConstructors<FormatErrorException>("packet format not expected");
    ExpectThreeConstructors<MessageOversizeException>("message size to big");
}

TEST(Exceptions, OnlyLengthAndFormatErrorsAreParseErrors) {
    EXPECT_TRUE((IsA<WrongLengthException, ParseException>));
    EXPECT_TRUE((IsA<FormatErrorException, ParseException>));
    EXPECT_FALSE((IsA<TimeOutException, ParseException>));
    EXPECT_FALSE((IsA<MessageOversizeException, ParseException>));
    EXPECT_FALSE((IsA<FormatErrorException, WrongLengthException>));
    EXPECT_TRUE((IsA<TimeOutException, std::runtime_error>));
    EXPECT_TRUE((IsA<ParseException, std::runtime_error>));
    EXPECT_TRUE((IsA<MessageOversizeException, std::runtime_error>));
}

TEST(Exceptions, ArgumentOutOfRangeIsNotABacnetError) {
    EXPECT_FALSE((IsA<ArgumentOutOfRangeException, std::exception>));
    EXPECT_FALSE((IsA<ArgumentOutOfRangeException, ExceptionBase>));
    EXPECT_TRUE(std::is_empty<ArgumentOutOfRangeException>::value);
}

TEST(ExceptionBase, DropsTheTextItIsBuiltFrom) {
    EXPECT_EQ(ExceptionBase(std::string("not empty")).text, "");
    EXPECT_EQ(ExceptionBase().text, "");
    EXPECT_FALSE(std::is_polymorphic<ExceptionBase>::value);
    EXPECT_FALSE((IsA<ParseException, ExceptionBase>));
}
