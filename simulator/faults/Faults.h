#pragma once

#include <deque>
#include <random>
#include <vector>

#include "Fault.h"
#include "Moment.h"

namespace simulator {

// The faults of a device, and the decision which of them meet a request.
class Faults {
public:
    static constexpr std::size_t Most = 64;

    // A fault that meets a request, and the number by which it can be asked for again.
    struct Hit {
        std::uint64_t number;
        Fault fault;
    };

    // The request that is to be met or not.
    struct Request {
        FaultScope service = FaultScope::Any;  // Any: neither a read nor a write
        std::optional<ObjectId> object;        // the first one that it names
    };

    // Whether there are Most that are still to come or go on.
    bool IsFull();
    // False, and nothing added, if it is full.
    bool Add(Fault const& fault);
    // Ends all of them, those of exchanges under way too.
    void Clear() { all.clear(); }
    // Those that are still to come or go on, in the order of adding.
    std::vector<Fault> List() const;

    // To be called with every datagram and tick: starts what was added, ends what is over.
    void Update(Moment const& now);
    // The faults that meet this request, in the order of adding. Loss is among them whenever it is in scope.
    std::vector<Hit> Meet(Request const& request, Moment const& now);
    // Whether a Loss of an earlier hit takes the next datagram.
    bool Takes(std::uint64_t number, Moment const& now);
    // Whether the fault of an earlier hit is there still, however often it has struck.
    bool IsThere(std::uint64_t number) { return Find(number) != nullptr; }
    // A random number from 0 to `highest`, from the seed of the fault of an earlier hit.
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
