#include "Pace.h"

#include <iterator>

namespace standard {

Link::Time Pace::NextTurn(Peer const& station) const {
    auto const found = lastSent.find(station.endpoint);
    return found == lastSent.end() ? Link::Time::min() : found->second + (station.remote ? routed : local);
}

void Pace::NoteSent(Peer const& station, Link::Time at) {
    if (lastSent.size() >= Most) {
        for (auto one = lastSent.begin(); one != lastSent.end();) {
            bool const isOver = one->second + local + routed < at;
            one = isOver ? lastSent.erase(one) : std::next(one);
        }
    }
    lastSent[station.endpoint] = at;
}

}  // namespace standard
