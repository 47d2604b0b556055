#include "SparkplugValues.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "DocumentPart.h"
#include "ProjectError.h"
#include "TypeName.h"
#include "Variants.h"

using namespace test;
using namespace workbench;

namespace {

std::string Commanded(SparkplugType type, SparkplugValue value,
                      SparkplugType variable = SparkplugType::Unknown) {
    SparkplugMetric metric;
    metric.type = type;
    metric.value = std::move(value);
    try {
        return CommandValue(metric, variable);
    } catch (ProjectError const& mistake) {
        return mistake.what();
    }
}

template <typename Field>
Field Wire(OpcUa_VariantHlp const& value) {
    return std::get<Field>(WireValue(value, value.GetType()));
}

// The field that has the value of a type.
std::string FieldName(SparkplugValue const& value) {
    constexpr char const* names[] = {"",
                                     "int_value",
                                     "long_value",
                                     "float_value",
                                     "double_value",
                                     "boolean_value",
                                     "string_value",
                                     "bytes_value"};
    return names[value.index()];
}

OpcUa_VariantHlp Example(_OpcUa_BuiltInType type) {
    if (type == OpcUaType_String) {
        return Text("a");
    }
    if (type == OpcUaType_ByteString) {
        return Bytes("a");
    }
    if (type == OpcUaType_DateTime) {
        return Time(133503000000000000LL);
    }
    if (type == OpcUaType_StatusCode) {
        return Status(1);
    }
    OpcUa_VariantHlp value = Int32(1);
    value.ChangeType(type);
    return value;
}

TEST(SparkplugValues, HaveTheTypesOfTheDocument) {
    std::string table = "| Type of the variable | Data type | Number | Field |\n|---|---|---|---|\n";
    for (std::string const& name : TypeNames()) {
        _OpcUa_BuiltInType const type = *FindType(name);
        SparkplugType const dataType = SparkplugTypeOf(type);
        if (type == OpcUaType_DataValue) {
            EXPECT_EQ(dataType, SparkplugType::Unknown);
            continue;
        }
        table += "| " + name + " | " + SparkplugTypeName(dataType) + " | " +
                 std::to_string(static_cast<unsigned>(dataType)) + " | `" +
                 FieldName(WireValue(Example(type), type)) + "` |\n";
    }
    ExpectInDocument(PUBLISH_DOCUMENT, "sparkplug types", "\n" + table + "\n");
}

TEST(SparkplugValues, HaveNegativeNumbersInTwosComplement) {
    EXPECT_EQ(Wire<std::uint32_t>(SByte(-1)), 0xFFFFFFFFU);
    EXPECT_EQ(Wire<std::uint32_t>(Int16(-32768)), 0xFFFF8000U);
    EXPECT_EQ(Wire<std::uint32_t>(Int32(-2)), 0xFFFFFFFEU);
    EXPECT_EQ(Wire<std::uint64_t>(Int64(-1)), 0xFFFFFFFFFFFFFFFFU);
}

TEST(SparkplugValues, KeepTheGreatestNumbersAndThoseThatAreNone) {
    EXPECT_EQ(Wire<std::uint32_t>(Byte(255)), 255U);
    EXPECT_EQ(Wire<std::uint32_t>(UInt16(65535)), 65535U);
    EXPECT_EQ(Wire<std::uint64_t>(UInt32(4294967295U)), 4294967295U);
    EXPECT_EQ(Wire<std::uint64_t>(UInt64(18446744073709551615ULL)), 18446744073709551615ULL);
    EXPECT_TRUE(std::isnan(Wire<float>(Float(std::numeric_limits<float>::quiet_NaN()))));
    EXPECT_EQ(Wire<double>(Double(-std::numeric_limits<double>::infinity())),
              -std::numeric_limits<double>::infinity());
}

TEST(SparkplugValues, HaveTimesInMillisecondsSince1970) {
    EXPECT_EQ(Wire<std::uint64_t>(Time(116444736000000000LL + 12345 * 10000LL)), 12345U);
    EXPECT_EQ(Wire<std::uint64_t>(Time(116444736000000000LL - 10000)), 0xFFFFFFFFFFFFFFFFU);
    EXPECT_EQ(FileTimeOf(12345), 116444736000000000LL + 12345 * 10000LL);
}

TEST(SparkplugValues, KeepTimesWithinFileTimes) {
    EXPECT_GE(FileTimeOf(0x8000000000000000U), 0);
    EXPECT_GT(FileTimeOf(0x7FFFFFFFFFFFFFFFU), 9000000000000000000LL);
}

TEST(SparkplugValues, HaveTextsInUtf8) {
    EXPECT_EQ(Wire<std::string>(Text("a\xFFz")), "a\xEF\xBF\xBDz");
    EXPECT_EQ(Wire<std::string>(Text(std::string("a\0b", 3))), std::string("a\0b", 3));
    EXPECT_EQ(Wire<SparkplugBytes>(Bytes("a\xFFz")).octets, "a\xFFz");
}

TEST(SparkplugValues, HaveTheTypeOfTheVariableOrNoValue) {
    EXPECT_EQ(std::get<float>(WireValue(Int32(3), OpcUaType_Float)), 3.0F);
    EXPECT_TRUE(std::holds_alternative<std::monostate>(WireValue(Text("x"), OpcUaType_Float)));
    EXPECT_TRUE(std::holds_alternative<std::monostate>(WireValue(Null(), OpcUaType_Float)));
}

TEST(SparkplugValues, OfCommandsAreTextsAsPeopleTypeThem) {
    EXPECT_EQ(Commanded(SparkplugType::Float, 21.1F), "21.1");
    EXPECT_EQ(Commanded(SparkplugType::Double, 21.1), "21.1");
    EXPECT_EQ(Commanded(SparkplugType::Boolean, true), "true");
    EXPECT_EQ(Commanded(SparkplugType::String, std::string("21.5 °C")), "21.5 °C");
    EXPECT_EQ(Commanded(SparkplugType::UInt32, std::uint32_t{4294967295U}), "4294967295");
    EXPECT_EQ(Commanded(SparkplugType::UInt32, std::uint64_t{4294967295U}), "4294967295");
    EXPECT_EQ(Commanded(SparkplugType::DateTime, std::uint64_t{0}), "1970-01-01T00:00:00.000+00:00");
    EXPECT_EQ(Commanded(SparkplugType::Bytes, SparkplugBytes{"\x0A\xFF"}), "0aff");
}

TEST(SparkplugValues, OfCommandsMayBeNegativeInEachWidth) {
    EXPECT_EQ(Commanded(SparkplugType::Int8, std::uint32_t{0xFFFFFFFFU}), "-1");
    EXPECT_EQ(Commanded(SparkplugType::Int8, std::uint32_t{0xFF}), "-1");
    EXPECT_EQ(Commanded(SparkplugType::Int16, std::uint32_t{0x8000}), "-32768");
    EXPECT_EQ(Commanded(SparkplugType::Int32, std::uint32_t{0xFFFFFFFEU}), "-2");
    EXPECT_EQ(Commanded(SparkplugType::Int32, std::uint64_t{0xFFFFFFFFFFFFFFFEU}), "-2");
    EXPECT_EQ(Commanded(SparkplugType::Int64, std::uint64_t{0xFFFFFFFFFFFFFFFEU}), "-2");
    EXPECT_EQ(Commanded(SparkplugType::Int64, std::uint32_t{0xFFFFFFFEU}), "4294967294");
}

TEST(SparkplugValues, OfCommandsAreTextsInUtf8) {
    EXPECT_EQ(Commanded(SparkplugType::String, std::string("S\xFC"
                                                           "d")),
              "\"S\xEF\xBF\xBD"
              "d\" is not a text in UTF-8");
}

TEST(SparkplugValues, OfCommandsDoNotLoseBits) {
    EXPECT_EQ(Commanded(SparkplugType::Int8, std::uint32_t{300}),
              "\"300\" is not of type Int8; expected a number of 8 bits");
    EXPECT_EQ(Commanded(SparkplugType::Int32, std::uint64_t{1} << 40),
              "\"1099511627776\" is not of type Int32; expected a number of 32 bits");
}

TEST(SparkplugValues, OfCommandsWithoutATypeHaveThatOfTheVariable) {
    EXPECT_EQ(Commanded(SparkplugType::Unknown, std::uint32_t{0xFFFFFFFFU}, SparkplugType::Int16), "-1");
    EXPECT_EQ(Commanded(SparkplugType::Unknown, std::uint32_t{0xFFFFFFFFU}, SparkplugType::UInt32),
              "4294967295");
    EXPECT_EQ(Commanded(SparkplugType::Unknown, {}, SparkplugType::Float),
              "the command has no value; send one of the type of the birth");
}

TEST(SparkplugValues, HaveTheCodesOfQuality) {
    EXPECT_EQ(QualityCode(QualityKind::Good, false), 192U);
    EXPECT_EQ(QualityCode(QualityKind::Uncertain, false), 500U);
    EXPECT_EQ(QualityCode(QualityKind::Bad, false), 0U);
    EXPECT_EQ(QualityCode(QualityKind::Good, true), 0U);
}

}  // namespace
