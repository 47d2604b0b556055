#pragma once

#include "ErrorPdu.h"
#include "RejectPdu.h"
#include "RejectResponseException.h"
#include "SimpleError.h"

namespace dorvel::BACnet {

// Errors and rejects of a device, as reads and writes both handle them.

// The class and code of an Error PDU, which keeps the ownership. Throws std::bad_cast if its error is of
// another class.
SimpleError const& SimpleErrorOf(ErrorPdu const& pdu);

// A Reject PDU as an exception. Its text has the reason.
RejectResponseException RejectionOf(RejectPdu const& pdu);

}  // namespace dorvel::BACnet
