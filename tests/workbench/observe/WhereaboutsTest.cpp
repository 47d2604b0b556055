#include "Whereabouts.h"

#include <gtest/gtest.h>

#include <thread>

using namespace workbench;

namespace {

class WhereaboutsTest : public testing::Test {
protected:
    WhereaboutsTest() {
        NameRow const* const input = ObjectTypes().FindName("analog-input");
        NameRow const* const value = ObjectTypes().FindName("analog-value");
        block.variables = {{"A", OpcUaType_Float, input, nullptr, 1},
                           {"B", OpcUaType_Float, input, nullptr, 1},
                           {"C", OpcUaType_Float, value, nullptr, 1}};
        Here() = {&block, nullptr, nullptr};
    }
    ~WhereaboutsTest() override { Here() = {}; }

    BlockConfig block;
};

TEST_F(WhereaboutsTest, AnObjectWithOneVariableNamesIt) {
    EnterObject(2, 1);
    EXPECT_EQ(Here().object, &block.variables[2]);
    EXPECT_EQ(Here().variable, &block.variables[2]);
}

TEST_F(WhereaboutsTest, AnObjectWithSeveralVariablesNamesNone) {
    EnterObject(0, 1);
    EXPECT_EQ(Here().object, &block.variables[0]);
    EXPECT_EQ(Here().variable, nullptr);
}

TEST_F(WhereaboutsTest, AnObjectThatTheBlockDoesNotHaveIsUnknown) {
    EnterObject(2, 1);
    EnterObject(2, 2);
    EXPECT_EQ(Here().object, nullptr);
    EXPECT_EQ(Here().variable, nullptr);
}

TEST_F(WhereaboutsTest, TheTraceAnnouncesObjects) {
    FollowTrace("Object type 2 number 1");
    EXPECT_EQ(Here().variable, &block.variables[2]);
    FollowTrace("2-1 timout");
    EXPECT_EQ(Here().variable, &block.variables[2]);
    FollowTrace("Object type two");
    EXPECT_EQ(Here().variable, &block.variables[2]);
    FollowTrace("read done");
    EXPECT_EQ(Here().object, nullptr);
    EXPECT_EQ(Here().block, &block);
}

TEST_F(WhereaboutsTest, AnotherThreadIsElsewhere) {
    std::thread([] { EXPECT_EQ(Here().block, nullptr); }).join();
}

}  // namespace
