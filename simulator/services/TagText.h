#pragma once

#include <string>

#include "ObjectId.h"
#include "OctetVector.h"
#include "Standard.h"

namespace simulator {

// Tagged values as one line without control characters: "Real 21.5", or with an opening and a closing tag
// "{0 Time 08:00:00.00 Real 21.5 }0". The octets of context tags, and contents that do not fit their
// datatype, are in hexadecimal. The octets must be whole tags.
std::string TextOfTags(Octets const& octets);
// "analog_input 1", or "object type 200 instance 1" for an unknown type.
std::string TextOfObject(ObjectId id);

}  // namespace simulator
