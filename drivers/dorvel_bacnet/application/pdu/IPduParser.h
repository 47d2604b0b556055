#pragma once

#include <memory>

#include "IStreamBase.h"
#include "PDU.h"

// Parses the PDUs of one type. It has no state: one instance serves all threads.
class IPduParser {
public:
    virtual ~IPduParser() = default;

    // firstOctet is the first octet of the APDU with its flags; the stream is at the second one. Throws
    // WrongLengthException when the stream ends too early, FormatErrorException for octets of another form,
    // and what the parser of the service throws.
    virtual std::unique_ptr<PDU> Parse(char firstOctet, IStreamBase& stream) const = 0;
};
