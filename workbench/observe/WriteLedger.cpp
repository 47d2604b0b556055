#include "WriteLedger.h"

#include <algorithm>
#include <utility>

namespace workbench {

namespace {

// A station as numbers; the local network is 0.
std::pair<std::uint32_t, standard::Octets> Order(std::optional<standard::NetworkAddress> const& station) {
    return station ? std::pair<std::uint32_t, standard::Octets>(station->network, station->mac)
                   : std::pair<std::uint32_t, standard::Octets>();
}

std::vector<SentWrite>::iterator Find(std::vector<SentWrite>& list, unsigned long long number) {
    return std::find_if(list.begin(), list.end(),
                        [=](SentWrite const& write) { return write.number == number; });
}

}  // namespace

bool operator<(WriteTarget const& left, WriteTarget const& right) {
    auto const order = [](WriteTarget const& target) {
        return std::make_tuple(target.peer, Order(target.station), target.object.Encoded(), target.property,
                               target.priority);
    };
    return order(left) < order(right);
}

void WriteLedger::Sent(WriteTarget const& target, SentWrite write) {
    std::vector<SentWrite>& list = writes[target];
    if (list.size() == Most) {
        list.erase(list.begin());
    }
    list.push_back(std::move(write));
}

void WriteLedger::Acknowledged(WriteTarget const& target, unsigned long long number) {
    auto const known = writes.find(target);
    if (known == writes.end()) {
        return;
    }
    auto const write = Find(known->second, number);
    if (write != known->second.end()) {
        write->isAcknowledged = true;
        DropOverwritten(known->second);
    }
}

void WriteLedger::Refused(WriteTarget const& target, unsigned long long number) {
    auto const known = writes.find(target);
    if (known == writes.end()) {
        return;
    }
    auto const write = Find(known->second, number);
    if (write != known->second.end()) {
        known->second.erase(write);
    }
}

void WriteLedger::Add(WriteLedger const& other) {
    for (auto const& [target, more] : other.writes) {
        std::vector<SentWrite>& list = writes[target];
        list.insert(list.end(), more.begin(), more.end());
        std::stable_sort(list.begin(), list.end(), [](SentWrite const& left, SentWrite const& right) {
            return left.time < right.time;
        });
        DropOverwritten(list);
    }
}

void WriteLedger::DropOverwritten(std::vector<SentWrite>& list) {
    auto const latest =
        std::find_if(list.rbegin(), list.rend(), [](SentWrite const& write) { return write.isAcknowledged; });
    if (latest != list.rend()) {
        list.erase(list.begin(), latest.base() - 1);
    }
}

}  // namespace workbench
