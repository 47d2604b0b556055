#pragma once

#include <memory>

#include "ConfirmedServiceAck.h"
#include "IStreamBase.h"

// Parses the payload of the acknowledgement of one service. It has no state: one instance serves all threads.
class ServiceAckParser {
public:
    virtual ~ServiceAckParser() = default;

    // The stream is at the octet after the service choice. Throws ParseException or a class derived from it
    // for octets of another form, and what the value parsers throw.
    virtual std::unique_ptr<ConfirmedServiceAck> Parse(IStreamBase& stream) const = 0;
};
