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

}  // namespace

ConfirmedService FindService(std::uint8_t choice) {
    for (Row const& row : Services) {
        if (row.choice == choice) {
            return row.service;
        }
    }
    return nullptr;
}

}  // namespace simulator
