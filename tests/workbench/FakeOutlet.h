#pragma once

#include <memory>
#include <string>

#include "Outlet.h"
#include "OutletList.h"

namespace test {

// An outlet that does nothing and is as a test says.
class FakeOutlet : public workbench::Outlet {
public:
    explicit FakeOutlet(workbench::OutletState first) : state(std::move(first)) {}

    void Start() override {}
    void End() override {}
    workbench::OutletState State() const override { return state; }

    // Adds one to the list, which owns it.
    static FakeOutlet& AddTo(workbench::OutletList& outlets, workbench::OutletState first) {
        auto outlet = std::make_unique<FakeOutlet>(std::move(first));
        FakeOutlet& added = *outlet;
        outlets.Add(std::move(outlet));
        return added;
    }

    workbench::OutletState state;
};

}  // namespace test
