#pragma once

#include <optional>

namespace workbench {

// The least time between two births: a host that asks for them all the time, or a block that goes in and out
// of fault, must not fill the network. A clock that is set back ends the pause.
class BirthPause {
public:
    static constexpr long long Length = 5 * 10000000LL;  // in 100-nanosecond units

    bool IsOver(long long now) const { return !begin || now < *begin || now - *begin >= Length; }
    void Begin(long long now) { begin = now; }
    void Forget() { begin.reset(); }

private:
    std::optional<long long> begin;
};

}  // namespace workbench
