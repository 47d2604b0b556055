#include "PriorityRelease.h"

#include <gtest/gtest.h>

#include "SimulatedLink.h"

namespace workbench {
namespace {

using simulator::FaultKind;
using simulator::FaultScope;
using test::SimulatedLink;

constexpr char Plant[] =
    "device{name = 'AHU-1', instance = 1001, objects = {"
    "analog_output{instance = 1, name = 'Valve', present_value = 40, relinquish_default = 5},"
    "analog_output{instance = 2, name = 'Fixed', present_value = 40, read_only = {'present_value'}}}}";

constexpr int WriteProperty = 15;

simulator::Fault FaultOf(FaultKind kind, FaultScope scope) {
    simulator::Fault fault = simulator::MakeFault(kind);
    fault.on = scope;
    return fault;
}

class Releases : public testing::Test {
protected:
    ReleaseResult Release(std::uint32_t output, unsigned priority = 16) {
        PriorityRelease release(link, {}, priority);
        ReleaseResult result = release.Look({SimulatedLink::At(0), {1, output}});
        if (result.outcome == ReleaseOutcome::Commanded) {
            release.Release(result);
        }
        return result;
    }
    // From the first write on.
    void DisturbReadsAfterTheWrite() {
        link.onSend = [this](standard::Datagram const&) {
            if (link.Services()[WriteProperty] == 1) {
                link.Station(0).GetFaults().Add(FaultOf(FaultKind::Silence, FaultScope::Read));
                link.onSend = nullptr;
            }
        };
    }

    SimulatedLink link{Plant};
};

TEST_F(Releases, APriorityThatIsCommandedIsReleased) {
    ReleaseResult const result = Release(1);
    EXPECT_EQ(result.outcome, ReleaseOutcome::Released) << result.reason;
    EXPECT_EQ(NameOf(result.before), "Valve");
    EXPECT_EQ(link.Services()[WriteProperty], 1);
}

TEST_F(Releases, WhatIsNotCommandedIsNotWritten) {
    EXPECT_EQ(Release(1, 8).outcome, ReleaseOutcome::NotCommanded);
    EXPECT_EQ(link.Services()[WriteProperty], 0);
}

TEST_F(Releases, AnObjectThatDoesNotExistIsNotWritten) {
    ReleaseResult const result = Release(3);
    EXPECT_EQ(result.outcome, ReleaseOutcome::NotReadable);
    EXPECT_EQ(result.reason, "its priority array cannot be read: object: unknown-object");
    EXPECT_EQ(link.Services()[WriteProperty], 0);
}

TEST_F(Releases, AnErrorOfTheDeviceIsItsReason) {
    ReleaseResult const result = Release(2);
    EXPECT_EQ(result.outcome, ReleaseOutcome::Refused);
    EXPECT_EQ(result.reason, "property: write-access-denied");
}

TEST_F(Releases, AReleaseWithoutAnAnswerIsSeenInThePriorityArray) {
    link.Station(0).GetFaults().Add(FaultOf(FaultKind::Loss, FaultScope::Write));
    EXPECT_EQ(Release(1).outcome, ReleaseOutcome::Released);
}

TEST_F(Releases, ARequestThatIsNotCarriedOutIsNotConfirmed) {
    link.Station(0).GetFaults().Add(FaultOf(FaultKind::Silence, FaultScope::Write));
    ReleaseResult const result = Release(1);
    EXPECT_EQ(result.outcome, ReleaseOutcome::NotConfirmed);
    EXPECT_EQ(result.reason, "no answer");
}

TEST_F(Releases, AConfirmedReleaseThatCannotBeSeenIsNotCalledReleased) {
    DisturbReadsAfterTheWrite();
    EXPECT_EQ(Release(1).outcome, ReleaseOutcome::Confirmed);
}

TEST_F(Releases, EachOutcomeHasItsName) {
    EXPECT_STREQ(NameOf(ReleaseOutcome::Commanded), "commanded");
    EXPECT_STREQ(NameOf(ReleaseOutcome::Confirmed), "confirmed");
    EXPECT_STREQ(NameOf(ReleaseOutcome::Skipped), "skipped");
}

}  // namespace
}  // namespace workbench
