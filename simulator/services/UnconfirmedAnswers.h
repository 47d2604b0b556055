#pragma once

#include <optional>

#include "Device.h"

namespace simulator {

// The answer to an unconfirmed request, given as its APDU: the I-Am of this device to a Who-Is (clause
// 16.10), or its I-Have to a Who-Has for an object that it has (clause 16.9), if the request is for it. No
// value for any other request, and for an I-Have that is longer than the device's APDUs, because a name is.
std::optional<Octets> AnswerUnconfirmed(Octets const& apdu, Device const& device);

}  // namespace simulator
