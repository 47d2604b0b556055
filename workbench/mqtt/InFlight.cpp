#include "InFlight.h"

namespace workbench {

void InFlight::Sent(int id, std::size_t size) {
    messages.emplace(id, size);
    octets += size;
    if (messages.size() >= MostMessages || octets >= MostOctets) {
        isFull = true;
    }
}

void InFlight::Done(int id) {
    auto const found = messages.find(id);
    if (found == messages.end()) {
        return;
    }
    octets -= found->second;
    messages.erase(found);
    if (messages.size() <= MostMessages / 2 && octets <= MostOctets / 2) {
        isFull = false;
    }
}

void InFlight::Clear() {
    *this = InFlight();
}

}  // namespace workbench
