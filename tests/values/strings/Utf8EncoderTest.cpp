#include <gtest/gtest.h>

#include "Hex.h"
#include "Utf8Encoder.h"

TEST(Utf8Encoder, CopiesOctetsAndGivesNoString) {
    Utf8Encoder const encoder;
    EncoderBase const& base = encoder;
    EXPECT_EQ(base.GetBytes("A\xFF"), test::Hex("41 FF"));
    EXPECT_EQ(base.GetString(test::Hex("41")), "");
}
