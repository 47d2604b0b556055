#pragma once

#include <vector>

// The payload of a confirmed request: the parameters of one service, without the PDU header.
class ConfirmedServiceRequest {
public:
    virtual ~ConfirmedServiceRequest() = default;

    virtual std::vector<char> GetBytes() const = 0;
};
