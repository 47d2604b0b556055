#pragma once

namespace standard {}

// The simulator calls the things of BACnet by the names of standard/.
namespace simulator {
using namespace standard;
}
