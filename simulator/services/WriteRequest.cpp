#include "WriteRequest.h"

#include "PriorityArray.h"
#include "Refusal.h"

namespace simulator {

WriteRequest WriteRequest::decode(TagReader& reader) {
    WriteRequest request;
    request.object = reader.objectIdentifier(0);
    request.property = static_cast<PropertyId>(reader.unsignedNumber(1));
    request.index = reader.optionalUnsigned(2);
    request.value = reader.enclosed(3);
    if (auto const priority = reader.optionalUnsigned(4)) {
        if (*priority < 1 || *priority > PriorityArray::kLowest) {
            throw Reject{RejectReason::ParameterOutOfRange};
        }
        request.priority = static_cast<std::uint8_t>(*priority);
    }
    reader.expectEnd();
    return request;
}

}  // namespace simulator
