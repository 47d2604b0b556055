#include "Faults.h"

#include <algorithm>

namespace simulator {

namespace {

bool isInScope(Fault const& fault, Faults::Request const& request) {
    return (fault.on == FaultScope::Any || fault.on == request.service) &&
           (!fault.object || fault.object == request.object);
}

}  // namespace

bool Faults::isFull() {
    if (m_all.size() == kMost) {
        m_all.erase(std::remove_if(m_all.begin(), m_all.end(), isSpent), m_all.end());
    }
    return m_all.size() == kMost;
}

bool Faults::add(Fault const& fault) {
    if (isFull()) {
        return false;
    }
    m_all.push_back({fault, ++m_last, std::nullopt, std::minstd_rand(fault.seed)});
    return true;
}

std::vector<Fault> Faults::list() const {
    std::vector<Fault> faults;
    for (Entry const& entry : m_all) {
        if (!isSpent(entry)) {
            faults.push_back(entry.fault);
        }
    }
    return faults;
}

void Faults::update(Moment const& now) {
    for (Entry& entry : m_all) {
        if (!entry.start) {
            entry.start = now.sinceStart;
        }
    }
    m_all.erase(
        std::remove_if(m_all.begin(), m_all.end(), [&](Entry const& entry) { return isOver(entry, now); }),
        m_all.end());
}

std::vector<Faults::Hit> Faults::meet(Request const& request, Moment const& now) {
    update(now);
    std::vector<Hit> hits;
    for (Entry& entry : m_all) {
        if (isInScope(entry.fault, request) && (entry.fault.kind == FaultKind::Loss || strikes(entry, now))) {
            hits.push_back({entry.number, entry.fault});
        }
    }
    return hits;
}

bool Faults::takes(std::uint64_t number, Moment const& now) {
    Entry* const entry = find(number);
    return entry && strikes(*entry, now);
}

std::uint32_t Faults::draw(std::uint64_t number, std::uint32_t highest) {
    Entry* const entry = find(number);
    return entry ? std::uniform_int_distribution<std::uint32_t>(0, highest)(entry->random) : 0;
}

Faults::Entry* Faults::find(std::uint64_t number) {
    auto const entry = std::find_if(m_all.begin(), m_all.end(),
                                    [number](Entry const& candidate) { return candidate.number == number; });
    return entry == m_all.end() ? nullptr : &*entry;
}

bool Faults::isOver(Entry const& entry, Moment const& now) {
    return entry.fault.duration && now.sinceStart - *entry.start - entry.fault.after >= *entry.fault.duration;
}

bool Faults::isSpent(Entry const& entry) {
    return entry.fault.times && entry.met >= *entry.fault.times;
}

bool Faults::strikes(Entry& entry, Moment const& now) {
    Fault const& fault = entry.fault;
    if (isSpent(entry) || now.sinceStart - *entry.start < fault.after) {
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
