#include "PriorityArray.h"

namespace simulator {

namespace {

constexpr std::uint8_t DateTimeChoice = 1;  // of BACnetPriorityValue

}  // namespace

PriorityArray::PriorityArray(ValuePtr given) {
    if (given && given->IsMoving()) {
        program = std::move(given);
    } else {
        slots.back() = std::move(given);
    }
}

ValuePtr PriorityArray::Slot(std::size_t place) const {
    bool const isProgram = !slots[place] && place + 1 == slots.size();
    return isProgram ? program : slots[place];
}

ValuePtr PriorityArray::Highest() const {
    for (std::size_t place = 0; place < slots.size(); ++place) {
        if (ValuePtr value = Slot(place)) {
            return value;
        }
    }
    return nullptr;
}

std::vector<ValuePtr> PriorityArray::Elements(bool isDateTime) const {
    std::vector<ValuePtr> elements;
    for (std::size_t place = 0; place < slots.size(); ++place) {
        ValuePtr value = Slot(place);
        if (!value) {
            value = std::make_shared<FixedValue>(Octets(1, '\0'));
        } else if (isDateTime) {
            value = std::make_shared<WrappedValue>(DateTimeChoice, std::move(value));
        }
        elements.push_back(std::move(value));
    }
    return elements;
}

}  // namespace simulator
