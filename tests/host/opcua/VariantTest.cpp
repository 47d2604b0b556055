#include <gtest/gtest.h>

#include <cmath>

#include "Variants.h"

using namespace test;

TEST(Variant, StartsNull) {
    OpcUa_Variant plain;
    OpcUa_Variant_Initialize(&plain);
    EXPECT_EQ(plain.Datatype, OpcUaType_Null);
    EXPECT_EQ(OpcUa_VariantHlp().GetType(), OpcUaType_Null);
}

TEST(Variant, ClearFreesAndMakesNull) {
    OpcUa_VariantHlp value = DataValue(Text("inside"), 1, 2);
    OpcUa_Variant_Clear(&value);
    EXPECT_EQ(value.GetType(), OpcUaType_Null);
    OpcUa_Variant_Clear(&value);  // nothing left to free
}

TEST(Variant, SettersStoreTheirType) {
    OpcUa_VariantHlp value;
    value.SetBool(true);
    EXPECT_EQ(value, Bool(true));
    value.SetInt(-1);
    EXPECT_EQ(value, Int32(-1));
    value.SetUInt(0xFFFFFFFF);
    EXPECT_EQ(value, UInt32(0xFFFFFFFF));
    value.SetInt64(-1);
    EXPECT_EQ(value, Int64(-1));
    value.SetUInt64(1);
    EXPECT_EQ(value, UInt64(1));
    value.SetFloat(1.5f);
    EXPECT_EQ(value, Float(1.5f));
    value.SetDouble(1.5);
    EXPECT_EQ(value, Double(1.5));
    value.SetTime(12345);
    EXPECT_EQ(value, Time(12345));
    value.SetStatusCode(OpcUa_Bad);
    EXPECT_EQ(value, Status(OpcUa_Bad));
}

TEST(Variant, TextsKeepEmbeddedZeros) {
    OpcUa_VariantHlp value;
    value.SetUTF8String("a\0b", 3);
    std::string text;
    EXPECT_EQ(value.GetString(text), OpcUa_Good);
    EXPECT_EQ(text, std::string("a\0b", 3));
    EXPECT_EQ(value.Value.Octets.Data[3], 0);
    value.SetUTF8String("a\0b");
    EXPECT_EQ(value, Text("a"));
}

TEST(Variant, TextWithoutOctetsIsEmpty) {
    OpcUa_VariantHlp value;
    value.SetUTF8String(nullptr);
    EXPECT_EQ(value, Text(""));
    value.SetString("abc", -1);
    EXPECT_EQ(value, Text(""));
    value.SetByteString(nullptr, 5);
    EXPECT_EQ(value, Bytes(""));
}

TEST(Variant, TextCanBeSetFromItself) {
    OpcUa_VariantHlp value = Text("abcdef");
    value.SetString(value.Value.Octets.Data + 2, 3);
    EXPECT_EQ(value, Text("cde"));
}

TEST(Variant, TimeCanBeSetFromItself) {
    OpcUa_VariantHlp value = Time(99);
    value.SetTime(value.Value.DateTime);
    EXPECT_EQ(value, Time(99));
}

TEST(Variant, CopiesAreDeep) {
    OpcUa_VariantHlp const original = DataValue(Text("text"), 3, OpcUa_Bad);
    OpcUa_VariantHlp copy = original;
    EXPECT_EQ(copy, original);
    copy.Value.DataValue->Value.Value.Octets.Data[0] = 'T';
    EXPECT_NE(copy, original);
}

TEST(Variant, ACopyOfANullTextIsEmpty) {
    char octet = 'x';
    for (OpcUa_Octets const octets : {OpcUa_Octets{nullptr, -1}, {nullptr, 3}, {&octet, -1}}) {
        OpcUa_Variant source{};
        source.Datatype = OpcUaType_String;
        source.Value.Octets = octets;
        OpcUa_VariantHlp copy;
        OpcUa_VariantHlp::CopyVariants(&copy, &source);
        EXPECT_EQ(copy, Text(""));
    }
}

TEST(Variant, SurvivesAssignmentToItself) {
    OpcUa_VariantHlp value = Text("text");
    OpcUa_VariantHlp& same = value;
    value = same;
    EXPECT_EQ(value, Text("text"));
    value = std::move(same);
    EXPECT_EQ(value, Text("text"));
}

TEST(Variant, CopyVariantsTakesTheValueInsideItsTarget) {
    OpcUa_VariantHlp value = DataValue(Text("inside"), 3, OpcUa_Bad);
    OpcUa_VariantHlp::CopyVariants(&value, &value.Value.DataValue->Value);
    EXPECT_EQ(value, Text("inside"));
}

TEST(Variant, MovingLeavesNull) {
    OpcUa_VariantHlp from = Text("text");
    OpcUa_VariantHlp const to = std::move(from);
    EXPECT_EQ(to, Text("text"));
    EXPECT_EQ(from.GetType(), OpcUaType_Null);
}

TEST(Variant, SetDataValueTakesOwnershipOfTheValue) {
    OpcUa_VariantHlp inside = Text("text");
    OpcUa_VariantHlp value = Int32(1);
    value.SetDataValue(inside, 42, OpcUa_Bad);
    EXPECT_EQ(inside.GetType(), OpcUaType_Null);
    ASSERT_EQ(value.GetType(), OpcUaType_DataValue);
    EXPECT_TRUE(value.Value.DataValue->Value == Text("text"));
    EXPECT_EQ(value.Value.DataValue->SourceTimestamp, 42);
    EXPECT_EQ(value.Value.DataValue->StatusCode, OpcUa_Bad);
}

TEST(Variant, SetDataValueOfItselfWraps) {
    OpcUa_VariantHlp value = Text("text");
    value.SetDataValue(value, 1, 2);
    EXPECT_EQ(value, DataValue(Text("text"), 1, 2));
}

TEST(Variant, DataValuesDoNotNest) {
    OpcUa_VariantHlp inside = DataValue(Int32(5), 1, 2);
    OpcUa_VariantHlp value;
    value.SetDataValue(inside, 3, 4);
    EXPECT_EQ(value, DataValue(Int32(5), 3, 4));
    value.SetDataValue(value, 5, 6);
    EXPECT_EQ(value, DataValue(Int32(5), 5, 6));
}

TEST(Variant, NormalizeGivesTheValueInside) {
    OpcUa_VariantHlp value = DataValue(Text("text"), 0x123456789A, OpcUa_Bad);
    unsigned int status = 0;
    _OpcUa_DateTime time{};
    value.Normalize(&status, &time);
    EXPECT_EQ(value, Text("text"));
    EXPECT_EQ(status, OpcUa_Bad);
    EXPECT_EQ(time.dwLowDateTime, 0x3456789Au);
    EXPECT_EQ(time.dwHighDateTime, 0x12u);
}

TEST(Variant, NormalizeLeavesOtherValuesAlone) {
    OpcUa_VariantHlp value = Int32(5);
    unsigned int status = 77;
    value.Normalize(&status, nullptr);
    EXPECT_EQ(value, Int32(5));
    EXPECT_EQ(status, 77u);
}

TEST(Variant, GettersConvert) {
    int number = 0;
    EXPECT_EQ(Text("12").GetInt(number), OpcUa_Good);
    EXPECT_EQ(number, 12);
    unsigned int word = 0;
    EXPECT_EQ(Byte(200).GetUInt(word), OpcUa_Good);
    EXPECT_EQ(word, 200u);
    unsigned long long wide = 0;
    EXPECT_EQ(Bool(true).GetUInt64(wide), OpcUa_Good);
    EXPECT_EQ(wide, 1u);
    double real = 0;
    EXPECT_EQ(Int32(-3).GetDouble(real), OpcUa_Good);
    EXPECT_EQ(real, -3.0);
    std::string text;
    EXPECT_EQ(Double(2.5).GetString(text), OpcUa_Good);
    EXPECT_EQ(text, "2.5");
}

TEST(Variant, GettersReadThroughADataValue) {
    long long number = 0;
    OpcUa_VariantHlp const value = DataValue(UInt16(7), 1, OpcUa_Bad);
    EXPECT_EQ(value.GetInt64(number), OpcUa_Good);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(value.GetType(), OpcUaType_DataValue);
}

TEST(Variant, AFailedGetterLeavesItsArgumentAlone) {
    bool flag = true;
    EXPECT_EQ(Text("maybe").GetBool(flag), OpcUa_BadTypeMismatch);
    EXPECT_TRUE(flag);
    int number = 5;
    EXPECT_EQ(Double(1e10).GetInt(number), OpcUa_BadOutOfRange);
    EXPECT_EQ(Null().GetInt(number), OpcUa_BadNoData);
    EXPECT_EQ(number, 5);
    std::string text = "before";
    EXPECT_EQ(Status(1).GetString(text), OpcUa_BadTypeMismatch);
    EXPECT_EQ(text, "before");
}

TEST(Variant, GetTimeIsUtcOnly) {
    long long time = 0;
    EXPECT_EQ(Time(99).GetTime(time, 1), OpcUa_Good);
    EXPECT_EQ(time, 99);
    for (int const kind : {0, 2, -1}) {
        EXPECT_EQ(Time(100).GetTime(time, kind), OpcUa_BadTypeMismatch);
    }
    EXPECT_EQ(Int64(100).GetTime(time, 1), OpcUa_BadTypeMismatch);
    EXPECT_EQ(time, 99);
}

TEST(Variant, EqualityComparesTypeAndValue) {
    EXPECT_NE(Int32(1), UInt32(1));
    EXPECT_NE(SByte(1), SByte(2));
    EXPECT_NE(Int64(0x100000001), Int64(1));
    EXPECT_EQ(Double(std::nan("")), Double(std::nan("")));
    EXPECT_EQ(Double(0.0), Double(-0.0));
    EXPECT_NE(Text("a"), Text("ab"));
    EXPECT_NE(Text("a"), Bytes("a"));
    EXPECT_NE(DataValue(Int32(1), 1, 0), DataValue(Int32(1), 2, 0));
    EXPECT_NE(DataValue(Int32(1), 1, 0), DataValue(Int32(1), 1, 1));
    EXPECT_EQ(Null(), Null());
}
