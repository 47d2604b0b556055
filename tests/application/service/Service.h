#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string_view>

#include "../pdu/Apdu.h"
#include "ObjectIdentifier.h"

namespace test {

// Parses the payload with the service's parser. Throws std::bad_cast if the result is of another class.
template <class Service, class Parser>
std::unique_ptr<Service> ParseService(Octets payload) {
    FakeStream stream(payload);
    auto parsed = Parser().Parse(stream);
    Service* const typed = &dynamic_cast<Service&>(*parsed);
    parsed.release();
    return std::unique_ptr<Service>(typed);
}

inline constexpr PropertyIdentifierEnum PresentValue = PropertyIdentifierEnum::Present_Value;

inline ObjectIdentifier AnalogInput(unsigned instance) {
    return ObjectIdentifier(ObjectTypeEnum::Analog_Input, instance);
}

}  // namespace test
