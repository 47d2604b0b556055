#pragma once

#include <memory>
#include <string>

#include "AllowedHosts.h"
#include "HttpService.h"

namespace workbench {

// Serves over HTTP, on threads of its own. A connection has one request; those, their sizes and
// their times are bounded (RequestGate.h, WorkerThreads.h).
class HttpServer {
public:
    // Requests that are answered at the same time, besides the streams, and connections that wait then.
    static constexpr std::size_t MostRequests = 16;
    static constexpr std::size_t MostWaiting = 32;

    // Binds the address, port 0 to a free port. std::runtime_error if that is not possible, which begins with
    // the option of the command line.
    HttpServer(HttpAddress const& address, std::string const& option);
    HttpServer(HttpServer const&) = delete;
    HttpServer& operator=(HttpServer const&) = delete;
    // Stops.
    ~HttpServer();

    // With the port.
    HttpAddress const& Address() const { return address; }

    // The service must outlive the server.
    void Start(HttpService const& service);
    // Ends all connections, after half a second also those that are busy. End the streams before.
    void Stop();

private:
    class Library;

    HttpAddress address;
    std::unique_ptr<Library> library;
};

}  // namespace workbench
