#include "Suggestion.h"

#include <gtest/gtest.h>

#include <random>

using namespace tools;

namespace {

std::vector<std::string> const Colours = {"red", "green", "blue", "present-value"};

TEST(Suggestion, FindsOneWrongMissingAddedOrSwappedLetter) {
    EXPECT_EQ(Nearest("grean", Colours), "green");
    EXPECT_EQ(Nearest("gren", Colours), "green");
    EXPECT_EQ(Nearest("greeen", Colours), "green");
    EXPECT_EQ(Nearest("bleu", Colours), "blue");
    EXPECT_EQ(Nearest("Presnet_value", Colours), "present-value");
}

TEST(Suggestion, LetterCaseDoesNotMatter) {
    EXPECT_EQ(Nearest("GREEN", Colours), "green");
}

TEST(Suggestion, IsEmptyWhenNothingIsNear) {
    EXPECT_EQ(Nearest("yellow", Colours), "");
    EXPECT_EQ(Nearest("", Colours), "");
    EXPECT_EQ(Nearest("x", Colours), "");
    EXPECT_EQ(Nearest(std::string(1000, 'r'), Colours), "");
    EXPECT_EQ(DidYouMean("yellow", Colours), "");
}

TEST(Suggestion, IsAQuestionInAMessage) {
    EXPECT_EQ(DidYouMean("rde", Colours), " (did you mean \"red\"?)");
}

// Found by fuzzing the project loader: the name of a variable may have a control character.
TEST(Suggestion, StaysOnItsLine) {
    EXPECT_EQ(DidYouMean("A.T", {"A.\x14"}), " (did you mean \"A.\\x14\"?)");
    EXPECT_EQ(Suggest("a\nb"), " (did you mean \"a\\nb\"?)");
}

TEST(Suggestion, EveryCandidateIsNearestToItself) {
    std::mt19937 random(7);
    for (int i = 0; i < 10000; ++i) {
        std::string name(1 + random() % 20, ' ');
        for (char& c : name) {
            c = static_cast<char>(random());
        }
        EXPECT_EQ(Nearest(name, {"other name that is far away", name}), name);
    }
}

}  // namespace
