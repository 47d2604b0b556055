#pragma once

#include <memory>

#include "ConfirmedServiceRequest.h"
#include "IStreamBase.h"

// Reads the payload of one service's request. One instance serves all threads, so it holds no state.
class ServiceRequestParser {
public:
    virtual ~ServiceRequestParser() = default;

    // The stream stands behind the service choice. Throws ParseException or one of its children for
    // octets that are not the service's, and what the value parsers throw.
    virtual std::unique_ptr<ConfirmedServiceRequest> Parse(IStreamBase& stream) const = 0;
};
