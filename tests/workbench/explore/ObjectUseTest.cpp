#include "ObjectUse.h"

#include <gtest/gtest.h>

namespace workbench {
namespace {

TEST(ObjectUse, IncludesAWriteWhereDriverAndObjectAllowIt) {
    PointSupport const use = UseOf({{1, 1}, {}, {}});
    EXPECT_TRUE(use.canRead);
    EXPECT_TRUE(use.canWrite);
    EXPECT_EQ("", use.whyNotWritten);
}

TEST(ObjectUse, StatesThatTheDeviceSetsAnInputItself) {
    PointSupport const use = UseOf({{0, 1}, {}, {}});
    EXPECT_TRUE(use.canRead);
    EXPECT_FALSE(use.canWrite);
    EXPECT_EQ("the device sets present-value of analog-input itself", use.whyNotWritten);
}

TEST(ObjectUse, KeepsTheReasonOfTheDriver) {
    standard::ObjectId const unknown{1023, 1};
    ASSERT_FALSE(SupportOf(unknown).canWrite);
    EXPECT_EQ(SupportOf(unknown).whyNotWritten, UseOf({unknown, {}, {}}).whyNotWritten);
}

TEST(ObjectUse, LeavesOutAnObjectThatTheDeviceListsAndDoesNotHave) {
    ObjectRecord object{{2, 9}, {}, {}};
    standard::PropertyReference const value{object.id, 85, std::nullopt};
    object.properties[85] = {value, {}, standard::Failure{standard::Failure::Kind::Error, 1, 31, {}}};
    PointSupport const use = UseOf(object);
    EXPECT_FALSE(use.canRead);
    EXPECT_FALSE(use.canWrite);
    EXPECT_EQ("the device answers with: object: unknown-object", use.whyNot);
    EXPECT_EQ(use.whyNot, use.whyNotWritten);
}

}  // namespace
}  // namespace workbench
