#pragma once

#include <optional>
#include <string>

#include "AllowedHosts.h"
#include "HttpRequest.h"
#include "Sessions.h"

namespace workbench {

// Decides by the head of a request, before its body is read, whether it may be answered: its method, its
// Host, the site that it comes from, its session, and for a POST the token of the session and the type of the
// body.
class RequestGuard {
public:
    // The name of the cookie has the port: browsers send the cookies of a host to all its ports.
    RequestGuard(Sessions& pageSessions, AllowedHosts pageHosts, int port);

    // The answer to a request that is refused; none for one that may be answered.
    std::optional<HttpResponse> Refusal(HttpRequest const& head) const;

    // Whether the request is the link with the token, which needs no session.
    static bool IsSignIn(HttpRequest const& head);
    // Makes a session and sends the browser to the page without the token.
    HttpResponse SignIn(HttpRequest const& request);

    // The session of a request that is not refused.
    std::optional<Sessions::Session> SessionOf(HttpRequest const& head) const;

private:
    std::optional<HttpResponse> RefusalOfSite(HttpRequest const& head) const;
    std::optional<HttpResponse> RefusalOfPost(HttpRequest const& head,
                                              Sessions::Session const& session) const;

    Sessions& sessions;
    AllowedHosts hosts;
    std::string cookie;
};

// Adds the headers that every answer has: what a browser may load and show (Content-Security-Policy), and
// that the type of the answer holds.
void AddSecurityHeaders(HttpResponse& response);

}  // namespace workbench
