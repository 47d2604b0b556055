#pragma once

#include <deque>
#include <random>
#include <vector>

#include "Fault.h"
#include "Moment.h"

namespace simulator {

// The faults of a device, and the decision which of them apply to a request.
class Faults {
public:
    static constexpr std::size_t Most = 64;

    // A fault that applies to a request, and its number, by which the functions below identify it.
    struct Hit {
        std::uint64_t number;
        Fault fault;
    };

    // The request that is compared with the scopes of the faults.
    struct Request {
        FaultScope service = FaultScope::Any;  // Any: neither a read nor a write
        std::optional<ObjectId> object;        // the first one that it names
    };

    // Whether Most faults are active or still to come.
    bool IsFull();
    // Returns false and adds nothing if it is full.
    bool Add(Fault const& fault);
    // Ends all faults, also those of exchanges in progress.
    void Clear() { all.clear(); }
    // The faults that are active or still to come, in the order of Add.
    std::vector<Fault> List() const;

    // To be called with every datagram and tick. Starts the time of added faults and removes those that are
    // over.
    void Update(Moment const& now);
    // The faults that apply to this request, in the order of Add. Loss is among them whenever the request is
    // in its scope.
    std::vector<Hit> Meet(Request const& request, Moment const& now);
    // Whether the Loss of an earlier hit loses the next datagram.
    bool Takes(std::uint64_t number, Moment const& now);
    // Whether the fault of an earlier hit has not ended, however often it has been applied.
    bool IsThere(std::uint64_t number) { return Find(number) != nullptr; }
    // A random number from 0 to `highest`, from the sequence of the fault of an earlier hit.
    std::uint32_t Draw(std::uint64_t number, std::uint32_t highest);

private:
    struct Entry {
        Fault fault;
        std::uint64_t number;
        std::optional<std::chrono::milliseconds> start;
        std::minstd_rand random;
        std::uint64_t seen = 0;
        std::uint32_t met = 0;
    };

    Entry* Find(std::uint64_t number);
    static bool IsOver(Entry const& entry, Moment const& now);
    static bool IsSpent(Entry const& entry);
    static bool Strikes(Entry& entry, Moment const& now);

    std::deque<Entry> all;
    std::uint64_t last = 0;
};

}  // namespace simulator
