#include "ObjectRecord.h"

#include <gtest/gtest.h>

namespace workbench {
namespace {

using standard::PropertyId;

ObjectRecord Of(std::uint16_t type) {
    return {{type, 1}, {}, {}};
}

TEST(ObjectRecord, IsSettableIfItsTypeIsThereToBeSet) {
    for (std::uint16_t const type : {1, 2, 4, 5, 14, 19, 45, 46, 48, 54}) {
        EXPECT_TRUE(IsSettable(Of(type))) << type;
    }
    for (std::uint16_t const type : {0, 3, 8, 12, 13, 17, 18, 20, 23, 24, 200}) {
        EXPECT_FALSE(IsSettable(Of(type))) << type;
    }
}

TEST(ObjectRecord, IsSettableWithAPriorityArray) {
    ObjectRecord object = Of(200);
    object.Set(PropertyId::Priority_Array, std::vector<standard::Datum>(16));
    EXPECT_TRUE(IsSettable(object));
    object.properties.begin()->second.failure = standard::Failure{standard::Failure::Kind::Error, 2, 32, ""};
    EXPECT_FALSE(IsSettable(object));
}

TEST(ObjectRecord, IsSettableAsAPointListStates) {
    ObjectRecord input = Of(0);
    input.listed["settable"] = "Y";
    EXPECT_TRUE(IsSettable(input));
    ObjectRecord output = Of(1);
    output.listed["settable"] = "N";
    EXPECT_FALSE(IsSettable(output));
    output.listed["settable"] = "";
    EXPECT_TRUE(IsSettable(output));
}

}  // namespace
}  // namespace workbench
