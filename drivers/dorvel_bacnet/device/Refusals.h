#pragma once

#include "ErrorPdu.h"
#include "RejectPdu.h"
#include "RejectResponseException.h"
#include "SimpleError.h"

namespace dorvel::BACnet {

// What reads and writes have in common when a device refuses them.

// The class and code of an Error PDU, which stay the PDU's. Throws std::bad_cast if it holds no such error.
SimpleError const& SimpleErrorOf(ErrorPdu const& pdu);

// A Reject PDU as an exception whose text names the reason.
RejectResponseException RejectionOf(RejectPdu const& pdu);

}  // namespace dorvel::BACnet
