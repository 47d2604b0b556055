#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Cause.h"

namespace workbench {

// Collects the causes of a block's state during a cycle. Causes of the same kind and object are one cause.
// Not thread-safe.
class CauseList {
public:
    // Further causes of a cycle are left out.
    static constexpr std::size_t Most = 16;

    // text has the object and no count; of equal causes the first text counts. time is a file time.
    void Add(CauseKind kind, std::string const& object, std::string text, long long time);

    // A cause that occurs once in a cycle, and its count.
    void AddCounted(Cause cause);

    // Ends the cycle. Returns its causes in the order of their kinds. A cause that the cycle before had too
    // keeps its time.
    std::vector<Cause> Finish();

private:
    std::vector<Cause> current;
    std::vector<Cause> before;
};

}  // namespace workbench
