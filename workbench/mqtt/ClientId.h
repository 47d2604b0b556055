#pragma once

#include <string>

namespace workbench {

// The client id of a node: the same for each of its connections, so that the broker closes one that was left
// over when the next one comes. "dorvel-NODE", with letters, digits and - . _ only and of 64 characters at
// most, which brokers accept; a node that does not fit is cut or has "-" for its other octets, and gets "-"
// and 8 digits of a hash after it.
std::string ClientIdOf(std::string const& node);

}  // namespace workbench
