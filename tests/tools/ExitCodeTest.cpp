#include "ExitCode.h"

#include <gtest/gtest.h>

using namespace tools;

namespace {

// Scripts of users compare with the numbers.
TEST(ExitCode, NumbersOfTheWorkbenchAreFixed) {
    EXPECT_EQ(WorkbenchExit::Ok, 0);
    EXPECT_EQ(WorkbenchExit::Fault, 1);
    EXPECT_EQ(WorkbenchExit::Usage, 2);
    EXPECT_EQ(WorkbenchExit::AddIn, 3);
    EXPECT_EQ(WorkbenchExit::Failure, 4);
    EXPECT_EQ(WorkbenchExit::Killed, 130);
}

TEST(ExitCode, NumbersOfTheSimulatorAreFixed) {
    EXPECT_EQ(SimulatorExit::Ok, 0);
    EXPECT_EQ(SimulatorExit::Usage, 1);
    EXPECT_EQ(SimulatorExit::DeviceFile, 2);
    EXPECT_EQ(SimulatorExit::Socket, 3);
}

}  // namespace
