#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "WakeEvent.h"

namespace workbench {

// Looks up the addresses of a host. The library of the system cannot be interrupted while it asks a name
// server that does not answer, so a thread asks. Nobody waits for that thread: it ends when the library
// returns, also after the lookup has gone.
class NameLookup {
public:
    struct Result {
        std::vector<std::string> addresses;  // as numbers, in the order in which they should be tried
        int error = 0;                       // of getaddrinfo
        int systemError = 0;                 // for EAI_SYSTEM
    };

    // The result for an address is there at once, without a thread.
    explicit NameLookup(std::string const& host);

    // None until it is there.
    std::optional<Result> Take();
    // Can be read when the result is there.
    int Handle() const;

private:
    struct Shared;

    std::shared_ptr<Shared> shared;
};

}  // namespace workbench
