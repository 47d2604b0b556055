#pragma once

#include <optional>

#include "Device.h"

namespace simulator {

// Answers an unconfirmed request (its octets from the PDU type on): the I-Am of this device to a Who-Is
// whose limits it lies within (clause 16.10), nothing to anything else.
std::optional<Octets> AnswerUnconfirmed(Octets const& apdu, Device const& device);

}  // namespace simulator
