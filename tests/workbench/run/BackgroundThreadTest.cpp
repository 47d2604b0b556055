#include "BackgroundThread.h"

#include <gtest/gtest.h>
#include <pthread.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>

using namespace workbench;

namespace {

int Niceness() {
    return getpriority(PRIO_PROCESS, static_cast<id_t>(syscall(SYS_gettid)));
}

bool BlocksInterrupt() {
    sigset_t blocked;
    pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
    return sigismember(&blocked, SIGINT) == 1;
}

TEST(BackgroundThread, GivesWayToOthersAndGetsNoSignalsAsTheThreadsThatItStarts) {
    int niceness = -100;
    bool blocks = false;
    StartBackgroundThread([&] {
        std::thread([&] {
            niceness = Niceness();
            blocks = BlocksInterrupt();
        }).join();
    }).join();
    EXPECT_EQ(niceness, std::min(Niceness() + 5, 19));
    EXPECT_TRUE(blocks);
    EXPECT_FALSE(BlocksInterrupt());
}

}  // namespace
