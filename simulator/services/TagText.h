#pragma once

#include <string>

#include "ObjectId.h"
#include "OctetVector.h"
#include "Standard.h"

namespace simulator {

// Tagged values for people, in one line without control characters: "Real 21.5", and for what stands in
// brackets "{0 Time 08:00:00.00 Real 21.5 }0". Octets of context tags and of contents that are not of their
// datatype come in hexadecimal. The octets hold whole tags.
std::string TextOfTags(Octets const& octets);
// "analog_input 1", or "object type 200 instance 1" of a type that the simulator doesn't know.
std::string TextOfObject(ObjectId id);

}  // namespace simulator
