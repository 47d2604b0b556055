#include "OutletList.h"

#include <utility>

namespace workbench {

void OutletList::Add(std::unique_ptr<Outlet> outlet) {
    if (outlet) {
        outlets.push_back(std::move(outlet));
    }
}

void OutletList::Start() {
    for (auto const& outlet : outlets) {
        outlet->Start();
    }
}

void OutletList::Follow(SharedSnapshot const& block) {
    for (auto const& outlet : outlets) {
        outlet->Follow(block);
    }
}

void OutletList::End() {
    for (auto const& outlet : outlets) {
        outlet->End();
    }
}

std::vector<OutletState> OutletList::States() const {
    std::vector<OutletState> states;
    for (auto const& outlet : outlets) {
        states.push_back(outlet->State());
    }
    return states;
}

History const& OutletList::TrendsOr(History const& others) const {
    for (auto const& outlet : outlets) {
        if (History const* const trends = outlet->Trends()) {
            return *trends;
        }
    }
    return others;
}

}  // namespace workbench
