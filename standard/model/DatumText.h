#pragma once

#include <string>
#include <vector>

#include "Datum.h"
#include "ObjectType.h"
#include "PropertyReference.h"

namespace standard {

// Values in words, in one line: "21.5", "true", "-56", "degrees-celsius", "2024-03-15", "13:30:15.50",
// "in-alarm, fault", "analog-input 1". What tags enclose is "[1] {3, 4}", a context-tagged value "[0] 02".
// Parts of a date or time that are any are "*". Octets are hexadecimal. A text comes as the device sent it,
// without quotes and with its control characters; it is valid UTF-8 if its Datum is. tools::Printable makes
// it safe to show.

// A value whose datatype is that of its tag.
std::string DatumText(Datum const& datum);
// A value of a known datatype: enumerations and status flags by name, others as above.
std::string DatumText(Datum const& datum, Datatype datatype);
// The value of a property, by the datatype that the property has. Several values are separated by ", "; no
// value at all is "{}".
std::string DatumText(std::vector<Datum> const& values, PropertyReference const& reference);

}  // namespace standard
