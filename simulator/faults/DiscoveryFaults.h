#pragma once

#include "Fault.h"
#include "OctetVector.h"
#include "Standard.h"

// Faults of the answers to Who-Is and Who-Has.
namespace simulator::discovery {

// Applies OtherInstance or WrongStation to an I-Am or an I-Have. Any other kind or datagram is unchanged.
void Spoil(Fault const& fault, Octets& datagram);

}  // namespace simulator::discovery
