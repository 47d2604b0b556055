#pragma once

#include <functional>
#include <mutex>
#include <string>

#include "AllowedHosts.h"
#include "HttpService.h"

namespace workbench {

// Answers scrapes: GET /metrics, without a token. Everything else is an error with a text for people.
class MetricsService : public HttpService {
public:
    // Makes the text of a scrape; called on the thread of the request, for one request at a time. On loopback
    // only this machine's names are answered, so that no page of another site can read (AllowedHosts.h).
    MetricsService(HttpAddress const& listening, std::function<std::string()> metricsText);

    std::optional<HttpResponse> Refusal(HttpRequest const& head) const override;
    HttpResponse Answer(HttpRequest const& request) const override;
    HttpResponse Failure(int status, std::string const& text) const override;

private:
    bool isLoopback;
    AllowedHosts hosts;
    std::function<std::string()> makeText;
    mutable std::mutex mutex;
};

}  // namespace workbench
