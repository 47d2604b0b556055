#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "HttpRequest.h"

namespace workbench {

using SharedText = std::shared_ptr<std::string const>;

// What follows the head of an answer with isStream. For one thread.
class HttpStream {
public:
    virtual ~HttpStream() = default;

    // The next texts to send. Waits for them until that time has passed, then returns none.
    virtual std::vector<SharedText> Next(std::chrono::milliseconds timeout) = 0;
    // Nothing follows what Next has returned.
    virtual bool IsOver() const = 0;
};

// What a server answers. Needs no socket. Thread-safe.
class HttpService {
public:
    virtual ~HttpService() = default;

    // The answer to a request that is refused by its head; none if its body may be read.
    virtual std::optional<HttpResponse> Refusal(HttpRequest const& head) const = 0;
    virtual HttpResponse Answer(HttpRequest const& request) const = 0;
    // An error of the server itself, or of the connection.
    virtual HttpResponse Failure(int status, std::string const& text) const = 0;

    // How many streams there may be, each of which holds a thread of the server.
    virtual std::size_t MostStreams() const { return 0; }
    // The stream of an answer with isStream; null if there are too many.
    virtual std::unique_ptr<HttpStream> OpenStream(HttpRequest const&) const { return nullptr; }
    // The answer then.
    virtual HttpResponse TooManyStreams() const { return Failure(503, "too many event streams"); }
};

}  // namespace workbench
