#include "Refusals.h"

#include <typeinfo>

namespace dorvel::BACnet {

SimpleError const& SimpleErrorOf(ErrorPdu const& pdu) {
    auto const* const error = dynamic_cast<SimpleError const*>(pdu.GetError());
    if (!error) {
        throw std::bad_cast();
    }
    return *error;
}

RejectResponseException RejectionOf(RejectPdu const& pdu) {
    return RejectResponseException(
        "Error! The packet was rejected. Reason: " + RejectPdu::Message(pdu.GetReason()), pdu.GetReason());
}

}  // namespace dorvel::BACnet
