#include "ValueWords.h"

#include <gtest/gtest.h>

namespace workbench {
namespace {

using standard::Datum;
using standard::DatumKind;
using standard::PropertyId;

Datum Number(DatumKind kind, std::uint64_t number) {
    Datum datum;
    datum.kind = kind;
    datum.number = number;
    return datum;
}

Datum Real(double number) {
    Datum datum;
    datum.kind = DatumKind::Real;
    datum.real = number;
    return datum;
}

Datum Text(char const* text) {
    Datum datum;
    datum.kind = DatumKind::CharacterString;
    datum.text = text;
    return datum;
}

ObjectRecord Of(std::uint16_t type, Datum const& value) {
    ObjectRecord object{{type, 1}, {}, {}};
    object.Set(PropertyId::Present_Value, {value});
    return object;
}

TEST(ValueWords, HaveTheSymbolOfTheUnit) {
    ObjectRecord input = Of(0, Real(21.5));
    EXPECT_EQ("21.5", ValueWords(input));
    input.Set(PropertyId::Units, {Number(DatumKind::Enumerated, 62)});
    EXPECT_EQ("21.5 °C", ValueWords(input));
    EXPECT_EQ("21.5", PlainValue(input));
    input.Set(PropertyId::Units, {Number(DatumKind::Enumerated, 95)});
    EXPECT_EQ("21.5", ValueWords(input));
    input.Set(PropertyId::Units, {Number(DatumKind::Enumerated, 600)});
    EXPECT_EQ("21.5 unit 600", ValueWords(input));
}

TEST(ValueWords, HaveTheTextOfTheState) {
    ObjectRecord mode = Of(19, Number(DatumKind::Unsigned, 2));
    mode.Set(PropertyId::State_Text, {Text("off"), Text("automatic")});
    EXPECT_EQ("2 (automatic)", ValueWords(mode));
    mode.Set(PropertyId::Present_Value, {Number(DatumKind::Unsigned, 3)});
    EXPECT_EQ("3", ValueWords(mode));
    mode.Set(PropertyId::Present_Value, {Number(DatumKind::Unsigned, 0)});
    EXPECT_EQ("0", ValueWords(mode));
    ObjectRecord fan = Of(4, Number(DatumKind::Enumerated, 1));
    fan.Set(PropertyId::Inactive_Text, {Text("off")});
    fan.Set(PropertyId::Active_Text, {Text("on")});
    EXPECT_EQ("active (on)", ValueWords(fan));
}

TEST(ValueWords, StateWhyThereIsNoValue) {
    ObjectRecord input{{0, 1}, {}, {}};
    EXPECT_EQ("", ValueWords(input));
    auto& result = input.properties[static_cast<std::uint32_t>(PropertyId::Present_Value)];
    result.failure = standard::Failure{standard::Failure::Kind::Error, 2, 32, ""};
    EXPECT_EQ("(property: unknown-property)", ValueWords(input));
}

TEST(ValueWords, NameTheLevelsOfThePriorityArray) {
    ObjectRecord valve = Of(1, Real(40));
    std::vector<Datum> levels(16);
    levels[7] = Real(40);
    levels[15] = Real(5);
    valve.Set(PropertyId::Priority_Array, levels);
    EXPECT_EQ((std::vector<std::string>{" 8  Manual Operator        40", "16                         5"}),
              PriorityLines(valve, false));
    ASSERT_EQ(16u, PriorityLines(valve, true).size());
    EXPECT_EQ(" 1  Manual Life Safety     null", PriorityLines(valve, true)[0]);
}

}  // namespace
}  // namespace workbench
