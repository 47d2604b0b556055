#pragma once

#include "Device.h"
#include "Standard.h"
#include "TagReader.h"
#include "TagWriter.h"

namespace simulator {

// A confirmed service that answers with an ack, a simple one if it leaves `ack` empty. It throws Reject or
// ServiceError instead (Refusal.h). `ack` gets the ack's parameters; a service with a large result throws
// Abort when `ack` grows beyond what any client can be sent, so that a small request cannot make it work
// without bound.
using ConfirmedService = void (*)(TagReader& request, Device& device, Moment const& now, TagWriter& ack);

// The service of a service choice (clause 21), null if the device doesn't carry it out. A new service is
// a new row in the table of Service.cpp.
ConfirmedService FindService(std::uint8_t choice);

// Clause 15.5
void ReadProperty(TagReader& request, Device& device, Moment const& now, TagWriter& ack);
// Clause 15.7
void ReadPropertyMultiple(TagReader& request, Device& device, Moment const& now, TagWriter& ack);
// Clause 15.9
void WriteProperty(TagReader& request, Device& device, Moment const& now, TagWriter& ack);

}  // namespace simulator
