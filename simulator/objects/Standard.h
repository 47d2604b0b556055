#pragma once

namespace standard {}

// Names of standard/ without their namespace.
namespace simulator {
using namespace standard;
}
