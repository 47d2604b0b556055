#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "Value.h"

namespace simulator {

// Who commands an object (clause 19.2): 16 priorities, 1 the highest, each with a value or with none.
class PriorityArray {
public:
    static constexpr std::uint8_t Lowest = 16;

    // `given` is what the device file gives the object as its value, or null. It is commanded at the lowest
    // priority. A moving one stands for a program of the device that commands without end, and takes the
    // lowest priority back whenever that is relinquished.
    explicit PriorityArray(ValuePtr given);

    // Priority 1 to 16; null relinquishes.
    void Command(std::uint8_t priority, ValuePtr value) { slots[priority - 1u] = std::move(value); }
    // The value of the highest priority that has one, or null.
    ValuePtr Highest() const;
    // The elements of the property Priority_Array. A BACnetDateTime, which has no application tag, gets the
    // choice of BACnetPriorityValue around it.
    std::vector<ValuePtr> Elements(bool isDateTime) const;

private:
    ValuePtr Slot(std::size_t place) const;

    std::array<ValuePtr, Lowest> slots;
    ValuePtr program;  // of the device itself, or null
};

}  // namespace simulator
