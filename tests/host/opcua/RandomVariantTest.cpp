// Properties that hold for any value.

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstring>
#include <random>

#include "Variants.h"

using namespace test;

namespace {

using Generator = std::mt19937;

// All magnitudes are equally likely; limits are frequent.
unsigned long long AnyBits(Generator& random) {
    unsigned long long const bits = static_cast<unsigned long long>(random()) << 32 | random();
    switch (random() % 4) {
        case 0:
            return bits;
        case 1:
            return bits >> (random() % 64);
        case 2:
            return 0 - (bits >> (random() % 64));
        default:
            return (1ull << (random() % 64)) + random() % 3 - 1;
    }
}

double AnyDouble(Generator& random) {
    unsigned long long const bits = AnyBits(random);
    double value = 0;
    if (random() % 2 == 0) {
        return static_cast<double>(static_cast<long long>(bits)) / 4;
    }
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

std::string AnyText(Generator& random) {
    constexpr char letters[] = "0123456789+-.eETZ:INFNatrufls \t\xC3\x00";
    std::string text;
    for (auto length = random() % 24; length > 0; --length) {
        text += letters[random() % sizeof letters];
    }
    return text;
}

OpcUa_VariantHlp AnyScalar(Generator& random) {
    unsigned long long const bits = AnyBits(random);
    switch (random() % 15) {
        case 0:
            return Bool(bits % 2 != 0);
        case 1:
            return SByte(static_cast<signed char>(bits));
        case 2:
            return Byte(static_cast<unsigned char>(bits));
        case 3:
            return Int16(static_cast<short>(bits));
        case 4:
            return UInt16(static_cast<unsigned short>(bits));
        case 5:
            return Int32(static_cast<int>(bits));
        case 6:
            return UInt32(static_cast<unsigned int>(bits));
        case 7:
            return Int64(static_cast<long long>(bits));
        case 8:
            return UInt64(bits);
        case 9: {
            float value = 0;
            std::memcpy(&value, &bits, sizeof value);
            return Float(value);
        }
        case 10:
            return Double(AnyDouble(random));
        case 11:
            return Text(AnyText(random));
        case 12:
            return Time(static_cast<long long>(bits));
        case 13:
            return Bytes(AnyText(random));
        default:
            return Status(static_cast<OpcUa_StatusCode>(bits));
    }
}

OpcUa_VariantHlp AnyVariant(Generator& random) {
    OpcUa_VariantHlp value = random() % 20 == 0 ? Null() : AnyScalar(random);
    return random() % 4 == 0 ? DataValue(value, random(), random()) : value;
}

bool IsKnown(OpcUa_StatusCode status) {
    return status == OpcUa_BadTypeMismatch || status == OpcUa_BadOutOfRange || status == OpcUa_BadNoData;
}

}  // namespace

TEST(RandomVariants, ChangeTypeGivesTheTypeOrNullAndAReason) {
    Generator random(20240315);
    for (int round = 0; round < 10'000; ++round) {
        OpcUa_VariantHlp const original = AnyVariant(random);
        auto const type = static_cast<_OpcUa_BuiltInType>(random() % 27);
        OpcUa_VariantHlp value = original;
        OpcUa_StatusCode const status = value.ChangeType(type);
        if (status == OpcUa_Good) {
            ASSERT_EQ(value.GetType(), type) << Describe(original);
        } else {
            ASSERT_EQ(value.GetType(), OpcUaType_Null) << Describe(original);
            ASSERT_TRUE(IsKnown(status)) << status;
        }
    }
}

TEST(RandomVariants, GettersAgreeWithChangeType) {
    Generator random(7);
    for (int round = 0; round < 10'000; ++round) {
        OpcUa_VariantHlp const original = AnyVariant(random);
        OpcUa_VariantHlp value = original;
        long long number = 0;
        OpcUa_StatusCode const status = value.ChangeType(OpcUaType_Int64);
        ASSERT_EQ(original.GetInt64(number), status) << Describe(original);
        ASSERT_EQ(number, status == OpcUa_Good ? value.Value.Int64 : 0) << Describe(original);
    }
}

TEST(RandomVariants, AValueThatFitsBecomesTheNearestInteger) {
    Generator random(11);
    for (int round = 0; round < 10'000; ++round) {
        double const value = AnyDouble(random);
        int number = 0;
        if (Double(value).GetInt(number) == OpcUa_Good) {
            ASSERT_LE(std::fabs(number - value), 0.5) << value;
        } else {
            ASSERT_FALSE(value >= INT_MIN && value <= INT_MAX) << value;
        }
    }
}

TEST(RandomVariants, NumbersComeBackFromTheirTexts) {
    Generator random(13);
    for (int round = 0; round < 10'000; ++round) {
        OpcUa_VariantHlp const original = AnyScalar(random);
        OpcUa_VariantHlp value = original;
        if (value.ChangeType(OpcUaType_String) == OpcUa_Good && original.GetType() != OpcUaType_DateTime) {
            ASSERT_EQ(value.ChangeType(original.GetType()), OpcUa_Good) << Describe(original);
            ASSERT_EQ(value, original);
        }
    }
}

TEST(RandomVariants, CopiesAreEqualAndIndependent) {
    Generator random(17);
    for (int round = 0; round < 10'000; ++round) {
        OpcUa_VariantHlp original = AnyVariant(random);
        OpcUa_VariantHlp const copy = original;
        ASSERT_EQ(copy, original);
        original.ChangeType(OpcUaType_String);
        OpcUa_VariantHlp const again = copy;
        ASSERT_EQ(again, copy);
    }
}
