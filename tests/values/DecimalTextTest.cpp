#include <gtest/gtest.h>

#include <locale.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <stdexcept>

#include "DecimalText.h"
#include "ValueTags.h"

namespace {

// Sets a decimal comma for the whole process, if the build could make a locale with one.
class DecimalComma {
public:
    DecimalComma() {
        setenv("LOCPATH", COMMA_LOCALE_FOLDER, 1);
        isSet = setlocale(LC_NUMERIC, "de_DE.UTF-8") != nullptr;
    }
    ~DecimalComma() {
        setlocale(LC_NUMERIC, "C");
        unsetenv("LOCPATH");
    }

    bool IsSet() const { return isSet; }

private:
    bool isSet = false;
};

std::string Printed(double number) {
    std::array<char, 400> text{};
    std::snprintf(text.data(), text.size(), "%f", number);
    return text.data();
}

template <class Exception>
std::string NumberFailure(char const* text) {
    return test::Failure<Exception>([text] { DecimalNumber(text); });
}

}  // namespace

TEST(DecimalText, HasSixDecimals) {
    EXPECT_EQ(DecimalText(21.5), "21.500000");
    EXPECT_EQ(DecimalText(-0.0), "-0.000000");
    EXPECT_EQ(DecimalText(0.0000005), "0.000000");
    EXPECT_EQ(DecimalText(1.9999996), "2.000000");
    EXPECT_EQ(DecimalText(INFINITY), "inf");
    EXPECT_EQ(DecimalText(-INFINITY), "-inf");
    EXPECT_EQ(DecimalText(NAN), "nan");
    EXPECT_EQ(DecimalText(std::copysign(NAN, -1.0)), "-nan");
}

TEST(DecimalText, HasEveryDigitOfTheLargestAndSmallestNumbers) {
    for (double const number :
         {-std::numeric_limits<double>::max(), std::numeric_limits<double>::max(),
          -std::numeric_limits<double>::denorm_min(), 0.0000005, 0.0000015, 0.0000025}) {
        EXPECT_EQ(DecimalText(number), Printed(number));
    }
}

TEST(DecimalText, IsThatOfPrintfForAnyPattern) {
    std::mt19937_64 patterns(20240319);
    for (int round = 0; round < 10000; ++round) {
        std::uint64_t const pattern = patterns();
        double number = 0;
        std::memcpy(&number, &pattern, sizeof number);
        ASSERT_EQ(DecimalText(number), Printed(number)) << pattern;
    }
}

TEST(DecimalNumber, IsTheNumberThatTheTextStartsWith) {
    EXPECT_EQ(DecimalNumber("21.500000"), 21.5);
    EXPECT_EQ(DecimalNumber(" +1e3x"), 1000.0);
    EXPECT_EQ(DecimalNumber("0x10"), 16.0);
    EXPECT_EQ(DecimalNumber("-inf"), -INFINITY);
    EXPECT_TRUE(std::isnan(DecimalNumber("nan")));
}

TEST(DecimalNumber, FailsForATextWithoutANumberAndForOneThatIsTooLarge) {
    EXPECT_EQ(NumberFailure<std::invalid_argument>(""), "stod");
    EXPECT_EQ(NumberFailure<std::invalid_argument>("x1"), "stod");
    EXPECT_EQ(NumberFailure<std::out_of_range>("1e999"), "stod");
}

TEST(DecimalText, HasADecimalPointAlsoIfTheHostHasADecimalComma) {
    DecimalComma const comma;
    if (!comma.IsSet()) {
        GTEST_SKIP() << "no locale with a decimal comma is installed";
    }
    ASSERT_EQ(Printed(21.5), "21,500000");
    EXPECT_EQ(DecimalText(21.5), "21.500000");
    EXPECT_EQ(DecimalNumber("21.5"), 21.5);
    EXPECT_EQ(NumberFailure<std::invalid_argument>("x"), "stod");
    // The host's numbers do not change.
    EXPECT_EQ(Printed(21.5), "21,500000");
}
