// Every fault of a device on every path, once, for a while and for ever: the block's report, the duration of
// its cycle, and its recovery. The fault affects nothing else and leaves nothing.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <tuple>

#include "DocumentPart.h"
#include "FaultTable.h"
#include "Heap.h"

using namespace test;

namespace {

constexpr Path AllPaths[] = {Path::Plain, Path::Segmented, Path::Routed, Path::Write};
constexpr Lifetime AllLifetimes[] = {Lifetime::Once, Lifetime::While, Lifetime::Ever};

// Cycles for which a disturbance lasts, by Lifetime.
constexpr int DisturbedCycles[] = {1, 3, 12};
// Cycles after a disturbance, all of which must be good.
constexpr int WatchedCycles = 10;
// Datagrams of the driver in one cycle after which its device is cut off: more than any exchange that ends.
constexpr long long Patience = 600;

std::vector<Disturbance> AllDisturbances() {
    std::vector<Disturbance> all;
    for (int i = 0; i < static_cast<int>(Disturbance::Count); ++i) {
        all.push_back(static_cast<Disturbance>(i));
    }
    return all;
}

// The requests to the bystander's device without a disturbance, as octets.
std::vector<simulator::Octets> const& UndisturbedRequests() {
    static std::vector<simulator::Octets> const requests = [] {
        Plant plant(Path::Plain);
        for (int cycle = 0; cycle < 100; ++cycle) {
            plant.Run();
        }
        return plant.TakeBystanderRequests();
    }();
    return requests;
}

// One cell: a new plant, disturbed for a lifetime.
class Disturbed {
public:
    Disturbed(Disturbance disturbance, Path path, Lifetime lifetime)
        : expected(RowOf(disturbance, path).Of(lifetime)),
          sizes(Plant::SizesOf(path)),
          undisturbed(UndisturbedRequests()),
          plant(path) {
        plant.Settle();
        CheckBystander();
        octetsBefore = HeapOctets();
        simulator::Fault fault = FaultOf(disturbance, path);
        if (lifetime == Lifetime::Once) {
            fault.times = 1;
        }
        plant.Faults().Add(fault);
        for (int cycle = 0; cycle < DisturbedCycles[static_cast<std::size_t>(lifetime)]; ++cycle) {
            plant.CutOffAfter(Patience);
            Note(plant.Run());
            isHeld = isHeld || plant.IsCutOff();
        }
        plant.CutOffAfter(Plant::Never);
        plant.Faults().Clear();
    }

    void CheckRecovery() {
        for (int cycle = 0; cycle < WatchedCycles; ++cycle) {
            EXPECT_EQ(Next(), Report::Good) << "cycle " << cycle << " after it";
        }
    }

    // With the device silent for as long as the driver needs to read old answers.
    void CheckNothingIsLeft() {
        plant.Settle();
        EXPECT_EQ(Next(), Report::Good);
        plant.Settle();
        CheckBystander();
        std::string().swap(log);
        EXPECT_EQ(HeapOctets(), octetsBefore);
    }

    Expectation const expected;
    Sizes const sizes;
    Report worst = Report::Good;
    long long longest = 0;
    bool isHeld = false;  // a cycle ended only because the device was cut off
    std::string log;

private:
    void Note(Plant::Cycle const& cycle) {
        worst = std::max(worst, cycle.report);
        longest = std::max(longest, cycle.duration);
        log += cycle.log;
        EXPECT_TRUE(cycle.isBystanderGood);
        EXPECT_EQ(cycle.bystanderDuration, 0);
    }

    Report Next() {
        Plant::Cycle const cycle = plant.Run();
        EXPECT_TRUE(cycle.isBystanderGood);
        log += cycle.log;
        return cycle.report;
    }

    void CheckBystander() {
        for (simulator::Octets const& request : plant.TakeBystanderRequests()) {
            EXPECT_EQ(request, undisturbed.at(bystanderRequests));
            ++bystanderRequests;
        }
    }

    std::vector<simulator::Octets> const&
        undisturbed;  // initialised before the plant, since only one may exist at a time
    Plant plant;
    std::size_t bystanderRequests = 0;
    long long octetsBefore = 0;
};

// Removes the allowed lines from a log.
std::string WithoutLines(std::string log, std::vector<std::string> const& lines) {
    for (std::string const& line : lines) {
        for (auto position = log.find(line); position != std::string::npos; position = log.find(line)) {
            log.erase(position, line.size());
        }
    }
    return log;
}

using Cell = std::tuple<Disturbance, Path>;

// The words of a text, each with a capital letter, without separators.
std::string Joined(std::string const& text) {
    std::string joined;
    bool startsWord = true;
    for (char const c : text) {
        bool const isPartOfWord = std::isalnum(static_cast<unsigned char>(c)) != 0;
        if (isPartOfWord) {
            joined += static_cast<char>(startsWord ? std::toupper(c) : c);
        }
        startsWord = !isPartOfWord;
    }
    return joined;
}

std::string NameOfCell(testing::TestParamInfo<Cell> const& info) {
    return Joined(NameOf(std::get<Disturbance>(info.param))) + "_" +
           Joined(NameOf(std::get<Path>(info.param)));
}

class FaultMatrix : public testing::TestWithParam<Cell> {};

TEST_P(FaultMatrix, IsAsTheTableSays) {
    auto const [disturbance, path] = GetParam();
    bool hasLogged = false;
    FaultRow const& row = RowOf(disturbance, path);
    for (Lifetime const lifetime : AllLifetimes) {
        SCOPED_TRACE(std::string("lifetime ") + std::to_string(static_cast<int>(lifetime)));
        Disturbed run(disturbance, path, lifetime);
        EXPECT_EQ(run.worst, run.expected.report);
        EXPECT_LE(run.longest, run.expected.longest->milliseconds(run.sizes)) << run.expected.longest->text;
        EXPECT_EQ(run.isHeld, disturbance == Disturbance::EndlessSegments && path != Path::Write);
        if (lifetime != Lifetime::Ever) {
            run.CheckRecovery();
        }
        EXPECT_EQ(WithoutLines(run.log, row.log), "");
        hasLogged = hasLogged || !run.log.empty();
        run.CheckNothingIsLeft();
    }
    EXPECT_EQ(hasLogged, !row.log.empty());
}

INSTANTIATE_TEST_SUITE_P(All, FaultMatrix,
                         testing::Combine(testing::ValuesIn(AllDisturbances()), testing::ValuesIn(AllPaths)),
                         NameOfCell);

// The driver sends no Who-Is and reads no Object_List.
TEST(FaultTable, HasEveryFaultOfTheSimulator) {
    for (simulator::FaultRow const& row : simulator::FaultRows) {
        if (simulator::IsOfDiscovery(row.kind)) {
            continue;
        }
        auto const all = AllDisturbances();
        EXPECT_TRUE(std::any_of(all.begin(), all.end(), [&row](Disturbance disturbance) {
            return FaultOf(disturbance, Path::Plain).kind == row.kind;
        })) << row.name;
    }
}

// A bound that no cycle comes near would not test anything.
TEST(FaultTable, EveryBoundIsReached) {
    for (FaultRow const& row : FaultTable()) {
        for (Lifetime const lifetime : AllLifetimes) {
            SCOPED_TRACE(std::string(NameOf(row.disturbances.front())) + ", " + NameOf(row.paths.front()) +
                         ", lifetime " + std::to_string(static_cast<int>(lifetime)));
            Expectation const& expected = row.Of(lifetime);
            long long longest = 0;
            for (Disturbance const disturbance : row.disturbances) {
                for (Path const path : row.paths) {
                    longest = std::max(longest, Disturbed(disturbance, path, lifetime).longest);
                }
            }
            EXPECT_GE(longest, expected.longest->milliseconds(Plant::SizesOf(row.paths.front())));
        }
    }
}

// DORVEL_PRINT_TABLE=1 fault_test --gtest_filter=FaultTable.IsInTheDocument prints the document's text.
TEST(FaultTable, IsInTheDocument) {
    ExpectInDocument(RELIABILITY_DOCUMENT, "fault table", FaultTableText());
}

}  // namespace
