#include "RequestGuard.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "Printable.h"
#include "Secret.h"

namespace workbench {

namespace {

constexpr char NoSession[] =
    "this page needs the link that dorvel-workbench has printed; open it in this browser";

// For a person, who sees it where the page was expected. The link back helps a browser that came here from
// another site, for which it withholds its cookie.
HttpResponse SignInPage() {
    HttpResponse response;
    response.status = 401;
    response.type = "text/html; charset=utf-8";
    response.body =
        "<!DOCTYPE html>\n<html lang=\"en-GB\"><meta charset=\"utf-8\"><title>dorvel-workbench</title>\n"
        "<h1>This page needs its link</h1>\n"
        "<p>Open the link that <code>dorvel-workbench run</code> has printed, with its token, in this "
        "browser.</p>\n"
        "<p>Was it open here already? <a href=\"/\">Go to the page</a></p></html>\n";
    return response;
}

// A browser that follows a redirect from another site withholds the new cookie, so that the next step must
// come from this page.
HttpResponse StepInside() {
    HttpResponse response;
    response.type = "text/html; charset=utf-8";
    response.body =
        "<!DOCTYPE html>\n<html lang=\"en-GB\"><meta charset=\"utf-8\"><title>dorvel-workbench</title>\n"
        "<meta http-equiv=\"refresh\" content=\"0;url=/\"><p><a href=\"/\">Go to the page</a></p></html>\n";
    return response;
}

std::string CookieValue(std::string const& header, std::string const& name) {
    std::size_t begin = 0;
    while (begin < header.size()) {
        std::size_t const end = std::min(header.find(';', begin), header.size());
        std::size_t const first = std::min(header.find_first_not_of(' ', begin), end);
        if (header.compare(first, name.size() + 1, name + "=") == 0) {
            return header.substr(first + name.size() + 1, end - first - name.size() - 1);
        }
        begin = end + 1;
    }
    return {};
}

bool IsJson(std::string const& type) {
    std::string const json = "application/json";
    return type.compare(0, json.size(), json) == 0 &&
           (type.size() == json.size() || type[json.size()] == ';' || type[json.size()] == ' ');
}

// A length that is not a number is the library's to refuse.
bool IsTooLong(std::string const& length) {
    std::size_t const digits = std::min(length.find_first_not_of('0'), length.size());
    return length.size() - digits > 7 || std::strtoul(length.c_str(), nullptr, 10) > LongestBody;
}

bool IsPage(HttpRequest const& head) {
    return head.path == "/";
}

}  // namespace

RequestGuard::RequestGuard(Sessions& pageSessions, AllowedHosts pageHosts, int port)
    : sessions(pageSessions), hosts(std::move(pageHosts)), cookie("dorvel_page_" + std::to_string(port)) {}

std::optional<HttpResponse> RequestGuard::Refusal(HttpRequest const& head) const {
    if (head.method != "GET" && head.method != "HEAD" && head.method != "POST") {
        HttpResponse response = Problem(405, "the method " + tools::Quoted(head.method) +
                                                 " is not known here; allowed are GET, HEAD and POST");
        response.headers.emplace_back("Allow", "GET, HEAD, POST");
        return response;
    }
    if (auto const refusal = RefusalOfSite(head)) {
        return refusal;
    }
    if (IsSignIn(head)) {
        return {};
    }
    auto const session = SessionOf(head);
    if (!session) {
        return IsPage(head) ? SignInPage() : Problem(401, NoSession);
    }
    return head.method == "POST" ? RefusalOfPost(head, *session) : std::nullopt;
}

std::optional<HttpResponse> RequestGuard::RefusalOfSite(HttpRequest const& head) const {
    std::string const host = head.Header("host");
    if (!hosts.Allows(host)) {
        return Problem(403,
                       "the host " + tools::Quoted(host) +
                           " is not one of this page; for the name of a proxy, start with --page-host NAME");
    }
    std::string const origin = head.Header("origin");
    if (!origin.empty() && !hosts.IsOwnOrigin(origin, host)) {
        return Problem(
            403, "requests from " + tools::Quoted(origin) + " are not answered; only those of this page");
    }
    // What a person opens may come from anywhere; what a page loads comes from this one.
    std::string const site = head.Header("sec-fetch-site");
    bool const isOpened = head.method != "POST" && (site == "none" || IsPage(head));
    if (!site.empty() && site != "same-origin" && !isOpened) {
        return Problem(
            403, "requests of other sites (Sec-Fetch-Site " + tools::Quoted(site) + ") are not answered");
    }
    return {};
}

std::optional<HttpResponse> RequestGuard::RefusalOfPost(HttpRequest const& head,
                                                        Sessions::Session const& session) const {
    if (!IsSameSecret(head.Header("x-page-token"), session.token)) {
        return Problem(403,
                       "the header X-Page-Token is missing or wrong; its value is \"token\" of /api/session");
    }
    if (!IsJson(head.Header("content-type"))) {
        return Problem(415, "the Content-Type is " + tools::Quoted(head.Header("content-type")) +
                                "; allowed is application/json");
    }
    if (IsTooLong(head.Header("content-length"))) {
        return Problem(413,
                       "the body of the request has more than " + std::to_string(LongestBody) + " octets");
    }
    return {};
}

bool RequestGuard::IsSignIn(HttpRequest const& head) {
    return head.method == "GET" && IsPage(head) && head.parameters.count("token") > 0;
}

HttpResponse RequestGuard::SignIn(HttpRequest const& request) {
    Sessions::Session session;
    switch (sessions.Open(request.Parameter("token"), request.sender, session)) {
        case Sessions::SignIn::TooManyFailures: {
            HttpResponse response = Problem(429, "too many wrong tokens; try again in a minute");
            response.headers.emplace_back("Retry-After", "60");
            return response;
        }
        case Sessions::SignIn::WrongToken:
            return SignInPage();
        case Sessions::SignIn::Done:
            break;
    }
    HttpResponse response;
    if (request.Header("sec-fetch-site") == "cross-site") {
        response = StepInside();
    } else {
        response.status = 303;
        response.headers.emplace_back("Location", "/");
    }
    bool const isTls = request.Header("x-forwarded-proto") == "https";
    response.headers.emplace_back(
        "Set-Cookie",
        cookie + "=" + session.id + "; HttpOnly; SameSite=Strict; Path=/" + (isTls ? "; Secure" : ""));
    return response;
}

std::optional<Sessions::Session> RequestGuard::SessionOf(HttpRequest const& head) const {
    return sessions.Find(CookieValue(head.Header("cookie"), cookie));
}

void AddSecurityHeaders(HttpResponse& response) {
    static constexpr std::pair<char const*, char const*> always[] = {
        {"Content-Security-Policy",
         "default-src 'none'; script-src 'self'; style-src 'self'; connect-src 'self'; img-src 'self' data:; "
         "base-uri 'none'; form-action 'none'; frame-ancestors 'none'"},
        {"X-Content-Type-Options", "nosniff"},
        {"X-Frame-Options", "DENY"},
        {"Referrer-Policy", "no-referrer"},
        {"Cross-Origin-Opener-Policy", "same-origin"},
        {"Cross-Origin-Resource-Policy", "same-origin"},
    };
    bool hasCaching = false;
    for (auto const& header : response.headers) {
        hasCaching = hasCaching || header.first == "Cache-Control";
    }
    for (auto const& [name, value] : always) {
        response.headers.emplace_back(name, value);
    }
    if (!hasCaching) {
        response.headers.emplace_back("Cache-Control", "no-store");
    }
}

}  // namespace workbench
