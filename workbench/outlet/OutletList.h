#pragma once

#include <memory>
#include <vector>

#include "Outlet.h"

namespace workbench {

// The outlets of a run. Filled before the first cycle and not changed then, so that all threads may read it.
class OutletList {
public:
    // Null is left out.
    void Add(std::unique_ptr<Outlet> outlet);

    void Start();
    void Follow(SharedSnapshot const& block);
    void End();
    // In the order in which they were added.
    std::vector<OutletState> States() const;
    // Those of the first outlet that keeps trends; the others without one.
    History const& TrendsOr(History const& others) const;
    bool IsEmpty() const { return outlets.empty(); }

private:
    std::vector<std::unique_ptr<Outlet>> outlets;
};

}  // namespace workbench
