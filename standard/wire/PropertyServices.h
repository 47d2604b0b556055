#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "Datum.h"
#include "Failure.h"
#include "OctetVector.h"
#include "PropertyReference.h"

namespace standard {

// What a device answers for one property: its values (one, or all elements of an array or a list), or the
// reason why there are none.
struct ReadResult {
    PropertyReference reference;
    std::vector<Datum> values;
    std::optional<Failure> failure;
};

// The parameters of a WriteProperty request.
struct WriteParameters {
    PropertyReference reference;
    std::vector<Datum> values;
    std::optional<std::uint32_t> priority;
};

// The parameters of ReadProperty, ReadPropertyMultiple and WriteProperty (clauses 15.5, 15.7 and 15.9), for
// any program that sees an APDU. `content` is the sequence of octets in which they begin at index `at` and
// end at its end. No value if they are not those of the service. Never throws. Work and memory are linear
// in the number of octets.
namespace parameters {

std::optional<PropertyReference> OfReadProperty(Octets const& content, std::size_t at = 0);
std::optional<std::vector<PropertyReference>> OfReadPropertyMultiple(Octets const& content,
                                                                     std::size_t at = 0);
std::optional<ReadResult> OfReadPropertyAck(Octets const& content, std::size_t at = 0);
std::optional<std::vector<ReadResult>> OfReadPropertyMultipleAck(Octets const& content, std::size_t at = 0);
std::optional<WriteParameters> OfWriteProperty(Octets const& content, std::size_t at = 0);

}  // namespace parameters

}  // namespace standard
