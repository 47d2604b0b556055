#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "Value.h"

namespace simulator {

// The commands of an object (clause 19.2): 16 priorities, 1 the highest, each with a value or without.
class PriorityArray {
public:
    static constexpr std::uint8_t Lowest = 16;

    // `given` is the value in the device file, or null. It is commanded at the lowest priority. A moving
    // value acts as a program of the device that commands without end: it has the lowest priority again
    // whenever that is relinquished.
    explicit PriorityArray(ValuePtr given);

    // Priority 1 to 16; null relinquishes.
    void Command(std::uint8_t priority, ValuePtr value) { slots[priority - 1u] = std::move(value); }
    // The value of the highest priority that has one, or null.
    ValuePtr Highest() const;
    // The elements of the property Priority_Array. A BACnetDateTime, which has no application tag, is inside
    // the tag of its choice of BACnetPriorityValue.
    std::vector<ValuePtr> Elements(bool isDateTime) const;

private:
    ValuePtr Slot(std::size_t place) const;

    std::array<ValuePtr, Lowest> slots;
    ValuePtr program;  // the moving value, or null
};

}  // namespace simulator
