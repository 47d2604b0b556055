#pragma once

#include <cstddef>
#include <map>
#include <optional>

#include "AnswerPdu.h"
#include "OctetVector.h"

namespace workbench {

// Collects the segments of one answer (clause 5.4), in bounded memory.
class AnswerSegments {
public:
    // More segments than sequence numbers: the answer has no end that anybody could use.
    static constexpr unsigned long long Most = 256;

    enum class Arrival { Next, Repeated, OutOfOrder, WithoutEnd };

    // Forgets everything.
    void Clear();
    Arrival Add(standard::AnswerPdu const& pdu, standard::Octets const& apdu);

    bool IsEmpty() const { return count == 0; }
    unsigned long long Count() const { return count; }
    // True when the last segment has come, though others may be missing.
    bool HasEnd() const { return hasEnd; }
    // The lowest sequence number that has not come.
    std::optional<unsigned> Missing() const;
    // The parts in the order of their numbers.
    standard::Octets Content() const;

private:
    std::map<unsigned, standard::Octets> parts;  // by sequence number
    unsigned long long count = 0;
    bool hasEnd = false;
};

}  // namespace workbench
