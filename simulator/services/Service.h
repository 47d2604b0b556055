#pragma once

#include <string>

#include "Device.h"
#include "Standard.h"
#include "TagReader.h"
#include "TagWriter.h"

namespace simulator {

// A confirmed service. It writes the parameters of its ack to `ack`; without parameters the answer is a
// SimpleACK. For an Error or a Reject it throws ServiceError or Reject (Refusal.h). A service with a large
// result throws Abort when `ack` is longer than any client can receive, so the work for a small request is
// bounded.
using ConfirmedService = void (*)(TagReader& request, Device& device, Moment const& now, TagWriter& ack);

// The service of a service choice (clause 21), or null if the device does not have it. A new service is a new
// row in the table of Service.cpp.
ConfirmedService FindService(std::uint8_t choice);

// The Protocol_Services_Supported of a device of that protocol revision: one bit for each service that the
// revision knows (BACnetServicesSupported, clause 21), set for those that the device carries out.
std::string SupportedServices(unsigned protocolRevision);

// Clause 15.5
void ReadProperty(TagReader& request, Device& device, Moment const& now, TagWriter& ack);
// Clause 15.7
void ReadPropertyMultiple(TagReader& request, Device& device, Moment const& now, TagWriter& ack);
// Clause 15.9
void WriteProperty(TagReader& request, Device& device, Moment const& now, TagWriter& ack);

}  // namespace simulator
