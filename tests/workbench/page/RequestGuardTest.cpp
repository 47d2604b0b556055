#include "RequestGuard.h"

#include <algorithm>

#include "PageFixture.h"

using namespace test;
using namespace workbench;

namespace {

class RequestGuardTest : public PageTest {
protected:
    static void Set(HttpRequest& request, std::string const& name, std::string const& value) {
        request.headers.erase(name);
        request.headers.emplace(name, value);
    }

    int StatusOf(HttpRequest const& request) const { return service->Answer(request).status; }
    int StatusWith(std::string const& name, std::string const& value) const {
        HttpRequest request = Request("GET", "/api/plant");
        Set(request, name, value);
        return StatusOf(request);
    }
    int PostStatusWith(std::string const& name, std::string const& value) const {
        HttpRequest request = PostRequest("/api/variables/0/write", R"({"value":"21"})");
        Set(request, name, value);
        return StatusOf(request);
    }
};

TEST_F(RequestGuardTest, AnswersASessionOfThisPage) {
    EXPECT_EQ(Get("/").status, 200);
    EXPECT_EQ(Get("/api/plant").status, 200);
    EXPECT_EQ(Post("/api/variables/0/write", R"({"value":"21"})").status, 202);
}

TEST_F(RequestGuardTest, RefusesOtherHosts) {
    EXPECT_EQ(StatusWith("host", "evil.example:8080"), 403);
    EXPECT_EQ(StatusWith("host", ""), 403);
    EXPECT_EQ(StatusWith("host", "plant.example"), 200);
    HttpRequest twice = Request("GET", "/api/plant");
    twice.headers.emplace("host", "evil.example");
    EXPECT_EQ(StatusOf(twice), 403);
}

TEST_F(RequestGuardTest, RefusesOtherOrigins) {
    EXPECT_EQ(StatusWith("origin", "http://evil.example"), 403);
    EXPECT_EQ(StatusWith("origin", "null"), 403);
    EXPECT_EQ(PostStatusWith("origin", "http://evil.example"), 403);
    EXPECT_EQ(PostStatusWith("origin", "null"), 403);
    EXPECT_EQ(PostStatusWith("origin", "http://127.0.0.1:8081"), 403);
    EXPECT_EQ(PostStatusWith("origin", "https://plant.example"), 202);
}

TEST_F(RequestGuardTest, RefusesRequestsThatABrowserMakesForAnotherSite) {
    EXPECT_EQ(StatusWith("sec-fetch-site", "cross-site"), 403);
    EXPECT_EQ(StatusWith("sec-fetch-site", "same-site"), 403);
    EXPECT_EQ(StatusWith("sec-fetch-site", "same-origin"), 200);
    EXPECT_EQ(StatusWith("sec-fetch-site", "none"), 200);
    EXPECT_EQ(PostStatusWith("sec-fetch-site", "same-site"), 403);
    EXPECT_EQ(PostStatusWith("sec-fetch-site", "none"), 403);
    EXPECT_EQ(PostStatusWith("sec-fetch-site", "same-origin"), 202);
}

TEST_F(RequestGuardTest, AnswersNothingWithoutASession) {
    for (char const* path : {"/", "/page.css", "/api/session", "/api/plant", "/api/stream", "/nothing"}) {
        HttpRequest request = Request("GET", path);
        request.headers.erase("cookie");
        HttpResponse const response = service->Answer(request);
        EXPECT_EQ(response.status, 401) << path;
        EXPECT_EQ(response.body.find(session.token), std::string::npos);
        EXPECT_NE(response.body.find("link"), std::string::npos) << path;
    }
    EXPECT_EQ(StatusWith("cookie", "dorvel_page_8080=" + session.token), 401);
    EXPECT_EQ(StatusWith("cookie", "dorvel_page_8081=" + session.id), 401);
    EXPECT_EQ(StatusWith("cookie", "a=b; dorvel_page_8080=" + session.id + "; c=d"), 200);
}

TEST_F(RequestGuardTest, NeedsTheTokenOfTheSessionForAPost) {
    EXPECT_EQ(PostStatusWith("x-page-token", ""), 403);
    EXPECT_EQ(PostStatusWith("x-page-token", Token), 403);
    EXPECT_EQ(PostStatusWith("x-page-token", session.id), 403);
    HttpRequest without = PostRequest("/api/variables/0/write", R"({"value":"21"})");
    without.headers.erase("x-page-token");
    EXPECT_EQ(StatusOf(without), 403);
    // That of another session does not do.
    Sessions::Session other;
    sessions.Open(Token, "127.0.0.1", other);
    EXPECT_EQ(PostStatusWith("x-page-token", other.token), 403);
}

TEST_F(RequestGuardTest, TakesJsonAlone) {
    for (char const* type : {"", "text/plain", "application/x-www-form-urlencoded", "multipart/form-data",
                             "application/jsonx"}) {
        EXPECT_EQ(PostStatusWith("content-type", type), 415) << type;
    }
    EXPECT_EQ(PostStatusWith("content-type", "application/json; charset=utf-8"), 202);
}

TEST_F(RequestGuardTest, RefusesABodyThatIsAnnouncedAsTooLong) {
    EXPECT_EQ(PostStatusWith("content-length", "1048577"), 413);
    EXPECT_EQ(PostStatusWith("content-length", "99999999999999999999999"), 413);
    EXPECT_EQ(PostStatusWith("content-length", "1048576"), 202);
    EXPECT_EQ(PostStatusWith("content-length", "0000000000000000012"), 202);
}

TEST_F(RequestGuardTest, KnowsThreeMethods) {
    for (char const* method : {"PUT", "DELETE", "PATCH", "OPTIONS", "TRACE", "CONNECT", "get", ""}) {
        HttpResponse const response = service->Answer(Request(method, "/api/plant"));
        EXPECT_EQ(response.status, 405) << method;
        EXPECT_EQ(HeaderOf(response, "Allow"), "GET, HEAD, POST");
    }
    EXPECT_EQ(StatusOf(Request("HEAD", "/api/plant")), 200);
}

TEST_F(RequestGuardTest, MakesASessionOfTheLink) {
    HttpRequest request = Request("GET", std::string("/?token=") + Token);
    request.headers.erase("cookie");
    HttpResponse const response = service->Answer(request);
    EXPECT_EQ(response.status, 303);
    EXPECT_EQ(HeaderOf(response, "Location"), "/");
    std::string const cookie = HeaderOf(response, "Set-Cookie");
    EXPECT_EQ(cookie.substr(0, 17), "dorvel_page_8080=");
    EXPECT_EQ(cookie.substr(49), "; HttpOnly; SameSite=Strict; Path=/");
    EXPECT_EQ(cookie.find(Token), std::string::npos);
    EXPECT_EQ(StatusWith("cookie", cookie.substr(0, 49)), 200);
    request.headers.emplace("x-forwarded-proto", "https");
    EXPECT_EQ(HeaderOf(service->Answer(request), "Set-Cookie").substr(49),
              "; HttpOnly; SameSite=Strict; Path=/; Secure");
}

TEST_F(RequestGuardTest, SendsABrowserThatComesFromAnotherSiteThroughAPageOfItsOwn) {
    HttpRequest request = Request("GET", std::string("/?token=") + Token);
    request.headers.emplace("sec-fetch-site", "cross-site");
    HttpResponse const response = service->Answer(request);
    EXPECT_EQ(response.status, 200);
    EXPECT_NE(response.body.find("url=/"), std::string::npos);
    EXPECT_EQ(response.body.find(Token), std::string::npos);
}

TEST_F(RequestGuardTest, BoundsWrongTokensAndNeverTheRightOne) {
    HttpRequest const request = Request("GET", "/?token=wrong");
    for (unsigned i = 0; i < Sessions::MostFailures; ++i) {
        HttpResponse const response = service->Answer(request);
        EXPECT_EQ(response.status, 401);
        EXPECT_EQ(HeaderOf(response, "Set-Cookie"), "");
    }
    EXPECT_EQ(StatusOf(request), 429);
    EXPECT_EQ(StatusOf(Request("GET", std::string("/?token=") + Token)), 303);
}

TEST_F(RequestGuardTest, GivesEveryAnswerTheHeadersThatBindABrowser) {
    for (char const* path : {"/", "/page.css", "/api/plant", "/api/stream", "/api/nothing", "/nothing"}) {
        HttpResponse const response = Get(path);
        EXPECT_EQ(HeaderOf(response, "Content-Security-Policy"),
                  "default-src 'none'; script-src 'self'; style-src 'self'; connect-src 'self'; img-src "
                  "'self' data:; "
                  "base-uri 'none'; form-action 'none'; frame-ancestors 'none'")
            << path;
        EXPECT_EQ(HeaderOf(response, "X-Content-Type-Options"), "nosniff");
        EXPECT_EQ(HeaderOf(response, "Referrer-Policy"), "no-referrer");
        EXPECT_EQ(HeaderOf(response, "Cross-Origin-Resource-Policy"), "same-origin");
        bool const isFile = path == std::string("/") || path == std::string("/page.css");
        EXPECT_EQ(HeaderOf(response, "Cache-Control"), isFile ? "no-cache" : "no-store") << path;
    }
    HttpRequest refused = Request("GET", "/");
    Set(refused, "host", "evil.example");
    EXPECT_NE(HeaderOf(service->Answer(refused), "Content-Security-Policy"), "");
}

}  // namespace
