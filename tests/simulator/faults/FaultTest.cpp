#include "Fault.h"

#include <gtest/gtest.h>

#include <set>

using simulator::Fault;
using simulator::FaultKind;

TEST(Fault, TheTableIsInTheOrderOfItsKindsAndNamesAreUnlike) {
    std::set<std::string> names;
    for (std::size_t i = 0; i < simulator::FaultKinds; ++i) {
        simulator::FaultRow const& row = simulator::FaultRows[i];
        EXPECT_EQ(static_cast<std::size_t>(row.kind), i);
        EXPECT_TRUE(names.insert(row.name).second) << row.name;
        EXPECT_EQ(simulator::FaultOfName(row.name), &row);
        EXPECT_LE(row.code, row.highestCode) << row.name;
        EXPECT_EQ((row.parameters & simulator::CodeParameter) != 0, row.highestCode != 0) << row.name;
    }
    EXPECT_EQ(simulator::FaultKinds, static_cast<std::size_t>(FaultKind::ChangingObjectList) + 1);
    EXPECT_EQ(simulator::FaultOfName("Silence"), nullptr);
    EXPECT_EQ(simulator::FaultOfName(""), nullptr);
}

TEST(Fault, TextOfAFaultWithoutMoreIsItsName) {
    for (simulator::FaultRow const& row : simulator::FaultRows) {
        EXPECT_EQ(simulator::TextOf(simulator::MakeFault(row.kind)), row.name);
    }
}

TEST(Fault, TextStatesAllThatIsNotUsual) {
    Fault fault = simulator::MakeFault(FaultKind::Truncate);
    fault.octet = 9;
    fault.mends = false;
    fault.code = 5;  // without effect for this kind
    fault.on = simulator::FaultScope::Write;
    fault.object = simulator::ObjectId{2, 7};
    fault.chance = 0.25;
    fault.every = 3;
    fault.seed = 11;
    fault.after = std::chrono::milliseconds(1500);
    fault.duration = std::chrono::seconds(20);
    fault.times = 4;
    EXPECT_EQ(simulator::TextOf(fault),
              "truncate octet=9 mend=false on=write object=analog_value:7 chance=0.25 every=3 seed=11 "
              "after=1.5 duration=20 times=4");
}

TEST(Fault, TextOfTheOtherParameters) {
    Fault fault;
    fault.kind = FaultKind::Error;
    fault.code = 0;
    fault.errorClass = 2;
    EXPECT_EQ(simulator::TextOf(fault), "error class=2 code=0");
    fault.kind = FaultKind::HeadersOnly;
    fault.headers = simulator::FaultHeaders::Apdu;
    EXPECT_EQ(simulator::TextOf(fault), "headers_only headers=apdu");
    fault.kind = FaultKind::EndlessSegments;
    fault.count = 300;
    EXPECT_EQ(simulator::TextOf(fault), "endless_segments count=300");
    fault.kind = FaultKind::LostSegment;
    fault.segment = 0;
    EXPECT_EQ(simulator::TextOf(fault), "lost_segment segment=0");
    fault.kind = FaultKind::OversizedSegments;
    fault.octets = 1;
    EXPECT_EQ(simulator::TextOf(fault), "oversized_segments octets=1");
}
