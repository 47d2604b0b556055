#include "MetricsService.h"

#include <utility>

#include "Printable.h"

namespace workbench {

namespace {

constexpr char Path[] = "/metrics";

}  // namespace

MetricsService::MetricsService(HttpAddress const& listening, std::function<std::string()> metricsText)
    : isLoopback(IsLoopback(listening.address)), hosts(listening, {}), makeText(std::move(metricsText)) {}

std::optional<HttpResponse> MetricsService::Refusal(HttpRequest const& head) const {
    if (head.method != "GET" && head.method != "HEAD") {
        HttpResponse response =
            Failure(405, "the method " + tools::Quoted(head.method) + " is not possible; allowed: GET, HEAD");
        response.headers.emplace_back("Allow", "GET, HEAD");
        return response;
    }
    if (isLoopback && !hosts.Allows(head.Header("host"))) {
        return Failure(403, "the host " + tools::Quoted(head.Header("host")) +
                                " is not one of this server; use the address that the program has printed");
    }
    if (head.path != Path) {
        return Failure(404, tools::Quoted(head.path) + " is not a path of this server; allowed: " + Path);
    }
    return {};
}

HttpResponse MetricsService::Answer(HttpRequest const& request) const {
    if (auto const refusal = Refusal(request)) {
        return *refusal;
    }
    HttpResponse response;
    response.type = "text/plain; version=0.0.4; charset=utf-8";
    response.headers.emplace_back("Cache-Control", "no-store");
    response.headers.emplace_back("X-Content-Type-Options", "nosniff");
    // Scrapes at the same time would take the processor from the cycles.
    std::lock_guard<std::mutex> const lock(mutex);
    response.body = makeText();
    return response;
}

HttpResponse MetricsService::Failure(int status, std::string const& text) const {
    HttpResponse response;
    response.status = status;
    response.type = "text/plain; charset=utf-8";
    response.headers.emplace_back("X-Content-Type-Options", "nosniff");
    response.body = text + "\n";
    return response;
}

}  // namespace workbench
