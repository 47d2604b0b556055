#include "WriteCheck.h"

#include <gtest/gtest.h>

#include <limits>

#include "Content.h"
#include "DatumReader.h"
#include "Projects.h"
#include "TagWriter.h"

using namespace test;
using namespace workbench;
using standard::ApplicationTag;
using standard::Datum;

namespace {

VariableConfig const Anything = [] {
    VariableConfig variable;
    variable.objectType = ObjectTypes().FindCode(1);
    variable.property = Properties().FindCode(0);
    return variable;
}();

Datum Of(ApplicationTag tag, standard::Octets const& content) {
    return standard::DatumOfContent(static_cast<std::uint8_t>(tag), content);
}
Datum Signed(std::int64_t value) {
    return Of(ApplicationTag::Signed, standard::content::SignedNumber(value));
}
Datum Unsigned(std::uint64_t value) {
    return Of(ApplicationTag::Unsigned, standard::content::UnsignedNumber(value));
}
Datum Real(float value) {
    return Of(ApplicationTag::Real, standard::content::Real(value));
}
Datum Words(std::string const& text) {
    return Of(ApplicationTag::CharacterString, standard::content::CharacterString(text));
}

OpcUa_VariantHlp Int(int value) {
    OpcUa_VariantHlp variant;
    variant.SetInt(value);
    return variant;
}
OpcUa_VariantHlp Double(double value) {
    OpcUa_VariantHlp variant;
    variant.SetDouble(value);
    return variant;
}

// The state after `sent` was written and the device has answered `held`.
std::optional<WriteState> Check(OpcUa_VariantHlp const& meant, Datum const& sent, Datum const& held) {
    PointState point;
    point.isFresh = true;
    point.values = std::make_shared<PointState::Values const>(PointState::Values{held});
    return CheckWrite(meant, {{sent}, true, {}, false}, point);
}

std::string Stage(OpcUa_VariantHlp const& meant, Datum const& held) {
    auto const state = Check(meant, held, held);
    return state ? StageName(state->stage) : "cannot be compared";
}

TEST(WriteCheck, WhatTheDeviceHoldsIsComparedByTheStandard) {
    EXPECT_EQ(Stage(Int(100), Signed(100)), "written");
    EXPECT_EQ(Stage(Int(-1), Signed(-1)), "written");
    EXPECT_EQ(Stage(Int(200), Unsigned(200)), "written");
    EXPECT_EQ(Stage(Int(3), Real(3)), "written");
    EXPECT_EQ(Stage(Double(0.1), Real(0.1f)), "written");
    EXPECT_EQ(Stage(Double(5), Unsigned(5)), "written");
    EXPECT_EQ(Stage(Float(21.5f), Real(21.5f)), "written");
    EXPECT_EQ(Stage(Boolean(true), Of(ApplicationTag::Enumerated, {1})), "written");
    EXPECT_EQ(Stage(Boolean(false), Of(ApplicationTag::Boolean, {0})), "written");
    EXPECT_EQ(Stage(Text("on"), Words("on")), "written");
    float const nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(Stage(Float(nan), Real(nan)), "written");
}

TEST(WriteCheck, AValueThatWasSentAsAnotherOneDiffers) {
    auto const state = Check(Int(200), Signed(-56), Signed(-56));
    ASSERT_TRUE(state);
    EXPECT_EQ(state->stage, WriteStage::Differs);
    EXPECT_EQ(state->reason, "the driver sent -56, the device holds it");
    EXPECT_EQ(state->device, "-56");
    EXPECT_EQ(state->value, Int(200));
    EXPECT_EQ(WriteText(Anything, *state, 0, true), "200 differs (the driver sent -56, the device holds it)");
    EXPECT_EQ(WriteText(Anything, *state, 0, false), "200 differs (-56)");
    EXPECT_EQ(Stage(Double(21.7), Unsigned(21)), "differs");
    EXPECT_EQ(Stage(Int(-1), Unsigned(0xFFFFFFFF)), "differs");
    EXPECT_EQ(Stage(Boolean(true), Of(ApplicationTag::Enumerated, {0})), "differs");
    EXPECT_EQ(Stage(Text("on"), Words("off")), "differs");
}

TEST(WriteCheck, ATextThatIsNoNumberDiffersFromTheNumberThatWasSent) {
    auto const state = Check(Text("21,5"), Real(0), Real(0));
    ASSERT_TRUE(state);
    EXPECT_EQ(WriteText(Anything, *state, 0, true), "21,5 differs (the driver sent 0, the device holds it)");
    EXPECT_EQ(WriteText(Anything, *state, 0, false), "21,5 differs (0)");
    EXPECT_EQ(Stage(Text("21.5"), Real(21.5f)), "written");
    EXPECT_EQ(Stage(Text(" 5 "), Unsigned(5)), "written");
    EXPECT_EQ(Stage(Text("0x5"), Unsigned(0)), "differs");
    EXPECT_EQ(Stage(Text(""), Signed(0)), "differs");
    EXPECT_EQ(Stage(Text("active"), Of(ApplicationTag::Enumerated, {1})), "cannot be compared");
}

TEST(WriteCheck, AnotherValueThanWasSentIsUnconfirmed) {
    auto const state = Check(Int(5), Signed(5), Signed(7));
    ASSERT_TRUE(state);
    EXPECT_EQ(state->stage, WriteStage::Unconfirmed);
    EXPECT_EQ(state->reason, "reads back 7");
}

TEST(WriteCheck, AnErrorInPlaceOfTheValueIsUnconfirmed) {
    PointState point;
    point.isFresh = true;
    point.suspect = "device: unknown-object";
    auto const state = CheckWrite(Int(5), {}, point);
    ASSERT_TRUE(state);
    EXPECT_EQ(state->stage, WriteStage::Unconfirmed);
    EXPECT_EQ(state->reason, "cannot be read back: device: unknown-object");
}

TEST(WriteCheck, IsLeftToTheDriverWhereValuesCannotBeCompared) {
    EXPECT_EQ(Stage(Text("2024-03-15"), Of(ApplicationTag::Date, {124, 3, 15, 5})), "cannot be compared");
    EXPECT_EQ(Stage(Int(5), Words("5")), "cannot be compared");
    EXPECT_EQ(Stage(Double(5), Words("5")), "cannot be compared");
    PointState point;
    EXPECT_FALSE(CheckWrite(Int(5), {}, point)) << "nothing has been answered";
    point.isFresh = true;
    point.values = std::make_shared<PointState::Values const>(2, Signed(5));
    EXPECT_FALSE(CheckWrite(Int(5), {}, point)) << "a list";
}

}  // namespace
