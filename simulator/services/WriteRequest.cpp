#include "WriteRequest.h"

#include "PriorityArray.h"
#include "Refusal.h"

namespace simulator {

WriteRequest WriteRequest::Decode(TagReader& reader) {
    WriteRequest request;
    request.object = reader.ObjectIdentifier(0);
    request.property = static_cast<PropertyId>(reader.UnsignedNumber(1));
    request.index = reader.OptionalUnsigned(2);
    request.value = reader.Enclosed(3);
    if (auto const priority = reader.OptionalUnsigned(4)) {
        if (*priority < 1 || *priority > PriorityArray::Lowest) {
            throw Reject{RejectReason::ParameterOutOfRange};
        }
        request.priority = static_cast<std::uint8_t>(*priority);
    }
    reader.ExpectEnd();
    return request;
}

}  // namespace simulator
