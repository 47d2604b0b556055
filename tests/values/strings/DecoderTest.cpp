#include <gtest/gtest.h>

#include "Decoder.h"

TEST(Decoder, ReturnsTheOctetAtThePointer) {
    char octets[] = {'a', 'b'};
    EXPECT_EQ(Decoder::GetValue(octets + 1), 'b');
}
