#pragma once

#include <optional>

#include "Device.h"

namespace simulator {

// The answer to an unconfirmed request, given as its APDU: the I-Am of this device to a Who-Is without limits
// or with limits that include it (clause 16.10). No value for any other request.
std::optional<Octets> AnswerUnconfirmed(Octets const& apdu, Device const& device);

}  // namespace simulator
