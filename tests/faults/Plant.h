#pragma once

#include <string>
#include <vector>

#include "../host/dorvel/LuaState.h"
#include "FaultWorld.h"
#include "dorvel/Runtime.h"
#include "dorvel/ScadaProtocol.h"

namespace test {

// What the disturbed block does with its device.
enum class Path { Plain, Segmented, Routed, Write, Mixed };

// What a block tells the runtime in one cycle, from best to worst.
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

// Two blocks as the host runs them, made by a script, each with a task and a simulated device of its own: the
// subject, whose device is disturbed, and the bystander. The subject writes in every cycle if its path is to.
class Plant {
public:
    static constexpr int Attempts = 3;
    // Between the end of a cycle and the beginning of the next one, in milliseconds, by default.
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
    // Cuts the subject off its device after so many further datagrams (FaultWorld::CutOffAfter).
    static constexpr long long Never = FaultWorld::Never;
    void CutOffAfter(long long datagrams);
    bool IsCutOff() const { return world.IsCutOff(); }
    // The same of FaultWorld, for the subject's device.
    void SetRoundTrip(long long milliseconds);
    void Hold(long long milliseconds);
    // A datagram of the subject's device that nobody asked for.
    void Inject(long long delay, simulator::Octets octets);
    // What the script takes, after it was tidied up.
    long long ScriptOctets();
    // What the bystander's device was sent since the last call.
    std::vector<simulator::Octets> TakeBystanderRequests() { return world.TakeRecord(); }
    // The devices are restarted, without faults, when nothing is under way any more and what waits in the
    // sockets has been read away; then two cycles.
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
