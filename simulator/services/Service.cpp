#include "Service.h"

namespace simulator {

namespace {

struct Row {
    std::uint8_t choice;
    ConfirmedService service;
};

constexpr Row kServices[] = {
    {12, readProperty},
    {14, readPropertyMultiple},
    {15, writeProperty},
};

}  // namespace

ConfirmedService confirmedService(std::uint8_t choice) {
    for (Row const& row : kServices) {
        if (row.choice == choice) {
            return row.service;
        }
    }
    return nullptr;
}

}  // namespace simulator
