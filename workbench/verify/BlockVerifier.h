#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "DeviceSource.h"
#include "DriverPoll.h"
#include "PointFacts.h"
#include "VerifyReport.h"

namespace workbench {

// Compares all points of one block, round after round.
class BlockVerifier {
public:
    // Called before each object that is read; returns false to end the round.
    using Progress = std::function<bool(std::string const& step, std::size_t done, std::size_t all)>;

    // All references must outlive the object.
    BlockVerifier(BlockConfig const& verifiedBlock, standard::Client& client, DriverPoll& driverPoll,
                  long long localDiff, Progress progress);

    // Reads which device answers and what it says of the objects; in a later round again, if the device
    // stopped answering meanwhile. False if the run is to end.
    bool Describe();
    // Compares every point once, and again what differs while values move. False if the run is to end; then
    // points without a verdict keep "not verified".
    bool Round();

    // Whether the device answered throughout the last round.
    bool IsCompared() const { return !device.GivenUp(); }

    // The result of all rounds so far: of each point the worst one, with what the others were.
    BlockResult const& Result();

private:
    using Readings = std::map<standard::PropertyReference, DeviceReading>;

    // The texts of the states of an object's present value.
    struct States {
        std::vector<std::string> multiState;
        std::string active;
        std::string inactive;
    };

    void DescribeObject(ObjectPoints const& object);
    bool ReadAll(std::set<std::size_t> const& which, char const* step, bool withFlags, Readings& readings);
    void Judge(ObjectPoints const& object, Readings& before, Readings& after);
    void JudgePoint(std::size_t index, DeviceReading const& before, DeviceReading const& after,
                    std::vector<Remark> remarks);
    bool IsWorthAgain(ObjectPoints const& object) const;
    bool IsCauseOfFault(std::size_t index) const;
    std::string StateText(std::size_t index, DeviceValue const& value) const;
    standard::PropertyReference ReferenceOf(std::size_t index) const;
    bool CompareAll();
    void Merge();

    BlockConfig const& block;
    DeviceSource device;
    DriverPoll& poll;
    Progress report;
    std::vector<ObjectPoints> objects;
    std::vector<PointFacts> facts;
    std::vector<States> states;         // by object
    std::vector<std::size_t> objectOf;  // of each point
    std::vector<PointResult> round;     // of this round
    bool isDescribed = false;
    BlockResult result;
};

}  // namespace workbench
