#include "OutletStatus.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using workbench::OutletHealth;

TEST(OutletStatus, LogsEachChangeOnce) {
    std::ostringstream lines;
    workbench::LogBuffer log(&lines);
    workbench::OutletStatus status("mqtt", log);
    status.Set(OutletHealth::Waiting, "no broker");
    status.Set(OutletHealth::Waiting, "no broker");
    status.Set(OutletHealth::Good, "connected");
    EXPECT_EQ(log.Count(), 2U);
    EXPECT_NE(lines.str().find("mqtt: no broker"), std::string::npos);
    EXPECT_NE(lines.str().find("mqtt: connected"), std::string::npos);
    EXPECT_EQ(status.State().health, OutletHealth::Good);
}

TEST(OutletStatus, CountsInTheOrderOfTheFirstCounts) {
    workbench::LogBuffer log(nullptr);
    workbench::OutletStatus status("mqtt", log);
    status.Count("messages");
    status.Count("commands", 3);
    status.Count("messages", 4);
    using Counts = std::vector<std::pair<std::string, unsigned long long>>;
    EXPECT_EQ(status.State().counts, (Counts{{"messages", 5}, {"commands", 3}}));
}

}  // namespace
