#pragma once

#include <memory>

#include "IStreamBase.h"
#include "PDU.h"

// Reads the PDUs of one type. One instance serves all threads.
class IPduParser {
public:
    virtual ~IPduParser() = default;

    // firstOctet is the APDU's first octet, flags included; the stream stands at the second one.
    // Throws WrongLengthException when the stream ends too early and FormatErrorException for octets that
    // are not those of the PDU; what a service parser throws passes through.
    virtual std::unique_ptr<PDU> Parse(char firstOctet, IStreamBase& stream) const = 0;
};
