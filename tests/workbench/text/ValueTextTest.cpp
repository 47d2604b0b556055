#include "ValueText.h"

#include <gtest/gtest.h>

#include "Projects.h"
#include "QualityText.h"

using namespace workbench;

namespace {

std::string Shown(OpcUa_VariantHlp const& value) {
    return ValueText(value, 36000000000LL);
}

OpcUa_VariantHlp As(_OpcUa_BuiltInType type, std::string const& text) {
    OpcUa_VariantHlp value = test::Text(text);
    EXPECT_EQ(value.ChangeType(type), OpcUa_Good) << text;
    return value;
}

TEST(ValueText, NumbersOfEveryTypeAreDecimal) {
    EXPECT_EQ(Shown(As(OpcUaType_SByte, "-128")), "-128");
    EXPECT_EQ(Shown(As(OpcUaType_Byte, "255")), "255");
    EXPECT_EQ(Shown(As(OpcUaType_Int16, "-32768")), "-32768");
    EXPECT_EQ(Shown(As(OpcUaType_UInt16, "65535")), "65535");
    EXPECT_EQ(Shown(As(OpcUaType_Int32, "-2147483648")), "-2147483648");
    EXPECT_EQ(Shown(As(OpcUaType_UInt32, "4294967295")), "4294967295");
    EXPECT_EQ(Shown(As(OpcUaType_Int64, "-9223372036854775808")), "-9223372036854775808");
    EXPECT_EQ(Shown(As(OpcUaType_UInt64, "18446744073709551615")), "18446744073709551615");
    EXPECT_EQ(Shown(test::Float(21.1f)), "21.1");
    EXPECT_EQ(Shown(As(OpcUaType_Double, "0.1")), "0.1");
}

TEST(ValueText, OtherValuesAreReadable) {
    EXPECT_EQ(Shown(test::Boolean(true)), "true");
    EXPECT_EQ(Shown(test::Boolean(false)), "false");
    EXPECT_EQ(Shown(test::Text("Lobby")), "Lobby");
    EXPECT_EQ(Shown(test::Text("two\nlines")), "two\\nlines");
    EXPECT_EQ(Shown(test::Text("")), "\"\"");
    EXPECT_EQ(Shown({}), "-");
    OpcUa_VariantHlp time;
    time.SetTime(116444736000000000LL);
    EXPECT_EQ(Shown(time), "1970-01-01T01:00:00");
    OpcUa_VariantHlp octets;
    octets.SetByteString("\x0A\xFF", 2);
    EXPECT_EQ(Shown(octets), "0aff");
    octets.SetByteString("", 0);
    EXPECT_EQ(Shown(octets), "\"\"");
    OpcUa_VariantHlp status;
    status.SetStatusCode(0x808C0000u);
    EXPECT_EQ(Shown(status), "0x808C0000");
}

TEST(ValueText, ADataValueShowsTheValueInside) {
    OpcUa_VariantHlp inner = test::Float(3.5f);
    OpcUa_VariantHlp value;
    value.SetDataValue(inner, 0, OpcUa_Bad);
    EXPECT_EQ(Shown(value), "3.5");
}

TEST(QualityText, KnownCodesHaveWords) {
    EXPECT_EQ(QualityText(0), "Good");
    EXPECT_EQ(QualityText(0x80000000u), "Bad");
    EXPECT_EQ(QualityText(0x808C0000u), "Sensor failure");
    EXPECT_EQ(QualityText(0x809B0000u), "No data");
    EXPECT_EQ(QualityText(0x803C0000u), "Out of range");
    EXPECT_EQ(QualityText(0x80740000u), "Type mismatch");
    EXPECT_EQ(QualityText(0x40000000u), "Uncertain");
    EXPECT_EQ(QualityText(0x80AB0000u), "Bad 0x80AB0000");
    EXPECT_EQ(QualityText(0x40BC0000u), "Uncertain 0x40BC0000");
    EXPECT_EQ(QualityText(0x00A60000u), "Good 0x00A60000");
}

TEST(QualityText, TheTopBitsAreTheKind) {
    EXPECT_EQ(KindOf(0x00A60000u), QualityKind::Good);
    EXPECT_EQ(KindOf(0x40BC0000u), QualityKind::Uncertain);
    EXPECT_EQ(KindOf(0x80000000u), QualityKind::Bad);
    EXPECT_EQ(KindOf(0xC0000000u), QualityKind::Bad);
}

}  // namespace
