#include "Backoff.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using workbench::Backoff;
using Milliseconds = Backoff::Milliseconds;

void ExpectPause(Milliseconds pause, int longest) {
    EXPECT_LE(pause.count(), longest);
    EXPECT_GE(pause.count(), longest * 3 / 4);
}

TEST(Backoff, DoublesFromOneSecondToAMinute) {
    for (unsigned seed = 0; seed < 50; ++seed) {
        Backoff backoff(seed);
        for (int const longest : {1000, 2000, 4000, 8000, 16000, 32000, 60000, 60000, 60000}) {
            ExpectPause(backoff.Next(), longest);
        }
    }
}

TEST(Backoff, BeginsAgainAfterASteadyConnection) {
    Backoff backoff(1);
    backoff.Next();
    backoff.Next();
    ExpectPause(backoff.NextAfter(Backoff::Steady), 1000);
    ExpectPause(backoff.Next(), 2000);
}

TEST(Backoff, GoesOnAfterAConnectionThatBreaksSoon) {
    Backoff backoff(1);
    backoff.Next();
    ExpectPause(backoff.NextAfter(Backoff::Steady - Milliseconds(1)), 2000);
    ExpectPause(backoff.NextAfter(Milliseconds(0)), 4000);
}

TEST(Backoff, DiffersBetweenPrograms) {
    std::set<long long> pauses;
    for (unsigned seed = 1; seed < 50; ++seed) {
        Backoff backoff(seed * 40000000U);
        pauses.insert(backoff.Next().count());
    }
    EXPECT_GT(pauses.size(), 10U);
}

}  // namespace
