#include "PDU.h"

int PDU::Compare(PDU& other) const {
    return static_cast<int>(PduType()) - static_cast<int>(other.PduType());
}

bool PDU::Equals(PDU&) const {
    return false;
}

std::vector<char> PDU::GetBytes() const {
    return {};
}
