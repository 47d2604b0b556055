#include <gtest/gtest.h>

#include <set>

#include "Enumerations.h"
#include "ErrorNames.h"
#include "Failure.h"
#include "ObjectNames.h"
#include "ObjectType.h"
#include "PropertyDatatype.h"
#include "PropertyNames.h"
#include "UnitNames.h"

using namespace standard;

TEST(ErrorNames, AreThoseOfTheClauses) {
    EXPECT_EQ(ErrorClassText(0), "device");
    EXPECT_EQ(ErrorClassText(7), "communication");
    EXPECT_EQ(ErrorCodeText(0), "other");
    EXPECT_EQ(ErrorCodeText(31), "unknown-object");
    EXPECT_EQ(ErrorCodeText(32), "unknown-property");
    EXPECT_EQ(ErrorCodeText(50), "property-is-not-an-array");
    EXPECT_EQ(ErrorCodeText(84), "success");
    EXPECT_EQ(ErrorCodeText(123), "abort-apdu-too-long");
    EXPECT_EQ(ErrorCodeText(138), "invalid-value-in-this-state");
    EXPECT_EQ(RejectReasonText(9), "unrecognized-service");
    EXPECT_EQ(AbortReasonText(4), "segmentation-not-supported");
    EXPECT_EQ(AbortReasonText(11), "apdu-too-long");
}

TEST(ErrorNames, ANumberWithoutNameIsItsNumber) {
    EXPECT_EQ(ErrorClassText(8), "class 8");
    EXPECT_EQ(ErrorCodeText(1), "code 1");
    EXPECT_EQ(ErrorCodeText(999), "code 999");
    EXPECT_EQ(ErrorCodeText(0xFFFFFFFF), "code 4294967295");
    EXPECT_EQ(RejectReasonText(64), "reason 64");
    EXPECT_EQ(AbortReasonText(255), "reason 255");
}

TEST(Failure, TextHasNamesAndDetail) {
    EXPECT_EQ(FailureText({Failure::Kind::Silent, 0, 0, {}}), "no answer");
    EXPECT_EQ(FailureText({Failure::Kind::Error, 1, 31, {}}), "object: unknown-object");
    EXPECT_EQ(FailureText({Failure::Kind::Error, 64, 999, {}}), "class 64: code 999");
    EXPECT_EQ(FailureText({Failure::Kind::Reject, 0, 9, {}}), "reject: unrecognized-service");
    EXPECT_EQ(FailureText({Failure::Kind::Abort, 0, 1, {}}), "abort: buffer-overflow");
    EXPECT_EQ(FailureText({Failure::Kind::Malformed, 0, 0, "too long"}), "malformed answer (too long)");
    EXPECT_EQ(FailureText({Failure::Kind::Incomplete, 0, 0, {}}), "incomplete answer");
    EXPECT_EQ(FailureText({Failure::Kind::Stopped, 0, 0, {}}), "stopped");
}

TEST(ObjectNames, AreThoseOfTheStandard) {
    EXPECT_EQ(ObjectTypeText(0), "analog-input");
    EXPECT_EQ(ObjectTypeText(8), "device");
    EXPECT_EQ(ObjectTypeText(23), "accumulator");
    EXPECT_EQ(ObjectTypeText(40), "characterstring-value");
    EXPECT_EQ(ObjectTypeText(54), "lighting-output");
    EXPECT_EQ(ObjectTypeText(64), "color-temperature");
    EXPECT_EQ(ObjectTypeText(65), "object type 65");
    EXPECT_EQ(ObjectTypeText(1023), "object type 1023");
}

TEST(ObjectNames, ReferencesHaveAnIndexOnlyWhereThereIsOne) {
    EXPECT_EQ(ReferenceText({{0, 1}, 85, {}}), "analog-input 1 present-value");
    EXPECT_EQ(ReferenceText({{8, 4194303}, 76, 0}), "device 4194303 object-list[0]");
}

TEST(PropertyNames, AreThoseOfTheStandard) {
    EXPECT_EQ(PropertyText(0), "acked-transitions");
    EXPECT_EQ(PropertyText(1), "ack-required");
    EXPECT_EQ(PropertyText(8), "all");
    EXPECT_EQ(PropertyText(62), "max-apdu-length-accepted");
    EXPECT_EQ(PropertyText(85), "present-value");
    EXPECT_EQ(PropertyText(168), "profile-name");
    EXPECT_EQ(PropertyText(386), "egress-active");
    EXPECT_EQ(PropertyText(507), "device-uuid");
    EXPECT_EQ(PropertyText(18), "property 18");
    EXPECT_EQ(PropertyText(512), "property 512");
    EXPECT_EQ(PropertyText(0xFFFFFFFF), "property 4294967295");
}

TEST(PropertyNames, AreAllDifferent) {
    std::set<std::string> names;
    for (std::uint32_t property = 0; property < 600; ++property) {
        EXPECT_TRUE(names.insert(PropertyText(property)).second) << property;
    }
}

TEST(Enumerations, NamesAndNumbersAreEachOthersInverse) {
    for (std::uint32_t unit = 0; unit < UnitNameCount; ++unit) {
        auto const name = NameOfEnumerated(Datatype::Units, unit);
        ASSERT_TRUE(name) << unit;
        EXPECT_EQ(EnumeratedOfName(Datatype::Units, *name), unit);
    }
    EXPECT_EQ(NameOfEnumerated(Datatype::Units, 62), "degrees-celsius");
    EXPECT_EQ(NameOfEnumerated(Datatype::Units, 95), "no-units");
    EXPECT_EQ(NameOfEnumerated(Datatype::Units, 136), "liters-per-hour");
    EXPECT_EQ(NameOfEnumerated(Datatype::Units, 146), "megawatt-hours");
    EXPECT_EQ(NameOfEnumerated(Datatype::Units, 199), "decibels");
    EXPECT_EQ(NameOfEnumerated(Datatype::Units, 234), "pH");
    EXPECT_EQ(NameOfEnumerated(Datatype::Units, 254), "million-standard-cubic-feet-per-minute");
    EXPECT_EQ(NameOfEnumerated(Datatype::Units, 255), std::nullopt);
    EXPECT_EQ(NameOfEnumerated(Datatype::Units, 47812), "pounds-mass-per-day");
}

TEST(Enumerations, LaterNumbersHaveNamesButAreNotAccepted) {
    EXPECT_EQ(NameOfEnumerated(Datatype::Reliability, 15), "tripped");
    EXPECT_EQ(NameOfEnumerated(Datatype::Reliability, 11), std::nullopt);
    EXPECT_EQ(NameOfEnumerated(Datatype::Reliability, 24), "referenced-object-fault");
    EXPECT_FALSE(IsEnumerated(Datatype::Reliability, 16));
    EXPECT_EQ(NameOfEnumerated(Datatype::RestartReason, 8), "activate-changes");
    EXPECT_EQ(NameOfEnumerated(Datatype::EventState, 6), std::nullopt);
    EXPECT_EQ(NameOfEnumerated(Datatype::Real, 0), std::nullopt);
}

TEST(PropertyDatatype, IsThatOfTheObjectType) {
    EXPECT_EQ(DatatypeOf(0, 85), Datatype::Real);
    EXPECT_EQ(DatatypeOf(3, 85), Datatype::BinaryPv);
    EXPECT_EQ(DatatypeOf(45, 85), Datatype::Signed);
    EXPECT_EQ(DatatypeOf(8, 107), Datatype::Segmentation);
    EXPECT_EQ(DatatypeOf(4, 87), Datatype::BinaryPv);
    EXPECT_EQ(DatatypeOf(3, 2), std::nullopt);
}

TEST(PropertyDatatype, OfAnUnknownObjectTypeIsThatWhichAllHave) {
    EXPECT_EQ(DatatypeOf(40, 36), Datatype::EventState);
    EXPECT_EQ(DatatypeOf(1000, 117), Datatype::Units);
    EXPECT_EQ(DatatypeOf(1000, 111), Datatype::StatusFlags);
    EXPECT_EQ(DatatypeOf(1000, 85), std::nullopt);
}
