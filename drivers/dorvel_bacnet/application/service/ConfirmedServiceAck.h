#pragma once

#include <vector>

#include "AnswerStore.h"

// The payload of a complex acknowledgement: the result of one service, without the PDU header.
class ConfirmedServiceAck : public PartOfAnswer {
public:
    virtual ~ConfirmedServiceAck() = default;

    // 0 for equal, which is the default. The services throw std::bad_cast for an ack of another class.
    virtual int Compare(ConfirmedServiceAck& other) const;

    virtual std::vector<char> GetBytes() const = 0;
};
