#pragma once

#include <memory>

#include "AllowedHosts.h"
#include "PageService.h"

namespace workbench {

// Serves the page over HTTP, on threads of its own. A connection has one request; those, their sizes and
// their times are bounded (RequestGate.h, WorkerThreads.h).
class PageServer {
public:
    // Requests that are answered at the same time, besides the event streams, and connections that wait then.
    static constexpr std::size_t MostRequests = 16;
    static constexpr std::size_t MostWaiting = 32;

    // Binds the address, port 0 to a free port. std::runtime_error if that is not possible.
    explicit PageServer(PageAddress const& address);
    PageServer(PageServer const&) = delete;
    PageServer& operator=(PageServer const&) = delete;
    // Stops.
    ~PageServer();

    // With the port.
    PageAddress const& Address() const { return address; }

    // The service must outlive the server.
    void Start(PageService const& service);
    // Ends all connections, after half a second also those that are busy. End the event streams before.
    void Stop();

private:
    class Library;

    PageAddress address;
    std::unique_ptr<Library> library;
};

}  // namespace workbench
