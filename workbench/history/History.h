#pragma once

#include <cstddef>
#include <vector>

#include "Project.h"
#include "QualityText.h"

namespace workbench {

// A value of a variable from a time on, until the next sample.
struct Sample {
    long long time = 0;  // a file time
    // A Boolean is 0 or 1; a Float has the shortest text that it has itself: 21.1, not 21.100000381469727.
    // NaN where the variable had no number.
    double value = 0;
    QualityKind quality = QualityKind::Bad;
};

bool operator==(Sample const& left, Sample const& right);  // NaN equals NaN

// Where the trends of variables come from. Thread-safe.
class History {
public:
    virtual ~History() = default;

    // The samples from `from` to `to`, both included, oldest first. The value that was in force at `from` is
    // the first one, with the time `from`; the last one has the time until which it is known to hold, at most
    // `to`. Of more than `most` samples some are left out, so that a line through the others looks the same
    // at that resolution: of each span of time the first, the last, the least and the greatest remain.
    // Empty for a variable without samples, such as one of texts.
    virtual std::vector<Sample> Samples(VariableConfig const& variable, long long from, long long to,
                                        std::size_t most) const = 0;

    // The time of the oldest sample; 0 without one.
    virtual long long Oldest(VariableConfig const& variable) const = 0;
    // Cuts short what other threads are reading, and all that is read later, so that the end of a run does
    // not wait for it.
    virtual void EndReads() const {}
};

// The samples, thinned out as Samples says. `most` is at least 4.
std::vector<Sample> Thinned(std::vector<Sample> const& samples, std::size_t most);

}  // namespace workbench
