#pragma once

#include <string>
#include <vector>

#include "../host/dorvel/LuaState.h"
#include "FaultWorld.h"
#include "dorvel/Runtime.h"
#include "dorvel/ScadaProtocol.h"

namespace test {

// The kind of exchange between the disturbed block and its device.
enum class Path { Plain, Segmented, Routed, Write, Mixed };

// The report of a block to the runtime in one cycle, from best to worst.
enum class Report {
    Good,    // no fault, every variable new and good, and as the device has it
    Old,     // no fault, but an object's variables are as they were, and still good
    Wrong,   // no fault, but a variable is not as the device has it
    Fault,   // "No connection"; DataValues keep their value and are bad, other variables are left alone
    Unclear  // anything else
};

// The sizes in the formulas of a path: attempts, objects, segments of an answer.
struct Sizes {
    int attempts;
    int objects;
    int segments;
};

// Two blocks run by the host and created by a script, each with its own task and simulated device: the
// subject, whose device is disturbed, and the bystander. On a path with writes the subject writes in every
// cycle.
class Plant {
public:
    static constexpr int Attempts = 3;
    // The default pause between the end of a cycle and the beginning of the next one, in milliseconds.
    static constexpr long long Pause = 1000;

    // One cycle of both blocks.
    struct Cycle {
        Report report;
        long long duration;  // of the subject, in milliseconds
        std::string log;     // of both; the user's trace is off
        bool isBystanderGood;
        long long bystanderDuration;
    };

    explicit Plant(Path pathOfSubject);

    static Sizes SizesOf(Path path);

    Cycle Run(long long pause = Pause);
    // The faults of the subject's device.
    simulator::Faults& Faults() { return station->GetFaults(); }
    FaultWorld& World() { return world; }
    // Cuts the subject off from its device after this number of further datagrams (FaultWorld::CutOffAfter).
    static constexpr long long Never = FaultWorld::Never;
    void CutOffAfter(long long datagrams);
    bool IsCutOff() const { return world.IsCutOff(); }
    // As in FaultWorld, for the subject's device.
    void SetRoundTrip(long long milliseconds);
    void Hold(long long milliseconds);
    // Sends an unsolicited datagram from the subject's device.
    void Inject(long long delay, simulator::Octets octets);
    // The octets that the script uses after a garbage collection.
    long long ScriptOctets();
    // The requests to the bystander's device since the last call.
    std::vector<simulator::Octets> TakeBystanderRequests() { return world.TakeRecord(); }
    // Waits until nothing is in transit, empties the sockets, restarts the devices without faults, and runs
    // two cycles.
    void Settle();

private:
    struct Variable {
        long long id;
        bool isDataValue;
        std::string expected;
    };
    struct Block {
        ScadaProtocol* protocol = nullptr;
        long long faultItem = 0;
        long long errorItem = 0;
        long long connectItem = 0;
        std::vector<Variable> variables;
    };

    void StartDevices();
    void AddBlock(Block& block, std::string const& fields, struct VariableRow const* rows, std::size_t count);
    long long Setpoint(_OpcUa_BuiltInType type, char const* value);
    Report ReportOf(Block const& block, long long from);
    bool IsLost(Block const& block);
    VariableState StateOf(long long id);
    std::string TextOf(long long id);

    FaultWorld world;
    Path const path;
    simulator::FaultyStation* station = nullptr;
    LuaState lua;
    dorvel::Runtime runtime{lua};
    Block subject;
    Block bystander;
    long long subjectEnd = 0;
};

}  // namespace test
