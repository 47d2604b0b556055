// ChangeType against the conversion rules of OPC 10000-4.

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <limits>
#include <vector>

#include "Variants.h"

using namespace test;

namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr float InfinityF = std::numeric_limits<float>::infinity();
double const NaN = std::nan("");

struct Row {
    OpcUa_VariantHlp from;
    OpcUa_VariantHlp to;  // null: no conversion
    _OpcUa_BuiltInType type;
    OpcUa_StatusCode status;
};

Row Gives(OpcUa_VariantHlp from, OpcUa_VariantHlp const& to) {
    return {std::move(from), to, to.GetType(), OpcUa_Good};
}
Row OutOfRange(OpcUa_VariantHlp from, _OpcUa_BuiltInType type) {
    return {std::move(from), Null(), type, OpcUa_BadOutOfRange};
}
Row Mismatch(OpcUa_VariantHlp from, _OpcUa_BuiltInType type) {
    return {std::move(from), Null(), type, OpcUa_BadTypeMismatch};
}

void Check(std::vector<Row> const& rows) {
    for (Row const& row : rows) {
        OpcUa_VariantHlp value = row.from;
        EXPECT_EQ(value.ChangeType(row.type), row.status) << Describe(row.from) << " to " << row.type;
        EXPECT_TRUE(value == row.to) << Describe(row.from) << " to " << row.type << " gives "
                                     << Describe(value);
    }
}

std::vector<OpcUa_VariantHlp> OnesOfAllNumbers() {
    return {Bool(true), SByte(1), Byte(1),   Int16(1),    UInt16(1),  Int32(1),
            UInt32(1),  Int64(1), UInt64(1), Float(1.0f), Double(1.0)};
}

}  // namespace

TEST(Conversion, OneIsOneInEveryNumericType) {
    for (auto const& from : OnesOfAllNumbers()) {
        for (auto const& to : OnesOfAllNumbers()) {
            Check({Gives(from, to)});
        }
    }
}

TEST(Conversion, TimesAndByteStringsOnlyBecomeTexts) {
    for (auto const& number : OnesOfAllNumbers()) {
        Check({Mismatch(Time(1), number.GetType()), Mismatch(Bytes("1"), number.GetType()),
               Mismatch(number, OpcUaType_DateTime), Mismatch(number, OpcUaType_ByteString)});
    }
    Check({Mismatch(Time(1), OpcUaType_ByteString), Mismatch(Bytes("1"), OpcUaType_DateTime),
           Mismatch(Time(1), OpcUaType_StatusCode), Mismatch(Status(1), OpcUaType_DateTime),
           Mismatch(Bytes("1"), OpcUaType_StatusCode), Mismatch(Status(1), OpcUaType_ByteString)});
}

TEST(Conversion, ValuesDoNotConvertToTypesThatAreNotStored) {
    for (auto const type : {OpcUaType_Null, OpcUaType_Guid, OpcUaType_XmlElement, OpcUaType_NodeId,
                            OpcUaType_Variant, OpcUaType_DiagnosticInfo, static_cast<_OpcUa_BuiltInType>(-1),
                            static_cast<_OpcUa_BuiltInType>(200)}) {
        Check({Mismatch(Int32(1), type)});
    }
}

TEST(Conversion, NullStaysNullWithoutData) {
    for (int type = 0; type <= 25; ++type) {
        Check({{Null(), Null(), static_cast<_OpcUa_BuiltInType>(type), OpcUa_BadNoData}});
    }
}

TEST(Conversion, LimitsOfIntegersFit) {
    Check({Gives(Int32(-128), SByte(-128)), Gives(Int32(127), SByte(127)), Gives(Int32(255), Byte(255)),
           Gives(Int64(SHRT_MIN), Int16(SHRT_MIN)), Gives(UInt64(SHRT_MAX), Int16(SHRT_MAX)),
           Gives(Int32(USHRT_MAX), UInt16(USHRT_MAX)), Gives(Int64(INT_MIN), Int32(INT_MIN)),
           Gives(UInt32(INT_MAX), Int32(INT_MAX)), Gives(Int64(UINT_MAX), UInt32(UINT_MAX)),
           Gives(UInt64(LLONG_MAX), Int64(LLONG_MAX)), Gives(Int64(LLONG_MAX), UInt64(LLONG_MAX))});
}

TEST(Conversion, IntegersBeyondTheLimitsAreOutOfRange) {
    Check({OutOfRange(Int32(-129), OpcUaType_SByte), OutOfRange(Int32(128), OpcUaType_SByte),
           OutOfRange(Byte(128), OpcUaType_SByte), OutOfRange(Int32(256), OpcUaType_Byte),
           OutOfRange(SByte(-1), OpcUaType_Byte), OutOfRange(Int32(SHRT_MAX + 1), OpcUaType_Int16),
           OutOfRange(Int32(-1), OpcUaType_UInt16), OutOfRange(UInt32(INT_MAX + 1u), OpcUaType_Int32),
           OutOfRange(Int64(INT_MIN - 1LL), OpcUaType_Int32), OutOfRange(Int64(-1), OpcUaType_UInt32),
           OutOfRange(UInt64(LLONG_MAX + 1ull), OpcUaType_Int64),
           OutOfRange(Int64(LLONG_MIN), OpcUaType_UInt64)});
}

TEST(Conversion, FloatingPointIsRoundedByAddingAHalf) {
    Check({Gives(Double(2.5), Int32(3)), Gives(Double(2.4999), Int32(2)), Gives(Double(-2.5), Int32(-2)),
           Gives(Double(-2.51), Int32(-3)), Gives(Double(-1.0), Int32(-1)), Gives(Double(-0.0), Int32(0)),
           Gives(Double(0.49999999999999994), Int32(0)), Gives(Double(-0.4), UInt32(0)),
           Gives(Double(4503599627370497.0), Int64(4503599627370497)), Gives(Float(1.5f), Byte(2))});
}

TEST(Conversion, FloatingPointLimitsHoldAfterRounding) {
    Check({Gives(Double(255.4), Byte(255)), OutOfRange(Double(255.5), OpcUaType_Byte),
           Gives(Double(-128.5), SByte(-128)), OutOfRange(Double(-128.6), OpcUaType_SByte),
           OutOfRange(Double(-0.6), OpcUaType_UInt64), Gives(Double(-0x1p63), Int64(LLONG_MIN)),
           OutOfRange(Double(0x1p63), OpcUaType_Int64), OutOfRange(Double(0x1p64), OpcUaType_UInt64),
           Gives(Double(0x1p63), UInt64(1ull << 63)), OutOfRange(Float(3e38f), OpcUaType_Int64)});
}

TEST(Conversion, NaNAndInfinityAreOutOfTheRangeOfIntegers) {
    for (double const value : {NaN, Infinity, -Infinity}) {
        for (int type = OpcUaType_SByte; type <= OpcUaType_UInt64; ++type) {
            Check({OutOfRange(Double(value), static_cast<_OpcUa_BuiltInType>(type)),
                   OutOfRange(Float(static_cast<float>(value)), static_cast<_OpcUa_BuiltInType>(type))});
        }
    }
}

TEST(Conversion, DoubleNarrowsToFloat) {
    Check({Gives(Double(0.1), Float(0.1f)), Gives(Double(FLT_MAX), Float(FLT_MAX)),
           Gives(Double(0x1.fffffefp127), Float(FLT_MAX)),
           OutOfRange(Double(0x1.ffffffp127), OpcUaType_Float), OutOfRange(Double(-DBL_MAX), OpcUaType_Float),
           Gives(Double(Infinity), Float(InfinityF)), Gives(Double(NaN), Float(std::nanf(""))),
           Gives(Double(1e-300), Float(0.0f)), Gives(Float(0.1f), Double(static_cast<double>(0.1f)))});
}

TEST(Conversion, NonZeroNumbersAreTrue) {
    Check({Gives(Int32(-7), Bool(true)), Gives(Double(0.1), Bool(true)), Gives(Double(-0.0), Bool(false)),
           Gives(UInt64(0), Bool(false)), Gives(Float(InfinityF), Bool(true)),
           OutOfRange(Double(NaN), OpcUaType_Boolean), Gives(Bool(false), Double(0.0))});
}

TEST(Conversion, NumbersBecomeTexts) {
    Check({Gives(Bool(true), Text("true")), Gives(Bool(false), Text("false")), Gives(SByte(-5), Text("-5")),
           Gives(Byte(200), Text("200")), Gives(Int64(LLONG_MIN), Text("-9223372036854775808")),
           Gives(UInt64(ULLONG_MAX), Text("18446744073709551615")), Gives(Double(0.1), Text("0.1")),
           Gives(Float(0.1f), Text("0.1")), Gives(Double(-0.0), Text("-0")),
           Gives(Double(Infinity), Text("INF")), Gives(Double(-Infinity), Text("-INF")),
           Gives(Double(NaN), Text("NaN"))});
}

TEST(Conversion, TextsBecomeIntegers) {
    Check({Gives(Text("42"), Int32(42)), Gives(Text(" \t+42\n"), Int32(42)), Gives(Text("-0"), UInt32(0)),
           Gives(Text("007"), Byte(7)), Gives(Text("-128"), SByte(-128)),
           Gives(Text("18446744073709551615"), UInt64(ULLONG_MAX)),
           OutOfRange(Text("18446744073709551616"), OpcUaType_UInt64),
           OutOfRange(Text("-1"), OpcUaType_UInt16),
           OutOfRange(Text("-99999999999999999999"), OpcUaType_UInt16),
           OutOfRange(Text("128"), OpcUaType_SByte)});
}

TEST(Conversion, TextsThatAreNotIntegersAreAMismatch) {
    for (char const* text :
         {"", " ", "abc", "1.0", "1e3", "0x10", "+-1", "-+1", "- 1", "--1", "-", "+", "1 2", "1,000"}) {
        Check({Mismatch(Text(text), OpcUaType_Int32), Mismatch(Text(text), OpcUaType_UInt32)});
    }
    Check({Mismatch(Text(std::string_view("1\0", 2)), OpcUaType_Int32)});
}

TEST(Conversion, TextsBecomeFloatingPoint) {
    Check({Gives(Text("1.5E3"), Double(1500.0)), Gives(Text("+.5"), Double(0.5)),
           Gives(Text("-1."), Float(-1.0f)), Gives(Text("INF"), Double(Infinity)),
           Gives(Text("-INF"), Float(-InfinityF)), Gives(Text("NaN"), Double(NaN)),
           Gives(Text("4.9e-324"), Double(4.9e-324)), Gives(Text("16777217"), Float(16777216.0f)),
           OutOfRange(Text("1e309"), OpcUaType_Double), OutOfRange(Text("1e39"), OpcUaType_Float)});
}

TEST(Conversion, TextsThatAreNotFloatingPointAreAMismatch) {
    for (char const* text :
         {"", "inf", "nan", "infinity", "nan(1)", "0x1p3", "1,5", "1e", "e5", "+-1", ".", "1.5 V"}) {
        Check({Mismatch(Text(text), OpcUaType_Double), Mismatch(Text(text), OpcUaType_Float)});
    }
}

TEST(Conversion, TextsBecomeBooleans) {
    Check({Gives(Text("true"), Bool(true)), Gives(Text("FALSE"), Bool(false)), Gives(Text(" 1 "), Bool(true)),
           Gives(Text("0"), Bool(false)), Mismatch(Text("2"), OpcUaType_Boolean),
           Mismatch(Text("yes"), OpcUaType_Boolean), Mismatch(Text(""), OpcUaType_Boolean)});
}

TEST(Conversion, StatusCodesAreCopiedBitByBit) {
    Check({Gives(Status(0x808C1234), UInt16(0x808C)), Gives(Status(0x808C1234), UInt32(0x808C1234)),
           Gives(Status(0x808C1234), Int32(static_cast<int>(0x808C1234))),
           Gives(Status(0x808C1234), Int64(0x808C1234)), Gives(Status(0x808C1234), UInt64(0x808C1234)),
           Gives(UInt16(0x808C), Status(0x808C0000)), Gives(Int32(-1), Status(0xFFFFFFFF)),
           Gives(UInt32(7), Status(7)), OutOfRange(Int64(-1), OpcUaType_StatusCode),
           OutOfRange(UInt64(0x100000000), OpcUaType_StatusCode)});
    for (auto const type : {OpcUaType_Boolean, OpcUaType_SByte, OpcUaType_Byte, OpcUaType_Int16,
                            OpcUaType_Float, OpcUaType_Double, OpcUaType_String}) {
        Check({Mismatch(Status(1), type)});
    }
    Check({Mismatch(Int16(1), OpcUaType_StatusCode), Mismatch(Text("1"), OpcUaType_StatusCode),
           Mismatch(Double(1), OpcUaType_StatusCode), Mismatch(Bool(true), OpcUaType_StatusCode)});
}

TEST(Conversion, ByteStringsConvertToHexadecimalTextsAndBack) {
    Check({Gives(Bytes(std::string_view("\x0A\xFF\x00", 3)), Text("0AFF00")), Gives(Bytes(""), Text("")),
           Gives(Text("0aFf00"), Bytes(std::string_view("\x0A\xFF\x00", 3))),
           Mismatch(Text("0A F"), OpcUaType_ByteString), Mismatch(Text("0G"), OpcUaType_ByteString)});
}

TEST(Conversion, TimesConvertToIso8601AndBack) {
    constexpr long long at = 133549794965000000;  // 15 March 2024, 12:31:36.5
    Check({Gives(Time(at), Text("2024-03-15T12:31:36.5Z")), Gives(Time(0), Text("1601-01-01T00:00:00Z")),
           Gives(Text("2024-03-15T12:31:36.5Z"), Time(at)), Gives(Text("2024-03-15T12:31:36.500"), Time(at)),
           Gives(Text(" 2024-03-15T14:31:36.50000004+02:00 "), Time(at)),
           Gives(Text("2024-03-15T07:01:36.5-05:30"), Time(at)),
           Gives(Text("2024-02-28T24:00:00Z"), Time(133536384000000000)),
           Gives(Text("2024-02-29T00:00:00Z"), Time(133536384000000000)),
           Gives(Time(1), Text("1601-01-01T00:00:00.0000001Z")), OutOfRange(Time(-1), OpcUaType_String),
           OutOfRange(Text("1600-12-31T23:59:59Z"), OpcUaType_DateTime),
           OutOfRange(Text("1601-01-01T00:00:00+01:00"), OpcUaType_DateTime),
           OutOfRange(Text("30828-01-01T00:00:00Z"), OpcUaType_DateTime)});
}

TEST(Conversion, TextsThatAreNotTimesAreAMismatch) {
    for (char const* text :
         {"", "2024-03-15", "2023-02-29T00:00:00Z", "2024-13-01T00:00:00Z", "2024-00-01T00:00:00Z",
          "2024-01-00T00:00:00Z", "2024-01-01T25:00:00Z", "2024-01-01T24:00:01Z", "2024-01-01T00:60:00Z",
          "2024-01-01T00:00:60Z", "2024-01-01T00:00:00.Z", "2024-01-01 00:00:00", "24-01-01T00:00:00Z",
          "2024-1-1T00:00:00Z", "2024-01-01T00:00:00+1:00", "2024-01-01T00:00:00+15:00",
          "2024-01-01T00:00:00ZZ", "-2024-01-01T00:00:00Z", "2024-01-01T99:99:99"}) {
        Check({Mismatch(Text(text), OpcUaType_DateTime)});
    }
}

TEST(Conversion, EveryDayGoesToTextAndBack) {
    constexpr long long day = 864'000'000'000;
    for (long long days = 0; days < 400'000; days += 13) {
        OpcUa_VariantHlp value = Time(days * day + 12'345);
        ASSERT_EQ(value.ChangeType(OpcUaType_String), OpcUa_Good);
        ASSERT_EQ(value.ChangeType(OpcUaType_DateTime), OpcUa_Good);
        ASSERT_EQ(value.Value.DateTime, days * day + 12'345);
    }
}

TEST(Conversion, DataValueWrapsAndUnwraps) {
    Check({{Int32(5), DataValue(Int32(5), 0, OpcUa_Good), OpcUaType_DataValue, OpcUa_Good},
           {DataValue(Int32(5), 7, OpcUa_Bad), Text("5"), OpcUaType_String, OpcUa_Good},
           {DataValue(Int32(5), 7, OpcUa_Bad), Int32(5), OpcUaType_Int32, OpcUa_Good},
           {DataValue(Int32(5), 7, OpcUa_Bad), DataValue(Int32(5), 7, OpcUa_Bad), OpcUaType_DataValue,
            OpcUa_Good},
           {DataValue(Int32(-5), 7, OpcUa_Bad), Null(), OpcUaType_Byte, OpcUa_BadOutOfRange},
           {DataValue(Null(), 7, OpcUa_Bad), Null(), OpcUaType_Byte, OpcUa_BadNoData}});
}
