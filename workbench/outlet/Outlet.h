#pragma once

#include "History.h"
#include "OutletState.h"
#include "Snapshot.h"

namespace workbench {

// A system that a run feeds besides its display: a broker, a monitoring system, a recording. It has threads
// of its own and disturbs no cycle.
class Outlet {
public:
    virtual ~Outlet() = default;

    // Called once on the main thread, before the first cycle.
    virtual void Start() = 0;
    // Called after each cycle of a block, on the thread of its task, when the memory of the run has it. Takes
    // no longer than putting a pointer into a bounded queue.
    virtual void Follow(SharedSnapshot const& block) { static_cast<void>(block); }
    // Called once on the main thread, when the runtime has stopped: passes on what is left, within a few
    // seconds.
    virtual void End() = 0;
    // Thread-safe, and quick.
    virtual OutletState State() const = 0;
    // The trends that it keeps, longer than memory does; null without any. Not used after End.
    virtual History const* Trends() const { return nullptr; }
};

}  // namespace workbench
