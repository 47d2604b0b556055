#pragma once

#include <memory>

#include "ConfirmedServiceAck.h"
#include "IStreamBase.h"

// Reads the payload of one service's acknowledgement. One instance serves all threads, so it holds no state.
class ServiceAckParser {
public:
    virtual ~ServiceAckParser() = default;

    // The stream stands behind the service choice. Throws ParseException or one of its children for
    // octets that are not the service's, and what the value parsers throw.
    virtual std::unique_ptr<ConfirmedServiceAck> Parse(IStreamBase& stream) const = 0;
};
