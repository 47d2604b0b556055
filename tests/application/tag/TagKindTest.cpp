#include "TagKind.h"

#include <gtest/gtest.h>

#include "Exceptions.h"

TEST(TagKind, IsThatOfTheClassWhateverTheTagSays) {
    Tag primitive(3, true, 6, 0);  // as if it opened a constructed tag
    ComplexTag constructed(3, false);
    EXPECT_EQ(AsPrimitive(&primitive), &primitive);
    EXPECT_EQ(AsComplex(&primitive), nullptr);
    EXPECT_EQ(AsComplex(&constructed), &constructed);
    EXPECT_EQ(AsPrimitive(&constructed), nullptr);
}

TEST(TagKind, IsKeptByACopy) {
    Tag const primitive(3, true, 1, 0);
    Tag copy = primitive;
    EXPECT_EQ(AsPrimitive(&copy), &copy);
}

TEST(TagKind, OfNullIsNull) {
    EXPECT_EQ(AsPrimitive(nullptr), nullptr);
    EXPECT_EQ(AsComplex(nullptr), nullptr);
}

TEST(TagKind, OfTheOtherKindOrOfNothingIsAFormatErrorWhereItIsRequired) {
    Tag primitive;
    ComplexTag constructed;
    EXPECT_EQ(&RequirePrimitive(&primitive), &primitive);
    EXPECT_EQ(&RequireComplex(&constructed), &constructed);
    EXPECT_THROW(RequirePrimitive(&constructed), FormatErrorException);
    EXPECT_THROW(RequirePrimitive(nullptr), FormatErrorException);
    EXPECT_THROW(RequireComplex(&primitive), FormatErrorException);
    EXPECT_THROW(RequireComplex(nullptr), FormatErrorException);
}
