#include "PastRequests.h"

#include <algorithm>

namespace standard {

void PastRequests::Add(Request const& request) {
    requests.push_front(request);
    if (requests.size() > Most) {
        requests.pop_back();
    }
}

PastRequests::Request const* PastRequests::Find(Peer const& station, std::uint8_t invokeId) const {
    auto const found = std::find_if(requests.begin(), requests.end(), [&](Request const& request) {
        return request.invokeId == invokeId && IsAmong(station, request.device);
    });
    return found == requests.end() ? nullptr : &*found;
}

}  // namespace standard
