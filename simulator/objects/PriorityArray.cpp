#include "PriorityArray.h"

namespace simulator {

namespace {

constexpr std::uint8_t kDateTimeChoice = 1;  // of BACnetPriorityValue

}  // namespace

PriorityArray::PriorityArray(ValuePtr given) {
    if (given && given->isMoving()) {
        m_program = std::move(given);
    } else {
        m_slots.back() = std::move(given);
    }
}

ValuePtr PriorityArray::slot(std::size_t place) const {
    bool const isProgram = !m_slots[place] && place + 1 == m_slots.size();
    return isProgram ? m_program : m_slots[place];
}

ValuePtr PriorityArray::highest() const {
    for (std::size_t place = 0; place < m_slots.size(); ++place) {
        if (ValuePtr value = slot(place)) {
            return value;
        }
    }
    return nullptr;
}

std::vector<ValuePtr> PriorityArray::elements(bool isDateTime) const {
    std::vector<ValuePtr> elements;
    for (std::size_t place = 0; place < m_slots.size(); ++place) {
        ValuePtr value = slot(place);
        if (!value) {
            value = std::make_shared<FixedValue>(Octets(1, '\0'));
        } else if (isDateTime) {
            value = std::make_shared<WrappedValue>(kDateTimeChoice, std::move(value));
        }
        elements.push_back(std::move(value));
    }
    return elements;
}

}  // namespace simulator
