#include "Watchdog.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>

using namespace workbench;

namespace {

TEST(Watchdog, CallsWhenTheTimeIsOver) {
    std::promise<void> called;
    Watchdog const watchdog(std::chrono::milliseconds(1), [&called] { called.set_value(); });
    called.get_future().wait();
}

TEST(Watchdog, IsSilentWhenItIsDestroyedBefore) {
    std::atomic<bool> called{false};
    {
        Watchdog const watchdog(std::chrono::hours(1), [&called] { called = true; });
    }
    EXPECT_FALSE(called);
}

}  // namespace
