#include "Faults.h"

#include <algorithm>

namespace simulator {

namespace {

bool IsInScope(Fault const& fault, Faults::Request const& request) {
    bool const isAny = fault.on == FaultScope::Any && request.service != FaultScope::WhoIs;
    return (isAny || fault.on == request.service) && (!fault.object || fault.object == request.object);
}

}  // namespace

bool Faults::IsFull() {
    if (all.size() == Most) {
        all.erase(std::remove_if(all.begin(), all.end(), IsSpent), all.end());
    }
    return all.size() == Most;
}

bool Faults::Add(Fault const& fault) {
    if (IsFull()) {
        return false;
    }
    all.push_back({fault, ++last, std::nullopt, std::minstd_rand(fault.seed)});
    return true;
}

std::vector<Fault> Faults::List() const {
    std::vector<Fault> faults;
    for (Entry const& entry : all) {
        if (!IsSpent(entry)) {
            faults.push_back(entry.fault);
        }
    }
    return faults;
}

void Faults::Update(Moment const& now) {
    for (Entry& entry : all) {
        if (!entry.start) {
            entry.start = now.sinceStart;
        }
    }
    all.erase(std::remove_if(all.begin(), all.end(), [&](Entry const& entry) { return IsOver(entry, now); }),
              all.end());
}

std::vector<Faults::Hit> Faults::Meet(Request const& request, Moment const& now) {
    Update(now);
    std::vector<Hit> hits;
    for (Entry& entry : all) {
        if (IsInScope(entry.fault, request) && (entry.fault.kind == FaultKind::Loss || Strikes(entry, now))) {
            hits.push_back({entry.number, entry.fault});
        }
    }
    return hits;
}

bool Faults::Takes(std::uint64_t number, Moment const& now) {
    Entry* const entry = Find(number);
    return entry && Strikes(*entry, now);
}

std::uint32_t Faults::Draw(std::uint64_t number, std::uint32_t highest) {
    Entry* const entry = Find(number);
    return entry ? std::uniform_int_distribution<std::uint32_t>(0, highest)(entry->random) : 0;
}

Faults::Entry* Faults::Find(std::uint64_t number) {
    auto const entry = std::find_if(all.begin(), all.end(),
                                    [number](Entry const& candidate) { return candidate.number == number; });
    return entry == all.end() ? nullptr : &*entry;
}

bool Faults::IsOver(Entry const& entry, Moment const& now) {
    return entry.fault.duration && now.sinceStart - *entry.start - entry.fault.after >= *entry.fault.duration;
}

bool Faults::IsSpent(Entry const& entry) {
    return entry.fault.times && entry.met >= *entry.fault.times;
}

bool Faults::Strikes(Entry& entry, Moment const& now) {
    Fault const& fault = entry.fault;
    if (IsSpent(entry) || now.sinceStart - *entry.start < fault.after) {
        return false;
    }
    ++entry.seen;
    if (fault.every > 1 && entry.seen % fault.every != 0) {
        return false;
    }
    if (!(fault.chance >= 1) && !(std::uniform_real_distribution<>()(entry.random) < fault.chance)) {
        return false;
    }
    ++entry.met;
    return true;
}

}  // namespace simulator
