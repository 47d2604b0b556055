#include "Service.h"

namespace simulator {

namespace {

struct Row {
    std::uint8_t choice;
    ConfirmedService service;
};

constexpr Row Services[] = {
    {12, ReadProperty},
    {14, ReadPropertyMultiple},
    {15, WriteProperty},
};

// Their bits in BACnetServicesSupported. The bits of the confirmed ones above are their choices.
constexpr std::size_t UnconfirmedBits[] = {
    33,  // Who-Has
    34,  // Who-Is
};

// The number of services from a protocol revision on.
struct Revision {
    unsigned first;
    std::size_t services;
};

constexpr Revision Revisions[] = {
    {0, 35},  {1, 40},  // up to GetEventInformation
    {14, 41},           // WriteGroup
    {18, 44},           // SubscribeCOVPropertyMultiple and its notifications
    {22, 47},           // audit logs
};

}  // namespace

std::string SupportedServices(unsigned protocolRevision) {
    std::size_t count = 0;
    for (Revision const& revision : Revisions) {
        count = protocolRevision >= revision.first ? revision.services : count;
    }
    std::string bits(count, '0');
    for (Row const& row : Services) {
        bits[row.choice] = '1';
    }
    for (std::size_t const bit : UnconfirmedBits) {
        bits[bit] = '1';
    }
    return bits;
}

ConfirmedService FindService(std::uint8_t choice) {
    for (Row const& row : Services) {
        if (row.choice == choice) {
            return row.service;
        }
    }
    return nullptr;
}

}  // namespace simulator
